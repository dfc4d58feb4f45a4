// XTimeStats_benchmark.cpp: one stopwatch start/stop beside a pair of steady_clock
// reads, and one scoped slot on a table beside the same pair kept in a vector.
#include "orv/XStopwatch.h"
#include "orv/XTimeStats.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

namespace {

void BM_XStopwatch_StartStop(benchmark::State &state) {
    orv::XStopwatch watch;
    for (auto _ : state) {
        watch.start();
        watch.stop();
        benchmark::DoNotOptimize(watch.elapsed_time_microSeconds());
    }
}

void BM_SteadyClock_Pair(benchmark::State &state) {
    for (auto _ : state) {
        auto const start = std::chrono::steady_clock::now();
        auto const stop = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(
            std::chrono::duration_cast<std::chrono::microseconds>(stop - start).count());
    }
}

// The table is refilled outside the timing when it runs full, so every slot is real.
void BM_XTimeStats_ScopedSlot(benchmark::State &state) {
    orv::XTimeStats table(0x10000);
    QString const msg = QStringLiteral("slot");
    unsigned int used = 0;
    for (auto _ : state) {
        if (used++ == 0x10000) {
            state.PauseTiming();
            table.clear();
            used = 1;
            state.ResumeTiming();
        }
        orv::XTimeSlot slot = table.startSlot(msg);
        benchmark::DoNotOptimize(slot.operator->());
    }
}

struct Span {
    QString msg;
    std::chrono::steady_clock::time_point start, stop;
};

void BM_SteadyClock_SpanVector(benchmark::State &state) {
    std::vector<Span> spans;
    spans.reserve(0x10000);
    QString const msg = QStringLiteral("slot");
    for (auto _ : state) {
        if (spans.size() == 0x10000) {
            state.PauseTiming();
            spans.clear();
            state.ResumeTiming();
        }
        spans.push_back({msg, std::chrono::steady_clock::now(), {}});
        spans.back().stop = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(spans.back());
    }
}

} // namespace

BENCHMARK(BM_XStopwatch_StartStop);
BENCHMARK(BM_SteadyClock_Pair);
BENCHMARK(BM_XTimeStats_ScopedSlot);
BENCHMARK(BM_SteadyClock_SpanVector);
