// XWorker_test.cpp: workers that sleep, work, sleep and work again; jobs taken away and
// replaced; stop and destruction while a job runs; the base job; slots on the worker.
#include "orv/XWorker.h"

#include "orv/XThread.h"
#include "support/EventPump.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QObject>

#include <array>
#include <atomic>
#include <future>
#include <memory>
#include <vector>

namespace orv {
namespace {

bool waitFor(std::function<bool()> const &condition) {
    return test::pumpEventsUntil(condition, 10000);
}

// A job that keeps count of its calls and takes itself away at call `rounds`, so that
// it runs exactly that often.
std::function<int()> countedJob(XFunctionWorker &worker, std::atomic<int> &calls, int rounds) {
    return [&worker, &calls, rounds] {
        if (calls.load() + 1 == rounds)
            worker.setWorker({});
        ++calls;
        return 0;
    };
}

TEST(XFunctionWorker, ThousandJobsOnFourWorkersRunExactlyAsOftenAsTheyAsk) {
    constexpr int jobs = 1000;
    std::array<XFunctionWorker, 4> workers;
    for (XFunctionWorker &worker : workers)
        worker.startThreadInitial();
    // Job i runs i % 3 + 1 times; each worker takes a new job only once the one before
    // has taken itself away, so every worker goes idle and wakes 250 times.
    std::vector<std::atomic<int>> calls(jobs);
    for (int i = 0; i < jobs; ++i) {
        XFunctionWorker &worker = workers[i % 4];
        if (i >= 4) {
            ASSERT_TRUE(waitFor([&] { return !worker.isWorking(); })) << i;
        }
        worker.setWorker(countedJob(worker, calls[i], i % 3 + 1));
    }
    for (XFunctionWorker &worker : workers)
        ASSERT_TRUE(waitFor([&] { return !worker.isWorking(); }));
    for (int i = 0; i < jobs; ++i)
        ASSERT_EQ(calls[i].load(), i % 3 + 1) << i;
}

TEST(XFunctionWorker, AJobTakenAwayStopsAndItsSuccessorRuns) {
    XFunctionWorker worker;
    std::atomic<int> first{0}, second{0};
    worker.setWorker([&] { return ++first; });
    // Not started: a job alone doesn't make the worker work.
    EXPECT_FALSE(worker.isWorking());
    EXPECT_TRUE(static_cast<bool>(worker.worker()));
    worker.startThreadInitial();
    ASSERT_TRUE(waitFor([&] { return first > 100; })); // called again and again
    EXPECT_TRUE(worker.isWorking());

    worker.setWorker([&] { return ++second; });
    ASSERT_TRUE(waitFor([&] { return second > 0; }));
    int const firstAtEnd = first;
    ASSERT_TRUE(waitFor([&] { return second > 100; }));
    EXPECT_EQ(first.load(), firstAtEnd);

    worker.setWorker({});
    EXPECT_FALSE(worker.isWorking());
    EXPECT_FALSE(static_cast<bool>(worker.worker()));
    std::atomic<int> third{0};
    worker.setWorker([&] { return ++third; }); // wakes the idle loop once more
    ASSERT_TRUE(waitFor([&] { return third > 0; }));
    worker.stopThread();
    EXPECT_FALSE(worker.isWorking());
}

TEST(XFunctionWorker, StopLetsTheCallUnderWayEndAndCallsNoMore) {
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    std::atomic<int> calls{0};
    {
        XFunctionWorker worker;
        worker.startThreadInitial();
        worker.setWorker([&] {
            ++calls;
            released.wait();
            return 0;
        });
        ASSERT_TRUE(waitFor([&] { return calls == 1; }));
        worker.stopThread();
        release.set_value();
    } // the destructor joins the thread
    EXPECT_EQ(calls.load(), 1);
}

TEST(XFunctionWorker, DestructionWhileAJobSpinsOrWhileIdleReleasesTheJob) {
    // The token is held by the job and by every copy the loop makes of it: after the
    // destruction only the test's own reference is left.
    auto token = std::make_shared<std::atomic<int>>(0);
    auto worker = std::make_unique<XFunctionWorker>();
    worker->startThreadInitial();
    worker->setWorker([token] { return ++*token; });
    ASSERT_TRUE(waitFor([&] { return *token > 10; }));
    worker.reset();
    EXPECT_EQ(token.use_count(), 1);

    for (bool start : {true, false}) {
        auto idle = std::make_unique<XFunctionWorker>();
        if (start)
            idle->startThreadInitial();
        idle->setWorker([token] { return 0; });
        idle->setWorker({});
        idle.reset();
        EXPECT_EQ(token.use_count(), 1);
    }
}

TEST(XFunctionWorker, DebugFlagTracesTheLoop) {
    std::vector<QString> const lines = test::linesLoggedBy([] {
        XFunctionWorker worker;
        worker.setDebug(true);
        std::atomic<int> calls{0};
        worker.startThreadInitial();
        worker.setWorker(countedJob(worker, calls, 3));
        ASSERT_TRUE(waitFor([&] { return calls == 3; }));
        worker.stopThread();
    });
    ASSERT_GE(lines.size(), 5u);
    EXPECT_EQ(lines.front(), "XFunctionWorker::run");
    EXPECT_EQ(lines.back(), "XFunctionWorker::~run");
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "XFunctionWorker::run, after 'work'"), 3);
    for (QString const &line : lines)
        EXPECT_TRUE(line.startsWith("XFunctionWorker::run") || line == "XFunctionWorker::~run")
            << line.toStdString();
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

TEST(XThreadWorker, RunsItsXWorkerUntilTakenAwayAndStopsWithinTheWait) {
    CountingWork a, b;
    XThreadWorker worker;
    worker.startThreadInitial();
    EXPECT_FALSE(worker.isWorking());
    worker.setWorker(&a);
    EXPECT_EQ(worker.worker(), &a);
    ASSERT_TRUE(waitFor([&] { return a.rounds > 10; }));
    EXPECT_NE(a.thread.load(), getCurrentThreadID());
    worker.setWorker(&b);
    ASSERT_TRUE(waitFor([&] { return b.rounds > 0; }));
    int const aAtEnd = a.rounds;
    ASSERT_TRUE(waitFor([&] { return b.rounds > 10; }));
    EXPECT_EQ(a.rounds.load(), aAtEnd);
    std::vector<QString> const lines = test::linesLoggedBy([&] { worker.stopThread(5000); });
    EXPECT_TRUE(lines.empty()) << lines.front().toStdString();
    EXPECT_FALSE(worker.isWorking());
}

TEST(XThreadWorker, AStopThatOutwaitsItsTimeWarnsAndTheDestructorStillJoins) {
    CountingWork held;
    held.hold = true;
    XThreadWorker worker;
    worker.startThreadInitial();
    worker.setWorker(&held);
    ASSERT_TRUE(waitFor([&] { return held.rounds == 1; }));
    std::vector<QString> const lines = test::linesLoggedBy([&] { worker.stopThread(20); }, WARN);
    EXPECT_EQ(lines, std::vector<QString>{"XThreadWorker::stopThread, thread not really finished"});
    held.hold = false;
}

// Where the queued slot ran.
std::atomic<unsigned int> slotThread{0};

// A slot called by name: Qt hands the call to the other thread inside its own library,
// where race checkers can't follow, so the call must carry no data the test wrote
// (a queued functor would).
class SlotProbe : public QObject {
    Q_OBJECT
public slots:
    void record() { slotThread = getCurrentThreadID(); }
};

TEST(XThreadWorker, SlotsOfAnObjectMovedThereRunOnTheWorkerThread) {
    slotThread = 0;
    SlotProbe object;
    CountingWork work;
    {
        XThreadWorker worker;
        worker.moveQObject_to_this(&object);
        worker.startThreadInitial();
        worker.setWorker(&work);
        ASSERT_TRUE(waitFor([&] { return work.rounds > 0; }));
        QMetaObject::invokeMethod(&object, "record", Qt::QueuedConnection);
        ASSERT_TRUE(waitFor([&] { return slotThread != 0u; }));
        EXPECT_EQ(slotThread.load(), work.thread.load());
    }
    EXPECT_NE(slotThread.load(), getCurrentThreadID());
}

TEST(XWorker, TheBaseJobSleepsASecondAndAsksToBeOverwritten) {
    XWorker::atomicDebugFlag = true;
    int result = -1;
    std::vector<QString> const lines = test::linesLoggedBy([&] {
        XWorker worker;
        result = worker.work();
    });
    XWorker::atomicDebugFlag = false;
    EXPECT_EQ(result, 0);
    EXPECT_EQ(lines, (std::vector<QString>{"XWorker::XWorker", "XWork::work - overwrite me!",
                                           "XWorker::~XWorker"}));
}

} // namespace
} // namespace orv

#include "XWorker_test.moc"
