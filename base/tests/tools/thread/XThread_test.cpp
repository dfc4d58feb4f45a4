// XThread_test.cpp: thread state words across start, stop, join and restart; breakable sleeps.
#include "orv/XThread.h"

#include "support/Test.h"

#include <QtCore/QElapsedTimer>

#include <atomic>
#include <thread>

namespace orv {
namespace {

// Loops until stopped, counting its runs and remembering where it ran.
class Looper : public XThread {
public:
    std::atomic<int> runs{0}, afterRuns{0};
    std::atomic<bool> finishedBeforeAfterRun{false};
    std::atomic<unsigned int> ranOn{0};

protected:
    void run() override {
        ++runs;
        ranOn = getCurrentThreadID();
        while (isRunning())
            break_sleep(5);
    }
    void afterRun() override {
        finishedBeforeAfterRun = isFinished() && !isRunning();
        ++afterRuns;
    }
};

QString words(AbstractThread const &t) { return t.AbstractThread::toString(); }

bool waitFor(std::function<bool()> const &condition) {
    return test::pumpEventsUntil(condition, 10000);
}

TEST(XThread, StateWordsFollowStartStopJoinAndRestart) {
    Looper t;
    EXPECT_EQ(t.toString(), "XTHREAD [0]");
    t.join(); // before any start, these three do nothing
    t.stop();
    t.stopJoin();
    EXPECT_EQ(words(t), "{INITIALIZED}");
    t.start();
    ASSERT_TRUE(waitFor([&] { return t.isRunning(); }));
    EXPECT_EQ(words(t), "{INITIALIZED | RUNNING}");
    t.join(); // running: returns at once
    EXPECT_FALSE(t.isJoined());

    t.stop();
    ASSERT_TRUE(waitFor([&] { return t.isFinished(); }));
    EXPECT_EQ(words(t), "{INITIALIZED | FINISHED}");
    t.stop();  // finished: nothing to do
    t.start(); // finished and not joined: refused
    EXPECT_EQ(t.runs.load(), 1);

    t.join();
    EXPECT_EQ(words(t), "{INITIALIZED | FINISHED | JOINED}");
    EXPECT_EQ(t.afterRuns.load(), 1);
    EXPECT_TRUE(t.finishedBeforeAfterRun.load());
    EXPECT_NE(t.ranOn.load(), getCurrentThreadID());
    EXPECT_EQ(t.threadID(), t.ranOn.load());
    EXPECT_EQ(t.toString(), QStringLiteral("XTHREAD [%1]").arg(t.ranOn.load()));

    // A joined thread starts again; finished stays set through the second run.
    t.start();
    ASSERT_TRUE(waitFor([&] { return t.isRunning(); }));
    EXPECT_EQ(words(t), "{INITIALIZED | RUNNING | FINISHED}");
    t.start(); // running: refused
    t.stopJoin();
    EXPECT_EQ(words(t), "{INITIALIZED | FINISHED | JOINED}");
    EXPECT_EQ(t.runs.load(), 2);
    EXPECT_EQ(t.afterRuns.load(), 2);
    t.stopJoin(); // joined already: at once
    EXPECT_EQ(t.runs.load(), 2);
}

TEST(XThread, DefaultRunEndsSoonAfterStop) {
    XThread t;
    t.start();
    ASSERT_TRUE(waitFor([&] { return t.isRunning(); }));
    QElapsedTimer timer;
    timer.start();
    t.stopJoin();
    EXPECT_TRUE(t.isJoined());
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST(BaseThreadState, WordsInTheirOwnOrder) {
    struct Row {
        unsigned int flags;
        char const *text;
    } const rows[] = {
        // clang-format off
        {0, ""}, {BaseThreadState::RUNNING, "RUNNING | "},
        {BaseThreadState::CANCELLED | BaseThreadState::INITIALIZED, "INITIALIZED | , CANCELLED | "},
        {BaseThreadState::ERROR | BaseThreadState::FINISHED, "FINISHED | , ERROR | "},
    }; // clang-format on
    for (Row const &row : rows)
        EXPECT_EQ(BaseThreadState::bit_flags_as_string(AtomicBits(row.flags)), row.text);
    BaseThreadState state;
    state.set_running(true);
    state.set_error(true);
    EXPECT_EQ(state.flags(), 4u | 16u);
    EXPECT_TRUE(state.is_running() && state.is_error());
    EXPECT_FALSE(state.is_finished() || state.is_cancelled() || state.is_initialized());
}

TEST(BreakableSleep, EndsEarlyWhenTheFlagSaysSoAndSleepsTheFullTimeWhileItHolds) {
    QElapsedTimer timer;
    timer.start();
    BaseThread idle; // running (4) not set: no sleep at all
    idle.sleep_breakable(60000);
    XAtomic<bool> quit{false};
    std::thread breaker([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        quit = true;
    });
    xSleep_breakable(60000, quit);
    breaker.join();
    BaseThread busy;
    busy.set_running(true);
    std::thread stopper([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        busy.set_running(false);
    });
    busy.sleep_breakable(60000);
    stopper.join();
    EXPECT_LT(timer.elapsed(), 30000);

    timer.start();
    XAtomic<bool> never{false};
    xSleep_breakable(40, never, 5);
    EXPECT_GE(timer.elapsed(), 40);
}

} // namespace
} // namespace orv
