// AtomicBitsWatcher_test.cpp: what the waits return, which wakes end them, and which don't.
#include "orv/AtomicBits.h"

#include "support/Test.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace orv {
namespace {

using Watcher = std::unique_ptr<AtomicBitsWatcher>;

// Runs wait on a thread of its own and calls nudge every 5 ms until wait has returned,
// for at most 10 s; true when it did. A wait that never returns keeps its watcher (it is
// never freed), so that the test fails instead of hanging.
bool returns(Watcher &watcher, std::function<void(AtomicBitsWatcher &)> wait,
             std::function<void(AtomicBitsWatcher &)> nudge) {
    auto done = std::make_shared<std::atomic<bool>>(false);
    AtomicBitsWatcher *w = watcher.get();
    std::thread([w, wait, done] {
        wait(*w);
        *done = true;
    }).detach();
    for (int i = 0; i < 2000 && !*done; ++i) {
        nudge(*w);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    if (!*done)
        watcher.release();
    return *done;
}

TEST(AtomicBitsWatcher, TimedWaitsAnswerWhetherTheirEventCame) {
    AtomicBitsWatcher watcher(6);
    EXPECT_FALSE(watcher.wait_until_bit_is_set(1, 50));
    EXPECT_FALSE(watcher.wait_stateChange(50));
    EXPECT_TRUE(watcher.wait_until_bit_is_set(1 | 2, 0));
    std::thread setter([&] { watcher.set_flag(8, true); });
    EXPECT_TRUE(watcher.wait_until_bit_is_set(8, 10000));
    setter.join();
    EXPECT_EQ(watcher.get_flags(), 14u);
    EXPECT_TRUE(watcher.is_flag(8));
    EXPECT_EQ(watcher.toString(), AtomicBits(14).toString());
}

TEST(AtomicBitsWatcher, StateChangeWaitEndsOnADifferentWordOnly) {
    AtomicBitsWatcher watcher(3);
    std::thread same([&] { watcher.set_flags(3); });
    EXPECT_FALSE(watcher.wait_stateChange(300));
    same.join();
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        watcher.set_flags(1);
    });
    EXPECT_TRUE(watcher.wait_stateChange(10000));
    other.join();
}

TEST(AtomicBitsWatcher, UnlimitedWaitsReturnOnTheirEvent) {
    Watcher watcher(new AtomicBitsWatcher(0));
    unsigned int next = 0;
    unsigned int seen = 0;
    EXPECT_TRUE(returns(
        watcher,
        [&seen](AtomicBitsWatcher &w) {
            w.wait_stateChange();
            seen = w.get_flags();
        },
        [&next](AtomicBitsWatcher &w) { w.set_flags(++next); })); // never 0 again
    EXPECT_NE(seen, 0u);
    EXPECT_TRUE(returns(
        watcher, [](AtomicBitsWatcher &w) { w.wait_until_bit_is_set(0x100); },
        [](AtomicBitsWatcher &w) { w.set_flag(0x100, true); }));
}

TEST(AtomicBitsWatcher, StopEndsTheBitWaitButNotTheStateChangeWait) {
    Watcher watcher(new AtomicBitsWatcher(0));
    EXPECT_TRUE(returns(
        watcher, [](AtomicBitsWatcher &w) { w.wait_until_bit_is_set(1); },
        [](AtomicBitsWatcher &w) { w.stop(); }));
    EXPECT_FALSE(watcher->is_running());
    EXPECT_FALSE(watcher->wait_until_bit_is_set(1, 10000)); // stopped: at once
    EXPECT_FALSE(watcher->wait_stateChange(50));
    watcher->set_flag(2, true);
    watcher->reset();
    EXPECT_TRUE(watcher->is_running());
    EXPECT_EQ(watcher->get_flags(), 0u);
    EXPECT_FALSE(watcher->wait_until_bit_is_set(1, 50));
}

} // namespace
} // namespace orv
