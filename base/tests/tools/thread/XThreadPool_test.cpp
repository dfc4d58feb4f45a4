// XThreadPool_test.cpp: work that really runs on pool threads, and lightweight-thread listeners
// that run on the main thread.
#include "orv/XThreadPool.h"

#include "support/Test.h"

#include <atomic>

namespace orv {
namespace {

TEST(XThreadPool, GlobalAndOwnPoolsRunEveryFunctionOnAPoolThread) {
    unsigned int const mainId = getCurrentThreadID();
    constexpr int count = 200;
    std::atomic<int> ran{0};
    std::atomic<bool> onMain{false};
    auto work = [&] {
        if (getCurrentThreadID() == mainId)
            onMain = true;
        ++ran;
    };
    for (int i = 0; i < count; ++i)
        XThreadPool::start_function_global(work);
    ASSERT_TRUE(test::pumpEventsUntil([&] { return ran == count; }, 10000));
    XThreadPool::wait_for_all(10000);
    XThreadPool pool;
    pool.start(work);
    ASSERT_TRUE(pool.waitForDone(10000));
    EXPECT_EQ(ran.load(), count + 1);
    EXPECT_FALSE(onMain.load());
}

// Remembers the thread it ran on.
class Probe : public XLightweightThread {
public:
    std::atomic<unsigned int> ranOn{0};
    std::atomic<int> runs{0};

protected:
    void runCustom() override {
        ranOn = getCurrentThreadID();
        ++runs;
    }
};

TEST(XLightweightThread, ListenersFireOnTheMainThread) {
    unsigned int const mainId = getCurrentThreadID();
    Probe probe;
    std::atomic<int> started{0}, finished{0};
    std::atomic<bool> offMain{false};
    auto count = [&](std::atomic<int> &calls) {
        return [&] {
            offMain = offMain || getCurrentThreadID() != mainId;
            ++calls;
        };
    };
    probe.listenerStarted.addListener(count(started));
    probe.listenerFinished.addListener(count(finished));
    probe.enableListener(true);
    probe.prepareListener(true);

    XThreadPool::start_global(&probe, false);
    ASSERT_TRUE(test::pumpEventsUntil([&] { return finished == 1 && probe.isHandedBack(); }));
    EXPECT_EQ(started.load(), 1);
    EXPECT_FALSE(offMain.load());
    EXPECT_NE(probe.ranOn.load(), mainId);
    EXPECT_EQ(probe.AbstractThread::toString(), "{INITIALIZED | FINISHED}");

    // Reused, on a pool of its own, with the listeners switched off again.
    probe.reuse();
    EXPECT_EQ(probe.AbstractThread::toString(), "{INITIALIZED}");
    probe.prepareListener(false);
    EXPECT_EQ(probe.bits().listenerChange().size(), 0u);
    XThreadPool pool;
    pool.start_lwThread(&probe, false);
    ASSERT_TRUE(pool.waitForDone(10000));
    ASSERT_TRUE(test::pumpEventsUntil([&] { return probe.isHandedBack(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(probe.runs.load(), 2);
    EXPECT_EQ(started.load(), 1);
    EXPECT_EQ(finished.load(), 1);
}

TEST(XLightweightThreadDeathTest, NullThreadForTheGlobalPoolIsFatal) {
    test::expectFatal([] { XThreadPool::start_global(nullptr, true); },
                      "^nullptr:lwThread == NULL\n");
}

} // namespace
} // namespace orv
