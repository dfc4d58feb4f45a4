// XTreeDamaged_test.cpp: damaged and hostile tree files: truncation anywhere, bogus
// counts and lengths, unknown types and categories. Each gives its log line and a false
// result, allocates nothing near the claimed size, and leaves what the body held so far.
#include "orv/XDataStream.h"
#include "orv/XMemoryWrapper.h"
#include "orv/XTree.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "tools/xtree/TreeBytes.h"

#include <QtCore/QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>

// The largest single request to malloc while armed. Sanitizers own malloc, so the watch
// exists in plain builds only.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ORV_WATCH_MALLOC 0
#else
#define ORV_WATCH_MALLOC 1
namespace {
std::atomic<bool> watching{false};
std::atomic<size_t> largest{0};
void note(size_t n) {
    if (!watching.load(std::memory_order_relaxed))
        return;
    size_t seen = largest.load();
    while (n > seen && !largest.compare_exchange_weak(seen, n)) {
    }
}
} // namespace
extern "C" {
void *__libc_malloc(size_t);
void *__libc_calloc(size_t, size_t);
void *__libc_realloc(void *, size_t);
void *malloc(size_t n) {
    note(n);
    return __libc_malloc(n);
}
void *calloc(size_t n, size_t size) {
    note(n * size);
    return __libc_calloc(n, size);
}
void *realloc(void *p, size_t n) {
    note(n);
    return __libc_realloc(p, n);
}
}
#endif

