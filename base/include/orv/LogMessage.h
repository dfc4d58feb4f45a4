// LogMessage.h: the messages that travel through the logger.
//
//   auto *msg = new orv::LogMessageString("opened $", path);
//   msg->setLogLevel(orv::INFO);   // level word 0x640010
#pragma once

#include "orv/LogLevel.h"
#include "orv/XStringStream.h"

#include <QtCore/QString>

namespace orv {

class ORV_EXPORT LogMessage {
public:
    // Every message starts at DEBUG and gets its true word when it is logged.
    explicit LogMessage(unsigned int level = DEBUG);
    virtual ~LogMessage();

    virtual LogMessage *createCopy() const = 0;
    virtual unsigned long long getSize() const;
    virtual bool isQuitMessage() const;
    virtual QString toString() const = 0;

    // Copies number, thread, level, space and main-thread flag of `other`.
    void assign(LogMessage const *other);

    unsigned int getNumber() const { return number; }
    void setNumber(unsigned int n) { number = n; }
    unsigned int getThreadID() const { return threadID; }
    bool isMainThread() const { return mainThread; }

    unsigned int getLogLevel() const { return level; }
    // Stores the level with this library's id in the high half.
    void setLogLevel(unsigned int flags) { level = flags | LIBRARY_LEVEL_BITS; }
    unsigned int getLibIdentifier() const { return getLibraryID(level); }
    unsigned int getSpace() const { return space; }
    void setSpace(unsigned int blanks) { space = blanks; }

    bool isFatal() const { return level & FATAL; }
    bool isError() const { return level & ERROR; }
    bool isWarning() const { return level & WARN; }
    bool isInfo() const { return level & INFO; }
    bool isDebug() const { return level & DEBUG; }
    bool isTest() const { return level & TEST; }
    bool isCommand() const { return level & COMMAND; }
    bool isRequest() const { return level & REQUEST; }
    bool isResponse() const { return level & RESPONSE; }
    bool isEvent() const { return level & EVENT; }
    bool isState() const { return level & STATE; }
    bool isDestruct() const { return level & DESTRUCT; }

private:
    unsigned int number = 0;
    unsigned int threadID = 0;
    unsigned int space = 0;
    bool mainThread = false;
    unsigned int level = DEBUG;
};

class ORV_EXPORT LogMessageString : public LogMessage {
public:
    LogMessageString() = default;
    explicit LogMessageString(QString const &text) : text(text) {}
    template <typename... Args>
    explicit LogMessageString(char const *format, Args const &...args)
        : text(xprintF(format, args...)) {}
    LogMessageString(LogMessageString const &) = default;
    LogMessageString(LogMessageString &&) = default;

    LogMessage *createCopy() const override;
    unsigned long long getSize() const override;
    QString toString() const override { return text; }

private:
    QString text;
};

} // namespace orv
