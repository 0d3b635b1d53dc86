#include "solver/WheelPosition.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "solver/MLibCoordGeom.h"
#include "solver/StaticState.h"
#include "solver/WheelAttitude.h"
#include "tests/support/Corners.h"
#include "tests/support/Testing.h"

#include <cmath>
#include <random>
#include <string>

namespace corvanta::test {
namespace {

TEST(WheelPositionTest, AJointSwingsOnItsCircle) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> off(-120, 120);
    for (int n = 0; n < 500; ++n) {
        const SuspPoint front{-200 + off(random), 300 + off(random), 300 + off(random)};
        const SuspPoint rear{200 + off(random), 300 + off(random), 300 + off(random)};
        const SuspPoint joint{off(random), 700 + off(random), 320 + off(random)};
        const SuspPoint foot = PerpendicularFoot(rear, front, joint);
        const WishboneSwing swing(front, rear, joint, foot);
        for (const double rise : {-60.0, 0.0, 35.0}) {
            const SuspPoint at = swing.PointOnCircleAtHeight(foot.Z + rise);
            ASSERT_EQ(at.Z, foot.Z + rise);
            ASSERT_NEAR(Distance(at, front), Distance(joint, front), 1e-9);
            ASSERT_NEAR(Distance(at, rear), Distance(joint, rear), 1e-9);
            ASSERT_GT(at.Y, foot.Y) << "outboard";
        }
        EXPECT_THAT([&] { (void)swing.PointOnCircleAtHeight(foot.Z + Distance(joint, foot) + 1); },
                    ThrowsMessage<Failure>("Invalid procedure call or argument"));
    }
    const SuspPoint across{5, 400, 300}; // an axis straight across the car
    EXPECT_THAT(
        [&] {
            (void)WishboneSwing({5, 100, 300}, across, {5, 700, 300}, across);
        },
        ThrowsMessage<Failure>("Division by zero"));
}

TEST(WheelPositionTest, StrutGeometry) {
    // Parts of 3, 4 and 12: d = 130, a = 3/13, b = -4/13, c = 12/13.
    const SuspPoint lower{10, 540, 200};
    const SuspPoint top{40, 500, 320};
    const InnerPickups pickups = FictitiousWishbone(lower, {37, 1, 2}, top);
    EXPECT_EQ(pickups.Front, (SuspPoint{37 - 200, 0, pickups.Front.Z}));
    EXPECT_EQ(pickups.Rear, (SuspPoint{37 + 200, 0, pickups.Rear.Z}));
    EXPECT_NEAR(pickups.Front.Z, 200 + (600 + 13 * 130 - 2000) / 12.0, 1e-10);
    const Vector3 axis = VectorSubtract(pickups.Rear, pickups.Front);
    EXPECT_NEAR(Dot(axis, VectorSubtract(top, lower)), 0, 1e-9) << "square to the strut";

    const SuspPoint moved{-9, 545, 230};
    const SuspPoint follow = StrutTopFollow(lower, moved, top);
    EXPECT_NEAR(Distance(follow, moved), 130, 1e-10);
    EXPECT_NEAR(DistancePointToLine(moved, top, follow), 0, 1e-10);
}

TEST(WheelPositionTest, ContactPatchIsTheLowestPointOfTheDisc) {
    std::mt19937 random(6);
    std::uniform_real_distribution<double> off(-90, 90);
    constexpr double Radius = 310;
    for (int n = 0; n < 300; ++n) {
        const SuspPoint centre{off(random), 740 + off(random), 300 + off(random)};
        const SuspPoint stub{centre.X + off(random), centre.Y - 590, centre.Z + off(random)};
        const Vector3 spoke = VectorSubtract(ContactPatchPoint(centre, stub, Radius), centre);
        // Straight down, less its part along the axle.
        const Vector3 axle = UnitVector(stub.X - centre.X, stub.Y - centre.Y, stub.Z - centre.Z);
        const Vector3 down = UnitVector(axle.Z * axle.X, axle.Z * axle.Y, axle.Z * axle.Z - 1);
        const SuspPoint lowest{down.X * Radius, down.Y * Radius, down.Z * Radius};
        ASSERT_LT(Distance(spoke, lowest), 5e-5) << "the angles pass through single precision";
    }
    EXPECT_NE(SinglePrecisionAsin(0.1), SinglePrecisionAsin(0.1 + 1e-8));
    EXPECT_EQ(SinglePrecisionAsin(0.1), SinglePrecisionAsin(0.1 + 1e-9)) << "below its resolution";
}

TEST(WheelPositionTest, AStrutSlidesThroughItsMount) {
    Suspension document = StrutCorner();
    std::string errorText;
    ASSERT_TRUE(SolveGrid(document, errorText));
    const PointSet& fixed = document.StaticPoints();
    EXPECT_EQ(fixed[ptUWO], fixed[ptSAI]);
    for (int r = 2; r <= document.NR + 1; ++r) {
        for (int c = 2; c <= document.NW + 1; ++c) {
            const PointSet& set = document.WheelStates(r, c).PointsPlus;
            EXPECT_EQ(set[ptUWO], fixed[ptUWO]);
            EXPECT_EQ(set[ptSAI], fixed[ptSAI]) << "the chassis pickup again";
            EXPECT_GT(Distance(set[ptUWO_MACPH], fixed[ptSAI]), 0.1);
            EXPECT_EQ(set[ptUWIF].X, fixed[ptSAI].X - 200);
            const Vector3 axis = VectorSubtract(set[ptUWIR], set[ptUWIF]);
            EXPECT_NEAR(Dot(axis, VectorSubtract(set[ptUWO], set[ptLWO])), 0, 1e-7);
        }
    }
}

TEST(WheelPositionTest, TheOffsetOfTheSlopesIsAtMostOneMillimetre) {
    Suspension document = DoubleWishboneCorner(smNone);
    document.Data.WheelTravelStepSize = 20;
    SetUpCorner(document);
    std::string errorText;
    ASSERT_TRUE(SolveGrid(document, errorText));
    const WheelState& state = document.WheelStates(2, 2);
    EXPECT_NEAR(state.PointsPlus[ptWTCP].Z - state.Points[ptWTCP].Z, 1, 2e-6);
    EXPECT_NEAR(state.PointsMinus[ptWTCP].Z - state.Points[ptWTCP].Z, -1, 2e-6);
}

TEST(WheelPositionTest, PassesOfTheSearch) {
    Suspension document = DoubleWishboneCorner(smNone);
    PointSet& start = document.StaticPoints();
    const auto prepare = [&] {
        CalculateStaticLengths(document.StaticLengths, start, document.Data);
        CalculateStaticPoints(start, document.StaticLengths, document.Data);
        return start;
    };
    PointSet solved = prepare();
    WheelSearch search(start, document.StaticLengths, smNone);
    search.CalcWheelState(15, start, solved);
    const std::int64_t first = search.Locations();
    EXPECT_GT(first, 4);
    EXPECT_LE(first, 4 * 10);
    search.CalcWheelState(15, start, solved);
    EXPECT_EQ(search.Locations() - first, 4) << "the estimate carries over: the first pass lands";

    // Links that meet between joints and wheel: the wheel sinks as the upper joint rises.
    start[ptUWIF] = {-150, 400, 500};
    start[ptUWIR] = {150, 400, 500};
    start[ptUWO] = {0, 600, 450};
    start[ptLWIF] = {-150, 400, 100};
    start[ptLWIR] = {150, 400, 100};
    start[ptLWO] = {0, 600, 316};
    solved = prepare();
    WheelSearch wrongWay(start, document.StaticLengths, smNone);
    EXPECT_THAT([&] { wrongWay.CalcWheelState(2, start, solved); },
                ThrowsMessage<Failure>("Unable to iterate wheel position"));
    EXPECT_EQ(wrongWay.Locations(), 4 * 101) << "passes";
}

} // namespace
} // namespace corvanta::test
