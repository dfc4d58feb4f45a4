// XCalendarUTC.cpp: UTC calendar fields and their file-name form.
#include "orv/XCalendarUTC.h"

#include "orv/Logger.h"
#include "orv/XStringStream.h"
#include "tools/platform/OrvPlatform.h"

namespace orv {

XCalendarUTC::XCalendarUTC() : tm(new std::tm{}) {}

XCalendarUTC::XCalendarUTC(XCalendarUTC const &other) : tm(new std::tm(*other.tm)) {}

XCalendarUTC &XCalendarUTC::operator=(XCalendarUTC const &other) {
    *tm = *other.tm;
    return *this;
}

XCalendarUTC::~XCalendarUTC() = default;

void XCalendarUTC::fromNow() {
    fromSecondsSince1970(static_cast<long long>(platform::ticks100ns() / 10000000ULL));
}

void XCalendarUTC::fromSecondsSince1970(long long seconds) { *tm = platform::utcTm(seconds); }

int XCalendarUTC::year() const { return tm->tm_year + 1900; }
int XCalendarUTC::month() const { return tm->tm_mon + 1; }
int XCalendarUTC::day() const { return tm->tm_mday; }
int XCalendarUTC::hour() const { return tm->tm_hour; }
int XCalendarUTC::minute() const { return tm->tm_min; }
int XCalendarUTC::sec() const { return tm->tm_sec; }

void XCalendarUTC::setYear(int year) { tm->tm_year = year - 1900; }
void XCalendarUTC::setMonth(int month) { tm->tm_mon = month - 1; }
void XCalendarUTC::setDay(int day) { tm->tm_mday = day; }
void XCalendarUTC::setHour(int hour) { tm->tm_hour = hour; }
void XCalendarUTC::setMinute(int minute) { tm->tm_min = minute; }
void XCalendarUTC::setSec(int sec) { tm->tm_sec = sec; }

QString XCalendarUTC::asString(SCHEDULE schedule) const {
    switch (schedule) {
    case SCHEDULE_NONE:
        Logger::printToCout("XScheduler::run - wrong place here !");
        return QString();
    case SCHEDULE_YEAR: return QString::asprintf("%d", year());
    case SCHEDULE_MONTH: return QString::asprintf("%d_%02d", year(), month());
    case SCHEDULE_DAY: return QString::asprintf("%d_%02d_%02d", year(), month(), day());
    case SCHEDULE_HOUR:
        return QString::asprintf("%d_%02d_%02d___%02d", year(), month(), day(), hour());
    case SCHEDULE_MINUTE:
        return QString::asprintf("%d_%02d_%02d___%02d_%02d", year(), month(), day(), hour(),
                                 minute());
    case SCHEDULE_SECOND:
        return QString::asprintf("%d_%02d_%02d___%02d_%02d_%02d", year(), month(), day(), hour(),
                                 minute(), sec());
    }
    return QString();
}

QString XCalendarUTC::toString() const {
    return xprintF("$/$/$, $:$,$", year(), month(), day(), hour(), minute(), sec());
}

} // namespace orv
