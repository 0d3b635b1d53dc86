#include "desktop/GridParts.h"

#include "desktop/ChartParts.h"
#include "platform/ColourScale.h"

#include <QApplication>
#include <QComboBox>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QLineEdit>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace corvanta {

namespace {

constexpr int LeastRowHeadWidth = 72;
constexpr int RowPadding = 6;
constexpr QChar ChoiceMark(0x25BE); ///< a small triangle: there is a list below

/// A colour between two, `share` of the second.
QColor Blend(const QColor& first, const QColor& second, double share) {
    const auto mix = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

QColor LineColour(const QPalette& palette) {
    return Blend(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.18);
}

QColor QuietColour(const QPalette& palette) {
    return Blend(palette.color(QPalette::Button), palette.color(QPalette::ButtonText), 0.62);
}

QColor FaultColour(const QPalette& palette) {
    return Blend(palette.color(QPalette::Base), QColor(220, 40, 30), 0.35);
}

/// The mark in the corner of a cell of which there is something to say.
void PaintNoteMark(QPainter& painter, const QRect& cell) {
    constexpr int Side = 8;
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(222, 140, 20));
    painter.drawPolygon(QPolygon(
        {cell.topLeft(), cell.topLeft() + QPoint(Side, 0), cell.topLeft() + QPoint(0, Side)}));
    painter.restore();
}

void PaintBar(QPainter& painter, const QRect& cell, double share, const QPalette& palette) {
    constexpr int Above = 3;
    const QRect half(cell.center().x(), cell.top() + Above, cell.width() / 2 - Above,
                     cell.height() - 2 * Above);
    const int length = static_cast<int>(std::lround(half.width() * std::abs(share)));
    const int left = share < 0 ? half.left() - length : half.left();
    painter.fillRect(QRect(left, half.top(), length, half.height()),
                     Blend(palette.color(QPalette::Base), ColourOf(StudyColour), 0.75));
    painter.setPen(LineColour(palette));
    painter.drawLine(half.left(), cell.top(), half.left(), cell.bottom());
}

/// The fine lines above and below the marked row.
void PaintMark(QPainter& painter, const QRect& cell, const QPalette& palette) {
    painter.setPen(QPen(palette.color(QPalette::Highlight), 1));
    painter.drawLine(cell.topLeft(), cell.topRight());
    painter.drawLine(cell.bottomLeft(), cell.bottomRight());
}

} // namespace

QColor DoubtColour(const QPalette& palette) {
    return Blend(palette.color(QPalette::Base), QColor(240, 170, 40), 0.25);
}

QFont TableFont() {
    QFont font = QApplication::font();
    const QFontMetrics metrics(font);
    const int width = metrics.horizontalAdvance('0');
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (metrics.horizontalAdvance(QChar(digit)) != width) {
            return QFontDatabase::systemFont(QFontDatabase::FixedFont);
        }
    }
    return font;
}

GridHeader::GridHeader(const GridModel& model, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent),
      m_model(model) {
    setSectionsClickable(true);
    setHighlightSections(false);
}

QFont GridHeader::TitleFont() const {
    QFont title = font();
    title.setBold(m_model.Grid().Rows() > 0 && m_model.Grid().Bold(0));
    return title;
}

QFont GridHeader::UnitFont() const {
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    return small;
}

int GridHeader::NeededWidth(int column) const {
    const QFontMetrics metrics(font());
    const QFontMetrics titles(TitleFont());
    const int gridColumn = m_model.GridColumn(column);
    int width = LeastWidth;
    const QString title = m_model.Text(0, gridColumn);
    for (const QString& word : title.split(' ')) {
        width = std::max(width, titles.horizontalAdvance(word) + 2 * GridPadding);
    }
    width =
        std::max(width, std::min(titles.horizontalAdvance(title) + 2 * GridPadding, WidestTitle));
    const bool isChosen =
        gridColumn < m_model.Grid().Columns() && !m_model.Grid().Choices(gridColumn).empty();
    const int beside =
        2 * GridPadding + (isChosen ? metrics.horizontalAdvance(ChoiceMark) + GridPadding : 0);
    if (m_model.Grid().FixedRows() > 1) {
        width = std::max(width,
                         QFontMetrics(UnitFont()).horizontalAdvance(m_model.Text(1, gridColumn)) +
                             2 * GridPadding);
    }
    for (int row = m_model.Grid().FixedRows(); row < m_model.Grid().Rows(); ++row) {
        width = std::max(width, metrics.horizontalAdvance(m_model.Text(row, gridColumn)) + beside);
    }
    return std::min(width, MostWidth);
}

