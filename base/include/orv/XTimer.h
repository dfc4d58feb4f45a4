// XTimer.h: a QTimer whose timeout fires a listener list.
//
//   orv::XTimer timer;
//   timer.listener.addListener([] { poll(); });
//   timer.start(100);
//
//   orv::XTimerOneTimeShot later(500, [] { retry(); });
//   later.timer().start();   // it never starts by itself
//
// Like every QTimer it runs in the thread that owns it, under that thread's event loop.
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XEventListener.h"

#include <QtCore/QTimer>

#include <functional>

namespace orv {

class ORV_EXPORT XTimer : public QTimer {
    Q_OBJECT
public:
    explicit XTimer(QObject *parent = nullptr);

    // Fired directly from timeout, in the timer's thread.
    XEventListener<void()> listener;
};

class ORV_EXPORT XTimerOneTimeShot {
public:
    // A single-shot timer of ms milliseconds that calls f; not started.
    XTimerOneTimeShot(int ms, std::function<void()> f);
    virtual ~XTimerOneTimeShot();

    XTimer &timer() { return xTimer; }

private:
    XTimer xTimer;
};

} // namespace orv
