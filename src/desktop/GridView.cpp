#include "desktop/GridView.h"

#include "desktop/ContextMenu.h"
#include "desktop/QtServices.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace corvanta {

GridView::GridView(const DataGrid& grid, QWidget* parent) : QTableView(parent), m_model(grid) {
    const QFont font = TableFont();
    setFont(font);
    m_heads = new GridHeader(m_model, this);
    m_rowHeads = new GridRowHeads(m_model, this);
    m_heads->setFont(font);
    m_rowHeads->setFont(font);
    setHorizontalHeader(m_heads);
    setVerticalHeader(m_rowHeads);
    m_corner = new GridCorner(*m_heads, *m_rowHeads, this);
    setModel(&m_model);
    auto* const delegate = new GridDelegate(m_model, this);
    setItemDelegate(delegate);
    connect(delegate, &GridDelegate::Typing, this,
            [this](const QModelIndex& index, const QString& text) {
                if (m_typing && index.isValid()) {
                    m_typing(m_model.GridRow(index.row()), m_model.GridColumn(index.column()),
                             text.toStdString());
                }
            });
    connect(delegate, &GridDelegate::Chosen, this, &GridView::CommitTyping);
    setCornerButtonEnabled(false);
    setShowGrid(false);
    setWordWrap(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed |
                    QAbstractItemView::EditKeyPressed);
    connect(m_heads, &QHeaderView::geometriesChanged, this, &GridView::PlaceCorner);
    connect(m_rowHeads, &QHeaderView::geometriesChanged, this, &GridView::PlaceCorner);
}

void GridView::Refresh() {
    m_model.Refresh();
    m_rowHeads->setVisible(m_model.Grid().FixedColumns() > 0);
    FitColumns();
    PlaceCorner();
    viewport()->update();
}

void GridView::MakeNarrow(int firstColumn) {
    m_heads->LeastWidth = 0;
    m_rowHeads->MostWidth = firstColumn;
}

void GridView::BoundColumns(int most) {
    m_heads->MostWidth = most;
    m_model.OnToolTip([this, most](int row, int column) {
        const QString text = m_model.Text(row, column);
        return fontMetrics().horizontalAdvance(text) + 2 * GridPadding > most ? text : QString();
    });
}

void GridView::FitColumns() {
    for (int column = 0; column < m_model.columnCount(); ++column) {
        const int width = m_heads->NeededWidth(column);
        if (width != columnWidth(column)) {
            setColumnWidth(column, width);
        }
    }
    updateGeometries();
}

int GridView::NeededWidth() const {
    return (m_rowHeads->isHidden() ? 0 : m_rowHeads->sizeHint().width()) + m_heads->length() +
           verticalScrollBar()->sizeHint().width();
}

void GridView::PlaceCorner() {
    m_corner->setVisible(m_model.Grid().Rows() > 0 && m_model.Grid().FixedColumns() > 0);
    m_corner->setGeometry(0, 0, m_rowHeads->width(), m_heads->height());
    m_corner->raise();
    m_corner->update();
}

