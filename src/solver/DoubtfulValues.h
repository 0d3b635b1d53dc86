#pragma once

#include "model/Points.h"

#include <string>
#include <vector>

namespace corvanta {

/// A coordinate that can hardly be meant, though a corner can be calculated with it.
struct DoubtfulValue {
    PointNumber Number = ptWC;
    double SuspPoint::*Coordinate = &SuspPoint::X;
    std::string Sentence; ///< what is wrong with it, with the name of the point
};

/// Looks through the points in play of a corner as they were entered: points across the centreline,
/// the front one of a pair behind the rear one, a wheel inside the car, lengths that no car has,
/// which come of a wrong unit. Nothing is stopped by what it finds. A point at exactly (0, 0, 0)
/// has not been entered yet. The bounds are a good way outside of what is built.
[[nodiscard]] std::vector<DoubtfulValue> DoubtfulValues(const PointSet& points,
                                                        const PointCatalogue& catalogue);

} // namespace corvanta
