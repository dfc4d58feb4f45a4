// Appender.h: the outputs of the logger (console, file, a bounded list in memory),
// the rotation of the log file on calendar boundaries, and a filter for Qt's messages.
//
//   orv::AppenderFile *file = orv::AppenderFile::createAppenderFile("logs", "app.txt", 0);
//   if (file) orv::Logger::getLogger().addAppender(file);   // not owned by the logger
//
// append() runs on the logger thread only; the switches are atomic, as other threads
// set them. The appenders complain through qDebug, so that a failure of the logger
// itself stays visible.
#pragma once

#include "orv/XAtomic.h"
#include "orv/XScheduler.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/qlogging.h>

#include <atomic>

namespace orv {

class LogMessage;
class Logger;

class ORV_EXPORT Appender {
public:
    explicit Appender(QString const &name);
    // Called on the logger thread; the message stays the caller's.
    virtual void append(LogMessage *msg) = 0;
    virtual ~Appender();
    virtual bool isAppenderConsole() const;
    virtual bool isAppenderGUI() const;
    virtual bool isAppenderFile() const;

    bool isEnabled() const { return enabled.load(); }
    void setEnabled(bool on) { enabled.store(on); }
    QString getName() const { return name; }

private:
    XAtomic<bool> enabled{true};
    QString name;
};

// Lines on stdout in UTF-8, indented by the message's space. Consumes attachments.
class ORV_EXPORT AppenderConsole : public Appender {
public:
    explicit AppenderConsole(bool includeTrailler);
    void append(LogMessage *msg) override;
    bool isAppenderConsole() const override { return true; }

    bool isIncludeTrailler() const { return includeTrailler.load(); }
    void setIncludeTrailler(bool on) { includeTrailler.store(on); }

    // "[number] [tag] [time] [thread] ", the time as atomicTimeFormat says:
    // 0 "%M:%S" and 1 "%H:%M:%S" with milliseconds, 2 and 3 the same with
    // microseconds, anything else an empty group.
    static QString trailerFromLogMessage(LogMessage *msg);
    // "<counter> <time> <thread> " for printToCout; each call counts one up.
    static QString trailerSimple();

    static std::atomic<unsigned int> atomicTimeFormat;

private:
    XAtomic<bool> includeTrailler;
};

// Lines in Latin-1, flushed one by one. Once the file has reached maxLen (0: no
// limit) it is full, and further messages are dropped with a qDebug line each.
class ORV_EXPORT AppenderFile : public Appender {
public:
    // Opens nothing: the factories below do.
    AppenderFile(QString const &path, unsigned long long maxLen);
    void append(LogMessage *msg) override;
    bool isAppenderFile() const override { return true; }

    // dir is made with its parents; an existing file is truncated. Null on failure,
    // with a line on stdout or qDebug.
    static AppenderFile *createAppenderFile(QString const &dir, QString const &file,
                                            unsigned long long maxLen);
    // Truncates or creates the file; false with a qDebug line when it can't.
    bool open(char const *complaint);
    void close();

    bool isFull() const { return full.load(); }
    void setFull(bool on) { full.store(on); }
    unsigned long long getMaxLen() const { return maxLen; }

private:
    QFile file;
    XAtomic<bool> full{false};
    unsigned long long maxLen;
    // The "%H:%M:%S" text of the last second seen: lines of one second share it.
    long long cachedSecond = -1;
    QByteArray cachedClock;
    // Reused for every line, so that writing a line allocates nothing.
    QByteArray line;
};

// Copies of the newest messages, at most maxMessages; when full, the entry at
// indexDrop goes (0: a sliding window). ERROR and FATAL messages are also kept in
// a second list without limit. No lock: read it through
// Logger::getAppenderLimitMemory(), while the logger is idle.
class ORV_EXPORT AppenderLimitMemory : public Appender {
public:
    // reserved is stored and not used.
    AppenderLimitMemory(unsigned int indexDrop, unsigned int maxMessages, unsigned int reserved);
    ~AppenderLimitMemory() override;
    void append(LogMessage *msg) override;

    QList<LogMessage *> const &getLogMessages() const { return messages; }
    QList<LogMessage *> const &getLogErrorMessages() const { return errorMessages; }
    // Trailer, indentation and text per message; ".." marks a gap in the numbers.
    void getLogMessagesAsStrings(QStringList &lines) const;
    void getLogErrorMessagesAsStrings(QStringList &lines) const;

private:
    unsigned int indexDrop;
    unsigned int maxMessages;
    unsigned int reserved;
    QList<LogMessage *> messages;
    QList<LogMessage *> errorMessages;
};

// Replaces the log file when the scheduler's calendar field moves on. Files are
// named <file>_<stamp>.txt, the stamp in UTC down to the scheduled field, so that
// they sort in time order.
class ORV_EXPORT SchedulerFileSystemAction : public XSchedulerAction {
public:
    SchedulerFileSystemAction(Logger *logger, AppenderFile *appender, QString const &dir,
                              QString const &file, unsigned long long maxLen);
    // Runs on the scheduler thread.
    void schedule(SCHEDULE schedule, XCalendarUTC const &calendar) override;
    static AppenderFile *createAppenderFile(SCHEDULE schedule, QString const &dir,
                                            QString const &file, unsigned long long maxLen);

private:
    Logger *logger;
    AppenderFile *appender;
    QString dir;
    QString file;
    unsigned long long maxLen;
};

// A Qt message handler that swallows messages holding one of the filter texts and
// writes the rest to stderr. The library doesn't install it:
//   orv::ConsoleFilterQt::addFilter("QFont::");
//   qInstallMessageHandler(orv::ConsoleFilterQt::daMessageOut);
class ORV_EXPORT ConsoleFilterQt {
public:
    static constexpr int MAX_MSG = 65536;

    static void daMessageOut(QtMsgType type, QMessageLogContext const &context,
                             QString const &message);
    static void addFilter(QString const &text);
    static void clearFilters();

private:
    static char *messageBuffer;
    // The 8-bit forms of listFilter, searched for in the buffer.
    static QList<QByteArray> listPointer;
    static QStringList listFilter;
    static bool flagIni;
};

} // namespace orv
