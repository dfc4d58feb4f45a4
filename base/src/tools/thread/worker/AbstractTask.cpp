// AbstractTask.cpp: errors, states, time and progress of an asynchronous job.
#include "orv/AbstractTask.h"

#include "orv/GuiThread.h"
#include "orv/Log.h"

#include <chrono>

namespace orv {

namespace {

// About 35 years: a longer wait would overflow the clock's nanoseconds and end at once.
constexpr quint64 LONGEST_WAIT_US = quint64(1) << 50;

bool isReady(std::shared_future<void> const &future, quint64 us) {
    // A default future has no state to wait on (waiting would be undefined).
    return future.valid() &&
           future.wait_for(std::chrono::microseconds(qMin(us, LONGEST_WAIT_US))) ==
               std::future_status::ready;
}

} // namespace

XAtomic<bool> AbstractTask::atomicFlagDebug{false};

AbstractTask::AbstractTask() = default;

AbstractTask::~AbstractTask() = default;

QString AbstractTask::errorToString(unsigned int error) {
    static char const *const texts[] = {"TIMEOUT", "SIZE",          "MEMORY",   "FILE_NOT_FOUND",
                                        "READ",    "READ_RESOURCE", "READ_EOF", "WRITE",
                                        "PARSER",  "CANCEL"};
    if (error >= TIMEOUT && error <= CANCEL)
        return QString::fromLatin1(texts[error - 1]);
    return xprintF("UNKNOWN-TASK-ERROR:$", error);
}

void AbstractTask::setError(int error) {
    if (atomicFlagDebug)
        ppDebug("AbstractTask::setError:$", error);
    taskError = static_cast<unsigned int>(error);
}

void AbstractTask::setCancel() {
    if (atomicFlagDebug)
        ppDebug("AbstractTask::setCancel");
    setError(CANCEL);
}

void AbstractTask::finish() {
    stopwatch.stop();
    state = STATE_FINISHED;
}

bool AbstractTask::isOK() const {
    if (!stopwatch.isStopped()) {
        ppError("AbstractTask::isOK(), !stopwatch.isStopped()");
        stopwatch.show(4);
        return false;
    }
    return isReady(future, 3) && taskError == 0;
}

bool AbstractTask::timeIsUP() const { return stopwatch.delta_now_milliSeconds() >= timeoutMs; }

quint64 AbstractTask::elapsedTime() const { return stopwatch.elapsed_time_milliSeconds(); }

bool AbstractTask::wait_for_milliseconds(quint64 ms) const {
    return isReady(future, ms > LONGEST_WAIT_US / 1000 ? LONGEST_WAIT_US : ms * 1000);
}

bool AbstractTask::wait_for_microseconds(quint64 us) const { return isReady(future, us); }

void AbstractTask::fireProgress(unsigned int value) {
    qt::run_in_Gui_Thread([this, value] { listenerProgress.fireEvent(value); }, 0);
}

void AbstractTask::fireProgressString(QString text) {
    qt::run_in_Gui_Thread([this, text] { listenerProgressString.fireEvent(text); }, 0);
}

QString AbstractTask::toString() const {
    if (state == STATE_INITIALIZED)
        return QStringLiteral("TASK is initialized");
    bool const ready = isReady(future, 1);
    if (taskError == 0)
        return xprintF("TASK is ready:$", ready);
    return xprintF("TASK is ready:$, error code:$, error: '$'", ready, taskError.load(),
                   errorAsString());
}

} // namespace orv
