#include "solver/StaticState.h"

#include <gtest/gtest.h>

#include <cmath>

namespace corvanta {
namespace {

/// A corner of whole numbers: axes along the car or across it, levers of right-angled triangles.
Suspension WholeNumberCorner() {
    Suspension document;
    PointSet& p = document.StaticPoints();
    p[ptWTCP] = {10, 700, 0};
    p[ptWC] = {10, 684, 63}; // radius 65, leaning in
    p[ptUWIF] = {-100, 300, 400};
    p[ptUWIR] = {100, 300, 400};
    p[ptUWO] = {20, 700, 430};
    p[ptLWIF] = {-150, 250, 150};
    p[ptLWIR] = {150, 250, 150};
    p[ptLWO] = {20, 700, 190};
    p[ptTRO] = {100, 640, 210};
    p[ptTRI] = {100, 240, 180};
    p[ptDSO] = {0, 650, 300};
    p[ptDSI] = {0, 250, 0};
    p[ptPRO] = {30, 600, 310};
    p[ptPRI] = {45, 330, 440};
    p[ptR1P1] = {0, 300, 400};
    p[ptR1P2] = {40, 300, 400};
    p[ptR1O] = {5, 240, 480};
    p[ptSAI] = {5, 40, 480};
    p[ptR2I] = {5, 120, 480};
    p[ptR2P1] = {5, 120, 440};
    p[ptR2P2] = {65, 120, 440};
    p[ptR2O] = {5, 70, 440};
    p[ptARP1] = {300, 0, 100};
    p[ptARP2] = {300, 50, 100};
    p[ptARI] = {180, 500, 50};
    p[ptARDL] = {180, 500, 175};
    p[ptTBDLI] = {100, 280, 450};
    p[ptTBDLO] = {200, 280, 450};
    p[ptTSI] = {200, 0, 450};
    p[ptTSO] = {200, 0, 610};
    document.Data.DriveShaftExists = true;
    return document;
}

void Measure(Suspension& document) {
    CalculateStaticLengths(document.StaticLengths, document.StaticPoints(), document.Data);
    CalculateStaticPoints(document.StaticPoints(), document.StaticLengths, document.Data);
}

void ExpectPoint(const SuspPoint& point, double x, double y, double z) {
    EXPECT_NEAR(point.X, x, 1e-11);
    EXPECT_NEAR(point.Y, y, 1e-11);
    EXPECT_NEAR(point.Z, z, 1e-11);
}

TEST(StaticStateTest, SpringTrainByMechanism) {
    constexpr double Unused = -7;
    for (std::int32_t m = smNone; m <= smMacPhersonStrut; ++m) {
        SCOPED_TRACE(m);
        Suspension document = WholeNumberCorner();
        document.Data.SpringMechanism = m;
        StaticLengthRecord& lengths = document.StaticLengths;
        lengths.SpringLength = lengths.PushrodLength = lengths.InterconnectLength = Unused;
        lengths.RockerInputLever = lengths.RockerOutputLever = Unused;
        lengths.SecondRockerInputLever = lengths.SecondRockerOutputLever = Unused;
        Measure(document);
        const PointSet& points = document.StaticPoints();
        const bool toChassis = m == 1 || m == 2 || m == 11;
        const bool rocker = m >= 4 && m <= 10;
        const bool second = m == 9 || m == 10;
        const bool onUpper = m == 3 || m == 4 || m == 7;
        const bool onLower = m == 2 || (rocker && !onUpper);

        const double spring = toChassis || m == 3 ? std::hypot(25, 560, 170)
                              : second            ? 50
                              : rocker            ? 200
                                                  : Unused;
        EXPECT_DOUBLE_EQ(lengths.SpringLength, spring);
        EXPECT_DOUBLE_EQ(lengths.PushrodLength, rocker ? std::hypot(15, 270, 130) : Unused);
        EXPECT_EQ(lengths.InterconnectLength, second ? 120 : Unused);
        // A spring straight to the upper wishbone has the wishbone as its rocker.
        const double input = m == 3 ? std::hypot(400, 30) : (rocker ? 50 : Unused);
        const double output = m == 3 ? std::hypot(300, 90) : (rocker ? 100 : Unused);
        EXPECT_NEAR(lengths.RockerInputLever, input, 1e-11);
        EXPECT_NEAR(lengths.RockerOutputLever, output, 1e-11);
        EXPECT_EQ(lengths.SecondRockerInputLever, second ? 40 : Unused);
        EXPECT_EQ(lengths.SecondRockerOutputLever, second ? 50 : Unused);

        EXPECT_EQ(points[ptPRI], toChassis ? points[ptSAI] : (SuspPoint{45, 330, 440}));
        const SuspPoint foot = onUpper   ? SuspPoint{30, 300, 400}
                               : onLower ? SuspPoint{30, 250, 150}
                                         : SuspPoint{};
        ExpectPoint(points[ptPROCR], foot.X, foot.Y, foot.Z);
        if (rocker) {
            ExpectPoint(points[ptPRICR], 45, 300, 400);
            ExpectPoint(points[ptSAOCR], 5, 300, 400);
        }
    }
}

TEST(StaticStateTest, CentreSpringAndBars) {
    Suspension document = WholeNumberCorner();
    document.Data.SpringMechanism = smPullrodToUpright;
    document.Data.ThirdSpringMechanism = tsCentreSpring;
    StaticLengthRecord& lengths = document.StaticLengths;
    lengths.SpringLength = -7;
    const auto expectBar = [&](std::int32_t bar, double lever, double dropLink) {
        document.Data.ARBMechanism = bar;
        lengths.ARBInputLever = lengths.ARBDropLink = -7;
        Measure(document);
        EXPECT_EQ(lengths.ARBInputLever, lever) << bar;
        EXPECT_EQ(lengths.ARBDropLink, dropLink) << bar;
    };
    expectBar(abNone, 0, -7);
    expectBar(abToLowerWishbone, 130, 125);
    expectBar(abToRocker, 130, 125);
    expectBar(abTBar, 280, 100);
    expectBar(abToUpright, 130, 125);
    EXPECT_EQ(lengths.SpringLength, -7) << "there is none";
    EXPECT_EQ(document.StaticPoints()[ptSAOCR], SuspPoint{});
    EXPECT_EQ(lengths.CentreSpringLength, 160);
}

} // namespace
} // namespace corvanta
