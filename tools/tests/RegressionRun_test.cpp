// RegressionRun_test.cpp: a program whose main is a regression run, end to end: its
// statuses, the summary of failing runs, a test that ends the process through the fatal
// handler, and one that hangs until the time limit ends the process.
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

namespace {

struct HelperRun {
    int exitCode = -1;
    QString output;
    qint64 ms = 0;
};

// Runs the helper for at most 30 s; a run that takes longer is killed and gives -1.
HelperRun runHelper(QStringList const &args,
                    QProcessEnvironment const &env = QProcessEnvironment::systemEnvironment()) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(env);
    QElapsedTimer timer;
    timer.start();
    process.start(ORV_REGRESSION_HELPER, args);
    HelperRun run;
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.ms = timer.elapsed();
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    run.output = QString::fromUtf8(process.readAll());
    return run;
}

class RegressionRun : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }

    QString list(QByteArray const &lines) {
        QString const path = dir.filePath("list.txt");
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(lines);
        return path;
    }

    QTemporaryDir dir;
};

// Each run gives its status and output lines that hold every text of has and none of
// lacks. "@list" stands for the path of a file with the row's lines.
TEST_F(RegressionRun, StatusIsZeroWhateverTheTestsGave) {
    QFile(dir.filePath("data.txt")).open(QIODevice::WriteOnly);
    QString const path = dir.filePath("list.txt");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("ORV_LIST", path);
    QByteArray const three = "pass\nfail\nfileExists --file $(RELPATH)/data.txt\n";
    QByteArray const quiet = "RegTestConfig --logLevel 1\npass\n";
    struct Row {
        QByteArray lines;
        QStringList args;
        int exitCode;
        QStringList has, lacks;
    } const rows[] = {
        {"", {}, 30, {}, {"RegressionTests"}},
        {"", {"zzz"}, 0, {"RegressionTests, <<<", "*** RegressionTests: All 0 tests are OK"}, {}},
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
        {three, {"$(ORV_LIST)", "--logLevel", "4"}, 0, {"TEST 'pass'", "2 are OK, 1 Failed"}, {}},
        {quiet, {"@list"}, 0, {}, {"pass ran", "All 1 tests are OK"}},
        {quiet, {"@list", "--logLevel", "3"}, 0, {"pass ran"}, {}},
        {"", {"@list"}, 1, {"RegressionTests::execRegressionTests, problems loading <" + path}, {}},
    };
    for (Row const &row : rows) {
        list(row.lines);
        QStringList args = row.args;
        args.replaceInStrings("@list", path);
        HelperRun const run = runHelper(args, env);
        SCOPED_TRACE(args.join(' ').toStdString() + "\n" + run.output.toStdString());
        EXPECT_EQ(run.exitCode, row.exitCode);
        for (QString const &text : row.has)
            EXPECT_TRUE(run.output.contains(text)) << text.toStdString();
        for (QString const &text : row.lacks)
            EXPECT_FALSE(run.output.contains(text)) << text.toStdString();
    }
}

// The fatal handler ends the whole run after its 5 s: tests share the process.
TEST_F(RegressionRun, AFatalTestEndsTheRunWithStatusOne) {
    HelperRun const run = runHelper({list("pass\nfatal\npass\n")});
    EXPECT_EQ(run.exitCode, 1) << run.output.toStdString();
    EXPECT_TRUE(run.output.contains("TEST [001] 'pass', in"));
    EXPECT_TRUE(run.output.contains("bool expression failure:"));
    EXPECT_FALSE(run.output.contains("TEST [003]"));
    EXPECT_FALSE(run.output.contains("RegressionTests: Total Tests"));
}

// The bound: a test still running after --testTimeout seconds (600 by default) ends the
// process with status 1 after the summary of what ran.
TEST_F(RegressionRun, AHangingTestEndsTheProcessAtTheTimeLimit) {
    HelperRun const run = runHelper({list("pass\nhang\npass\n"), "--testTimeout", "1"});
    EXPECT_EQ(run.exitCode, 1) << run.output.toStdString();
    EXPECT_LT(run.ms, 10000);
    EXPECT_TRUE(run.output.contains(
        "RegressionTests::runTests, test [002] 'hang' still runs after 1 sec, the run ends"))
        << run.output.toStdString();
    EXPECT_TRUE(run.output.contains(
        "~~~ RegressionTests: Total Tests:3,  1 are OK, 1 Failed, 1 did not run"));
    EXPECT_FALSE(run.output.contains("TEST [003]"));
}

} // namespace
