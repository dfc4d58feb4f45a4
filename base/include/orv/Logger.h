// Logger.h: the process-wide logger. One background thread takes the messages of
// the pp... family off a queue and hands them to the appenders; message numbers
// give one order over all threads.
//
//   orv::CommandLine cmd;                      // e.g. --logDir logs --logFile app.txt
//   orv::Logger::ini(cmd, nullptr, orv::DEFAULT_LOG_MASK);
//   orv::ppInfo("ready");                      // [000007] [INFO#] [..] [000000] ready
//   orv::Logger::quit();                       // what was queued is written
//
// Logger::printToCout works before the logger runs; until then everything else
// is formatted and discarded.
#pragma once

#include "orv/AtomicBits.h"
#include "orv/LogLevel.h"
#include "orv/XAtomic.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <memory>

namespace orv {

class Appender;
class AppenderLimitMemory;
class CommandLine;
class LogMessage;
class LogMessageString;
class XScheduler;
class XSchedulerAction;
class XMemFile;

// The lines that open every log. Building one fixes the program's main thread.
class ORV_EXPORT LogHeaderInfos {
public:
    LogHeaderInfos();
    ~LogHeaderInfos();
    LogHeaderInfos(LogHeaderInfos const &) = delete;
    LogHeaderInfos &operator=(LogHeaderInfos const &) = delete;

    // A line at INFO.
    void addString(QString const &text);
    // Takes ownership, except of the lines of XAdditionalLibInfos, which live on.
    void addLogMessage(LogMessageString *msg);
    QList<LogMessageString *>::const_iterator begin() const { return messages.begin(); }
    QList<LogMessageString *>::const_iterator end() const { return messages.end(); }
    int size() const { return messages.size(); }

private:
    QList<LogMessageString *> messages;
};

class ORV_EXPORT Logger {
public:
    explicit Logger(unsigned int mask);
    virtual ~Logger();
    Logger(Logger const &) = delete;
    Logger &operator=(Logger const &) = delete;

    // Create the instance with the default mask if there is none; nothing starts.
    // Not thread-safe: the first call must come from one thread.
    static Logger &getLogger();
    static void standardIni();

    // Options "logConsole", "logFile", "logDir", "logFileLen", "logRotate" and
    // "logTrailler". appenders (not owned) replace the console appender. False for a
    // bad "logRotate" value, and the logger doesn't start. A second call while
    // running says so on stdout and gives true.
    static bool ini(CommandLine const &cmd, QList<Appender *> *appenders, unsigned int mask);
    static bool iniFileAppender(CommandLine const &cmd);
    void startLogger();
    // Writes what was queued before, then ends the logger thread (waiting up to
    // 1.2 s). The logger still counts as running: later messages are queued and
    // nobody reads them.
    static void quit();

    static bool isRunning();
    static bool isReady();
    static bool isInitialized();

    // Sets the level word (with this library's id) and the indentation, when the
    // logger runs, and hands the message on. The logger owns msg from here on.
    static void log(LogMessage *msg, unsigned int level, unsigned int space);
    static void logPreparedMessage(LogMessage *msg);
    // text with a LogAttachment holding mem: a deep copy when copy, else mem's bytes
    // taken over (mem is left empty).
    static void logMem(XMemFile &mem, bool copy, unsigned int level, QString const &text);
    static void logMemCommand(XMemFile &mem, bool copy, QString const &text);
    static void logMemDebug(XMemFile &mem, bool copy, QString const &text);
    static void logMemError(XMemFile &mem, bool copy, QString const &text);
    static void logMemInfo(XMemFile &mem, bool copy, QString const &text);
    static void logMemRequest(XMemFile &mem, bool copy, QString const &text);
    static void logMemResponse(XMemFile &mem, bool copy, QString const &text);
    static void logMemState(XMemFile &mem, bool copy, QString const &text);
    static void logMemTest(XMemFile &mem, bool copy, QString const &text);
    static void logMemWarning(XMemFile &mem, bool copy, QString const &text);
    // Numbers and queues msg if its level passes the mask (quit messages always do);
    // any thread. Owns msg from here on. A null msg is fatal.
    void logMessage(LogMessage *msg);

