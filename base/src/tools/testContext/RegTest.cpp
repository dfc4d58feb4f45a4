// RegTest.cpp: one test of a regression run and the configuration line of a run.
#include "orv/RegressionTests.h"

#include "orv/CommandLine.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/StringFormat.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"

namespace orv {

namespace {

// The outcome lines carry the id of the regression runner in the high half of their
// level word instead of the library's, so that log filters can pick the outcome of a
// run out of everything the tests logged.
constexpr unsigned int REGRESSION_LINE_ID = 1000;

template <typename... Args>
void logOutcome(unsigned int level, char const *format, Args const &...args) {
    LogMessageString *msg = LogMessageString::create(format, args...);
    msg->setLogLevel(level, REGRESSION_LINE_ID);
    Logger::logPreparedMessage(msg);
}

} // namespace

int RegTest::exec(unsigned int number, Kernel &kernel) {
    if (testContext == nullptr) {
        ppError("RegTest::exec, testContext == nullptr");
        return -1;
    }
    QString const command = kernel.getCommand();
    ppTest("TEST '$'", command);
    quint64 const start = getMicroseconds();
    result = testContext->exec(kernel);
    QString const seconds = formatMicrosecond_as_Sec(getMicroseconds() - start);
    QString const place = formatFillZero(3, number);
    if (result == 0)
        logOutcome(INFO, "TEST [$] '$', in $ sec, OK", place, command, seconds);
    else
        logOutcome(ERROR, "TEST [$] '$' Error:$ => '$', in $ sec", place, command, result,
                   exitOrvErrorCodeToString(result), seconds);
    return result;
}

QString RegTest::toString() const {
    if (testContext == nullptr)
        return QStringLiteral("RegTest, testContext == nullptr");
    if (result == NOT_RUN_YET)
        return xprintF("$, NOT_RUN_YET", testContext->key());
    return xprintF("$, result:$", testContext->key(), result);
}

bool RegTestConfig::fromString(QString const &line) {
    CommandLine cmd;
    cmd.fromString(line);
    // A line that names only the level switches the counter reset off.
    resetLogLineNumber = cmd.isBool(QStringLiteral("resetLogLineNumber"), false);
    logLevel = cmd.getUInt(QStringLiteral("logLevel"), 3);
    return true;
}

} // namespace orv
