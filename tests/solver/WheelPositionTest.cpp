#include "solver/WheelPosition.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "solver/StaticState.h"
#include "tests/support/Corners.h"
#include "tests/support/Testing.h"

#include <string>

namespace corvanta::test {
namespace {

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
