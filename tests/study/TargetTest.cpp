#include "study/Target.h"

#include "tests/support/Testing.h"

#include <limits>

namespace corvanta::test {
namespace {

/// A straight line with a kink: steps every 10 mm.
Curve Kinked() {
    return {chSteerAngleBump,      vvAlongWheelTravel,         2, 0,
            {-20, -10, 0, 10, 20}, {-0.4, -0.1, 0, 0.05, 0.3}, 2};
}

TEST(TargetTest, PlainOneHoldsUpToItsTolerance) {
    const auto judged = [](double tolerance, double from, double to) {
        return JudgeTarget(
            PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, tolerance, from, to), Kinked());
    };
    EXPECT_TRUE(judged(0.1, -10, 10).Holds);
    // Halfway between two steps the line stands at 0.175.
    const TargetResult over = judged(0.125, 15, -10);
    EXPECT_FALSE(over.Holds);
    EXPECT_NEAR(over.Deviation, 0.05, 1e-15);
    EXPECT_EQ(over.Travel, 15);
    const TargetResult under = judged(0.1, -20, 20);
    EXPECT_NEAR(under.Deviation, -0.3, 1e-15);
    EXPECT_EQ(under.Travel, -20);
    EXPECT_TRUE(judged(0.05, 10, 10).Holds) << "a demand at one travel";
    EXPECT_FALSE(judged(0.04, 10, 10).Holds);
}

TEST(TargetTest, BandRunsStraightFromCornerToCorner) {
    const Target target{
        chSteerAngleBump, vvAlongWheelTravel, {{-10, -1, 0}, {0, 0, 0.5}, {5, 0.01, 1}}};
    EXPECT_EQ(BandAt(target, -5), (BandCorner{-5, -0.5, 0.25}));
    EXPECT_EQ(BandAt(target, 5), (BandCorner{5, 0.01, 1}));
    EXPECT_EQ(BandAt(target, 5.01), std::nullopt);
    EXPECT_EQ(BandAt(target, -10.01), std::nullopt);
    EXPECT_TRUE(Holds(target, Kinked()));
    // A corner of the band between two steps of the curve, which stands at 0.025 there.
    Target narrow = target;
    narrow.Band[2].Low = 0.03;
    const TargetResult result = JudgeTarget(narrow, Kinked());
    EXPECT_NEAR(result.Deviation, -0.005, 1e-15);
    EXPECT_EQ(result.Travel, 5);
}

TEST(TargetTest, JudgesWhereCurveAndBandHaveATravelInCommon) {
    const auto judged = [](double from, double to) {
        return JudgeTarget(PlainTarget(chSteerAngleBump, vvAlongWheelTravel, 0, 1, from, to),
                           Kinked());
    };
    EXPECT_EQ(judged(-20, 20 + 1e-6).Share, 1) << "no travel is met to the last digit";
    const TargetResult half = judged(0, 40);
    EXPECT_TRUE(half.Holds);
    EXPECT_EQ(half.Share, 0.5);
    const TargetResult none = judged(30, 40);
    EXPECT_FALSE(none.Judged);
    EXPECT_FALSE(none.Holds);
    EXPECT_EQ(none.Share, 0);
    EXPECT_FALSE(JudgeTarget(PlainTarget(1, vvAlongWheelTravel, 0, 1, 0, 1), Curve{}).Judged);
}

TEST(TargetTest, RefusesWhatCannotBeJudged) {
    const auto fault = [](const auto& change) {
        Target target = PlainTarget(chCamberAngle, vvAlongWheelTravel, -1, 0.1, -10, 10);
        change(target);
        return FaultOfTarget(target);
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(fault([](Target&) {}), "");
    EXPECT_NE(fault([](Target& target) { target.Channel = chLinkLoads; }), "");
    EXPECT_NE(fault([](Target& target) { target.Variable = 3; }), "");
    EXPECT_NE(fault([&](Target& target) { target.Weight = nan; }), "");
    EXPECT_NE(fault([](Target& target) { target.Band.clear(); }), "");
    EXPECT_THAT(fault([&](Target& target) { target.Band[1].High = nan; }), EndsWith("corner 2"));
    EXPECT_THAT(fault([](Target& target) { target.Band[0].Low = 5; }), EndsWith("corner 1"));
    EXPECT_THAT(fault([](Target& target) { target.Band[1].Travel = -10; }), EndsWith("corner 2"));
}

} // namespace
} // namespace corvanta::test
