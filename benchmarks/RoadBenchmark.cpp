#include "benchmarks/AgainstPositions.h"
#include "benchmarks/Documents.h"
#include "calculation/SCalcs.h"
#include "export/MExport.h"
#include "persistence/MData.h"
#include "results/MDisplayTable.h"
#include "results/PointsTable.h"
#include "shell/frmMain.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace corvanta::benchmarks {
namespace {

constexpr int FullGrid = 49;

/// The document's file into memory and set up.
void BM_Load(benchmark::State& state, const char* sample) {
    LoadedProgram program(sample, 11);
    for (auto _ : state) {
        ResetDocument(program->Document, program->Settings);
        benchmark::DoNotOptimize(DataLoad(program->Document, program->Channels, program.Path(),
                                          false, program->Units, program.Files(),
                                          program.MessageSink()));
    }
}
BENCHMARK_CAPTURE(BM_Load, strut, Strut)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Load, tbar, TBar)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Load, tworockers, TwoRockers)->Unit(benchmark::kMicrosecond);

/// A view shown in the grid of the window, along wheel travel on the full grid: building the table
/// and filling the cells. View 8 is the step of a user who walks through wheel positions.
void BM_View(benchmark::State& state) {
    LoadedProgram program(TBar, FullGrid);
    WindowOver window(program);
    window->RefreshGUI(true);
    program->Settings.View = static_cast<std::int32_t>(state.range(0));
    for (auto _ : state) {
        window->RefreshGUI(false);
        benchmark::DoNotOptimize(window->grdDisplay.Rows());
    }
}
BENCHMARK(BM_View)
    ->DenseRange(vwAntis, vwLinkLengths)
    ->Arg(vwQuadraticCoefficients)
    ->Unit(benchmark::kMicrosecond);

void BM_AllChannelsTable(benchmark::State& state) {
    LoadedProgram program(TBar, FullGrid);
    RunCalculation(program->Document, program->Channels, program.MessageSink());
    for (auto _ : state) {
        benchmark::DoNotOptimize(BuildViewTable(*program, vwAllChannels, vvAlongWheelTravel, 0, 0,
                                                program->CustomChannels));
    }
}
BENCHMARK(BM_AllChannelsTable)->Unit(benchmark::kMicrosecond);

/// A whole export of all selectable views with the header, to a file.
void BM_Export(benchmark::State& state) {
    LoadedProgram program(TBar, FullGrid);
    WindowOver window(program);
    window->RefreshGUI(true);
    for (int view = 1; view <= SelectableViewCount; ++view) {
        program->ExportViews.Set(view, true);
    }
    const std::string path =
        (std::filesystem::temp_directory_path() / "corvanta-benchmark.txt").string();
    const BatchExport batch{vvAlongWheelTravel, vwNone, true};
    const ExportPlace place{*program, *window, program.Files(), program.MessageSink(),
                            window.Process()};
    for (auto _ : state) {
        ExportResults(place, etSelectedViews, path, &batch);
    }
    std::remove(path.c_str());
}
BENCHMARK(BM_Export)->Unit(benchmark::kMicrosecond);

/// The component file 2.2 of the full grid: a calculation and its export. Both together are held
/// against the positions alone.
void BM_ExportComponent(benchmark::State& state) {
    LoadedProgram program(TBar, FullGrid);
    WindowOver window(program);
    const std::string path =
        (std::filesystem::temp_directory_path() / "corvanta-benchmark.svr").string();
    const BatchExport batch;
    const ExportPlace place{*program, *window, program.Files(), program.MessageSink(),
                            window.Process()};
    TimeAgainstPositions(state, program->Document, [&] {
        RunCalculation(program->Document, program->Channels, program.MessageSink());
        ExportResults(place, etSuspvar2_2, path, &batch);
    });
    std::remove(path.c_str());
}
BENCHMARK(BM_ExportComponent)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace corvanta::benchmarks
