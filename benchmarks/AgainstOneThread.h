#pragma once

#include "benchmarks/Median.h"
#include "study/StudyWork.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <vector>

namespace corvanta::benchmarks {

/// Asks a study with as many threads as the first argument says and with one, in turns so that the
/// machine's moods meet both. Counters: the `median` and that of one thread `alone` in
/// milliseconds, and how many times as fast the threads are, `times_one` (1 for one thread).
inline void TimeAgainstOneThread(benchmark::State& state,
                                 const std::function<void(CSampleRunner&)>& ask) {
    const auto milliseconds = [&](CSampleRunner& runner) {
        const auto begin = std::chrono::steady_clock::now();
        ask(runner);
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
            .count();
    };
    CSampleRunner threads({static_cast<unsigned>(state.range(0))});
    CSampleRunner one({1});
    ask(threads);
    ask(one);
    std::vector<double> shared;
    std::vector<double> alone;
    for (auto _ : state) {
        shared.push_back(milliseconds(threads));
        state.PauseTiming();
        alone.push_back(milliseconds(one));
        state.ResumeTiming();
    }
    state.counters["median"] = Median(shared);
    state.counters["alone"] = Median(alone);
    state.counters["times_one"] = Median(alone) / Median(shared);
}

} // namespace corvanta::benchmarks
