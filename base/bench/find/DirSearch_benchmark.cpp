// DirSearch_benchmark.cpp: the whole search run (walk, file filter, content search on
// worker threads) over two trees beside `grep -rc` and ripgrep's `rg -c`, in one run:
// 20,000 generated prose files of about 500 MB in 400 folders, and a copy of
// /usr/include (links resolved). Both are made under the temporary folder on first use
// and deleted at the end. Each run's count of matching lines must equal grep's, or the
// benchmark fails. x_grep and x_rg are the ratios to the peers (below 1: faster); the
// page cache is hot, as every case reads the trees several times.
//   orv_bench_find --benchmark_filter='Dir|XSearchRun'
#include "BenchText.h"

#include "orv/XSearchRun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace {

using namespace orv;

int const TREE_FILES = 20000;
int const TREE_FOLDERS = 20; // per level, two levels
qint64 const TREE_MEAN_FILE = 25000;

// A tree of prose files cut from one large text at random places, so that the files
// differ and the rare names fall where they fall.
class GeneratedTree {
public:
    GeneratedTree() {
        QFile source(bench::textFile(qint64(64) << 20).path());
        if (!source.open(QIODevice::ReadOnly))
            return;
        QByteArray const text = source.readAll();
        std::uint64_t seed = 0x2545F4914F6CDD1Dull;
        auto next = [&seed] { return bench::xorShift(seed); };
        int const perFolder = TREE_FILES / (TREE_FOLDERS * TREE_FOLDERS);
        for (int i = 0; i < TREE_FILES; ++i) {
            int const leaf = i / perFolder;
            QString const folder = dir.filePath(
                QStringLiteral("d%1/e%2").arg(leaf / TREE_FOLDERS).arg(leaf % TREE_FOLDERS));
            if (i % perFolder == 0)
                QDir().mkpath(folder);
            qint64 const size = 1000 + qint64(next() % std::uint64_t(2 * TREE_MEAN_FILE - 2000));
            qint64 start = qint64(next() % std::uint64_t(text.size() - size));
            start = text.indexOf('\n', int(start)) + 1;
            QFile file(folder + QStringLiteral("/f%1.txt").arg(i));
            if (file.open(QIODevice::WriteOnly))
                file.write(text.constData() + start, std::min(size, text.size() - start));
        }
    }
    QString path() const { return dir.path(); }

private:
    QTemporaryDir dir;
};

// /usr/include with its links resolved, so that every tool sees the same files.
class IncludeCopy {
public:
    IncludeCopy() {
        QProcess::execute(QStringLiteral("cp"),
                          {QStringLiteral("-rL"), QStringLiteral("/usr/include"), path()});
    }
    QString path() const { return dir.filePath(QStringLiteral("include")); }

private:
    QTemporaryDir dir;
};

QString treePath(std::string const &tree) {
    static std::unique_ptr<GeneratedTree> generated;
    static std::unique_ptr<IncludeCopy> include;
    if (tree == "generated") {
        if (!generated)
            generated = std::make_unique<GeneratedTree>();
        return generated->path();
    }
    if (!include)
        include = std::make_unique<IncludeCopy>();
    return include->path();
}

struct Case {
    char const *tree;
    char const *name;
    char const *expr;
    QStringList grepArgs; // the same for rg
};

Case const cases[] = {
    {"generated", "literal", "Sherlock", {"Sherlock"}},
    {"generated", "or", "Sherlock | Watson", {"-e", "Sherlock", "-e", "Watson"}},
    {"include", "literal", "uint32_t", {"uint32_t"}},
    {"include", "or", "EINVAL | ENOMEM", {"-e", "EINVAL", "-e", "ENOMEM"}},
};

std::string key(Case const &c) { return std::string(c.tree) + "/" + c.name; }

