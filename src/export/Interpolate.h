#pragma once

#include <span>

namespace corvanta {

/// Looks a curve up at `at`. The points (x, y) of the curve, at least one, may come in any order.
/// Between two points the curve is the straight line; beyond its ends it follows the line of the
/// end segment. Of points with equal x the first one counts; a curve of one x has its y everywhere.
/// Throws Failure "Overflow" when the value is beyond the range of a double.
[[nodiscard]] double Interpolate(std::span<const double> x, std::span<const double> y, double at);

} // namespace corvanta
