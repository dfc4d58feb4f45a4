// XWorker_test.cpp: workers that sleep, work, sleep and work again; jobs taken away and
// replaced; stop and destruction while a job runs; slots on the worker's thread.
#include "orv/XWorker.h"

#include "orv/XThread.h"
#include "support/EventPump.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QObject>

#include <array>
#include <atomic>
#include <memory>
#include <vector>

namespace orv {
namespace {

bool waitFor(std::function<bool()> const &condition) {
    return test::pumpEventsUntil(condition, 10000);
}

TEST(XFunctionWorker, ThousandJobsOnFourWorkersRunExactlyAsOftenAsTheyAsk) {
    constexpr int jobs = 1000;
    std::array<XFunctionWorker, 4> workers;
    for (XFunctionWorker &worker : workers)
        worker.startThreadInitial();
    // Job i is called again and again until it takes itself away at call i % 3 + 1. A
    // worker gets its next job once the one before is gone, so each goes idle and wakes
    // 250 times.
    std::vector<std::atomic<int>> calls(jobs);
    for (int i = 0; i < jobs; ++i) {
        XFunctionWorker &worker = workers[i % 4];
        if (i >= 4) {
            ASSERT_TRUE(waitFor([&] { return !worker.isWorking(); })) << i;
        }
        worker.setWorker([&worker, &count = calls[i], rounds = i % 3 + 1] {
            if (count + 1 == rounds)
                worker.setWorker({});
            return ++count;
        });
    }
    for (XFunctionWorker &worker : workers)
        ASSERT_TRUE(waitFor([&] { return !worker.isWorking(); }));
    for (int i = 0; i < jobs; ++i)
        ASSERT_EQ(calls[i].load(), i % 3 + 1) << i;
}

TEST(XFunctionWorker, AJobTakenAwayStopsAndTheNextOneRuns) {
    XFunctionWorker worker;
    std::atomic<int> first{0}, second{0};
    worker.setWorker([&] { return ++first; });
    EXPECT_FALSE(worker.isWorking()); // not started: a job alone doesn't work
    worker.startThreadInitial();
    ASSERT_TRUE(waitFor([&] { return first > 100; }));
    worker.setWorker([&] { return ++second; });
    ASSERT_TRUE(waitFor([&] { return second > 0; }));
    int const firstAtEnd = first;
    ASSERT_TRUE(waitFor([&] { return second > 100; }));
    EXPECT_EQ(first.load(), firstAtEnd);
    worker.setWorker({});
    EXPECT_FALSE(worker.isWorking());
    second = 0;
    worker.setWorker([&] { return ++second; }); // wakes the idle loop again
    ASSERT_TRUE(waitFor([&] { return second > 0; }));
}

TEST(XFunctionWorker, StopAndDestructionLetTheCallUnderWayEndAndReleaseTheJob) {
    // The token is held by the job and by every copy the loop makes of it.
    auto token = std::make_shared<std::atomic<int>>(0);
    std::atomic<bool> hold{true};
    auto worker = std::make_unique<XFunctionWorker>();
    worker->startThreadInitial();
    worker->setWorker([token, &hold] {
        ++*token;
        while (hold)
            std::this_thread::yield();
        return 0;
    });
    ASSERT_TRUE(waitFor([&] { return *token == 1; }));
    worker->stopThread();
    hold = false;
    worker.reset(); // joins
    EXPECT_EQ(*token, 1);
    EXPECT_EQ(token.use_count(), 1);

    worker = std::make_unique<XFunctionWorker>(); // destroyed while spinning
    worker->startThreadInitial();
    worker->setWorker([token] { return ++*token; });
    ASSERT_TRUE(waitFor([&] { return *token > 10; }));
    worker.reset();
    EXPECT_EQ(token.use_count(), 1);
}

// Counts its rounds and remembers its thread; a round waits while hold is set.
class CountingWork : public XWorker {
public:
    int work() override {
        thread = getCurrentThreadID();
        ++rounds;
        while (hold)
            std::this_thread::yield();
        return 7;
    }
    std::atomic<int> rounds{0};
    std::atomic<unsigned int> thread{0};
    std::atomic<bool> hold{false};
};

TEST(XThreadWorker, RunsItsXWorkerUntilReplacedAndWarnsWhenTheStopOutwaitsItsTime) {
    CountingWork a, b;
    XThreadWorker worker;
    worker.startThreadInitial();
    worker.setWorker(&a);
    ASSERT_TRUE(waitFor([&] { return a.rounds > 10; }));
    EXPECT_NE(a.thread.load(), getCurrentThreadID());
    b.hold = true;
    worker.setWorker(&b);
    ASSERT_TRUE(waitFor([&] { return b.rounds == 1; }));
    int const aAtEnd = a.rounds;
    std::vector<QString> const lines = test::linesLoggedBy([&] { worker.stopThread(20); }, WARN);
    EXPECT_EQ(lines, std::vector<QString>{"XThreadWorker::stopThread, thread not really finished"});
    EXPECT_EQ(a.rounds.load(), aAtEnd);
    EXPECT_FALSE(worker.isWorking());
    b.hold = false; // the destructor joins
}

std::atomic<unsigned int> slotThread{0};

// A slot called by name: Qt hands a queued call over inside its own library, where
// race checkers can't follow, so the call must carry no data the test wrote.
class SlotProbe : public QObject {
    Q_OBJECT
public slots:
    void record() { slotThread = getCurrentThreadID(); }
};

TEST(XThreadWorker, SlotsOfAnObjectMovedThereRunOnTheWorkerThread) {
    slotThread = 0;
    SlotProbe object;
    CountingWork work;
    XThreadWorker worker;
    worker.moveQObject_to_this(&object);
    worker.startThreadInitial();
    worker.setWorker(&work);
    ASSERT_TRUE(waitFor([&] { return work.rounds > 0; }));
    QMetaObject::invokeMethod(&object, "record", Qt::QueuedConnection);
    ASSERT_TRUE(waitFor([&] { return slotThread != 0u; }));
    EXPECT_EQ(slotThread.load(), work.thread.load());
}

} // namespace
} // namespace orv

#include "XWorker_test.moc"
