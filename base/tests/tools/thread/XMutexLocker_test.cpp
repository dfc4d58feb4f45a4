// XMutexLocker_test.cpp: no lock on the main thread, a real lock between workers.
#include "orv/XMutexLocker.h"

#include "support/Test.h"

#include <QtCore/QMutex>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

using orv::XMutexLocker;

TEST(XMutexLocker, MainThreadNeitherTakesTheMutexNorWaitsForAWorkerHoldingIt) {
    QMutex mutex;
    {
        XMutexLocker lock(&mutex);
        ASSERT_TRUE(mutex.tryLock());
        mutex.unlock();
    }
    std::promise<void> locked, release;
    std::atomic<bool> released{false};
    std::thread holder([&] {
        mutex.lock();
        locked.set_value();
        // Bounded, so that a locker that does block fails the test instead of hanging it.
        release.get_future().wait_for(std::chrono::seconds(5));
        released = true;
        mutex.unlock();
    });
    locked.get_future().wait();
    {
        XMutexLocker lock(&mutex);
        EXPECT_FALSE(released.load());
    }
    release.set_value();
    holder.join();
}

TEST(XMutexLocker, WorkerHoldsTheMutexUntilTheLockerEndsAndPassesANullOne) {
    QMutex mutex;
    bool heldInside = false, freeAfter = false;
    std::thread worker([&] {
        { XMutexLocker none(nullptr); }
        {
            XMutexLocker lock(&mutex);
            std::thread([&] { heldInside = !mutex.tryLock(); }).join();
        }
        freeAfter = mutex.tryLock();
        if (freeAfter)
            mutex.unlock();
    });
    worker.join();
    EXPECT_TRUE(heldInside);
    EXPECT_TRUE(freeAfter);
}
