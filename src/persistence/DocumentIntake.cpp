#include "persistence/DocumentIntake.h"

#include "model/Failure.h"
#include "model/NumberText.h"
#include "solver/SInitGeo.h"

#include <cmath>
#include <string>
#include <utility>

namespace corvanta {

std::int32_t MechanismNumber(std::string_view key, double value, std::int32_t highest) {
    const double number = std::nearbyint(value);
    if (!(number >= 0 && number <= highest)) {
        throw Failure(fnInvalidCall, std::string(key) + " is " + NumberToText(number, {}) +
                                         " in the file, but only 0 to " + std::to_string(highest) +
                                         " exist");
    }
    return ToInteger32(number);
}

void AdoptDocument(Suspension& document, ChannelCatalogue& channels, SuspensionData data,
                   PointSet points, const FundamentalUnits& units, Messages& messages) {
    std::swap(document.Data, data);
    std::swap(document.StaticPoints(), points);
    try {
        InitGeometry(document, channels, units, messages);
    } catch (...) {
        std::swap(document.Data, data);
        std::swap(document.StaticPoints(), points);
        throw;
    }
    document.DataLoaded = true;
}

} // namespace corvanta
