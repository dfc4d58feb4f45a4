// XCalendarUTC.h: broken-down UTC time and the calendar fields a schedule watches.
//
//   orv::XCalendarUTC calendar;
//   calendar.fromNow();
//   QString name = calendar.asString(orv::SCHEDULE_DAY);   // "2022_11_20"
//
// Year, month and day read as written (2022, 11, 20); tm's own offsets stay inside.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <ctime>
#include <memory>

namespace orv {

enum SCHEDULE {
    SCHEDULE_NONE = 0,
    SCHEDULE_YEAR = 1,
    SCHEDULE_MONTH = 2,
    SCHEDULE_DAY = 3,
    SCHEDULE_HOUR = 4,
    SCHEDULE_MINUTE = 5,
    SCHEDULE_SECOND = 6
};

class ORV_EXPORT XCalendarUTC {
public:
    XCalendarUTC();
    XCalendarUTC(XCalendarUTC const &other);
    XCalendarUTC &operator=(XCalendarUTC const &other);
    virtual ~XCalendarUTC();

    // The current second, in UTC.
    void fromNow();
    // Any second since 1970 (negative before), in UTC.
    void fromSecondsSince1970(long long seconds);

    int year() const;
    int month() const;
    int day() const;
    int hour() const;
    int minute() const;
    int sec() const;
    void setYear(int year);
    void setMonth(int month);
    void setDay(int day);
    void setHour(int hour);
    void setMinute(int minute);
    void setSec(int sec);

    // The fields down to the one the schedule names, e.g. "2022_11_20___15" for an hour.
    QString asString(SCHEDULE schedule) const;
    // "year/month/day, hour:minute,second" without padding.
    QString toString() const;

private:
    std::unique_ptr<std::tm> tm;
};

} // namespace orv
