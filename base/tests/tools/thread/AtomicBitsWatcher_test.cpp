// AtomicBitsWatcher_test.cpp: blocking waits that time out, and ones another thread wakes.
#include "orv/AtomicBits.h"

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>

#include <atomic>
#include <chrono>
#include <thread>

namespace orv {
namespace {

// Runs action on another thread after a short delay, so that the caller is already waiting.
struct Later {
    template <typename Action>
    explicit Later(Action action)
        : worker([action] {
              std::this_thread::sleep_for(std::chrono::milliseconds(30));
              action();
          }) {}
    ~Later() { worker.join(); }
    std::thread worker;
};

TEST(AtomicBitsWatcher, WaitTimesOutWhenNobodySetsTheBitAndReturnsAtOnceWhenSet) {
    AtomicBitsWatcher watcher(6);
    EXPECT_FALSE(watcher.wait_until_bit_is_set(1, 50));
    EXPECT_FALSE(watcher.wait_stateChange(50));
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(watcher.wait_until_bit_is_set(2, 60000));
    watcher.wait_until_bit_is_set(4);
    EXPECT_LT(timer.elapsed(), 30000);
    EXPECT_EQ(watcher.toString(), AtomicBits(6).toString());
}

TEST(AtomicBitsWatcher, SetterOnAnotherThreadWakesTheWaiter) {
    AtomicBitsWatcher watcher;
    {
        Later setter([&] { watcher.set_flag(4, true); });
        EXPECT_TRUE(watcher.wait_until_bit_is_set(4 | 8, 10000));
    }
    EXPECT_EQ(watcher.get_flags(), 4u);
    EXPECT_TRUE(watcher.is_flag(4));
}

TEST(AtomicBitsWatcher, UnlimitedStateChangeWaitEndsOnAChange) {
    AtomicBitsWatcher watcher;
    std::atomic<bool> woken{false};
    // Keeps changing the word, so the wait can't miss the change whenever it begins.
    std::thread toggler([&] {
        for (unsigned int i = 0; !woken; ++i) {
            watcher.set_bit_number(5, i % 2 == 0);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
    watcher.wait_stateChange();
    woken = true;
    toggler.join();
}

TEST(AtomicBitsWatcher, UnchangedWordDoesNotEndAStateChangeWait) {
    AtomicBitsWatcher watcher(3);
    {
        Later same([&] { watcher.set_flags(3); });
        EXPECT_FALSE(watcher.wait_stateChange(300));
    }
    Later other([&] { watcher.set_flags(1); });
    EXPECT_TRUE(watcher.wait_stateChange(10000));
}

TEST(AtomicBitsWatcher, StopWakesTheBitWaitButNotTheStateChangeWait) {
    AtomicBitsWatcher watcher;
    {
        Later stopper([&] { watcher.stop(); });
        EXPECT_FALSE(watcher.wait_until_bit_is_set(1, 10000));
    }
    EXPECT_FALSE(watcher.is_running());
    watcher.wait_until_bit_is_set(1); // stopped: returns at once
    {
        Later stopper([&] { watcher.stop(); });
        EXPECT_FALSE(watcher.wait_stateChange(300));
    }
    watcher.set_flag(2, true);
    watcher.reset();
    EXPECT_TRUE(watcher.is_running());
    EXPECT_EQ(watcher.get_flags(), 0u);
    EXPECT_FALSE(watcher.wait_until_bit_is_set(1, 50));
}

} // namespace
} // namespace orv
