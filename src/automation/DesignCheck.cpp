#include "automation/DesignCheck.h"

#include "automation/SolvedCorner.h"
#include "solver/DoubtfulValues.h"
#include "solver/LocatedStatic.h"
#include "study/DesignFields.h"
#include "study/DesignVariable.h"

#include <cmath>

namespace corvanta {

namespace {

/// Squares of greater coordinates, and so distances, are beyond the range of a double, mm.
constexpr double MostCoordinate = 1e150;

/// Coordinates of which no distance can be told.
std::vector<Finding> UnusableCoordinates(const Design& design, const PointCatalogue& catalogue) {
    std::vector<Finding> findings;
    for (const PointNumber number : AllPoints) {
        for (int axis = 0; axis < 3 && catalogue[number].Enabled; ++axis) {
            const PointCoordinate coordinate{number, axis};
            if (!(std::abs(ValueOf(design, coordinate)) <= MostCoordinate)) {
                findings.push_back(
                    {true, NameOf(design.Data, coordinate) + " is no usable number", {number}});
            }
        }
    }
    return findings;
}

} // namespace

std::vector<Finding> CheckDesign(const Design& design, const FundamentalUnits& units) {
    const PointCatalogue catalogue = CatalogueOf(design.Data);
    std::vector<Finding> findings = UnusableCoordinates(design, catalogue);
    if (!findings.empty()) {
        return findings; // nothing else can be told
    }
    CornerFailure failure;
    const std::unique_ptr<Program> corner = SolvedCorner(design, units, failure);
    if (corner == nullptr) {
        findings.push_back({true, TextOf(failure, design, units), failure.Points});
    }
    for (const DoubtfulValue& doubtful : DoubtfulValues(design.Points, catalogue)) {
        findings.push_back({false, doubtful.Sentence, {doubtful.Number}});
    }
    if (corner != nullptr) {
        for (const DisplacedPoint& displaced : LocateStatic(corner->Document).Displaced) {
            findings.push_back({false,
                                catalogue[displaced.Number].LongName + " is calculated " +
                                    FormatChannelValue(units, displaced.Distance, ucDisplacement) +
                                    " " + units[ucDisplacement].Label +
                                    " from where it was entered",
                                {displaced.Number}});
        }
    }
    return findings;
}

} // namespace corvanta
