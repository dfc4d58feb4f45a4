// EventPump.h: runs the main thread's event loop until a condition holds, with a bound.
#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>

#include <chrono>
#include <thread>

namespace orv::test {

// Processes posted events until done() or until limitMs passed; returns done().
template <typename Done> bool pumpEventsUntil(Done done, int limitMs = 5000) {
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < limitMs) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return done();
}

} // namespace orv::test
