// The charts of the workbench on the toolkit's offscreen platform, painting included.

#include "desktop/ChartSheetView.h"
#include "tests/desktop/SampleSheets.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QGridLayout>

#include <vector>

namespace corvanta::benchmarks {
namespace {

constexpr QSize ChartSize(400, 260);

/// A window of charts that counts how often they came to the screen.
class OpenCharts final : public QObject {
  public:
    explicit OpenCharts(int count) {
        auto* const layout = new QGridLayout(&m_window);
        for (int n = 0; n < count; ++n) {
            m_charts.push_back(new ChartSheetView({}, &m_window));
            m_charts.back()->setFixedSize(ChartSize);
            layout->addWidget(m_charts.back(), n / 3, n % 3);
            for (QWidget* child : m_charts.back()->findChildren<QWidget*>()) {
                child->installEventFilter(this);
            }
        }
        m_window.show();
        QApplication::processEvents();
    }

    /// Brings a sheet to all charts and to the window.
    void Show(const ChartSheet& sheet) {
        for (ChartSheetView* chart : m_charts) {
            chart->Show(sheet);
        }
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }

    [[nodiscard]] double Paints() const {
        return static_cast<double>(m_paints) / static_cast<double>(m_charts.size());
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        m_paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

  private:
    int m_paints = 0;
    QWidget m_window;
    std::vector<ChartSheetView*> m_charts;
};

void Alternate(benchmark::State& state, OpenCharts& charts, const ChartSheet& a,
               const ChartSheet& b) {
    charts.Show(a);
    bool first = false;
    const double before = charts.Paints();
    for (auto _ : state) {
        charts.Show(first ? a : b);
        first = !first;
    }
    // 1 when every change came to the screen
    state.counters["paints"] = (charts.Paints() - before) / static_cast<double>(state.iterations());
}

/// Six charts of lines whose curve moves; without bands, as most are.
void BM_SixLineSheets(benchmark::State& state) {
    OpenCharts charts(6);
    ChartSheet a = test::LineSheet();
    ChartSheet b = test::LineSheet(0.002);
    a.Bands.resize(static_cast<std::size_t>(state.range(0)));
    b.Bands.resize(static_cast<std::size_t>(state.range(0)));
    Alternate(state, charts, a, b);
}
BENCHMARK(BM_SixLineSheets)
    ->Arg(0)
    ->Arg(2)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly();

/// The readout below the pointer in six charts at once.
void BM_HoverOverSixSheets(benchmark::State& state) {
    OpenCharts charts(6);
    ChartSheet a = test::LineSheet();
    ChartSheet b = a;
    a.Hover = SheetReadout{-30, 0.1, {"0.10 deg", "0.05 baseline", "+0.05"}};
    b.Hover = SheetReadout{-29, 0.1, {"0.10 deg", "0.05 baseline", "+0.05"}};
    Alternate(state, charts, a, b);
}
BENCHMARK(BM_HoverOverSixSheets)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly();

/// A map of 49 x 49 whose values move.
void BM_MapSheet(benchmark::State& state) {
    OpenCharts charts(1);
    Alternate(state, charts, test::MapSheet(), test::MapSheet(0.002));
}
BENCHMARK(BM_MapSheet)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly();

} // namespace
} // namespace corvanta::benchmarks
