#include "shell/PointCells.h"

#include "model/Failure.h"
#include "shell/PointWords.h"
#include "shell/TypedNumber.h"
#include "solver/DoubtfulValues.h"

#include <algorithm>
#include <array>
#include <vector>

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
        RaiseNoNumber(AxisOf(column).Name + (" of " + grid.Cell(row, 0)), text,
                      units.NumberSeparators);
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

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool IsWord(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    });
}

/// The row of a point by the name that the table shows or by its short one, -1 when none has it.
int RowOfName(const DataGrid& grid, std::string_view name) {
    name = Trimmed(name);
    for (int row = grid.FixedRows(); row < grid.Rows() && !name.empty(); ++row) {
        if (Trimmed(grid.Cell(row, 0)) == name || grid.RowData(row) == name) {
            return row;
        }
    }
    return -1;
}

using PastedRow = std::vector<std::string_view>;

/// A text from the clipboard in rows and cells, without its heads.
struct PastedText {
    PastedText(const DataGrid& grid, std::string_view text) {
        while (!text.empty()) {
            std::string_view line = TakePart(text, "\r\n");
            PastedRow& cells = Rows.emplace_back();
            do {
                cells.push_back(TakePart(line, "\t"));
            } while (!line.empty() && cells.size() < MostCells);
        }
        TakeHeads(grid);
        Named = std::any_of(Rows.begin(), Rows.end(),
                            [&](const PastedRow& row) { return RowOfName(grid, row[0]) >= 0; });
    }

    /// The column of the table for a cell of a row.
    [[nodiscard]] int ColumnOf(std::size_t cell, int firstColumn) const {
        if (!m_columns.empty()) {
            return cell < m_columns.size() ? m_columns[cell] : 0;
        }
        return firstColumn + static_cast<int>(cell) - (Named ? 1 : 0);
    }

    std::vector<PastedRow> Rows;
    bool Named = false;     ///< a first column holds names
    bool OtherUnit = false; ///< the heads name another unit than the table

  private:
    static constexpr std::size_t MostCells = 8; ///< of a row; more than any table of points has

    /// Heads are titles of the table, the name column with them or not, and below them units.
    void TakeHeads(const DataGrid& grid) {
        if (Rows.empty()) {
            return;
        }
        std::vector<int> columns;
        for (const std::string_view title : Rows.front()) {
            int column = 0;
            while (column < grid.Columns() && grid.Cell(0, column) != Trimmed(title)) {
                ++column;
            }
            if (column == grid.Columns()) {
                return; // no head
            }
            columns.push_back(column);
        }
        m_columns = std::move(columns);
        Rows.erase(Rows.begin());
        if (Rows.empty() || Rows.front().size() != m_columns.size() ||
            !IsWord(Trimmed(Rows.front().back()))) {
            return;
        }
        OtherUnit = Trimmed(Rows.front().back()) != grid.Cell(1, m_columns.back());
        Rows.erase(Rows.begin());
    }

    std::vector<int> m_columns; ///< of the cells, by the heads; empty without heads
};

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

PasteResult PastePointCells(DataGrid& grid, const FundamentalUnits& units, std::string_view text,
                            std::optional<PastePlace> place) {
    PasteResult result;
    PastedText pasted(grid, text);
    if (pasted.OtherUnit) {
        result.OtherUnit = true;
        return result;
    }
    if (!place) {
        EmptyCells(grid);
    }
    const int firstColumn = place && !pasted.Named ? place->Column : grid.FixedColumns();
    int next = place ? place->Row : grid.FixedRows();
    for (const PastedRow& cells : pasted.Rows) {
        const int row = pasted.Named ? RowOfName(grid, cells[0]) : next++;
        if (row < 0) {
            ++result.RowsUnknown;
        } else if (row >= grid.Rows()) {
            ++result.RowsLeftOver;
        } else {
            ++result.RowsTaken;
            for (std::size_t n = pasted.Named ? 1 : 0; n < cells.size(); ++n) {
                const int column = pasted.ColumnOf(n, firstColumn);
                if (IsPointCell(grid, row, column)) {
                    PutPointCell(grid, units, row, column, cells[n]);
                    result.FaultyCells += grid.Faulty(row, column) ? 1 : 0;
                }
            }
        }
    }
    if (!place) {
        result.RowsEmpty = std::max(0, grid.Rows() - grid.FixedRows() - result.RowsTaken);
    }
    return result;
}

std::string MarkPointCells(DataGrid& grid, const Suspension& draft,
                           std::span<const PointNumber> faulty) {
    grid.ClearNotes();
    const auto mark = [&](PointNumber number, int column, const std::string& note) {
        for (int row = grid.FixedRows(); row < grid.Rows(); ++row) {
            if (PointOfRow(grid, row) == number) {
                grid.SetNote(row, column, note);
            }
        }
    };
    std::string text;
    if (!faulty.empty()) {
        text = "The last calculation failed at " + RowWords(draft.Catalogue, faulty) + ".";
        for (const PointNumber number : faulty) {
            for (int column = grid.FixedColumns(); column < grid.Columns(); ++column) {
                mark(number, column, "The last calculation failed at this point.");
            }
        }
    }
    constexpr std::size_t MostSentences = 3; // the others tell themselves as tooltips
    const std::vector<DoubtfulValue> doubts = DoubtfulValues(draft.StaticPoints(), draft.Catalogue);
    for (const DoubtfulValue& doubt : doubts) {
        const auto* const axis = std::find_if(Axes.begin(), Axes.end(), [&](const Axis& each) {
            return each.Coordinate == doubt.Coordinate;
        });
        mark(doubt.Number, static_cast<int>(axis - Axes.begin()) + grid.FixedColumns(),
             doubt.Sentence);
    }
    for (std::size_t n = 0; n < std::min(doubts.size(), MostSentences); ++n) {
        text += (text.empty() ? "" : " ") + doubts[n].Sentence;
    }
    return text + (doubts.size() > MostSentences ? " More cells are marked." : "");
}

void FollowPointCells(DataGrid& grid, const FundamentalUnits& units, const PointSet& shown,
                      const PointSet& now) {
    for (const PointNumber number : AllPoints) {
        if (shown[number] == now[number]) {
            continue;
        }
        PointSet points = shown;
        ForEachCoordinate(grid, points, [&](int row, int column, double& coordinate) {
            const double to = now[*PointOfRow(grid, row)].*AxisOf(column).Coordinate;
            if (PointOfRow(grid, row) == number &&
                grid.Cell(row, column) == FormatChannelValue(units, coordinate, ucDisplacement)) {
                PutPointCell(grid, units, row, column,
                             FormatChannelValue(units, to, ucDisplacement));
            }
        });
    }
}

std::string PointCellToolTip(const DataGrid& grid, const FundamentalUnits& units, int row,
                             int column) {
    if (!IsPointCell(grid, row, column)) {
        return {};
    }
    const Axis& axis = AxisOf(column);
    const std::string& note = grid.Note(row, column);
    return note + (note.empty() ? "" : "\n") + std::string(axis.Name) + " of " + grid.Cell(row, 0) +
           ", " + units[ucDisplacement].Label + ", " + axis.Positive + " positive";
}

} // namespace corvanta
