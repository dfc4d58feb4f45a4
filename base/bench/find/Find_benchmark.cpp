// Find_benchmark.cpp: the line table of a 1 GiB text file beside `wc -l` and memchr
// counting; and content searches over 256 MiB (one literal term, case-sensitive and
// case-insensitive, and an or of two terms) beside `grep -c` and ripgrep's `rg -c`, all
// in one run. Each search's count of matching lines must equal grep's, or the benchmark
// fails. Ratios to the peers measured earlier in the run are the counters x_wc, x_grep
// and x_rg (below 1: faster than the peer).
//   orv_bench_find [--benchmark_filter=Search]
#include "BenchText.h"

#include "orv/XContentFilter.h"
#include "orv/XFileMapper.h"
#include "orv/XLineReaderDA.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <map>
#include <set>
#include <string>

namespace {

using namespace orv;

qint64 const TABLE_BYTES = qint64(1) << 30;
qint64 const SEARCH_BYTES = qint64(256) << 20;

// Seconds per iteration of the peers, by name, for the ratios of what follows them.
std::map<std::string, double> &peerSeconds() {
    static std::map<std::string, double> seconds;
    return seconds;
}

// Matching lines as grep counts them, by case.
std::map<std::string, qint64> &grepCounts() {
    static std::map<std::string, qint64> counts;
    return counts;
}

void setRatio(benchmark::State &state, char const *counter, std::string const &peer,
              double seconds) {
    auto const it = peerSeconds().find(peer);
    if (it != peerSeconds().end() && it->second > 0)
        state.counters[counter] = seconds / it->second;
}

template <typename Body> double timed(benchmark::State &state, Body body) {
    double total = 0;
    for (auto _ : state) {
        auto const start = std::chrono::steady_clock::now();
        body();
        double const seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        state.SetIterationTime(seconds);
        total += seconds;
    }
    return state.iterations() ? total / double(state.iterations()) : 0;
}

void peer(benchmark::State &state, std::string const &name, QString const &program,
          QStringList const &args, qint64 fileSize) {
    QString const path = bench::textFile(fileSize).path();
    QByteArray out;
    auto const start = std::chrono::steady_clock::now();
    if (!bench::timeTool(state, program, args + QStringList{path}, out))
        return;
    peerSeconds()[name] =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() /
        double(state.iterations());
    state.counters["count"] = out.trimmed().split(' ').value(0).toDouble();
    if (program == QLatin1String("grep"))
        grepCounts()[name.substr(name.find('/') + 1)] = out.trimmed().toLongLong();
    state.SetBytesProcessed(state.iterations() * fileSize);
}

void BM_Wc_LineCount(benchmark::State &state) { peer(state, "wc", "wc", {"-l"}, TABLE_BYTES); }

void BM_Memchr_LineCount(benchmark::State &state) {
    XFileMapper file(bench::textFile(TABLE_BYTES).path());
    if (!file.mapReadOnly() || !file.mem()) {
        state.SkipWithError("cannot map the text");
        return;
    }
    qint64 lines = 0;
    double const seconds = timed(state, [&] {
        lines = 0;
        char const *p = file.mem();
        char const *const end = p + file.length();
        while ((p = static_cast<char const *>(std::memchr(p, '\n', size_t(end - p))))) {
            ++lines;
            ++p;
        }
    });
    state.counters["count"] = double(lines);
    setRatio(state, "x_wc", "wc", seconds);
    state.SetBytesProcessed(state.iterations() * TABLE_BYTES);
}

void BM_XLineReaderDA_LineTable(benchmark::State &state) {
    QString const path = bench::textFile(TABLE_BYTES).path();
    quint64 lines = 0, tableBytes = 0;
    double const seconds = timed(state, [&] {
        XLineReaderDA reader;
        reader.openFile(path, 1 << 20, true);
        lines = reader.countLines();
        tableBytes = reader.lineInfos().capacity() * sizeof(XLineInfo);
    });
    state.counters["count"] = double(lines);
    state.counters["bytes_per_line"] = lines ? double(tableBytes) / double(lines) : 0;
    setRatio(state, "x_wc", "wc", seconds);
    state.SetBytesProcessed(state.iterations() * TABLE_BYTES);
}

struct SearchCase {
    char const *name;
    char const *expr;
    QStringList grepArgs; // the same for rg
};

SearchCase const searchCases[] = {
    {"literal", "Sherlock", {"-c", "Sherlock"}},
    {"literal_i", "sherlock{i}", {"-c", "-i", "sherlock"}},
    {"or", "Sherlock | Watson", {"-c", "-e", "Sherlock", "-e", "Watson"}},
};

// Matching lines of a layer: the distinct file lines its marks lie on.
qint64 matchingLines(XLineReaderDA const &reader, find::XRamLayer const &hits) {
    std::vector<XLineInfo> const &table = reader.lineInfos();
    std::set<unsigned int> lines;
    for (find::XRam const &m : hits) {
        auto const it =
            std::upper_bound(table.begin(), table.end(), quint64(m.start),
                             [](quint64 pos, XLineInfo const &li) { return pos < li.posMemory; });
        lines.insert(std::prev(it)->lineNumber);
    }
    return qint64(lines.size());
}

// withTable: the table is built in each iteration too, as the peers read the file each time.
void searchWith(benchmark::State &state, SearchCase const &c, bool withTable, bool prefilter) {
    QString const path = bench::textFile(SEARCH_BYTES).path();
    find::XContentFilter filter;
    filter.createSymbols(QString::fromUtf8(c.expr), false);
    filter.setPrefilterEnabled(prefilter);
    XLineReaderDA prebuilt;
    if (!withTable)
        prebuilt.openFile(path, 1 << 20, true);
    find::XRamLayer hits;
    std::unique_ptr<XLineReaderDA> last;
    double const seconds = timed(state, [&] {
        if (withTable) {
            last = std::make_unique<XLineReaderDA>();
            last->openFile(path, 1 << 20, true);
            hits = filter.search(*last);
        } else {
            hits = filter.search(prebuilt);
        }
    });
    qint64 const lines = matchingLines(withTable ? *last : prebuilt, hits);
    state.counters["count"] = double(lines);
    auto const grep = grepCounts().find(c.name);
    if (grep != grepCounts().end() && grep->second != lines)
        state.SkipWithError("matching lines differ from grep's");
    setRatio(state, "x_grep", std::string("grep/") + c.name, seconds);
    setRatio(state, "x_rg", std::string("rg/") + c.name, seconds);
    state.SetBytesProcessed(state.iterations() * SEARCH_BYTES);
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RegisterBenchmark("BM_Wc_LineCount/1GiB", BM_Wc_LineCount)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3);
    benchmark::RegisterBenchmark("BM_Memchr_LineCount/1GiB", BM_Memchr_LineCount)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3);
    benchmark::RegisterBenchmark("BM_XLineReaderDA_LineTable/1GiB", BM_XLineReaderDA_LineTable)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3);
    for (SearchCase const &c : searchCases) {
        std::string const name = c.name;
        benchmark::RegisterBenchmark(("BM_Grep_Count/" + name).c_str(),
                                     [c](benchmark::State &s) {
                                         peer(s, std::string("grep/") + c.name, "grep", c.grepArgs,
                                              SEARCH_BYTES);
                                     })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(5);
        benchmark::RegisterBenchmark(("BM_Ripgrep_Count/" + name).c_str(),
                                     [c](benchmark::State &s) {
                                         peer(s, std::string("rg/") + c.name, "rg", c.grepArgs,
                                              SEARCH_BYTES);
                                     })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(5);
        benchmark::RegisterBenchmark(("BM_XContentFilter_Search/" + name).c_str(),
                                     [c](benchmark::State &s) { searchWith(s, c, false, true); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(5);
        benchmark::RegisterBenchmark(("BM_XContentFilter_OpenTableSearch/" + name).c_str(),
                                     [c](benchmark::State &s) { searchWith(s, c, true, true); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(5);
        benchmark::RegisterBenchmark(("BM_XContentFilter_SearchNoPrefilter/" + name).c_str(),
                                     [c](benchmark::State &s) { searchWith(s, c, false, false); })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(2);
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
