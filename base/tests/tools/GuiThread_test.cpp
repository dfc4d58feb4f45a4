// GuiThread_test.cpp: which thread counts as the GUI thread, and when handed-over work runs.
#include "orv/GuiThread.h"
#include "orv/XThread.h"

#include "support/EventPump.h"

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>

#include <atomic>
#include <thread>
#include <vector>

namespace orv {
namespace {

TEST(GuiThread, OnlyTheApplicationThreadIsTheGuiThreadAndThereWorkRunsBeforeTheCallReturns) {
    EXPECT_TRUE(qt::is_Gui_Thread());
    std::atomic<bool> workerIsGui{true};
    std::thread([&] { workerIsGui = qt::is_Gui_Thread(); }).join();
    EXPECT_FALSE(workerIsGui.load());
    bool ran = false;
    qt::run_in_Gui_Thread([&] { ran = true; }, 0);
    EXPECT_TRUE(ran);
}

TEST(GuiThread, DelayOnTheGuiThreadGoesThroughTheEventLoop) {
    std::atomic<bool> ran{false};
    qt::run_in_Gui_Thread([&] { ran = true; }, 20);
    EXPECT_FALSE(ran.load());
    EXPECT_TRUE(test::pumpEventsUntil([&] { return ran.load(); }));
}

TEST(GuiThread, FromAWorkerWorkRunsOnTheGuiThreadInPostingOrderAndIgnoresTheDelay) {
    unsigned int const mainId = getCurrentThreadID();
    std::vector<int> order;
    std::atomic<int> ran{0};
    std::atomic<bool> offMain{false};
    std::thread worker([&] {
        for (int i = 0; i < 50; ++i) {
            qt::run_in_Gui_Thread(
                [&, i] {
                    offMain = offMain || getCurrentThreadID() != mainId;
                    order.push_back(i);
                    ++ran;
                },
                i == 0 ? 60000 : 0);
        }
        qt::run_in_Gui_Thread(std::function<void()>(), 0); // logged and skipped
    });
    worker.join();
    EXPECT_EQ(ran.load(), 0); // posted: nothing runs before the loop turns
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(test::pumpEventsUntil([&] { return ran == 50; }));
    EXPECT_LT(timer.elapsed(), 30000); // the 60 s delay was dropped
    EXPECT_FALSE(offMain.load());
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(order[static_cast<size_t>(i)], i);
}

} // namespace
} // namespace orv