namespace orv {
namespace {

using test::TreeBytes;

struct Quick {
    Quick() { XDataStream::setFailurePauseMs(0); }
    ~Quick() { XDataStream::setFailurePauseMs(1000); }
};

// readFromDevice's result on the bytes, the lines it logged, the largest allocation.
struct Load {
    bool ok = true;
    std::vector<QString> lines;
    size_t largestAllocation = 0;
};

Load load(QByteArray bytes, XTree &tree) {
    Load result;
    result.lines = test::linesLoggedBy([&] {
        XMemoryWrapper device(bytes.data(), quint64(bytes.size()), QIODevice::ReadOnly);
#if ORV_WATCH_MALLOC
        largest = 0;
        watching = true;
#endif
        result.ok = tree.readFromDevice(device, XTypeSupporter::basicTypes());
#if ORV_WATCH_MALLOC
        watching = false;
        result.largestAllocation = largest;
#endif
    });
    return result;
}

bool hasLine(std::vector<QString> const &lines, QString const &start) {
    return std::any_of(lines.begin(), lines.end(),
                       [&](QString const &l) { return l.startsWith(start); });
}

TreeBytes file() { return std::move(TreeBytes().header()); }
qint64 const huge = qint64(1) << 62;

TEST(XTreeDamaged, HostileFieldsFailWithTheirLineAndAllocateNothingBig) {
    Quick quick;
    TreeBytes deep = file();
    for (int i = 0; i < 5000; ++i)
        deep.count(1).entry("t", 2, "XTree");
    struct Row {
        char const *name;
        QByteArray bytes;
        char const *line;
        size_t entries;
    } const rows[] = {
        {"entry count 2^31-1", file().count(0x7FFFFFFF).entry("a", 1, "int32").be(7, 4).bytes,
         "XDataStream::canRead, 2147483647 bytes wanted", 0},
        {"negative entry count", file().count(-1).bytes, "XTree::readFromStream, entry count:-1",
         0},
        {"key length 2^62", file().count(1).be(huge, 8).raw("a").bytes,
         "XDataStream::readString, length:4611686018427387904", 1},
        {"negative key length", file().count(1).be(quint64(-5), 8).bytes,
         "XDataStream::readString, length:-5", 1},
        {"array count 2^62",
         file().count(1).entry("a", 3, "XTreeArray").arrayHead("int32", huge).bytes,
         "XDataStream::readVal, type problems <XTreeArray>", 1},
        {"negative array count",
         file().count(1).entry("a", 3, "XTreeArray").arrayHead("double", -1).bytes,
         "XDataStream::readVal, type problems <XTreeArray>", 1},
        {"tree array count 2^62",
         file().count(1).entry("a", 3, "XTreeArray").arrayHead("XTree", huge).bytes,
         "XDataStream::readVal, type problems <XTreeArray>", 1},
        {"link array count 2^62",
         file().count(1).entry("a", 3, "XTreeArray").arrayHead("XLink", huge).bytes,
         "XDataStream::readVal, type problems <XTreeArray>", 1},
        {"element type length 2^31",
         file().count(1).entry("a", 3, "XTreeArray").be(0x7FFFFFFE, 4).bytes,
         "XDataStream::canRead, 2147483646 bytes wanted", 1},
        {"unknown type", file().count(1).entry("a", 1, "nope").bytes,
         "XDataStream::readVal, type problems <nope>, typeSupporter@Standard", 1},
        {"category 9", file().count(1).entry("a", 9, "int32").be(7, 4).bytes,
         "XDataStream::readVal, type problems <int32>", 1},
        {"tree category on a number", file().count(1).entry("a", 2, "int32").be(7, 4).bytes,
         "XDataStream::readVal, type problems <int32>", 1},
        {"array category on a number", file().count(1).entry("a", 3, "double").be(7, 8).bytes,
         "XDataStream::readVal, type problems <double>", 1},
        {"type name of 255 bytes", file().count(1).entry("a", 1, QByteArray(255, 'n')).bytes,
         "XDataStream::readVal, type problems <nnnnn", 1},
        {"header of another class", TreeBytes().longString("MyTree").count(0).bytes,
         "XTree::readFromDevice, TYPE warning, we are <XTree> but should be <MyTree>", 0},
        {"header length 2^62", TreeBytes().be(huge, 8).bytes, "XTree::readFromDevice, TYPE warning",
         0},
        {"trees nested 5000 deep", deep.count(0).bytes,
         "XTree::readFromStream, trees nested deeper than 1000 levels", 1},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.name);
        XTree tree;
        tree.set(QStringLiteral("old"), 1);
        Load const result = load(row.bytes, tree);
        EXPECT_FALSE(result.ok);
        EXPECT_TRUE(hasLine(result.lines, QString::fromLatin1(row.line)))
            << (result.lines.empty() ? std::string() : result.lines.front().toStdString());
        EXPECT_EQ(tree.countChildren(), row.entries);
        EXPECT_LT(result.largestAllocation, size_t(1) << 20);
    }
#if ORV_WATCH_MALLOC
    // The watch does see a sound array of that size.
    XTree sound;
    TreeBytes const array = file().count(1).entry("a", 3, "XTreeArray").arrayHead("int32", 1 << 20);
    EXPECT_GE(load(array.bytes + QByteArray(4 << 20, 0), sound).largestAllocation, size_t(4) << 20);
#endif
}

TEST(XTreeDamaged, OnlyTheFirstFailureOfAStreamPauses) {
    TreeBytes f = file().count(3);
    for (char const *key : {"a", "b", "c"})
        f.entry(key, 1, "nope"); // in step: an unknown type has no payload to skip
    XTree tree;
    QElapsedTimer watch;
    watch.start();
    Load const result = load(f.bytes, tree);
    qint64 const ms = watch.elapsed();
    EXPECT_GE(ms, 1000);
    EXPECT_LT(ms, 2000);
    EXPECT_EQ(std::count_if(result.lines.begin(), result.lines.end(),
                            [](QString const &l) { return l.contains("type problems <nope>"); }),
              3);
    // Each failed value is kept as an empty slot under its key.
    EXPECT_EQ(tree.countChildren(), 3u);
    EXPECT_EQ(tree.getVal(QStringLiteral("b")).getPointer(), nullptr);
}

// A body cut between two entries keeps the whole ones, then a failed value under "";
// cut right behind the count, it claims more entries than bytes and reads none.
TEST(XTreeDamaged, TruncatedBodyKeepsTheEntriesReadSoFar) {
    Quick quick;
    TreeBytes f = file().count(3);
    int const afterCount = f.bytes.size();
    f.entry("a", 1, "int32").be(7, 4);
    int const afterA = f.bytes.size();
    f.entry("b", 1, "QString").longString("text");
    int const afterB = f.bytes.size();
    f.entry("c", 2, "XTree").count(1).entry("d", 1, "double").beDouble(0.5);
    struct Row {
        int size;
        QStringList keys;
    } const rows[] = {{afterCount, {}}, {afterA, {"", "a"}}, {afterB, {"", "a", "b"}}};
    for (Row const &row : rows) {
        XTree tree;
        EXPECT_FALSE(load(f.bytes.left(row.size), tree).ok);
        QStringList keys;
        for (auto const &entry : tree.getMap())
            keys << entry.first;
        EXPECT_EQ(keys, row.keys);
        EXPECT_EQ(tree.get(QStringLiteral("a"), 0), row.size > afterCount ? 7 : 0);
    }
    XTree whole;
    EXPECT_TRUE(load(f.bytes, whole).ok);
    EXPECT_EQ(whole.getTree(QStringLiteral("c"))->get(QStringLiteral("d"), 0.0), 0.5);
}

// Every prefix of a file with every kind of field fails cleanly, and what it leaves is
// the original's keys in order (plus the failed one).
TEST(XTreeDamaged, EveryPrefixOfAFileFailsCleanly) {
    Quick quick;
    XTree source;
    source.set(QStringLiteral("n"), qint64(-3));
    source.setString(QStringLiteral("s"), QString::fromUtf8("Grüße"));
    source.addTree(QStringLiteral("t")).set(QStringLiteral("v"), Vector3(1, 2, 3));
    source.setArray(QStringLiteral("u"), XTreeArray::fromVector(std::vector<short>{1, 2, 3}));
    source.setArray(QStringLiteral("w"), XTreeArray::create<XTree>(2));
    ASSERT_TRUE(source.setLink(QStringLiteral("l"), QStringLiteral("/t")));
    source.setArray(QStringLiteral("x"), XTreeArray::create<XLink>(1));
    QByteArray const bytes = source.createByteArray(XTypeSupporter::basicTypes());
    QStringList const all{"", "l", "n", "s", "t", "u", "w", "x"};
    for (int n = 0; n < bytes.size(); ++n) {
        XTree tree;
        Load const result = load(bytes.left(n), tree);
        ASSERT_FALSE(result.ok) << n;
        ASSERT_FALSE(result.lines.empty()) << n;
        for (auto const &entry : tree.getMap())
            ASSERT_TRUE(all.contains(entry.first)) << n;
    }
}

} // namespace
} // namespace orv
