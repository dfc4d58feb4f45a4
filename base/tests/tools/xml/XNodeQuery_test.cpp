// XNodeQuery_test.cpp: paths and their odd first step, the exact text form with its
// folding and flags, and file references against the root's directory.
#include "orv/XNode.h"

#include "XmlShape.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using orv::XNode;
using orv::test::parsed;

TEST(XNodeQuery, WalksPathsStepByStep) {
    std::unique_ptr<XNode> root =
        parsed(R"(<r><a name="x"><b/></a><a name="y"><b id="2"/></a><c/></r>)");
    XNode *ax = root->nodeAt(0), *ay = root->nodeAt(1), *c = root->nodeAt(2);
    XNode *by = ay->nodeAt(0);
    struct Row {
        XNode *from;
        char const *path;
        XNode *expected;
    } const rows[] = {
        {root.get(), "a", ax},
        {root.get(), "a@y", ay},
        {root.get(), "a@y/b", by},
        {by, "../../c", c},
        {by, "..", ay},
        {ax, "", ax},
        {by, "/", root.get()},
        {by, "/zzz", root.get()},
        {c, "/c", c},
        {by, "/any/a@y/b", by},
        {root.get(), "a@z", nullptr},
        {root.get(), "a@b@c", nullptr},
        {root.get(), "a@", nullptr},
        {root.get(), "..", nullptr},
        {root.get(), "../..", nullptr},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(row.from->query(row.path), row.expected);
    }
    EXPECT_EQ(XNode::queryFrom(nullptr, "a"), nullptr);
    EXPECT_EQ(by->getQuery(), QStringLiteral("/r/a@y/b"));
    EXPECT_EQ(root->query(by->getQuery()), by);
}

TEST(XNodeQuery, WritesTheTextFormWithoutEscapes) {
    std::unique_ptr<XNode> root =
        parsed(R"(<r b="2" a="1"><e/><t>x &amp; y</t><n><m/></n><q/></r>)");
    root->nodeAt(3)->setString("v", "say \"hi\"");
    EXPECT_EQ(root->allAsString(0), QStringLiteral("<r a=\"1\" b=\"2\" >\n"
                                                   "    <e/>\n"
                                                   "    <t>x &amp; y</t>    <n>\n"
                                                   "        <m/>\n"
                                                   "    </n>\n"
                                                   "    <q v=\"say \"hi\"\" />\n"
                                                   "</r>\n"));
    XNode::atomicWriteFullEmptyTags = true;
    QString const full = root->nodeAt(0)->allAsString(2) + root->nodeAt(3)->allAsString(0);
    XNode::atomicWriteFullEmptyTags = false;
    EXPECT_EQ(full, QStringLiteral("  <e></e><q v=\"say \"hi\"\" />\n"));
}

TEST(XNodeQuery, FoldsLongAttributeListsEvery141Characters) {
    std::unique_ptr<XNode> root(XNode::createRoot("r", "", nullptr));
    for (int i = 10; i < 60; ++i)
        root->setString(QStringLiteral("k%1").arg(i), QStringLiteral("v%1").arg(i));
    QStringList const lines = root->allAsString(4).split('\n', Qt::SkipEmptyParts);
    // Six characters per attribute: the count reaches 141 after 24 of them.
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith("    <r k10=\"v10\" "));
    EXPECT_TRUE(lines[0].endsWith("k33=\"v33\" "));
    EXPECT_TRUE(lines[1].startsWith("            k34=\"v34\" "));
    EXPECT_TRUE(lines[2].endsWith("k59=\"v59\" />"));
    std::unique_ptr<XNode> back = parsed(root->allAsString(0));
    EXPECT_EQ(back->countAttributes(), 50);
}

TEST(XNodeQuery, SavesAFileThatReadsBack) {
    QTemporaryDir dir;
    std::unique_ptr<XNode> root = parsed(R"(<r a="1"><c>t</c></r>)");
    QString const path = dir.filePath("deep/er/out.xml");
    ASSERT_TRUE(root->saveNodeToXml(path, "made by a test"));
    EXPECT_EQ(orv::test::readFile(path), QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n"
                                                    "<!--\nmade by a test\n-->\n\n"
                                                    "<r a=\"1\" >\n    <c>t</c></r>\n"));
    std::unique_ptr<XNode> back(XNode::parseFile(path, nullptr, nullptr));
    EXPECT_EQ(orv::test::shape(back.get()), orv::test::shape(root.get()));
    EXPECT_FALSE(root->saveNodeToXml(dir.filePath("deep"), ""));
}

TEST(XNodeQuery, ResolvesResourcesAgainstTheRootsDirectory) {
    QTemporaryDir dir;
    orv::test::writeFile(dir, "icon.png", "x");
    std::unique_ptr<XNode> root = parsed(R"(<r icon="icon.png" gone="no.png"><c/></r>)");
    XNode *c = root->nodeAt(0);
    c->setFile(dir.filePath("doc.xml"));
    EXPECT_EQ(root->getFile(), dir.filePath("doc.xml"));
    EXPECT_EQ(root->pathResource("icon", ""), dir.filePath("icon.png"));
    EXPECT_EQ(root->pathResource("gone", "def"), QStringLiteral("def"));
    EXPECT_EQ(root->pathResource("gone", ""), dir.filePath("no.png"));
    EXPECT_EQ(root->pathResource("absent", ""), QString());
    EXPECT_EQ(c->absolutePath("a/b"), dir.filePath("a/b"));
    EXPECT_EQ(c->absolutePath("/abs"), QStringLiteral("/abs"));
    EXPECT_EQ(c->buildResourcePath(dir.filePath("x/y.png")), QStringLiteral("x/y.png"));
    EXPECT_EQ(c->buildResourcePath("/elsewhere/y.png"), QStringLiteral("/elsewhere/y.png"));
    c->setPathResource("icon", "../x.png", false);
    EXPECT_FALSE(c->hasAttribute("icon"));
    c->setPathResource("icon", "../x.png", true);
    EXPECT_EQ(c->getString("icon"), QStringLiteral("../x.png"));
    c->setPathResource("icon", dir.filePath("s/i.png"), false);
    EXPECT_EQ(c->getString("icon"), QStringLiteral("s/i.png"));
    EXPECT_FALSE(c->isResourceFile());
}
