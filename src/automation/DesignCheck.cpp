#include "automation/DesignCheck.h"

#include "automation/SolvedCorner.h"
#include "solver/DoubtfulValues.h"
#include "solver/LocatedStatic.h"
#include "study/DesignFields.h"

namespace corvanta {

std::vector<Finding> CheckDesign(const Design& design, const FundamentalUnits& units) {
    std::vector<Finding> findings;
    CornerFailure failure;
    const std::unique_ptr<Program> corner = SolvedCorner(design, units, failure);
    if (corner == nullptr) {
        findings.push_back({true, TextOf(failure, design, units), failure.Points});
    }
    const PointCatalogue catalogue = CatalogueOf(design.Data);
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
