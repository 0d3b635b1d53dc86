#include "desktop/ChartsPanel.h"

#include "desktop/ChannelPicker.h"
#include "desktop/ContextMenu.h"
#include "desktop/Desktop.h"

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>

#include <cmath>

namespace corvanta {

namespace {

constexpr double BestShape = 1.6; ///< width of a chart to its height

} // namespace

ChartsPanel::ChartsPanel(Desktop& desktop, frmWorkbench& window, QWidget* parent)
    : QWidget(parent),
      m_desktop(desktop),
      m_window(window),
      m_layout(new QGridLayout(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(2);
    setMinimumSize(200, 160);
}

ChartSheetView* ChartsPanel::NewChart(std::size_t n) {
    ChartSheetView::Events events;
    events.Hovered = [this, n](std::optional<ChartPoint> place) {
        m_window.Chart_Hovered(n, place);
        Refresh();
    };
    events.TravelMoved = [this, n](ChartPoint place, bool held) {
        m_desktop.HandleMotion([&] { m_window.Chart_TravelMoved(n, place, held); });
    };
    events.FillMenu = [this, n](ContextMenu& menu) { FillMenu(n, menu); };
    auto* chart = new ChartSheetView(std::move(events), this);
    chart->setObjectName("chart" + QString::number(n + 1));
    chart->setFocusPolicy(Qt::StrongFocus);
    chart->installEventFilter(this);
    for (QWidget* part : chart->findChildren<QWidget*>()) {
        part->installEventFilter(this);
    }
    return chart;
}

void ChartsPanel::FillMenu(std::size_t n, ContextMenu& menu) {
    const StudyChart now = m_window.Charts()[n];
    const auto add = [&](const QString& text, bool checked, const StudyChart& chart) {
        QAction* action = menu.Add(text, [this, n, chart] { Change(n, chart); });
        action->setCheckable(true);
        action->setChecked(checked);
    };
    menu.Add(tr("Channel..."), [this, n] { ChooseChannel(n); });
    const auto kind = [&](ChartKind wanted, bool difference) {
        return StudyChart{now.Channel, wanted, difference};
    };
    add(tr("Along Wheel Travel"), now.Kind == ChartKind::AlongWheelTravel,
        kind(ChartKind::AlongWheelTravel, false));
    add(tr("Along Rack Travel"), now.Kind == ChartKind::AlongRackTravel,
        kind(ChartKind::AlongRackTravel, false));
    add(tr("Map"), now.Kind == ChartKind::Map && !now.Difference, kind(ChartKind::Map, false));
    add(tr("Map of the Difference to the Baseline"), now.Kind == ChartKind::Map && now.Difference,
        kind(ChartKind::Map, true));
    menu.AddSeparator();
    if (now.Kind != ChartKind::Map) {
        menu.Add(tr("Target..."), [this, now] {
            m_desktop.Handle([&] {
                m_desktop.Main().EditTarget(now.Channel, now.Kind == ChartKind::AlongRackTravel
                                                             ? vvAlongRackTravel
                                                             : vvAlongWheelTravel);
            });
        });
    }
    menu.Add(m_alone ? tr("All Charts") : tr("This Chart Alone"), [this, n] { ToggleAlone(n); });
    menu.AddSeparator();
}

void ChartsPanel::Change(std::size_t n, const StudyChart& chart) {
    m_desktop.Handle([&] { m_window.SetChart(n, chart); });
}

void ChartsPanel::ChooseChannel(std::size_t n) {
    if (n >= m_window.Charts().size()) {
        return;
    }
    StudyChart chart = m_window.Charts()[n];
    ChannelPicker picker(m_desktop.Program().Data().Channels, chart.Channel, this);
    if (picker.exec() == QDialog::Accepted) {
        chart.Channel = picker.Chosen();
        Change(n, chart);
    }
}

int ChartsPanel::BestColumns(int count) const {
    int best = 1;
    double least = HUGE_VAL;
    for (int columns = 1; columns <= count; ++columns) {
        const int rows = (count + columns - 1) / columns;
        const double shape = (double(width()) / columns) / std::max(1.0, double(height()) / rows);
        const double empty = double(rows * columns - count) / count;
        const double fault = std::abs(std::log(shape / BestShape)) + empty;
        if (fault < least) {
            least = fault;
            best = columns;
        }
    }
    return best;
}

void ChartsPanel::Arrange() {
    const int count = static_cast<int>(m_charts.size());
    const int columns = BestColumns(count);
    if (columns == m_columns && count == m_arranged && m_alone == m_arrangedAlone) {
        return;
    }
    m_arrangedAlone = m_alone;
    m_columns = columns;
    m_arranged = count;
    for (int n = 0; n < count; ++n) {
        m_layout->addWidget(m_charts[static_cast<std::size_t>(n)], n / columns, n % columns);
    }
    const int rows = (count + columns - 1) / columns;
    const int alone = static_cast<int>(m_alone.value_or(0)); // it gets the lines of the others too
    for (int line = 0; line < frmWorkbench::MostCharts; ++line) {
        const bool column = m_alone ? line == alone % columns : line < columns;
        const bool row = m_alone ? line == alone / columns : line < rows;
        m_layout->setColumnStretch(line, column ? 1 : 0);
        m_layout->setRowStretch(line, row ? 1 : 0);
    }
}

void ChartsPanel::ToggleAlone(std::size_t n) {
    m_alone = m_alone ? std::nullopt : std::optional(n);
    Refresh();
}

void ChartsPanel::Refresh() {
    const std::vector<ChartSheet>& sheets = m_window.Sheets();
    while (m_charts.size() > sheets.size()) {
        delete m_charts.back();
        m_charts.pop_back();
    }
    while (m_charts.size() < sheets.size()) {
        m_charts.push_back(NewChart(m_charts.size()));
    }
    if (m_alone && *m_alone >= m_charts.size()) {
        m_alone.reset();
    }
    Arrange();
    for (std::size_t n = 0; n < sheets.size(); ++n) {
        m_charts[n]->setVisible(!m_alone || *m_alone == n);
        m_charts[n]->Show(sheets[n]);
    }
}

void ChartsPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Arrange();
}

/// A chart with the keyboard focus: Enter chooses its channel.
bool ChartsPanel::eventFilter(QObject* watched, QEvent* event) {
    const auto found = std::find_if(m_charts.begin(), m_charts.end(), [&](ChartSheetView* chart) {
        return chart == watched || chart->isAncestorOf(qobject_cast<QWidget*>(watched));
    });
    const auto n = static_cast<std::size_t>(found - m_charts.begin());
    if (found != m_charts.end() && event->type() == QEvent::MouseButtonDblClick) {
        ToggleAlone(n);
        return true;
    }
    if (found != m_charts.end() && event->type() == QEvent::FocusIn) {
        m_desktop.HandleMotion([&] { m_window.Chart_TakenInHand(n); });
    }
    if (found != m_charts.end() && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            ChooseChannel(n);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace corvanta
