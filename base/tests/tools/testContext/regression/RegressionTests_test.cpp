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

QStringList commandLines(RegressionTests const &regression) {
    QStringList lines;
    for (RegTest const &test : regression.regTests())
        lines << test.cmdLine;
    return lines;
}

TEST(RegressionTests, FileGrammarTakesTestsConfigurationCommentsAndTheEnd) {
    struct Row {
        char const *name;
        QByteArray content;
        QStringList tests;
        bool resetLogLineNumber;
        unsigned int logLevel;
        std::vector<QString> errors;
    } const rows[] = {
        {"comment anywhere",
         "echo --a 1\n# note\necho --b 2 # trailing\n  #x\necho --c a#b\n",
         {"echo --a 1"},
         true,
         3,
         {}},
        {"empty lines", "\n\necho\n\n\r\n", {"echo"}, true, 3, {}},
        {"exit after three",
         "echo --n 1\necho --n 2\necho --n 3\nexit\necho --n 4\necho --n 5\n",
         {"echo --n 1", "echo --n 2", "echo --n 3"},
         true,
         3,
         {}},
        {"exit inside a line or behind a blank",
         "echo --say exit\n  exit\nexitNow\necho\n",
         {"echo --say exit"},
         true,
         3,
         {"RegressionTests::addTest, test <exit> not found"}},
        {"configuration with the level alone",
         "RegTestConfig --logLevel 4\necho\n",
         {"echo"},
         false,
         4,
         {}},
        {"configuration with both keys",
         "echo\nRegTestConfig --resetLogLineNumber true --logLevel 2\n",
         {"echo"},
         true,
         2,
         {}},
        {"configuration without keys", "RegTestConfig\n", {}, false, 3, {}},
        {"configuration word inside a test line",
         "echo --note RegTestConfig --logLevel 5\n",
         {},
         false,
         5,
         {}},
        {"unknown tests",
         "nosuch --a 1\necho\nEcho\n",
         {"echo"},
         true,
         3,
         {"RegressionTests::addTest, test <nosuch> not found",
          "RegressionTests::addTest, test <Echo> not found"}},
        {"quoted arguments",
         "echo --text \"a b  c\" --file \"$(RELPATH)/data.txt\"\n",
         {"echo --text \"a b  c\" --file \"$(RELPATH)/data.txt\""},
         true,
         3,
         {}},
        {"an unmatched quote is reported and skipped",
         "echo --text \"open\nother\n",
         {"other"},
         true,
         3,
         {"CommandLine::from_String_old, cannot parse <<<echo --text \"open>>>",
          "RegressionTests::addTest, test <> not found"}},
        {"CR LF endings", "echo --a 1\r\nother\r\n", {"echo --a 1", "other"}, true, 3, {}},
        {"leading dash and stray bytes",
         QByteArray("--x\n\xff\xfe\x01\n", 9),
         {},
         true,
         3,
         {"CommandLine::from_String_old, cannot parse <<<--x>>>",
          "RegressionTests::addTest, test <> not found",
          QString::fromUtf8(
              "RegressionTests::addTest, test <\xef\xbf\xbd\xef\xbf\xbd\x01> not found")}},
        {"a NUL byte ends the line",
         QByteArray("other\0--junk\necho\n", 18),
         {"other", "echo"},
         true,
         3,
         {}},
    };
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    for (Row const &row : rows) {
        SCOPED_TRACE(row.name);
        QString const path = test::writeFile(dir, "tests.txt", row.content);
        RegressionTests regression;
        bool loaded = false;
        std::vector<QString> const errors =
            test::linesLoggedBy([&] { loaded = regression.fromFile(path); }, ERROR);
        EXPECT_TRUE(loaded);
        EXPECT_EQ(commandLines(regression), row.tests);
        EXPECT_EQ(regression.config().resetLogLineNumber, row.resetLogLineNumber);
        EXPECT_EQ(regression.config().logLevel, row.logLevel);
        EXPECT_EQ(errors, row.errors);
        for (RegTest const &test : regression.regTests())
            EXPECT_EQ(test.result, RegTest::NOT_RUN_YET);
    }
}

