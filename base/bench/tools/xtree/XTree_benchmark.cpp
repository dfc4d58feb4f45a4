// XTree_benchmark.cpp: a document of 1,000,000 mixed simple values in 1,000 child trees
// saved and loaded, in memory and in a file, beside QDataStream writing and reading the
// same content as nested QVariantMaps; and an array of 1 GiB of floats beside
// fwrite/fread of the same bytes, with the peak memory of each.
#include "PeakMemory.h"
#include "orv/XTree.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QVariantMap>

#include <benchmark/benchmark.h>

#include <cstdio>

#include <unistd.h>

namespace {

using namespace orv;

int const TREES = 1000;
int const VALUES = 1000;
quint64 const FLOATS = quint64(256) << 20; // 1 GiB

QString keyOf(char prefix, int i) { return QString::asprintf("%c%04d", prefix, i); }

// Value j of a child tree: int32, double, bool, QString, int64 by turns.
template <typename Put> void fill(Put put, int j) {
    switch (j % 5) {
    case 0: put(j); break;
    case 1: put(j * 0.5); break;
    case 2: put(j % 2 == 0); break;
    case 3: put(QStringLiteral("value %1").arg(j)); break;
    default: put(qint64(j) << 33); break;
    }
}

XTree const &document() {
    static XTree const tree = [] {
        XTree root;
        for (int i = 0; i < TREES; ++i) {
            XTree &child = root.addTree(keyOf('t', i));
            for (int j = 0; j < VALUES; ++j)
                fill([&](auto v) { child.set(keyOf('k', j), v); }, j);
        }
        return root;
    }();
    return tree;
}

QVariantMap const &variantDocument() {
    static QVariantMap const map = [] {
        QVariantMap root;
        for (int i = 0; i < TREES; ++i) {
            QVariantMap child;
            for (int j = 0; j < VALUES; ++j)
                fill([&](auto v) { child.insert(keyOf('k', j), QVariant::fromValue(v)); }, j);
            root.insert(keyOf('t', i), child);
        }
        return root;
    }();
    return map;
}

XTypeSupporter const &types() { return XTypeSupporter::basicTypes(); }
QString tempPath(char const *name) { return QDir::temp().filePath(QString::fromLatin1(name)); }

void counters(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * TREES * VALUES);
}

void BM_XTree_SaveToMemory(benchmark::State &state) {
    document();
    for (auto _ : state)
        benchmark::DoNotOptimize(document().createMem(types()));
    counters(state);
}

void BM_QDataStream_SaveVariantMap(benchmark::State &state) {
    variantDocument();
    for (auto _ : state) {
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << variantDocument();
        benchmark::DoNotOptimize(bytes.data());
    }
    counters(state);
}

void BM_XTree_LoadFromMemory(benchmark::State &state) {
    XMem bytes = document().createMem(types());
    for (auto _ : state)
        benchmark::DoNotOptimize(XTree::load(bytes, types()));
    counters(state);
}

void BM_QDataStream_LoadVariantMap(benchmark::State &state) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << variantDocument();
    for (auto _ : state) {
        QVariantMap map;
        QDataStream in(bytes);
        in >> map;
        benchmark::DoNotOptimize(map.size());
    }
    counters(state);
}

void BM_XTree_SaveAsFile(benchmark::State &state) {
    QString const path = tempPath("orv_bench_doc.tree");
    XTree copy = document().create_copy(types());
    for (auto _ : state)
        benchmark::DoNotOptimize(copy.saveAsFile(path, types()));
    counters(state);
    QFile::remove(path);
}

void BM_QDataStream_SaveToFile(benchmark::State &state) {
    QString const path = tempPath("orv_bench_doc.qds");
    variantDocument();
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        QDataStream out(&file);
        out << variantDocument();
    }
    counters(state);
    QFile::remove(path);
}

void BM_XTree_LoadFromFile(benchmark::State &state) {
    QString const path = tempPath("orv_bench_doc.tree");
    document().create_copy(types()).saveAsFile(path, types());
    for (auto _ : state)
        benchmark::DoNotOptimize(XTree::load(path, types()));
    counters(state);
    QFile::remove(path);
}

