// RegressionTests.cpp: a list of tests from a regression file or a filter, its run on
// the calling thread, and the summary.
#include "orv/RegressionTests.h"

#include "orv/Appender.h"
#include "orv/EnvVariables.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/OrvTestFramework.h"
#include "orv/OrvTime.h"
#include "orv/StringFormat.h"
#include "orv/TestContext.h"
#include "orv/XFileMapper.h"
#include "orv/XLineReader.h"
#include "orv/XProgram.h"
#include "tools/testContext/HangWatch.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace orv {

namespace {

// Lines of a regression file longer than this come out in pieces, each read as a line.
constexpr quint64 LINE_BLOCK = 65536;

void showSummary(unsigned int indent, quint64 total, quint64 ok, quint64 failed, quint64 notRun) {
    if (ok == total) {
        QString const stars(68, QLatin1Char('*'));
        ppInfo(indent, stars);
        ppInfo(indent, "*** RegressionTests: All $ tests are OK", total);
        ppInfo(indent, stars);
        return;
    }
    QString const tildes(69, QLatin1Char('~'));
    ppInfo(indent, tildes);
    if (notRun == 0)
        ppInfo(indent, "~~~ RegressionTests: Total Tests:$, $ are OK, $ Failed", total, ok, failed);
    else
        ppInfo(indent, "~~~ RegressionTests: Total Tests:$,  $ are OK, $ Failed, $ did not run",
               total, ok, failed, notRun);
    ppInfo(indent, tildes);
}

// A test that hangs can't be taken back: its end is reported as far as it can be, and
// the process goes, with the status of a failed program. The tests before it finished
// and wrote their results before it started; it counts as failed, the rest as not run.
[[noreturn]] void endHangingRun(std::vector<RegTest> const &tests, size_t index,
                                unsigned int seconds) {
    ppError("RegressionTests::runTests, test [$] '$' still runs after $ sec, the run ends",
            formatFillZero(3, static_cast<qint64>(index + 1)), tests[index].cmdLine, seconds);
    quint64 ok = 0;
    for (size_t i = 0; i < index; ++i)
        ok += tests[i].result == 0 ? 1 : 0;
    showSummary(0, tests.size(), ok, index - ok + 1, tests.size() - index - 1);
    Logger::quit();
    std::fflush(stdout);
    // No static destructors: the hanging test still runs on the main thread.
    std::_Exit(EXIT_ORV_GENERAL);
}

} // namespace

RegressionTests::RegressionTests() = default;

RegressionTests::~RegressionTests() = default;

bool RegressionTests::fromFile(QString const &file) {
    XFileMapper mapper(file);
    // An empty file can't be mapped either: it counts as a file that can't be read.
    if (!mapper.mapReadOnly() || mapper.mem() == nullptr) {
        ppError("RegressionTests::fromFile, problems with '$'", file);
        return false;
    }
    XLineReader reader(mapper, LINE_BLOCK);
    while (char const *bytes = reader.nextLine()) {
        QString const line = QString::fromUtf8(bytes);
        // So a test line can't carry a trailing comment, and no argument holds a "#".
        if (line.contains(QLatin1Char('#')) || line.isEmpty())
            continue;
        if (line.startsWith(QLatin1String("exit")))
            break;
        // A configuration line is always read (fromString can't fail).
        if (line.contains(QLatin1String("RegTestConfig")))
            regConfig.fromString(line);
        else
            addTest(line);
    }
    return true;
}

bool RegressionTests::fromFilter(QString const &filter) {
    for (TestContext *test : TestContextAdder::getTests(filter))
        tests.push_back(RegTest{test, test->key(), RegTest::NOT_RUN_YET});
    return true;
}

bool RegressionTests::addTest(QString const &line) {
    // A line that doesn't parse (an open quote) has no command, so no test: it is
    // reported here, after the parser's own line, and skipped.
    CommandLine cmd;
    cmd.fromString(line);
    TestContext &test = TestContextAdder::getTestContext(cmd.getCommand());
    if (!test) {
        ppError("RegressionTests::addTest, test <$> not found", cmd.getCommand());
        return false;
    }
    tests.push_back(RegTest{&test, line, RegTest::NOT_RUN_YET});
    return true;
}

