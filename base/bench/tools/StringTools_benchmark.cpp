// StringTools_benchmark.cpp: format1000 against QLocale's digit grouping, and
// memSearch against std::search.
#include "orv/StringFormat.h"
#include "orv/StringText.h"

#include <QtCore/QLocale>
#include <QtCore/QVector>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

QVector<qint64> makeValues() {
    std::mt19937_64 gen(42);
    std::uniform_int_distribution<int> shift(0, 62);
    QVector<qint64> values;
    for (int i = 0; i < 4096; ++i)
        values.append(static_cast<qint64>(gen() >> (shift(gen) + 1)));
    return values;
}

QVector<qint64> const &values() {
    static QVector<qint64> const v = makeValues();
    return v;
}

void BM_StringTools_Format1000(benchmark::State &state) {
    auto const &v = values();
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(orv::format1000(v[i]));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_StringTools_Format1000);

void BM_QLocale_GermanToString(benchmark::State &state) {
    auto const &v = values();
    QLocale const german(QLocale::German);
    int i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(german.toString(static_cast<qlonglong>(v[i])));
        i = (i + 1) & 4095;
    }
}
BENCHMARK(BM_QLocale_GermanToString);

std::string makeHaystack(size_t size) {
    std::mt19937 gen(42);
    std::uniform_int_distribution<int> letter('a', 'z');
    std::string text(size, ' ');
    for (char &c : text)
        c = static_cast<char>(letter(gen));
    text.replace(size - 100, 6, "needle");
    return text;
}

void BM_StringTools_MemSearch(benchmark::State &state) {
    std::string const haystack = makeHaystack(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(
            orv::memSearch(haystack.data(), haystack.size(), "needle", 6, false));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_StringTools_MemSearch)->Range(1 << 10, 1 << 20);

void BM_StdSearch(benchmark::State &state) {
    std::string const haystack = makeHaystack(static_cast<size_t>(state.range(0)));
    std::string const needle = "needle";
    for (auto _ : state)
        benchmark::DoNotOptimize(
            std::search(haystack.begin(), haystack.end(), needle.begin(), needle.end()));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_StdSearch)->Range(1 << 10, 1 << 20);

} // namespace
