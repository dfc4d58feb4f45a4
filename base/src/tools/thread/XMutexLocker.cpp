// XMutexLocker.cpp: locks on worker threads only.
#include "orv/XMutexLocker.h"

#include "orv/Logger.h"

#include <QtCore/QMutex>

namespace orv {

XMutexLocker::XMutexLocker(QMutex *mutex) : mutex(isMainThread() ? nullptr : mutex) {
    if (this->mutex)
        this->mutex->lock();
}

XMutexLocker::~XMutexLocker() {
    if (mutex)
        mutex->unlock();
}

} // namespace orv
