#pragma once

#include "model/Suspension.h"

#include <string>

namespace corvanta {

/// Moves the static position of the corner by a wheel travel, mm, positive into bump, with the rack
/// at its static place: the solved positions become the static points of the document. Chassis
/// pickups stay.
///
/// With `byPushRodLength` a rocker, and the bars on it, keep their places too, so that the length
/// of the pushrod or pullrod takes up the change; it makes a difference for mechanisms with
/// `HasRocker`, apart from the rocker on the upper wishbone, and where a T-bar is in use.
///
/// Where results are valid the static lengths and the solved neighbour are those of the last
/// calculation; otherwise the static points are checked and readied first.
///
/// Returns false with `errorText` when the points fail their check or the mechanism cannot follow.
/// Throws Failure as the search for the wheel does; a travel of 0 may be met exactly, which is
/// "Division by zero" there. In neither case a point that the user enters has changed, nor has
/// whether results are valid.
[[nodiscard]] bool AdjustRideHeight(Suspension& document, std::string& errorText, double travel,
                                    bool byPushRodLength);

} // namespace corvanta
