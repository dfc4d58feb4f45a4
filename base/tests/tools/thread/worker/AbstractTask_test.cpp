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

// Steps until cancelled, or until it took `steps` steps.
void stepUntilCancelled(AsyncTask &task, std::atomic<int> &taken, int steps) {
    while (!task.isCancelled() && taken < steps) {
        ++taken;
        std::this_thread::yield();
    }
}

TEST(AbstractTask, ErrorsHaveTheirWords) {
    struct Row {
        unsigned int error;
        char const *text;
    } const rows[] = {{1, "TIMEOUT"},
                      {2, "SIZE"},
                      {3, "MEMORY"},
                      {4, "FILE_NOT_FOUND"},
                      {5, "READ"},
                      {6, "READ_RESOURCE"},
                      {7, "READ_EOF"},
                      {8, "WRITE"},
                      {9, "PARSER"},
                      {10, "CANCEL"},
                      {11, "UNKNOWN-TASK-ERROR:11"},
                      {0, "UNKNOWN-TASK-ERROR:0"}};
    for (Row const &row : rows)
        EXPECT_EQ(AbstractTask::errorToString(row.error), row.text) << row.error;
}

TEST(AbstractTask, CancelBeforeDuringAndAfterTheRunEndsFinishedWithErrorCancel) {
    enum When { Before, During, After };
    for (When when : {Before, During, After}) {
        AsyncTask task;
        std::atomic<int> taken{0};
        // Only the run cancelled after its end ends by its own count.
        int const steps = when == After ? 5 : 1 << 30;
        if (when == Before)
            task.setCancel();
        task.start([&](AsyncTask &t) { stepUntilCancelled(t, taken, steps); });
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
        EXPECT_TRUE(task.isFinished()) << when;
        EXPECT_TRUE(task.isCancelled());
        EXPECT_TRUE(task.isError());
        EXPECT_FALSE(task.isOK());
        EXPECT_EQ(task.errorAsString(), "CANCEL");
        EXPECT_EQ(task.toString(), "TASK is ready:true, error code:10, error: 'CANCEL'");
        EXPECT_EQ(taken.load() == 0, when == Before);
        if (when == After) {
            EXPECT_EQ(taken.load(), 5);
        }
    }
}

TEST(AbstractTask, AJobThatWatchesItsTimeoutEndsWithErrorTimeout) {
    AsyncTask task;
    task.setTimeout(20);
    EXPECT_EQ(task.timeout(), 20u);
    task.start([](AsyncTask &t) {
        while (!t.timeIsUP())
            std::this_thread::yield();
        t.setError(AbstractTask::TIMEOUT);
    });
    ASSERT_TRUE(task.wait_for_microseconds(10000000));
    EXPECT_EQ(task.error(), unsigned(AbstractTask::TIMEOUT));
    EXPECT_GE(task.elapsedTime(), 20u);
    EXPECT_EQ(task.toString(), "TASK is ready:true, error code:1, error: 'TIMEOUT'");

    AsyncTask zero; // timeout 0: up at the first look after the start
    zero.start([](AsyncTask &t) { EXPECT_TRUE(t.timeIsUP()); });
    EXPECT_TRUE(zero.wait_for_milliseconds(10000));
}

TEST(AbstractTask, ProgressFromTheJobArrivesInOrderOnTheMainThread) {
    AsyncTask task;
    unsigned int const mainThread = getCurrentThreadID();
    std::vector<unsigned int> values;
    QStringList texts;
    bool elsewhere = false;
    task.listenerProgress.addListener([&](unsigned int value) {
        elsewhere |= getCurrentThreadID() != mainThread;
        values.push_back(value);
    });
    task.listenerProgressString.addListener([&](QString text) {
        elsewhere |= getCurrentThreadID() != mainThread;
        texts << text;
    });
    std::atomic<unsigned int> jobThread{0};
    task.start([&](AsyncTask &t) {
        jobThread = getCurrentThreadID();
        for (unsigned int percent = 20; percent <= 100; percent += 20) {
            t.fireProgress(percent);
            t.fireProgressString(QStringLiteral("step %1").arg(percent / 20));
        }
    });
    ASSERT_TRUE(test::pumpEventsUntil([&] { return values.size() == 5 && texts.size() == 5; }));
    EXPECT_EQ(values, (std::vector<unsigned int>{20, 40, 60, 80, 100}));
    EXPECT_EQ(texts, QStringList({"step 1", "step 2", "step 3", "step 4", "step 5"}));
    EXPECT_FALSE(elsewhere);
    EXPECT_NE(jobThread.load(), mainThread);
}

TEST(AbstractTask, StatesAndTheirTextsBeforeAndWithoutAFinish) {
    AsyncTask task;
    EXPECT_TRUE(task.isInitialized());
    EXPECT_EQ(task.taskState(), 0u);
    EXPECT_EQ(task.toString(), "TASK is initialized");
    // No future yet: nothing to wait for.
    EXPECT_FALSE(task.wait_for_milliseconds(1));
    task.setTaskState(AbstractTask::STATE_BUSY);
    EXPECT_TRUE(task.isBusy());
    EXPECT_EQ(task.toString(), "TASK is ready:false");
    std::vector<QString> const lines =
        test::linesLoggedBy([&] { EXPECT_FALSE(task.isOK()); }, ERROR);
    EXPECT_EQ(lines, std::vector<QString>{"AbstractTask::isOK(), !stopwatch.isStopped()"});
    task.finish();
    EXPECT_TRUE(task.isFinished());
    EXPECT_EQ(task.taskState(), 2u);
}

TEST(AbstractTask, DebugFlagTellsCancelAndError) {
    AbstractTask::atomicFlagDebug = true;
    AsyncTask task;
    std::vector<QString> const lines = test::linesLoggedBy([&] {
        task.setCancel();
        task.setError(AbstractTask::READ);
    });
    AbstractTask::atomicFlagDebug = false;
    EXPECT_EQ(lines, (std::vector<QString>{"AbstractTask::setCancel", "AbstractTask::setError:10",
                                           "AbstractTask::setError:5"}));
    EXPECT_EQ(task.error(), 5u);
}

} // namespace
} // namespace orv
