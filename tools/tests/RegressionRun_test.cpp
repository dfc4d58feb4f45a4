// RegressionRun_test.cpp: a program whose main is a regression run, end to end: its
// statuses, the summary of failing runs, a test that ends the process through the fatal
// handler, and one that hangs until the time limit ends the process.
#include "support/ChildRun.h"
#include "support/TempFiles.h"

namespace {

using orv::test::ChildRun;

class RegressionRun : public testing::Test {
protected:
    // Runs the helper on a list file of the given lines ("@list" in args names it).
    ChildRun runList(QByteArray const &lines, QStringList args,
                     QProcessEnvironment const &env = QProcessEnvironment::systemEnvironment()) {
        args.replaceInStrings("@list", orv::test::writeFile(dir, "list.txt", lines));
        return orv::test::runChild(ORV_REGRESSION_HELPER, args, env);
    }

    QTemporaryDir dir;
};

// Each run gives its status and output lines that hold every text of has and none of lacks.
TEST_F(RegressionRun, StatusIsZeroWhateverTheTestsGave) {
    orv::test::writeFile(dir, "data.txt", {});
    QString const path = dir.filePath("list.txt");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ORV_LIST", path);
    QByteArray const three = "pass\nfail\nfileExists --file $(RELPATH)/data.txt\n";
    QByteArray const quiet = "RegTestConfig --logLevel 1\npass\n";
    struct Row {
        QByteArray lines;
        QStringList args;
        int exitCode;
        QStringList has{}, lacks{};
    } const rows[] = {
        {"", {}, 30, {}, {"RegressionTests"}},
        {"", {"zzz"}, 0, {"RegressionTests, <<<", "*** RegressionTests: All 0 tests are OK"}},
        {three,
         {"@list"},
         0,
         {"RegressionTests, <<<" + path + ">>>",
          "RegressionTests::execRegressionTests, run 3 tests now...", "TEST [001] 'pass', in",
          "TEST [002] 'fail' Error:4 => 'file not found', in",
          "looking for '" + dir.filePath("data.txt") + "'", "TEST [003] 'fileExists', in",
          "~~~ RegressionTests: Total Tests:3, 2 are OK, 1 Failed",
          "RegressionTests::execRegressionTests, run 3 tests within"},
         {"TEST 'pass'"}}, // a TEST line, below the run's level 3
        // The argument may name the file through a variable; the command line's level
        // beats the file's.
        {three, {"$(ORV_LIST)", "--logLevel", "4"}, 0, {"TEST 'pass'", "2 are OK, 1 Failed"}},
        {quiet, {"@list"}, 0, {}, {"pass ran", "All 1 tests are OK"}},
        {quiet, {"@list", "--logLevel", "3"}, 0, {"pass ran"}},
        {"", {"@list"}, 1, {"RegressionTests::execRegressionTests, problems loading <" + path}},
    };
    for (Row const &row : rows) {
        ChildRun const run = runList(row.lines, row.args, env);
        SCOPED_TRACE(row.args.join(' ').toStdString() + "\n" + run.output.toStdString());
        EXPECT_EQ(run.exitCode, row.exitCode);
        orv::test::expectHasAndLacks(run.output, row.has, row.lacks);
    }
}

// The fatal handler ends the whole run after its 5 s: tests share the process.
TEST_F(RegressionRun, AFatalTestEndsTheRunWithStatusOne) {
    ChildRun const run = runList("pass\nfatal\npass\n", {"@list"});
    EXPECT_EQ(run.exitCode, 1) << run.output.toStdString();
    orv::test::expectHasAndLacks(run.output, {"TEST [001] 'pass', in", "bool expression failure:"},
                                 {"TEST [003]", "RegressionTests: Total Tests"});
}

// The bound: a test still running after --testTimeout seconds (600 by default) ends the
// process with status 1 after the summary of what ran.
TEST_F(RegressionRun, AHangingTestEndsTheProcessAtTheTimeLimit) {
    ChildRun const run = runList("pass\nhang\npass\n", {"@list", "--testTimeout", "1"});
    EXPECT_EQ(run.exitCode, 1) << run.output.toStdString();
    EXPECT_LT(run.ms, 10000);
    orv::test::expectHasAndLacks(
        run.output,
        {"RegressionTests::runTests, test [002] 'hang' still runs after 1 sec, the run ends",
         "~~~ RegressionTests: Total Tests:3,  1 are OK, 1 Failed, 1 did not run"},
        {"TEST [003]"});
}

} // namespace
