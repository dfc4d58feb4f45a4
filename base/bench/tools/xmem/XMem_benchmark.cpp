// XMem_benchmark.cpp: growing a block by appends, beside QByteArray::append and
// std::vector::insert, for small, middle and page-sized pieces up to 16 MiB.
#include "orv/XMem.h"

#include <QtCore/QByteArray>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

int const TOTAL = 16 * 1024 * 1024;

QByteArray piece(int64_t size) { return QByteArray(static_cast<int>(size), 'x'); }

void BM_XMem_AppendRawData(benchmark::State &state) {
    QByteArray const chunk = piece(state.range(0));
    for (auto _ : state) {
        orv::XMem block;
        for (int done = 0; done < TOTAL; done += chunk.size())
            block.append_raw_data(chunk.constData(), static_cast<quint64>(chunk.size()));
        benchmark::DoNotOptimize(block.mem());
    }
    state.SetBytesProcessed(state.iterations() * TOTAL);
}

void BM_QByteArray_Append(benchmark::State &state) {
    QByteArray const chunk = piece(state.range(0));
    for (auto _ : state) {
        QByteArray block;
        for (int done = 0; done < TOTAL; done += chunk.size())
            block.append(chunk.constData(), chunk.size());
        benchmark::DoNotOptimize(block.constData());
    }
    state.SetBytesProcessed(state.iterations() * TOTAL);
}

void BM_StdVector_Insert(benchmark::State &state) {
    QByteArray const chunk = piece(state.range(0));
    for (auto _ : state) {
        std::vector<char> block;
        for (int done = 0; done < TOTAL; done += chunk.size())
            block.insert(block.end(), chunk.constData(), chunk.constData() + chunk.size());
        benchmark::DoNotOptimize(block.data());
    }
    state.SetBytesProcessed(state.iterations() * TOTAL);
}

} // namespace

BENCHMARK(BM_XMem_AppendRawData)->Arg(16)->Arg(256)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QByteArray_Append)->Arg(16)->Arg(256)->Arg(4096)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdVector_Insert)->Arg(16)->Arg(256)->Arg(4096)->Unit(benchmark::kMillisecond);
