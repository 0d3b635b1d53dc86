#pragma once

#include "model/Design.h"

#include <string>

namespace corvanta {

/// What made one design another, as a step of the history is named: "Move Trackrod inboard pickup
/// Z" for one coordinate, "Move Trackrod inboard pickup" for several of one point, "Move points",
/// "Change type", "Edit travel" and the like for the pages of the editor, "Edit properties" for
/// more than one of these.
[[nodiscard]] std::string DescribeChange(const Design& before, const Design& after);

/// The name of a step that moves a point along an axis, 0 to 2 for X to Z, or along several, -1.
[[nodiscard]] std::string MoveName(const SuspensionData& data, PointNumber number, int axis);

} // namespace corvanta
