#pragma once

#include "calculation/SCalcs.h"
#include "model/Suspension.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>

namespace corvanta::benchmarks {

/// Times some work on a document. The counter "times_positions" holds it against the positions
/// alone, the best of both, taken in turns so that the machine's moods meet both.
template <typename Work>
void TimeAgainstPositions(benchmark::State& state, Suspension& document, const Work& work) {
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    std::string errorText;
    Seconds best(std::numeric_limits<double>::max());
    Seconds bestPositions = best;
    for (auto _ : state) {
        const auto begin = Clock::now();
        work();
        const auto middle = Clock::now();
        state.PauseTiming();
        if (!document.ResultsValid || !SolveGrid(document, errorText)) {
            state.SkipWithError("The calculation failed");
            return;
        }
        best = std::min<Seconds>(best, middle - begin);
        bestPositions = std::min<Seconds>(bestPositions, Clock::now() - middle);
        state.ResumeTiming();
    }
    state.counters["times_positions"] = best / bestPositions;
}

} // namespace corvanta::benchmarks
