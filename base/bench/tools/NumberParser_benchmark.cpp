// NumberParser_benchmark.cpp: FloatParser against strtod and QByteArray::toDouble,
// IntegerParser against strtoll, on the same texts.
#include "orv/NumberParser.h"

#include <QtCore/QByteArray>
#include <QtCore/QVector>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

QVector<QByteArray> makeFloatTexts() {
    std::mt19937 gen(42);
    std::uniform_real_distribution<double> mantissa(-1000.0, 1000.0);
    std::uniform_int_distribution<int> exponent(-30, 30), style(0, 2);
    QVector<QByteArray> texts;
    char buffer[64];
    for (int i = 0; i < 4096; ++i) {
        int const s = style(gen);
        if (s == 0)
            std::snprintf(buffer, sizeof buffer, "%.6f", mantissa(gen));
        else if (s == 1)
            std::snprintf(buffer, sizeof buffer, "%.3f", mantissa(gen));
        else
            std::snprintf(buffer, sizeof buffer, "%.15ge%d", mantissa(gen), exponent(gen));
        texts.append(QByteArray(buffer));
    }
    return texts;
}

QVector<QByteArray> makeIntegerTexts() {
    std::mt19937_64 gen(42);
    std::uniform_int_distribution<int> shift(0, 63);
    QVector<QByteArray> texts;
    for (int i = 0; i < 4096; ++i)
        texts.append(QByteArray::number(static_cast<qlonglong>(gen() >> shift(gen))));
    return texts;
}

QVector<QByteArray> const &floatTexts() {
    static QVector<QByteArray> const texts = makeFloatTexts();
    return texts;
}

QVector<QByteArray> const &integerTexts() {
    static QVector<QByteArray> const texts = makeIntegerTexts();
    return texts;
}

void BM_FloatParser_Stof(benchmark::State &state) {
    auto const &texts = floatTexts();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(orv::FloatParser::stof(texts[i].constData()));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_FloatParser_Stof);

void BM_FloatParser_StofLegacy(benchmark::State &state) {
    auto const &texts = floatTexts();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(orv::FloatParser::stof_legacy(texts[i].constData()));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_FloatParser_StofLegacy);

void BM_FloatParser_AsciiToFloat(benchmark::State &state) {
    auto const &texts = floatTexts();
    int i = 0;
    for (auto _ : state) {
        QByteArray const &t = texts[i];
        benchmark::DoNotOptimize(
            orv::FloatParser::asciiToFloat(t.constData(), t.constData() + t.size()));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_FloatParser_AsciiToFloat);

void BM_Strtod(benchmark::State &state) {
    auto const &texts = floatTexts();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::strtod(texts[i].constData(), nullptr));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_Strtod);

void BM_QByteArray_ToDouble(benchmark::State &state) {
    auto const &texts = floatTexts();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(texts[i].toDouble());
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_QByteArray_ToDouble);

void BM_IntegerParser_Stoi(benchmark::State &state) {
    auto const &texts = integerTexts();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(orv::IntegerParser::stoi(texts[i].constData()));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_IntegerParser_Stoi);

void BM_Strtoll(benchmark::State &state) {
    auto const &texts = integerTexts();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::strtoll(texts[i].constData(), nullptr, 10));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_Strtoll);

} // namespace
