// XNode_test.cpp: the uniqueness rule and where each structural operation refuses,
// positions and walks, IDs, digests and copies.
#include "orv/XNode.h"

#include "XmlShape.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using orv::XNode;
using orv::test::linesLoggedBy;
using orv::test::parsed;
using orv::test::shape;

namespace {

std::unique_ptr<XNode> sample() {
    return parsed(
        QStringLiteral(R"(<r><a name="1"><x/><y/></a><b name="2"/><a name="3"/><c/></r>)"));
}

} // namespace

TEST(XNode, KeepsTypeAndNameUniqueAmongChildrenOnlyWhereTheRuleApplies) {
    std::unique_ptr<XNode> root(XNode::createRoot("r", "", nullptr));
    EXPECT_NE(root->createNode("a", "", nullptr), nullptr);
    EXPECT_NE(root->createNode("a", "", nullptr), nullptr); // unnamed: no conflict
    EXPECT_NE(root->createNode("a", "n", nullptr), nullptr);
    EXPECT_NE(root->createNode("b", "n", nullptr), nullptr); // other type, same name
    EXPECT_EQ(root->createNode("a", "n", nullptr), nullptr);
    EXPECT_EQ(root->createNode("", "z", nullptr), nullptr);

    XNode *twin = XNode::createRoot("a", "n", nullptr);
    EXPECT_EQ(linesLoggedBy([&] { EXPECT_FALSE(root->addNode(twin, false)); }),
              std::vector<QString>{"XNode::addNode, nodes name must be unique, name is 'n'"});
    EXPECT_FALSE(root->checkDuplicateNames());
    root->insertNodeAt(twin, 0); // inserting skips the rule; the check then finds it
    EXPECT_TRUE(root->checkDuplicateNames());
    EXPECT_EQ(root->getCreateNode("a", "n", nullptr), twin);
    EXPECT_EQ(root->createUniqueName("n"), QStringLiteral("n0"));
}

TEST(XNode, RefusesIndexesOutsideTheChildrenAndKeepsParentsOfTakenNodes) {
    std::unique_ptr<XNode> root(XNode::createRoot("r", "", nullptr));
    std::unique_ptr<XNode> loose(XNode::createRoot("x", "", nullptr));
    EXPECT_EQ(
        linesLoggedBy([&] { root->insertNodeAt(loose.get(), 0); }),
        std::vector<QString>{"XNode::insertNodeAt - index:0 not valid - must be >= 0 && <= -1"});
    XNode *a = root->createNode("a", "", nullptr);
    EXPECT_EQ(
        linesLoggedBy([&] { root->insertNodeAt(loose.get(), 1); }),
        std::vector<QString>{"XNode::insertNodeAt - index:1 not valid - must be >= 0 && <= 0"});
    EXPECT_FALSE(root->addNode(a, true));
    EXPECT_FALSE(root->removeAt(1, false));
    EXPECT_TRUE(root->removeAt(0, false));
    EXPECT_EQ(a->parent(), root.get());
    delete a;

    XNode *kept = root->createNode("k", "", nullptr);
    root->setText("t");
    root->setString("key", "v");
    root->clear(); // drops the pointers only
    EXPECT_EQ(root->size(), 0);
    EXPECT_EQ(root->getText(), QStringLiteral("t"));
    EXPECT_TRUE(root->hasAttribute("key"));
    delete kept;
}

TEST(XNode, ReordersWithinTheList) {
    std::unique_ptr<XNode> root = sample();
    XNode *a = root->nodeAt(0);
    XNode *b = root->nodeAt(1);
    EXPECT_EQ(root->moveWithinStack(b, orv::STACK_UP), a);
    EXPECT_EQ(root->indexOf(b), 0);
    EXPECT_EQ(root->moveWithinStack(b, orv::STACK_UP), nullptr);
    root->moveWithinStack(b, orv::STACK_BOTTOM);
    EXPECT_EQ(root->indexOf(b), 3);
    root->moveWithinStack(b, orv::STACK_TOP);
    EXPECT_EQ(root->indexOf(b), 0);
    EXPECT_TRUE(root->swap(b, root->nodeAt(3)));
    EXPECT_EQ(shape(root.get()), QStringLiteral("r(c a[name=1](x y) a[name=3] b[name=2])"));
    EXPECT_EQ(root->nodeAfter(root->nodeAt(1), true), root->nodeAt(2));
    EXPECT_EQ(root->nodeBefore(root->nodeAt(1), true), nullptr);
}