TEST(RegressionTests, AMissingOrEmptyFileCannotBeLoaded) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    for (QString const &path :
         {dir.filePath("missing.txt"), test::writeFile(dir, "empty.txt", "")}) {
        RegressionTests regression;
        bool loaded = true;
        std::vector<QString> const errors =
            test::linesLoggedBy([&] { loaded = regression.fromFile(path); }, ERROR);
        EXPECT_FALSE(loaded);
        EXPECT_EQ(errors,
                  std::vector<QString>{"RegressionTests::fromFile, problems with '" + path + "'"});
        EXPECT_EQ(regression.size(), 0u);
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

    // A line longer than the reader's block comes out in pieces, each one a line: the
    // rest of the value is taken for the name of a test.
    QByteArray const value(70000, 'v');
    RegressionTests pieces;
    std::vector<QString> const errors = test::linesLoggedBy(
        [&] {
            EXPECT_TRUE(pieces.fromFile(
                test::writeFile(dir, "long.txt", "echo --v " + value + "\nother\n")));
        },
        ERROR);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(pieces.regTests()[0].cmdLine.size(), 65535);
    EXPECT_EQ(pieces.regTests()[1].cmdLine, "other");
    EXPECT_EQ(errors, std::vector<QString>{"RegressionTests::addTest, test <" +
                                           QString(70009 - 65535, 'v') + "> not found"});
}

TEST(RegressionTests, AFilterTakesTheMatchingTestsInNameOrder) {
    struct Row {
        char const *filter;
        QStringList tests;
    } const rows[] = {{"OTHER", {"other", "otherExtra"}}, {"echo", {"echo"}}, {"zzz", {}}};
    for (Row const &row : rows) {
        RegressionTests regression;
        EXPECT_TRUE(regression.fromFilter(row.filter));
        EXPECT_EQ(commandLines(regression), row.tests) << row.filter;
    }
}

// The lines a run logged at INFO, ERROR and TEST, with the times made "#".
std::vector<QString> runLines(RegressionTests &regression, int *result = nullptr) {
    static QRegularExpression const seconds(R"(in [\d.,]+ sec)");
    std::vector<QString> lines = test::linesLoggedBy(
        [&] {
            int const r = regression.runTests(Kernel::kernel());
            regression.showResults(0);
            if (result)
                *result = r;
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
    int result = -1;
    std::vector<QString> const lines = runLines(regression, &result);
    EXPECT_EQ(result, 0);
    QString const stars(68, '*'), tildes(69, '~');
    EXPECT_EQ(lines, (std::vector<QString>{
                         stars,
                         "TEST 'echo'",
                         "echo file=/data/dir/x.txt text=a b  c",
                         "TEST [001] 'echo', in # sec, OK",
                         "",
                         "TEST 'echo'",
                         "echo result=4",
                         "TEST [002] 'echo' Error:4 => 'file not found', in # sec",
                         "",
                         "TEST 'other'",
                         "TEST [003] 'other', in # sec, OK",
                         "",
                         tildes,
                         "~~~ RegressionTests: Total Tests:3, 2 are OK, 1 Failed",
                         tildes,
                     }));
    std::vector<int> results;
    for (RegTest const &test : regression.regTests())
        results.push_back(test.result);
    EXPECT_EQ(results, (std::vector<int>{0, 4, 0}));
    EXPECT_EQ(regression.countOK(), 2u);
}

TEST(RegressionTests, OutcomeLinesCarryTheRunnersIdAndEveryTestStartsAtLineZero) {
    test::CapturingAppender &log = test::startCapturingLogger();
    RegressionTests regression;
    ASSERT_TRUE(regression.addTest("echo --say first"));
    ASSERT_TRUE(regression.addTest("echo --say second"));
    int const round = test::nextLoggedRound();
    QString const start = QStringLiteral("outcome start %1").arg(round);
    QString const end = QStringLiteral("outcome end %1").arg(round);
    ppTest(start);
    regression.runTests(Kernel::kernel());
    ppTest(end);
    ASSERT_TRUE(log.waitForText(end));
    std::vector<unsigned int> outcomeIds, echoNumbers;
    for (test::CapturedLine const &line : log.takenFrom(start)) {
        if (line.text.startsWith("TEST ["))
            outcomeIds.push_back(line.level >> 16);
        if (line.text.startsWith("echo say="))
            echoNumbers.push_back(line.number);
        if (line.text == "echo say=first") {
            EXPECT_EQ(line.level >> 16, 100u);
        }
    }
    EXPECT_EQ(outcomeIds, (std::vector<unsigned int>{1000, 1000}));
    ASSERT_EQ(echoNumbers.size(), 2u);
    EXPECT_EQ(echoNumbers[0], echoNumbers[1]);
}

TEST(RegressionTests, ALogLevelOfATestLineHoldsForThatTestAlone) {
    unsigned int const before = Logger::getLogLevel();
    RegressionTests regression;
    ASSERT_TRUE(regression.addTest("echo --logLevel 1 --say hidden"));
    ASSERT_TRUE(regression.addTest("echo --say shown"));
    std::vector<QString> const lines = runLines(regression);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "echo logLevel=1 say=hidden"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "echo say=shown"), 1);
    EXPECT_EQ(Logger::getLogLevel(), before);
}

