#pragma once

#include "platform/DataGrid.h"

#include <QFont>
#include <QPainter>
#include <QPointF>

#include <vector>

namespace corvanta {

/// A table as it stands on paper: how wide its columns and how high its rows are, and each row
/// painted. Lengths are tenths of a point; where a page ends is the page writer's.
class PageTable {
  public:
    struct Column {
        int Number = 0; ///< of the grid
        double Width = 0;
    };

    /// Columns that stand side by side.
    using Block = std::vector<Column>;

    /// The grid must outlive the table.
    PageTable(const DataGrid& grid, const QFont& font);

    [[nodiscard]] int Heads() const { return m_grid.FixedRows(); }
    [[nodiscard]] int Rows() const { return m_grid.Rows() - Heads(); } ///< below the heads

    /// All columns, in blocks that fit into a width; each begins with the fixed ones.
    [[nodiscard]] std::vector<Block> Blocks(double width) const;

    [[nodiscard]] double RowHeight() const; ///< below the heads

    /// Height of the heads and of a number of rows below them.
    [[nodiscard]] double Height(int rows, const Block& block) const;

    /// Paints a row, the heads counted, and gives its height.
    double PaintRow(QPainter& brush, QPointF at, int row, const Block& block) const;

  private:
    [[nodiscard]] double WidthOf(int column) const;
    [[nodiscard]] double HeadHeight(int row, const Block& block) const;

    const DataGrid& m_grid;
    QFont m_font;
    QFont m_bold;
};

} // namespace corvanta
