// XScheduler_test.cpp: schedule names and a running scheduler calling its action.
#include "orv/XScheduler.h"

#include "orv/OrvTime.h"

#include "support/Test.h"

#include <atomic>

using orv::XScheduler;

namespace {

// Counts its calls and keeps what the first one was given.
struct RecordingAction : orv::XSchedulerAction {
    void schedule(orv::SCHEDULE unit, orv::XCalendarUTC const &calendar) override {
        if (calls++ == 0) {
            firstUnit = unit;
            firstSecond = calendar.sec();
        }
    }
    std::atomic<int> calls{0}, firstUnit{-1}, firstSecond{-1};
};

// A start in second 59 would see the field wrap to 0 and stay silent for a minute.
void leaveSecond59() {
    orv::XCalendarUTC calendar;
    for (calendar.fromNow(); calendar.sec() == 59; calendar.fromNow())
        orv::xSleep(20);
}

} // namespace

TEST(XScheduler, FromStringKnowsExactLowerCaseUnitsOnly) {
    struct Row {
        char const *text;
        orv::SCHEDULE expected;
    } const rows[] = {
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
    for (int waited = 0; action.calls == 0 && waited < 1500; waited += 10)
        orv::xSleep(10);
    scheduler.stopJoin();
    EXPECT_TRUE(scheduler.isJoined());
    ASSERT_GT(action.calls.load(), 0);
    EXPECT_EQ(action.firstUnit.load(), orv::SCHEDULE_SECOND);
    EXPECT_GE(action.firstSecond.load(), 1); // grew from a smaller second, so never 0
}

TEST(XScheduler, NoScheduleNeverCallsTheActionAndNoActionIsNoHarm) {
    RecordingAction action;
    XScheduler none, actionless;
    none.setSchedule(orv::SCHEDULE_NONE);
    none.setSchedAction(&action);
    leaveSecond59();
    none.start();
    actionless.start();
    orv::xSleep(1300); // a second boundary passes; the schedule-less one reads -1 each poll
    none.stopJoin();
    actionless.stopJoin();
    EXPECT_EQ(action.calls.load(), 0);
    EXPECT_TRUE(actionless.isJoined());
    EXPECT_FALSE(actionless.isRunning());
}
