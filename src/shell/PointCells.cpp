#include "shell/PointCells.h"

#include "model/Failure.h"
#include "shell/TypedNumber.h"

#include <algorithm>
#include <array>

namespace corvanta {

namespace {

struct Axis {
    const char* Name;
    const char* Positive;
    double SuspPoint::*Coordinate;
};

/// The axes of columns 1 to 3.
constexpr std::array<Axis, 3> Axes{{
    {"X", "back", &SuspPoint::X},
    {"Y", "left", &SuspPoint::Y},
    {"Z", "up", &SuspPoint::Z},
}};

const Axis& AxisOf(int column) {
    return Axes[SlotOf(column - 1, static_cast<int>(Axes.size()))];
}

/// The coordinate of a cell, mm.
double CoordinateOf(const DataGrid& grid, const FundamentalUnits& units, int row, int column,
                    double stored) {
    const std::string& text = grid.Cell(row, column);
    if (text == FormatChannelValue(units, stored, ucDisplacement)) {
        return stored;
    }
    const auto typed = ReadTypedNumber(text, units.NumberSeparators, units[ucDisplacement].Label);
    if (!typed) {
        RaiseNoNumber(AxisOf(column).Name + (" of " + grid.Cell(row, 0)), text);
    }
    return ParseChannelValue(units, typed->Text, ucDisplacement);
}

/// Calls `take` for every cell of a point, with its coordinate in `points`.
template <typename Take>
void ForEachCoordinate(const DataGrid& grid, PointSet& points, const Take& take) {
    for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
        if (const std::optional<PointNumber> number = PointOfRow(grid, row)) {
            for (int column = grid.FixedColumns(); column < grid.Columns(); ++column) {
                take(row, column, points[*number].*AxisOf(column).Coordinate);
            }
        }
    }
}

/// Takes the part up to the first of `ends` off the head of a text, and the end with it.
std::string_view TakePart(std::string_view& text, std::string_view ends) {
    const std::size_t end = std::min(text.find_first_of(ends), text.size());
    const std::string_view part = text.substr(0, end);
    const bool pair = text.substr(end, 2) == "\r\n";
    text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
    return part;
}

void EmptyCells(DataGrid& grid) {
    for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
        for (int column = grid.FixedColumns(); column < grid.Columns(); ++column) {
            grid.SetCell(row, column, {});
            grid.SetFaulty(row, column, false);
        }
    }
}

} // namespace

std::optional<PointNumber> PointOfRow(const DataGrid& grid, int row) {
    if (row < grid.FixedRows() || row >= grid.Rows()) {
        return std::nullopt;
    }
    const auto* const found =
        std::find_if(AllPoints.begin(), AllPoints.end(), [&](PointNumber number) {
            return PointShortName(number) == grid.RowData(row);
        });
    return found == AllPoints.end() ? std::nullopt : std::optional(*found);
}

bool IsPointCell(const DataGrid& grid, int row, int column) {
    return row >= grid.FixedRows() && row < grid.Rows() && column >= grid.FixedColumns() &&
           column < grid.Columns();
}

void PutPointCell(DataGrid& grid, const FundamentalUnits& units, int row, int column,
                  std::string_view text) {
    const Separators& separators = units.NumberSeparators;
    const std::string& unit = units[ucDisplacement].Label;
    grid.SetFaulty(row, column, !ReadTypedNumber(text, separators, unit));
    grid.SetCell(row, column, CommittedText(text, separators, unit));
}

PointSet PointsOfCells(const DataGrid& grid, const FundamentalUnits& units, PointSet stored) {
    ForEachCoordinate(grid, stored, [&](int row, int column, double& coordinate) {
        coordinate = CoordinateOf(grid, units, row, column, coordinate);
    });
    return stored;
}

PointSet DraftOfCells(const DataGrid& grid, const FundamentalUnits& units, PointSet stored) {
    ForEachCoordinate(grid, stored, [&](int row, int column, double& coordinate) {
        try {
            coordinate = CoordinateOf(grid, units, row, column, coordinate);
        } catch (const Failure&) {
            return; // half typed
        }
    });
    return stored;
}

PasteResult PastePointCells(DataGrid& grid, const FundamentalUnits& units, std::string_view text) {
    PasteResult result;
    EmptyCells(grid);
    int row = grid.FixedRows();
    for (; !text.empty(); ++row) {
        std::string_view line = TakePart(text, "\r\n");
        if (row >= grid.Rows()) {
            ++result.RowsLeftOver;
            continue;
        }
        ++result.RowsTaken;
        for (int column = grid.FixedColumns(); column < grid.Columns(); ++column) {
            PutPointCell(grid, units, row, column, TakePart(line, "\t"));
            result.FaultyCells += grid.Faulty(row, column) ? 1 : 0;
        }
    }
    result.RowsEmpty = std::max(0, grid.Rows() - row);
    return result;
}

std::string PointCellToolTip(const DataGrid& grid, const FundamentalUnits& units, int row,
                             int column) {
    if (!IsPointCell(grid, row, column)) {
        return {};
    }
    const Axis& axis = AxisOf(column);
    return std::string(axis.Name) + " of " + grid.Cell(row, 0) + ", " +
           units[ucDisplacement].Label + ", " + axis.Positive + " positive";
}

} // namespace corvanta
