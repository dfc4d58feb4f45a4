// LoggerStart.cpp: the header of the log, start-up from the command line, the end of
// the logger thread, and the helpers that log on their own (debug, the debug scope).
#include "orv/Logger.h"

#include "orv/Appender.h"
#include "orv/CommandLine.h"
#include "orv/EnvVariables.h"
#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/OrvVersion.h"
#include "orv/XScheduler.h"
#include "tools/log/LoggerState.h"
#include "tools/thread/QtMutexLock.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace orv {

using logger::state;

namespace {

constexpr int debugBufferSize = 4096;
// How long quit waits at most for the logger thread to write what is queued.
constexpr int QUIT_WAIT_MS = 1200;

bool isLibraryLine(LogMessageString *msg) {
    std::vector<LogMessageString *> const &lines = XAdditionalLibInfos::libLogInfos();
    return std::find(lines.begin(), lines.end(), msg) != lines.end();
}

// The one static buffer of debug(); the mutex lets threads take turns in it.
void debugInto(unsigned int space, char const *format, va_list args) {
    static std::mutex bufferMutex;
    static char buffer[debugBufferSize];
    QString text;
    {
        std::lock_guard<std::mutex> lock(bufferMutex);
        unsigned int const blanks = std::min<unsigned int>(space, debugBufferSize - 1);
        std::fill(buffer, buffer + blanks, ' ');
        std::vsnprintf(buffer + blanks, debugBufferSize - blanks, format ? format : "", args);
        text = QString::fromLocal8Bit(buffer);
    }
    Logger::log(new LogMessageString(text), DEBUG, 0);
}

} // namespace

LogHeaderInfos::LogHeaderInfos() {
    Logger::setThreadIDMain();
    addString(xprintF("PID:$", QCoreApplication::applicationPid()));
    if (is_running_inside_VM())
        addString(QStringLiteral("VM:true"));
    addString(xprintF("CPU, threads:$", QThread::idealThreadCount()));
    // The line "OS :" stays out while this library has no text of the system's version.
    addString(xprintF("lib:Qt $", QT_VERSION_STR));
    addString(xprintF("lib:Orv $ - build at $ / $", OrvVersion::getVersion(),
                      OrvVersion::getTimestamp_Date(), OrvVersion::getTimestamp_Time()));
    for (LogMessageString *line : XAdditionalLibInfos::libLogInfos())
        messages.append(line);
}

LogHeaderInfos::~LogHeaderInfos() {
    for (LogMessageString *msg : messages)
        if (!isLibraryLine(msg))
            delete msg;
}

void LogHeaderInfos::addString(QString const &text) {
    auto *msg = new LogMessageString(text);
    msg->setLogLevel(INFO);
    messages.append(msg);
}

void LogHeaderInfos::addLogMessage(LogMessageString *msg) { messages.append(msg); }

void Logger::addHeaderString(QString const &text) {
    Logger &logger = getLogger();
    // The first accepted message reads the list under this mutex.
    QtMutexLock lock(&state().loggerMutex);
    logger.header.addString(text);
}

bool Logger::ini(CommandLine const &cmd, QList<Appender *> *appenders, unsigned int mask) {
    logger::State &s = state();
    if (s.instance && s.running.load()) {
        printToCout("Logger::ini, already called");
        return true;
    }
    delete s.instance;
    Logger *logger = new Logger(mask);
    if (appenders) {
        for (Appender *appender : *appenders)
            logger->addAppender(appender);
    } else if (cmd.isBool(QStringLiteral("logConsole"), true)) {
        logger->addAppender(new AppenderConsole(true));
    }
    if (cmd.hasKey(QStringLiteral("logFile")) && cmd.hasKey(QStringLiteral("logDir")) &&
        !iniFileAppender(cmd))
        return false;
    logger->startLogger();
    while (!isRunning())
        xSleep(20);
    setIncludeTraillerConsole(cmd.isBool(QStringLiteral("logTrailler"), true));
    s.ready.store(true);
    return true;
}

bool Logger::iniFileAppender(CommandLine const &cmd) {
    QString const file = cmd.getString(QStringLiteral("logFile"), QString());
    QString const dir = cmd.getString(QStringLiteral("logDir"), QString());
    QString const fullName = QString(dir + '/' + file).replace('/', '\\');
    unsigned long long const maxLen = cmd.getULong(QStringLiteral("logFileLen"), 0);
    Logger &logger = getLogger();
    if (!cmd.hasKey(QStringLiteral("logRotate"))) {
        if (AppenderFile *appender = AppenderFile::createAppenderFile(dir, file, maxLen)) {
            logger.addAppender(appender);
            addHeaderString(xprintF("Logger::iniFileAppender => '$'", fullName));
        }
        return true;
    }
    SCHEDULE const unit =
        XScheduler::fromString(cmd.getString(QStringLiteral("logRotate"), QString()));
    if (unit == SCHEDULE_NONE) {
        ppDebug("logRotate can be: second, minute, hour, day, month or year");
        return false;
    }
    if (AppenderFile *appender =
            SchedulerFileSystemAction::createAppenderFile(unit, dir, file, maxLen)) {
        logger.addAppender(appender);
        logger.scheduler->setSchedule(unit);
        logger.rotation.reset(new SchedulerFileSystemAction(&logger, appender, dir, file, maxLen));
        logger.scheduler->setSchedAction(logger.rotation.get());
        logger.scheduler->start();
    }
    return true;
}

void Logger::startLogger() {
    logger::State &s = state();
    if (s.running.load()) {
        printToCout("Logger::startLogger, already running !");
        return;
    }
    // Up before the thread is: messages simply wait in the queue.
    s.running.store(true);
    s.pool.start([this] { messageLoop(); });
}

void Logger::quit() {
    auto *msg = new LogMessageQuit();
    if (!isRunning()) {
        delete msg;
        return;
    }
    msg->setLogLevel(DEBUG);
    Logger &logger = getLogger();
    logger.logMessage(msg);
    // Nothing is written after the quit message: a rotation would only open empty files.
    // The rotation thread is gone when quit returns, so the program can end at once
    // (unless quit comes from that very thread, a fatal end inside a rotation).
    if (getCurrentThreadID() == logger.scheduler->threadID())
        logger.scheduler->stop();
    else
        logger.scheduler->stopJoin();
    // The loop ends once the quit message, and so all that came before it, has been
    // through the appenders: a program ends as soon as its log is out. The bound is
    // for an appender that hangs.
    state().pool.waitForDone(QUIT_WAIT_MS);
}

void loggerQuit() { Logger::quit(); }

void Logger::debug(char const *format, ...) {
    va_list args;
    va_start(args, format);
    debugInto(0, format, args);
    va_end(args);
}

void Logger::debug(unsigned int space, char const *format, ...) {
    va_list args;
    va_start(args, format);
    debugInto(space, format, args);
    va_end(args);
}

RESOURCE_LOGGER_DEBUG::RESOURCE_LOGGER_DEBUG(QString const &context)
    : savedMask(Logger::getLogLevel()), context(context) {
    Logger::setLogLevel(DEFAULT_LOG_MASK);
    if (!context.isEmpty())
        ppDebug("DEBUG-CONTEXT: <<< $ >>>", context);
}

RESOURCE_LOGGER_DEBUG::~RESOURCE_LOGGER_DEBUG() {
    if (!context.isEmpty())
        ppDebug("DEBUG-CONTEXT: <<< ~$ >>>", context);
    Logger::setLogLevel(savedMask);
}

} // namespace orv
