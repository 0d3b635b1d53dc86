#include "solver/DoubtfulValues.h"

#include "solver/LocatedStatic.h"
#include "tests/support/SampleCorners.h"
#include "tests/support/Testing.h"

#include <functional>

namespace corvanta::test {
namespace {

std::vector<std::string> Sentences(const Suspension& corner) {
    std::vector<std::string> sentences;
    for (const DoubtfulValue& doubt : DoubtfulValues(corner.StaticPoints(), corner.Catalogue)) {
        sentences.push_back(doubt.Sentence);
    }
    return sentences;
}

TEST(DoubtfulValuesTest, EveryOfferedCornerIsFreeOfDoubtAndStandsWhereItWasEntered) {
    for (const std::string& path : AllSamplePaths()) {
        EXPECT_THAT(Sentences(LoadSample(path.substr(SamplePath("").size()))), IsEmpty()) << path;
    }
    EXPECT_THAT(Sentences(DoubleWishboneCorner()), IsEmpty());
    EXPECT_THAT(Sentences(Suspension()), IsEmpty()) << "nothing is typed yet";
    for (const MechanismChoice& choice : OfferedChoices()) {
        Suspension corner = CornerOf(choice);
        CalculateCorner(corner);
        EXPECT_TRUE(LocateStatic(corner).Displaced.empty()) << choice.Text();
    }
}

TEST(DoubtfulValuesTest, AStraightRockerCarriesNothingAndTheGridShowsIt) {
    Suspension corner = DoubleWishboneCorner(smPushrodToLowerWishbone, abToRocker);
    PointSet& points = corner.StaticPoints();
    points[ptR1P1] = {0, 300, 480};
    points[ptPRI] = {0, 350, 520};
    points[ptR1O] = {0, 250, 440};
    CalculateCorner(corner);
    const LocatedStatic located = LocateStatic(corner);
    ASSERT_EQ(located.WithoutTriangle.size(), 1U);
    EXPECT_EQ(located.WithoutTriangle[0].Target, ptARDL);
    EXPECT_THAT(located.WithoutTriangle[0].References, ElementsAre(ptR1P1, ptPRI, ptR1O));
    ASSERT_EQ(located.Displaced.size(), 2U) << "and with it the lever of the bar";
    const PointSet& solved = corner.WheelStates(corner.StaticRack, corner.StaticWheel).Points;
    for (const DisplacedPoint& point : located.Displaced) {
        EXPECT_EQ(point.Distance, Distance(solved[point.Number], points[point.Number]));
        EXPECT_GT(point.Distance, 1);
    }
}

TEST(DoubtfulValuesTest, EachSlipIsNamed) {
    constexpr double Inch = 25.4;
    const auto scale = [](SuspPoint& p, double factor) {
        p = {p.X * factor, p.Y * factor, p.Z * factor};
    };
    const auto scaleAll = [scale](PointSet& p, double factor) {
        for (const PointNumber number : AllPoints) {
            scale(p[number], factor);
        }
    };
    struct Slip {
        const char* Words;
        PointNumber Number;
        std::function<void(PointSet&)> Make;
    };
    for (const Slip& slip : {
             Slip{"across the centreline", ptUWO, [](PointSet& p) { p[ptUWO].Y *= -1; }},
             {"across the centreline", ptTRI, [](PointSet& p) { p[ptTRI].Y *= -1; }},
             {"right of the car", ptWC,
              [](PointSet& p) {
                  for (const PointNumber number : AllPoints) {
                      p[number].Y *= -1;
                  }
              }},
             {"too small for a car", ptWC, [&](PointSet& p) { scaleAll(p, 1 / Inch); }},
             {"too large for a car", ptWC, [&](PointSet& p) { scaleAll(p, Inch); }},
             {"too far from the wheel", ptLWO, [&](PointSet& p) { scale(p[ptLWO], 1 / Inch); }},
             {"too far from the wheel", ptLWIF, [&](PointSet& p) { scale(p[ptLWIF], Inch); }},
             {"next to the origin", ptLWIF, [&](PointSet& p) { scale(p[ptLWIF], 1 / Inch); }},
             {"are they swapped", ptLWIF, [](PointSet& p) { std::swap(p[ptLWIF].X, p[ptLWIR].X); }},
             {"are they swapped", ptUWO, [](PointSet& p) { std::swap(p[ptUWO], p[ptLWO]); }},
             {"inside the car", ptWC, [](PointSet& p) { p[ptWC].Y = p[ptWTCP].Y = 330; }},
             {"too narrow", ptWC, [](PointSet& p) { p[ptWC].Y = p[ptWTCP].Y = 30; }},
             {"not below the wheel centre", ptWTCP, [](PointSet& p) { p[ptWTCP].X += 100; }},
         }) {
        Suspension corner = DoubleWishboneCorner();
        slip.Make(corner.StaticPoints());
        const auto doubts = DoubtfulValues(corner.StaticPoints(), corner.Catalogue);
        EXPECT_TRUE(std::any_of(doubts.begin(), doubts.end(),
                                [&](const DoubtfulValue& doubt) {
                                    return doubt.Number == slip.Number &&
                                           doubt.Sentence.find(slip.Words) != std::string::npos;
                                }))
            << slip.Words << " " << PointShortName(slip.Number);
    }
}

} // namespace
} // namespace corvanta::test
