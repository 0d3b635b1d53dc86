#pragma once

#include "platform/Chart2D.h"

#include <vector>

namespace corvanta {

struct ChartRanges {
    AxisRange X;
    AxisRange Y;
};

/// The ranges that show all of one or more points, with a little room beside them.
[[nodiscard]] ChartRanges FittedRanges(const std::vector<ChartPoint>& points);

/// The size next to `size` that a zoom may give to an axis: from a thousandth of the range that
/// shows all of the line to twenty times that.
[[nodiscard]] double ZoomedSize(double size, const AxisRange& fitted);

[[nodiscard]] bool Contains(const ChartRanges& ranges, const ChartPoint& point);

/// Whether the line that joins the points has a part within the ranges.
[[nodiscard]] bool IsInSight(const std::vector<ChartPoint>& points, const ChartRanges& ranges);

/// The line along X that joins the points, cut off at the ranges. A point without a Y goes before
/// each part that does not hang together with the one before.
[[nodiscard]] std::vector<ChartPoint> LineInSight(std::vector<ChartPoint> points,
                                                  const ChartRanges& ranges);

/// Significant digits that tell neighbouring numbers along an axis apart, however small a part of
/// their size its range is.
[[nodiscard]] int DigitsAlong(const AxisRange& range);

} // namespace corvanta
