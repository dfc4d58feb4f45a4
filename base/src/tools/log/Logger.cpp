// Logger.cpp: acceptance and numbering of messages, the queue, the logger thread,
// the appender list, masks and the console output that works before the logger runs.
#include "orv/Logger.h"

#include "orv/Appender.h"
#include "orv/OrvTime.h"
#include "orv/XError.h"
#include "orv/XScheduler.h"
#include "tools/log/LoggerState.h"
#include "tools/platform/OrvPlatform.h"
#include "tools/thread/QtMutexLock.h"

#include <QtCore/QByteArray>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <thread>

namespace orv {

namespace logger {

void MessageQueue::push(LogMessage *msg, std::atomic<unsigned long long> &counter) {
    pending.fetch_add(1, std::memory_order_relaxed);
    bool wake = false;
    {
        std::lock_guard<std::mutex> lock(mutex);
        msg->setNumber(static_cast<unsigned int>(counter.fetch_add(1)));
        messages.push_back(msg);
        wake = consumerWaiting;
        consumerWaiting = false;
    }
    // Only a sleeping consumer needs the (costly) wake-up; a busy one finds the
    // message when it comes back for the next batch.
    if (wake)
        ready.notify_one();
}

void MessageQueue::takeAll(std::vector<LogMessage *> &batch) {
    std::unique_lock<std::mutex> lock(mutex);
    if (messages.empty()) {
        // A short nap before the real wait: under steady logging the next messages
        // arrive meanwhile, and the callers are spared a wake-up call each.
        lock.unlock();
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        lock.lock();
    }
    while (messages.empty()) {
        consumerWaiting = true;
        ready.wait(lock);
    }
    // batch comes back empty: the two vectors trade their storage, and neither
    // side allocates once both have grown to the usual batch size.
    batch.swap(messages);
}

State &state() {
    static State *s = new State();
    return *s;
}

void writeLine(QByteArray line) {
    line.append('\n');
    std::lock_guard<std::mutex> lock(state().statusMutex);
    if (!state().statusLine.isEmpty())
        line = "\r\033[K" + line + state().statusLine;
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fflush(stdout);
}

void waitUntilIdle(int ms) {
    auto const end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    while (!state().queue.isIdle() && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace logger

using logger::state;

namespace {

// Libraries are loaded by the main thread, so this is right before any logger exists.
std::atomic<unsigned int> threadIDMain{platform::threadId()};

// The number of messages the loop keeps before it starts deleting (the header and
// the first lines of a program, for a debugger to find).
constexpr unsigned int keptMessagesLimit = 500;

template <typename T> T *firstOf(std::vector<Appender *> const &appenders) {
    for (Appender *appender : appenders)
        if (auto *match = dynamic_cast<T *>(appender))
            return match;
    return nullptr;
}

} // namespace

XAtomic<bool> Logger::atomicInitialized{false};
XAtomic<bool> Logger::atomicPause{false};
XAtomic<bool> Logger::atomicFlagDeleteMessage{false};

Logger::Logger(unsigned int mask) : mask(mask), scheduler(new XScheduler()) {
    state().instance = this;
}

Logger::~Logger() {
    if (scheduler)
        scheduler->stopJoin();
    if (state().instance == this)
        state().instance = nullptr;
}

Logger &Logger::getLogger() {
    if (state().instance == nullptr)
        new Logger(DEFAULT_LOG_MASK);
    return *state().instance;
}

void Logger::standardIni() { getLogger(); }

bool Logger::isRunning() { return state().running.load(); }

bool Logger::isReady() { return state().ready.load(); }

bool Logger::isInitialized() { return atomicInitialized.load(); }

void Logger::log(LogMessage *msg, unsigned int level, unsigned int space) {
    if (msg == nullptr)
        nullPointerHandling("Logger", 742, QStringLiteral("msg == NULL"));
    if (!isRunning()) {
        // Nobody would ever read it; freed rather than kept.
        LogMessageString::recycle(msg);
        return;
    }
    msg->setLogLevel(level);
    msg->setSpace(space);
    getLogger().logMessage(msg);
}

void Logger::logPreparedMessage(LogMessage *msg) {
    if (state().instance == nullptr) {
        if (msg == nullptr)
            nullPointerHandling("Logger", 742, QStringLiteral("msg == NULL"));
        delete msg;
        return;
    }
    state().instance->logMessage(msg);
}

void Logger::logMessage(LogMessage *msg) {
    if (msg == nullptr)
        nullPointerHandling("Logger", 742, QStringLiteral("msg == NULL"));
    logger::State &s = state();
    // A message that the mask or a stopped logger drops is freed at once: it gets no
    // number, so the numbers in the output have no gaps.
    if ((!msg->isQuitMessage() && !mask.isFlag(msg->getLogLevel())) || !s.running.load()) {
        LogMessageString::recycle(msg);
        return;
    }
    if (!headerQueued.load()) {
        QtMutexLock lock(&s.loggerMutex);
        if (!headerQueued.load()) {
            atomicInitialized.store(true);
            logHeaderMessages();
            if (s.regression.load())
                s.counter.store(0);
            // Only now may others skip the mutex: their numbers follow the header's.
            headerQueued.store(true);
        }
    }
    s.queue.push(msg, s.counter);
}

void Logger::logHeaderMessages() {
    logger::State &s = state();
    // Copies go through the queue, so that the loop may delete what it wrote while
    // the list keeps its lines.
    for (LogMessageString *line : header)
        s.queue.push(line->createCopy(), s.counter);
}

void Logger::messageLoop() {
    logger::State &s = state();
    std::vector<LogMessage *> batch;
    for (;;) {
        s.queue.takeAll(batch);
        for (size_t i = 0; i < batch.size(); ++i) {
            LogMessage *msg = batch[i];
            if (msg == nullptr) {
                printToCout("Logger::run - msg == nullptr - uh!");
                xSleep(3000);
                return;
            }
            while (atomicPause.load())
                xSleep(10);
            {
                std::lock_guard<std::mutex> lock(s.appenderMutex);
                for (Appender *appender : s.appenders)
                    if (appender->isEnabled())
                        appender->append(msg);
            }
            bool const quit = msg->isQuitMessage();
            if (atomicFlagDeleteMessage.load()) {
                LogMessageString::recycle(msg);
            } else {
                s.kept.push_back(msg);
                if (s.kept.size() > keptMessagesLimit)
                    atomicFlagDeleteMessage.store(true);
            }
            s.queue.done(1);
            if (quit) {
                // Queued after the quit message: nobody reads them.
                for (size_t late = i + 1; late < batch.size(); ++late)
                    LogMessageString::recycle(batch[late]);
                s.queue.done(batch.size() - i - 1);
                batch.clear();
                return;
            }
        }
        batch.clear();
    }
}

void Logger::setLogLevel(unsigned int newMask) { getLogger().setLogLevelMask(newMask); }

unsigned int Logger::getLogLevel() { return getLogger().getLogLevelMask(); }

void Logger::setLogLevelMask(unsigned int newMask) { mask = newMask; }

unsigned int Logger::getLogLevelMask() const { return mask.flags(); }

void Logger::setLogLevelSimple(SIMPLE_LOG_LEVEL level) { setLogLevel(mapToLogLevelFlags(level)); }

bool Logger::isLogLevelMatching(unsigned int level) const { return mask.isFlag(level); }

void Logger::saveLogLevel() { state().logLevelMaskOld.store(getLogLevel()); }

void Logger::restoreLogLevel() { setLogLevel(state().logLevelMaskOld.load()); }

void Logger::showLogLevel() {
    printToCout(xprintF("Logger::llogLevel:$", logLevelToStringAllBits(getLogLevel())));
}

void Logger::addAppender(Appender *appender) {
    std::lock_guard<std::mutex> lock(state().appenderMutex);
    state().appenders.push_back(appender);
}

bool Logger::removeAppender(Appender *appender) {
    logger::State &s = state();
    std::lock_guard<std::mutex> lock(s.appenderMutex);
    auto it = std::find(s.appenders.begin(), s.appenders.end(), appender);
    if (it == s.appenders.end())
        return false;
    s.appenders.erase(it);
    return true;
}

Appender *Logger::firstAppender(bool (Appender::*test)() const) {
    std::lock_guard<std::mutex> lock(state().appenderMutex);
    for (Appender *appender : state().appenders)
        if ((appender->*test)())
            return appender;
    return nullptr;
}

bool Logger::hasAppenderConsole() { return firstAppender(&Appender::isAppenderConsole); }

bool Logger::hasAppenderFile() { return firstAppender(&Appender::isAppenderFile); }

bool Logger::hasAppenderGUI() { return firstAppender(&Appender::isAppenderGUI); }

Appender *Logger::getAppenderGUI() { return firstAppender(&Appender::isAppenderGUI); }

AppenderLimitMemory *Logger::getAppenderLimitMemory() {
    while (!state().queue.isIdle())
        xSleep(10);
    std::lock_guard<std::mutex> lock(state().appenderMutex);
    return firstOf<AppenderLimitMemory>(state().appenders);
}

void Logger::enableConsoleAppender(bool on) {
    // Releasing the console window on false has no meaning on this system.
    if (Appender *console = firstAppender(&Appender::isAppenderConsole))
        console->setEnabled(on);
}

bool Logger::IsConsoleAppenderEnabled() {
    Appender *console = firstAppender(&Appender::isAppenderConsole);
    return console && console->isEnabled();
}

void Logger::setIncludeTraillerConsole(bool on) {
    if (auto *console =
            static_cast<AppenderConsole *>(getLogger().firstAppender(&Appender::isAppenderConsole)))
        console->setIncludeTrailler(on);
}

bool Logger::isIncludeTraillerConsole() {
    auto *console =
        static_cast<AppenderConsole *>(getLogger().firstAppender(&Appender::isAppenderConsole));
    return console && console->isIncludeTrailler();
}

void Logger::printToCout(QString const &text) {
    std::lock_guard<std::mutex> lock(state().consoleMutex);
    logger::writeLine(AppenderConsole::trailerSimple().toLocal8Bit() + text.toLocal8Bit());
}

void Logger::printToCout(char const *text) {
    printToCout(QString::fromLocal8Bit(text ? text : "ppCout(nullptr)"));
}

bool Logger::isConsoleTerminal() { return platform::isTerminal(stdout); }

void Logger::printStatusLine(QString const &text) {
    std::lock_guard<std::mutex> lock(state().statusMutex);
    if (text.isEmpty() && state().statusLine.isEmpty())
        return;
    // Back to the line's start, the text, then erase what a longer text left behind.
    state().statusLine = text.toUtf8();
    QByteArray const line = "\r" + state().statusLine + "\033[K";
    std::fwrite(line.constData(), 1, static_cast<size_t>(line.size()), stdout);
    std::fflush(stdout);
}

void Logger::prepareForRegressionTests(bool on) { state().regression.store(on); }

void Logger::resetLogMessageCounter() { state().counter.store(0); }

void Logger::setThreadIDMain() { threadIDMain.store(platform::threadId()); }

unsigned int Logger::getThreadIDMain() { return threadIDMain.load(); }

bool Logger::isMainThread(unsigned int threadID) { return threadID == threadIDMain.load(); }

bool isMainThread() { return Logger::isMainThread(platform::threadId()); }

} // namespace orv
