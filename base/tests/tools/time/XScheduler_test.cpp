// XScheduler_test.cpp: schedule names and a running scheduler calling its action.
#include "orv/XScheduler.h"

#include "orv/OrvTime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <vector>

using orv::XScheduler;

namespace {

class RecordingAction : public orv::XSchedulerAction {
public:
    void schedule(orv::SCHEDULE unit, orv::XCalendarUTC const &calendar) override {
        std::lock_guard<std::mutex> lock(mutex);
        units.push_back(unit);
        seconds.push_back(calendar.sec());
        calls.fetch_add(1);
    }

    // Polls until the action ran or ms have passed.
    bool waitForCall(int ms) {
        auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
        while (calls.load() == 0 && std::chrono::steady_clock::now() < deadline)
            orv::xSleep(10);
        return calls.load() > 0;
    }

    std::atomic<int> calls{0};
    std::mutex mutex;
    std::vector<orv::SCHEDULE> units;
    std::vector<int> seconds;
};

// A start in second 59 would see the field wrap to 0 and stay silent for a minute.
void leaveSecond59() {
    orv::XCalendarUTC calendar;
    calendar.fromNow();
    while (calendar.sec() == 59) {
        orv::xSleep(20);
        calendar.fromNow();
    }
}

} // namespace

TEST(XScheduler, FromStringKnowsExactLowerCaseUnitsOnly) {
    struct Row {
        char const *text;
        orv::SCHEDULE expected;
    };
    std::vector<Row> const rows = {
        {"second", orv::SCHEDULE_SECOND}, {"minute", orv::SCHEDULE_MINUTE},
        {"hour", orv::SCHEDULE_HOUR},     {"day", orv::SCHEDULE_DAY},
        {"month", orv::SCHEDULE_MONTH},   {"year", orv::SCHEDULE_YEAR},
        {"Second", orv::SCHEDULE_NONE},   {"HOUR", orv::SCHEDULE_NONE},
        {" day", orv::SCHEDULE_NONE},     {"days", orv::SCHEDULE_NONE},
        {"", orv::SCHEDULE_NONE},         {"6", orv::SCHEDULE_NONE},
    };
    for (Row const &row : rows)
        EXPECT_EQ(XScheduler::fromString(row.text), row.expected) << row.text;
}

TEST(XScheduler, SecondScheduleCallsTheActionWhenTheSecondMovesOn) {
    RecordingAction action;
    XScheduler scheduler;
    scheduler.setSchedule(orv::SCHEDULE_SECOND);
    scheduler.setSchedAction(&action);
    leaveSecond59();
    scheduler.start();
    // A second boundary within 1 s, seen by the next 200 ms poll; the rest is slack.
    bool called = action.waitForCall(1500);
    scheduler.stopJoin();
    EXPECT_TRUE(called);
    EXPECT_TRUE(scheduler.isJoined());
    std::lock_guard<std::mutex> lock(action.mutex);
    ASSERT_FALSE(action.units.empty());
    EXPECT_EQ(action.units.front(), orv::SCHEDULE_SECOND);
    EXPECT_GE(action.seconds.front(), 1); // grew from a smaller second, so never 0
}

TEST(XScheduler, NoScheduleNeverCallsTheAction) {
    RecordingAction action;
    XScheduler scheduler;
    scheduler.setSchedule(orv::SCHEDULE_NONE);
    scheduler.setSchedAction(&action);
    scheduler.start();
    orv::xSleep(700); // several polls, each reading -1
    scheduler.stopJoin();
    EXPECT_EQ(action.calls.load(), 0);
}

TEST(XScheduler, RunsWithoutAnActionUntilStopped) {
    XScheduler scheduler;
    leaveSecond59();
    scheduler.start();
    orv::xSleep(1300); // a second boundary passes with nobody to call
    scheduler.stopJoin();
    EXPECT_TRUE(scheduler.isJoined());
    EXPECT_FALSE(scheduler.isRunning());
}
