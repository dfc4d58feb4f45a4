// Kernel_test.cpp: work handed to the GUI thread, kernel events in notify, and what a
// kernel takes from its arguments; the test main's application is a KernelTerminal.
#include "orv/GuiThread.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/XMem.h"
#include "orv/XThread.h"
#include "orv/XThreadPool.h"

#include "support/Test.h"

#include <QtCore/QTimer>

#include <numeric>
#include <thread>
#include <utility>
#include <vector>

namespace orv {
namespace {

TEST(Kernel, OnTheGuiThreadWorkRunsBeforeTheCallReturnsUnlessDelayed) {
    bool ran = false;
    Kernel::runInGui([&] { ran = true; }, 0);
    EXPECT_TRUE(ran);
    ran = false;
    Kernel::runInGui([&] { ran = true; }, 10);
    EXPECT_FALSE(ran);
    EXPECT_TRUE(test::pumpEventsUntil([&] { return ran; }, 30000));
}

TEST(Kernel, EmptyFunctionOnEveryHandOverIsLoggedAndNothingRuns) {
    char const *const lambdaLine = "XLamdaGUIEvent::runMethod functionGUI == null";
    struct Row {
        char const *name;
        std::function<void()> handOver;
        char const *line;
    } const rows[] = {
        {"runInGui", [] { Kernel::runInGui(nullptr, 0); }, lambdaLine},
        {"runInGui delayed", [] { Kernel::runInGui(nullptr, 10); }, lambdaLine},
        {"run_in_Gui_Thread", [] { qt::run_in_Gui_Thread(nullptr, 0); }, lambdaLine},
        {"move_mem_to_main_thread", [] { Kernel::move_mem_to_main_thread(XMem("kept"), nullptr); },
         "OrvKernelEvent::runMethod, fuData == nullptr"},
        {"pool",
         [] {
             XThreadPool::start_function_global(nullptr);
             XThreadPool::wait_for_all(30000);
         },
         "XFunctionRunner::run, function == null"},
    };
    for (Row const &row : rows)
        EXPECT_EQ(test::linesLoggedBy(row.handOver, ERROR), test::Lines{row.line}) << row.name;
    // A delayed empty function would have thrown inside the event loop by now.
    test::pumpEventsUntil([] { return false; }, 50);
}

TEST(Kernel, WorkFromWorkersRunsOnTheMainThreadInPostingOrderWithoutDelay) {
    unsigned int const mainId = getCurrentThreadID();
    int const workers = 4, perWorker = 50;
    std::vector<std::vector<int>> order(workers);
    int ran = 0;
    bool offMain = false;
    std::vector<std::thread> threads;
    for (int w = 0; w < workers; ++w)
        threads.emplace_back([&, w] {
            for (int i = 0; i < perWorker; ++i)
                Kernel::runInGui(
                    [&, w, i] {
                        offMain = offMain || getCurrentThreadID() != mainId;
                        order[static_cast<size_t>(w)].push_back(i);
                        ++ran;
                    },
                    i == 0 ? 60000 : 1000); // the delay is dropped on this path
        });
    for (std::thread &t : threads)
        t.join();
    EXPECT_EQ(ran, 0); // the callers didn't wait, and the loop hasn't turned yet
    ASSERT_TRUE(test::pumpEventsUntil([&] { return ran == workers * perWorker; }, 30000));
    EXPECT_FALSE(offMain);
    std::vector<int> inPostingOrder(perWorker);
    std::iota(inPostingOrder.begin(), inPostingOrder.end(), 0);
    for (std::vector<int> const &one : order)
        EXPECT_EQ(one, inPostingOrder);
}

TEST(KernelEvents, TellsKernelEventsByType) {
    struct Row {
        int type;
        bool kernel, generic, lambda;
    } const rows[] = {
        // clang-format off
        {KernelEvents::EV_TYPE_GENERIC, true, true, false},
        {KernelEvents::EV_TYPE_LAMBDA, true, false, true}, {QEvent::User, false, false, false},
        {9001, false, false, false},
    }; // clang-format on
    for (Row const &row : rows) {
        QEvent event(static_cast<QEvent::Type>(row.type));
        EXPECT_EQ(KernelEvents::is_kernel_event(&event), row.kernel) << row.type;
        EXPECT_EQ(KernelEvents::is_event_Generic(&event), row.generic) << row.type;
        EXPECT_EQ(KernelEvents::is_event_lambda(&event), row.lambda) << row.type;
    }
    EXPECT_FALSE(KernelEvents::is_kernel_event(nullptr) ||
                 KernelEvents::is_event_Generic(nullptr) || KernelEvents::is_event_lambda(nullptr));
}

struct CountingEvent : KernelEvents {
    explicit CountingEvent(int &runs) : KernelEvents(EV_TYPE_GENERIC), runs(runs) {}
    void runMethod() override { ++runs; }
    int &runs;
};

TEST(KernelEvents, NotifyRunsAKernelEventBeforeTheReceiverAndPassesOthers) {
    QObject receiver;
    int runs = 0;
    CountingEvent generic(runs);
    QCoreApplication::sendEvent(&receiver, &generic);
    EXPECT_EQ(runs, 1);
    // Type 9000 but no KernelEvents: nothing to run.
    QEvent plain(static_cast<QEvent::Type>(KernelEvents::EV_TYPE_GENERIC));
    EXPECT_TRUE(Kernel::kernel().filterOrvEvents(&receiver, &plain));
    QCoreApplication::sendEvent(&receiver, &plain);
    EXPECT_EQ(runs, 1);
}

TEST(KernelEvents, EmptyEventIsLoggedAndDebugTracesTheDelivery) {
    bool ran = false;
    std::vector<test::CapturedLine> const lines = test::capturedBy([&] {
        XLambda_GUI_Event empty{std::function<void()>()};
        QObject receiver;
        QCoreApplication::sendEvent(&receiver, &empty);
        Kernel::set_debug_kernel_events(true);
        std::thread([&] { Kernel::runInGui([&] { ran = true; }, 0); }).join();
        EXPECT_TRUE(test::pumpEventsUntil([&] { return ran; }, 30000));
        Kernel::set_debug_kernel_events(false);
    });
    std::vector<std::pair<unsigned int, QString>> shown; // indentation, text
    for (test::CapturedLine const &line : lines)
        shown.emplace_back(line.space, line.text);
    EXPECT_EQ(shown, (std::vector<std::pair<unsigned int, QString>>{
                         {0, "XLamdaGUIEvent::runMethod functionGUI == null"},
                         {0, "XLamdaGUIEvent::XLambda_GUI_Event, msWait:0"},
                         {0, "Kernel::filterOrvEvents - XKernelEvent"},
                         {4, "Kernel::filterOrvEvents - XKernelEvent"},
                         {0, "XLamdaGUIEvent::runMethod, msWait:0"},
                         {0, "XLamdaGUIEvent::~runMethod"}}));
}

TEST(Kernel, MovedBlocksReachTheMainThreadWithoutACopy) {
    test::CapturingAppender &log = test::startCapturingLogger();
    unsigned int const mainId = getCurrentThreadID();
    // On the GUI thread the function takes the block before the call returns.
    XMem here("on the gui thread");
    char const *hereBytes = here.mem();
    char const *took = nullptr;
    Kernel::move_mem_to_main_thread(std::move(here), [&](XMem &&got) { took = got.mem(); });
    EXPECT_EQ(took, hereBytes);

    // From a worker the event owns the block until the main loop turns.
    Kernel::set_debug_kernel_events(true);
    char const *sentBytes = nullptr;
    unsigned int workerId = 0, ranOn = 0;
    XMem arrived;
    std::thread([&] {
        workerId = getCurrentThreadID();
        // Delivered in posting order: the empty function's event is done first.
        Kernel::move_mem_to_main_thread(XMem("dropped"), nullptr);
        XMem block("from a worker");
        sentBytes = block.mem();
        Kernel::move_mem_to_main_thread(std::move(block), [&](XMem &&got) {
            ranOn = getCurrentThreadID();
            arrived = std::move(got);
        });
    }).join();
    EXPECT_EQ(ranOn, 0u);
    ASSERT_TRUE(test::pumpEventsUntil([&] { return ranOn != 0; }, 30000));
    Kernel::set_debug_kernel_events(false);
    EXPECT_EQ(ranOn, mainId);
    EXPECT_EQ(arrived.mem(), sentBytes);
    EXPECT_STREQ(arrived.mem(), "from a worker");
    EXPECT_TRUE(log.waitForText(
        QStringLiteral("Kernel::move_mem_to_main_thread - OTHER thread:%1").arg(workerId)));
    EXPECT_TRUE(log.waitForText("OrvKernelEvent::~runMethod"));
    EXPECT_TRUE(log.waitForText("OrvKernelEvent::runMethod, fuData == nullptr"));
}

struct TestKernel : Kernel {
    using Kernel::Kernel;
    QString toString() const override { return QStringLiteral("TestKernel"); }
};

TEST(Kernel, PlaceHolderKeepsTheRealArgumentsArguments) {
    // Static: the kernel's argument statics keep pointing here after the test.
    static char prog[] = "prog", key[] = "--key", value[] = "v";
    static char *args[] = {prog, key, value, nullptr};
    int argc = 3;
    Kernel *const appKernel = &Kernel::kernel();
    {
        TestKernel kernel(argc, args, nullptr, true);
        EXPECT_EQ(argc, 4);
        ASSERT_EQ(Kernel::argc, 4);
        EXPECT_STREQ(Kernel::argv[0], "prog");
        EXPECT_STREQ(Kernel::argv[1], "PlaceHolder");
        EXPECT_STREQ(Kernel::argv[3], "v");
        EXPECT_EQ(Kernel::argv[4], nullptr);
        EXPECT_EQ(kernel.testName(), "PlaceHolder");
        EXPECT_EQ(Kernel::theTestName(), "PlaceHolder");
        EXPECT_EQ(kernel.getString("key", ""), "v");
        // The test main's kernel came first and stays the main command line.
        EXPECT_EQ(CommandLine::cmdMain, appKernel);
        EXPECT_EQ(&Kernel::kernel(), &kernel);
        EXPECT_EQ(Kernel::getMainThreadID(), static_cast<long>(getCurrentThreadID()));
        StartTestParameter start = kernel.getStartTestParameter();
        EXPECT_EQ(start.program, "prog");
        EXPECT_EQ(start.command, "PlaceHolder");
        ASSERT_EQ(start.items.size(), 1u);
        EXPECT_EQ(start.items[0].value, "v");
        // The argument copy is deep.
        ArgsEnv &copy = Kernel::getArgsEnv();
        ASSERT_EQ(copy.argc, 4);
        EXPECT_NE(copy.argv[2], args[1]);
        EXPECT_STREQ(copy.argv[2], "--key");
    }
    // _kernel outlives its kernel; put back the test main's for the other tests.
    Kernel::_kernel = appKernel;
}

TEST(KernelTerminal, QuitFromAWorkerEndsTheEventLoop) {
    EXPECT_EQ(Kernel::kernel().toString(), "KernelTerminal");
    QTimer bound;
    bound.setSingleShot(true);
    QObject::connect(&bound, &QTimer::timeout, [] { QCoreApplication::exit(99); });
    bound.start(30000);
    std::thread worker([] { Kernel::kernel().quit(); });
    EXPECT_EQ(Kernel::kernel().execute(), 0);
    worker.join();
}

} // namespace
} // namespace orv
