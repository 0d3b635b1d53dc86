#pragma once

#include "model/Suspension.h"
#include "solver/SGetLocn.h"

#include <vector>

namespace corvanta {

/// An entered point that the calculation does not find where it was entered.
struct DisplacedPoint {
    PointNumber Number = ptWSA;
    double Distance = 0; ///< from the entered place, mm
};

/// How the static position of the calculation differs from the entered points.
struct LocatedStatic {
    std::vector<DisplacedPoint> Displaced; ///< in catalogue order; empty for a sound corner

    /// Points that are carried by three points in one line, or nearly, which can't tell where they
    /// are; the references are entered points. The first to be located comes first. What hangs on
    /// such a point is displaced with it.
    std::vector<CarriedPoint> WithoutTriangle;
};

/// Locates the static position as the calculation does, and tells what differs from the entered
/// points by more than 0.001 mm. The contact patch is not told of: the calculation places it below
/// the wheel centre, which stands straight ahead. The document has been calculated, or its
/// calculation has failed at a position.
[[nodiscard]] LocatedStatic LocateStatic(const Suspension& document);

} // namespace corvanta
