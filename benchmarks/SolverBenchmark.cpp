#include "benchmarks/AgainstPositions.h"
#include "benchmarks/Allocations.h"
#include "benchmarks/Documents.h"

#include "calculation/SCalcs.h"
#include "solver/SGetLocn.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <random>
#include <vector>

namespace corvanta::benchmarks {
namespace {

/// The eight input points of one location.
using Location = std::array<SuspPoint, 8>;

/// Locations of the kind that a corner asks for: references some hundred millimetres apart that
/// have moved a little, seeded so that every run does the same work.
std::vector<Location> MakeLocations() {
    std::mt19937_64 random(20251);
    std::uniform_real_distribution<double> place(-400, 400);
    std::uniform_real_distribution<double> nudge(-2, 2);
    const auto moved = [&](const SuspPoint& p) {
        return SuspPoint{p.X + nudge(random), p.Y + nudge(random), p.Z + nudge(random)};
    };
    const auto anywhere = [&] { return SuspPoint{place(random), place(random), place(random)}; };
    std::vector<Location> locations(1024);
    for (Location& l : locations) {
        l[0] = anywhere();
        l[2] = anywhere();
        l[4] = anywhere();
        l[6] = anywhere();
        l[1] = moved(l[0]);
        l[3] = moved(l[2]);
        l[5] = moved(l[4]);
        l[7] = moved(l[6]);
    }
    return locations;
}

/// Calls `LocatePoint` through all the locations, each waiting for the one before it as in the
/// solver.
double LocateAll(const std::vector<Location>& locations) {
    double carried = 0;
    for (const Location& l : locations) {
        SuspPoint near = l[7];
        near.X += carried;
        const SuspPoint found = LocatePoint(l[0], l[1], l[2], l[3], l[4], l[5], l[6], near);
        carried = found.X * 1e-300;
    }
    return carried;
}

void BM_LocatePoint(benchmark::State& state) {
    const std::vector<Location> locations = MakeLocations();
    for (auto _ : state) {
        benchmark::DoNotOptimize(LocateAll(locations));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(locations.size()));
}
BENCHMARK(BM_LocatePoint);

/// Seconds of one call, the best of several passes, measured beside the run it is held against.
double SecondsPerLocation() {
    using Clock = std::chrono::steady_clock;
    const std::vector<Location> locations = MakeLocations();
    double best = 1;
    for (int pass = 0; pass < 200; ++pass) {
        const auto begin = Clock::now();
        benchmark::DoNotOptimize(LocateAll(locations));
        const std::chrono::duration<double> took = Clock::now() - begin;
        best = std::min(best, took.count() / static_cast<double>(locations.size()));
    }
    return best;
}

/// Positions alone. The counters give the time of one solved position and the run time divided by
/// the time that its locations alone would take.
void BM_SolveGrid(benchmark::State& state, const char* sample) {
    LoadedProgram program(sample, static_cast<int>(state.range(0)));
    std::string errorText;
    SolveCounts counts;
    const double secondsPerLocation = SecondsPerLocation();
    using Clock = std::chrono::steady_clock;
    double best = 1;
    std::int64_t allocations = 0;
    for (auto _ : state) {
        counts = {};
        const std::int64_t allocated = Allocations();
        const auto begin = Clock::now();
        if (!SolveGrid(program->Document, errorText, counts)) {
            state.SkipWithError(errorText.c_str());
            return;
        }
        const std::chrono::duration<double> took = Clock::now() - begin;
        best = std::min(best, took.count());
        allocations = Allocations() - allocated;
    }
    state.counters["allocations"] = static_cast<double>(allocations);
    state.counters["locations"] = static_cast<double>(counts.Locations);
    state.counters["us_per_solve"] = best * 1e6 / static_cast<double>(counts.Solves);
    state.counters["times_floor"] =
        best / (static_cast<double>(counts.Locations) * secondsPerLocation);
}
BENCHMARK_CAPTURE(BM_SolveGrid, strut, Strut)->Arg(11)->Arg(49)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_SolveGrid, pushrod, Pushrod)->Arg(11)->Arg(49)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_SolveGrid, tbar, TBar)->Arg(11)->Arg(49)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_SolveGrid, tworockers, TwoRockers)
    ->Arg(11)
    ->Arg(49)
    ->Unit(benchmark::kMicrosecond);

/// A whole calculation, properties included, held against the positions alone.
void BM_RunCalculation(benchmark::State& state, const char* sample) {
    LoadedProgram program(sample, static_cast<int>(state.range(0)));
    TimeAgainstPositions(state, program->Document, [&] {
        RunCalculation(program->Document, program->Channels, program.MessageSink());
    });
}
BENCHMARK_CAPTURE(BM_RunCalculation, strut, Strut)->Arg(11)->Arg(49)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_RunCalculation, pushrod, Pushrod)
    ->Arg(11)
    ->Arg(49)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_RunCalculation, tbar, TBar)->Arg(11)->Arg(49)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_RunCalculation, tworockers, TwoRockers)
    ->Arg(11)
    ->Arg(49)
    ->Unit(benchmark::kMicrosecond);

/// One rack row of a design in a scratch document that has solved another design of the same kind
/// before: what a study and a hand that moves a point ask for again and again.
void BM_SolveRow(benchmark::State& state, const char* sample) {
    constexpr int Steps = 49;
    LoadedProgram program(sample, Steps);
    const SolveSettings settings{program->Units, program->Channels};
    const GridCut row{false, {0}, {}, false};
    Design design = DesignOf(program->Document);
    Suspension scratch;
    std::int64_t allocations = 0;
    for (auto _ : state) {
        design.Points[ptTRI].Z += 0.001;
        const std::int64_t before = Allocations();
        if (!Solve(scratch, design, settings, row).Solved) {
            state.SkipWithError("The design can't be solved");
            return;
        }
        allocations = Allocations() - before;
    }
    state.counters["allocations"] = static_cast<double>(allocations);
}
BENCHMARK_CAPTURE(BM_SolveRow, strut, Strut)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_SolveRow, pushrod, Pushrod)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_SolveRow, tworockers, TwoRockers)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace corvanta::benchmarks