TEST(RegressionTests, AllOkAndAnEmptyRunGiveTheStarBanner) {
    QString const stars(68, '*');
    RegressionTests none;
    none.fromFilter("zzz");
    EXPECT_EQ(runLines(none), (std::vector<QString>{
                                  stars, stars, "*** RegressionTests: All 0 tests are OK", stars}));
    RegressionTests one;
    one.fromFilter("otherExtra");
    std::vector<QString> const lines = runLines(one);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[lines.size() - 2], "*** RegressionTests: All 1 tests are OK");
}

TEST(RegressionTests, NotRunTestsAndTheTextsOfTestsAndLists) {
    RegressionTests regression;
    regression.fromFilter("other");
    std::vector<QString> const listed = test::linesLoggedBy([&] { regression.show(2); }, INFO);
    EXPECT_EQ(listed, (std::vector<QString>{"RegressionTests: [2]", "other, NOT_RUN_YET",
                                            "otherExtra, NOT_RUN_YET"}));
    std::vector<QString> const summary =
        test::linesLoggedBy([&] { regression.showResults(0); }, INFO);
    ASSERT_EQ(summary.size(), 3u);
    EXPECT_EQ(summary[1], "~~~ RegressionTests: Total Tests:2,  0 are OK, 0 Failed, 2 did not run");

    RegTest test{&TestContextAdder::getTestContext("echo"), "echo --result 6", 6};
    EXPECT_EQ(test.toString(), "echo, result:6");
    RegTest empty;
    EXPECT_EQ(empty.toString(), "RegTest, testContext == nullptr");
    int result = 0;
    std::vector<QString> const errors =
        test::linesLoggedBy([&] { result = empty.exec(1, Kernel::kernel()); }, ERROR);
    EXPECT_EQ(result, -1);
    EXPECT_EQ(errors, std::vector<QString>{"RegTest::exec, testContext == nullptr"});
}

TEST(RegressionTests, TheReportSetsTheFilesLevelUnlessTheCommandLineHasOne) {
    unsigned int const before = Logger::getLogLevel();
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QString const path = test::writeFile(dir, "t.txt", "RegTestConfig --logLevel 2\nother\n");
    Kernel &kernel = Kernel::kernel();
    struct Row {
        char const *commandLine;
        unsigned int mask;
    } const rows[] = {{"run", mapToLogLevelFlags(2)}, {"run --logLevel 4", before}};
    for (Row const &row : rows) {
        Logger::setLogLevel(before);
        ASSERT_TRUE(kernel.fromString(row.commandLine));
        RegressionTests regression;
        ASSERT_TRUE(regression.fromFile(path));
        EXPECT_EQ(regression.runAndReport(kernel, path), 0);
        EXPECT_EQ(Logger::getLogLevel(), row.mask) << row.commandLine;
    }
    Logger::prepareForRegressionTests(false);
    Logger::setLogLevel(before);
}

} // namespace
} // namespace orv
