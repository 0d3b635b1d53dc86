// The studies that solve many designs: slopes, sweeps, tolerances. The corner has its own grid, the
// argument is the number of threads. `alone` is the same question on one thread in the same run,
// and `times_one` how many times as fast the threads are (1 for one thread).

#include "benchmarks/Documents.h"

#include "calculation/SCalcs.h"
#include "study/Sensitivity.h"
#include "study/Sweep.h"
#include "study/Tolerance.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace corvanta::benchmarks {
namespace {

struct Corner {
    LoadedProgram Program{"formula-front-pushrod.WSP", 0};
    Design Loaded = DesignOf(Program->Document);
    SolveSettings Settings{Program->Units, Program->Channels};
};

using Clock = std::chrono::steady_clock;

double Milliseconds(const std::function<void()>& work) {
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double Median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

/// Asks in turns with the threads of the benchmark and with one.
void AskInTurns(benchmark::State& state, const std::function<void(CSampleRunner&)>& ask) {
    CSampleRunner threads({static_cast<unsigned>(state.range(0))});
    CSampleRunner one({1});
    ask(threads);
    ask(one);
    std::vector<double> shared;
    std::vector<double> alone;
    for (auto _ : state) {
        shared.push_back(Milliseconds([&] { ask(threads); }));
        state.PauseTiming();
        alone.push_back(Milliseconds([&] { ask(one); }));
        state.ResumeTiming();
    }
    state.counters["median"] = Median(shared);
    state.counters["alone"] = Median(alone);
    state.counters["times_one"] = Median(alone) / Median(shared);
}

void BM_Sensitivity(benchmark::State& state, const Figure& figure) {
    const Corner corner;
    AskInTurns(state, [&](CSampleRunner& runner) {
        benchmark::DoNotOptimize(FindSensitivity(runner, corner.Loaded, {figure}, corner.Settings));
    });
}
BENCHMARK_CAPTURE(BM_Sensitivity, camber, {chCamberAngle, FigureKind::RangeOverTravel})
    ->Arg(1)
    ->Arg(2)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Sensitivity, ackerman,
                  {chAckerman, FigureKind::RangeOverTravel, vvAlongRackTravel})
    ->Arg(1)
    ->Arg(2)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

/// Two coordinates at 21 values each, a figure of 441 designs.
void BM_Sweep(benchmark::State& state) {
    const Corner corner;
    const auto axis = [&](PointNumber point) {
        const double height = corner.Loaded.Points[point].Z;
        return SweepAxis{PointCoordinate{point, 2}, EvenlySpaced(height - 5, height + 5, 21)};
    };
    const SweepQuestion question{{axis(ptTRI), axis(ptUWIF)},
                                 {},
                                 Figure{chSteerAngleBump, FigureKind::RangeOverTravel},
                                 false};
    AskInTurns(state, [&](CSampleRunner& runner) {
        benchmark::DoNotOptimize(RunSweep(runner, corner.Loaded, question, corner.Settings));
    });
}
BENCHMARK(BM_Sweep)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

/// 500 samples with the default tolerances on six line charts.
void BM_Tolerance(benchmark::State& state) {
    const Corner corner;
    ToleranceQuestion question;
    question.Tolerances = DefaultTolerances(corner.Loaded.Data);
    question.Charts = {{chCamberAngle},
                       {chSteerAngleBump},
                       {chRollCentreToGround},
                       {chSpringVelocityRatio},
                       {chAckerman, ChartKind::AlongRackTravel},
                       {chHalfTrack}};
    question.Figures = DefaultFigures(question.Charts);
    AskInTurns(state, [&](CSampleRunner& runner) {
        benchmark::DoNotOptimize(FindTolerance(runner, corner.Loaded, question, corner.Settings));
    });
}
BENCHMARK(BM_Tolerance)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvanta::benchmarks
