#include "desktop/ChartRanges.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace corvanta {

namespace {

constexpr double Margin = 0.04;      ///< of the range, beside the points
constexpr double LeastExtent = 1e-9; ///< of the values: a line with less of it is rounding noise
constexpr double LeastZoom = 1e-3;   ///< of the fitted range
constexpr double MostZoom = 20;      ///< of the fitted range

AxisRange FittedRange(double low, double high) {
    // A line without an extent lies in the middle of a small one.
    const double magnitude = std::max(std::abs(low), std::abs(high));
    const double size =
        high - low > LeastExtent * magnitude ? high - low : std::max(1.0, magnitude * 0.1);
    const double middle = (low + high) / 2;
    return {middle - size * (0.5 + Margin), middle + size * (0.5 + Margin)};
}

bool Contains(const AxisRange& range, double value) {
    return value >= range.Lower && value <= range.Upper;
}

struct Section {
    ChartPoint Begin;
    ChartPoint End;
};

/// The part of the straight line between two points that lies within the ranges.
std::optional<Section> SectionInSight(const ChartPoint& from, const ChartPoint& to,
                                      const ChartRanges& ranges) {
    double enters = 0; // parts of the way, 0 to 1
    double leaves = 1;
    const auto cut = [&](double begin, double end, const AxisRange& range) {
        if (begin == end) {
            return Contains(range, begin);
        }
        const double lower = (range.Lower - begin) / (end - begin);
        const double upper = (range.Upper - begin) / (end - begin);
        enters = std::max(enters, std::min(lower, upper));
        leaves = std::min(leaves, std::max(lower, upper));
        return enters <= leaves;
    };
    if (!cut(from.X, to.X, ranges.X) || !cut(from.Y, to.Y, ranges.Y)) {
        return std::nullopt;
    }
    const auto at = [&](double part) {
        return ChartPoint{std::lerp(from.X, to.X, part), std::lerp(from.Y, to.Y, part)};
    };
    return Section{at(enters), at(leaves)};
}

} // namespace

ChartRanges FittedRanges(const std::vector<ChartPoint>& points) {
    const auto [lowX, highX] =
        std::minmax_element(points.begin(), points.end(),
                            [](const ChartPoint& a, const ChartPoint& b) { return a.X < b.X; });
    const auto [lowY, highY] =
        std::minmax_element(points.begin(), points.end(),
                            [](const ChartPoint& a, const ChartPoint& b) { return a.Y < b.Y; });
    return {FittedRange(lowX->X, highX->X), FittedRange(lowY->Y, highY->Y)};
}

double ZoomedSize(double size, const AxisRange& fitted) {
    return std::clamp(size, fitted.Size() * LeastZoom, fitted.Size() * MostZoom);
}

bool Contains(const ChartRanges& ranges, const ChartPoint& point) {
    return Contains(ranges.X, point.X) && Contains(ranges.Y, point.Y);
}

bool IsInSight(const std::vector<ChartPoint>& points, const ChartRanges& ranges) {
    const auto crosses = [&](const ChartPoint& from, const ChartPoint& to) {
        return SectionInSight(from, to, ranges).has_value();
    };
    return std::adjacent_find(points.begin(), points.end(), crosses) != points.end();
}

std::vector<ChartPoint> LineInSight(std::vector<ChartPoint> points, const ChartRanges& ranges) {
    std::sort(points.begin(), points.end(),
              [](const ChartPoint& a, const ChartPoint& b) { return a.X < b.X; });
    std::vector<ChartPoint> line;
    for (std::size_t n = 1; n < points.size(); ++n) {
        const auto section = SectionInSight(points[n - 1], points[n], ranges);
        if (!section) {
            continue;
        }
        if (line.empty() || line.back() != section->Begin) {
            line.push_back({section->Begin.X, std::numeric_limits<double>::quiet_NaN()});
            line.push_back(section->Begin);
        }
        line.push_back(section->End);
    }
    return line;
}

int DigitsAlong(const AxisRange& range) {
    constexpr double Usual = 6;
    constexpr double Most = 15;
    const double magnitude = std::max(std::abs(range.Lower), std::abs(range.Upper));
    const double digits =
        std::floor(std::log10(magnitude)) - std::floor(std::log10(range.Size())) + 3;
    return static_cast<int>(std::clamp(digits, Usual, Most));
}

} // namespace corvanta
