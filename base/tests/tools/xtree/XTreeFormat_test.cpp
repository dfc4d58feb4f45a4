// XTreeFormat_test.cpp: the tree file byte for byte against fixtures built from the
// format's tables, in both array forms, and what reads back.
#include "orv/XDataStream.h"
#include "orv/XTree.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"
#include "tools/xtree/TreeBytes.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <vector>

namespace orv {
namespace {

using test::TreeBytes;

TreeBytes b() { return TreeBytes(); }

// 1, 2, ... n as doubles (big-endian) or floats (host order): vectors and matrices.
TreeBytes doubles(int n) {
    TreeBytes t;
    for (int i = 1; i <= n; ++i)
        t.beDouble(i);
    return t;
}
TreeBytes floats(int n) {
    TreeBytes t;
    for (int i = 1; i <= n; ++i)
        t.leFloat(float(i));
    return t;
}

QString const text = QString::fromUtf8("Grüße") + QChar(0) + QStringLiteral("x");

quint64 handleOf(QString const &s) {
    quint64 h;
    std::memcpy(&h, &s, 8);
    return h;
}

// One simple type: a sample, its value payload, its element in the raw array form and in
// the element form, and the checks that the sample came back.
struct Row {
    QByteArray type, scalar, raw, element;
    std::function<void(XTree &, QString const &, QString const &)> store;
    std::function<bool(XTree const &, QString const &)> scalarBack;
    std::function<bool(XTree &, QString const &)> arrayBack;
};

template <typename T> bool same(T const &a, T const &b) {
    if constexpr (std::is_same_v<T, QString>)
        return a == b;
    else
        return std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <typename T> Row row(T v, TreeBytes scalar, TreeBytes raw, TreeBytes element, T back) {
    Row r{XTypeName<T>::name().toLatin1(), scalar.bytes, raw.bytes, element.bytes, {}, {}, {}};
    r.store = [v](XTree &tree, QString const &scalarKey, QString const &arrayKey) {
        tree.set(scalarKey, v);
        tree.setArray(arrayKey, XTreeArray::fromVector(std::vector<T>{v}));
    };
    r.scalarBack = [back](XTree const &tree, QString const &key) {
        T const dflt{};
        return tree.getMap().count(key) && same(tree.get(key, dflt), back);
    };
    r.arrayBack = [v](XTree &tree, QString const &key) {
        T const *got = tree.get_tree_array(key).template data<T>();
        return got && tree.get_tree_array(key).size() == 1 && same(*got, v);
    };
    return r;
}
template <typename T> Row row(T v, TreeBytes scalar, TreeBytes raw) {
    return row(v, scalar, raw, scalar, v);
}

std::vector<Row> const &rows() {
    static std::vector<Row> const all{
        row(true, b().be(1, 1), b().le(1, 1)),
        // "int8" goes out as 32 bits and comes back as its first byte.
        row<signed char>(-5, b().be(quint32(-5), 4), b().le(0xFB, 1), b().be(quint32(-5), 4), -1),
        row<unsigned char>(200, b().be(200, 1), b().le(200, 1)),
        row<short>(-2, b().be(quint16(-2), 2), b().le(quint16(-2), 2)),
        row<unsigned short>(0x1234, b().be(0x1234, 2), b().le(0x1234, 2)),
        row<int>(-100000, b().be(quint32(-100000), 4), b().le(quint32(-100000), 4)),
        row<unsigned int>(0xDEADBEEF, b().be(0xDEADBEEF, 4), b().le(0xDEADBEEF, 4)),
        row<qint64>(-(qint64(1) << 40), b().be(quint64(-(qint64(1) << 40)), 8),
                    b().le(quint64(-(qint64(1) << 40)), 8)),
        row<quint64>(0x0102030405060708, b().be(0x0102030405060708, 8),
                     b().le(0x0102030405060708, 8)),
        // A float is a double as a value, 4 bytes in a raw array.
        row(1.5f, b().beDouble(1.5), b().leFloat(1.5f)),
        row(-2.25, b().beDouble(-2.25), b().leDouble(-2.25)),
        row(Vector2(1, 2), doubles(2), floats(2)),
        row(Vector3(1, 2, 3), doubles(3), floats(3)),
        row(Vector4(1, 2, 3, 4), doubles(4), floats(4)),
        row(Matrix2(1, 2, 3, 4), doubles(4), floats(4)),
        row(Matrix3(1, 2, 3, 4, 5, 6, 7, 8, 9), doubles(9), floats(9)),
        row(Matrix4(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16), doubles(16),
            floats(16)),
        row(QMargins(1, 2, 3, 4), b().be(1, 4).be(2, 4).be(3, 4).be(4, 4),
            b().le(1, 4).le(2, 4).le(3, 4).le(4, 4)),
        row(QMarginsF(.5, 1.5, 2.5, 3.5),
            b().beDouble(.5).beDouble(1.5).beDouble(2.5).beDouble(3.5),
            b().leDouble(.5).leDouble(1.5).leDouble(2.5).leDouble(3.5)),
        row(QPoint(7, -8), b().be(7, 4).be(quint32(-8), 4), b().le(7, 4).le(quint32(-8), 4)),
        row(QPointF(.25, -.5), b().beDouble(.25).beDouble(-.5), b().leDouble(.25).leDouble(-.5)),
        // Left, top, right, bottom: right and bottom are the last pixel inside.
        row(QRect(1, 2, 3, 4), b().be(1, 4).be(2, 4).be(3, 4).be(5, 4),
            b().le(1, 4).le(2, 4).le(3, 4).le(5, 4)),
        row(QRectF(1, 2, 3, 4), doubles(4), b().leDouble(1).leDouble(2).leDouble(3).leDouble(4)),
        row(QSize(5, 6), b().be(5, 4).be(6, 4), b().le(5, 4).le(6, 4)),
        row(QSizeF(1.5, 2.5), b().beDouble(1.5).beDouble(2.5), b().leDouble(1.5).leDouble(2.5)),
        // A value is a long string and stops at its 0; a raw element is the string's handle.
        row(text, b().longString(text.toUtf8()), b().le(handleOf(text), 8), b().qtString(text),
            QString::fromUtf8("Grüße")),
    };
    return all;
}

QString keyOf(char const *prefix, size_t i) { return QString::asprintf("%s%02d", prefix, int(i)); }
QString const int8Key = QStringLiteral("zint8"); // last: its value reads back out of step

// Element by element an "int8" array puts its reader out of step too: readable trees
// leave it out.
XTree everyType(bool readable = false) {
    XTree tree;
    for (size_t i = 0; i < rows().size(); ++i)
        rows()[i].store(tree, rows()[i].type == "int8" ? int8Key : keyOf("s", i), keyOf("a", i));
    if (readable && XDataStream::atomicConsiderByteOrder)
        tree.erase(keyOf("a", 1));
    tree.addTree(QStringLiteral("t")).set(QStringLiteral("x"), 7);
    XTreeArray trees = XTreeArray::create<XTree>(2);
    trees.treeAt(1)->set(QStringLiteral("y"), 0.5);
    tree.setArray(QStringLiteral("trees"), std::move(trees));
    EXPECT_TRUE(tree.setLink(QStringLiteral("link"), QStringLiteral("/t")));
    XTreeArray links = XTreeArray::create<XLink>(2);
    links.linkAt(0)->setObject(tree.pointerFromPath(QStringLiteral("/t")));
    links.linkAt(1)->setObject(tree.pointerFromPath(QStringLiteral("/trees/1")));
    tree.setArray(QStringLiteral("links"), std::move(links));
    return tree;
}

QByteArray expectedFile(bool byElement) {
    TreeBytes f;
    f.header().count(int(2 * rows().size() + 4));
    for (size_t i = 0; i < rows().size(); ++i)
        f.entry(keyOf("a", i).toLatin1(), 3, "XTreeArray")
            .arrayHead(QString::fromLatin1(rows()[i].type), 1)
            .raw(byElement ? rows()[i].element : rows()[i].raw);
    f.entry("link", 4, "XLink").longString("/t");
    f.entry("links", 3, "XTreeArray").arrayHead(QStringLiteral("XLink"), 2);
    f.longString("/t").longString("/trees/1");
    for (size_t i = 0; i < rows().size(); ++i)
        if (rows()[i].type != "int8")
            f.entry(keyOf("s", i).toLatin1(), 1, rows()[i].type).raw(rows()[i].scalar);
    f.entry("t", 2, "XTree").count(1).entry("x", 1, "int32").be(7, 4);
    f.entry("trees", 3, "XTreeArray").arrayHead(QStringLiteral("XTree"), 2);
    f.count(0).count(1).entry("y", 1, "double").beDouble(0.5);
    f.entry(int8Key.toLatin1(), 1, "int8").be(quint32(-5), 4);
    return f.bytes;
}

class ByteOrderForm : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override { XDataStream::atomicConsiderByteOrder = GetParam(); }
    void TearDown() override { XDataStream::atomicConsiderByteOrder = false; }
};

TEST_P(ByteOrderForm, FileOfEveryTypeIsTheFormatByteForByte) {
    QTemporaryDir dir;
    QString const path = dir.filePath(QStringLiteral("all.tree"));
    XTypeSupporter const &types = XTypeSupporter::basicTypes();
    XTree tree = everyType();
    ASSERT_TRUE(tree.saveAsFile(path, types));
    EXPECT_EQ(tree.getFilename(), path);
    QByteArray const expected = expectedFile(GetParam());
    EXPECT_EQ(test::readFile(path), expected);
    EXPECT_EQ(tree.calc_mem_size(types), quint64(expected.size()));
    XMem const mem = tree.createMem(types);
    EXPECT_EQ(QByteArray(mem.mem(), int(mem.size())), expected);
    EXPECT_EQ(QByteArray(tree.createByteArray(types)), expected);
}

TEST_P(ByteOrderForm, EveryTypeReadsBack) {
    QTemporaryDir dir;
    QString const path = dir.filePath(QStringLiteral("all.tree"));
    XTypeSupporter const &types = XTypeSupporter::basicTypes();
    ASSERT_TRUE(everyType(true).saveAsFile(path, types));
    XTree back = XTree::load(path, types);
    EXPECT_EQ(back.getFilename(), path);
    for (size_t i = 0; i < rows().size(); ++i) {
        Row const &r = rows()[i];
        if (back.containsKey(keyOf("a", i))) {
            EXPECT_TRUE(r.arrayBack(back, keyOf("a", i))) << r.type.constData();
        }
        EXPECT_TRUE(r.scalarBack(back, r.type == "int8" ? int8Key : keyOf("s", i)))
            << r.type.constData();
    }
    EXPECT_EQ(back.getTree(QStringLiteral("t"))->get(QStringLiteral("x"), 0), 7);
    XTreeArray &trees = back.get_tree_array(QStringLiteral("trees"));
    ASSERT_EQ(trees.size(), 2u);
    EXPECT_EQ(trees.treeAt(1)->get(QStringLiteral("y"), 0.0), 0.5);
    // Links point into the tree that was read.
    XLink *link = back.getPointer<XLink>(QStringLiteral("link"));
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->object(), back.getTree(QStringLiteral("t")));
    XTreeArray &links = back.get_tree_array(QStringLiteral("links"));
    EXPECT_EQ(links.linkAt(1)->object(), trees.treeAt(1));
    EXPECT_EQ(trees.treeAt(1)->path(), QStringLiteral("/trees/1"));
}

INSTANTIATE_TEST_SUITE_P(XTreeFormat, ByteOrderForm, ::testing::Values(false, true),
                         [](auto const &info) { return info.param ? "ByElement" : "RawBlock"; });

TEST(XTreeFormat, SmallFilesAsTheFormatShowsThem) {
    XTypeSupporter const &types = XTypeSupporter::basicTypes();
    XTree one;
    one.set(QStringLiteral("a"), 7);
    EXPECT_EQ(QByteArray(one.createByteArray(types)),
              QByteArray::fromHex("0000000000000005") + "XTree" +
                  QByteArray::fromHex("00000001 0000000000000001") + "a" +
                  QByteArray::fromHex("01 05") + "int32" + QByteArray::fromHex("00000007"));

    XNullDevice counter(false);
    EXPECT_TRUE(XTree().writeToDevice(counter, types));
    EXPECT_EQ(counter.ramInfo().size, 8u + 5u + 4u);

    XTree floats;
    floats.set(QStringLiteral("f"), 1.0f);
    EXPECT_TRUE(QByteArray(floats.createByteArray(types))
                    .endsWith(QByteArray::fromHex("3FF0000000000000")));

    // Raw elements in host order, behind the element type in UTF-16.
    XTree shorts;
    shorts.setArray(QStringLiteral("u"),
                    XTreeArray::fromVector(std::vector<unsigned short>{1, 2, 0x0304}));
    EXPECT_TRUE(
        QByteArray(shorts.createByteArray(types))
            .endsWith(
                b().arrayHead(QStringLiteral("uint16"), 3).le(1, 2).le(2, 2).le(0x0304, 2).bytes));
}

TEST(XTreeFormat, LongTypeNamesAreCutTo254Bytes) {
    XByteArray bytes;
    std::vector<QString> const lines = test::linesLoggedBy([&] {
        XDataStream out(&bytes, QIODevice::WriteOnly, XTypeSupporter::basicTypes());
        out.write_short_UTF8_String(QString(150, QChar(0x00E9))); // 300 bytes of UTF-8
    });
    EXPECT_EQ(bytes.size(), 255);
    EXPECT_EQ(quint8(bytes[0]), 0xFE);
    EXPECT_EQ(lines,
              std::vector<QString>{QStringLiteral(
                  "XDataStream::write_short_UTF8_String, str.length() > 254, 150 > 254, cut now")});
}

// The stream keeps what it made of each type name: values of many names in turn, more
// names than it keeps, and names that are cut must still get their own bytes each time,
// and a cut one its warning each time.
TEST(XTreeFormat, TypeNamesOfEveryValueAsWritten) {
    QString const euro(85, QChar(0x20AC)); // 255 bytes of UTF-8
    QString const lone = QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b");
    struct Name {
        QString type;
        QByteArray written;
        bool cut;
    };
    std::vector<Name> names = {
        {QString::fromUtf8("Größe"),
         "Gr\xC3\xB6\xC3\x9F"
         "e",
         false},
        {QString(254, QLatin1Char('n')), QByteArray(254, 'n'), false},
        {QString(255, QLatin1Char('m')), QByteArray(254, 'm'), true},
        {euro, euro.toUtf8().left(254), true},
        {lone, "a?b", false},
        {QString(), "", false},
    };
    for (int i = 0; names.size() < 24; ++i)
        names.push_back({QStringLiteral("t%1").arg(i), "t" + QByteArray::number(i), false});

    XTree tree;
    TreeBytes expected;
    expected.header().count(2 * 2 * int(names.size()));
    int cuts = 0;
    // Keys in map order: the names come round twice, each name twice in a row, the second
    // time as a copy of its own that shares no data with the first.
    for (int round = 0; round < 2; ++round)
        for (size_t i = 0; i < names.size(); ++i)
            for (int copy = 0; copy < 2; ++copy) {
                // Keys of every kind too: ASCII, not ASCII, longer than 256 characters.
                QString const tail = i % 3 == 0   ? QString()
                                     : i % 3 == 1 ? QString::fromUtf8("\xC3\xBC")
                                                  : QString(300, QLatin1Char('k'));
                QString const key =
                    QStringLiteral("%1-%2-%3").arg(round).arg(100 + i).arg(copy) + tail;
                QString const &type = names[i].type;
                tree.set(key, round);
                tree.getVal(key).setType(copy ? QString(type.constData(), type.size()) : type);
                expected.entry(key.toUtf8(), XVal::SIMPLE, names[i].written);
                cuts += names[i].cut;
            }
    QByteArray written;
    std::vector<QString> const lines = test::linesLoggedBy(
        [&] { written = tree.createByteArray(XTypeSupporter::basicTypes()); }, WARN);
    EXPECT_EQ(written, expected.bytes);
    EXPECT_EQ(lines.size(), size_t(cuts));
}

TEST(XTreeFormat, LinkWithoutTargetWritesNoPayload) {
    XTree tree;
    tree.addTree(QStringLiteral("t"));
    ASSERT_TRUE(tree.setLink(QStringLiteral("l"), QStringLiteral("/t")));
    tree.getPointer<XLink>(QStringLiteral("l"))->setObject(nullptr);
    std::vector<QString> lines;
    QByteArray written;
    lines =
        test::linesLoggedBy([&] { written = tree.createByteArray(XTypeSupporter::basicTypes()); });
    EXPECT_EQ(written,
              b().header().count(2).entry("l", 4, "XLink").entry("t", 2, "XTree").count(0).bytes);
    EXPECT_EQ(lines,
              std::vector<QString>{QStringLiteral("XTypeSupporter::writeVal, >>> LINK problem")});
}

TEST(XTreeFormat, RepeatedKeyKeepsTheLastValue) {
    TreeBytes f;
    f.header().count(2).entry("k", 1, "int32").be(1, 4).entry("k", 1, "int32").be(2, 4);
    XMem mem(f.bytes);
    XTree tree = XTree::load(mem, XTypeSupporter::basicTypes());
    EXPECT_EQ(tree.countChildren(), 1u);
    EXPECT_EQ(tree.get(QStringLiteral("k"), 0), 2);
}

} // namespace
} // namespace orv
