// The setup sheet and the region of a point on a pushrod corner over its own grid.

#include "benchmarks/AgainstOneThread.h"
#include "benchmarks/Documents.h"
#include "study/Curve.h"
#include "study/Region.h"
#include "study/SetupTurns.h"

#include <benchmark/benchmark.h>

namespace corvanta::benchmarks {
namespace {

constexpr const char* Sample = "formula-front-pushrod.WSP";
constexpr int SampleSteps = 21;

/// The sample with its own steps again.
Design SampleDesign(LoadedProgram& program) {
    Design design = DesignOf(program->Document);
    design.Data.WheelTravelStepSize = 2.5;
    design.Data.RackTravelStepSize = 7;
    return design;
}

Target Held(const Design& design, const SolveSettings& settings, int channel, double tolerance) {
    Suspension scratch;
    static_cast<void>(Solve(scratch, design, settings));
    const double value = ValueAt(CurveOf(scratch, channel, vvAlongWheelTravel), 0).value();
    return PlainTarget(channel, vvAlongWheelTravel, value, tolerance, -25, 25);
}

/// 21 x 21 x 21 places of the upper front pickup, 40 mm to every side, all wheel travel and two
/// targets. Arguments: threads; all rack travel as well.
void BM_Region(benchmark::State& state) {
    LoadedProgram program(Sample, SampleSteps);
    const SolveSettings settings{program->Units, program->Channels};
    const Design design = SampleDesign(program);
    const SuspPoint& at = design.Points[ptUWIF];
    RegionQuestion question{
        ptUWIF,
        {{{at.X - 40, at.X + 40, 21}, {at.Y - 40, at.Y + 40, 21}, {at.Z - 40, at.Z + 40, 21}}},
        {Held(design, settings, chRollCentreToGround, 40),
         Held(design, settings, chCamberAngle, 1.5)}};
    question.WholeGrid = state.range(1) != 0;
    RegionAnswer answer;
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
        answer = FindRegion(runner, design, question, settings);
    });
    std::size_t held = 0;
    for (const RegionNode& node : answer.Nodes) {
        held += node.Verdict == RegionVerdict::Held ? 1 : 0;
    }
    state.counters["solved"] = static_cast<double>(answer.Solved);
    state.counters["held"] = static_cast<double>(held);
}
BENCHMARK(BM_Region)->Args({1, 0})->Args({2, 0})->Args({1, 1})->Args({2, 1})->UseRealTime()->Unit(
    benchmark::kMillisecond);

/// All adjusters that the corner usually has, both steps of each. Argument: threads.
void BM_SetupSheet(benchmark::State& state) {
    LoadedProgram program(Sample, SampleSteps);
    const SolveSettings settings{program->Units, program->Channels};
    const Design design = SampleDesign(program);
    const SetupQuestion question{AdjustersOf(design.Data), SheetFiguresOf(design.Data)};
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
        benchmark::DoNotOptimize(MakeSetupSheet(runner, design, question, settings));
    });
    state.counters["adjusters"] = static_cast<double>(question.Adjusters.size());
}
BENCHMARK(BM_SetupSheet)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

/// Turns of all adjusters for 3 mm of ride height with camber and toe held. Argument: threads.
void BM_FindTurns(benchmark::State& state) {
    LoadedProgram program(Sample, SampleSteps);
    const SolveSettings settings{program->Units, program->Channels};
    const Design design = SampleDesign(program);
    TurnsQuestion question;
    question.Sheet = {AdjustersOf(design.Data), SheetFiguresOf(design.Data)};
    question.Wishes.resize(question.Sheet.Figures.size());
    question.Wishes[0] = {false, 0, 0.02};
    question.Wishes[1] = {false, 0, 0.02};
    question.Wishes[3] = {false, 3, 0.2};
    question.Ranges.resize(question.Sheet.Adjusters.size());
    TurnsAnswer answer;
    TimeAgainstOneThread(state, [&](CSampleRunner& runner) {
        answer = FindTurns(runner, design, question, settings);
    });
    state.counters["solved"] = static_cast<double>(answer.Solved);
    state.counters["holds"] = answer.Holds ? 1 : 0;
}
BENCHMARK(BM_FindTurns)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvanta::benchmarks
