#include "desktop/PointsPanel.h"

#include "desktop/Desktop.h"
#include "desktop/NumberField.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include <cmath>

namespace corvanta {

namespace {

constexpr int NameWidth = 188;
constexpr int PixelsPerStep = 8;
constexpr int ScrubBegins = 6; ///< pixels sideways

} // namespace

PointsPanel::PointsPanel(Desktop& desktop, frmWorkbench& window, Binder& binder, QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window),
      m_filter(new QLineEdit(this)),
      m_table(new GridView(window.Points.grdPoints, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_filter->setObjectName("txtFilter");
    m_filter->setPlaceholderText(tr("Filter points"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setToolTip(QString::fromStdString(window.Points.txtFilter.ToolTip) + " (Ctrl+F)");
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_desktop.Handle([&] {
            m_window.Points.txtFilter.Text = text.toStdString();
            m_window.Points_Changed();
        });
    });
    m_table->setObjectName("grdWorkbenchPoints");
    m_table->MakeNarrow(NameWidth);
    m_table->setSelectionMode(QAbstractItemView::ContiguousSelection); // one block is taken
    m_table->Model().OnTyped([this](int row, int column, const std::string& text) {
        m_desktop.Handle([&] {
            m_window.Points.grdPoints_Edited(row, column, text);
            m_window.Points_Changed();
        });
    });
    m_table->Model().OnToolTip([this](int row, int column) {
        return QString::fromStdString(m_window.Points.ToolTip(row, column));
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &PointsPanel::SelectionChanged);
    m_table->installEventFilter(this);
    m_table->viewport()->installEventFilter(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_table, 1);
    layout->addWidget(BuildSteps(binder));
}

QWidget* PointsPanel::BuildSteps(Binder& binder) {
    constexpr int Offered = 4;
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto* label = new QLabel(tr("&Step"), row);
    layout->addWidget(label);
    WorkbenchPoints& points = m_window.Points;
    for (int n = 0; n < Offered; ++n) {
        auto* button = new QToolButton(row);
        button->setCheckable(true);
        button->setAutoRaise(true);
        m_steps.push_back(button);
        connect(button, &QToolButton::clicked, this, [this, n] {
            m_desktop.Handle([&] {
                m_window.Points.txtStep.Text =
                    m_window.Points.StepTexts()[static_cast<std::size_t>(n)];
                m_window.Points.txtStep_LostFocus();
                m_window.Points_Changed();
            });
        });
        layout->addWidget(button);
    }
    auto* field = new NumberField(
        binder, points.txtStep, [&points] { points.txtStep_Changed(); },
        [&points] { points.txtStep_LostFocus(); }, row);
    field->setObjectName("txtStep");
    field->setFixedWidth(fontMetrics().horizontalAdvance("000.000") + 16);
    label->setBuddy(field);
    layout->addWidget(field);
    auto* unit = new QLabel(row);
    binder.OnShow([unit, field, &points] {
        SetTextOnce(unit, QString::fromStdString(points.txtStep.Unit));
        field->setToolTip(QString::fromStdString(points.txtStep.ToolTip));
    });
    layout->addWidget(unit);
    layout->addStretch(1);
    return row;
}

void PointsPanel::FocusFilter() {
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void PointsPanel::Refresh() {
    m_table->Refresh();
    const CellRange& range = m_window.Points.Selection;
    if (range != m_shownSelection) {
        m_shownSelection = range;
        m_table->SelectRange(range);
    }
    ShowSteps();
}

void PointsPanel::ShowSteps() {
    const std::vector<std::string> texts = m_window.Points.StepTexts();
    for (std::size_t n = 0; n < m_steps.size(); ++n) {
        const QString text = QString::fromStdString(texts[n]);
        SetTextOnce(m_steps[n], text);
        m_steps[n]->setChecked(texts[n] == m_window.Points.txtStep.Text);
        m_steps[n]->setToolTip(
            tr("Step of %1 %2").arg(text, QString::fromStdString(m_window.Points.txtStep.Unit)));
    }
}

void PointsPanel::SelectionChanged() {
    if (const std::optional<CellRange> range = m_table->SelectedRange()) {
        m_shownSelection = *range;
        if (m_window.Points.Selection != *range) {
            m_desktop.HandleMotion([&] {
                m_window.Points.Selection = *range;
                m_window.Points_Changed();
            });
        }
    }
}

bool PointsPanel::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        return TakeKey(*static_cast<QKeyEvent*>(event)) || QWidget::eventFilter(watched, event);
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return (watched == m_table->viewport() && TakeMouse(*static_cast<QMouseEvent*>(event))) ||
               QWidget::eventFilter(watched, event);
    default:
        return QWidget::eventFilter(watched, event);
    }
}

bool PointsPanel::TakeKey(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier) {
        emit SpacePressed(); // a table has no use for it
        return true;
    }
    const bool vertical = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
    if (m_scrubbing && event.key() == Qt::Key_Escape) {
        EndScrub(false);
        return true;
    }
    if (!vertical || !event.modifiers().testFlag(Qt::ControlModifier)) {
        return false;
    }
    m_desktop.HandleMotion([&] {
        m_window.Points.Nudge(event.key() == Qt::Key_Up ? 1 : -1,
                              event.modifiers().testFlag(Qt::ShiftModifier));
    });
    return true;
}

/// Sideways the hand scrubs the selected cells, up and down it selects.
bool PointsPanel::TakeMouse(const QMouseEvent& event) {
    const QPoint at = event.position().toPoint();
    if (event.type() == QEvent::MouseButtonPress) {
        const bool onCell = event.button() == Qt::LeftButton && m_table->indexAt(at).isValid();
        m_pressed = onCell ? std::optional(at) : std::nullopt;
        // Several cells that are selected already are taken together.
        m_onSelected = onCell && event.modifiers() == Qt::NoModifier &&
                       m_table->selectionModel()->selectedIndexes().size() > 1 &&
                       m_table->selectionModel()->isSelected(m_table->indexAt(at));
        return m_onSelected;
    }
    if (event.type() == QEvent::MouseButtonRelease) {
        const bool scrubbed = m_scrubbing;
        EndScrub(true);
        if (!scrubbed && m_pressed && *m_pressed == at && event.modifiers() == Qt::NoModifier) {
            m_table->setCurrentIndex(m_table->indexAt(at)); // a plain click selects its cell
        }
        m_pressed.reset();
        m_onSelected = false;
        return scrubbed;
    }
    if (!m_pressed || !event.buttons().testFlag(Qt::LeftButton)) {
        return false;
    }
    const QPoint way = at - *m_pressed;
    if (!m_scrubbing && std::abs(way.x()) >= ScrubBegins &&
        std::abs(way.x()) > 2 * std::abs(way.y())) {
        m_scrubbing = true;
        m_desktop.HandleMotion([this] { m_window.Points.BeginScrub(); });
    }
    if (m_scrubbing) {
        m_desktop.HandleMotion(
            [&] { m_window.Points.ScrubTo(std::trunc(way.x() / double{PixelsPerStep})); });
    } else if (m_onSelected && std::abs(way.y()) >= ScrubBegins) {
        m_onSelected = false; // the hand selects anew, from the cell that it pressed
        m_table->setCurrentIndex(m_table->indexAt(*m_pressed));
    }
    return m_scrubbing || m_onSelected; // the table would select what the hand passes
}

void PointsPanel::EndScrub(bool kept) {
    if (m_scrubbing) {
        m_scrubbing = false;
        m_pressed.reset();
        m_desktop.Handle([&] { m_window.Points.EndScrub(kept); });
    }
}

} // namespace corvanta