QSize GridHeader::sizeHint() const {
    const QFontMetrics metrics(TitleFont());
    int lines = metrics.height();
    for (int column = 0; column < m_model.Grid().Columns(); ++column) {
        const int section = column - m_model.Grid().FixedColumns();
        const int width = section >= 0 && section < count() ? sectionSize(section) : WidestTitle;
        const QRect box(0, 0, std::max(1, width - 2 * GridPadding), 1000);
        lines = std::max(
            lines,
            metrics.boundingRect(box, Qt::TextWordWrap | Qt::AlignHCenter, m_model.Text(0, column))
                .height());
    }
    const int units = m_model.Grid().FixedRows() > 1 ? QFontMetrics(UnitFont()).height() : 0;
    return {QHeaderView::sizeHint().width(), lines + units + 2 * RowPadding};
}

void GridHeader::PaintHeads(QPainter& painter, const QRect& area, int gridColumn,
                            Qt::Alignment sides) const {
    const QRect text = area.adjusted(GridPadding, RowPadding, -GridPadding, -RowPadding);
    painter.setFont(TitleFont());
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(text, static_cast<int>(sides | Qt::AlignTop) | Qt::TextWordWrap,
                     m_model.Text(0, gridColumn));
    if (m_model.Grid().FixedRows() > 1) {
        painter.setFont(UnitFont());
        painter.setPen(QuietColour(palette()));
        painter.drawText(text, static_cast<int>(sides | Qt::AlignBottom),
                         m_model.Text(1, gridColumn));
    }
    painter.setPen(LineColour(palette()));
    painter.drawLine(area.bottomLeft(), area.bottomRight());
    painter.drawLine(area.topRight(), area.bottomRight());
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    painter->save();
    painter->fillRect(rect, palette().color(QPalette::Button));
    if (m_model.Grid().Rows() > 0) {
        PaintHeads(*painter, rect, m_model.GridColumn(logicalIndex), Qt::AlignRight);
    }
    painter->restore();
}

GridRowHeads::GridRowHeads(const GridModel& model, QWidget* parent)
    : QHeaderView(Qt::Vertical, parent),
      m_model(model) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Fixed);
    setDefaultSectionSize(QFontMetrics(font()).height() + RowPadding);
}

bool GridRowHeads::HoldsNumbers() const {
    bool isNumber = false;
    static_cast<void>(m_model.Text(m_model.GridRow(0), 0).remove(',').toDouble(&isNumber));
    return isNumber;
}

QSize GridRowHeads::sizeHint() const {
    const QFontMetrics metrics(font());
    int width = std::min(LeastRowHeadWidth, MostWidth);
    for (int row = 0; row < m_model.Grid().Rows() && m_model.Grid().FixedColumns() > 0; ++row) {
        width = std::max(width, metrics.horizontalAdvance(m_model.Text(row, 0)) + 2 * GridPadding);
    }
    return {std::min(width, MostWidth), QHeaderView::sizeHint().height()};
}

void GridRowHeads::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    painter->save();
    painter->fillRect(rect, palette().color(QPalette::Button));
    QFont head = font();
    head.setBold(m_model.Grid().Bold(m_model.GridRow(logicalIndex)));
    painter->setFont(head);
    painter->setPen(palette().color(QPalette::ButtonText));
    const Qt::Alignment side = HoldsNumbers() ? Qt::AlignRight : Qt::AlignLeft;
    const QRect place = rect.adjusted(GridPadding, 0, -GridPadding, 0);
    painter->drawText(
        place, static_cast<int>(side | Qt::AlignVCenter),
        QFontMetrics(font()).elidedText(m_model.Text(m_model.GridRow(logicalIndex), 0),
                                        Qt::ElideMiddle, place.width() + GridPadding));
    painter->setPen(LineColour(palette()));
    painter->drawLine(rect.topRight(), rect.bottomRight());
    if (m_model.GridRow(logicalIndex) == m_model.Grid().MarkedRow) {
        PaintMark(*painter, rect, palette());
    }
    painter->restore();
}

