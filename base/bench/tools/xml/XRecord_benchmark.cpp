// XRecord_benchmark.cpp: typed set and get of 16 attributes beside QVariantMap, which
// keeps the typed value itself where XRecord keeps its text form.
#include "orv/XRecord.h"

#include <QtCore/QPoint>
#include <QtCore/QVariantMap>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

std::vector<QString> const &keys() {
    static std::vector<QString> const names = [] {
        std::vector<QString> k;
        for (int i = 0; i < 16; ++i)
            k.push_back(QStringLiteral("attribute%1").arg(i));
        return k;
    }();
    return names;
}

void BM_XRecord_SetGetInt(benchmark::State &state) {
    orv::XRecord record;
    for (auto _ : state) {
        int i = 0;
        for (QString const &key : keys())
            record.setInt(key, i++ * 1000);
        long long sum = 0;
        for (QString const &key : keys())
            sum += record.getInt(key, 0);
        benchmark::DoNotOptimize(sum);
    }
}

void BM_QVariantMap_SetGetInt(benchmark::State &state) {
    QVariantMap map;
    for (auto _ : state) {
        int i = 0;
        for (QString const &key : keys())
            map.insert(key, i++ * 1000);
        long long sum = 0;
        for (QString const &key : keys())
            sum += map.value(key, 0).toInt();
        benchmark::DoNotOptimize(sum);
    }
}

void BM_XRecord_SetGetDouble(benchmark::State &state) {
    orv::XRecord record;
    for (auto _ : state) {
        double x = 0.5;
        for (QString const &key : keys())
            record.setDouble(key, x += 1.25);
        double sum = 0;
        for (QString const &key : keys())
            sum += record.getDouble(key, 0.0);
        benchmark::DoNotOptimize(sum);
    }
}

void BM_QVariantMap_SetGetDouble(benchmark::State &state) {
    QVariantMap map;
    for (auto _ : state) {
        double x = 0.5;
        for (QString const &key : keys())
            map.insert(key, x += 1.25);
        double sum = 0;
        for (QString const &key : keys())
            sum += map.value(key, 0.0).toDouble();
        benchmark::DoNotOptimize(sum);
    }
}

void BM_XRecord_SetGetQPoint(benchmark::State &state) {
    orv::XRecord record;
    for (auto _ : state) {
        int i = 0;
        for (QString const &key : keys()) {
            record.setQPoint(key, QPoint(i, -i));
            ++i;
        }
        int sum = 0;
        for (QString const &key : keys())
            sum += record.getQPoint(key).x();
        benchmark::DoNotOptimize(sum);
    }
}

void BM_QVariantMap_SetGetQPoint(benchmark::State &state) {
    QVariantMap map;
    for (auto _ : state) {
        int i = 0;
        for (QString const &key : keys()) {
            map.insert(key, QPoint(i, -i));
            ++i;
        }
        int sum = 0;
        for (QString const &key : keys())
            sum += map.value(key).toPoint().x();
        benchmark::DoNotOptimize(sum);
    }
}

} // namespace

BENCHMARK(BM_XRecord_SetGetInt);
BENCHMARK(BM_QVariantMap_SetGetInt);
BENCHMARK(BM_XRecord_SetGetDouble);
BENCHMARK(BM_QVariantMap_SetGetDouble);
BENCHMARK(BM_XRecord_SetGetQPoint);
BENCHMARK(BM_QVariantMap_SetGetQPoint);

BENCHMARK_MAIN();
