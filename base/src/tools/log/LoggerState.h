// LoggerState.h: the logger's process-wide state, shared by its source files.
// Private to the library.
#pragma once

#include "orv/Appender.h"
#include "orv/LogMessage.h"
#include "orv/Logger.h"
#include "orv/XThreadPool.h"

#include <QtCore/QMutex>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace orv::logger {

// First in, first out, unbounded. `pending` counts messages pushed and not yet
// through the appenders, so a reader can wait for the logger to go idle.
class MessageQueue {
public:
    // Numbers msg from counter and queues it in one step, so that queue order is
    // number order over all threads.
    void push(LogMessage *msg, std::atomic<unsigned long long> &counter);
    // Waits for at least one message, then moves all queued ones to batch, which
    // must be empty.
    void takeAll(std::vector<LogMessage *> &batch);
    void done(size_t count) { pending.fetch_sub(count, std::memory_order_acq_rel); }
    bool isIdle() const { return pending.load(std::memory_order_acquire) == 0; }

private:
    std::mutex mutex;
    std::condition_variable ready;
    std::vector<LogMessage *> messages;
    bool consumerWaiting = false;
    std::atomic<size_t> pending{0};
};

struct State {
    Logger *instance = nullptr;
    XAtomic<bool> running{false};
    XAtomic<bool> ready{false};
    XAtomic<bool> regression{false};
    std::atomic<unsigned int> logLevelMaskOld{DEFAULT_LOG_MASK};

    // Guards the list, and is held by the loop while it hands one message to the
    // appenders: once removeAppender returns, the appender is never called again.
    std::mutex appenderMutex;
    std::vector<Appender *> appenders;

    // Guards the header's list and its queueing with the first accepted message; once
    // the header is out, messages are accepted under the queue's mutex alone.
    QMutex loggerMutex;
    MessageQueue queue;
    std::atomic<unsigned long long> counter{0};

    // The messages the loop kept before atomicFlagDeleteMessage was set.
    std::vector<LogMessage *> kept;

    std::mutex consoleMutex;
    // The status line at the foot of a terminal, which every console line lifts and
    // draws again below itself. Taken after consoleMutex, never before it.
    std::mutex statusMutex;
    QByteArray statusLine;
    XThreadPool pool;
};

// Created on first use and never destroyed: the logger thread may still run while
// the process ends, and a pool's destructor would wait for it.
State &state();

// Writes line and a newline to stdout in one call (with the status line, if any,
// erased before and drawn again after it).
void writeLine(QByteArray line);

// Waits until every queued message has been through the appenders, at most ms.
void waitUntilIdle(int ms);

} // namespace orv::logger
