#pragma once

#include "model/Slot.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// The table of a view in memory: text cells, rows and columns counted from 0.
class ViewTable {
  public:
    ViewTable() = default;
    ViewTable(int rows, int columns)
        : m_rows(static_cast<std::size_t>(rows),
                 std::vector<std::string>(static_cast<std::size_t>(columns))),
          m_columns(columns) {}

    [[nodiscard]] int Rows() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] int Columns() const { return m_columns; }

    [[nodiscard]] const std::string& Cell(int row, int column) const {
        return m_rows[SlotOf(row, Rows())][SlotOf(column, m_columns)];
    }
    void SetCell(int row, int column, std::string text) {
        m_rows[SlotOf(row, Rows())][SlotOf(column, m_columns)] = std::move(text);
    }

    /// Adds an empty column at the right and returns its number.
    int AddColumn() {
        for (std::vector<std::string>& row : m_rows) {
            row.emplace_back();
        }
        return m_columns++;
    }

    /// Adds an empty row at the end and returns its number.
    int AddRow() {
        m_rows.emplace_back(static_cast<std::size_t>(m_columns));
        return Rows() - 1;
    }

  private:
    std::vector<std::vector<std::string>> m_rows;
    int m_columns = 0;
};

} // namespace corvanta
