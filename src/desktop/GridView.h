#pragma once

#include "desktop/GridModel.h"

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTableView>

#include <limits>
#include <optional>

namespace corvanta {

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

    int LeastWidth = 72; ///< of a column
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

/// Draws the cells: banded rows, the marked row between fine lines, faulty cells.
class GridDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    GridDelegate(const GridModel& model, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// The line that a cell is typed into, on the side where the cell's text stands.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;

    /// What was typed stays when the table is brought up to date meanwhile.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;

  signals:
    /// A keystroke in the open cell.
    void Typing(const QModelIndex& index, const QString& text) const;

  private:
    const GridModel& m_model;
};

/// A table on the screen: the heads and the first column stay in sight, a range of cells can be
/// selected and copied, with its heads or without. An editable one takes typing; Tab and Enter go
/// through its cells row by row.
class GridView final : public QTableView {
    Q_OBJECT

  public:
    explicit GridView(const DataGrid& grid, QWidget* parent = nullptr);

    [[nodiscard]] GridModel& Model() { return m_model; }

    /// Makes the most of a narrow place: the first column is no wider than this, its longer texts
    /// shortened, and the others are as narrow as their numbers.
    void MakeNarrow(int firstColumn);

    /// No column of values is wider than this, longer texts are shortened; tooltips hold them
    /// whole.
    void BoundColumns(int most);

    /// Shows the grid as it is now.
    void Refresh();

    /// What pastes from the clipboard into the table, by key and by menu; none until it is told.
    void OnPaste(std::function<void()> paste) { m_paste = std::move(paste); }

    /// Called with the text of the open cell after each keystroke, and when it is closed. Row and
    /// column are those of the grid.
    using Typing = std::function<void(int row, int column, const std::string& text)>;
    void OnTyping(Typing typing, std::function<void()> ended) {
        m_typing = std::move(typing);
        m_typingEnded = std::move(ended);
    }

    /// Takes the text of a cell that is still open, as the Enter key does.
    void CommitTyping();

    /// The width at which no column is hidden, with a scroll bar beside them.
    [[nodiscard]] int NeededWidth() const;

    /// The selected block of cells, counted as the grid counts them; none without a selection.
    [[nodiscard]] std::optional<CellRange> SelectedRange() const;
    void SelectRange(const CellRange& range);

    /// The selected cells as tab-separated text, lines ended by a line feed.
    [[nodiscard]] QString SelectedText(bool withHeads) const;

    /// Writes the whole table as comma-separated values. Throws Failure when it can't.
    void SaveCsv(const QString& path) const;

  protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

  private:
    void FitColumns();
    void PlaceCorner();
    void Copy(bool withHeads) const;

    GridModel m_model;
    std::function<void()> m_paste;
    Typing m_typing;
    std::function<void()> m_typingEnded;
    GridHeader* m_heads;
    GridRowHeads* m_rowHeads;
    QWidget* m_corner; ///< the heads of the first column
};

/// The font of all tables: the platform's own if its figures are of one width, otherwise its
/// fixed one.
[[nodiscard]] QFont TableFont();

/// The ground of what the user should look at.
[[nodiscard]] QColor DoubtColour(const QPalette& palette);

} // namespace corvanta
