// MD5_benchmark.cpp: our MD5 beside QCryptographicHash::Md5 on one 256 MiB buffer.
#include "orv/MD5.h"

#include <QtCore/QByteArray>
#include <QtCore/QCryptographicHash>

#include <benchmark/benchmark.h>

namespace {

QByteArray const &bigBuffer() {
    static QByteArray const bytes = [] {
        QByteArray b(256 * 1024 * 1024, Qt::Uninitialized);
        quint32 x = 1;
        for (char &c : b) {
            x = x * 1664525u + 1013904223u;
            c = static_cast<char>(x >> 24);
        }
        return b;
    }();
    return bytes;
}

void BM_MD5_Update(benchmark::State &state) {
    QByteArray const &bytes = bigBuffer();
    for (auto _ : state) {
        orv::MD5 md5;
        md5.update(bytes.constData(), static_cast<unsigned int>(bytes.size()));
        benchmark::DoNotOptimize(md5.finalize().getDigest());
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

void BM_QCryptographicHash_Md5(benchmark::State &state) {
    QByteArray const &bytes = bigBuffer();
    for (auto _ : state)
        benchmark::DoNotOptimize(QCryptographicHash::hash(bytes, QCryptographicHash::Md5));
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

} // namespace

BENCHMARK(BM_MD5_Update)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QCryptographicHash_Md5)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
