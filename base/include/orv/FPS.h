// FPS.h: frames per second, refreshed about once a second.
//
//   orv::FPS fps;
//   fps.listener.addListener([](float rate) { ppInfo("$ fps", rate); });
//   for (;;) { draw(); fps.refresh(); }
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"
#include "orv/XEventListener.h"

namespace orv {

class ORV_EXPORT FPS {
public:
    // Once per frame. When more than 1000 ms have passed since the last rate, computes
    // the new one and fires the listener with it.
    void refresh();
    // The same, at nowMs milliseconds (never 0).
    void refresh(quint64 nowMs);

    XAtomic<float> fps{0.0f};

private:
    XAtomic<unsigned int> count{0};
    quint64 msLast = 0;

public:
    XEventListener<void(float)> listener;
};

} // namespace orv
