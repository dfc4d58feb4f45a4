// BreakableSleep.cpp: sleeps that end early when a flag says so.
#include "orv/AtomicBits.h"
#include "orv/OrvTime.h"
#include "orv/XThread.h"
#include "tools/thread/ThreadInternals.h"

#include <chrono>

namespace orv {

namespace thread_internal {

void sleepWhile(quint64 ms, quint64 stepMs, std::function<bool()> const &keepSleeping) {
    using Clock = std::chrono::steady_clock;
    Clock::time_point const start = Clock::now();
    auto const limit = std::chrono::milliseconds(ms);
    while (Clock::now() - start < limit && keepSleeping())
        xSleep(stepMs);
}

} // namespace thread_internal

void xSleep_breakable(quint64 ms, XAtomic<bool> const &flag) { xSleep_breakable(ms, flag, 10); }

void xSleep_breakable(quint64 ms, XAtomic<bool> const &flag, quint64 stepMs) {
    thread_internal::sleepWhile(ms, stepMs, [&flag] { return !flag; });
}

void AbstractThread::break_sleep(unsigned int ms) {
    thread_internal::sleepWhile(ms, 10, [this] { return isRunning(); });
}

void BaseThread::sleep_breakable(unsigned int ms) {
    thread_internal::sleepWhile(ms, 10, [this] { return is_running(); });
}

} // namespace orv
