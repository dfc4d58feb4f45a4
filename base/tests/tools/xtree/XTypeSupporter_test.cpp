// XTypeSupporter_test.cpp: the type registry, value slots and their moves, the quirks
// of key access, and the text forms of values, arrays and trees.
#include "orv/Log.h"
#include "orv/XStringStream.h"
#include "orv/XTree.h"
#include "support/ConsoleCapture.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

namespace orv {
namespace {

XTypeSupporter const &types = XTypeSupporter::basicTypes();

TEST(XTypeSupporter, RegistryKnowsTheBuiltInTypesOnce) {
    XTypeSet set;
    EXPECT_FALSE(set.contains(QStringLiteral("XLink")));
    EXPECT_TRUE(XTypeSet::isTypeLink(QStringLiteral("XLink")));
    EXPECT_TRUE(set.isTypeSimple(QStringLiteral("bool")));
    EXPECT_TRUE(set.isTypeTree(QStringLiteral("XTree")));
    EXPECT_TRUE(set.isTypeArray(QStringLiteral("XTreeArray")));
    XTypeSet copy(set);
    EXPECT_TRUE(copy._addType(QStringLiteral("Mine"), XTypeSet::SET_TREE));
    EXPECT_FALSE(set.isTypeTree(QStringLiteral("Mine")));
    EXPECT_EQ(
        test::coutWithoutTrailers([&] { EXPECT_FALSE(set._addType(QStringLiteral("int32"), 0)); }),
        "TypeSet::_addType,category:0, already contains 'int32'\n"
        " TypeSet::_addType,category:0, already contains 'int32'\n"
        "  TypeSet::_addType,category:0, already contains 'int32'\n");

    std::vector<QString> const lines = test::linesLoggedBy([] { XTypeSupporter second; });
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(XFunctionMapper::instance().size(), 26u);
    EXPECT_EQ(test::linesLoggedBy([] { XFunctionMapper::instance().addFunction<int>(); }),
              std::vector<QString>{QStringLiteral(
                  "XFunctionMapper::addFunction, function <int32> already present")});
}

TEST(XTypeSupporter, MovesTakeTheValueAndDestroyTheOldOnce) {
    XVal source;
    source.setValMove(QStringLiteral("text"));
    XVal target(std::move(source));
    EXPECT_EQ(source.getPointer(), nullptr);
    EXPECT_EQ(source.getType(), QStringLiteral("QString"));
    EXPECT_EQ(*target.value<QString>(), QStringLiteral("text"));
    EXPECT_EQ(XVal().toString(), QStringLiteral("pVal == nullptr"));

    XVal holder;
    holder.setValMove(7);
    holder.setCategory(XVal::SIMPLE);
    XDestructor::flagDebug = true;
    std::vector<QString> const lines =
        test::linesLoggedBy([&] { holder = std::move(target); }, TEST);
    XDestructor::flagDebug = false;
    EXPECT_EQ(lines, std::vector<QString>{QStringLiteral("...destroy Object of type 'int32'")});
    EXPECT_EQ(holder.toString(), QStringLiteral("QString, text"));

    // A value may come from inside the one it replaces.
    XTree root;
    root.addTree(QStringLiteral("a")).addTree(QStringLiteral("b")).set(QStringLiteral("x"), 3);
    XVal &slotA = root.getVal(QStringLiteral("a"));
    slotA = std::move(root.getTree(QStringLiteral("a"))->getVal(QStringLiteral("b")));
    root.set_parent_recursive();
    EXPECT_EQ(root.getTree(QStringLiteral("a"))->get(QStringLiteral("x"), 0), 3);
}

TEST(XTypeSupporter, KeyAccessQuirksStay) {
    XTree tree;
    std::vector<QString> lines = test::linesLoggedBy([&] { tree.getVal(QStringLiteral("x")); });
    EXPECT_EQ(lines, (std::vector<QString>{
                         QStringLiteral("XTree::get, key 'x' ???"),
                         QStringLiteral("XTree::getVal, key 'x' not found - attention !")}));
    XTree const &constTree = tree;
    lines = test::linesLoggedBy([&] { constTree.getVal(QStringLiteral("y")); });
    EXPECT_EQ(lines.size(), 1u);
    EXPECT_EQ(tree.countChildren(), 2u); // both inserted

    tree.set(QStringLiteral("flag"), true);
    EXPECT_TRUE(tree.isFlag(QStringLiteral("flag"), false));
    XObject::set_debug(true);
    EXPECT_FALSE(tree.isFlag(QStringLiteral("flag"), false)); // the debug switch gives dflt
    XObject::set_debug(false);
    EXPECT_TRUE(tree.isFlag(QStringLiteral("x"), true)); // an empty slot is no bool
    EXPECT_EQ(tree.get(QStringLiteral("flag"), 5), 5);   // another type gives dflt
    lines = test::linesLoggedBy([&] { EXPECT_FALSE(tree.erase(QStringLiteral("zz"))); });
    EXPECT_EQ(lines, std::vector<QString>{QStringLiteral("XTree::erase, key <zz> not found")});
    lines = test::linesLoggedBy([&] { EXPECT_EQ(tree.getTree(QStringLiteral("flag")), nullptr); });
    EXPECT_EQ(lines.size(), 1u); // a bool is never taken for a tree

    tree.set_XByteArray(QStringLiteral("bytes"), XByteArray("ab\0c", 4));
    EXPECT_EQ(QByteArray(tree.get_XByteArray(QStringLiteral("bytes"))), QByteArray("ab\0c", 4));
    EXPECT_EQ(tree.get_tree_array(QStringLiteral("bytes")).type(), QStringLiteral("int8"));
}

TEST(XTypeSupporter, TextFormsOfValuesArraysAndTrees) {
    struct Row {
        XTreeArray array;
        char const *text;
    };
    Row rows[] = {
        {XTreeArray::fromVector(std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}),
         "1 2 3 4 5 ... 7 8 9 10 11 "},
        {XTreeArray::fromVector(std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}),
         "1 2 3 4 5 6 7 8 9 10 "},
        {XTreeArray::fromVector(std::vector<bool>{true, false}), "true false "},
        {XTreeArray::fromVector(std::vector<unsigned char>{65}), "65 "},
        {XTreeArray::fromVector(std::vector<float>{0.5f}), "0.500000 "},
        {XTreeArray::fromVector(std::vector<signed char>{1, 2}), "[2] = HEX{01 02} "},
        {XTreeArray::fromVector(std::vector<QPoint>{QPoint(1, 2)}), ""},
    };
    for (Row const &row : rows)
        EXPECT_EQ(types.toString(row.array), QString::fromLatin1(row.text));

