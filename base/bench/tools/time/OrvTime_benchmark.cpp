// OrvTime_benchmark.cpp: reading the clock through OrvTime beside Qt's and std's clocks.
#include "orv/OrvTime.h"

#include <QtCore/QDateTime>

#include <benchmark/benchmark.h>

#include <chrono>

namespace {

void BM_OrvTime_Now(benchmark::State &state) {
    for (auto _ : state) {
        orv::OrvTime now(true);
        benchmark::DoNotOptimize(now.getMicroseconds());
    }
}

void BM_OrvTime_GetMicroseconds(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(orv::getMicroseconds());
}

void BM_QDateTime_CurrentMSecsSinceEpoch(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(QDateTime::currentMSecsSinceEpoch());
}

void BM_SystemClock_Now(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(std::chrono::system_clock::now());
}

} // namespace

BENCHMARK(BM_OrvTime_Now);
BENCHMARK(BM_OrvTime_GetMicroseconds);
BENCHMARK(BM_QDateTime_CurrentMSecsSinceEpoch);
BENCHMARK(BM_SystemClock_Now);

BENCHMARK_MAIN();
