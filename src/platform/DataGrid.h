#pragma once

#include "model/Slot.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// A block of cells, both ends included.
struct CellRange {
    int FirstRow = 0;
    int FirstColumn = 0;
    int LastRow = 0;
    int LastColumn = 0;

    friend bool operator==(const CellRange&, const CellRange&) = default;
};

/// A grid of text cells with fixed rows above and fixed columns at the left. Rows and columns count
/// from 0, fixed ones included. It holds what is shown; a window draws it.
class DataGrid {
  public:
    bool Visible = false;
    bool Editable = false;

    /// Empties the grid: no rows, no columns, nothing fixed, no colours, not editable.
    void Reset();

    /// Sets the size, cells kept where they still fit, and how many of the rows and columns are
    /// fixed.
    void SetSize(int rows, int columns, int fixedRows, int fixedColumns);

    [[nodiscard]] int Rows() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] int Columns() const { return m_columns; }
    [[nodiscard]] int FixedRows() const { return m_fixedRows; }
    [[nodiscard]] int FixedColumns() const { return m_fixedColumns; }

    [[nodiscard]] const std::string& Cell(int row, int column) const {
        return m_rows[SlotOf(row, Rows())].Cells[SlotOf(column, m_columns)];
    }
    void SetCell(int row, int column, std::string text) {
        m_rows[SlotOf(row, Rows())].Cells[SlotOf(column, m_columns)] = std::move(text);
    }

    /// Width of a column in twips; 0 sizes it to its contents.
    [[nodiscard]] int ColumnWidth(int column) const { return m_widths[SlotOf(column, m_columns)]; }
    void SetColumnWidth(int column, int width) { m_widths[SlotOf(column, m_columns)] = width; }

    /// A shaded row or column stands out from its neighbours.
    [[nodiscard]] bool Shaded(int row, int column) const {
        return m_rows[SlotOf(row, Rows())].Shaded || m_shadedColumns[SlotOf(column, m_columns)];
    }
    void ShadeRow(int row) { m_rows[SlotOf(row, Rows())].Shaded = true; }
    void ShadeColumn(int column) { m_shadedColumns[SlotOf(column, m_columns)] = true; }

    /// A bold row heads the grid.
    [[nodiscard]] bool Bold(int row) const { return m_rows[SlotOf(row, Rows())].Bold; }
    void SetBold(int row) { m_rows[SlotOf(row, Rows())].Bold = true; }

    /// The row that every eye looks for, set off by a fine line; `NoRow` for none.
    static constexpr int NoRow = -1;
    int MarkedRow = NoRow;

    /// A faulty cell holds a text that can't be taken.
    [[nodiscard]] bool Faulty(int row, int column) const {
        return m_rows[SlotOf(row, Rows())].FaultyColumns.contains(column);
    }
    void SetFaulty(int row, int column, bool faulty) {
        std::set<int>& columns = m_rows[SlotOf(row, Rows())].FaultyColumns;
        faulty ? static_cast<void>(columns.insert(column))
               : static_cast<void>(columns.erase(column));
    }

    /// What is to be said of a cell, which is marked then; empty for most.
    [[nodiscard]] const std::string& Note(int row, int column) const {
        static const std::string none;
        const auto& notes = m_rows[SlotOf(row, Rows())].Notes;
        const auto found = notes.find(column);
        return found == notes.end() ? none : found->second;
    }
    void SetNote(int row, int column, std::string note) {
        m_rows[SlotOf(row, Rows())].Notes[column] = std::move(note);
    }
    void ClearNotes();

    /// A bar that is drawn in a cell from its middle, as long as a share of half its width: -1 to
    /// 1, to the left below 0. None in most.
    [[nodiscard]] std::optional<double> Bar(int row, int column) const {
        const auto& bars = m_rows[SlotOf(row, Rows())].Bars;
        const auto found = bars.find(column);
        return found == bars.end() ? std::nullopt : std::optional(found->second);
    }
    void SetBar(int row, int column, double share) {
        m_rows[SlotOf(row, Rows())].Bars[column] = share;
    }

    /// The texts of which the cells of a column hold one; none where any may be typed.
    [[nodiscard]] const std::vector<std::string>& Choices(int column) const {
        return m_choices[SlotOf(column, m_columns)];
    }
    void SetChoices(int column, std::vector<std::string> texts) {
        m_choices[SlotOf(column, m_columns)] = std::move(texts);
    }

    /// A text kept with a row and not shown.
    [[nodiscard]] const std::string& RowData(int row) const {
        return m_rows[SlotOf(row, Rows())].Data;
    }
    void SetRowData(int row, std::string data) {
        m_rows[SlotOf(row, Rows())].Data = std::move(data);
    }

    /// The whole grid as text, fixed cells included: a line per row ending CR LF, cells parted by
    /// TAB, no quoting.
    [[nodiscard]] std::string Text() const;

    /// The whole grid as comma-separated values: a line per row ending CR LF, a cell with a comma,
    /// a quote or a line end in quotes.
    [[nodiscard]] std::string CommaSeparated() const;

  private:
    struct GridRow {
        std::vector<std::string> Cells;
        std::string Data;
        std::set<int> FaultyColumns;
        std::map<int, std::string> Notes; ///< by column
        std::map<int, double> Bars;       ///< the same
        bool Shaded = false;
        bool Bold = false;
    };

    std::vector<GridRow> m_rows;
    std::vector<int> m_widths;
    std::vector<bool> m_shadedColumns;
    std::vector<std::vector<std::string>> m_choices; ///< by column
    int m_columns = 0;
    int m_fixedRows = 0;
    int m_fixedColumns = 0;
};

} // namespace corvanta
