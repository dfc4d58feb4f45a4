// BaseThread.cpp: the state word for objects that are no thread, and its text.
#include "orv/XThread.h"

#include "orv/StringFormat.h"

#include <QtCore/QThreadPool>

namespace orv {

QString BaseThreadState::bit_flags_as_string(AtomicBits const &bits) {
    auto word = [&bits](unsigned int flag, char const *text) {
        return bits.isFlag(flag) ? QString::fromLatin1(text) : QString();
    };
    return format_toString_arguments(word(INITIALIZED, "INITIALIZED | "),
                                     word(RUNNING, "RUNNING | "), word(FINISHED, "FINISHED | "),
                                     word(ERROR, "ERROR | "), word(CANCELLED, "CANCELLED | "));
}

void BaseThread::wait_for_all(int ms) { QThreadPool::globalInstance()->waitForDone(ms); }

} // namespace orv
