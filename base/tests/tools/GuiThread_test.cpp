// GuiThread_test.cpp: which thread counts as the GUI thread, and that run_in_Gui_Thread
// is the kernel's hand-over (whose cases Kernel_test.cpp covers).
#include "orv/GuiThread.h"

#include "support/EventPump.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace orv {
namespace {

TEST(GuiThread, OnlyTheApplicationThreadIsTheGuiThread) {
    EXPECT_TRUE(qt::is_Gui_Thread());
    std::atomic<bool> workerIsGui{true};
    std::thread([&] { workerIsGui = qt::is_Gui_Thread(); }).join();
    EXPECT_FALSE(workerIsGui.load());
}

TEST(GuiThread, RunsAtOnceHereAndThroughTheLoopFromAWorker) {
    bool ran = false;
    qt::run_in_Gui_Thread([&] { ran = true; }, 0);
    EXPECT_TRUE(ran);
    std::atomic<bool> posted{false};
    std::thread([&] { qt::run_in_Gui_Thread([&] { posted = true; }, 60000); }).join();
    EXPECT_FALSE(posted.load());
    // The pump gives up long before the 60 s a kept delay would take.
    EXPECT_TRUE(test::pumpEventsUntil([&] { return posted.load(); }));
}

} // namespace
} // namespace orv
