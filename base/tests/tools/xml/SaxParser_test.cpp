// SaxParser_test.cpp: the dialect row by row (what it keeps, what it skips without a
// word, what fails), bounded nesting, the scanner's hooks, and save-then-parse.
#include "orv/XNode.h"
#include "orv/parsing/SaxParser.h"

#include "XmlShape.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

using orv::XNode;
using orv::test::parsed;
using orv::test::shape;

namespace {

struct DialectRow {
    char const *xml;
    char const *tree; // "null": the parse gives no tree
};

DialectRow const dialectRows[] = {
    {R"(<a b="1"/>)", "a[b=1]"},
    {R"(<a b='1'/>)", "a[b=1]"},
    {R"(<a b="1'/>)", "a[b=1]"},
    {R"(<a b="1" b="2"/>)", "a[b=2]"},
    {R"(<a b="it's"/>)", "a[b=it]"},
    {R"(<a c=1 b="2"/>)", "a[c=2]"},
    {R"(<a k "x"/>)", "a[k=x]"},
    {R"(<a k v = "x"  w="" />)", "a[k v=x,w=]"},
    {R"(<a x="1>2"/></a>)", R"(a"2"/>")"},
    {R"(<a>x<b/>y</a>)", R"(a"x"(b))"},
    {R"(<a>x<!-- c -->y</a>)", R"(a"x")"},
    {R"(<a>&amp;</a>)", R"(a"&amp;")"},
    {"<a>\n  one\n  two \n</a>", "a\"one\n  two\""},
    {R"(<a><b>t</b>u<c/></a>)", R"(a(b"t" c))"},
    {R"(<a></wrong>)", "a"},
    {R"(<a/>)", "a"},
    {R"(<a/>junk)", "a"},
    {R"(<a/><b/>)", "a(b)"},
    {R"(<a/><b/><c/>)", "a(b(c))"},
    {R"(<!-- x-><a/>)", "a"},
    {R"(<!--><a/>)", "a"},
    {"<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<!DOCTYPE a>\n<a/>", "a"},
    {R"(<a><?pi x?><b/><?pi y?></a>)", "a(b)"},
    {R"(<a><![CDATA[<b/>]]></a>)", "a(b)"},
    {R"(text > stray <a/>)", "a"},
    {R"(<a.b c="1"/>)", "a[.b c=1]"},
    {R"(<1a/>)", "1a"},
    {R"(<ns:a-b_c/>)", "ns:a-b_c"},
    {"<\u00e4 x=\"\u00fc\"/>", "\u00e4[x=\u00fc]"},
    {"\ufeff<a/>", "a"},
    {R"(<_a/>)", "null"},
    {R"(<a>)", "null"},
    {R"(<a></a)", "null"},
    {R"(<a b="x)", "null"},
    {R"(<a ="x"/>)", "null"},
    {R"(<a "x"/>)", "null"},
    {R"(<a><b></b>)", "null"},
    {R"(<a><!-- open)", "null"},
    {"", "null"},
};

} // namespace

TEST(SaxParser, ReadsTheDialectRowByRow) {
    for (DialectRow const &row : dialectRows) {
        SCOPED_TRACE(row.xml);
        EXPECT_EQ(shape(parsed(QString::fromUtf8(row.xml)).get()), QString::fromUtf8(row.tree));
    }
}

TEST(SaxParser, BoundsNestingWithAFailureNotAStackOverflow) {
    int const million = 1000000;
    QString deep =
        QStringLiteral("<a>").repeated(million) + QStringLiteral("</a>").repeated(million);
    EXPECT_EQ(parsed(deep), nullptr);
    int const limit = orv::AbstractSaxHelper::MAX_DEPTH;
    QString deepest =
        QStringLiteral("<a>").repeated(limit) + QStringLiteral("</a>").repeated(limit);
    std::unique_ptr<XNode> root = parsed(deepest);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->sizeRecursive(true), limit);
    // Each further top-level element goes under the previous one: the same bound holds.
    EXPECT_EQ(parsed(QStringLiteral("<a/>").repeated(million)), nullptr);
}

namespace {

struct Recorder : orv::SaxParser {
    QStringList seen;
    void inspectDefinition(QString const &d) override { seen << "def:" + d; }
    void inspectCommend(QString const &c, int depth) override {
        seen << QStringLiteral("comment%1:").arg(depth) + c;
    }
    void inspectText(QString const &t, int depth) override {
        seen << QStringLiteral("text%1:").arg(depth) + t;
    }
    bool inspectTypeAttribs(QString const &type, std::map<QString, QString> const &attributes,
                            int depth) override {
        seen << QStringLiteral("tag%1:").arg(depth) + type +
                    QString::number(static_cast<int>(attributes.size()));
        return type != QLatin1String("stop");
    }
};

} // namespace

TEST(SaxParser, CallsItsHooksWithDepths) {
    Recorder r;
    r.setBuffer(QStringLiteral("<?xml v?><!-- top -><a x=\"1\"> t <!--in-><b/></a>"));
    orv::XNode_Parse_Control control;
    EXPECT_TRUE(r.parse(control));
    EXPECT_EQ(r.seen, QStringList({"def:xml v", "comment0:!-- top ", "tag1:a1", "text1:t",
                                   "comment1:!--in", "tag2:b0"}));
    EXPECT_EQ(control.percent, 100);
    EXPECT_EQ(r.getState(), 4);

    Recorder refused;
    refused.setBuffer(QStringLiteral("<a><stop/></a>"));
    EXPECT_FALSE(refused.parse(control));
    orv::SaxParser none;
    EXPECT_FALSE(none.parse(control));
}

TEST(SaxParser, SkipsAByteOrderMarkReadAsLatin1) {
    Recorder r;
    r.setBuffer(QString::fromLatin1("\xEF\xBB\xBF<a/>"));
    EXPECT_EQ(r.peekChar(), QLatin1Char('<'));
    orv::XNode_Parse_Control control;
    EXPECT_TRUE(r.parse(control));
    EXPECT_EQ(r.seen, QStringList({"tag1:a0"}));
}

TEST(SaxParser, SavedTreeParsesBackWithTheNamedLosses) {
    std::unique_ptr<XNode> root(XNode::createRoot("config", "main", nullptr));
    XNode *db = root->createNode("db", "x", nullptr);
    db->setInt("port", 5432);
    db->setText("leaf text");
    XNode *list = root->createNode("list", "", nullptr);
    list->setText("before the child");
    list->createNode("item", "1", nullptr)->setString("v", "\u00e9t\u00e9");
    list->createNode("item", "2", nullptr);
    root->createNode("quoted", "", nullptr)->setString("q", "say \"hi\"");

    std::unique_ptr<XNode> back = parsed(root->allAsString(0));
    EXPECT_EQ(shape(back.get()),
              QString::fromUtf8("config[name=main](db[name=x,port=5432]\"leaf text\" "
                                "list\"before the child\"(item[name=1,v=\u00e9t\u00e9] "
                                "item[name=2]) quoted[hi=,q=say ])"));
}
