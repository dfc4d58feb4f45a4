// XByteArray_benchmark.cpp: the checked compressed form beside plain qCompress and
// qUncompress on 64 MiB; the difference is the digest of the compressed bytes.
#include "orv/XByteArray.h"

#include <QtCore/QByteArray>

#include <benchmark/benchmark.h>

namespace {

// Words from a small vocabulary: compressible about as well as log text.
QByteArray const &input() {
    static QByteArray const bytes = [] {
        char const *const words[] = {"alpha ", "beta ", "gamma ", "delta ", "epsilon\n",
                                     "zeta ",  "eta ",  "theta ", "iota ",  "kappa\n"};
        QByteArray b;
        b.reserve(64 * 1024 * 1024 + 16);
        quint32 x = 7;
        while (b.size() < 64 * 1024 * 1024) {
            x = x * 1664525u + 1013904223u;
            b.append(words[(x >> 24) % 10]);
        }
        b.resize(64 * 1024 * 1024);
        return b;
    }();
    return bytes;
}

void BM_XByteArray_Compress(benchmark::State &state) {
    orv::XByteArray const src(input());
    for (auto _ : state)
        benchmark::DoNotOptimize(orv::XByteArray::compress(src));
    state.SetBytesProcessed(state.iterations() * src.size());
}

void BM_qCompress(benchmark::State &state) {
    QByteArray const &src = input();
    for (auto _ : state)
        benchmark::DoNotOptimize(qCompress(src, -1));
    state.SetBytesProcessed(state.iterations() * src.size());
}

void BM_XByteArray_UnCompress(benchmark::State &state) {
    orv::XByteArray const packed = orv::XByteArray::compress(orv::XByteArray(input()));
    for (auto _ : state)
        benchmark::DoNotOptimize(orv::XByteArray::unCompress(packed));
    state.SetBytesProcessed(state.iterations() * input().size());
}

void BM_qUncompress(benchmark::State &state) {
    QByteArray const packed = qCompress(input(), -1);
    for (auto _ : state)
        benchmark::DoNotOptimize(qUncompress(packed));
    state.SetBytesProcessed(state.iterations() * input().size());
}

} // namespace

BENCHMARK(BM_XByteArray_Compress)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_qCompress)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_XByteArray_UnCompress)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_qUncompress)->Unit(benchmark::kMillisecond);
