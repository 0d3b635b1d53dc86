#pragma once

#include "platform/DataGrid.h"

#include <QAbstractTableModel>

#include <functional>

namespace corvanta {

/// A grid's cells for a table view. The fixed rows are the horizontal header, the fixed columns
/// the vertical one; rows and columns of the model count from behind them.
class GridModel final : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// Called when the user typed a text into a cell: row and column of the grid.
    using Typed = std::function<void(int row, int column, const std::string& text)>;

    /// The grid outlives the model.
    explicit GridModel(const DataGrid& grid, QObject* parent = nullptr);

    void OnTyped(Typed typed) { m_typed = std::move(typed); }

    /// What a cell says of itself under the pointer.
    using ToolTip = std::function<QString(int row, int column)>;
    void OnToolTip(ToolTip toolTip) { m_toolTip = std::move(toolTip); }

    /// Takes the grid as it is now. A grid of the former shape keeps its selection.
    void Refresh();

    [[nodiscard]] const DataGrid& Grid() const { return m_grid; }
    [[nodiscard]] int GridRow(int row) const { return row + m_grid.FixedRows(); }
    [[nodiscard]] int GridColumn(int column) const { return column + m_grid.FixedColumns(); }
    [[nodiscard]] QString Text(int gridRow, int gridColumn) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    struct Shape {
        int Rows = 0;
        int Columns = 0;
        int FixedRows = 0;
        int FixedColumns = 0;

        friend bool operator==(const Shape&, const Shape&) = default;
    };

    const DataGrid& m_grid;
    Shape m_shape; ///< of the grid at the last refresh, which a view relies on between two
    Typed m_typed;
    ToolTip m_toolTip;
};

} // namespace corvanta
