// Logger.cpp: console output, the main thread's id and the hand-over of messages.
#include "orv/Logger.h"

#include "orv/LogMessage.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QByteArray>

#include <atomic>
#include <cstdio>
#include <mutex>

namespace orv {

namespace {

std::mutex consoleMutex;
std::atomic<bool> running{false};
// Libraries are loaded by the main thread, so this is right before any logger exists.
std::atomic<unsigned int> threadIDMain{platform::threadId()};

void writeConsoleLine(QByteArray line) {
    line.append('\n');
    std::lock_guard<std::mutex> lock(consoleMutex);
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fflush(stdout);
}

} // namespace

void Logger::printToCout(QString const &text) { writeConsoleLine(text.toLocal8Bit()); }

void Logger::printToCout(char const *text) {
    writeConsoleLine(QByteArray(text ? text : "ppCout(nullptr)"));
}

bool Logger::isRunning() { return running.load(); }

void Logger::log(LogMessage *msg, unsigned int level, unsigned int space) {
    if (isRunning()) {
        msg->setLogLevel(level);
        msg->setSpace(space);
    }
    logMessage(msg);
}

void Logger::logMessage(LogMessage *msg) {
    // No logger thread takes messages yet: they are formatted, then discarded.
    delete msg;
}

void Logger::setThreadIDMain() { threadIDMain.store(platform::threadId()); }

unsigned int Logger::getThreadIDMain() { return threadIDMain.load(); }

bool Logger::isMainThread(unsigned int threadID) { return threadID == threadIDMain.load(); }

bool isMainThread() { return Logger::isMainThread(platform::threadId()); }

} // namespace orv
