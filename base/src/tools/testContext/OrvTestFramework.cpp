// OrvTestFramework.cpp: the inner part of main: logger start, one test run or the
// list of tests, and the restart the program may have asked for.
#include "orv/OrvTestFramework.h"

#include "orv/Appender.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/StringFormat.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"

#include <cstdlib>

namespace orv {

XAtomic<bool> OrvTestFramework::atomicFlagTesting{false};

OrvTestFramework::OrvTestFramework(Kernel &kernel) : kernel(&kernel) {}

OrvTestFramework::~OrvTestFramework() = default;

void OrvTestFramework::addLogAppender(Appender *appender) {
    if (appender->isAppenderConsole()) {
        for (Appender const *present : appenders) {
            if (present->isAppenderConsole())
                return;
        }
    }
    appenders.append(appender);
}

bool OrvTestFramework::iniSimple(unsigned int level) {
    return iniTestFramework(mapToLogLevelFlags(level));
}

bool OrvTestFramework::iniTestFramework(unsigned int logFlags) {
    return Logger::ini(*kernel, &appenders, logFlags);
}

int OrvTestFramework::execTest() {
    return TestContextAdder::getTestContext(kernel->getCommand()).exec(*kernel);
}

bool OrvTestFramework::hasTest(QString const &name) { return TestContextAdder::hasTest(name); }

unsigned int OrvTestFramework::stringToLogLevel(QString const &text) {
    if (text == QLatin1String("debug"))
        return 5118;
    if (text == QLatin1String("test"))
        return 990;
    if (text == QLatin1String("info"))
        return 926;
    if (text == QLatin1String("warn") || text == QLatin1String("warning"))
        return 910;
    if (text == QLatin1String("err") || text == QLatin1String("error"))
        return 902;
    return 8190;
}

void OrvTestFramework::setTesting(bool on) { atomicFlagTesting.store(on); }

bool OrvTestFramework::isTesting() { return atomicFlagTesting.load(); }

namespace {

// The logger can't say it failed: the console and a pause to read it are all there is.
[[noreturn]] void failStart(std::initializer_list<char const *> lines, bool pause) {
    for (char const *line : lines)
        Logger::printToCout(line);
    if (pause)
        xSleep(3000);
    std::exit(1);
}

int runNamedTest(KernelTerminal &kernel, QString const &command) {
    OrvTestFramework framework(kernel);
    framework.addLogAppender(new AppenderConsole(true));
    unsigned int const mask =
        OrvTestFramework::stringToLogLevel(kernel.getString(QStringLiteral("logLevel"), ""));
    if (!framework.iniTestFramework(mask))
        failStart({"OrvTestFramework::mainTest - FAILED !", "EXIT PROGRAM NOW"}, true);
    OrvTestFramework::setTesting(true);
    QString const dashes(82, '-');
    ppTest("executing test '$'", command);
    ppTest("");
    ppTest(dashes);
    quint64 const start = getMicroseconds();
    int const result = framework.execTest();
    quint64 const end = getMicroseconds();
    ppTest(dashes);
    ppTest("");
    ppTest("");
    QString const frame(54, result == 0 ? '*' : '~');
    char const *const mark = result == 0 ? "***" : "~~~";
    ppTest(frame);
    ppTest("$ '$', result:$, executed in $ sec", mark, command, result,
           formatMicrosecond_as_Sec(end - start));
    ppTest(frame);
    if (result != 0) {
        ppError("");
        ppError("EXIT_ORV_ERROR $ - '$'", result, exitOrvErrorCodeToString(result));
    }
    TestContextAdder::deleteAll();
    Logger::quit();
    return result;
}

// Listing is a failure exit on purpose: only a test that ran and returned 0 gives 0.
int listTests(KernelTerminal &kernel, QString const &command) {
    OrvTestFramework framework(kernel);
    framework.addLogAppender(new AppenderConsole(false));
    if (!framework.iniTestFramework(DEFAULT_LOG_MASK)) {
        if (command.isEmpty())
            failStart({"OrvTestFramework::mainTest - FAILED !", "", "test no arguments - ?", "",
                       "EXIT PROGRAM NOW"},
                      true);
        QByteArray const which = "test '" + command.toLocal8Bit() + "' ?";
        failStart({"OrvTestFramework::mainTest - FAILED !", "", which.constData(), "",
                   "test no arguments - ?"},
                  false);
    }
    TestContextAdder::showTests(4, command);
    if (!command.isEmpty() && command != QLatin1String("all")) {
        ppDebug("");
        ppDebug("test '$' not found", command);
    }
    Logger::quit();
    return 1;
}

} // namespace

int OrvTestFramework::mainTest(KernelTerminal &kernel) {
    QString const command = kernel.getCommand();
    if (!command.isEmpty() && hasTest(command))
        return runNamedTest(kernel, command);
    return listTests(kernel, command);
}

int OrvTestFramework::mainTest(int argc, char **const argv, char **envv, bool insertPlaceHolder) {
    int result = 0;
    {
        int count = argc;
        KernelTerminal kernel(count, argv, envv, insertPlaceHolder);
        if (!KernelTerminalConfig::flagTesting)
            kernel.setCommand(KernelTerminalConfig::mainMethod);
        if (!KernelTerminalConfig::flagWindowsConsole)
            hideWindowsConsole();
        result = mainTest(kernel);
    }
    if (Kernel::isRebootProgram())
        Kernel::rebootProgram();
    return result;
}

} // namespace orv
