// BenchText.h: the text files the find benchmarks read (English-like prose of words in
// a Zipf mix, lines of 30 to 110 bytes, a rare name every few hundred lines), made once
// per run in a temporary folder; and timing an outside tool on them.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <memory>

namespace orv::bench {

// The next number of a xorshift generator: fast, and the same texts on every run.
inline std::uint64_t xorShift(std::uint64_t &seed) {
    seed ^= seed << 13;
    seed ^= seed >> 7;
    seed ^= seed << 17;
    return seed;
}

class TextFile {
public:
    explicit TextFile(qint64 size) {
        static char const *const words[] = {
            "the",    "of",      "and",      "to",       "a",          "in",       "that",
            "it",     "was",     "he",       "for",      "on",         "are",      "as",
            "with",   "his",     "they",     "at",       "be",         "this",     "from",
            "have",   "or",      "by",       "one",      "had",        "not",      "but",
            "what",   "all",     "were",     "when",     "we",         "there",    "can",
            "an",     "your",    "which",    "their",    "said",       "if",       "do",
            "will",   "each",    "about",    "how",      "up",         "out",      "them",
            "then",   "she",     "many",     "some",     "so",         "these",    "would",
            "other",  "into",    "has",      "more",     "her",        "two",      "like",
            "him",    "see",     "time",     "could",    "no",         "make",     "than",
            "first",  "been",    "its",      "who",      "now",        "people",   "my",
            "made",   "over",    "did",      "down",     "only",       "way",      "find",
            "use",    "may",     "water",    "long",     "little",     "very",     "after",
            "words",  "called",  "just",     "where",    "most",       "know",     "window",
            "street", "evening", "morning",  "letter",   "matter",     "doctor",   "Baker",
            "London", "friend",  "business", "singular", "remarkable", "observed", "answered"};
        int const count = int(sizeof(words) / sizeof(words[0]));
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly))
            return;
        std::uint64_t seed = 0x9E3779B97F4A7C15ull;
        auto next = [&seed] { return xorShift(seed); };
        QByteArray block;
        qint64 written = 0;
        while (written < size) {
            QByteArray line;
            int const length = 30 + int(next() % 80);
            while (line.size() < length) {
                std::uint64_t const r = next();
                // Zipf-like: the low indices come far more often.
                int const w = int((r % 1000) * (r % 1000) / 1000 * count / 1000);
                if (!line.isEmpty())
                    line += ' ';
                if (r % 701 == 0)
                    line += (r & 1024) ? "Sherlock" : "Watson";
                else if (r % 997 == 0)
                    line += "sherlock";
                else
                    line += words[w];
            }
            block += line + '\n';
            if (block.size() >= (1 << 20)) {
                written += file.write(block);
                block.clear();
            }
        }
        written += file.write(block);
    }
    ~TextFile() { QFile::remove(path()); }
    QString path() const { return dir.filePath("text.txt"); }

private:
    QTemporaryDir dir;
};

// One file per size for the whole run.
inline TextFile &textFile(qint64 size) {
    static std::map<qint64, std::unique_ptr<TextFile>> files;
    std::unique_ptr<TextFile> &file = files[size];
    if (!file)
        file = std::make_unique<TextFile>(size);
    return *file;
}

// Runs program on args once per iteration as the manual time; its standard output of the
// last run goes to out. False (and the benchmark skipped) when the program is missing.
inline bool timeTool(benchmark::State &state, QString const &program, QStringList const &args,
                     QByteArray &out) {
    if (QStandardPaths::findExecutable(program).isEmpty()) {
        state.SkipWithError(
            (program + " is not installed (scripts/bootstrap.sh)").toUtf8().constData());
        return false;
    }
    for (auto _ : state) {
        QProcess process;
        QElapsedTimer timer;
        timer.start();
        process.start(program, args);
        process.waitForFinished(-1);
        state.SetIterationTime(double(timer.nsecsElapsed()) / 1e9);
        out = process.readAllStandardOutput();
    }
    return true;
}

} // namespace orv::bench
