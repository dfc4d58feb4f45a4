// XScheduler.cpp: the polling loop that turns a growing calendar field into a call.
#include "orv/XScheduler.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"

namespace orv {

namespace {

// The field the schedule names; -1 for none, which never grows.
int fieldOf(SCHEDULE schedule, XCalendarUTC const &calendar, char const *wrongPlace) {
    switch (schedule) {
    case SCHEDULE_YEAR: return calendar.year();
    case SCHEDULE_MONTH: return calendar.month();
    case SCHEDULE_DAY: return calendar.day();
    case SCHEDULE_HOUR: return calendar.hour();
    case SCHEDULE_MINUTE: return calendar.minute();
    case SCHEDULE_SECOND: return calendar.sec();
    default: ppDebug(wrongPlace); return -1;
    }
}

} // namespace

XSchedulerAction::~XSchedulerAction() = default;

XScheduler::XScheduler() = default;

XScheduler::~XScheduler() = default;

SCHEDULE XScheduler::fromString(QString const &text) {
    if (text == QLatin1String("second"))
        return SCHEDULE_SECOND;
    if (text == QLatin1String("minute"))
        return SCHEDULE_MINUTE;
    if (text == QLatin1String("hour"))
        return SCHEDULE_HOUR;
    if (text == QLatin1String("day"))
        return SCHEDULE_DAY;
    if (text == QLatin1String("month"))
        return SCHEDULE_MONTH;
    if (text == QLatin1String("year"))
        return SCHEDULE_YEAR;
    ppDebug("XScheduler::from_String_old, don't know '$'", text);
    return SCHEDULE_NONE;
}

void XScheduler::run() {
    ppDebug("XScheduler::run");
    XCalendarUTC calendar;
    calendar.fromNow();
    int last = fieldOf(schedule, calendar, "XScheduler::run - wrong place here !");
    while (isRunning()) {
        // A stop ends the pause within one 10 ms step, so that stopJoin is quick.
        break_sleep(200);
        calendar.fromNow();
        int current = fieldOf(schedule, calendar, "XScheduler::run - wrong place here,2 !");
        // Strictly greater, and last never falls back: a wrapped field stays silent.
        if (current > last) {
            if (schedAction)
                schedAction->schedule(schedule, calendar);
            else
                ppDebug("XScheduler::run, schedAction == nullptr");
            last = current;
        }
    }
    ppDebug("XScheduler::~run");
}

} // namespace orv