void BM_QDataStream_LoadFromFile(benchmark::State &state) {
    QString const path = tempPath("orv_bench_doc.qds");
    {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        QDataStream out(&file);
        out << variantDocument();
    }
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        QDataStream in(&file);
        QVariantMap map;
        in >> map;
        benchmark::DoNotOptimize(map.size());
    }
    counters(state);
    QFile::remove(path);
}

// A GiB written per iteration would soon have the system throttle whichever writer
// comes next; a file removed before its write-back costs no disk time at all.
void dropFile(benchmark::State &state, QString const &path) {
    state.PauseTiming();
    QFile::remove(path);
    state.ResumeTiming();
}

// Files to read are on disk first, so that their write-back doesn't run during a read.
void settle() { ::sync(); }

// The array benchmarks report the peak resident size reached while they ran.
void peakCounters(benchmark::State &state) {
    state.SetBytesProcessed(state.iterations() * FLOATS * sizeof(float));
    state.counters["peak_MiB"] = bench::peakMemoryMiB();
}

XTree floatArray() {
    XTree tree;
    XTreeArray samples = XTreeArray::create<float>(FLOATS);
    float *f = samples.data<float>();
    for (quint64 i = 0; i < FLOATS; ++i)
        f[i] = float(i);
    tree.setArray(QStringLiteral("samples"), std::move(samples));
    return tree;
}

void BM_XTreeArray_Save1GiB(benchmark::State &state) {
    QString const path = tempPath("orv_bench_array.tree");
    XTree tree = floatArray();
    bench::resetPeakMemory();
    for (auto _ : state) {
        benchmark::DoNotOptimize(tree.saveAsFile(path, types()));
        dropFile(state, path);
    }
    peakCounters(state);
    QFile::remove(path);
}

void BM_fwrite_1GiB(benchmark::State &state) {
    QByteArray const path = QFile::encodeName(tempPath("orv_bench_array.raw"));
    XTree tree = floatArray();
    float const *f = tree.get_tree_array(QStringLiteral("samples")).data<float>();
    bench::resetPeakMemory();
    for (auto _ : state) {
        std::FILE *file = std::fopen(path.constData(), "wb");
        benchmark::DoNotOptimize(std::fwrite(f, sizeof(float), FLOATS, file));
        std::fclose(file);
        dropFile(state, QFile::decodeName(path));
    }
    peakCounters(state);
    std::remove(path.constData());
}

void BM_XTreeArray_Load1GiB(benchmark::State &state) {
    QString const path = tempPath("orv_bench_array.tree");
    floatArray().saveAsFile(path, types());
    settle();
    bench::resetPeakMemory();
    for (auto _ : state) {
        XTree tree = XTree::load(path, types());
        benchmark::DoNotOptimize(tree.get_tree_array(QStringLiteral("samples")).data<float>());
    }
    peakCounters(state);
    QFile::remove(path);
}

void BM_fread_1GiB(benchmark::State &state) {
    QByteArray const path = QFile::encodeName(tempPath("orv_bench_array.raw"));
    {
        XTree tree = floatArray();
        std::FILE *file = std::fopen(path.constData(), "wb");
        std::fwrite(tree.get_tree_array(QStringLiteral("samples")).data<float>(), sizeof(float),
                    FLOATS, file);
        std::fclose(file);
    }
    settle();
    bench::resetPeakMemory();
    for (auto _ : state) {
        std::FILE *file = std::fopen(path.constData(), "rb");
        auto *f = new float[FLOATS];
        benchmark::DoNotOptimize(std::fread(f, sizeof(float), FLOATS, file));
        std::fclose(file);
        delete[] f;
    }
    peakCounters(state);
    std::remove(path.constData());
}

} // namespace

BENCHMARK(BM_XTree_SaveToMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QDataStream_SaveVariantMap)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_XTree_LoadFromMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QDataStream_LoadVariantMap)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_XTree_SaveAsFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QDataStream_SaveToFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_XTree_LoadFromFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QDataStream_LoadFromFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_XTreeArray_Save1GiB)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(BM_fwrite_1GiB)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(BM_XTreeArray_Load1GiB)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(BM_fread_1GiB)->Unit(benchmark::kMillisecond)->Iterations(4);

BENCHMARK_MAIN();
