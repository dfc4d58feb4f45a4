// AtomicBitsWatcher.cpp: a flag word with blocking waits for its changes.
#include "orv/AtomicBits.h"

#include "orv/Log.h"

#include <chrono>

namespace orv {

using Lock = std::unique_lock<std::mutex>;

AtomicBitsWatcher::AtomicBitsWatcher(unsigned int flags) : bits(flags) {}

AtomicBitsWatcher::~AtomicBitsWatcher() = default;

unsigned int AtomicBitsWatcher::get_flags() const {
    Lock lock(mutex);
    return bits.flags();
}

bool AtomicBitsWatcher::is_flag(unsigned int mask) const {
    Lock lock(mutex);
    return bits.isFlag(mask);
}

void AtomicBitsWatcher::set_flag(unsigned int mask, bool on) {
    Lock lock(mutex);
    bits.setFlag(mask, on);
    condition.notify_all();
}

void AtomicBitsWatcher::set_flags(unsigned int value) {
    Lock lock(mutex);
    unsigned int const oldFlags = bits.flags();
    bits.set_flags(value, false);
    if (bits.flags() != oldFlags)
        condition.notify_all();
}

void AtomicBitsWatcher::set_bit_number(unsigned int bit, bool on) {
    Lock lock(mutex);
    unsigned int const oldFlags = bits.flags();
    if (bits.setBitNumber(bit, on, false) != oldFlags)
        condition.notify_all();
}

void AtomicBitsWatcher::wait_stateChange() {
    Lock lock(mutex);
    unsigned int const start = bits.flags();
    condition.wait(lock, [&] { return bits.flags() != start; });
}

bool AtomicBitsWatcher::wait_stateChange(unsigned long ms) {
    Lock lock(mutex);
    unsigned int const start = bits.flags();
    return condition.wait_for(lock, std::chrono::milliseconds(ms),
                              [&] { return bits.flags() != start; });
}

void AtomicBitsWatcher::wait_until_bit_is_set(unsigned int mask) {
    Lock lock(mutex);
    condition.wait(lock, [&] { return bits.isFlag(mask) || atomicFlagStop; });
    if (atomicFlagStop)
        ppDebug("AtomicBitsWatcher::wait_until_bit_is_set - atomicFlagStop == true !");
}

bool AtomicBitsWatcher::wait_until_bit_is_set(unsigned int mask, unsigned long ms) {
    Lock lock(mutex);
    condition.wait_for(lock, std::chrono::milliseconds(ms),
                       [&] { return bits.isFlag(mask) || atomicFlagStop; });
    if (atomicFlagStop)
        ppDebug("AtomicBitsWatcher::wait_until_bit_is_set - atomicFlagStop == true !");
    return bits.isFlag(mask);
}

void AtomicBitsWatcher::stop() {
    Lock lock(mutex);
    atomicFlagStop = true;
    condition.notify_all();
}

void AtomicBitsWatcher::reset() {
    Lock lock(mutex);
    atomicFlagStop = false;
    bits = 0u;
}

QString AtomicBitsWatcher::toString() const {
    Lock lock(mutex);
    return bits.toString();
}

} // namespace orv
