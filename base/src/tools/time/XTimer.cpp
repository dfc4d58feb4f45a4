// XTimer.cpp: the timer's hand-over from Qt's timeout to the listener list.
#include "orv/XTimer.h"

#include "orv/Log.h"

namespace orv {

XTimer::XTimer(QObject *parent) : QTimer(parent) {
    connect(
        this, &QTimer::timeout, this, [this] { listener.fireEvent(); }, Qt::DirectConnection);
}

XTimerOneTimeShot::XTimerOneTimeShot(int ms, std::function<void()> f) {
    xTimer.setInterval(ms);
    xTimer.setSingleShot(true);
    xTimer.listener.addListener(std::move(f));
}

XTimerOneTimeShot::~XTimerOneTimeShot() { ppTest("XTimerOneTimeShot::~XTimerOneTimeShot()"); }

} // namespace orv
