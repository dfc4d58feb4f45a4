// XScheduler.h: a thread that calls an action when a UTC calendar field moves on.
//
//   struct Rotate : orv::XSchedulerAction {
//       void schedule(orv::SCHEDULE, orv::XCalendarUTC const &now) override { rotateTo(now); }
//   } rotate;
//   orv::XScheduler scheduler;
//   scheduler.setSchedule(orv::XScheduler::fromString("hour"));
//   scheduler.setSchedAction(&rotate);
//   scheduler.start();  ...  scheduler.stopJoin();
//
// The field is read every 200 ms and fires only when it grows: after it wraps
// (second 59 to 0, hour 23 to 0, ...) the scheduler stays silent until the field
// passes its old high value again.
#pragma once

#include "orv/XCalendarUTC.h"
#include "orv/XThread.h"

namespace orv {

class ORV_EXPORT XSchedulerAction {
public:
    virtual ~XSchedulerAction();
    // Runs on the scheduler's thread.
    virtual void schedule(SCHEDULE schedule, XCalendarUTC const &calendar) = 0;
};

class ORV_EXPORT XScheduler : public XThread {
public:
    XScheduler();
    ~XScheduler() override;

    // "second" ... "year", exact and case-sensitive; anything else is SCHEDULE_NONE.
    static SCHEDULE fromString(QString const &text);

    // Both are read by the running thread without a lock: set them before start().
    void setSchedule(SCHEDULE unit) { schedule = unit; }
    SCHEDULE getSchedule() const { return schedule; }
    // Not owned.
    void setSchedAction(XSchedulerAction *action) { schedAction = action; }

protected:
    void run() override;

private:
    SCHEDULE schedule = SCHEDULE_SECOND;
    XSchedulerAction *schedAction = nullptr;
};

} // namespace orv
