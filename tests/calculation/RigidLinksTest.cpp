#include "calculation/SCalcs.h"
#include "tests/support/RigidParts.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta::test {
namespace {

constexpr double LinkTolerance = 1e-4;
constexpr double TravelTolerance = 1e-6;

TEST(RigidLinksTest, PartsKeepTheirLengthsAndTheContactPatchRisesByTheDemandedTravel) {
    constexpr double offset = 0.5; // of the sets for the slopes
    for (const MechanismChoice& choice : OfferedChoices()) {
        SCOPED_TRACE(choice.Text());
        Suspension document = CornerOf(choice);
        std::string errorText;
        ASSERT_TRUE(SolveGrid(document, errorText)) << errorText;
        const PointSet& fixed = document.StaticPoints();
        const std::vector<RigidLink> links = RigidParts(document.Data).Links();
        WorstLink worst;
        for (int r = 2; r <= document.NR + 1; ++r) {
            const PointSet& start = document.WheelStates(r, 1).Points;
            worst.Look(start, fixed, links, " at the start of " + std::to_string(r));
            EXPECT_NEAR(start[ptTRI].Y - fixed[ptTRI].Y, RackTravelAtStep(document, r), 1e-9);
            for (int w = 2; w <= document.NW + 1; ++w) {
                const WheelState& state = document.WheelStates(r, w);
                const std::string where = " at " + std::to_string(r) + ", " + std::to_string(w);
                const auto check = [&](const PointSet& set, double travel) {
                    worst.Look(set, fixed, links, where);
                    EXPECT_NEAR(set[ptWTCP].Z - start[ptWTCP].Z, travel, TravelTolerance);
                };
                const double travel = WheelTravelAtStep(document, w);
                check(state.Points, travel);
                check(state.PointsPlus, travel + offset);
                check(state.PointsMinus, travel - offset);
            }
        }
        EXPECT_LE(worst.Error, LinkTolerance) << worst.Name;
    }
}

} // namespace
} // namespace corvanta::test
