// Tokenizer_benchmark.cpp: XTokenizer and Tokenizer beside QByteArray::split and
// QString::split on one 64 MiB text of words between single blanks, so that all
// four give the same tokens.
#include "orv/Tokenizer.h"
#include "orv/XTokenizer.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <benchmark/benchmark.h>

#include <random>

namespace {

QByteArray const &bigBytes() {
    static QByteArray const bytes = [] {
        int const size = 64 * 1024 * 1024;
        QByteArray b;
        b.reserve(size + 16);
        std::mt19937 random(7);
        while (b.size() < size) {
            int const length = 1 + static_cast<int>(random() % 12);
            for (int i = 0; i < length; ++i)
                b.append(static_cast<char>('a' + random() % 26));
            b.append(' ');
        }
        b.append("end");
        return b;
    }();
    return bytes;
}

QString const &bigText() {
    static QString const text = QString::fromLatin1(bigBytes());
    return text;
}

void setBytes(benchmark::State &state) {
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bigBytes().size()));
}

void BM_XTokenizer_buildToken(benchmark::State &state) {
    QString const &text = bigText();
    for (auto _ : state) {
        orv::XTokenizer tok;
        benchmark::DoNotOptimize(tok.buildToken(text, QStringLiteral(" "), false, false));
    }
    setBytes(state);
}

void BM_Tokenizer_scan(benchmark::State &state) {
    QString const &text = bigText();
    for (auto _ : state) {
        orv::Tokenizer tok(text, QStringLiteral(" "), false);
        benchmark::DoNotOptimize(tok.size());
    }
    setBytes(state);
}

void BM_QByteArray_split(benchmark::State &state) {
    QByteArray const &bytes = bigBytes();
    for (auto _ : state) {
        QList<QByteArray> parts = bytes.split(' ');
        benchmark::DoNotOptimize(parts.size());
    }
    setBytes(state);
}

void BM_QString_split(benchmark::State &state) {
    QString const &text = bigText();
    for (auto _ : state) {
        QStringList parts = text.split(QLatin1Char(' '));
        benchmark::DoNotOptimize(parts.size());
    }
    setBytes(state);
}

// Builds the text before any timing starts, and checks that all four agree.
void BM_Tokenizer_sameTokenCount(benchmark::State &state) {
    int const expected = bigBytes().split(' ').size();
    orv::XTokenizer xtok(bigText(), QStringLiteral(" "), false, false);
    orv::Tokenizer tok(bigText(), QStringLiteral(" "), false);
    if (int(xtok.size()) != expected || int(tok.size()) != expected ||
        bigText().split(QLatin1Char(' ')).size() != expected)
        state.SkipWithError("token counts differ");
    for (auto _ : state)
        benchmark::DoNotOptimize(expected);
}

} // namespace

BENCHMARK(BM_Tokenizer_sameTokenCount)->Iterations(1);
BENCHMARK(BM_XTokenizer_buildToken)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_QByteArray_split)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_QString_split)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_Tokenizer_scan)->Unit(benchmark::kMillisecond)->Iterations(2);

BENCHMARK_MAIN();
