#pragma once

#include "model/GridPart.h"
#include "model/Suspension.h"

#include <string>

namespace corvanta {

/// Fills the channels of the states of `part`, which are solved, row by row. The order of the steps
/// is binding: some channels read others. A row of the part holds its static wheel step, and the
/// part the static state; the sign of the bar's rotation follows the rows that hold both their
/// ends. Returns false at the first step that fails, with `message` holding the
/// reason and `GeometryValid` cleared. After an arithmetic failure, which is thrown, `message`
/// names the step that was at work, where that step has a text of its own.
[[nodiscard]] bool CalculateStateProperties(Suspension& document, const GridPart& part,
                                            std::string& message);

/// Fills the channels of the same states that compare one of them with another. Runs after
/// `CalculateStateProperties`. The mirrors of a state are the one at the opposite rack travel and,
/// where the grid has it, the one at the opposite wheel travel. Without the first in the part its
/// steer against the opposite wheel and its Ackerman stay unwritten, without the second, under
/// roll, its roll centre.
void CalculateGridChannels(Suspension& document, const GridPart& part);

/// Why a state could not be calculated, and which; no message when none failed.
struct StateFailure {
    std::string Message;
    int RackStep = 0;
    int WheelStep = 0;
};

/// Fills the channels of the states of `part`, which are solved, as far as they can be: states that
/// fail leave the part, with their whole rack step when they are its static one. Those that stay
/// come out as they do by the two passes above. `first` takes the first failure, unless it holds
/// one. Throws Failure as `CalculateStateProperties` where no single state is at fault.
void CalculateWhatCanBe(Suspension& document, GridPart& part, StateFailure& first);

/// Channels of wheel attitude, steering axis and wishbone planes of one state. Returns false, with
/// `message` set, when a wishbone's plane stands upright; `GeometryValid` takes the result.
[[nodiscard]] bool CalculateGeometry(Suspension& document, WheelState& state, std::string& message);

/// Channels of the driveshaft of one state; nothing to do without one. Returns false, with
/// `message` set and `GeometryValid` cleared, when its joints lie less than 1 mm apart across the
/// car.
[[nodiscard]] bool CalculateDriveshaftAngles(Suspension& document, WheelState& state,
                                             std::string& message);

/// Steer of a state less that of the static wheel step of its rack step.
void CalculateSteerAngleBump(WheelState& state, const WheelState& staticState);

/// How much of the steering difference of the ideal, concentric corner two steer angles have, deg
/// in, ratio out: 1 is true Ackerman, 0 parallel steer. `steerA` is the wheel of this corner;
/// exactly 0 gives 0. Source: R. Ackermann's steering condition, for instance W. F. Milliken and D.
/// L. Milliken, "Race Car Vehicle Dynamics", 1995, ch. 19. Throws Failure "Division by zero".
[[nodiscard]] double CalculateAckerman(const Suspension& document, double steerA, double steerB);

} // namespace corvanta
