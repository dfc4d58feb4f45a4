// XTreePath_test.cpp: the path language, parents after moves, and links that survive
// saving, loading and copying.
#include "orv/XMemoryWrapper.h"
#include "orv/XTree.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

namespace orv {
namespace {

XTypeSupporter const &types = XTypeSupporter::basicTypes();

// root: a{b{}}, arr[3 trees], nums[int32 x2], n = 1
XTree sample() {
    XTree root;
    root.addTree(QStringLiteral("a")).addTree(QStringLiteral("b"));
    root.setArray(QStringLiteral("arr"), XTreeArray::create<XTree>(3));
    root.setArray(QStringLiteral("nums"), XTreeArray::fromVector(std::vector<int>{4, 5}));
    root.set(QStringLiteral("n"), 1);
    return root;
}

TEST(XTreePath, PathsWalkKeysParentsAndIndices) {
    XTree root = sample();
    XTree *a = root.getTree(QStringLiteral("a"));
    XTree *b = a->getTree(QStringLiteral("b"));
    XTreeArray &arr = root.get_tree_array(QStringLiteral("arr"));
    struct Row {
        XTree *from;
        char const *path;
        XObject *expected;
        char const *line; // or ""
    } const rows[] = {
        {b, "", b, ""},
        {b, "/", &root, ""},
        {&root, "..", nullptr, ""},
        {b, "..", a, ""},
        {b, "../..", &root, ""},
        {b, "/a/", a, ""},
        {&root, "a/b", b, ""},
        {b, "/arr/2", arr.treeAt(2), ""},
        {&root, "/arr/9", nullptr, "XTreeArray::getPointer, index:9 out of range 0...2"},
        {&root, "/arr/x", nullptr, "XTreeArray::getPointer, index:'x' must be a number 0...2"},
        {&root, "/nums/1", nullptr, "XTreeArray::objectByKey, wrong type <int32>"},
        {&root, "/n", nullptr,
         "XTree::getPointer, 3-WRONG TYPE, key:'n', type:'int32', want type:'XObject',"},
        {&root, "/nope/b", nullptr, "XTree::objectByKey, key:'nope',not found !"},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.path);
        XObject *got = nullptr;
        std::vector<QString> const lines = test::linesLoggedBy(
            [&] { got = row.from->pointerFromPath(QString::fromLatin1(row.path)); });
        EXPECT_EQ(got, row.expected);
        if (*row.line) {
            EXPECT_EQ(lines, std::vector<QString>{QString::fromLatin1(row.line)});
        }
    }
    EXPECT_EQ(b->path(), QStringLiteral("/a/b"));
    EXPECT_EQ(arr.treeAt(2)->path(), QStringLiteral("/arr/2"));
    EXPECT_EQ(b->level(), 2u);
    EXPECT_EQ(XObject::rootObject(nullptr), nullptr);
}

TEST(XTreePath, MovesKeepParentsRightAndSwapEntries) {
    XTree target;
    target.set(QStringLiteral("old"), 1);
    XTree source = sample();
    target = std::move(source);
    // The source now holds the target's old entries.
    EXPECT_TRUE(source.containsKey(QStringLiteral("old")));
    XTree *b = target.getTree(QStringLiteral("a"))->getTree(QStringLiteral("b"));
    EXPECT_EQ(b->rootObject(), &target);
    XTree moved(std::move(target));
    EXPECT_EQ(b->rootObject(), &moved);
    EXPECT_EQ(moved.get_tree_array(QStringLiteral("arr")).treeAt(1)->path(),
              QStringLiteral("/arr/1"));
    std::vector<QString> const lines = test::linesLoggedBy([&] { EXPECT_TRUE(b->hasSameRoot(b)); });
    EXPECT_EQ(lines, std::vector<QString>{QStringLiteral("XObject::hasSameRoot, SAME object")});
}

TEST(XTreePath, LinksSurviveSaveLoadAndCopy) {
    QTemporaryDir dir;
    QString const path = dir.filePath(QStringLiteral("links.tree"));
    XTree root = sample();
    ASSERT_TRUE(root.setLink(QStringLiteral("toB"), QStringLiteral("/a/b")));
    XTreeArray links = XTreeArray::create<XLink>(2);
    links.linkAt(0)->setObject(root.pointerFromPath(QStringLiteral("/arr/1")));
    root.setArray(QStringLiteral("links"), std::move(links));
    // A direct write keeps the link array's URL fields as they stand (still empty).
    XMem written = root.createMem(types);
    XTree direct = XTree::load(written, types);
    EXPECT_EQ(direct.get_tree_array(QStringLiteral("links")).linkAt(0)->url(), QString());
    ASSERT_TRUE(root.saveAsFile(path, types));

    auto const resolvedAsBefore = [](XTree &tree) {
        XLink *link = tree.getPointer<XLink>(QStringLiteral("toB"));
        ASSERT_NE(link, nullptr);
        EXPECT_EQ(link->object(), tree.pointerFromPath(QStringLiteral("/a/b")));
        XTreeArray &array = tree.get_tree_array(QStringLiteral("links"));
        EXPECT_EQ(array.linkAt(0)->object(), tree.pointerFromPath(QStringLiteral("/arr/1")));
        EXPECT_EQ(array.linkAt(1)->object(), nullptr);
        EXPECT_EQ(array.linkAt(1)->parent(), &array);
    };
    XTree loaded = XTree::load(path, types);
    resolvedAsBefore(loaded);
    XTree copied = root.create_copy(types);
    resolvedAsBefore(copied);
}

TEST(XTreePath, LinksToMissingPlacesStayUnresolvedWithAWarning) {
    XTree root = sample();
    std::vector<QString> lines = test::linesLoggedBy(
        [&] { EXPECT_FALSE(root.setLink(QStringLiteral("l"), QStringLiteral("/a/zz"))); });
    EXPECT_EQ(lines.back(), QStringLiteral("XTree::setLink, path '/a/zz' not found"));
    EXPECT_FALSE(root.containsKey(QStringLiteral("l")));

    // A link to a root has the empty path, which cannot be resolved again.
    XLink toRoot(&root);
    EXPECT_TRUE(toRoot.pointer_to_URL());
    EXPECT_EQ(toRoot.url(), QString());
    lines = test::linesLoggedBy([&] { EXPECT_FALSE(toRoot.URL_to_pointer(&root)); });
    EXPECT_EQ(lines, std::vector<QString>{QStringLiteral("XLink::URL_to_pointer, url == \"\" ")});

    XLink gone(QStringLiteral("/a/zz"));
    lines = test::linesLoggedBy(
        [&] { EXPECT_FALSE(gone.URL_to_pointer(root.getTree(QStringLiteral("a")))); });
    EXPECT_EQ(lines.back(), QStringLiteral("XLink::URL_to_pointer, url '/a/zz' not found"));
    EXPECT_FALSE(gone.isValid());
}

class MyTree : public XTree {
public:
    QString getTypeAsString() const override { return QStringLiteral("MyTree"); }
};

TEST(XTreePath, SubclassFilesLoadOnlyIntoTheirKind) {
    MyTree mine;
    mine.set(QStringLiteral("x"), 2.5);
    XMem mem = mine.createMem(types);
    EXPECT_TRUE(QByteArray(mem.mem(), int(mem.size()))
                    .startsWith(QByteArray("\0\0\0\0\0\0\0\6MyTree", 14)));
    XTree plain;
    plain.set(QStringLiteral("kept?"), 1);
    XMemoryWrapper device(mem, QIODevice::ReadOnly);
    std::vector<QString> const lines =
        test::linesLoggedBy([&] { plain.readFromDevice(device, types); });
    EXPECT_TRUE(plain.isEmpty());
    EXPECT_EQ(lines,
              std::vector<QString>{QStringLiteral(
                  "XTree::readFromDevice, TYPE warning, we are <XTree> but should be <MyTree>")});
    MyTree again;
    XMemoryWrapper device2(mem, QIODevice::ReadOnly);
    EXPECT_TRUE(again.readFromDevice(device2, types));
    EXPECT_EQ(again.get(QStringLiteral("x"), 0.0), 2.5);
    EXPECT_EQ(again.toString(types), QStringLiteral("MyTree(XTree), {x:double, 2.500000}"));
}

} // namespace
} // namespace orv