    XTree tree;
    tree.set(QStringLiteral("c"), static_cast<signed char>('A'));
    tree.set(QStringLiteral("r"), QRect(1, 2, 3, 4));
    tree.addTree(QStringLiteral("t")).set(QStringLiteral("v"), Vector2(1, 2));
    tree.setArray(QStringLiteral("u"), XTreeArray::fromVector(std::vector<short>{7}));
    XTreeArray trees = XTreeArray::create<XTree>(1);
    trees.treeAt(0)->set(QStringLiteral("k"), QStringLiteral("s"));
    tree.setArray(QStringLiteral("w"), std::move(trees));
    EXPECT_EQ(tree.toString(types),
              QStringLiteral("XTree(SubTrees:1), {c:int8, A}, {r:QRect, 1,2,3,4}"));
    QString text;
    XStringStream stream(&text);
    tree.toStream(stream, types, 2, QStringLiteral("doc"), true, 3);
    stream.flush();
    EXPECT_EQ(text, QStringLiteral("  doc [003] -> XTree{c:int8, A}, {r:QRect, 1,2,3,4}\n"
                                   "      t + XTree{v:Vector2, ") +
                        Vector2(1, 2).toString() +
                        QStringLiteral("}\n"
                                       "      u: int16 [1], 7 \n"
                                       "      w: array of XTree [1]\n"
                                       "          [000] + XTree{k:QString, s}\n"));
}

} // namespace
} // namespace orv
