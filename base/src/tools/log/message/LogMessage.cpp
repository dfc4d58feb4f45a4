// LogMessage.cpp: message identity (thread, level) and sizes.
#include "orv/LogMessage.h"

#include "orv/Logger.h"
#include "tools/platform/OrvPlatform.h"

namespace orv {

LogMessage::LogMessage(unsigned int level)
    : threadID(platform::threadId()), mainThread(threadID == Logger::getThreadIDMain()),
      level(level) {}

LogMessage::~LogMessage() = default;

unsigned long long LogMessage::getSize() const { return 32; }

bool LogMessage::isQuitMessage() const { return false; }

void LogMessage::assign(LogMessage const *other) {
    number = other->number;
    threadID = other->threadID;
    level = other->level;
    mainThread = other->mainThread;
    space = other->space;
}

LogMessage *LogMessageString::createCopy() const { return new LogMessageString(*this); }

unsigned long long LogMessageString::getSize() const {
    return LogMessage::getSize() + 10 + 2 * static_cast<unsigned long long>(text.size());
}

} // namespace orv
