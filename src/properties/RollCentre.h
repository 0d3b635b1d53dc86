#pragma once

#include "model/GridPart.h"
#include "model/Suspension.h"
#include "solver/MLibCoordGeom.h"
#include "solver/SGetLocn.h"

namespace corvanta {

/// Whole numbers that stand for a missing result.
inline constexpr double SwingAxleAtInfinity = 999999; ///< lines that never meet, mm
inline constexpr double NoSideViewAngle = -99;        ///< the side view line stands upright
inline constexpr double NoPercentage = -999;          ///< no wheelbase, or no track
inline constexpr double NoLateralLine = -9999;        ///< the front view line stands upright

/// Finds the instantaneous centres of a state in side view (`ptLongFocus`) and front view
/// (`ptLatFocus`) from the slopes of its wishbone planes, and the channels of swing axles and roll
/// centre of one wheel alone. Source of the construction: W. F. Milliken and D. L. Milliken, "Race
/// Car Vehicle Dynamics", 1995, ch. 17. Throws Failure for arithmetic failures.
void CalculateFoci(WheelState& state, const PlaneSlopes& upper, const PlaneSlopes& lower,
                   bool isFrontCorner);

/// Channels of anti-dive, anti-squat and anti-roll in parts of the load transfer, ratios. The line
/// of braking starts at the contact patch, as outboard brakes do, and is scaled by the brake
/// balance; the line of drive starts at the wheel centre. Throws Failure "Division by zero" where a
/// centre lies straight above or below its point, or the centre of gravity at the height of the
/// patch.
void CalculateAntiDiveSquatRollPercentages(const Suspension& document, WheelState& state);

/// Where the lines of a wheel and of the opposite wheel at the mirrored travel cross, mm: from the
/// patch of each to the height, at the centre plane, of its own single-wheel roll centre. Each
/// coordinate is kept within -9999 to 9999; parallel lines give 9999.
[[nodiscard]] Point2D CalculateRollCentreUnderRoll(double yOwn, double zOwn, double yMirror,
                                                   double zMirror, double heightOwn,
                                                   double heightMirror);

/// The roll centre of state (r, w) of the axle. Under roll it rewrites the height in place, so that
/// a state in droop meets the height that its mirror in bump was given before: the wheel steps must
/// come in ascending order. A state whose mirror is not in `part` has no roll centre then.
void CalculateRollCentre(Suspension& document, const GridPart& part, int r, int w);

} // namespace corvanta
