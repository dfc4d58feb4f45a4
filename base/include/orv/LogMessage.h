// LogMessage.h: the messages that travel through the logger, and the memory block
// that can ride along with one.
//
//   auto *msg = new orv::LogMessageString("opened $", path);
//   msg->attach(new orv::LogAttachment(bytes));   // the message owns it now
//   msg->setLogLevel(orv::INFO);                   // level word 0x640010
#pragma once

#include "orv/AtomicBits.h"
#include "orv/LogLevel.h"
#include "orv/OrvTime.h"
#include "orv/XStringStream.h"

#include <QtCore/QString>

namespace orv {

class LogAttachment;

class ORV_EXPORT LogMessage {
public:
    // An empty message: no thread, no time.
    explicit LogMessage(bool);
    // Every message starts at DEBUG and gets its true word when it is logged.
    explicit LogMessage(unsigned int level = DEBUG);
    virtual ~LogMessage();
    LogMessage &operator=(LogMessage const &) = delete;

    virtual LogMessage *createCopy() const = 0;
    // 32, plus the attachment's length.
    virtual unsigned long long getSize() const;
    virtual bool isQuitMessage() const;
    virtual QString toString() const = 0;

    // Copies number, thread, time, level, space and main-thread flag of `other` and
    // takes its attachment away. A null `other` is fatal.
    void assign(LogMessage const *other);

    unsigned int getNumber() const { return number; }
    void setNumber(unsigned int n) { number = n; }
    unsigned int getThreadID() const { return threadID; }
    OrvTime const &getTime() const { return time; }
    bool isMainThread() const { return mainThread; }

    unsigned int getLogLevel() const { return level.flags(); }
    // Stores the level with this library's id in the high half.
    void setLogLevel(unsigned int flags) { level = flags | LIBRARY_LEVEL_BITS; }
    // Stores the level with another id in the high half: for lines that speak for a
    // part of the program rather than for this library.
    void setLogLevel(unsigned int flags, unsigned int libraryId) {
        level = flags | (libraryId << 16);
    }
    unsigned int getLibIdentifier() const { return getLibraryID(level.flags()); }
    unsigned int getSpace() const { return space; }
    void setSpace(unsigned int blanks) { space = blanks; }

    bool isFatal() const { return level.isFlag(FATAL); }
    bool isError() const { return level.isFlag(ERROR); }
    bool isWarning() const { return level.isFlag(WARN); }
    bool isInfo() const { return level.isFlag(INFO); }
    bool isDebug() const { return level.isFlag(DEBUG); }
    bool isTest() const { return level.isFlag(TEST); }
    bool isCommand() const { return level.isFlag(COMMAND); }
    bool isRequest() const { return level.isFlag(REQUEST); }
    bool isResponse() const { return level.isFlag(RESPONSE); }
    bool isEvent() const { return level.isFlag(EVENT); }
    bool isState() const { return level.isFlag(STATE); }
    bool isDestruct() const { return level.isFlag(DESTRUCT); }

    // Takes ownership; an attachment held before is not freed.
    void attach(LogAttachment *memory) { attachment = memory; }
    LogAttachment *getAttachment() const { return attachment; }
    bool hasAttachment() const { return attachment != nullptr; }
    // Hands the attachment to the caller, who owns it from now on; null if none.
    LogAttachment *detach() const;

protected:
    // A copy is an assign: the attachment moves to the copy, as it has one owner.
    LogMessage(LogMessage const &other);
    // For a message used again: clearForReuse() makes it blank (DEBUG, number and
    // space 0, no attachment: one still held is freed), stampNow() gives it the
    // calling thread and the time, as the constructor does.
    void clearForReuse();
    void stampNow();

private:
    unsigned int number = 0;
    unsigned int threadID = 0;
    OrvTime time;
    unsigned int space = 0;
    bool mainThread = false;
    mutable LogAttachment *attachment = nullptr;
    AtomicBits level;
};

class ORV_EXPORT LogMessageString : public LogMessage {
public:
    LogMessageString() = default;
    explicit LogMessageString(QString const &text) : text(text) {}
    template <typename... Args>
    explicit LogMessageString(char const *format, Args const &...args)
        : text(xprintF(format, args...)) {}
    // Both take the other's attachment.
    LogMessageString(LogMessageString const &other) : LogMessage(other), text(other.text) {}
    LogMessageString(LogMessageString &&other) : LogMessage(other), text(std::move(other.text)) {}

    // A message stamped like a new one, with an empty text: taken from the free list
    // of messages the logger is done with when it has one, else a new one. The
    // logger owns it once it is logged, as with any message.
    static LogMessageString *obtain();
    // obtain() with the `$` formatting of format and args as its text.
    template <typename... Args>
    static LogMessageString *create(char const *format, Args const &...args) {
        LogMessageString *msg = obtain();
        if (format) {
            msg->text.reserve(static_cast<int>(std::strlen(format) + 12 * sizeof...(args)));
            format::formatInto(msg->text, format, args...);
        }
        return msg;
    }
    static LogMessageString *create(QString const &text) {
        LogMessageString *msg = obtain();
        msg->text = text;
        return msg;
    }
    // Frees msg, or keeps a plain LogMessageString on the free list for obtain().
    // For messages nobody else holds: the logger's, once it is done with them.
    static void recycle(LogMessage *msg);

    LogMessage *createCopy() const override;
    // The base size + 10 + two bytes per character.
    unsigned long long getSize() const override;
    QString toString() const override { return text; }

private:
    QString text;
};

// The poison pill of the logger thread; it passes every mask.
class ORV_EXPORT LogMessageQuit : public LogMessage {
public:
    LogMessageQuit() = default;

    LogMessage *createCopy() const override;
    bool isQuitMessage() const override { return true; }
    QString toString() const override { return QStringLiteral("QUIT"); }
};

} // namespace orv
