#pragma once

#include <benchmark/benchmark.h>

#include <chrono>

#include "fsync_time.h"

/// Times `save`, which returns true when it has worked, without the waits for the disk: these depend on what
/// else the machine writes. The counter `fsync_ms` has them, for each save. Needs `UseManualTime`.
template <typename Save>
void time_saves(benchmark::State& state, Save save) {
    const double flushed_before = seconds_in_fsync();
    for (auto _ : state) {
        const double flushed = seconds_in_fsync();
        const auto start = std::chrono::steady_clock::now();
        if (!save())
            state.SkipWithError("not saved");
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(took.count() - (seconds_in_fsync() - flushed));
    }
    state.counters["fsync_ms"] =
        benchmark::Counter((seconds_in_fsync() - flushed_before) * 1e3, benchmark::Counter::kAvgIterations);
}
