// XNode_benchmark.cpp: parsing to a node tree beside Qt's stream reader (tokens only),
// Qt's DOM and pugixml's DOM, in one run, on the shared MIME database (a large real
// file from a Debian package) and on a generated 100 MB document; and the heap one
// parsed tree of the 100 MB document takes per element.
//
//   build/base/bench/orv_bench_tools_xml --benchmark_filter='Parse|Tokenize|Memory'
#include "orv/XNode.h"

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>
#ifdef ORV_HAVE_QTXML
#include <QtXml/QDomDocument>
#endif
#ifdef ORV_HAVE_PUGIXML
#include <pugixml.hpp>
#endif

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>

namespace {

char const mimeDatabase[] = "/usr/share/mime/packages/freedesktop.org.xml";

// Groups of twenty items, each with four attributes and a text, as a large
// configuration or test description looks.
QByteArray const &generated100MB() {
    static QByteArray const doc = [] {
        QByteArray out;
        out.reserve(101 * 1000 * 1000);
        out += "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<root>\n";
        for (int g = 0; out.size() < 100 * 1000 * 1000; ++g) {
            out += "  <group name=\"g" + QByteArray::number(g) + "\" id=\"" +
                   QByteArray::number(g) + "\">\n";
            for (int i = 0; i < 20; ++i)
                out += "    <item id=\"" + QByteArray::number(g * 20 + i) +
                       "\" kind=\"sample\" enabled=\"true\" scale=\"1.250000\">text of item " +
                       QByteArray::number(i) + "</item>\n";
            out += "  </group>\n";
        }
        out += "</root>\n";
        return out;
    }();
    return doc;
}

QByteArray const &mimeBytes() {
    static QByteArray const bytes = [] {
        QFile file(QString::fromLatin1(mimeDatabase));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }();
    return bytes;
}

QByteArray const &input(benchmark::State &state) {
    return state.range(0) == 0 ? mimeBytes() : generated100MB();
}

bool haveInput(benchmark::State &state, QByteArray const &bytes) {
    if (bytes.isEmpty())
        state.SkipWithError("no /usr/share/mime/packages/freedesktop.org.xml "
                            "(Debian package shared-mime-info)");
    state.SetLabel(state.range(0) == 0 ? "freedesktop.org.xml" : "generated 100 MB");
    return !bytes.isEmpty();
}

// Freeing a tree isn't part of reading it: it happens outside the timing.
template <typename Tree> void freeUntimed(benchmark::State &state, Tree &tree) {
    state.PauseTiming();
    tree.reset();
    state.ResumeTiming();
}

void BM_XNode_Parse(benchmark::State &state) {
    QByteArray const &bytes = input(state);
    if (!haveInput(state, bytes))
        return;
    for (auto _ : state) {
        std::unique_ptr<orv::XNode> root(orv::XNode::parseQByteArray(bytes, nullptr));
        benchmark::DoNotOptimize(root.get());
        freeUntimed(state, root);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
}

void BM_QXmlStreamReader_Tokenize(benchmark::State &state) {
    QByteArray const &bytes = input(state);
    if (!haveInput(state, bytes))
        return;
    for (auto _ : state) {
        QXmlStreamReader reader(bytes);
        qint64 tokens = 0;
        while (!reader.atEnd()) {
            reader.readNext();
            ++tokens;
        }
        benchmark::DoNotOptimize(tokens);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
}

void BM_QDomDocument_Parse(benchmark::State &state) {
#ifdef ORV_HAVE_QTXML
    QByteArray const &bytes = input(state);
    if (!haveInput(state, bytes))
        return;
    for (auto _ : state) {
        auto doc = std::make_unique<QDomDocument>();
        benchmark::DoNotOptimize(doc->setContent(bytes));
        freeUntimed(state, doc);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
#else
    state.SkipWithError("Qt5::Xml is absent (Debian package qtbase5-dev): no DOM to compare");
#endif
}

void BM_pugixml_Parse(benchmark::State &state) {
#ifdef ORV_HAVE_PUGIXML
    QByteArray const &bytes = input(state);
    if (!haveInput(state, bytes))
        return;
    for (auto _ : state) {
        auto doc = std::make_unique<pugi::xml_document>();
        benchmark::DoNotOptimize(doc->load_buffer(bytes.constData(), size_t(bytes.size())));
        freeUntimed(state, doc);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
#else
    state.SkipWithError("pugixml is absent (Debian package libpugixml-dev): no peer to compare");
#endif
}

size_t heapInUse() {
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// An element of the generated document (four attributes, one of them a distinct number,
// and a short text) costs its node (112 bytes and the allocator's header), a map node of
// 64 bytes per attribute, its distinct value (48), and its pointer in the parent's list;
// repeated short values and texts are shared. Above the budget the run reports an error.
double const BUDGET_BYTES_PER_ELEMENT = 480;

// The tree's own heap, without the text it was read from, per element.
void BM_XNode_MemoryPerElement(benchmark::State &state) {
    QByteArray const &bytes = input(state);
    if (!haveInput(state, bytes))
        return;
    double perElement = 0, treeBytes = 0;
    for (auto _ : state) {
        size_t const before = heapInUse();
        std::unique_ptr<orv::XNode> root(orv::XNode::parseQByteArray(bytes, nullptr));
        treeBytes = double(heapInUse() - before);
        perElement = treeBytes / root->sizeRecursive(true);
        freeUntimed(state, root);
    }
    if (perElement > BUDGET_BYTES_PER_ELEMENT)
        state.SkipWithError("the tree is over its budget of 480 bytes per element");
    state.counters["tree_MB"] = treeBytes / 1e6;
    state.counters["bytes_per_element"] = perElement;
    state.counters["tree_per_input_byte"] = treeBytes / bytes.size();
}

} // namespace

// 0: the MIME database, 1: the generated 100 MB document.
BENCHMARK(BM_XNode_Parse)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QXmlStreamReader_Tokenize)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QDomDocument_Parse)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_pugixml_Parse)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_XNode_MemoryPerElement)->Arg(1)->Iterations(1)->Unit(benchmark::kMillisecond);
