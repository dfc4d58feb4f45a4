// XMutexLocker.h: a scope lock that the main thread never takes.
//
//   orv::XMutexLocker lock(&mutex);   // locks on workers, no-op on the main thread
//
// The main thread must never block behind a worker, so code under this lock is
// protected only between worker threads. Listener lists rely on that.
#pragma once

#include "orv/OrvGlobal.h"

class QMutex;

namespace orv {

class ORV_EXPORT XMutexLocker {
public:
    explicit XMutexLocker(QMutex *mutex);
    ~XMutexLocker();
    XMutexLocker(XMutexLocker const &) = delete;
    XMutexLocker &operator=(XMutexLocker const &) = delete;

private:
    QMutex *mutex;
};

} // namespace orv