GridCorner::GridCorner(const GridHeader& heads, const GridRowHeads& rowHeads, QWidget* parent)
    : QWidget(parent),
      m_heads(heads),
      m_rowHeads(rowHeads) {}

void GridCorner::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Button));
    m_heads.PaintHeads(painter, rect(), 0,
                       m_rowHeads.HoldsNumbers() ? Qt::AlignRight : Qt::AlignLeft);
}

GridDelegate::GridDelegate(const GridModel& model, QObject* parent)
    : QStyledItemDelegate(parent),
      m_model(model) {}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const int row = m_model.GridRow(index.row());
    const int column = m_model.GridColumn(index.column());
    const DataGrid& grid = m_model.Grid();
    if (row >= grid.Rows() || column >= grid.Columns()) {
        return; // the grid has changed, and the view follows at its next refresh
    }
    // Drawn plainly: the toolkit's own item painting takes several times as long, and a table of
    // numbers needs none of its decorations.
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    if (selected) {
        painter->fillRect(option.rect, option.palette.color(QPalette::Highlight));
    } else if (grid.Faulty(row, column)) {
        painter->fillRect(option.rect, FaultColour(option.palette));
    } else if (!grid.Note(row, column).empty()) {
        painter->fillRect(option.rect, DoubtColour(option.palette));
    } else if (grid.Shaded(row, column)) {
        painter->fillRect(option.rect, option.palette.color(QPalette::AlternateBase));
    }
    if (!grid.Note(row, column).empty()) {
        PaintNoteMark(*painter, option.rect);
    }
    if (const std::optional<double> share = grid.Bar(row, column)) {
        PaintBar(*painter, option.rect, *share, option.palette);
    }
    painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    if (grid.Editable && !grid.Choices(column).empty()) {
        painter->drawText(option.rect.adjusted(GridPadding, 0, 0, 0),
                          Qt::AlignLeft | Qt::AlignVCenter, ChoiceMark);
    }
    painter->drawText(option.rect.adjusted(0, 0, -GridPadding, 0),
                      Qt::AlignRight | Qt::AlignVCenter, m_model.Text(row, column));
    if (option.state.testFlag(QStyle::State_HasFocus) && grid.Editable) {
        painter->setPen(option.palette.color(QPalette::Highlight));
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    if (row == grid.MarkedRow) {
        painter->save();
        PaintMark(*painter, option.rect, option.palette);
        painter->restore();
    }
}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
    const auto& choices = m_model.Grid().Choices(m_model.GridColumn(index.column()));
    if (!choices.empty()) {
        return CreateList(parent, choices);
    }
    QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (auto* const line = qobject_cast<QLineEdit*>(editor)) {
        line->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        connect(line, &QLineEdit::textEdited, this,
                [this, cell = QPersistentModelIndex(index)](const QString& text) {
                    emit Typing(cell, text);
                });
    }
    return editor;
}

QWidget* GridDelegate::CreateList(QWidget* parent, const std::vector<std::string>& choices) const {
    auto* const list = new QComboBox(parent);
    for (const std::string& choice : choices) {
        list->addItem(QString::fromStdString(choice));
    }
    connect(list, &QComboBox::activated, this, [this] { emit Chosen(); });
    QTimer::singleShot(0, list, &QComboBox::showPopup); // once it has its place
    return list;
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* const list = qobject_cast<QComboBox*>(editor)) {
        list->setCurrentIndex(list->findText(index.data(Qt::EditRole).toString()));
        return;
    }
    const auto* const line = qobject_cast<QLineEdit*>(editor);
    if (line == nullptr || !line->isModified()) {
        QStyledItemDelegate::setEditorData(editor, index);
    }
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const {
    const auto* const list = qobject_cast<QComboBox*>(editor);
    if (list == nullptr || list->currentIndex() >= 0) {
        QStyledItemDelegate::setModelData(editor, model, index);
    }
}

} // namespace corvanta
