// XWorker.h: worker threads that stay. A worker sleeps until it is given a job, runs
// the job over and over until it is taken away, and goes back to sleep.
//
//   orv::XFunctionWorker worker;
//   worker.startThreadInitial();
//   worker.setWorker([&] { return poll(queue); });   // called again and again
//   worker.setWorker({});                             // back to sleep after this call
//
// A job that returns at once is called again at once: the loop never sleeps while it
// has a job, so a job that waits for something waits inside its own call.
#pragma once

#include "orv/AtomicBits.h"
#include "orv/XAtomic.h"

#include <QtCore/QMutex>
#include <QtCore/QThread>

#include <atomic>
#include <functional>

namespace orv {

// The job of an XThreadWorker. The base job sleeps a second and says so at DEBUG.
class ORV_EXPORT XWorker {
public:
    // With it on, construction and destruction are logged at DEBUG.
    static XAtomic<bool> atomicDebugFlag;

    XWorker();
    virtual ~XWorker();
    // One round of the job; the worker drops the result.
    virtual int work();
};

// A worker whose job is a function. setWorker from any thread.
//
// The destructor stops the loop and waits for the call under way to return: a job
// that never returns keeps the destructor waiting, and a job must not destroy its own
// worker.
class ORV_EXPORT XFunctionWorker : private QThread {
public:
    XFunctionWorker();
    ~XFunctionWorker() override;

    void startThreadInitial();
    // The loop ends after the call under way; doesn't wait for it.
    void stopThread();
    // Wakes the loop; an empty f puts it to sleep after the call under way.
    void setWorker(std::function<int()> f);
    std::function<int()> worker() const;
    // Started (and not stopped) with a job present.
    bool isWorking() const;
    // Traces the loop's steps at DEBUG.
    void setDebug(bool on) { flagDebug = on; }

private:
    void run() override;

    XAtomic<bool> flagDebug{false};
    mutable QMutex mutex;
    std::function<int()> job;
    AtomicBitsWatcher watcher;
    XAtomic<bool> flagRun{false};
    // Qt joins its threads through a wait condition inside Qt, which race checkers
    // can't see; the last store of run() and the load after the wait pair up instead.
    std::atomic<bool> loopDone{false};
};

// A worker whose job is an XWorker object, which it doesn't own: the XWorker must
// outlive the time it is set. Objects moved here with moveQObject_to_this get their
// queued slot calls delivered between two rounds of the job.
class ORV_EXPORT XThreadWorker : private QThread {
public:
    XThreadWorker();
    // Stops the loop and waits for the round under way to end.
    ~XThreadWorker() override;

    void startThreadInitial();
    // The loop ends after the round under way; with msWait not 0 this waits that long
    // for the thread to end, and warns if it didn't.
    void stopThread(unsigned long msWait);
    // Wakes the loop; null puts it to sleep after the round under way.
    void setWorker(XWorker *worker);
    XWorker *worker() const;
    bool isWorking() const;
    // A null object is fatal.
    void moveQObject_to_this(QObject *object);
    void setDebug(bool on) { flagDebug = on; }

private:
    void run() override;

    mutable QMutex mutex;
    XWorker *job = nullptr;
    AtomicBitsWatcher watcher;
    XAtomic<bool> flagRun{false};
    XAtomic<bool> flagDebug{false};
    std::atomic<bool> loopDone{false};
};

} // namespace orv
