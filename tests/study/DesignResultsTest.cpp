#include "study/DesignResults.h"

#include "tests/support/Corners.h"
#include "tests/support/Testing.h"

#include <array>

namespace corvanta::test {
namespace {

TEST(DesignResultsTest, AMapOfADesignThatFailsSomewhereHasValuesWhereItDoesNot) {
    const FundamentalUnits units = MetricUnits();
    const ChannelCatalogue channels = MetricChannels();
    const SolveSettings settings{units, channels};
    const std::array<StudyChart, 4> charts{{{chCamberAngle, ChartKind::Map},
                                            {chCamberAngle, ChartKind::AlongWheelTravel},
                                            {chRollCentreToGround, ChartKind::Map},
                                            {chDriveshaftLength, ChartKind::Map}}};
    Suspension scratch;
    Design design = DesignOf(DoubleWishboneCorner(smNone));
    design.Data.Bump = 20;
    design.Data.Droop = 600; // beyond the reach of the wishbones
    design.Data.WheelTravelStepSize = 20;
    const DesignResults failed = ResultsOf(scratch, design, settings, charts, {});
    EXPECT_FALSE(failed.Outcome.Solved);
    EXPECT_THAT(failed.Outcome.Failure.Message, HasSubstr("Invalid procedure call"));
    EXPECT_THAT(failed.Faulty, ElementsAre(ptUWO, ptUWIF, ptUWIR));
    EXPECT_FALSE(failed.Curves[1]);
    const ChannelMap& camber = failed.Maps[0].value();
    ASSERT_EQ(camber.WheelTravel.size(), 32U);
    EXPECT_EQ(camber.At(2, 0), std::nullopt) << "full droop";

    design.Data.Droop = 20;
    const DesignResults sound = ResultsOf(scratch, design, settings, charts, {});
    ASSERT_TRUE(sound.Outcome.Solved);
    for (std::size_t map : {0U, 2U}) {
        for (std::size_t row = 0; row < 5; ++row) {
            for (std::size_t back = 1; back <= 3; ++back) { // from full bump
                EXPECT_EQ(failed.Maps[map]->At(row, 32 - back), sound.Maps[map]->At(row, 3 - back));
            }
        }
    }
    // The axle has a roll centre only where the opposite wheel gets to as well.
    design.Data.Bump = design.Data.Droop = 500;
    const ChannelMap height = *ResultsOf(scratch, design, settings, charts, {}).Maps[2];
    for (std::size_t n = 0; n < height.WheelTravel.size(); ++n) {
        EXPECT_EQ(height.At(2, n).has_value(),
                  height.At(2, height.WheelTravel.size() - 1 - n).has_value());
    }

    design.Points[ptUWIF] = design.Points[ptUWIR]; // fails before any position
    const DesignResults none = ResultsOf(scratch, design, settings, charts, {});
    EXPECT_FALSE(none.Outcome.Solved || none.Maps[0] || none.Curves[1]);
}

} // namespace
} // namespace corvanta::test
