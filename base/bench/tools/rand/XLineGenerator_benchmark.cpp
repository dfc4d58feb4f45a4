// XLineGenerator_benchmark.cpp: random lines of words (characters drawn, blank
// delimiters) beside the same amount of text drawn with the standard MT19937 and
// uniform_int_distribution into a pre-sized QString.
#include "orv/XLineGenerator.h"

#include <QtCore/QString>

#include <benchmark/benchmark.h>

#include <random>

namespace {

orv::XLineGenerator::Params randomParams(int lineLen, int language) {
    orv::XLineGenerator::Params p;
    p.lineLen = static_cast<unsigned int>(lineLen);
    p.sequence = false;
    p.language = language;
    return p;
}

void BM_XLineGenerator_GenLine(benchmark::State &state) {
    orv::XLineGenerator generator(false);
    orv::XLineGenerator::Params const p =
        randomParams(static_cast<int>(state.range(0)), orv::XLineGenerator::GREEK);
    for (auto _ : state) {
        QString line = generator.genLine(p);
        benchmark::DoNotOptimize(line.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The same shape of line: words of 2..12 characters, blanks between, an ending.
void BM_StdUniformInt_Line(benchmark::State &state) {
    int const len = static_cast<int>(state.range(0));
    std::mt19937 random(5489);
    std::uniform_int_distribution<int> letter(0x0391, 0x03C9);
    std::uniform_int_distribution<int> wordLength(2, 12);
    std::uniform_int_distribution<int> ending(0, 2);
    QString const endings = QStringLiteral(".!?");
    for (auto _ : state) {
        QString line(len, Qt::Uninitialized);
        QChar *out = line.data();
        int wordEnd = wordLength(random);
        int count = 0;
        for (int i = 0; i < len - 1; ++i, ++count) {
            if (count == wordEnd && i < len - 2) {
                out[i] = QLatin1Char(' ');
                wordEnd = wordLength(random) - 1;
                count = 0;
            } else {
                out[i] = QChar(static_cast<ushort>(letter(random)));
            }
        }
        out[len - 1] = endings.at(ending(random));
        benchmark::DoNotOptimize(line.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(BM_XLineGenerator_GenLine)->Arg(80)->Arg(4096)->Arg(1 << 20);
BENCHMARK(BM_StdUniformInt_Line)->Arg(80)->Arg(4096)->Arg(1 << 20);
