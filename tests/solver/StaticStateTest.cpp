#include "solver/StaticState.h"

#include <gtest/gtest.h>

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
    p[ptPRO] = {30, 600, 310};
    p[ptPRI] = {45, 330, 440};
    p[ptR1P1] = {0, 300, 400};
    p[ptR1P2] = {40, 300, 400};
    p[ptR1O] = {5, 240, 480};
    p[ptSAI] = {5, 40, 480};
    p[ptARP1] = {300, 0, 100};
    p[ptARP2] = {300, 50, 100};
    p[ptARI] = {180, 500, 50};
    p[ptARDL] = {180, 500, 175};
    p[ptTBDLI] = {100, 280, 450};
    p[ptTBDLO] = {200, 280, 450};
    p[ptTSI] = {200, 0, 450};
    p[ptTSO] = {200, 0, 610};
    return document;
}

void Measure(Suspension& document) {
    CalculateStaticLengths(document.StaticLengths, document.StaticPoints(), document.Data);
    CalculateStaticPoints(document.StaticPoints(), document.StaticLengths, document.Data);
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
