// OrvTime_test.cpp: ticks, the text forms under a fixed zone, the stream form and the sleeps.
#include "orv/OrvTime.h"

#include "ScopedTimeZone.h"

#include "support/Test.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>

#include <chrono>
#include <vector>

using orv::OrvTime;

namespace {

// 2022-11-20 12:00:00 UTC, in microseconds.
constexpr quint64 noonMicros = 1668945600ULL * 1000000ULL;

} // namespace

TEST(OrvTime, TicksAreKeptInMicrosecondsAndCopiesOwnTheirValue) {
    EXPECT_EQ(OrvTime(false).getMilliseconds(), 0u);
    OrvTime t(1500000ULL);
    EXPECT_EQ(t.getMicroseconds(), 1500000u);
    EXPECT_EQ(t.getMilliseconds(), 1500u);
    EXPECT_EQ(t.getNanoseconds(), 1500000000u);
    EXPECT_EQ(t.getRelativeMilliseconds(), 500);
    OrvTime copy(t);
    copy.fromMircoSeconds(7);
    OrvTime assigned(false);
    assigned = t;
    t.fromMircoSeconds(9);
    EXPECT_EQ(copy.getMicroseconds(), 7u);
    EXPECT_EQ(assigned.getMicroseconds(), 1500000u);
}

TEST(OrvTime, NowLiesBetweenTwoReadingsOfTheClockAndXSleepSleepsAtLeastTheAskedTime) {
    quint64 before = orv::getMicroseconds();
    OrvTime now(true);
    quint64 after = orv::getMicroseconds();
    EXPECT_LE(before, now.getMicroseconds());
    EXPECT_LE(now.getMicroseconds(), after);
    EXPECT_GT(before, noonMicros); // no clock of this century reads 0
    for (quint64 ms : {1u, 25u}) {
        auto start = std::chrono::steady_clock::now();
        orv::xSleep(ms);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(ms));
    }
}

TEST(OrvTime, TimeStringsAppendTheChosenFraction) {
    ScopedTimeZone zone("UTC0");
    struct Row {
        quint64 micros;
        char const *format;
        int second; // 3 is out of range: no fraction
        char const *expected;
    } const rows[] = {
        // clang-format off
        {noonMicros + 50000, "%H", 1, "12,050"}, {noonMicros + 50000, "%H", 3, "12"},
        {noonMicros + 50000, "%H", 0, "12"}, {noonMicros + 123456, "%H:%M:%S", 2, "12:00:00,123456"},
        {noonMicros + 123456, "%H:%M:%S", 1, "12:00:00,123"},
        {noonMicros + 7, "%Y-%m-%d", 2, "2022-11-20,000007"}, {noonMicros, "", 1, ",000"},
    }; // clang-format on
    for (Row const &row : rows) {
        SCOPED_TRACE(testing::Message() << row.format << " " << row.second);
        auto const second = static_cast<OrvTime::FORMAT_SECOND>(row.second);
        EXPECT_EQ(OrvTime(row.micros).getTheTimeString(row.format, second), row.expected);
        EXPECT_EQ(OrvTime(row.micros).getFullTimeStamp(row.format, second), row.expected);
    }
    EXPECT_EQ(OrvTime(noonMicros).getTheTimeString(nullptr, OrvTime::MILLISECONDS), "");
    // getTimeString picks the fraction by flag bits: 0x100 microseconds, else 0x80 milliseconds.
    OrvTime const t(noonMicros + 3 * 3600000000ULL + 123456);
    struct FlagRow {
        unsigned int flags;
        char const *expected;
    } const flagRows[] = {
        {0x170, "15:00:00,123456"}, {0x100, "15:00:00,123456"}, {0x180, "15:00:00,123456"},
        {0x80, "15:00:00,123"},     {0x0, "15:00:00"},          {0x7f, "15:00:00"},
    };
    for (FlagRow const &row : flagRows)
        EXPECT_EQ(t.getTimeString(row.flags), row.expected) << row.flags;
}

TEST(OrvTime, LocalFieldsFollowTheZoneAndCrossLeapDays) {
    struct Row {
        char const *zone;
        long long seconds;
        std::vector<int> fields; // tm year, month, day, hour, minute, second, day of the year
    } const rows[] = {
        {"CET-1", 1668945600, {122, 10, 20, 13, 0, 0, 323}},  // 2022-11-20 12:00 UTC
        {"UTC0", 951825600, {100, 1, 29, 12, 0, 0, 59}},      // 2000: divisible by 400, leap
        {"UTC0", 1709164800, {124, 1, 29, 0, 0, 0, 59}},      // 2024-02-29
        {"UTC0", 4107542400, {200, 2, 1, 0, 0, 0, 59}},       // 2100: by 100, no leap year
        {"UTC0", 1735689599, {124, 11, 31, 23, 59, 59, 365}}, // 2024-12-31 23:59:59
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.seconds);
        ScopedTimeZone zone(row.zone);
        OrvTime t(static_cast<quint64>(row.seconds) * 1000000ULL);
        EXPECT_EQ((std::vector<int>{t.tm_year(), t.tm_month(), t.tm_day(), t.tm_hour(), t.tm_min(),
                                    t.tm_sec(), t.tm_yearDay()}),
                  row.fields);
        EXPECT_EQ(t.getTheTimeString("%H:%M", OrvTime::NO_FRACTION),
                  QString::asprintf("%02d:%02d", row.fields[3], row.fields[4]));
    }
}

TEST(OrvTime, StreamFormIsMicrosecondsInEightBytes) {
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << OrvTime(noonMicros + 1);
    }
    EXPECT_EQ(bytes.size(), 8);
    QDataStream in(bytes);
    OrvTime read(false);
    in >> read;
    EXPECT_EQ(read.getMicroseconds(), noonMicros + 1);
}

TEST(OrvTime, IsTimeoutNeedsAStartAndMoreThanTheLimit) {
    struct Row {
        quint64 start, limit, now;
        bool expected;
    } const rows[] = {
        {0, 1, 1000, false}, {10, 5, 15, false}, {10, 5, 16, true},
        {10, 0, 10, false},  {10, 0, 11, true},
    };
    for (Row const &row : rows)
        EXPECT_EQ(orv::isTimeout(row.start, row.limit, row.now), row.expected)
            << row.start << " " << row.limit << " " << row.now;
}
