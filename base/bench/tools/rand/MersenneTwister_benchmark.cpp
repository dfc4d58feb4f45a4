// MersenneTwister_benchmark.cpp: our generator beside the standard library's MT19937
// (the same algorithm) for single draws and for a 1 MiB fill of bytes in a range.
#include "orv/MersenneTwister.h"

#include <QtCore/QByteArray>

#include <benchmark/benchmark.h>

#include <random>

namespace {

int const fillSize = 1 << 20;

void BM_MersenneTwister_Int32(benchmark::State &state) {
    orv::MersenneTwister random(false, 16);
    for (auto _ : state)
        benchmark::DoNotOptimize(random.genrand_int32());
}

void BM_StdMt19937_Int32(benchmark::State &state) {
    std::mt19937 random(5489);
    for (auto _ : state)
        benchmark::DoNotOptimize(random());
}

void BM_MersenneTwister_FillQByteArray(benchmark::State &state) {
    orv::MersenneTwister random(false, 16);
    QByteArray bytes;
    for (auto _ : state) {
        random.fillQByteArray(bytes, fillSize, 'a', 'z');
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(state.iterations() * fillSize);
}

void BM_StdUniformInt_Fill(benchmark::State &state) {
    std::mt19937 random(5489);
    std::uniform_int_distribution<int> letter('a', 'z');
    QByteArray bytes(fillSize, Qt::Uninitialized);
    for (auto _ : state) {
        for (int i = 0; i + 1 < fillSize; ++i)
            bytes[i] = static_cast<char>(letter(random));
        bytes[fillSize - 1] = '\0';
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(state.iterations() * fillSize);
}

} // namespace

BENCHMARK(BM_MersenneTwister_Int32);
BENCHMARK(BM_StdMt19937_Int32);
BENCHMARK(BM_MersenneTwister_FillQByteArray);
BENCHMARK(BM_StdUniformInt_Fill);

BENCHMARK_MAIN();
