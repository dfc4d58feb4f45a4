// XThreadPool.h: functions and XLightweightThreads on a Qt thread pool.
//
//   orv::XThreadPool::start_function_global([] { crunch(); });   // on
//   QThreadPool::globalInstance() orv::XThreadPool::wait_for_all(5000);
//
// Qt's policy stands: priority 0, Qt's queue and thread count; a task is never cancelled.
#pragma once

#include "orv/XThread.h"

#include <QtCore/QRunnable>
#include <QtCore/QThreadPool>

#include <atomic>
#include <functional>

namespace orv {

// Runs one function on a pool thread; an empty one runs nothing and logs
// "XFunctionRunner::run, function == null" at ERROR.
class ORV_EXPORT XFunctionRunner : public QRunnable {
public:
    explicit XFunctionRunner(std::function<void()> f);
    void run() override;
    // Marks the hand-over to a pool thread, after the last change on the starting thread.
    void publish() { published.store(true, std::memory_order_release); }

private:
    std::function<void()> function;
    // Qt's queue hand-over is invisible to race checkers; this pairs start and run.
    std::atomic<bool> published{false};
};

class ORV_EXPORT XThreadPool : public QThreadPool {
public:
    using QThreadPool::QThreadPool;

    // The runners delete themselves: the returned pointer may dangle as soon as it is read.
    XFunctionRunner *start(std::function<void()> f);
    static XFunctionRunner *start_function_global(std::function<void()> f);

    XLightweightThread *start_lwThread(XLightweightThread *lwThread, bool autoDelete);
    // A null lwThread is fatal.
    static XLightweightThread *start_global(XLightweightThread *lwThread, bool autoDelete);

    // Waits up to ms for the global pool to run dry.
    static void wait_for_all(int ms);
};

} // namespace orv