// Seconds per iteration of the peers and grep's count of matching lines, by case.
std::map<std::string, double> &peerSeconds() {
    static std::map<std::string, double> seconds;
    return seconds;
}
std::map<std::string, qint64> &grepLines() {
    static std::map<std::string, qint64> lines;
    return lines;
}

// "path:count" per line, as -c prints them.
qint64 sumOfCounts(QByteArray const &out) {
    qint64 sum = 0;
    for (QByteArray const &line : out.split('\n'))
        sum += line.mid(line.lastIndexOf(':') + 1).toLongLong();
    return sum;
}

void peer(benchmark::State &state, Case const &c, QString const &program, QStringList args) {
    QString const dir = treePath(c.tree);
    QByteArray out;
    auto const start = std::chrono::steady_clock::now();
    if (!bench::timeTool(state, program, args << c.grepArgs << dir, out))
        return;
    double const seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() /
        double(state.iterations());
    peerSeconds()[program.toStdString() + "/" + key(c)] = seconds;
    qint64 const lines = sumOfCounts(out);
    state.counters["lines"] = double(lines);
    if (program == QLatin1String("grep"))
        grepLines()[key(c)] = lines;
}

void BM_DirGrep_Count(benchmark::State &state, Case const &c) {
    peer(state, c, QStringLiteral("grep"), {QStringLiteral("-rc")});
}

void BM_DirRipgrep_Count(benchmark::State &state, Case const &c) {
    peer(state, c, QStringLiteral("rg"), {QStringLiteral("-c"), QStringLiteral("--no-ignore")});
}

// threads 0: one per processor. Each iteration walks the tree anew, as the peers do.
void BM_XSearchRun(benchmark::State &state, Case const &c, int threads) {
    QString const dir = treePath(c.tree);
    find::XFilter filter;
    filter.contentFilter.createSymbols(QString::fromUtf8(c.expr), false);
    find::XSearchRun search(filter);
    search.setThreadCount(threads);
    search.setLinesOfBinaryFiles(true);
    double total = 0;
    for (auto _ : state) {
        search.dirInfo().rescan = true;
        auto const start = std::chrono::steady_clock::now();
        search.run(dir);
        double const seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(seconds);
        total += seconds;
    }
    qint64 lines = 0;
    for (find::XSearchRun::FileResult const &file : search.results())
        for (size_t i = 0; i < file.hitLines.size(); ++i)
            lines += i == 0 || file.hitLines[i].line != file.hitLines[i - 1].line;
    state.counters["lines"] = double(lines);
    state.counters["files"] = double(search.stats().filesTotal);
    state.SetBytesProcessed(state.iterations() * qint64(search.stats().bytes));
    auto const grep = grepLines().find(key(c));
    if (grep != grepLines().end() && grep->second != lines)
        state.SkipWithError("matching lines differ from grep's");
    double const mean = total / double(state.iterations());
    for (char const *peerName : {"grep", "rg"}) {
        auto const it = peerSeconds().find(std::string(peerName) + "/" + key(c));
        if (it != peerSeconds().end() && it->second > 0)
            state.counters[std::string("x_") + peerName] = mean / it->second;
    }
}

// Registered before main's own cases, so that the trees are made first.
int const registered = [] {
    for (Case const &c : cases) {
        std::string const name = key(c);
        auto const add = [](std::string const &title, auto fn) {
            benchmark::RegisterBenchmark(title.c_str(), fn)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond)
                ->Iterations(5);
        };
        add("BM_DirGrep_Count/" + name, [c](benchmark::State &s) { BM_DirGrep_Count(s, c); });
        add("BM_DirRipgrep_Count/" + name, [c](benchmark::State &s) { BM_DirRipgrep_Count(s, c); });
        add("BM_XSearchRun/" + name, [c](benchmark::State &s) { BM_XSearchRun(s, c, 0); });
        add("BM_XSearchRun_1Thread/" + name, [c](benchmark::State &s) { BM_XSearchRun(s, c, 1); });
    }
    return 0;
}();

} // namespace
