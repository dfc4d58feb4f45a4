// OrvTime.cpp: ticks, their text forms, the stream form and the sleeps of the library.
#include "orv/OrvTime.h"

#include "orv/XError.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QDataStream>

#include <chrono>
#include <ctime>
#include <thread>

namespace orv {

namespace {

constexpr quint64 ticksPerSecond = 10000000ULL;

std::tm localTmOfTicks(quint64 ticks) {
    return platform::localTm(static_cast<long long>(ticks / ticksPerSecond));
}

// strftime of format on the local time of ticks, limited to bufferSize - 1 characters,
// then the fraction of the second.
QString timeText(quint64 ticks, char const *format, size_t bufferSize,
                 OrvTime::FORMAT_SECOND second) {
    std::tm local = localTmOfTicks(ticks);
    char buffer[256];
    size_t length = std::strftime(buffer, bufferSize, format, &local);
    QString text = QString::fromLocal8Bit(buffer, static_cast<int>(length));
    quint64 rest = ticks % ticksPerSecond;
    if (second == OrvTime::MILLISECONDS)
        text += QString::asprintf(",%03u", static_cast<unsigned int>(rest / 10000));
    else if (second == OrvTime::MICROSECONDS)
        text += QString::asprintf(",%06u", static_cast<unsigned int>(rest / 10));
    return text;
}

} // namespace

OrvTime::OrvTime(bool now) : impl(new quint64(now ? platform::ticks100ns() : 0)) {}

OrvTime::OrvTime(quint64 microseconds) : impl(new quint64(microseconds * 10)) {}

OrvTime::OrvTime(OrvTime const &other) : impl(new quint64(*other.impl)) {}

OrvTime &OrvTime::operator=(OrvTime const &other) {
    *impl = *other.impl;
    return *this;
}

OrvTime::~OrvTime() = default;

void OrvTime::fromNow() { *impl = platform::ticks100ns(); }

void OrvTime::fromMircoSeconds(quint64 microseconds) {
    ORV_ASSERT_PTR(impl);
    *impl = microseconds * 10;
}

quint64 OrvTime::getNanoseconds() const { return *impl * 100; }
quint64 OrvTime::getMicroseconds() const { return *impl * 100 / 1000; }
quint64 OrvTime::getMilliseconds() const { return *impl * 100 / 1000000; }

int OrvTime::getRelativeMilliseconds() const {
    return static_cast<int>(*impl % ticksPerSecond / 10000);
}

QString OrvTime::getTheTimeString(char const *format, FORMAT_SECOND second) const {
    if (!format)
        return QString();
    return timeText(*impl, format, 255, second);
}

QString OrvTime::getFullTimeStamp(char const *pDateTimeFormat, FORMAT_SECOND second) const {
    ORV_ASSERT_PTR(pDateTimeFormat);
    return getTheTimeString(pDateTimeFormat, second);
}

QString OrvTime::getTimeString(unsigned int flags) const {
    FORMAT_SECOND second = (flags & 0x100)  ? MICROSECONDS
                           : (flags & 0x80) ? MILLISECONDS
                                            : NO_FRACTION;
    // The limit is that of the model text "HH-MM.SS.fff".
    return timeText(*impl, "%H:%M:%S", 12, second);
}

int OrvTime::tm_year() const { return localTmOfTicks(*impl).tm_year; }
int OrvTime::tm_month() const { return localTmOfTicks(*impl).tm_mon; }
int OrvTime::tm_day() const { return localTmOfTicks(*impl).tm_mday; }
int OrvTime::tm_hour() const { return localTmOfTicks(*impl).tm_hour; }
int OrvTime::tm_min() const { return localTmOfTicks(*impl).tm_min; }
int OrvTime::tm_sec() const { return localTmOfTicks(*impl).tm_sec; }
int OrvTime::tm_yearDay() const { return localTmOfTicks(*impl).tm_yday; }

QDataStream &operator<<(QDataStream &stream, OrvTime const &time) {
    return stream << time.getMicroseconds();
}

QDataStream &operator>>(QDataStream &stream, OrvTime &time) {
    quint64 microseconds = 0;
    stream >> microseconds;
    time.fromMircoSeconds(microseconds);
    return stream;
}

quint64 getMicroseconds() { return OrvTime(true).getMicroseconds(); }
quint64 getMilliseconds() { return OrvTime(true).getMilliseconds(); }
int getMillisecondsWithinSecond() { return OrvTime(true).getRelativeMilliseconds(); }
QString getTimeString() { return OrvTime(true).getTimeString(0x170); }

bool isTimeout(quint64 start, quint64 limit, quint64 now) {
    if (start == 0)
        return false;
    return now - start > limit;
}

void xSleep(quint64 ms) {
    if (ms == 0)
        return;
    unsigned long long end = platform::monotonicNs() + ms * 1000000ULL;
    // sleep_for may wake early; the loop sleeps the rest until the clock has passed the end.
    for (unsigned long long now = platform::monotonicNs(); now < end; now = platform::monotonicNs())
        std::this_thread::sleep_for(std::chrono::nanoseconds(end - now));
}

} // namespace orv
