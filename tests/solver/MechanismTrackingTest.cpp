#include "solver/MechanismTracking.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "solver/MLibCoordGeom.h"
#include "tests/support/Corners.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace corvanta::test {
namespace {

using Body = std::vector<PointNumber>;

/// Points that keep their distances from each other, by mechanism.
std::vector<Body> RigidBodies(const Suspension& document) {
    const SuspensionData& data = document.Data;
    std::vector<Body> bodies{{ptLWO, ptLWIF, ptLWIR}, {ptTRO, ptTRI}};
    if (data.SpringMechanism == smMacPhersonStrut) {
        bodies.push_back({ptLWO, ptTRO, ptDSO, ptWC, ptWSA, ptUWO_MACPH}); // the strut's body
        return bodies;
    }
    bodies.push_back({ptUWO, ptUWIF, ptUWIR});
    bodies.push_back({ptUWO, ptLWO, ptTRO, ptDSO, ptWC, ptWSA});
    switch (data.SpringMechanism) {
    case 1:
    case 5:
    case 6:
    case 9:
        bodies.push_back({ptPRO, ptUWO, ptLWO, ptTRO});
        break;
    case 2:
    case 8:
    case 10:
        bodies.push_back({ptPRO, ptLWIF, ptLWIR, ptLWO});
        break;
    case 3:
    case 4:
    case 7:
        bodies.push_back({ptPRO, ptUWIF, ptUWIR, ptUWO});
        break;
    default:
        break;
    }
    if (HasRocker(data.SpringMechanism)) {
        bodies.push_back({ptPRO, ptPRI});
        bodies.push_back({ptPRI, ptR1O, ptR1P1, ptR1P2});
    }
    if (HasSecondRocker(data.SpringMechanism)) {
        bodies.push_back({ptR1O, ptR2I});
        bodies.push_back({ptR2I, ptR2O, ptR2P1, ptR2P2});
    }
    if (IsLateralBar(data.ARBMechanism)) {
        bodies.push_back({ptARDL, ptARI});
        bodies.push_back({ptARI, ptARP1, ptARP2});
        bodies.push_back(data.ARBMechanism == abToRocker ? Body{ptARDL, ptPRI, ptR1O, ptR1P1}
                         : data.ARBMechanism == abToLowerWishbone
                             ? Body{ptARDL, ptLWO, ptLWIF, ptLWIR}
                             : Body{ptARDL, ptLWO, ptTRO, ptWSA});
    }
    if (UsesTBar(data)) {
        bodies.push_back({ptTBDLI, ptTBDLO});
        bodies.push_back({ptTBDLI, ptPRI, ptR1O, ptR1P1});
        // In roll the bar swings about the far side's joint, in heave about its own axis.
        bodies.push_back(data.ChassisMotion == cmRoll ? Body{ptTBDLO, ptTSI, ptTBP1, ptTBDLO2}
                                                      : Body{ptTBDLO, ptTSI, ptTBP1, ptTBP2});
    }
    if (HasLateralCentreSpring(data)) {
        bodies.push_back({ptLCSI, ptPRI, ptR1O, ptR1P1});
    }
    return bodies;
}

/// Solves the grid and checks every rigid body in every set of it.
void ExpectRigidThroughout(Suspension& document) {
    SCOPED_TRACE(testing::Message() << "spring " << document.Data.SpringMechanism << " bar "
                                    << document.Data.ARBMechanism);
    std::string errorText;
    ASSERT_TRUE(SolveGrid(document, errorText)) << errorText;
    const PointSet& fixed = document.StaticPoints();
    const std::vector<Body> bodies = RigidBodies(document);
    for (int r = 2; r <= document.NR + 1; ++r) {
        for (int c = 2; c <= document.NW + 1; ++c) {
            const WheelState& state = document.WheelStates(r, c);
            for (const PointSet* set : {&state.Points, &state.PointsPlus, &state.PointsMinus}) {
                for (const Body& body : bodies) {
                    for (const PointNumber a : body) {
                        for (const PointNumber b : body) {
                            ASSERT_NEAR(Distance((*set)[a], (*set)[b]),
                                        Distance(fixed[a], fixed[b]), 1e-8)
                                << PointShortName(a) << " " << PointShortName(b);
                        }
                    }
                }
            }
        }
    }
    const PointSet& bump = document.WheelStates(document.StaticRack, 2).Points;
    for (const Body& body : bodies) {
        EXPECT_NE(bump[body.front()], fixed[body.front()]) << PointShortName(body.front());
    }
}

TEST(MechanismTrackingTest, RigidBodiesStayRigid) {
    const auto expectRigid = [](Suspension document) { ExpectRigidThroughout(document); };
    for (std::int32_t m = smNone; m <= smTwoRockersToLowerWishbone; ++m) {
        expectRigid(DoubleWishboneCorner(m, abToLowerWishbone));
    }
    expectRigid(DoubleWishboneCorner(smPushrodToUpright, abToRocker));
    expectRigid(DoubleWishboneCorner(smOutboardToLowerWishbone, abToUpright));
    Suspension lateral = DoubleWishboneCorner(smPullrodToUpperWishbone);
    lateral.Data.ThirdSpringMechanism = tsCornerAndCentreSpring;
    lateral.Data.CentreSpringSystem = csLateralViaRocker;
    expectRigid(lateral);
    expectRigid(StrutCorner());
}

TEST(MechanismTrackingTest, TheTBarTurnsInHeaveAndSwingsInRoll) {
    for (const std::int32_t motion : {cmRoll, cmHeave}) {
        Suspension centre = DoubleWishboneCorner(smPushrodToUpright, abNone, motion);
        centre.Data.ThirdSpringMechanism = tsCornerAndCentreSpring;
        centre.StaticPoints()[ptTSI] = {141, 12, 452};
        ExpectRigidThroughout(centre);

        Suspension document = DoubleWishboneCorner(smPullrodToUpright, abTBar, motion);
        ExpectRigidThroughout(document);
        const PointSet& fixed = document.StaticPoints();
        const PointSet& bump = document.WheelStates(4, 2).Points;
        if (motion == cmRoll) {
            EXPECT_EQ(bump[ptTBDLO2], fixed[ptTBDLO2]);
        } else {
            // It lies in the plane of its references, where the root costs half of the digits.
            const SuspPoint mirror{bump[ptTBDLO].X, -bump[ptTBDLO].Y, bump[ptTBDLO].Z};
            EXPECT_NEAR(Distance(bump[ptTBDLO2], mirror), 0, 1e-4);
            EXPECT_GT(Distance(bump[ptTBDLO2], fixed[ptTBDLO2]), 0.1);
        }
    }
}

TEST(MechanismTrackingTest, ChassisEndsAndFeet) {
    Suspension document = DoubleWishboneCorner(smOutboardToLowerWishbone);
    std::string errorText;
    ASSERT_TRUE(SolveGrid(document, errorText));
    const PointSet& droop = document.WheelStates(2, document.NW + 1).Points;
    EXPECT_EQ(droop[ptPRI], document.StaticPoints()[ptSAI]);
    EXPECT_EQ(droop[ptST], PerpendicularFoot(droop[ptUWO], droop[ptLWO], droop[ptTRO]));
    EXPECT_NEAR(droop[ptSNextA].X, droop[ptWTCP].X, 1e-9);
    EXPECT_NEAR(droop[ptTNextA].X, droop[ptWTCP].X, 1e-9);
    EXPECT_NEAR(DistancePointToLine(droop[ptUWIF], droop[ptUWIR], droop[ptSNextA]), 0, 1e-9);
    EXPECT_NEAR(DistancePointToLine(droop[ptLWIF], droop[ptLWIR], droop[ptTNextA]), 0, 1e-9);
    EXPECT_THROW((void)WishboneAxisPointsAtX({0, 0, 0}, {9, 0, 0}, {5, 1, 0}, {5, 2, 0}, {}),
                 Failure);
}

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
