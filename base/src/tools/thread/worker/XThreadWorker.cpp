// XThreadWorker.cpp: the worker whose job is an XWorker object, and the base job.
#include "orv/XWorker.h"

#include "orv/OrvTime.h"
#include "orv/XError.h"
#include "tools/thread/QtMutexLock.h"
#include "tools/thread/worker/WorkerLoop.h"

#include <QtCore/QCoreApplication>

namespace orv {

XAtomic<bool> XWorker::atomicDebugFlag{false};

XWorker::XWorker() {
    if (atomicDebugFlag)
        ppDebug("XWorker::XWorker");
}

XWorker::~XWorker() {
    if (atomicDebugFlag)
        ppDebug("XWorker::~XWorker");
}

int XWorker::work() {
    xSleep(1000);
    ppDebug("XWork::work - overwrite me!");
    return 0;
}

XThreadWorker::XThreadWorker() = default;

XThreadWorker::~XThreadWorker() {
    // A QThread destroyed while its thread runs ends the process: stop and join first.
    stopThread(0);
    QThread::wait();
    // Pairs with the last store of run(): what the thread wrote is now ours.
    (void)loopDone.load(std::memory_order_acquire);
}

void XThreadWorker::startThreadInitial() {
    flagRun = true;
    QThread::start(QThread::InheritPriority);
}

void XThreadWorker::stopThread(unsigned long msWait) {
    flagRun = false;
    watcher.set_flags(1);
    if (msWait != 0 && !QThread::wait(msWait))
        ppWarning("XThreadWorker::stopThread, thread not really finished");
}

void XThreadWorker::setWorker(XWorker *worker) {
    {
        QtMutexLock lock(&mutex);
        job = worker;
    }
    // Outside the job's lock, as in XFunctionWorker::setWorker.
    watcher.set_flags(1);
}

XWorker *XThreadWorker::worker() const {
    QtMutexLock lock(&mutex);
    return job;
}

bool XThreadWorker::isWorking() const {
    QtMutexLock lock(&mutex);
    return flagRun && job != nullptr;
}

void XThreadWorker::moveQObject_to_this(QObject *object) {
    ORV_ASSERT_PTR(object);
    object->moveToThread(this);
}

void XThreadWorker::run() {
    static worker_internal::LoopTexts const texts{"XThreadWorker::run",
                                                  "XThreadWorker::run, after state change", nullptr,
                                                  "XThreadWorker::~run"};
    // The loop has no event loop of its own: the calls queued for objects moved here
    // are delivered before each round, so that they run on this thread.
    worker_internal::runLoop(
        flagRun, flagDebug, watcher, texts, [this] { return worker(); },
        [](XWorker *w) {
            QCoreApplication::sendPostedEvents();
            w->work();
        });
    loopDone.store(true, std::memory_order_release);
}

} // namespace orv
