// What a user waits for, in real windows on the toolkit's offscreen platform, painting included.

#include "benchmarks/OpenWindow.h"
#include "desktop/CornerPanelView.h"
#include "desktop/GuardedApplication.h"
#include "results/MDisplay3d.h"
#include "tests/support/CornerShapes.h"

#include <benchmark/benchmark.h>

#include <QComboBox>
#include <QTest>

#include <cstdlib>

namespace corvanta::benchmarks {
namespace {

/// One step of the wheel position in a view, to and fro.
void BM_WheelStep(benchmark::State& state) {
    OpenWindow window;
    frmMain& main = window.User().Logic();
    window.User().Choose(mcView, static_cast<int>(state.range(0)));
    window.Run([&] {
        main.optRack.Selected = true;
        main.optRack_Click();
    });
    int entry = 10;
    for (auto _ : state) {
        entry = entry == 10 ? 11 : 10;
        window.Run([&] {
            main.cboWheel.Select(entry);
            main.cboWheel_Changed();
        });
    }
}
BENCHMARK(BM_WheelStep)
    ->Arg(vwCoordinates)
    ->Arg(vwAntis)
    ->Arg(vwAngles)
    ->Arg(vw3d)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3)
    ->ReportAggregatesOnly();

/// Apply in the editor after a change: taking the pages, the calculation, the table.
void BM_Apply(benchmark::State& state) {
    OpenWindow window;
    window.User().Choose(mcView, vwAntis);
    int change = 0;
    for (auto _ : state) {
        change = 1 - change;
        window.Run([&] {
            window.Editor().grdPoints_Edited(2, 3, std::to_string(change));
            window.Editor().cmdApply_Click();
        });
    }
}
BENCHMARK(BM_Apply)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();

/// The corner panel of the workbench, 450 x 500 pixels, in the midst of a drag: taking another
/// position, and painting it over its baseline.
void BM_CornerPanel(benchmark::State& state) {
    OpenWindow window;
    const Suspension& document = window.User().Desk.Program().Data().Document;
    CornerPanel panel(window.User().Desk.Program().Data().Units);
    CornerPanelView view(panel, [](const std::function<void()>& event) { event(); });
    view.resize(450, 530);
    view.Canvas().setFixedSize(450, 500);
    view.show();
    if (!QTest::qWaitForWindowExposed(&view)) {
        std::abort(); // nothing would be painted
    }
    CornerContent content{test::ShapeOf(document, 0, 0),
                          test::ShapeOf(document, 0, 2),
                          document.Catalogue,
                          {ptLWO},
                          {}};
    panel.Show(content);
    panel.Press(panel.PlaceOf(ptLWO));
    int wheelStep = 2;
    for (auto _ : state) {
        wheelStep = wheelStep > FullGrid ? 2 : wheelStep + 1;
        content.Now.Solved = PositionAt(document, 0, wheelStep).Points;
        panel.Show(content);
        view.Canvas().repaint();
    }
}
BENCHMARK(BM_CornerPanel)->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();

} // namespace
} // namespace corvanta::benchmarks

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    corvanta::GuardedApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
