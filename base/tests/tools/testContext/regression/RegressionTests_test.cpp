// RegressionTests_test.cpp: the grammar of regression files, good and bad, the run
// with its lines and banners, and the summary. A folder of its own: the tests that a
// run needs are registered here, and the registry of the test-context tests must stay
// as those tests expect it.
#include "orv/RegressionTests.h"

#include "orv/EnvVariables.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/TestContext.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

namespace orv {
namespace {

// Logs what it was given and gives --result (0 when absent).
int echo(Kernel &kernel) {
    QStringList said;
    for (CommandLineItem const &item : kernel.getItems())
        said << item.key + '=' + item.value;
    ppInfo("echo $", said.join(' '));
    return kernel.getInt("result", 0);
}

ModuleTests const registered{
    {TestContext::FnKernel(echo), "echo", "", true},
    {TestContext::FnPlain([] { return 0; }), "other", "", true},
    {TestContext::FnPlain([] { return 0; }), "otherExtra", "", false},
};

// The command lines, then "reset:<0|1> level:<n>".
QStringList loaded(RegressionTests const &regression) {
    QStringList lines;
    for (RegTest const &test : regression.regTests())
        lines << test.cmdLine + (test.result == RegTest::NOT_RUN_YET ? "" : " (ran)");
    return lines << QStringLiteral("reset:%1 level:%2")
                        .arg(regression.config().resetLogLineNumber)
                        .arg(regression.config().logLevel);
}

QString const notFound = QStringLiteral("RegressionTests::addTest, test <%1> not found");

TEST(RegressionTests, FileGrammarTakesTestsConfigurationCommentsAndTheEnd) {
    struct Row {
        QByteArray content;
        QStringList loaded;
        QStringList errors = {};
    } const rows[] = {
        // "#" anywhere skips the line.
        {"echo --a 1\n# note\necho --b 2 # trailing\n  #x\necho --c a#b\n",
         {"echo --a 1", "reset:1 level:3"}},
        {"\n\necho\n\n\r\n", {"echo", "reset:1 level:3"}},
        {"echo --n 1\necho --n 2\necho --n 3\nexit\necho --n 4\necho --n 5\n",
         {"echo --n 1", "echo --n 2", "echo --n 3", "reset:1 level:3"}},
        // Only "exit" at the start ends the file; behind a blank it names a test.
        {"echo --say exit\n  exit\nexitNow\necho\n",
         {"echo --say exit", "reset:1 level:3"},
         {notFound.arg("exit")}},
        {"RegTestConfig --logLevel 4\necho\n", {"echo", "reset:0 level:4"}},
        {"echo\nRegTestConfig --resetLogLineNumber true --logLevel 2\n",
         {"echo", "reset:1 level:2"}},
        {"RegTestConfig\n", {"reset:0 level:3"}},
        {"echo --note RegTestConfig --logLevel 5\n", {"reset:0 level:5"}},
        {"nosuch --a 1\necho\nEcho\n",
         {"echo", "reset:1 level:3"},
         {notFound.arg("nosuch"), notFound.arg("Echo")}},
        {"echo --text \"a b  c\" --file \"$(RELPATH)/data.txt\"\n",
         {"echo --text \"a b  c\" --file \"$(RELPATH)/data.txt\"", "reset:1 level:3"}},
        // An unmatched quote: the line is reported and skipped.
        {"echo --text \"open\nother\n",
         {"other", "reset:1 level:3"},
         {"CommandLine::from_String_old, cannot parse <<<echo --text \"open>>>", notFound.arg("")}},
        {"echo --a 1\r\nother\r\n", {"echo --a 1", "other", "reset:1 level:3"}},
        {QByteArray("--x\n\xff\xfe\x01\n", 9),
         {"reset:1 level:3"},
         {"CommandLine::from_String_old, cannot parse <<<--x>>>", notFound.arg(""),
          notFound.arg(QString::fromUtf8("\xef\xbf\xbd\xef\xbf\xbd\x01"))}},
        {QByteArray("other\0--junk\necho\n", 18), {"other", "echo", "reset:1 level:3"}},
    };
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    for (Row const &row : rows) {
        SCOPED_TRACE(row.content.toStdString());
        RegressionTests regression;
        std::vector<QString> const errors = test::linesLoggedBy(
            [&] { EXPECT_TRUE(regression.fromFile(test::writeFile(dir, "t.txt", row.content))); },
            ERROR);
        EXPECT_EQ(loaded(regression), row.loaded);
        EXPECT_EQ(QStringList(errors.begin(), errors.end()), row.errors);
    }
    for (QString const &path :
         {dir.filePath("missing.txt"), test::writeFile(dir, "empty.txt", "")}) {
        RegressionTests regression;
        std::vector<QString> const errors =
            test::linesLoggedBy([&] { EXPECT_FALSE(regression.fromFile(path)); }, ERROR);
        EXPECT_EQ(errors,
                  std::vector<QString>{"RegressionTests::fromFile, problems with '" + path + "'"});
    }
}

TEST(RegressionTests, LongFilesAndLongLinesAreReadWhole) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QByteArray lines;
    for (int i = 0; i < 100000; ++i)
        lines += "echo --n " + QByteArray::number(i) + '\n';
    RegressionTests many;
    ASSERT_TRUE(many.fromFile(test::writeFile(dir, "many.txt", lines)));
    ASSERT_EQ(many.size(), 100000u);
    EXPECT_EQ(many.regTests().back().cmdLine, "echo --n 99999");
    // A line longer than the reader's block comes out in pieces, each one a line.
    RegressionTests pieces;
    std::vector<QString> const errors = test::linesLoggedBy([&] {
        pieces.fromFile(
            test::writeFile(dir, "l.txt", "echo " + QByteArray(70000, 'v') + "\nother"));
    });
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces.regTests()[0].cmdLine.size(), 65535);
    EXPECT_EQ(errors, std::vector<QString>{notFound.arg(QString(70005 - 65535, 'v'))});
}

