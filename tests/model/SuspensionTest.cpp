#include "model/Suspension.h"

#include "model/PointsInPlay.h"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

TEST(SuspensionTest, ANewDocumentInheritsTravelsAndCentreSpringOnly) {
    Suspension document;
    SuspensionData& data = document.Data;
    data.SpringMechanism = data.ThirdSpringMechanism = data.ARBMechanism = 2;
    data.CentreSpringSystem = data.ChassisMotion = 1;
    data.DriveShaftExists = true;
    data.Bump = data.Droop = data.WheelTravelStepSize = 3;
    data.RackTravel = data.RackTravelStepSize = 4;
    data.CGX = data.Mass = data.KSpring = data.XForce = 5;
    data.KThirdSpring = data.KARB = 6;
    data.Description = "old";
    SetPointsInPlay(document.Catalogue, 6, data);
    document.StaticPoints()[ptWC] = {1, 2, 3};
    document.WheelStates(50, 50).Channels.Set(1, 1);
    document.WheelStates(2, 2).LinkLoads.Set(6, 4, 1);
    document.DataLoaded = document.ResultsValid = document.GeometryValid = document.DynamicsValid =
        true;
    ViewSettings settings;
    settings.View = vwLinkLoads;
    settings.ViewVariable = vvAlongRackTravel;

    ResetDocument(document, settings);

    SuspensionData expected;
    expected.CentreSpringSystem = expected.ChassisMotion = 1;
    expected.Bump = expected.Droop = expected.WheelTravelStepSize = 3;
    expected.RackTravel = expected.RackTravelStepSize = 4;
    expected.CGX = 1750;
    expected.CGZ = 300;
    expected.Wheelbase = 2920;
    expected.Mass = 600;
    expected.GAccel = 1;
    expected.GBrake = 2;
    expected.KTyre = 1000 / 5.708223; // round in lb/in
    expected.KLink = 10000 / 5.708223;
    expected.KSpring = 1500 / 5.708223;
    expected.KThirdSpring = expected.KARB = 6;
    expected.FrontBrakeBalanceSplitPC = 40;
    EXPECT_TRUE(data == expected);
    EXPECT_FALSE(document.Catalogue[ptWC].Enabled);
    EXPECT_EQ(document.StaticPoints(), PointSet());
    EXPECT_EQ(document.WheelStates(50, 50).Channels.Cell(1), std::nullopt);
    EXPECT_EQ(document.WheelStates(2, 2).LinkLoads.Cell(6, 4), std::nullopt);
    EXPECT_FALSE(document.DataLoaded || document.ResultsValid || document.GeometryValid ||
                 document.DynamicsValid);
    EXPECT_EQ(settings.ViewVariable, vvAlongWheelTravel);
    EXPECT_EQ(settings.View, vwLinkLoads);
}

} // namespace
} // namespace corvanta
