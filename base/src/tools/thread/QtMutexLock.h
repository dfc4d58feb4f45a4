// QtMutexLock.h: a scope lock on a QMutex whose hand-over race checkers can follow.
//
//   orv::QtMutexLock lock(&mutex);
//
// A contended QMutex is handed from thread to thread inside Qt's own library, which
// ThreadSanitizer does not see into; only the inline uncontended path is visible.
// Marking the acquire and the release on the mutex's address keeps its view of who
// owns the guarded data right. Without the checker the marks compile to nothing.
#pragma once

#include <QtCore/QMutex>

#if defined(__SANITIZE_THREAD__)
#define ORV_RACE_CHECKER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define ORV_RACE_CHECKER 1
#endif
#endif

#ifdef ORV_RACE_CHECKER
extern "C" void __tsan_acquire(void *address);
extern "C" void __tsan_release(void *address);
#endif

namespace orv {

namespace raceChecker {
inline void acquired([[maybe_unused]] QMutex *mutex) {
#ifdef ORV_RACE_CHECKER
    __tsan_acquire(mutex);
#endif
}
inline void releasing([[maybe_unused]] QMutex *mutex) {
#ifdef ORV_RACE_CHECKER
    __tsan_release(mutex);
#endif
}
} // namespace raceChecker

class QtMutexLock {
public:
    explicit QtMutexLock(QMutex *mutex) : mutex(mutex) {
        mutex->lock();
        raceChecker::acquired(mutex);
    }
    ~QtMutexLock() {
        raceChecker::releasing(mutex);
        mutex->unlock();
    }
    QtMutexLock(QtMutexLock const &) = delete;
    QtMutexLock &operator=(QtMutexLock const &) = delete;

private:
    QMutex *mutex;
};

} // namespace orv
