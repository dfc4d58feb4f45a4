// XStopwatch.h: a start/stop clock in microseconds since 1970 that sums its spans.
//
//   orv::XStopwatch watch;
//   watch.start();  work();  watch.stop();
//   ppInfo("work: $", watch.toStringMicroseconds(true));   // "delta:0,012.345 sec"
//
// Every field is atomic, so another thread may read a running watch.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"

#include <QtCore/QString>

namespace orv {

class ORV_EXPORT XStopwatch {
public:
    // start() leaves timeStop as it is: after a second start the watch counts as
    // stopped, for the run before, until stop() runs.
    void start();
    // Warns and does nothing when never started.
    void stop();
    void reset();

    bool isStarted() const { return timeStart != 0; }
    bool isStopped() const { return timeStop != 0; }
    bool isReset() const;

    quint64 getTimeFirst() const { return timeFirst; }
    quint64 getTimeStart() const { return timeStart; }
    quint64 getTimeStop() const { return timeStop; }

    // timeStop - timeStart; 0 when never stopped, silently. Between a restart and the
    // next stop the stop belongs to the run before, and the difference wraps around.
    quint64 elapsed_time_microSeconds() const;
    // The last span; not stopped: a warning and 0.
    quint64 elapsed_time_milliSeconds() const;
    // The sum of all spans since reset; not stopped: a warning and 0.
    quint64 elapsed_time_microSeconds_total() const;
    // The sum of all spans since reset; 0 when not stopped, silently.
    quint64 elapsed_time_milliSeconds_total() const;
    // From the start to now; not started: a warning and 0.
    quint64 delta_now_microSeconds() const;
    quint64 delta_now_milliSeconds() const;

    QString asStringDeltaSecond() const;
    // In milliseconds: "XStopwatch-RESET", "XStopwatch-started, not stopped, delta now:N ms",
    // "delta:N ms" (onlyDelta) or "elapsed:N ms, total elapsed:N ms".
    QString toString(bool onlyDelta) const;
    // The same four texts in seconds with microseconds, and "sec" for "ms".
    QString toStringMicroseconds(bool onlyDelta) const;
    // The texts at DEBUG.
    void show(unsigned int space) const;
    void showMicroseconds(unsigned int space, bool onlyDelta) const;

    static XAtomic<bool> atomicFlagDebug;

private:
    QString text(bool onlyDelta, bool inSeconds) const;

    XAtomic<quint64> timeFirst{0};
    XAtomic<quint64> timeStart{0};
    XAtomic<quint64> timeStop{0};
    XAtomic<quint64> timeTotal{0};
};

} // namespace orv
