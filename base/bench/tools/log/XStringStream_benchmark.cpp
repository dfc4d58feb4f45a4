// XStringStream_benchmark.cpp: the `$` formatter beside QString::arg chains and
// QString::asprintf, all producing the same line from four mixed arguments.
#include "orv/XStringStream.h"

#include <QtCore/QString>

#include <benchmark/benchmark.h>

namespace {

int const count = 42;
double const seconds = 3.25;
char const *const source = "input/file.txt";

QString const &name() {
    static QString const text = QStringLiteral("customer-records");
    return text;
}

// Every peer must write this; a mismatch marks the benchmark as failed.
QString const expected =
    QStringLiteral("read 42 rows of customer-records in 3.250000 s from input/file.txt");

void check(benchmark::State &state, QString const &got) {
    if (got != expected)
        state.SkipWithError("output differs from the expected line");
}

void BM_XStringStream_xprintF(benchmark::State &state) {
    check(state, orv::xprintF("read $ rows of $ in $ s from $", count, name(), seconds, source));
    for (auto _ : state) {
        QString line =
            orv::xprintF("read $ rows of $ in $ s from $", count, name(), seconds, source);
        benchmark::DoNotOptimize(line);
    }
}

QString argChain() {
    return QStringLiteral("read %1 rows of %2 in %3 s from %4")
        .arg(count)
        .arg(name())
        .arg(seconds, 0, 'f', 6)
        .arg(QLatin1String(source));
}

void BM_QString_argChain(benchmark::State &state) {
    check(state, argChain());
    for (auto _ : state) {
        QString line = argChain();
        benchmark::DoNotOptimize(line);
    }
}

QString asprintfLine() {
    return QString::asprintf("read %d rows of %s in %f s from %s", count,
                             name().toUtf8().constData(), seconds, source);
}

void BM_QString_asprintf(benchmark::State &state) {
    check(state, asprintfLine());
    for (auto _ : state) {
        QString line = asprintfLine();
        benchmark::DoNotOptimize(line);
    }
}

} // namespace

BENCHMARK(BM_XStringStream_xprintF);
BENCHMARK(BM_QString_argChain);
BENCHMARK(BM_QString_asprintf);

BENCHMARK_MAIN();
