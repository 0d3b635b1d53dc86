#pragma once

#include "model/Suspension.h"

#include <string>

namespace corvanta {

/// Checks the static points before anything is derived from them. Collects every problem into one
/// report. Returns true when there is none; otherwise false with the report in `report`,
/// `GeometryValid` cleared and the points of the problems named.
[[nodiscard]] bool CheckInputGeometry(Suspension& document, std::string& report);

/// Checks that the outer actuator point lies on the side of its mechanism, once the foot of the
/// upper wishbone is known. Returns true when it does, otherwise false with the report, and the
/// points named.
[[nodiscard]] bool CheckActuatorPlacement(Suspension& document, std::string& report);

} // namespace corvanta
