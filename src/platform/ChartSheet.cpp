#include "platform/ChartSheet.h"

#include <algorithm>
#include <utility>

namespace corvanta {

namespace {

using Column = std::pair<std::string, const std::vector<ChartPoint>*>;

std::vector<Column> ColumnsOf(const ChartSheet& sheet) {
    std::vector<Column> columns;
    for (const SheetCurve& curve : sheet.Curves) {
        columns.emplace_back(curve.Name, &curve.Points);
    }
    for (const SheetBand& band : sheet.Bands) {
        columns.emplace_back(band.Name + ", low", &band.Low);
        columns.emplace_back(band.Name + ", high", &band.High);
    }
    return columns;
}

/// Every X at which something has a point, rising.
std::vector<double> RowsOf(const std::vector<Column>& columns) {
    std::vector<double> rows;
    for (const Column& column : columns) {
        for (const ChartPoint& point : *column.second) {
            rows.push_back(point.X);
        }
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

std::string LinesText(const ChartSheet& sheet) {
    const std::vector<Column> columns = ColumnsOf(sheet);
    std::string text = sheet.Title + "\n" + sheet.AxisX.Title;
    for (const Column& column : columns) {
        text += "\t" + column.first;
    }
    for (const double x : RowsOf(columns)) {
        text += "\n" + NumberToText(x, sheet.NumberSeparators);
        for (const Column& column : columns) {
            const auto point = std::find_if(column.second->begin(), column.second->end(),
                                            [x](const ChartPoint& at) { return at.X == x; });
            text += point == column.second->end()
                        ? "\t"
                        : "\t" + NumberToText(point->Y, sheet.NumberSeparators);
        }
    }
    return text + "\n";
}

std::string MapText(const ChartSheet& sheet, const SheetMap& map) {
    std::string text =
        sheet.Title + "\n" + sheet.AxisY.Title + " \\ " + sheet.AxisX.Title; // down \ across
    for (const double x : map.X) {
        text += "\t" + NumberToText(x, sheet.NumberSeparators);
    }
    for (std::size_t row = 0; row < map.Y.size(); ++row) {
        text += "\n" + NumberToText(map.Y[row], sheet.NumberSeparators);
        for (std::size_t n = 0; n < map.X.size(); ++n) {
            const auto& value = map.Values[row * map.X.size() + n];
            text += value ? "\t" + NumberToText(*value, sheet.NumberSeparators) : "\t";
        }
    }
    return text + "\n";
}

} // namespace

std::optional<AxisPlace> PlaceOn(const std::vector<double>& axis, double value) {
    if (axis.empty() || !(value >= axis.front() && value <= axis.back())) {
        return std::nullopt;
    }
    if (axis.size() == 1) {
        return AxisPlace{};
    }
    const auto next = std::upper_bound(axis.begin() + 1, axis.end() - 1, value);
    const auto before = next - 1;
    return AxisPlace{static_cast<std::size_t>(before - axis.begin()),
                     (value - *before) / (*next - *before)};
}

std::optional<double> ValueAt(const SheetMap& map, double x, double y) {
    const auto column = PlaceOn(map.X, x);
    const auto row = PlaceOn(map.Y, y);
    return column && row ? ValueAt(map, *column, *row) : std::nullopt;
}

std::optional<double> ValueAt(const SheetMap& map, AxisPlace x, AxisPlace y) {
    if (!map.Kinds.empty()) { // there is nothing between two kinds
        x.Part = x.Part < 0.5 ? 0 : 1;
        y.Part = y.Part < 0.5 ? 0 : 1;
    }
    const std::size_t width = map.X.size();
    const std::size_t right = x.Index + 1 < width ? 1 : 0;
    const std::size_t up = y.Index + 1 < map.Y.size() ? width : 0;
    const std::optional<double>* const corner = &map.Values[y.Index * width + x.Index];
    if (!corner[(x.Part < 0.5 ? 0 : right) + (y.Part < 0.5 ? 0 : up)]) {
        return std::nullopt;
    }
    double sum = 0;
    double weights = 0; // less than 1 beside what can't be reached
    const auto add = [&](const std::optional<double>& value, double weight) {
        if (value) {
            sum += weight * *value;
            weights += weight;
        }
    };
    add(corner[0], (1 - x.Part) * (1 - y.Part));
    add(corner[right], x.Part * (1 - y.Part));
    add(corner[up], (1 - x.Part) * y.Part);
    add(corner[right + up], x.Part * y.Part);
    return sum / weights;
}

std::vector<Colour> ColoursOf(const SheetMap& map) {
    if (!map.Kinds.empty()) {
        std::vector<Colour> colours;
        for (const MapKind& kind : map.Kinds) {
            colours.push_back(kind.Drawn);
        }
        return colours;
    }
    return map.Differences ? DivergingColours(map.Levels.Steps)
                           : SequentialColours(map.Levels.Steps);
}

std::string DataText(const ChartSheet& sheet) {
    return sheet.Map ? MapText(sheet, *sheet.Map) : LinesText(sheet);
}

} // namespace corvanta
