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
    data.CGX = data.CGZ = data.Wheelbase = data.Mass = data.GAccel = data.GBrake = 5;
    data.KTyre = data.KLink = data.KSpring = data.KThirdSpring = data.KARB = 6;
    data.FrontBrakeBalanceSplitPC = data.XForce = data.YForce = data.ZForce = 7;
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

    EXPECT_EQ(data.SpringMechanism + data.ThirdSpringMechanism + data.ARBMechanism, 0);
    EXPECT_FALSE(data.DriveShaftExists);
    EXPECT_EQ(data.CentreSpringSystem, 1);
    EXPECT_EQ(data.ChassisMotion, 1);
    EXPECT_EQ(data.Bump + data.Droop + data.WheelTravelStepSize, 9);
    EXPECT_EQ(data.RackTravel + data.RackTravelStepSize, 8);
    EXPECT_EQ(data.KThirdSpring, 6);
    EXPECT_EQ(data.KARB, 6);
    EXPECT_EQ(data.CGX, 1750);
    EXPECT_EQ(data.CGZ, 300);
    EXPECT_EQ(data.Wheelbase, 2920);
    EXPECT_EQ(data.Mass, 600);
    EXPECT_EQ(data.GAccel, 1);
    EXPECT_EQ(data.GBrake, 2);
    EXPECT_NEAR(data.KTyre, 175.1859, 1e-4); // 1000, 10000 and 1500 lb/in
    EXPECT_NEAR(data.KLink, 1751.859, 1e-3);
    EXPECT_NEAR(data.KSpring, 262.7788, 1e-4);
    EXPECT_EQ(data.FrontBrakeBalanceSplitPC, 40);
    EXPECT_EQ(data.XForce + data.YForce + data.ZForce, 0);
    EXPECT_EQ(data.Description, "");
    EXPECT_FALSE(document.Catalogue[ptWC].Enabled);
    EXPECT_EQ(document.StaticPoints(), PointSet());
    EXPECT_EQ(document.WheelStates(50, 50).Channels.Cell(1), std::nullopt);
    EXPECT_EQ(document.WheelStates(2, 2).LinkLoads.Cell(6, 4), std::nullopt);
    EXPECT_FALSE(document.DataLoaded || document.ResultsValid || document.GeometryValid ||
                 document.DynamicsValid);
    EXPECT_EQ(settings.ViewVariable, vvAlongWheelTravel);
    EXPECT_EQ(settings.View, vwLinkLoads);
}

TEST(SuspensionTest, StepsRunAgainstWheelTravelAndWithRackTravel) {
    Suspension document;
    document.StaticWheel = 12;
    document.StaticRack = 7;
    document.Data.WheelTravelStepSize = 2.5;
    document.Data.RackTravelStepSize = 4;
    EXPECT_EQ(WheelTravelAtStep(document, 2), 25);
    EXPECT_EQ(WheelTravelAtStep(document, 14), -5);
    EXPECT_EQ(RackTravelAtStep(document, 2), -20);
    EXPECT_EQ(RackTravelAtStep(document, 8), 4);
}

TEST(SuspensionTest, ACornerAtTheCentreOfGravityIsAFrontOne) {
    Suspension document;
    document.Data.CGX = 1500;
    document.StaticPoints()[ptWTCP].X = 1500;
    EXPECT_TRUE(IsFrontCorner(document));
    document.StaticPoints()[ptWTCP].X = 1500.001;
    EXPECT_FALSE(IsFrontCorner(document));
}

} // namespace
} // namespace corvanta
