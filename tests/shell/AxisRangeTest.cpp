#include "shell/AxisRange.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace corvanta {
namespace {

TEST(AxisRangeTest, ItGrowsAtOnceAndShrinksWhenTheHandLetsGo) {
    CAxisRange axis("0.00");
    EXPECT_EQ(axis.Take(-1.1, 0.9, true), (AxisRange{-1.2, 1})) << "nothing was shown before";
    EXPECT_EQ(axis.Take(-0.1, 0.2, true), (AxisRange{-1.2, 1})) << "stays while held";
    const AxisRange grown = axis.Take(-0.1, 3.3, true);
    EXPECT_LE(grown.Lower, -1.2);
    EXPECT_EQ(grown.Upper, 3.5);
    EXPECT_EQ(axis.Take(-0.1, 0.2, true), grown);
    EXPECT_EQ(axis.Take(-0.1, 0.2, false), (AxisRange{-0.1, 0.2}));
    axis.Take(0, 100, false);
    axis.Forget();
    EXPECT_EQ(axis.Take(0, 1, true), (AxisRange{0, 1})) << "another channel";
}

TEST(AxisRangeTest, AFlatCurveGetsASpanThatItsFormatCanTell) {
    EXPECT_NEAR(CAxisRange("0.000").Take(1.5, 1.5, false).Size(), 0.01, 0.0021);
    EXPECT_NEAR(CAxisRange("0").Take(0, 1e-9, false).Size(), 10, 2.1);
    const AxisRange far = CAxisRange("0.00").Take(3e12, 3e12, false);
    EXPECT_LT(far.Lower, far.Upper) << "more digits than a double has";
}

TEST(AxisRangeTest, WhatIsNoRangeLeavesItAsItIs) {
    CAxisRange axis("0.00");
    axis.Take(-2, 2, false);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [low, high] :
         {std::pair{std::nan(""), 1.0}, {0.0, infinity}, {infinity, -infinity}, {1.0, 0.0}}) {
        EXPECT_EQ(axis.Take(low, high, false), (AxisRange{-2, 2}));
    }
}

TEST(AxisRangeTest, EndsAreRoundAndNoFartherThanAStepFromTheValues) {
    for (const double size : {3.7e-4, 0.1, 0.3, 7.0, 99.0, 101.0, 5e7}) {
        for (const double low : {-1.3 * size, 0.0, 0.41 * size}) {
            const AxisRange range = CAxisRange("0.000000").Take(low, low + size, false);
            EXPECT_LE(range.Lower, low + 1e-6 * size);
            EXPECT_GE(range.Upper, low + size * (1 - 1e-6));
            EXPECT_LT(range.Size(), 1.41 * size) << low;
        }
    }
}

} // namespace
} // namespace corvanta
