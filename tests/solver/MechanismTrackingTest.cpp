#include "solver/MechanismTracking.h"

#include "calculation/SCalcs.h"
#include "solver/MLibCoordGeom.h"
#include "tests/support/Corners.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace corvanta::test {
namespace {

/// What the solve of a corner with this much travel either way reports.
std::string ReportOf(Suspension document, double travel) {
    document.Data.Bump = document.Data.Droop = travel;
    document.GeometryValid = true;
    SetUpCorner(document);
    std::string errorText;
    EXPECT_FALSE(SolveGrid(document, errorText));
    EXPECT_FALSE(document.GeometryValid);
    return errorText;
}

TEST(MechanismTrackingTest, TravelThatALeverCannotFollowIsReported) {
    const std::string rest = " locus tracking error.\rThis can be due to a geometry that cannot "
                             "achieve the required travel.\rTry reduced travel or smaller step "
                             "size. Check units.";
    // The rod pulls the rocker straight and would have to stretch.
    EXPECT_EQ(ReportOf(DoubleWishboneCorner(smPushrodToLowerWishbone), 80),
              "Rocker input lever length" + rest);
    // The rocker carries the drop link out of the circle of the bar's arm; how far from it decides
    // which length gives way.
    EXPECT_EQ(ReportOf(DoubleWishboneCorner(smPushrodToLowerWishbone, abTBar), 60),
              "T-Bar input lever length" + rest);
    Suspension shortLink = DoubleWishboneCorner(smPushrodToLowerWishbone, abTBar, cmHeave);
    shortLink.StaticPoints()[ptTBDLO] = {30, 199, 498};
    shortLink.StaticPoints()[ptTBDLI] = {2, 270, 584};
    EXPECT_EQ(ReportOf(std::move(shortLink), 30), "T-Bar drop link length" + rest);

    Suspension still = DoubleWishboneCorner(smPushrodToLowerWishbone);
    PointSet points = still.StaticPoints();
    points[ptPRICR] = PerpendicularFoot(points[ptR1P1], points[ptR1P2], points[ptPRI]);
    const double lever = Distance(points[ptPRI], points[ptPRICR]);
    for (const double error : {0.99e-4, -0.99e-4, 1.01e-4, -1.01e-4}) {
        PointSet solved = points;
        MovedSets sets{solved, points, points};
        std::string errorText;
        still.StaticLengths.RockerInputLever = lever + error;
        EXPECT_EQ(TrackMechanism(sets, still, errorText), std::abs(error) < 1e-4) << error;
    }
}

} // namespace
} // namespace corvanta::test
