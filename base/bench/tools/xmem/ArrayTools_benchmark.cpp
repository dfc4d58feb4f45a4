// ArrayTools_benchmark.cpp: frame encode and decode throughput on 16 MiB of mixed bytes,
// beside Base64, Qt's other way to make bytes safe for a stream.
#include "orv/ArrayTools.h"

#include <QtCore/QByteArray>

#include <benchmark/benchmark.h>

namespace {

// About one byte in eight is 0, so the stuffing closes groups often.
QByteArray const &payload() {
    static QByteArray const bytes = [] {
        QByteArray b(16 * 1024 * 1024, Qt::Uninitialized);
        quint32 x = 3;
        for (char &c : b) {
            x = x * 1664525u + 1013904223u;
            c = (x >> 29) == 0 ? '\0' : static_cast<char>(x >> 21);
        }
        return b;
    }();
    return bytes;
}

void BM_ArrayTools_Frame(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(orv::ArrayTools::frameQByteArray(payload()));
    state.SetBytesProcessed(state.iterations() * payload().size());
}

void BM_ArrayTools_UnFrame(benchmark::State &state) {
    QByteArray const framed = orv::ArrayTools::frameQByteArray(payload());
    for (auto _ : state)
        benchmark::DoNotOptimize(orv::ArrayTools::unFrameQByteArray(framed));
    state.SetBytesProcessed(state.iterations() * payload().size());
}

void BM_ArrayTools_Frame_MD5(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(orv::ArrayTools::frameQByteArray_MD5(payload()));
    state.SetBytesProcessed(state.iterations() * payload().size());
}

void BM_ArrayTools_UnFrame_MD5(benchmark::State &state) {
    QByteArray const framed = orv::ArrayTools::frameQByteArray_MD5(payload());
    for (auto _ : state) {
        QByteArray out;
        benchmark::DoNotOptimize(orv::ArrayTools::unFrameQByteArray_MD5(framed, out));
    }
    state.SetBytesProcessed(state.iterations() * payload().size());
}

void BM_QByteArray_ToBase64(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(payload().toBase64());
    state.SetBytesProcessed(state.iterations() * payload().size());
}

void BM_QByteArray_FromBase64(benchmark::State &state) {
    QByteArray const encoded = payload().toBase64();
    for (auto _ : state)
        benchmark::DoNotOptimize(QByteArray::fromBase64(encoded));
    state.SetBytesProcessed(state.iterations() * payload().size());
}

} // namespace

BENCHMARK(BM_ArrayTools_Frame)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QByteArray_ToBase64)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ArrayTools_UnFrame)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QByteArray_FromBase64)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ArrayTools_Frame_MD5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ArrayTools_UnFrame_MD5)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
