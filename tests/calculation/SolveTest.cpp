#include "calculation/SCalcs.h"
#include "tests/support/Corners.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <atomic>
#include <bit>
#include <chrono>
#include <cstdint>
#include <thread>

namespace corvanta::test {
namespace {

FundamentalUnits MetricUnits() {
    FundamentalUnits units;
    units[ucDisplacement].Label = "mm";
    return units;
}

/// What two states tell apart, empty when they are the same to the last bit.
std::string Difference(const WheelState& one, const WheelState& other) {
    if (one.Points != other.Points || one.PointsPlus != other.PointsPlus) {
        return "points";
    }
    const auto bits = [](std::optional<double> value) {
        return value ? std::optional(std::bit_cast<std::uint64_t>(*value)) : std::nullopt;
    };
    for (int id = 1; id <= ChannelCount; ++id) {
        if (bits(one.Channels.Cell(id)) != bits(other.Channels.Cell(id))) {
            return "channel " + std::to_string(id);
        }
    }
    for (int link = 1; link <= 6; ++link) {
        if (bits(one.LinkLoads.Cell(link, 4)) != bits(other.LinkLoads.Cell(link, 4))) {
            return "load of link " + std::to_string(link);
        }
    }
    return "";
}

/// Compares the states from (2, 2) that `wants` picks.
template <typename Wants>
void ExpectSame(const Suspension& solved, const Suspension& expected, const Wants& wants) {
    for (int r = 2; r <= expected.NR + 1; ++r) {
        for (int w = 2; w <= expected.NW + 1; ++w) {
            if (wants(r, w)) {
                ASSERT_EQ(Difference(solved.WheelStates(r, w), expected.WheelStates(r, w)), "")
                    << "at rack step " << r << ", wheel step " << w;
            }
        }
    }
}

bool SameFits(const Suspension& one, const Suspension& other) {
    return std::equal(
        one.QuadraticFits.begin(), one.QuadraticFits.end(), other.QuadraticFits.begin(),
        [](const auto& a, const auto& b) { return a.A == b.A && a.B == b.B && a.C == b.C; });
}

// One scratch document goes through all corners, so that what one leaves behind would show in the
// next, and every cut is compared with the run of a document that was just opened.
TEST(SolveTest, GivesWhatARunGivesWholeAndInEveryCut) {
    const FundamentalUnits units = MetricUnits();
    const SolveSettings settings{units, MetricChannels()};
    Suspension scratch;
    Suspension cutScratch;
    ForEachSample(
        [](Suspension&) {},
        [&](const Suspension& expected) {
            const Design design = DesignOf(expected);
            ASSERT_TRUE(Solve(scratch, design, settings).Solved);
            EXPECT_TRUE(scratch.ResultsValid);
            ExpectSame(scratch, expected, [](int, int) { return true; });
            EXPECT_TRUE(SameFits(scratch, expected));
            EXPECT_EQ(scratch.Dynamics.TotalBrake, expected.Dynamics.TotalBrake);
            for (int row = 2; row <= expected.NR + 1; ++row) {
                const double travel = RackTravelAtStep(expected, row);
                ASSERT_TRUE(Solve(cutScratch, design, settings, {false, {travel}, {}}).Solved);
                EXPECT_FALSE(cutScratch.ResultsValid);
                ExpectSame(cutScratch, expected, [&](int r, int) { return r == row; });
            }
            for (int column = 2; column <= expected.NW + 1; ++column) {
                const double travel = WheelTravelAtStep(expected, column);
                ASSERT_TRUE(Solve(cutScratch, design, settings, {false, {}, {travel}}).Solved);
                ExpectSame(cutScratch, expected, [&](int, int w) { return w == column; });
            }
        });
}

TEST(SolveTest, ManyThreadsGiveWhatOneGives) {
    std::vector<Suspension> expected;
    ForEachSample([](Suspension&) {},
                  [&](const Suspension& solved) { expected.push_back(solved); });
    const FundamentalUnits units = MetricUnits();
    const SolveSettings settings{units, MetricChannels()};
    std::atomic<int> wrong = 0;
    const auto work = [&](std::size_t first) {
        Suspension scratch;
        for (std::size_t n = 0; n < expected.size(); ++n) {
            const Suspension& reference = expected[(first + n) % expected.size()];
            const bool solved = Solve(scratch, DesignOf(reference), settings).Solved;
            for (int r = 2; solved && r <= reference.NR + 1; ++r) {
                for (int w = 2; w <= reference.NW + 1; ++w) {
                    wrong +=
                        Difference(scratch.WheelStates(r, w), reference.WheelStates(r, w)).empty()
                            ? 0
                            : 1;
                }
            }
            wrong += solved ? 0 : 1;
        }
    };
    {
        std::vector<std::jthread> threads;
        for (std::size_t n = 0; n < 8; ++n) {
            threads.emplace_back(work, n);
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST(SolveTest, FailsWithThePlaceAndSolvesTheNextDesignAllTheSame) {
    const FundamentalUnits units = MetricUnits();
    const SolveSettings settings{units, MetricChannels()};
    Suspension scratch;
    const Design sound = DesignOf(DoubleWishboneCorner(smNone));
    Design tooFar = sound; // beyond the reach of the upper wishbone
    tooFar.Data.Bump = tooFar.Data.Droop = tooFar.Data.WheelTravelStepSize = 400;
    const SolveResult failed = Solve(scratch, tooFar, settings);
    EXPECT_FALSE(failed.Solved);
    EXPECT_EQ(failed.Failure.Message,
              "Calculations could not be completed.\r\rThe following error occurred: Invalid "
              "procedure call or argument");
    EXPECT_EQ(failed.Failure.WheelStep, 2);
    Design noStep = sound;
    noStep.Data.WheelTravelStepSize = 0;
    EXPECT_THAT(Solve(scratch, noStep, settings).Failure.Message, HasSubstr("Division by zero"));

    // Stopped from outside in the middle of one of many runs, wherever that is.
    Design large = sound;
    large.Data.WheelTravelStepSize = large.Data.Bump / 24;
    large.Data.Droop = large.Data.Bump;
    std::stop_source source;
    const std::jthread stopper([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        source.request_stop();
    });
    SolveResult stopped;
    while (!stopped.Stopped) {
        stopped = Solve(scratch, large, settings, {}, source.get_token());
        ASSERT_TRUE(stopped.Solved || stopped.Stopped);
    }
    EXPECT_FALSE(stopped.Solved || scratch.ResultsValid);
    EXPECT_TRUE(Solve(scratch, sound, settings).Solved);
}

/// How many wheel steps beside static a rack step reached, in bump and in droop.
struct Reach {
    int Bump = 0;
    int Droop = 0;
};

Reach ReachOf(const Suspension& scratch, const GridPart& reached, int rackStep) {
    Reach reach;
    const int centre = scratch.StaticWheel;
    while (centre - reach.Bump > 2 && reached.Has(rackStep, centre - reach.Bump - 1)) {
        ++reach.Bump;
    }
    while (centre + reach.Droop < scratch.NW + 1 &&
           reached.Has(rackStep, centre + reach.Droop + 1)) {
        ++reach.Droop;
    }
    return reach;
}

// Each rack step is solved once more in a design whose travel ends where the rack step, its mirror
// and the static one are all within reach.
TEST(SolveTest, ATolerantSolveReachesWhatShorterTravelsGive) {
    const FundamentalUnits units = MetricUnits();
    const SolveSettings settings{units, MetricChannels()};
    GridCut tolerant;
    tolerant.Tolerant = true;
    Suspension scratch;
    Suspension shorter;
    const std::vector<std::pair<Suspension, double>> corners{
        {DoubleWishboneCorner(smPushrodToLowerWishbone, abToUpright), 100},
        {DoubleWishboneCorner(smNone), 400},
        {StrutCorner(), 400}};
    for (const auto& [corner, farthest] : corners) {
        for (const bool inBump : {true, false}) {
            Design design = DesignOf(corner);
            design.Data.WheelTravelStepSize = 10;
            design.Data.Bump = design.Data.Droop =
                10; // so that no mirror in wheel travel is missing
            (inBump ? design.Data.Bump : design.Data.Droop) = farthest;
            const SolveResult strict = Solve(scratch, design, settings);
            ASSERT_FALSE(strict.Solved);
            const std::vector<PointNumber> faulty = scratch.FaultyPoints;
            const SolveResult result = Solve(scratch, design, settings, tolerant);
            EXPECT_FALSE(result.Solved || scratch.ResultsValid);
            EXPECT_EQ(result.Failure.Message, strict.Failure.Message);
            EXPECT_EQ(result.Failure.WheelStep, strict.Failure.WheelStep);
            EXPECT_EQ(scratch.FaultyPoints, faulty);
            int compared = 0;
            int unreached = 0;
            for (int r = 2; r <= scratch.NR + 1; ++r) {
                Reach reach = ReachOf(scratch, result.Reached, r);
                for (const int other : {scratch.StaticRack, 2 * scratch.StaticRack - r}) {
                    const Reach its = ReachOf(scratch, result.Reached, other);
                    reach = {std::min(reach.Bump, its.Bump), std::min(reach.Droop, its.Droop)};
                }
                Design cut = design;
                cut.Data.Bump = reach.Bump * 10;
                cut.Data.Droop = reach.Droop * 10;
                ASSERT_TRUE(Solve(shorter, cut, settings,
                                  {false, {RackTravelAtStep(scratch, r)}, {}, false})
                                .Solved);
                for (int k = -reach.Bump; k <= reach.Droop; ++k, ++compared) {
                    ASSERT_EQ(Difference(scratch.WheelStates(r, scratch.StaticWheel + k),
                                         shorter.WheelStates(r, shorter.StaticWheel + k)),
                              "")
                        << "at rack step " << r << ", " << k << " steps from static";
                }
                for (int w = 2; w <= scratch.NW + 1; ++w) {
                    const bool reached = result.Reached.Has(r, w);
                    const bool mirrored = result.Reached.Has(2 * scratch.StaticRack - r, w);
                    const ChannelCells& cells = scratch.WheelStates(r, w).Channels;
                    EXPECT_EQ(cells.Cell(chCamberAngle).has_value(), reached);
                    EXPECT_EQ(cells.Cell(chAckerman).has_value(), reached && mirrored);
                    unreached += reached ? 0 : 1;
                }
            }
            EXPECT_GT(compared, 10);
            EXPECT_GT(unreached, 4);
        }
    }
}

} // namespace
} // namespace corvanta::test
