#include "calculation/SCalcs.h"

#include "model/Failure.h"
#include "tests/support/Places.h"
#include "tests/support/SampleCorners.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace corvanta::test {
namespace {

/// One line of the reference: where a point stands at a rack and a wheel travel, mm.
struct ReferencePosition {
    double RackTravel = 0;
    double WheelTravel = 0;
    std::string Point;
    SuspPoint Position;
    double Tolerance = 0;
};

/// The reference by the file of the corner, which is named from the folder of the samples.
std::map<std::string, std::vector<ReferencePosition>> ReadReference() {
    std::map<std::string, std::vector<ReferencePosition>> corners;
    std::ifstream file(SourceFolder() + "/tests/golden/positions.tsv");
    std::string line;
    bool inBody = false; // the comment and the line of titles come first
    while (std::getline(file, line)) {
        if (!inBody) {
            inBody = line.rfind("file\t", 0) == 0;
            continue;
        }
        std::istringstream cells(line);
        std::string corner;
        ReferencePosition reference;
        cells >> corner >> reference.RackTravel >> reference.WheelTravel >> reference.Point >>
            reference.Position.X >> reference.Position.Y >> reference.Position.Z >>
            reference.Tolerance;
        EXPECT_TRUE(cells) << "unreadable line: " << line;
        corners[corner].push_back(reference);
    }
    return corners;
}

PointNumber PointOfName(const std::string& name) {
    const auto* const found = std::find_if(AllPoints.begin(), AllPoints.end(), [&](PointNumber n) {
        return PointShortName(n) == name;
    });
    EXPECT_NE(found, AllPoints.end()) << name;
    return found == AllPoints.end() ? ptWC : *found;
}

/// The step whose travel is `travel`, of a grid whose steps grow by `sense` times `stepSize`.
int StepAt(double travel, double stepSize, int staticStep, int sense) {
    const double steps = travel / stepSize;
    EXPECT_NEAR(steps, std::round(steps), 1e-9) << "travel " << travel << " is no whole step";
    return staticStep + sense * static_cast<int>(std::lround(steps));
}

double LargestDifference(const SuspPoint& a, const SuspPoint& b) {
    return std::max({std::abs(a.X - b.X), std::abs(a.Y - b.Y), std::abs(a.Z - b.Z)});
}

void ExpectMeetsReference(const Suspension& document,
                          const std::vector<ReferencePosition>& references) {
    for (const ReferencePosition& reference : references) {
        const int wheelStep = StepAt(reference.WheelTravel, document.Data.WheelTravelStepSize,
                                     document.StaticWheel, -1);
        const int rackStep =
            StepAt(reference.RackTravel, document.Data.RackTravelStepSize, document.StaticRack, 1);
        const PointSet& points = document.WheelStates(rackStep, wheelStep).Points;
        const SuspPoint& solved = points[PointOfName(reference.Point)];
        EXPECT_LE(LargestDifference(solved, reference.Position), reference.Tolerance)
            << reference.Point << " at rack travel " << reference.RackTravel << ", wheel travel "
            << reference.WheelTravel << ": off by (" << solved.X - reference.Position.X << ", "
            << solved.Y - reference.Position.Y << ", " << solved.Z - reference.Position.Z << ")";
    }
}

TEST(GoldenPositionsTest, TheGridStandsWhereAnotherMethodPutsIt) {
    for (const auto& [corner, references] : ReadReference()) {
        SCOPED_TRACE(corner);
        Suspension document = LoadSample(corner);
        std::string errorText;
        bool solved = false;
        try {
            solved = SolveGrid(document, errorText);
        } catch (const Failure& failure) {
            errorText = failure.Description();
        }
        ASSERT_TRUE(solved) << errorText;
        ExpectMeetsReference(document, references);
    }
}

} // namespace
} // namespace corvanta::test
