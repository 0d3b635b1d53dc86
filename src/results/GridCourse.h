#pragma once

#include "model/Suspension.h"
#include "model/Views.h"

#include <cstdint>

namespace corvanta {

/// A rack step as it was given, or the static one for 0.
[[nodiscard]] inline int RackStepOf(const Suspension& document, int rackStep) {
    return rackStep == 0 ? document.StaticRack : rackStep;
}

/// A wheel step as it was given, or the static one for 0.
[[nodiscard]] inline int WheelStepOf(const Suspension& document, int wheelStep) {
    return wheelStep == 0 ? document.StaticWheel : wheelStep;
}

/// The states that a table or plot runs through, the position in the other direction fixed.
struct GridCourse {
    std::int32_t Variable = vvAlongWheelTravel;
    int RackStep = 0;
    int WheelStep = 0;
    int Count = 0; ///< steps along the course

    /// State `k` of the course, 1 to `Count`.
    [[nodiscard]] const WheelState& State(const Suspension& document, int k) const {
        return Variable == vvAlongRackTravel ? document.WheelStates(k + 1, WheelStep)
                                             : document.WheelStates(RackStep, k + 1);
    }
};

/// The course of a variable: 1 runs along the rack steps, any other along the wheel steps. A step
/// of 0 is the static one.
[[nodiscard]] inline GridCourse CourseOf(const Suspension& document, std::int32_t variable,
                                         int rackStep, int wheelStep) {
    const bool alongRack = variable == vvAlongRackTravel;
    return {alongRack ? vvAlongRackTravel : vvAlongWheelTravel, RackStepOf(document, rackStep),
            WheelStepOf(document, wheelStep), alongRack ? document.NR : document.NW};
}

} // namespace corvanta
