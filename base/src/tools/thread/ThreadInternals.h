// ThreadInternals.h: the stepped sleep the breakable sleeps share (private to the library).
#pragma once

#include <QtCore/QtGlobal>

#include <functional>

namespace orv::thread_internal {

// Sleeps in steps of stepMs while less than ms has passed and keepSleeping() holds.
void sleepWhile(quint64 ms, quint64 stepMs, std::function<bool()> const &keepSleeping);

} // namespace orv::thread_internal
