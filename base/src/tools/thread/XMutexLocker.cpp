// XMutexLocker.cpp: locks on worker threads only.
#include "orv/XMutexLocker.h"

#include "orv/Logger.h"

#include "tools/thread/QtMutexLock.h"

namespace orv {

XMutexLocker::XMutexLocker(QMutex *mutex) : mutex(isMainThread() ? nullptr : mutex) {
    if (this->mutex) {
        this->mutex->lock();
        raceChecker::acquired(this->mutex);
    }
}

XMutexLocker::~XMutexLocker() {
    if (mutex) {
        raceChecker::releasing(mutex);
        mutex->unlock();
    }
}

} // namespace orv
