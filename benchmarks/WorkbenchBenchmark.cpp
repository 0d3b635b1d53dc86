// The workbench under a hand: from a key or a mouse move to the painted window, offscreen.

#include "benchmarks/Median.h"
#include "benchmarks/OpenWindow.h"
#include "desktop/CornerPanelView.h"
#include "desktop/PointsPanel.h"
#include "desktop/WorkbenchWindow.h"

#include <benchmark/benchmark.h>

#include <QMouseEvent>
#include <QTest>

#include <chrono>
#include <fstream>
#include <string>
#include <vector>

namespace corvanta::benchmarks {
namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Counts what is painted of a widget and all its children.
class PaintCounter final : public QObject {
  public:
    explicit PaintCounter(QWidget& widget) {
        widget.installEventFilter(this);
        for (QWidget* child : widget.findChildren<QWidget*>()) {
            child->installEventFilter(this);
        }
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++Paints;
            Last = Clock::now();
        }
        return QObject::eventFilter(watched, event);
    }
    int Paints = 0;
    Clock::time_point Last;
};

/// Until everything that was asked for is painted.
void Settle() {
    for (int turn = 0; turn < 5; ++turn) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

/// The workbench on a full grid, 1280 x 800, beside the main window, with a baseline. `map` has a
/// map of the whole grid among its six charts.
class OpenWorkbench {
  public:
    explicit OpenWorkbench(bool map) {
        m_window.Editor().cmdCancel_Click();
        m_window.Run([&] { m_window.User().Choose(mcWorkbench); });
        View().resize(1280, 800);
        if (!QTest::qWaitForWindowExposed(&View())) {
            std::abort(); // nothing would be painted
        }
        if (!map) {
            m_window.Run([&] { Logic().SetChart(5, {chHalfTrack}); });
        }
        m_window.Run([&] { Logic().Points.Select(ptTRI); });
        View().Points().Table().setFocus();
        Nudge(Qt::Key_Up); // away from the baseline
        Settle();
    }

    [[nodiscard]] frmWorkbench& Logic() { return *m_window.User().Logic().Workbench; }
    [[nodiscard]] WorkbenchWindow& View() { return *m_window.User().Desk.WorkbenchView(); }
    [[nodiscard]] const Program& Data() { return m_window.User().Desk.Program().Data(); }
    [[nodiscard]] CDocument& Document() { return m_window.User().Desk.Program().Current(); }

    void Nudge(Qt::Key key) { QTest::keyClick(&View().Points().Table(), key, Qt::ControlModifier); }

    /// Brings what was changed below the window to the screen.
    void Show() {
        m_window.User().Desk.HandleMotion([] {});
        Settle();
    }

  private:
    OpenWindow m_window;
};

/// A nudge of one coordinate by the keyboard, to and fro. The counter `solve` is the time of the
/// solve alone that its charts need, in the same run, and `times_solve` the ratio of the medians.
void BM_WorkbenchNudge(benchmark::State& state, bool map) {
    OpenWorkbench workbench(map);
    PaintCounter counter(workbench.View());
    std::vector<double> whole;
    std::vector<double> solves;
    Suspension scratch;
    bool up = false;
    int unpainted = 0;
    for (auto _ : state) {
        const int before = counter.Paints;
        const Clock::time_point start = Clock::now();
        workbench.Nudge(up ? Qt::Key_Up : Qt::Key_Down);
        Settle();
        whole.push_back(Milliseconds(Clock::now() - start));
        unpainted += counter.Paints > before ? 0 : 1;
        up = !up;
        state.PauseTiming();
        const Clock::time_point solve = Clock::now();
        benchmark::DoNotOptimize(ResultsOf(scratch, DesignOf(workbench.Data().Document),
                                           workbench.Document().Settings(),
                                           workbench.Logic().Charts(), {}));
        solves.push_back(Milliseconds(Clock::now() - solve));
        state.ResumeTiming();
    }
    state.counters["median"] = Median(whole);
    state.counters["solve"] = Median(solves);
    state.counters["times_solve"] = Median(whole) / Median(solves);
    state.counters["unpainted"] = unpainted;
}
BENCHMARK_CAPTURE(BM_WorkbenchNudge, lines, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_WorkbenchNudge, map, true)->Unit(benchmark::kMillisecond);

/// A drag of 300 moves in the corner that arrive faster than they can be shown: the time from the
/// last move to the last paint, and how many times the window was painted on the way.
void BM_WorkbenchDrag(benchmark::State& state) {
    constexpr int Moves = 300;
    OpenWorkbench workbench(true);
    CornerCanvas& canvas = workbench.View().Corner().Canvas();
    std::vector<double> behind;
    for (auto _ : state) {
        const Point2D at = workbench.Logic().Corner.PlaceOf(ptTRI);
        const QPointF start(at.X, at.Y);
        QTest::mousePress(&canvas, Qt::LeftButton, {}, start.toPoint());
        PaintCounter counter(canvas);
        for (int move = 1; move <= Moves; ++move) {
            const QPointF to = start + QPointF(0, 0.02 * move);
            QApplication::postEvent(&canvas,
                                    new QMouseEvent(QEvent::MouseMove, to, canvas.mapToGlobal(to),
                                                    Qt::NoButton, Qt::LeftButton, {}));
        }
        QApplication::sendPostedEvents();
        const Clock::time_point last = Clock::now();
        Settle();
        behind.push_back(Milliseconds(counter.Last - last));
        state.counters["paints"] = counter.Paints;
        QTest::keyClick(&canvas, Qt::Key_Escape);
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, start.toPoint());
        Settle();
    }
    state.counters["behind"] = Median(behind);
}
BENCHMARK(BM_WorkbenchDrag)->Unit(benchmark::kMillisecond)->Iterations(20);

/// Resident memory of the process, MB.
double Resident() {
    constexpr double KilobytesInMegabyte = 1024;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == "VmRSS:" && status >> kilobytes) {
            return kilobytes / KilobytesInMegabyte;
        }
    }
    std::abort(); // there is nothing to measure with
}

/// What a thousand steps of the history take beside six charts of lines, and twenty ticked variants
/// after them, in MB of resident memory. Runs once: what one run has taken the next one has.
void BM_WorkbenchMemory(benchmark::State& state) {
    constexpr int Steps = 1000;
    constexpr int Variants = 20;
    OpenWorkbench workbench(false);
    CDocument& document = workbench.Document();
    int moved = 0;
    const auto move = [&] {
        Design design = DesignOf(workbench.Data().Document);
        design.Points[ptTRI].Z += moved % 2 == 0 ? 0.01 : -0.01;
        document.Change("Move " + std::to_string(++moved), design, true);
        workbench.Show();
    };
    for (int warm = 0; warm < Variants; ++warm) {
        move();
    }
    for (auto _ : state) {
        const double before = Resident();
        for (int step = 0; step < Steps; ++step) {
            move();
        }
        const double stepped = Resident();
        for (int variant = 0; variant < Variants; ++variant) {
            workbench.Logic().KeepVariant();
            move();
        }
        state.counters["steps"] = static_cast<double>(document.Steps().Steps().size());
        state.counters["MB_of_steps"] = stepped - before;
        state.counters["MB_of_variants"] = Resident() - stepped;
    }
}
BENCHMARK(BM_WorkbenchMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
} // namespace corvanta::benchmarks
