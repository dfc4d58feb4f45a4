// XStopwatch.cpp: spans on the wall clock in microseconds, and their text forms.
#include "orv/XStopwatch.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/StringFormat.h"
#include "orv/XStringStream.h"

namespace orv {

XAtomic<bool> XStopwatch::atomicFlagDebug{false};

void XStopwatch::start() {
    quint64 const now = getMicroseconds();
    timeStart = now;
    quint64 unset = 0;
    timeFirst.compareExchange(unset, now);
    if (atomicFlagDebug)
        ppDebug("XStopwatch::start");
}

void XStopwatch::stop() {
    if (!isStarted()) {
        ppWarning("XStopwatch::stop - not started before");
        return;
    }
    quint64 const now = getMicroseconds();
    timeStop = now;
    timeTotal.fetchAdd(now - timeStart);
    if (atomicFlagDebug)
        ppDebug("XStopwatch::stop");
}

void XStopwatch::reset() {
    timeFirst = 0;
    timeStart = 0;
    timeStop = 0;
    timeTotal = 0;
}

bool XStopwatch::isReset() const {
    return timeFirst == 0 && timeStart == 0 && timeStop == 0 && timeTotal == 0;
}

quint64 XStopwatch::elapsed_time_microSeconds() const {
    quint64 const start = timeStart;
    quint64 const stop = timeStop;
    // After a restart the stop belongs to the run before and the difference wraps
    // around, as it always has; only a stopwatch never stopped gives 0.
    return stop != 0 ? stop - start : 0;
}

quint64 XStopwatch::elapsed_time_milliSeconds() const {
    if (!isStopped()) {
        ppWarning("XStopwatch::elapsed_time_milliSeconds - not stopped");
        return 0;
    }
    return elapsed_time_microSeconds() / 1000;
}

quint64 XStopwatch::elapsed_time_microSeconds_total() const {
    if (!isStopped()) {
        ppWarning("XStopwatch::elapsed_time_microSeconds_total - not stopped");
        return 0;
    }
    return timeTotal;
}

quint64 XStopwatch::elapsed_time_milliSeconds_total() const {
    return isStopped() ? timeTotal / 1000 : 0;
}

quint64 XStopwatch::delta_now_microSeconds() const {
    if (!isStarted()) {
        ppWarning("XStopwatch::delta_now_microSeconds - not started");
        return 0;
    }
    return getMicroseconds() - timeStart;
}

quint64 XStopwatch::delta_now_milliSeconds() const {
    if (!isStarted()) {
        ppWarning("XStopwatch::delta_now_milliSeconds - not started");
        return 0;
    }
    return (getMicroseconds() - timeStart) / 1000;
}

QString XStopwatch::asStringDeltaSecond() const {
    return formatMicrosecond_as_Sec(elapsed_time_microSeconds());
}

QString XStopwatch::text(bool onlyDelta, bool inSeconds) const {
    if (isReset())
        return QStringLiteral("XStopwatch-RESET");
    auto form = [inSeconds](quint64 us) {
        return inSeconds ? formatMicrosecond_as_Sec(us)
                         : format1000(static_cast<qint64>(us / 1000));
    };
    char const *unit = inSeconds ? "sec" : "ms";
    if (isStarted() && !isStopped())
        return xprintF("XStopwatch-started, not stopped, delta now:$ $",
                       form(getMicroseconds() - timeStart), unit);
    if (onlyDelta)
        return xprintF("delta:$ $", form(elapsed_time_microSeconds()), unit);
    return xprintF("elapsed:$ $, total elapsed:$ $", form(elapsed_time_microSeconds()), unit,
                   form(timeTotal), unit);
}

QString XStopwatch::toString(bool onlyDelta) const { return text(onlyDelta, false); }

QString XStopwatch::toStringMicroseconds(bool onlyDelta) const { return text(onlyDelta, true); }

void XStopwatch::show(unsigned int space) const { ppDebug(space, toString(false)); }

void XStopwatch::showMicroseconds(unsigned int space, bool onlyDelta) const {
    ppDebug(space, toStringMicroseconds(onlyDelta));
}

} // namespace orv