TEST(XNode, FindsNodesBackFromTheirPositionStack) {
    std::unique_ptr<XNode> root = sample();
    XNode *y = root->nodeAt(0)->nodeAt(1);
    QStack<int> positions;
    y->getNodePosition(positions);
    EXPECT_EQ(positions.toList(), QList<int>({1, 0}));
    EXPECT_EQ(root->nodeFromStackPos(positions), y);
    EXPECT_TRUE(positions.isEmpty());
    positions.push(9);
    EXPECT_EQ(root->nodeFromStackPos(positions), nullptr);
    EXPECT_EQ(y->getDepth(), 2);
    EXPECT_EQ(y->getStackToRoot().top(), root.get());
    EXPECT_EQ(XNode::rootOf(nullptr), nullptr);
}

TEST(XNode, IteratesDepthFirstAndLeavesASiblingListOnFalse) {
    std::unique_ptr<XNode> root = sample();
    auto visit = [&](QString const &stopAt) {
        QStringList seen;
        root->iterateTree([&](XNode *n, unsigned int depth) {
            seen << n->getType() + QString::number(depth);
            return n->getType() != stopAt;
        });
        return seen.join(' ');
    };
    EXPECT_EQ(visit(""), QStringLiteral("a0 x1 y1 b0 a0 c0"));
    EXPECT_EQ(visit("a"), QStringLiteral("a0"));
    EXPECT_EQ(visit("x"), QStringLiteral("a0 x1 b0 a0 c0"));
}

TEST(XNode, KeepsIDsUniqueAmongSiblingsOnly) {
    std::unique_ptr<XNode> root = sample();
    XNode *a = root->nodeAt(0);
    EXPECT_TRUE(a->setID(7));
    EXPECT_FALSE(root->nodeAt(1)->setID(7));
    EXPECT_FALSE(root->nodeAt(1)->hasID());
    EXPECT_TRUE(a->nodeAt(0)->setID(7)); // another branch
    EXPECT_EQ(root->nodeFromID(7), a);
    EXPECT_EQ(root->nodesFromIDs().size(), 1u);

    int value = 0;
    a->nodeAt(1)->set_pointer(&value);
    EXPECT_EQ(a->nodeAt(1)->pointer(), &value);
    a->nodeAt(1)->remove_all_pointer();
    EXPECT_EQ(a->nodeAt(1)->pointer(), nullptr);
}

TEST(XNode, CopiesDeeplyAndDigestsContentNotType) {
    std::unique_ptr<XNode> root = sample();
    root->nodeAt(2)->setText("t");
    root->setFile("/tmp/r.xml");
    std::unique_ptr<XNode> copy(root->nodeAt(0)->deepCopy(nullptr));
    EXPECT_EQ(shape(copy.get()), shape(root->nodeAt(0)));
    EXPECT_EQ(copy->parent(), nullptr);
    std::unique_ptr<XNode> whole(root->deepCopy(nullptr));
    EXPECT_EQ(whole->getFile(), QStringLiteral("/tmp/r.xml"));
    EXPECT_EQ(whole->getMD5(true), root->getMD5(true));
    whole->nodeAt(0)->setType("renamed");
    EXPECT_EQ(whole->getMD5(true), root->getMD5(true));
    whole->nodeAt(0)->nodeAt(0)->setText("changed");
    EXPECT_NE(whole->getMD5(true), root->getMD5(true));
    EXPECT_EQ(whole->getMD5(false), root->getMD5(false));

    XNode::moveAttributes(whole.get(), whole->nodeAt(0));
    EXPECT_EQ(whole->getName(), QStringLiteral("1"));
    EXPECT_FALSE(whole->nodeAt(0)->hasAttributes());
}

TEST(XNode, ComparesTextAndTypeNames) {
    std::unique_ptr<XNode> root = parsed(QStringLiteral("<a name=\"n\">one\r\n   two</a>"));
    EXPECT_TRUE(root->isText("one\ntwo"));
    EXPECT_FALSE(root->isText(""));
    EXPECT_TRUE(root->isTypeName("a@n"));
    EXPECT_FALSE(root->isTypeName("a@"));
    EXPECT_FALSE(root->isTypeName("a@n@m"));
    EXPECT_EQ(root->toStringForQTreeView(), QStringLiteral("a, name='n', {one\r\n   two}"));
}
