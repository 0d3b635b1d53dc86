#pragma once

#include "model/Suspension.h"

namespace corvanta {

/// Velocity ratios are wheel movement per actuator movement, by central difference between the two
/// slope sets of a state: above 1 the wheel moves further than the spring. An actuator that stands
/// still gives 0. All throw Failure for arithmetic failures only.

/// Spring length and velocity ratio; positive when the spring shortens in bump.
void CalculateMotionSpring(const Suspension& document, WheelState& state);

/// Length and velocity ratio of the centre spring; under roll its far end stays at the mirror of
/// the row's start state.
void CalculateMotionThirdSpring(const Suspension& document, WheelState& state,
                                const WheelState& rowStartState);

/// Velocity ratio of the rod's inner end. A ratio of path lengths: the actuator's sense is not in
/// it.
void CalculateMotionPRod(const Suspension& document, WheelState& state);

/// Rotation and velocity ratio of the bar. Under heave both ends go together and the bar does not
/// move. `staticState` tells which way the lever points.
void CalculateMotionARB(const Suspension& document, WheelState& state,
                        const WheelState& staticState);

/// Rates at the wheel: stiffness by the square of the velocity ratio, N/mm.
void CalculateWheelRates(const Suspension& document, WheelState& state);

/// Total rate at the wheel, tyre and links in series with the sum of the wheel rates, and the roll
/// stiffness of the axle that follows from it.
void CalculateWheelRateTotal(const Suspension& document, WheelState& state);

/// Changes against the static wheel step of the same rack step, as ratios. A channel whose
/// reference is not above 0 is not written. Throws Failure "Division by zero" when a ratio of the
/// state is 0 and that of the reference is not.
void CalculateWheelRateChanges(WheelState& state, const WheelState& referenceState);

} // namespace corvanta