// The lines a run logged at INFO, ERROR and TEST, with the times made "#".
std::vector<QString> runLines(RegressionTests &regression) {
    static QRegularExpression const seconds(R"(in [\d.,]+ sec)");
    std::vector<QString> lines = test::linesLoggedBy(
        [&] {
            EXPECT_EQ(regression.runTests(Kernel::kernel()), 0);
            regression.showResults(0);
        },
        INFO | ERROR | TEST);
    for (QString &line : lines)
        line.replace(seconds, "in # sec");
    return lines;
}

TEST(RegressionTests, ARunLogsEachTestAndTheSummaryWithFailures) {
    RegressionTests regression;
    setEnv("RELPATH", "/data/dir");
    for (char const *line :
         {"echo --text \"a b  c\" --file $(RELPATH)/x.txt", "echo --result 4", "other"})
        ASSERT_TRUE(regression.addTest(line));
    QString const stars(68, '*'), tildes(69, '~');
    EXPECT_EQ(
        runLines(regression),
        (std::vector<QString>{stars, "TEST 'echo'", "echo file=/data/dir/x.txt text=a b  c",
                              "TEST [001] 'echo', in # sec, OK", "", "TEST 'echo'", "echo result=4",
                              "TEST [002] 'echo' Error:4 => 'file not found', in # sec", "",
                              "TEST 'other'", "TEST [003] 'other', in # sec, OK", "", tildes,
                              "~~~ RegressionTests: Total Tests:3, 2 are OK, 1 Failed", tildes}));
    EXPECT_EQ(regression.countOK(), 2u);
    std::vector<QString> const listed = test::linesLoggedBy([&] { regression.show(0); }, INFO);
    EXPECT_EQ(listed, (std::vector<QString>{"RegressionTests: [3]", "echo, result:0",
                                            "echo, result:4", "other, result:0"}));
}

TEST(RegressionTests, AFilterRunsTestsByNameAndAnEmptyRunIsAllOk) {
    QString const stars(68, '*');
    RegressionTests none;
    EXPECT_TRUE(none.fromFilter("zzz"));
    EXPECT_EQ(runLines(none), (std::vector<QString>{
                                  stars, stars, "*** RegressionTests: All 0 tests are OK", stars}));
    RegressionTests others;
    others.fromFilter("OTHER");
    EXPECT_EQ(loaded(others), QStringList({"other", "otherExtra", "reset:1 level:3"}));
    std::vector<QString> const summary = test::linesLoggedBy([&] { others.showResults(0); }, INFO);
    EXPECT_EQ(summary[1], "~~~ RegressionTests: Total Tests:2,  0 are OK, 0 Failed, 2 did not run");
    EXPECT_EQ(runLines(others).rbegin()[1], "*** RegressionTests: All 2 tests are OK");
}

TEST(RegressionTests, OutcomesCarryTheRunnersIdEachTestStartsAtLineZeroWithItsOwnLevel) {
    test::CapturingAppender &log = test::startCapturingLogger();
    unsigned int const level = Logger::getLogLevel();
    RegressionTests regression;
    for (char const *line :
         {"echo --say first", "echo --logLevel 1 --say hidden", "echo --say last"})
        ASSERT_TRUE(regression.addTest(line));
    QString const end = QStringLiteral("outcome end %1").arg(test::nextLoggedRound());
    size_t const before = log.taken().size();
    regression.runTests(Kernel::kernel());
    ppTest(end);
    ASSERT_TRUE(log.waitForText(end));
    std::vector<unsigned int> outcomeIds;
    QStringList echoes;
    std::vector<test::CapturedLine> const all = log.taken();
    for (size_t i = before; i < all.size(); ++i) {
        if (all[i].text.startsWith("TEST ["))
            outcomeIds.push_back(all[i].level >> 16);
        if (all[i].text.startsWith("echo "))
            echoes << QStringLiteral("%1:%2").arg(all[i].number).arg(all[i].text);
    }
    EXPECT_EQ(outcomeIds, (std::vector<unsigned int>{1000, 1000}));
    EXPECT_EQ(echoes, QStringList({"1:echo say=first", "1:echo say=last"}));
    EXPECT_EQ(Logger::getLogLevel(), level);
}

} // namespace
} // namespace orv
