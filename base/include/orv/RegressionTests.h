// RegressionTests.h: runs a list of registered tests in one process, from a regression
// file or a name filter, and sums the results up.
//
//   int main(int argc, char **argv, char **envp) {              // prog tests.txt --logLevel 4
//       return orv::RegressionTests::execRegressionTests(argc, argv, envp);
//   }
//
// A regression file, line by line: a line holding "#" is skipped, so is an empty one;
// a line starting with "exit" ends the file; a line holding "RegTestConfig" sets the
// run up ("RegTestConfig --resetLogLineNumber false --logLevel 3"); any other line is
// a test: its registered name, then its arguments ("xmlTest --file $(RELPATH)/a.xml").
// $(RELPATH) is the directory of the file.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <vector>

namespace orv {

class Kernel;
class TestContext;

// One test of a run: the registered test and the line it runs with.
struct ORV_EXPORT RegTest {
    static constexpr int NOT_RUN_YET = -99999;

    // Not owned.
    TestContext *testContext = nullptr;
    QString cmdLine;
    int result = NOT_RUN_YET;

    // Runs the test on the kernel's command line (set from cmdLine by the run) as the
    // number-th of the run, logs the outcome and gives the test's result; -1 without
    // a test.
    int exec(unsigned int number, Kernel &kernel);
    // "<key>, NOT_RUN_YET" or "<key>, result:<n>".
    QString toString() const;
};

// How a run treats the log: the line counter starts at 0 for every test (so that two
// runs give logs that compare equal), and the level of the run (1 error ... 5 debug).
struct ORV_EXPORT RegTestConfig {
    bool resetLogLineNumber = true;
    unsigned int logLevel = 3;

    // Reads a configuration line; a key it doesn't hold takes false and 3. Always true.
    bool fromString(QString const &line);
};

// Filled once, run once on the calling thread, reported once. Tests share the process:
// one that crashes ends the run; one that runs longer than the time limit ends the
// process with status 1 after its report (see setTestTimeLimit).
class ORV_EXPORT RegressionTests {
public:
    // Seconds one test may take in a run before the process is ended.
    static constexpr unsigned int DEFAULT_TEST_TIME_LIMIT = 600;

    RegressionTests();
    virtual ~RegressionTests();

    // The program's entry for a regression run: "prog <file or filter> [--logLevel N]
    // [--testTimeout S]". 30 without an argument, 1 if the logger can't start or the
    // file can't be read, and 0 otherwise, whatever the tests gave: failures stand in
    // the summary of the log.
    static int execRegressionTests(int argc, char **const argv, char **envv);

    // False only if the file can't be mapped (a missing or an empty file); lines with
    // an unknown test are reported at ERROR and skipped.
    bool fromFile(QString const &file);
    // Every registered test whose name holds filter (any case; "" and "all" take all),
    // in name order. Always true.
    bool fromFilter(QString const &filter);
    // False with an ERROR line when the line names no registered test.
    bool addTest(QString const &line);
    // Runs the tests in order; 1 when a test line can't be parsed (the rest stay
    // NOT_RUN_YET), else 0, whatever the tests gave.
    int runTests(Kernel &kernel);
    // The run as execRegressionTests makes it, on a loaded list and a running logger:
    // the log set up by the configuration (a "logLevel" of the kernel's command line
    // beats the file's), the run and its summary. source names the list in the log.
    // The result of runTests.
    int runAndReport(Kernel &kernel, QString const &source);

    void show(unsigned int indent) const;
    // "*** RegressionTests: All N tests are OK" or the "~~~" line with the counts.
    void showResults(unsigned int indent) const;
    quint64 size() const { return tests.size(); }
    RegTestConfig const &config() const { return regConfig; }
    std::vector<RegTest> const &regTests() const { return tests; }
    // Tests that ran and gave 0.
    quint64 countOK() const;

    // Seconds; 0 lets a test run forever.
    void setTestTimeLimit(unsigned int seconds) { timeLimit = seconds; }
    unsigned int testTimeLimit() const { return timeLimit; }

private:
    std::vector<RegTest> tests;
    RegTestConfig regConfig;
    unsigned int timeLimit = DEFAULT_TEST_TIME_LIMIT;
};

} // namespace orv