void GridView::CommitTyping() {
    QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    if (editor != nullptr) {
        commitData(editor);
        QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

std::optional<CellRange> GridView::SelectedRange() const {
    const QItemSelection selection = selectionModel()->selection();
    if (selection.isEmpty()) {
        return std::nullopt;
    }
    const QItemSelectionRange& range = selection.constFirst();
    return CellRange{m_model.GridRow(range.top()), m_model.GridColumn(range.left()),
                     m_model.GridRow(range.bottom()), m_model.GridColumn(range.right())};
}

void GridView::SelectRange(const CellRange& range) {
    const auto at = [this](int row, int column) {
        return m_model.index(std::max(0, row - m_model.Grid().FixedRows()),
                             std::max(0, column - m_model.Grid().FixedColumns()));
    };
    const QModelIndex first = at(range.FirstRow, range.FirstColumn);
    if (first.isValid()) {
        setCurrentIndex(first);
        selectionModel()->select(QItemSelection(first, at(range.LastRow, range.LastColumn)),
                                 QItemSelectionModel::ClearAndSelect);
    }
}

QString GridView::SelectedText(bool withHeads) const {
    QModelIndexList selected = selectionModel()->selectedIndexes();
    if (selected.isEmpty()) {
        return {};
    }
    int top = selected.first().row();
    int bottom = top;
    int left = selected.first().column();
    int right = left;
    for (const QModelIndex& index : selected) {
        top = std::min(top, index.row());
        bottom = std::max(bottom, index.row());
        left = std::min(left, index.column());
        right = std::max(right, index.column());
    }
    QString text;
    const auto addRow = [&](int gridRow) {
        QStringList cells;
        if (withHeads && m_model.Grid().FixedColumns() > 0) {
            cells << m_model.Text(gridRow, 0);
        }
        for (int column = left; column <= right; ++column) {
            cells << m_model.Text(gridRow, m_model.GridColumn(column));
        }
        text += cells.join('\t') + '\n';
    };
    for (int head = 0; withHeads && head < m_model.Grid().FixedRows(); ++head) {
        addRow(head);
    }
    for (int row = top; row <= bottom; ++row) {
        addRow(m_model.GridRow(row));
    }
    return text;
}

void GridView::Copy(bool withHeads) const {
    QApplication::clipboard()->setText(SelectedText(withHeads));
}

void GridView::SaveCsv(const QString& path) const {
    WriteFile(path, QByteArray::fromStdString(m_model.Grid().CommaSeparated()));
}

bool GridView::event(QEvent* event) {
    // A selected range takes the key before the menu's command for the whole table does.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) && selectionModel()->selectedIndexes().size() > 1) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

bool GridView::focusNextPrevChild(bool next) {
    const QModelIndex edge = next ? m_model.index(m_model.rowCount() - 1, m_model.columnCount() - 1)
                                  : m_model.index(0, 0);
    // Only cells to type in hold Tab, up to the last of them.
    setTabKeyNavigation(m_model.Grid().Editable && currentIndex() != edge);
    return QTableView::focusNextPrevChild(next);
}

void GridView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        Copy(false);
        return;
    }
    if (event->matches(QKeySequence::Paste) && m_paste) {
        m_paste();
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (m_model.Grid().Editable && enter && state() != EditingState) {
        setCurrentIndex(moveCursor(MoveNext, Qt::NoModifier));
        return;
    }
    QTableView::keyPressEvent(event);
}

void GridView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    const bool next = hint == QAbstractItemDelegate::SubmitModelCache;
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    if (m_typingEnded) {
        m_typingEnded();
    }
    if (next || hint == QAbstractItemDelegate::EditNextItem) {
        setCurrentIndex(moveCursor(MoveNext, Qt::NoModifier));
    } else if (hint == QAbstractItemDelegate::EditPreviousItem) {
        setCurrentIndex(moveCursor(MovePrevious, Qt::NoModifier));
    }
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
    ContextMenu menu(this);
    QAction* copy = menu.Add(tr("Copy"), [this] { Copy(false); });
    QAction* withHeads = menu.Add(tr("Copy with Heads"), [this] { Copy(true); });
    const bool selected = selectionModel()->hasSelection();
    copy->setEnabled(selected);
    withHeads->setEnabled(selected);
    if (m_paste) {
        menu.Add(tr("Paste"), m_paste);
    }
    menu.Add(tr("Select All"), [this] { selectAll(); });
    menu.AddSeparator();
    menu.Add(tr("Save Table As CSV..."), [this] {
        AskAndSave(this, tr("Save Table"), tr("CSV table (*.csv)"),
                   [this](const QString& path) { SaveCsv(path); });
    });
    menu.Run(event->globalPos());
}

void GridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    PlaceCorner();
}

void GridView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_corner->update();
    }
}

} // namespace corvanta