    static void setLogLevel(unsigned int mask);
    static unsigned int getLogLevel();
    void setLogLevelMask(unsigned int mask);
    unsigned int getLogLevelMask() const;
    static void setLogLevelSimple(SIMPLE_LOG_LEVEL level);
    bool isLogLevelMatching(unsigned int level) const;
    // One slot, no stack.
    static void saveLogLevel();
    static void restoreLogLevel();
    static void showLogLevel();

    // Not owned. After removeAppender returns, the appender gets no more messages.
    void addAppender(Appender *appender);
    bool removeAppender(Appender *appender);
    bool hasAppenderConsole();
    bool hasAppenderFile();
    bool hasAppenderGUI();
    Appender *getAppenderGUI();
    // Waits until the queue is empty, then gives the first such appender or null.
    AppenderLimitMemory *getAppenderLimitMemory();
    void enableConsoleAppender(bool on);
    bool IsConsoleAppenderEnabled();
    static void setIncludeTraillerConsole(bool on);
    static bool isIncludeTraillerConsole();

    // Lines added after the first message was accepted aren't printed.
    static void addHeaderString(QString const &text);

    // One line on stdout with the simple trailer, under the console mutex, bypassing
    // queue and mask. A null text prints "ppCout(nullptr)".
    static void printToCout(QString const &text);
    static void printToCout(char const *text);
    // Whether stdout is a terminal: progress lines are for people, not for pipes and files.
    static bool isConsoleTerminal();
    // Rewrites the one status line at the foot of a terminal in place (no line end);
    // console lines written meanwhile appear above it. An empty text erases it. For
    // terminals only: the line holds control characters.
    static void printStatusLine(QString const &text);

    // printf-style lines at DEBUG, at most 4096 characters, through one static buffer.
    static void debug(char const *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
    static void debug(unsigned int space, char const *format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(2, 3);

    static void prepareForRegressionTests(bool on);
    static void resetLogMessageCounter();

    static void setThreadIDMain();
    static unsigned int getThreadIDMain();
    static bool isMainThread(unsigned int threadID);

    // The first message has been accepted and the header queued.
    static XAtomic<bool> atomicInitialized;
    // The message loop holds still while set.
    static XAtomic<bool> atomicPause;
    // The loop deletes messages after use; until set it keeps the first 501.
    static XAtomic<bool> atomicFlagDeleteMessage;

private:
    void logHeaderMessages();
    void messageLoop();
    Appender *firstAppender(bool (Appender::*test)() const);

    AtomicBits mask;
    LogHeaderInfos header;
    // Rotation thread, with an action only when "logRotate" is given.
    std::unique_ptr<XScheduler> scheduler;
    std::unique_ptr<XSchedulerAction> rotation;
    XAtomic<bool> headerQueued{false};
};

// Logger::quit().
ORV_EXPORT void loggerQuit();

// Whether the calling thread is the program's main thread.
ORV_EXPORT bool isMainThread();

// Widens the mask to every level for one scope, and marks the scope in the log
// when it has a context. Each object restores what it saved, so two threads can
// undo each other's.
class ORV_EXPORT RESOURCE_LOGGER_DEBUG {
public:
    explicit RESOURCE_LOGGER_DEBUG(QString const &context = QString());
    ~RESOURCE_LOGGER_DEBUG();
    RESOURCE_LOGGER_DEBUG(RESOURCE_LOGGER_DEBUG const &) = delete;
    RESOURCE_LOGGER_DEBUG &operator=(RESOURCE_LOGGER_DEBUG const &) = delete;

private:
    unsigned int savedMask;
    QString context;
};

} // namespace orv