int RegressionTests::runTests(Kernel &kernel) {
    ppInfo(QString(68, QLatin1Char('*')));
    std::unique_ptr<regression::HangWatch> watch;
    if (timeLimit != 0)
        watch = std::make_unique<regression::HangWatch>(
            timeLimit, [this](size_t index) { endHangingRun(tests, index, timeLimit); });
    QString const levelKey = QStringLiteral("logLevel");
    for (size_t i = 0; i < tests.size(); ++i) {
        RegTest &test = tests[i];
        if (regConfig.resetLogLineNumber)
            Logger::resetLogMessageCounter();
        if (!kernel.fromString(test.cmdLine)) {
            ppError("problems with '$'", test.cmdLine);
            return 1;
        }
        bool const ownLevel = kernel.hasKey(levelKey);
        if (ownLevel) {
            Logger::saveLogLevel();
            Logger::setLogLevel(mapToLogLevelFlags(kernel.getUInt(levelKey, 3)));
        }
        if (watch)
            watch->started(i);
        test.exec(static_cast<unsigned int>(i + 1), kernel);
        if (watch)
            watch->ended();
        if (ownLevel)
            Logger::restoreLogLevel();
        ppTest("");
    }
    if (regConfig.resetLogLineNumber)
        Logger::resetLogMessageCounter();
    return 0;
}

int RegressionTests::runAndReport(Kernel &kernel, QString const &source) {
    // Read before the first test replaces the kernel's command line.
    bool const levelGiven = kernel.hasKey(QStringLiteral("logLevel"));
    Logger::prepareForRegressionTests(regConfig.resetLogLineNumber);
    if (!levelGiven)
        Logger::setLogLevelSimple(static_cast<SIMPLE_LOG_LEVEL>(regConfig.logLevel));
    ppInfo("RegressionTests, <<<$>>>",
           QDir::toNativeSeparators(QFileInfo(source).absoluteFilePath()));
    ppInfo("RegressionTests::execRegressionTests, run $ tests now...", size());
    quint64 const start = getMicroseconds();
    int const result = runTests(kernel);
    showResults(0);
    ppInfo("RegressionTests::execRegressionTests, run $ tests within $ sec", size(),
           formatMicrosecond_as_Sec(getMicroseconds() - start));
    return result;
}

int RegressionTests::execRegressionTests(int argc, char **const argv, char **envv) {
    int count = argc;
    KernelTerminal kernel(count, argv, envv, false);
    if (argc < 2)
        return EXIT_ORV_MAIN_HELPER;
    QString const arg = replaceEnv(QString::fromLocal8Bit(argv[1]));
    OrvTestFramework framework(kernel);
    OrvTestFramework::setTesting(true);
    framework.addLogAppender(new AppenderConsole(true));
    if (!framework.iniSimple(kernel.getUInt(QStringLiteral("logLevel"), 3))) {
        Logger::printToCout(
            "RegressionTests::execRegressionTests, cannot initalize test framework");
        return EXIT_ORV_GENERAL;
    }
    RegressionTests regression;
    regression.setTestTimeLimit(
        kernel.getUInt(QStringLiteral("testTimeout"), DEFAULT_TEST_TIME_LIMIT));
    QFileInfo const file(arg);
    if (file.exists()) {
        if (!regression.fromFile(arg)) {
            ppError("RegressionTests::execRegressionTests, problems loading <$>", arg);
            Logger::quit();
            return EXIT_ORV_GENERAL;
        }
        // Test lines may name files beside the regression file as $(RELPATH)/name.
        setEnv(QStringLiteral("RELPATH"), file.absolutePath());
    } else {
        regression.fromFilter(arg);
    }
    regression.runAndReport(kernel, arg);
    Logger::quit();
    // Failures stand in the summary, not in the status.
    return EXIT_ORV_OK;
}

void RegressionTests::show(unsigned int indent) const {
    ppInfo(indent, "RegressionTests: [$]", size());
    for (RegTest const &test : tests)
        ppInfo(indent + 4, test.toString());
}

quint64 RegressionTests::countOK() const {
    quint64 ok = 0;
    for (RegTest const &test : tests)
        ok += test.result == 0 ? 1 : 0;
    return ok;
}

void RegressionTests::showResults(unsigned int indent) const {
    quint64 notRun = 0;
    for (RegTest const &test : tests)
        notRun += test.result == RegTest::NOT_RUN_YET ? 1 : 0;
    quint64 const ok = countOK();
    showSummary(indent, size(), ok, size() - ok - notRun, notRun);
}

} // namespace orv
