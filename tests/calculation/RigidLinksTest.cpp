#include "calculation/SCalcs.h"
#include "tests/support/RigidParts.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvanta::test {
namespace {

constexpr double LinkTolerance = 1e-8;
constexpr double InPlaneTolerance = 1e-4;
constexpr double TravelTolerance = 1e-6;

/// True for a link to a point that may lie in the plane of the points it is located from, where the
/// root costs half of the digits: the far side of a T-bar, and its drop link's end on the rocker.
bool HasPointInPlane(const RigidLink& link) {
    return link.From == ptTBDLI || link.To == ptTBDLO2;
}

TEST(RigidLinksTest, PartsKeepTheirLengthsAndTheContactPatchRisesByTheDemandedTravel) {
    constexpr double offset = 0.5; // of the sets for the slopes
    for (const MechanismChoice& choice : OfferedChoices()) {
        SCOPED_TRACE(choice.Text());
        Suspension document = CornerOf(choice);
        std::string errorText;
        ASSERT_TRUE(SolveGrid(document, errorText)) << errorText;
        const PointSet& fixed = document.StaticPoints();
        std::vector<RigidLink> links = RigidParts(document.Data).Links();
        std::vector<RigidLink> inPlane = links;
        std::erase_if(links, HasPointInPlane);
        std::erase_if(inPlane, [](const RigidLink& link) { return !HasPointInPlane(link); });
        WorstLink worst;
        WorstLink worstInPlane;
        for (int r = 2; r <= document.NR + 1; ++r) {
            const PointSet& start = document.WheelStates(r, 1).Points;
            worst.Look(start, fixed, links, " at the start of " + std::to_string(r));
            worstInPlane.Look(start, fixed, inPlane, " at the start of " + std::to_string(r));
            EXPECT_NEAR(start[ptTRI].Y - fixed[ptTRI].Y, RackTravelAtStep(document, r), 1e-9);
            for (int w = 2; w <= document.NW + 1; ++w) {
                const WheelState& state = document.WheelStates(r, w);
                const std::string where = " at " + std::to_string(r) + ", " + std::to_string(w);
                const auto check = [&](const PointSet& set, double travel) {
                    worst.Look(set, fixed, links, where);
                    worstInPlane.Look(set, fixed, inPlane, where);
                    EXPECT_NEAR(set[ptWTCP].Z - start[ptWTCP].Z, travel, TravelTolerance);
                };
                const double travel = WheelTravelAtStep(document, w);
                check(state.Points, travel);
                check(state.PointsPlus, travel + offset);
                check(state.PointsMinus, travel - offset);
            }
        }
        EXPECT_LE(worst.Error, LinkTolerance) << worst.Name;
        EXPECT_LE(worstInPlane.Error, InPlaneTolerance) << worstInPlane.Name;
    }
}

} // namespace
} // namespace corvanta::test
