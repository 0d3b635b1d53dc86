#pragma once

#include "desktop/GridModel.h"

#include <QHeaderView>
#include <QStyledItemDelegate>

#include <limits>

namespace corvanta {

/// Beside the texts of a table, pixels.
inline constexpr int GridPadding = 8;

/// The heads of a grid: the titles, wrapped between words, and below them the units, quieter.
class GridHeader final : public QHeaderView {
    Q_OBJECT

  public:
    GridHeader(const GridModel& model, QWidget* parent);

    /// Width that a column needs for its heads and its values.
    [[nodiscard]] int NeededWidth(int column) const;

    /// Draws the heads of a column of the grid into a rectangle.
    void PaintHeads(QPainter& painter, const QRect& area, int gridColumn,
                    Qt::Alignment sides) const;

    [[nodiscard]] QSize sizeHint() const override;

    int LeastWidth = 72;   ///< of a column
    int WidestTitle = 120; ///< a longer title is wrapped
    int MostWidth = std::numeric_limits<int>::max();

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

  private:
    [[nodiscard]] QFont TitleFont() const;
    [[nodiscard]] QFont UnitFont() const;

    const GridModel& m_model;
};

/// The first column of a grid, which stays in sight.
class GridRowHeads final : public QHeaderView {
    Q_OBJECT

  public:
    GridRowHeads(const GridModel& model, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;

    int MostWidth = 10000; ///< longer texts are shortened in their middle

    /// True when the first column holds numbers, which are aligned like all others.
    [[nodiscard]] bool HoldsNumbers() const;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

  private:
    const GridModel& m_model;
};

/// The heads of the first column, in the corner of the table.
class GridCorner final : public QWidget {
    Q_OBJECT

  public:
    GridCorner(const GridHeader& heads, const GridRowHeads& rowHeads, QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    const GridHeader& m_heads;
    const GridRowHeads& m_rowHeads;
};

/// Draws the cells: banded rows, the marked row between fine lines, faulty cells.
class GridDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    GridDelegate(const GridModel& model, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// The line that a cell is typed into, on the side where the cell's text stands, or the list
    /// of its column's choices, open.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

    /// What was typed stays when the table is brought up to date meanwhile.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

    /// A list that was left without a choice changes nothing.
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;

  signals:
    /// A keystroke in the open cell.
    void Typing(const QModelIndex& index, const QString& text) const;

    /// A choice for the open cell, which is all there is to do there.
    void Chosen() const;

  private:
    QWidget* CreateList(QWidget* parent, const std::vector<std::string>& choices) const;

    const GridModel& m_model;
};

/// The font of all tables: the platform's own if its figures are of one width, otherwise its
/// fixed one.
[[nodiscard]] QFont TableFont();

/// The ground of what the user should look at.
[[nodiscard]] QColor DoubtColour(const QPalette& palette);

} // namespace corvanta
