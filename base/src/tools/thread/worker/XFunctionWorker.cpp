// XFunctionWorker.cpp: the worker whose job is a function.
#include "orv/XWorker.h"

#include "tools/thread/QtMutexLock.h"
#include "tools/thread/worker/WorkerLoop.h"

namespace orv {

XFunctionWorker::XFunctionWorker() = default;

XFunctionWorker::~XFunctionWorker() {
    // A QThread destroyed while its thread runs ends the process: stop and join first.
    stopThread();
    QThread::wait();
    // Pairs with the last store of run(): what the thread wrote is now ours.
    (void)loopDone.load(std::memory_order_acquire);
}

void XFunctionWorker::startThreadInitial() {
    flagRun = true;
    QThread::start(QThread::InheritPriority);
}

void XFunctionWorker::stopThread() {
    flagRun = false;
    watcher.set_flags(1);
}

void XFunctionWorker::setWorker(std::function<int()> f) {
    {
        QtMutexLock lock(&mutex);
        job = std::move(f);
    }
    // Outside the job's lock: the woken loop takes that lock first thing. The loop
    // looks at the job after arming, so a job stored before the wake is never missed.
    watcher.set_flags(1);
}

std::function<int()> XFunctionWorker::worker() const {
    QtMutexLock lock(&mutex);
    return job;
}

bool XFunctionWorker::isWorking() const {
    QtMutexLock lock(&mutex);
    return flagRun && static_cast<bool>(job);
}

void XFunctionWorker::run() {
    static worker_internal::LoopTexts const texts{
        "XFunctionWorker::run", "XFunctionWorker::run, after state change",
        "XFunctionWorker::run, after 'work'", "XFunctionWorker::~run"};
    // The job is copied, so that setWorker may replace it while the copy runs.
    worker_internal::runLoop(
        flagRun, flagDebug, watcher, texts, [this] { return worker(); },
        [](std::function<int()> const &f) { f(); });
    loopDone.store(true, std::memory_order_release);
}

} // namespace orv
