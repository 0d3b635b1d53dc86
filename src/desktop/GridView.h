#pragma once

#include "desktop/GridModel.h"
#include "desktop/GridParts.h"

#include <QTableView>

#include <functional>
#include <optional>
#include <string>

namespace corvanta {

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

    /// Wraps titles that are wider than this between their words.
    void WrapTitles(int widest) { m_heads->WidestTitle = widest; }

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

} // namespace corvanta
