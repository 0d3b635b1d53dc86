#include "solver/RideHeight.h"

#include "calculation/SCalcs.h"
#include "model/Failure.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

/// How near positions come that were found on different ways, mm.
constexpr double PlaceTolerance = 1e-4;

/// Travels of the tests, mm: one that is a step of the corners, and one that is none.
constexpr double StepTravel = 5;
constexpr double OtherTravel = -7.3;

/// Solves the grid, so that the corner can be adjusted.
void Solve(Suspension& document) {
    std::string errorText;
    if (!SolveGrid(document, errorText)) {
        throw Failure(fnInternal, errorText);
    }
    document.GeometryValid = document.ResultsValid = true;
}

void Adjust(Suspension& document, double travel, bool byPushRodLength) {
    std::string errorText;
    ASSERT_TRUE(AdjustRideHeight(document, errorText, travel, byPushRodLength)) << errorText;
}

/// Every choice of mechanisms as a corner solved over its wheel travel.
void ForEachChoice(const std::function<void(const Suspension&)>& look) {
    for (const MechanismChoice& choice : OfferedChoices()) {
        SCOPED_TRACE(choice.Text());
        Suspension document = CornerOf(choice);
        document.Data.RackTravel = 0;
        SetUpCorner(document);
        Solve(document);
        look(document);
    }
}

void ExpectSamePlace(const PointSet& points, const PointSet& expected, PointNumber number) {
    EXPECT_LE(Distance(points[number], expected[number]), PlaceTolerance) << PointShortName(number);
}

/// What stays where it was besides the chassis pickups when the rod takes up the change.
std::vector<PointNumber> RockerSide(const SuspensionData& data) {
    std::vector<PointNumber> stays;
    if (data.SpringMechanism >= 5 && data.SpringMechanism <= 10) {
        stays = {ptPRI, ptR1O, ptARDL, ptARI};
    }
    if (data.SpringMechanism == 9 || data.SpringMechanism == 10) {
        stays.insert(stays.end(), {ptR2I, ptR2O});
    }
    if (UsesTBar(data)) {
        stays.insert(stays.end(), {ptTBDLI, ptTBDLO, ptTBDLO2, ptTSI});
    }
    return stays;
}

TEST(RideHeightTest, TheCornerStandsWhereTheWheelTravelPutsIt) {
    ForEachChoice([](const Suspension& document) {
        const PointSet& solved =
            document.WheelStates(document.StaticRack, document.StaticWheel - 1).Points;
        Suspension adjusted = document;
        Adjust(adjusted, StepTravel, false);
        for (const PointNumber number : AllPoints) {
            if (document.Catalogue[number].Enabled) {
                ExpectSamePlace(adjusted.StaticPoints(), solved, number);
            }
        }
    });
}

TEST(RideHeightTest, WithTheRodTheRockerSideStaysAndTheRestMoves) {
    ForEachChoice([](const Suspension& document) {
        const std::vector<PointNumber> stays = RockerSide(document.Data);
        Suspension free = document;
        Suspension byRod = document;
        Adjust(free, OtherTravel, false);
        EXPECT_NEAR(free.StaticPoints()[ptWTCP].Z, document.StaticPoints()[ptWTCP].Z + OtherTravel,
                    1e-6);
        Adjust(byRod, OtherTravel, true);
        for (const PointNumber number : AllPoints) {
            if (document.Catalogue[number].Enabled) {
                const bool kept = std::find(stays.begin(), stays.end(), number) != stays.end();
                EXPECT_EQ(byRod.StaticPoints()[number],
                          (kept ? document : free).StaticPoints()[number])
                    << PointShortName(number);
            }
        }
    });
}

TEST(RideHeightTest, WithoutResultsThePointsAreCheckedAndReadied) {
    for (const char* name : {"formula-front-pushrod.WSP", "saloon-front-strut.WSP"}) {
        SCOPED_TRACE(name);
        Suspension solved = LoadSample(name);
        Suspension loaded = solved;
        Solve(solved);
        Adjust(solved, OtherTravel, false);
        Adjust(loaded, OtherTravel, false);
        for (const PointNumber number : AllPoints) {
            if (solved.Catalogue[number].Enabled) {
                ExpectSamePlace(loaded.StaticPoints(), solved.StaticPoints(), number);
            }
        }

        std::string errorText;
        loaded.StaticPoints()[ptTRI] = loaded.StaticPoints()[ptTRO];
        const PointSet faulty = loaded.StaticPoints();
        EXPECT_FALSE(AdjustRideHeight(loaded, errorText, OtherTravel, false));
        EXPECT_THAT(errorText, HasSubstr("Trackrod has no length"));
        EXPECT_EQ(loaded.StaticPoints(), faulty);
    }
}

} // namespace
} // namespace corvanta::test
