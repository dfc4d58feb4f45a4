// AbstractTask.h: the state and result record of an asynchronous job, with cancel,
// timeout and progress. A subclass starts the job and hands its future over.
//
//   struct Copy : orv::AbstractTask {
//       void start() {
//           stopwatch.start();  setTaskState(STATE_BUSY);
//           future = std::async(std::launch::async, [this] { copyAll(); finish(); }).share();
//       }
//   };
//   task.listenerProgress.addListener([](unsigned int percent) { bar.set(percent); });
//   if (task.wait_for_milliseconds(500) && task.isOK()) ...
//
// Cancel only raises the flag: the job has to look at isCancelled() itself.
#pragma once

#include "orv/XAtomic.h"
#include "orv/XEventListener.h"
#include "orv/XStopwatch.h"

#include <QtCore/QString>

#include <future>

namespace orv {

class ORV_EXPORT AbstractTask {
public:
    enum TaskError : unsigned int {
        TIMEOUT = 1,
        SIZE = 2,
        MEMORY = 3,
        FILE_NOT_FOUND = 4,
        READ = 5,
        READ_RESOURCE = 6,
        READ_EOF = 7,
        WRITE = 8,
        PARSER = 9,
        CANCEL = 10
    };
    enum TaskState : unsigned int { STATE_INITIALIZED = 0, STATE_BUSY = 1, STATE_FINISHED = 2 };

    // With it on, setCancel and setError say so at DEBUG.
    static XAtomic<bool> atomicFlagDebug;

    AbstractTask();
    virtual ~AbstractTask();
    AbstractTask(AbstractTask const &) = delete;
    AbstractTask &operator=(AbstractTask const &) = delete;

    // "TIMEOUT" ... "CANCEL"; "UNKNOWN-TASK-ERROR:<n>" for any other value.
    static QString errorToString(unsigned int error);

    unsigned int error() const { return taskError; }
    void setError(int error);
    QString errorAsString() const { return errorToString(taskError); }
    // Raises the error CANCEL; the job must look.
    void setCancel();
    bool isCancelled() const { return taskError == CANCEL; }
    bool isError() const { return taskError != 0; }

    unsigned int taskState() const { return state; }
    void setTaskState(unsigned int newState) { state = newState; }
    bool isInitialized() const { return state == STATE_INITIALIZED; }
    bool isBusy() const { return state == STATE_BUSY; }
    bool isFinished() const { return state == STATE_FINISHED; }
    // Stops the stopwatch, then the state is finished (cancelled or not).
    void finish();
    // Finished (an ERROR line if the stopwatch still runs), the job's future ready,
    // and no error.
    bool isOK() const;

    // In milliseconds; 0 at the start.
    quint64 timeout() const { return timeoutMs; }
    void setTimeout(quint64 ms) { timeoutMs = ms; }
    // The time since the start has reached the timeout (with timeout 0: at once).
    bool timeIsUP() const;
    // The run's time in milliseconds, once finished.
    quint64 elapsedTime() const;
    // Waits up to the time for the job's future; true if it is ready. A task whose
    // subclass set no future yet is never ready.
    bool wait_for_milliseconds(quint64 ms) const;
    bool wait_for_microseconds(quint64 us) const;

    // Fire the lists on the GUI thread: at once there, posted from any other thread.
    // A posted firing holds this task by a bare pointer: the task must outlive it.
    void fireProgress(unsigned int value);
    void fireProgressString(QString text);

    // "TASK is initialized", "TASK is ready:<bool>" or, with an error,
    // "TASK is ready:<bool>, error code:<n>, error: '<text>'".
    virtual QString toString() const;

protected:
    XAtomic<unsigned int> taskError{0};
    // Stands for the job; the subclass that starts the job sets it.
    std::shared_future<void> future;
    XAtomic<quint64> timeoutMs{0};
    XAtomic<unsigned int> state{STATE_INITIALIZED};
    // Started by the subclass when the job starts, stopped by finish().
    XStopwatch stopwatch;

public:
    XEventListener<void(unsigned int)> listenerProgress;
    XEventListener<void(QString)> listenerProgressString;
};

} // namespace orv
