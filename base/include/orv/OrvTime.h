// OrvTime.h: the library's clock, points in time in 100 ns ticks since 1970 (UTC).
//
//   orv::OrvTime now(true);
//   QString stamp = now.getTheTimeString("%Y-%m-%d %H:%M:%S", orv::OrvTime::MILLISECONDS);
//   orv::xSleep(50);   // at least 50 ms, measured on a monotonic clock
//
// Text forms and the tm_...() fields show local time, in the zone TZ names.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <memory>

class QDataStream;

namespace orv {

class ORV_EXPORT OrvTime {
public:
    // Fraction appended to a time text; any other value appends none.
    enum FORMAT_SECOND { NO_FRACTION = 0, MILLISECONDS = 1, MICROSECONDS = 2 };

    explicit OrvTime(bool now);
    explicit OrvTime(quint64 microseconds);
    OrvTime(OrvTime const &other);
    OrvTime &operator=(OrvTime const &other);
    virtual ~OrvTime();

    void fromNow();
    void fromMircoSeconds(quint64 microseconds);

    quint64 getNanoseconds() const;
    quint64 getMicroseconds() const;
    quint64 getMilliseconds() const;
    int getRelativeMilliseconds() const;

    // strftime of format on local time, then the fraction; a null format gives "".
    QString getTheTimeString(char const *format, FORMAT_SECOND second) const;
    // As getTheTimeString; a null format is fatal.
    QString getFullTimeStamp(char const *format, FORMAT_SECOND second) const;
    // "%H:%M:%S", with microseconds for bit 0x100, else milliseconds for bit 0x80.
    QString getTimeString(unsigned int flags) const;

    int tm_year() const;
    int tm_month() const;
    int tm_day() const;
    int tm_hour() const;
    int tm_min() const;
    int tm_sec() const;
    int tm_yearDay() const;

private:
    std::unique_ptr<quint64> impl;
};

// Microseconds as one 64-bit value.
ORV_EXPORT QDataStream &operator<<(QDataStream &stream, OrvTime const &time);
ORV_EXPORT QDataStream &operator>>(QDataStream &stream, OrvTime &time);

// Now, since 1970.
ORV_EXPORT quint64 getMicroseconds();
ORV_EXPORT quint64 getMilliseconds();
ORV_EXPORT int getMillisecondsWithinSecond();
// Now as "%H:%M:%S" with microseconds, the form of a log line.
ORV_EXPORT QString getTimeString();

// Whether more than limit has passed from start to now; a start of 0 never times out.
ORV_EXPORT bool isTimeout(quint64 start, quint64 limit, quint64 now);

// Sleeps at least ms milliseconds, making up for early wake-ups.
ORV_EXPORT void xSleep(quint64 ms);

} // namespace orv
