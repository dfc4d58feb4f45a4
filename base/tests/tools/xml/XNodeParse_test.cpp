// XNodeParse_test.cpp: files with nested, missing, broken and looping INCLUDE elements,
// $(NAME) values, progress and cancel from a worker, and the other sources of a tree.
#include "orv/EnvVariables.h"
#include "orv/XMem.h"
#include "orv/XNode.h"
#include "orv/parsing/SaxParser.h"

#include "XmlShape.h"
#include "support/EventPump.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using orv::XNode;
using orv::XNode_Parse_Control;
using orv::test::linesLoggedBy;
using orv::test::shape;
using orv::test::writeFile;

namespace {

std::unique_ptr<XNode> parseIn(QTemporaryDir const &dir, QString const &name,
                               XNode_Parse_Control *control = nullptr) {
    return std::unique_ptr<XNode>(XNode::parseFile(dir.filePath(name), nullptr, control));
}

} // namespace

TEST(XNodeParse, IncludesRelativeToTheIncludingFileTwoLevelsDeep) {
    QTemporaryDir dir;
    QDir(dir.path()).mkdir("sub");
    orv::setEnv("ORV_XML_TEST_SUB", "sub");
    writeFile(dir, "main.xml",
              R"(<main><INCLUDE file="sub/a.xml"/><INCLUDE file="missing.xml"/>
                 <INCLUDE file="$(ORV_XML_TEST_SUB)/c.xml" includeRoot="no"/>
                 <INCLUDE file="sub/c.xml" includeRoot="True"/></main>)");
    writeFile(dir, "sub/a.xml", R"(<a><INCLUDE file="b.xml"/></a>)");
    writeFile(dir, "sub/b.xml", R"(<b x="1"/>)");
    writeFile(dir, "sub/c.xml", R"(<c><c1/><c2/></c>)");
    XNode_Parse_Control control;
    std::unique_ptr<XNode> root = parseIn(dir, "main.xml", &control);
    EXPECT_EQ(shape(root.get()), QStringLiteral("main(a(b[x=1]) c1 c2 c(c1 c2))"));
    EXPECT_EQ(root->getFile(), dir.filePath("main.xml"));
    EXPECT_EQ(control.includeProblems,
              std::vector<QString>{"include '" + dir.filePath("missing.xml") + "' does not exist"});
    EXPECT_TRUE(control.isOK());
}

TEST(XNodeParse, RefusesIncludeLoopsAndNotesBrokenIncludes) {
    QTemporaryDir dir;
    writeFile(dir, "self.xml", R"(<s><INCLUDE file="self.xml"/><x/></s>)");
    writeFile(dir, "p.xml", R"(<p><INCLUDE file="q.xml"/></p>)");
    writeFile(dir, "q.xml", R"(<q><INCLUDE file="p.xml"/><INCLUDE file="broken.xml"/></q>)");
    writeFile(dir, "broken.xml", "<b>");
    XNode_Parse_Control control;
    std::unique_ptr<XNode> self;
    std::vector<QString> const errors =
        linesLoggedBy([&] { self = parseIn(dir, "self.xml", &control); }, orv::ERROR);
    EXPECT_EQ(shape(self.get()), QStringLiteral("s(x)"));
    EXPECT_EQ(errors, std::vector<QString>{"XNode::inspectTypeAttribs, include loop: '" +
                                           dir.filePath("self.xml") + "' is already being read"});
    EXPECT_EQ(control.includeProblems.size(), 1u);

    std::unique_ptr<XNode> p = parseIn(dir, "p.xml", &control);
    EXPECT_EQ(shape(p.get()), QStringLiteral("p(q)"));
    EXPECT_EQ(
        control.includeProblems,
        std::vector<QString>({"include loop: '" + dir.filePath("p.xml") + "' includes itself",
                              "include '" + dir.filePath("broken.xml") + "' cannot be parsed"}));
}

