// AbstractTask_test.cpp: a task run by std::async: cancel before, during and after the
// run, timeout, progress seen on the main thread, and the texts of its states.
#include "orv/AbstractTask.h"

#include "orv/XThread.h"
#include "support/EventPump.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <vector>

namespace orv {
namespace {

// Runs a job on a thread of its own, as a subclass of the library would.
class AsyncTask : public AbstractTask {
public:
    ~AsyncTask() override {
        if (future.valid())
            future.wait();
    }
    void start(std::function<void(AsyncTask &)> job) {
        stopwatch.start();
        setTaskState(STATE_BUSY);
        future = std::async(std::launch::async, [this, job] {
                     job(*this);
                     finish();
                 }).share();
    }
};

TEST(AbstractTask, CancelBeforeDuringAndAfterTheRunEndsFinishedWithErrorCancel) {
    enum When { Before, During, After };
    for (When when : {Before, During, After}) {
        AsyncTask task;
        std::atomic<int> taken{0};
        // Steps until cancelled; only the run cancelled after its end stops by itself.
        int const steps = when == After ? 5 : 1 << 30;
        if (when == Before)
            task.setCancel();
        task.start([&](AsyncTask &t) {
            while (!t.isCancelled() && taken < steps)
                ++taken;
        });
        if (when == During) {
            ASSERT_TRUE(test::pumpEventsUntil([&] { return taken > 0; }));
            task.setCancel();
        }
        ASSERT_TRUE(task.wait_for_milliseconds(10000)) << when;
        if (when == After) {
            EXPECT_TRUE(task.isOK());
            EXPECT_EQ(task.toString(), "TASK is ready:true");
            task.setCancel();
        }
        EXPECT_TRUE(task.isFinished() && task.isCancelled() && task.isError()) << when;
        EXPECT_FALSE(task.isOK());
        EXPECT_EQ(task.toString(), "TASK is ready:true, error code:10, error: 'CANCEL'");
        EXPECT_EQ(taken == 0, when == Before);
    }
}

TEST(AbstractTask, AJobThatWatchesItsTimeoutEndsWithErrorTimeout) {
    AsyncTask task;
    task.setTimeout(20);
    task.start([](AsyncTask &t) {
        while (!t.timeIsUP())
            std::this_thread::yield();
        t.setError(AbstractTask::TIMEOUT);
    });
    ASSERT_TRUE(task.wait_for_microseconds(10000000));
    EXPECT_GE(task.elapsedTime(), 20u);
    EXPECT_EQ(task.toString(), "TASK is ready:true, error code:1, error: 'TIMEOUT'");
    AsyncTask zero; // timeout 0: up at the first look after the start
    zero.start([](AsyncTask &t) { EXPECT_TRUE(t.timeIsUP()); });
}

TEST(AbstractTask, ProgressFromTheJobArrivesInOrderOnTheMainThread) {
    AsyncTask task;
    unsigned int const mainThread = getCurrentThreadID();
    QStringList seen;
    task.listenerProgress.addListener([&](unsigned int value) {
        seen << QString::number(value) + (getCurrentThreadID() == mainThread ? "" : "!");
    });
    task.listenerProgressString.addListener([&](QString text) { seen << text; });
    task.start([](AsyncTask &t) {
        for (unsigned int percent = 50; percent <= 100; percent += 50) {
            t.fireProgress(percent);
            t.fireProgressString(QStringLiteral("at %1").arg(percent));
        }
    });
    ASSERT_TRUE(test::pumpEventsUntil([&] { return seen.size() == 4; }));
    EXPECT_EQ(seen, QStringList({"50", "at 50", "100", "at 100"}));
}

TEST(AbstractTask, StatesAndTheirTextsBeforeAndWithoutAFinish) {
    AsyncTask task;
    EXPECT_TRUE(task.isInitialized());
    EXPECT_EQ(task.toString(), "TASK is initialized");
    EXPECT_FALSE(task.wait_for_milliseconds(1)); // no future yet
    task.setTaskState(AbstractTask::STATE_BUSY);
    EXPECT_EQ(task.toString(), "TASK is ready:false");
    std::vector<QString> const lines =
        test::linesLoggedBy([&] { EXPECT_FALSE(task.isOK()); }, ERROR);
    EXPECT_EQ(lines, std::vector<QString>{"AbstractTask::isOK(), !stopwatch.isStopped()"});
    task.finish();
    EXPECT_EQ(task.taskState(), 2u);
    task.setError(11);
    EXPECT_EQ(task.errorAsString(), "UNKNOWN-TASK-ERROR:11");
}

} // namespace
} // namespace orv
