#include "solver/LocatedStatic.h"

#include "model/Failure.h"
#include "solver/FaultyPoints.h"
#include "solver/MLibCoordGeom.h"
#include "solver/MechanismTracking.h"
#include "solver/WheelPosition.h"

#include <algorithm>
#include <string>

namespace corvanta {

namespace {

/// Rounding moves a located point by a hundredth of this, mm.
constexpr double LeastDisplacement = 0.001;

/// A triangle lower than this over its longest side counts as a line.
constexpr double FlatTriangle = 1e-4;

bool NearlyInLine(const PointSet& points, const std::array<PointNumber, 3>& numbers) {
    const SuspPoint& a = points[numbers[0]];
    const SuspPoint& b = points[numbers[1]];
    const SuspPoint& c = points[numbers[2]];
    if (ReferenceTriangle(a, b, c).Degenerate()) {
        return true;
    }
    const double longest = std::max(
        {PointDistance(a, b).Distance, PointDistance(b, c).Distance, PointDistance(a, c).Distance});
    const double height = std::min(
        {DistancePointToLine(a, b, c), DistancePointToLine(b, c, a), DistancePointToLine(a, c, b)});
    return height < FlatTriangle * longest;
}

/// The points that the solve of the static position locates, in their order, and where it finds
/// them. A lever that fails its check ends it there, as it ends the calculation.
std::vector<CarriedPoint> FindStatic(PointSet& found, const Suspension& document) {
    Suspension still; // without the grid, which is large
    still.Data = document.Data;
    still.StaticLengths = document.StaticLengths;
    still.StaticPoints() = document.StaticPoints();
    std::vector<CarriedPoint> carried;
    MovedSets sets{found, still.StaticPoints(), still.StaticPoints()};
    sets.Log = &carried;
    std::string errorText;
    try {
        (void)LocateRackRow(sets, still, errorText, 0);
    } catch (const Failure&) {
        return carried; // the calculation told of it
    }
    return carried;
}

} // namespace

LocatedStatic LocateStatic(const Suspension& document) {
    const PointSet& entered = document.StaticPoints();
    PointSet found = entered;
    const std::vector<CarriedPoint> carried = FindStatic(found, document);
    LocatedStatic located;
    for (const PointNumber number : AllPoints) {
        const double distance = PointDistance(found[number], entered[number]).Distance;
        if (document.Catalogue[number].Enabled && number != ptWTCP &&
            distance > LeastDisplacement) {
            located.Displaced.push_back({number, distance});
        }
    }
    if (located.Displaced.empty()) {
        return located;
    }
    for (CarriedPoint point : carried) {
        if (NearlyInLine(entered, point.References)) {
            point.Target = EnteredPoint(point.Target, document.Data);
            for (PointNumber& reference : point.References) {
                reference = EnteredPoint(reference, document.Data);
            }
            located.WithoutTriangle.push_back(point);
        }
    }
    return located;
}

} // namespace corvanta
