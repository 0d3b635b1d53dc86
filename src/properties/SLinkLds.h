#pragma once

#include "model/Suspension.h"

namespace corvanta {

/// Axial loads in the six two-force links that hold the upright at a solved state: per unit force
/// in X, Y and Z, and for the user's forces together. The links, in the order of the table: upper
/// wishbone rear and front leg, lower wishbone rear and front leg, the actuator from `ptPRO` to
/// `ptPRI`, the track rod. Tension is positive. The force acts at the contact patch, but a negative
/// `XForce`, which is a drive, at the wheel centre. The result is exact only for an actuator on the
/// upright.
///
/// Throws Failure "Division by zero" when the links can't hold the upright.
void CalculateLinkLoads(WheelState& state, const SuspensionData& data);

} // namespace corvanta
