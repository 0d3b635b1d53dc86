#include "desktop/GridModel.h"

#include <QBrush>
#include <QColor>

namespace corvanta {

GridModel::GridModel(const DataGrid& grid, QObject* parent)
    : QAbstractTableModel(parent),
      m_grid(grid) {}

void GridModel::Refresh() {
    const Shape shape{m_grid.Rows(), m_grid.Columns(), m_grid.FixedRows(), m_grid.FixedColumns()};
    if (shape != m_shape) {
        beginResetModel();
        m_shape = shape;
        endResetModel();
        return;
    }
    if (rowCount() > 0 && columnCount() > 0) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
        emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
    }
}

QString GridModel::Text(int gridRow, int gridColumn) const {
    if (gridRow < 0 || gridRow >= m_grid.Rows() || gridColumn < 0 ||
        gridColumn >= m_grid.Columns()) {
        return {};
    }
    return QString::fromStdString(m_grid.Cell(gridRow, gridColumn));
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_shape.Rows - m_shape.FixedRows;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_shape.Columns - m_shape.FixedColumns;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    const int row = GridRow(index.row());
    const int column = GridColumn(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return Text(row, column);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        return m_toolTip ? m_toolTip(row, column) : QVariant();
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) {
        return {};
    }
    return orientation == Qt::Horizontal ? Text(0, GridColumn(section)) : Text(GridRow(section), 0);
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return m_grid.Editable ? flags | Qt::ItemIsEditable : flags;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !m_typed) {
        return false;
    }
    const QString text = value.toString();
    if (text == data(index, Qt::EditRole).toString()) {
        return false; // opening a cell and leaving it changes nothing
    }
    m_typed(GridRow(index.row()), GridColumn(index.column()), text.toStdString());
    return true;
}

} // namespace corvanta
