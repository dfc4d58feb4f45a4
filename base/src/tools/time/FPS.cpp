// FPS.cpp: a frame counter turned into a rate once a second.
#include "orv/FPS.h"

#include "orv/OrvTime.h"

namespace orv {

void FPS::refresh() { refresh(getMilliseconds()); }

void FPS::refresh(quint64 nowMs) {
    count.fetchAdd(1);
    if (msLast == 0) {
        msLast = nowMs;
        return;
    }
    quint64 const span = nowMs - msLast;
    if (span < 1001)
        return;
    fps = static_cast<float>(count.load() / (static_cast<double>(span) / 1000.0));
    listener.fireEvent(static_cast<float>(fps));
    count = 0;
    msLast = nowMs;
}

} // namespace orv
