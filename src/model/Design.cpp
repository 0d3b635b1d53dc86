#include "model/Design.h"

#include "model/PointsInPlay.h"

#include <algorithm>

namespace corvanta {

bool operator==(const Design& one, const Design& other) {
    if (one.Data != other.Data || one.Points == other.Points) {
        return one.Data == other.Data;
    }
    PointCatalogue catalogue;
    SetPointsInPlay(catalogue, one.Data.SpringMechanism, one.Data);
    return std::all_of(AllPoints.begin(), AllPoints.end(), [&](PointNumber number) {
        return !catalogue[number].Enabled || one.Points[number] == other.Points[number];
    });
}

Design DesignOf(const Suspension& document) {
    return {document.Data, document.StaticPoints()};
}

} // namespace corvanta
