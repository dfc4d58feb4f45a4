// XThreadPool.cpp: functions and lightweight threads handed to Qt thread pools.
#include "orv/XThreadPool.h"

#include "orv/Log.h"
#include "orv/XError.h"

namespace orv {

namespace {

XFunctionRunner *startOn(QThreadPool *pool, std::function<void()> f) {
    auto *runner = new XFunctionRunner(std::move(f));
    runner->setAutoDelete(true);
    runner->publish();
    pool->start(runner, 0);
    return runner;
}

XLightweightThread *startOn(QThreadPool *pool, XLightweightThread *lwThread, bool autoDelete) {
    lwThread->setAutoDelete(autoDelete);
    lwThread->publish();
    pool->start(lwThread, 0);
    return lwThread;
}

} // namespace

XFunctionRunner::XFunctionRunner(std::function<void()> f) : function(std::move(f)) {}

void XFunctionRunner::run() {
    published.load(std::memory_order_acquire);
    // An exception on a pool thread would end the process.
    if (!function) {
        ppError("XFunctionRunner::run, function == null");
        return;
    }
    function();
}

XFunctionRunner *XThreadPool::start(std::function<void()> f) { return startOn(this, std::move(f)); }

XFunctionRunner *XThreadPool::start_function_global(std::function<void()> f) {
    return startOn(QThreadPool::globalInstance(), std::move(f));
}

XLightweightThread *XThreadPool::start_lwThread(XLightweightThread *lwThread, bool autoDelete) {
    return startOn(this, lwThread, autoDelete);
}

XLightweightThread *XThreadPool::start_global(XLightweightThread *lwThread, bool autoDelete) {
    ORV_ASSERT_PTR(lwThread);
    QThreadPool *daPool = QThreadPool::globalInstance();
    ORV_ASSERT_PTR(daPool);
    return startOn(daPool, lwThread, autoDelete);
}

void XThreadPool::wait_for_all(int ms) { QThreadPool::globalInstance()->waitForDone(ms); }

} // namespace orv
