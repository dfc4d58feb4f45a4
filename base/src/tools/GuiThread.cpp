// GuiThread.cpp: the GUI thread test and the hand-over of work to that thread.
#include "orv/GuiThread.h"

#include "orv/Log.h"
#include "orv/XError.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaObject>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <deque>
#include <mutex>

namespace orv::qt {

namespace {

// Work from other threads waits here, in posting order, until the GUI thread
// drains it. Keeping the functions in our own mutex-guarded queue, instead of
// inside Qt's events, makes the hand-over visible to race checkers that do not
// see into Qt.
std::mutex mutexRunner;
std::deque<std::function<void()>> pending;

void runPending() {
    std::deque<std::function<void()>> batch;
    {
        std::lock_guard<std::mutex> lock(mutexRunner);
        batch.swap(pending);
    }
    for (std::function<void()> const &f : batch) {
        if (!f) {
            ppError("XLamdaGUIEvent::runMethod functionGUI == null");
            continue;
        }
        f();
    }
}

// Qt 5 keeps QTimer::defaultTypeFor private.
Qt::TimerType timerTypeFor(unsigned int ms) {
    return ms >= 2000 ? Qt::CoarseTimer : Qt::PreciseTimer;
}

} // namespace

bool is_Gui_Thread() {
    QCoreApplication *app = QCoreApplication::instance();
    if (!app)
        return true;
    QThread *thMain = app->thread();
    ORV_ASSERT_PTR(thMain);
    QThread *thCurrent = QThread::currentThread();
    ORV_ASSERT_PTR(thCurrent);
    return thMain == thCurrent;
}

void run_in_Gui_Thread(std::function<void()> f, unsigned int msWait) {
    if (is_Gui_Thread()) {
        if (msWait == 0)
            f();
        else
            QTimer::singleShot(static_cast<int>(msWait), timerTypeFor(msWait), std::move(f));
        return;
    }
    // msWait is dropped on this path: the work runs at the next turn of the GUI loop.
    bool firstInQueue;
    {
        std::lock_guard<std::mutex> lock(mutexRunner);
        firstInQueue = pending.empty();
        pending.push_back(std::move(f));
    }
    // One drain takes everything queued before it runs, so one post per batch is enough.
    if (firstInQueue)
        QMetaObject::invokeMethod(QCoreApplication::instance(), &runPending, Qt::QueuedConnection);
}

} // namespace orv::qt
