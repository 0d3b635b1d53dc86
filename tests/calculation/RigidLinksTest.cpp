#include "calculation/SCalcs.h"
#include "tests/support/RigidParts.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta::test {
namespace {

constexpr double LinkTolerance = 1e-4;
constexpr double TravelTolerance = 1e-5;

TEST(RigidLinksTest, EveryPartKeepsItsLengthsInEverySetOfEveryState) {
    for (const MechanismChoice& choice : OfferedChoices()) {
        SCOPED_TRACE(choice.Text());
        Suspension document = CornerOf(choice);
        std::string errorText;
        ASSERT_TRUE(SolveGrid(document, errorText)) << errorText;
        const std::vector<RigidLink> links = RigidParts(document.Data).Links();
        WorstLink worst;
        for (int r = 2; r <= document.NR + 1; ++r) {
            for (int w = 1; w <= document.NW + 1; ++w) {
                const WheelState& state = document.WheelStates(r, w);
                const std::string where = " at " + std::to_string(r) + ", " + std::to_string(w);
                worst.Look(state.Points, document.StaticPoints(), links, where);
                if (w > 1) {
                    worst.Look(state.PointsPlus, document.StaticPoints(), links, where + " plus");
                    worst.Look(state.PointsMinus, document.StaticPoints(), links, where + " minus");
                }
            }
        }
        EXPECT_LE(worst.Error, LinkTolerance) << worst.Name;
    }
}

TEST(RigidLinksTest, TheContactPatchRisesByTheDemandedTravel) {
    for (const MechanismChoice& choice : OfferedChoices()) {
        SCOPED_TRACE(choice.Text());
        Suspension document = CornerOf(choice);
        std::string errorText;
        ASSERT_TRUE(SolveGrid(document, errorText)) << errorText;
        const double offset = static_cast<double>(0.5F);
        for (int r = 2; r <= document.NR + 1; ++r) {
            const double start = document.WheelStates(r, 1).Points[ptWTCP].Z;
            EXPECT_NEAR(document.WheelStates(r, 1).Points[ptTRI].Y -
                            document.StaticPoints()[ptTRI].Y,
                        RackTravelAtStep(document, r), 1e-9);
            for (int w = 2; w <= document.NW + 1; ++w) {
                const WheelState& state = document.WheelStates(r, w);
                const double travel = WheelTravelAtStep(document, w);
                EXPECT_NEAR(state.Points[ptWTCP].Z - start, travel, TravelTolerance);
                EXPECT_NEAR(state.PointsPlus[ptWTCP].Z - start, travel + offset, TravelTolerance);
                EXPECT_NEAR(state.PointsMinus[ptWTCP].Z - start, travel - offset, TravelTolerance);
            }
        }
    }
}

} // namespace
} // namespace corvanta::test
