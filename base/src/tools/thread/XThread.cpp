// XThread.cpp: the thread object on its own QThread, with cooperative stop and restart after join.
#include "orv/XThread.h"

#include "orv/Log.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QStringList>

namespace orv {

namespace {

// The words of the set flags in the order of the flags' values, as "{A | B}".
QString flagWords(unsigned int flags) {
    static char const *const words[] = {"INITIALIZED", "RUNNING", "FINISHED", "JOINED"};
    QStringList set;
    for (unsigned int i = 0; i < 4; ++i) {
        if (flags & (1u << i))
            set << QLatin1String(words[i]);
    }
    return QLatin1Char('{') + set.join(QLatin1String(" | ")) + QLatin1Char('}');
}

} // namespace

unsigned int getCurrentThreadID() { return platform::threadId(); }

AbstractThread::AbstractThread() : flagBits(INITIALIZED) {}

AbstractThread::~AbstractThread() = default;

QString AbstractThread::toString() const { return flagWords(flagBits.flags()); }

XThread::XThread() = default;

XThread::~XThread() = default;

QString XThread::toString() const { return xprintF("XTHREAD [$]", threadId.load()); }

void XThread::start() {
    std::lock_guard<std::mutex> lock(mutex);
    // join() clears the helper, so a helper here is a run under way, about to
    // begin, or finished and not joined: none of them may start again.
    if (helper)
        return;
    helper = new HelperThread(this);
    helper->start(QThread::InheritPriority);
}

void XThread::stop() {
    std::lock_guard<std::mutex> lock(mutex);
    if (helper && isRunning())
        setRunning(false);
}

void XThread::join() {
    if (!helper || isRunning() || isJoined())
        return;
    helper->wait();
    // QThread::wait synchronises inside Qt; reading the helper's own last store
    // makes the end of its run visible here too.
    while (!helper->isDone())
        QThread::yieldCurrentThread();
    delete helper;
    helper = nullptr;
    setJoined(true);
}

void XThread::stopJoin() {
    std::lock_guard<std::mutex> lock(mutex);
    if (helper) {
        if (isRunning())
            setRunning(false);
        else if (isJoined())
            return;
    }
    join();
}

void XThread::run() {
    ppDebug("XThread::run - overwrite me");
    while (isRunning()) {
        break_sleep(1000);
        ppDebug("XThread::run, *this thread has _threadId:$", threadId.load());
    }
    ppDebug("XThread::~run - overwrite me");
}

void XThread::afterRun() {}

HelperThread::HelperThread(XThread *owner) : owner(owner) {}

void HelperThread::run() {
    owner->setRunning(true);
    owner->setJoined(false);
    owner->threadId = getCurrentThreadID();
    owner->run();
    owner->setRunning(false);
    owner->setFinished(true);
    owner->afterRun();
    done.store(true, std::memory_order_release);
}

} // namespace orv
