// LogMessage.cpp: message identity (thread, time, level), attachments and sizes.
#include "orv/LogMessage.h"

#include "orv/LogAttachment.h"
#include "orv/Logger.h"
#include "orv/XError.h"
#include "tools/platform/OrvPlatform.h"

namespace orv {

LogAttachment::~LogAttachment() = default;

LogMessage::LogMessage(bool) : time(false) {}

namespace {

// Asked of the system once per thread: every message would pay a system call otherwise.
unsigned int callingThreadId() {
    thread_local unsigned int const id = platform::threadId();
    return id;
}

} // namespace

LogMessage::LogMessage(unsigned int level)
    : threadID(callingThreadId()), time(true), mainThread(threadID == Logger::getThreadIDMain()),
      level(level) {}

LogMessage::LogMessage(LogMessage const &other) : time(false) { assign(&other); }

void LogMessage::clearForReuse() {
    number = 0;
    space = 0;
    delete detach();
    level = DEBUG;
}

void LogMessage::stampNow() {
    threadID = callingThreadId();
    time.fromNow();
    mainThread = threadID == Logger::getThreadIDMain();
}

LogMessage::~LogMessage() { delete attachment; }

unsigned long long LogMessage::getSize() const {
    return 32 + (attachment ? attachment->length() : 0);
}

bool LogMessage::isQuitMessage() const { return false; }

void LogMessage::assign(LogMessage const *other) {
    if (other == nullptr)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("lm == NULL"));
    number = other->number;
    threadID = other->threadID;
    time = other->time;
    level = other->level.flags();
    mainThread = other->mainThread;
    space = other->space;
    LogAttachment *taken = other->detach();
    if (taken) {
        delete attachment;
        attachment = taken;
    }
}

LogAttachment *LogMessage::detach() const {
    LogAttachment *taken = attachment;
    attachment = nullptr;
    return taken;
}

LogMessage *LogMessageString::createCopy() const { return new LogMessageString(*this); }

unsigned long long LogMessageString::getSize() const {
    return LogMessage::getSize() + 10 + 2 * static_cast<unsigned long long>(text.size());
}

LogMessage *LogMessageQuit::createCopy() const {
    auto *copy = new LogMessageQuit();
    copy->assign(this);
    return copy;
}

} // namespace orv
