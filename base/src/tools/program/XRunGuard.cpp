// XRunGuard.cpp: one instance per key, held as a small shared segment that only the
// holder keeps attached; a system semaphore orders the guards of all processes.
#include "orv/XRunGuard.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QSharedMemory>
#include <QtCore/QSystemSemaphore>

namespace orv {

namespace {

QString derivedKey(QString const &key, char const *suffix) {
    return QString::fromLatin1(
               QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex()) +
           QLatin1String(suffix);
}

class SemaphoreHold {
public:
    explicit SemaphoreHold(QSystemSemaphore &semaphore) : semaphore(semaphore) {
        semaphore.acquire();
    }
    ~SemaphoreHold() { semaphore.release(); }
    SemaphoreHold(SemaphoreHold const &) = delete;
    SemaphoreHold &operator=(SemaphoreHold const &) = delete;

private:
    QSystemSemaphore &semaphore;
};

} // namespace

struct XRunGuard::Private {
    explicit Private(QString const &key)
        : key(key), memLockKey(derivedKey(key, "_memLockKey")),
          sharedmemKey(derivedKey(key, "_sharedmemKey")), sharedMem(sharedmemKey),
          memLock(memLockKey, 1, QSystemSemaphore::Open) {}

    QString key;
    QString memLockKey;
    QString sharedmemKey;
    QSharedMemory sharedMem;
    QSystemSemaphore memLock;
};

XRunGuard::XRunGuard(QString const &key) : d(std::make_unique<Private>(key)) {
    SemaphoreHold hold(d->memLock);
    // A segment that a crashed run left behind has no one attached: attaching and
    // detaching the last handle removes it, so the next create succeeds.
    QSharedMemory leftover(d->sharedmemKey);
    leftover.attach();
}

XRunGuard::~XRunGuard() {
    SemaphoreHold hold(d->memLock);
    if (d->sharedMem.isAttached())
        d->sharedMem.detach();
}

bool XRunGuard::is_another_instance_running() {
    if (d->sharedMem.isAttached())
        return false;
    SemaphoreHold hold(d->memLock);
    bool const running = d->sharedMem.attach();
    if (running)
        d->sharedMem.detach();
    return running;
}

bool XRunGuard::run_instance_of_program() {
    if (is_another_instance_running())
        return false;
    {
        SemaphoreHold hold(d->memLock);
        if (d->sharedMem.create(8))
            return true;
    }
    SemaphoreHold hold(d->memLock);
    if (d->sharedMem.isAttached())
        d->sharedMem.detach();
    return false;
}

} // namespace orv
