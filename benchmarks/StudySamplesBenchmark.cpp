// The studies that solve many designs: slopes, sweeps, tolerances. The corner has its own grid, the
// argument is the number of threads.

#include "automation/Variants.h"
#include "benchmarks/AgainstOneThread.h"
#include "benchmarks/Documents.h"
#include "calculation/SCalcs.h"
#include "study/Sensitivity.h"
#include "study/Sweep.h"
#include "study/Tolerance.h"

#include <benchmark/benchmark.h>

namespace corvanta::benchmarks {
namespace {

struct Corner {
    LoadedProgram Program{"formula-front-pushrod.WSP", 0};
    Design Loaded = DesignOf(Program->Document);
    SolveSettings Settings{Program->Units, Program->Channels};
};

void BM_Sensitivity(benchmark::State& state, const Figure& figure) {
    const Corner corner;
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
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
    const SweepQuestion question{
        {axis(ptTRI), axis(ptUWIF)}, {}, Figure{chSteerAngleBump, FigureKind::RangeOverTravel}};
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
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
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
        benchmark::DoNotOptimize(FindTolerance(runner, corner.Loaded, question, corner.Settings));
    });
}
BENCHMARK(BM_Tolerance)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

/// 10,000 variants with three figures, handed out in order as the command line writes them.
void BM_Variants(benchmark::State& state) {
    const Corner corner;
    const auto axis = [&](PointNumber point) {
        const double height = corner.Loaded.Points[point].Z;
        return SweepAxis{PointCoordinate{point, 2}, EvenlySpaced(height - 5, height + 5, 100)};
    };
    const VariantQuestion question{{axis(ptTRI), axis(ptUWIF)},
                                   {{chSteerAngleBump, FigureKind::RangeOverTravel},
                                    {chCamberAngle, FigureKind::GainAtStatic},
                                    {chRollCentreToGround}}};
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
        double sum = 0;
        RunVariants(runner, corner.Loaded, question, corner.Settings, {0, question.Count()},
                    [&](const VariantRow& row) { sum += row.Figures.front().value_or(0); });
        benchmark::DoNotOptimize(sum);
    });
}
BENCHMARK(BM_Variants)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvanta::benchmarks
