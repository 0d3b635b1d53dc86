#include "desktop/PageTable.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPen>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <algorithm>

namespace corvanta {

namespace {

constexpr double CellPadding = 34;
constexpr double RowPadding = 12;
constexpr double LeastColumn = 270;
constexpr double WidestHead = 400; ///< a longer head is wrapped

QString Cell(const DataGrid& grid, int row, int column) {
    return QString::fromStdString(grid.Cell(row, column));
}

bool IsNumber(const QString& text) {
    bool number = false;
    static_cast<void>(QString(text).remove(',').toDouble(&number));
    return number;
}

/// Names stand at the left of their column, numbers and their heads at the right.
Qt::Alignment SideOf(const DataGrid& grid, int column) {
    const int row = grid.FixedRows();
    const bool name = column == 0 && row < grid.Rows() && !IsNumber(Cell(grid, row, 0));
    return name ? Qt::AlignLeft : Qt::AlignRight;
}

} // namespace

PageTable::PageTable(const DataGrid& grid, const QFont& font)
    : m_grid(grid),
      m_font(font),
      m_bold(font) {
    m_bold.setBold(true);
}

double PageTable::WidthOf(int column) const {
    const QFontMetricsF metrics(m_font);
    const QFontMetricsF heads(m_bold);
    double needed = LeastColumn;
    const QString head = Cell(m_grid, 0, column);
    for (const QString& word : head.split(' ')) {
        needed = std::max(needed, heads.horizontalAdvance(word));
    }
    needed = std::max(needed, std::min(heads.horizontalAdvance(head), WidestHead));
    for (int row = 1; row < m_grid.Rows(); ++row) {
        needed = std::max(needed, metrics.horizontalAdvance(Cell(m_grid, row, column)));
    }
    return needed + 2 * CellPadding;
}

std::vector<PageTable::Block> PageTable::Blocks(double width) const {
    Block fixed;
    double fixedWidth = 0;
    for (int column = 0; column < m_grid.FixedColumns(); ++column) {
        fixed.push_back({column, WidthOf(column)});
        fixedWidth += fixed.back().Width;
    }
    std::vector<Block> blocks{fixed};
    double used = fixedWidth;
    for (int column = m_grid.FixedColumns(); column < m_grid.Columns(); ++column) {
        const double needed = WidthOf(column);
        if (used + needed > width && blocks.back().size() > fixed.size()) {
            blocks.push_back(fixed);
            used = fixedWidth;
        }
        blocks.back().push_back({column, needed});
        used += needed;
    }
    return blocks;
}

double PageTable::RowHeight() const {
    return QFontMetricsF(m_font).height() + 2 * RowPadding;
}

double PageTable::HeadHeight(int row, const Block& block) const {
    const QFontMetricsF metrics(row == 0 ? m_bold : m_font);
    double height = metrics.height();
    for (const Column& column : block) {
        const QRectF room(0, 0, column.Width - 2 * CellPadding + 1, 1e6);
        const QString head = Cell(m_grid, row, column.Number);
        height = std::max(height, metrics.boundingRect(room, Qt::TextWordWrap, head).height());
    }
    return height + 2 * RowPadding;
}

double PageTable::Height(int rows, const Block& block) const {
    double height = rows * RowHeight();
    for (int row = 0; row < Heads(); ++row) {
        height += HeadHeight(row, block);
    }
    return height;
}

double PageTable::PaintRow(QPainter& brush, QPointF at, int row, const Block& block) const {
    constexpr int Shade = 244;
    const bool head = row < Heads();
    const double height = head ? HeadHeight(row, block) : RowHeight();
    double x = at.x();
    brush.setFont(head && row == 0 ? m_bold : m_font);
    for (const Column& column : block) {
        const QRectF box(x, at.y(), column.Width, height);
        if (!head && m_grid.Shaded(row, column.Number)) {
            brush.fillRect(box, QColor(Shade, Shade, Shade));
        }
        brush.drawText(box.adjusted(CellPadding, RowPadding, -CellPadding + 1, -RowPadding),
                       static_cast<int>(SideOf(m_grid, column.Number) | Qt::AlignTop) |
                           (head ? Qt::TextWordWrap : Qt::TextSingleLine),
                       Cell(m_grid, row, column.Number));
        x += column.Width;
    }
    if (row == Heads() - 1 || row == m_grid.MarkedRow || row == m_grid.MarkedRow - 1) {
        brush.setPen(QPen(head ? Qt::black : Qt::gray, head ? 5 : 3));
        brush.drawLine(QPointF(at.x(), at.y() + height), QPointF(x, at.y() + height));
        brush.setPen(Qt::black);
    }
    return height;
}

} // namespace corvanta