TEST(XNodeParse, FailsClearlyOnMissingFilesAndUnresolvedPaths) {
    QTemporaryDir dir;
    struct Row {
        QString path;
        std::vector<QString> errors;
    } const rows[] = {
        {"", {"XNode::parseFile, s.length() == 0 !, no file ?"}},
        {dir.filePath("none.xml"),
         {"XNode::parseFile,  file '" + dir.filePath("none.xml") + "' does not exist"}},
        {"$(ORV_XML_NOT_SET)/a.xml", {}},
        {writeFile(dir, "open.xml", "<a><b/>"),
         {"XNode::parseFile,2, cannot parse file '" + dir.filePath("open.xml") + "'"}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        XNode *root = nullptr;
        EXPECT_EQ(
            linesLoggedBy([&] { root = XNode::parseFile(row.path, nullptr, nullptr); }, orv::ERROR),
            row.errors);
        EXPECT_EQ(root, nullptr);
    }
    EXPECT_EQ(XNode::parseFile(QFileInfo(dir.path()), nullptr, nullptr), nullptr);
}

TEST(XNodeParse, ReplacesVariablesInAttributeValuesOnly) {
    orv::setEnv("ORV_XML_VAR", "value");
    std::unique_ptr<XNode> root = orv::test::parsed(
        R"x(<a p="$(ORV_XML_VAR)/x" q="$(ORV_XML_UNSET)" r="$HOME">$(ORV_XML_VAR)</a>)x");
    EXPECT_EQ(shape(root.get()),
              QStringLiteral("a[p=value/x,q=$(ORV_XML_UNSET),r=HOME]\"$(ORV_XML_VAR)\""));
    EXPECT_EQ(root->getFile(), QStringLiteral(":MEMORY"));
}

TEST(XNodeParse, ReadsBytesAndMemoryBlocksAsUtf8) {
    std::unique_ptr<XNode> fromBytes(
        XNode::parseQByteArray(QByteArray("<a v=\"\xc3\xa9\"/>"), nullptr));
    EXPECT_EQ(shape(fromBytes.get()), QString::fromUtf8("a[v=\u00e9]"));
    orv::XMem mem;
    XNode::saveNodeToXMem(*fromBytes, mem, 0);
    std::unique_ptr<XNode> fromMem(XNode::parseXMem(mem, nullptr));
    EXPECT_EQ(shape(fromMem.get()), shape(fromBytes.get()));
    EXPECT_EQ(XNode::parseQByteArray(QByteArray(), nullptr), nullptr);
    EXPECT_EQ(XNode::parseString("no element here", nullptr), nullptr);
}

TEST(XNodeParse, TransactsAndMergesFiles) {
    QTemporaryDir dir;
    QString const path = writeFile(dir, "t.xml", R"(<r n="1"><c/></r>)");
    auto bump = [](XNode *r) {
        r->setInt("n", r->getInt("n", 0) + 1);
        return true;
    };
    EXPECT_TRUE(XNode::transact(path, bump));
    EXPECT_FALSE(XNode::transact(path, [](XNode *) { return false; }));
    EXPECT_FALSE(XNode::transact(dir.filePath("none.xml"), bump));

    std::unique_ptr<XNode> base(XNode::createRoot("r", "", nullptr));
    base->setString("old", "x");
    orv::XmlNodeCreator creator;
    EXPECT_TRUE(base->parseCustomType(path, creator));
    EXPECT_EQ(shape(base.get()), QStringLiteral("r[n=2]\"r\"(c)"));
    std::unique_ptr<XNode> other(XNode::createRoot("o", "", nullptr));
    EXPECT_FALSE(other->parseCustomType(path, creator));
}

TEST(XNodeParse, ReportsRisingPercentFromAWorkerAndStopsWhenCancelled) {
    QString const path = QDir::temp().filePath(
        QStringLiteral("orv_xml_progress_%1.xml").arg(QCoreApplication::applicationPid()));
    {
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        QByteArray const item =
            "  <item id=\"1234567\" name=\"element\" flag=\"true\">some text</item>\n";
        QByteArray chunk = item.repeated(10000);
        out.write("<root>\n");
        for (qint64 written = 0; written < 50 * 1000 * 1000; written += chunk.size())
            out.write(chunk);
        out.write("</root>\n");
    }
    XNode_Parse_Control control;
    // The worker may outrun the posted listener calls on a loaded machine: past 3 % it
    // waits (bounded) for the cancel, so the parse can't end before the third call lands.
    struct WaitForCancel : orv::XmlNodeCreator {
        XNode_Parse_Control &control;
        explicit WaitForCancel(XNode_Parse_Control &c) : control(c) {}
        orv::XNode *create(QString const &type) const override {
            for (int ms = 0; control.percent >= 3 && !control.cancelled && ms < 20000; ++ms)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            return orv::XmlNodeCreator::create(type);
        }
    } const creator(control);
    std::vector<int> seen; // touched on the main thread only: listeners are posted there
    control.listeners.addListener([&](XNode_Parse_Control &c) {
        seen.push_back(c.percent);
        if (seen.size() == 3)
            c.cancel();
    });
    std::atomic<bool> done{false};
    XNode *result = nullptr;
    std::thread worker([&] {
        result = XNode::parseFile(path, &creator, &control);
        done = true;
    });
    EXPECT_TRUE(orv::test::pumpEventsUntil([&] { return done.load(); }, 60000));
    worker.join();
    QCoreApplication::processEvents();
    QFile::remove(path);

    EXPECT_EQ(result, nullptr);
    ASSERT_GE(seen.size(), 3u);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_LT(seen.front(), seen[2]);
    EXPECT_LT(control.bytesRead, control.bytesTotal);
    EXPECT_TRUE(control.isDone());
    EXPECT_TRUE(control.toString().startsWith("XNode parsing Cancelled! Bytes proceed:"))
        << control.toString().toStdString();
}
