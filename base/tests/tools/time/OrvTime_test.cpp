// OrvTime_test.cpp: ticks, the text forms under a fixed zone, the stream form and the sleeps.
#include "orv/OrvTime.h"

#include "ScopedTimeZone.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

using orv::OrvTime;

namespace {

// 2022-11-20 12:00:00 UTC, in microseconds.
constexpr quint64 noonMicros = 1668945600ULL * 1000000ULL;

} // namespace

TEST(OrvTime, ConstructorsFixTheTicks) {
    EXPECT_EQ(OrvTime(false).getMilliseconds(), 0u);
    OrvTime t(1500000ULL);
    EXPECT_EQ(t.getMicroseconds(), 1500000u);
    EXPECT_EQ(t.getMilliseconds(), 1500u);
    EXPECT_EQ(t.getNanoseconds(), 1500000000u);
    EXPECT_EQ(t.getRelativeMilliseconds(), 500);
}

TEST(OrvTime, NowLiesBetweenTwoReadingsOfTheClock) {
    quint64 before = orv::getMicroseconds();
    OrvTime now(true);
    quint64 after = orv::getMicroseconds();
    EXPECT_LE(before, now.getMicroseconds());
    EXPECT_LE(now.getMicroseconds(), after);
    EXPECT_GT(before, noonMicros); // no clock of this century reads 0
}

TEST(OrvTime, CopyOwnsItsValue) {
    OrvTime original(noonMicros);
    OrvTime copy(original);
    copy.fromMircoSeconds(7);
    EXPECT_EQ(original.getMicroseconds(), noonMicros);
    OrvTime assigned(false);
    assigned = original;
    original.fromMircoSeconds(9);
    EXPECT_EQ(assigned.getMicroseconds(), noonMicros);
}

TEST(OrvTime, TheTimeStringAppendsTheChosenFraction) {
    ScopedTimeZone zone("UTC0");
    struct Row {
        quint64 micros;
        char const *format;
        int second;
        char const *expected;
    };
    std::vector<Row> const rows = {
        {noonMicros + 50000, "%H", 1, "12,050"},
        {noonMicros + 50000, "%H", 3, "12"},
        {noonMicros + 50000, "%H", 0, "12"},
        {noonMicros + 123456, "%H:%M:%S", 2, "12:00:00,123456"},
        {noonMicros + 123456, "%H:%M:%S", 1, "12:00:00,123"},
        {noonMicros + 7, "%Y-%m-%d", 2, "2022-11-20,000007"},
        {noonMicros, "", 1, ",000"},
    };
    for (Row const &row : rows) {
        OrvTime t(row.micros);
        EXPECT_EQ(t.getTheTimeString(row.format, static_cast<OrvTime::FORMAT_SECOND>(row.second)),
                  row.expected)
            << row.format << " " << row.second;
        EXPECT_EQ(t.getFullTimeStamp(row.format, static_cast<OrvTime::FORMAT_SECOND>(row.second)),
                  row.expected);
    }
    EXPECT_EQ(OrvTime(noonMicros).getTheTimeString(nullptr, OrvTime::MILLISECONDS), "");
}

TEST(OrvTime, TimeStringPicksTheFractionByFlagBits) {
    ScopedTimeZone zone("UTC0");
    OrvTime t(noonMicros + 3 * 3600000000ULL + 123456);
    struct Row {
        unsigned int flags;
        char const *expected;
    };
    std::vector<Row> const rows = {
        {0x170, "15:00:00,123456"}, {0x100, "15:00:00,123456"}, {0x180, "15:00:00,123456"},
        {0x80, "15:00:00,123"},     {0x0, "15:00:00"},          {0x7f, "15:00:00"},
    };
    for (Row const &row : rows)
        EXPECT_EQ(t.getTimeString(row.flags), row.expected) << row.flags;
}

TEST(OrvTime, TextsAndFieldsFollowTheLocalZone) {
    ScopedTimeZone zone("CET-1");
    OrvTime t(noonMicros);
    EXPECT_EQ(t.getTheTimeString("%H:%M", OrvTime::NO_FRACTION), "13:00");
    EXPECT_EQ(t.tm_hour(), 13);
    EXPECT_EQ(t.tm_year(), 122);
    EXPECT_EQ(t.tm_month(), 10);
    EXPECT_EQ(t.tm_day(), 20);
    EXPECT_EQ(t.tm_min(), 0);
    EXPECT_EQ(t.tm_sec(), 0);
    EXPECT_EQ(t.tm_yearDay(), 323);
}

TEST(OrvTime, LocalFieldsCrossLeapDays) {
    ScopedTimeZone zone("UTC0");
    struct Row {
        long long seconds;
        int year, month, day, yearDay;
    };
    std::vector<Row> const rows = {
        {951825600, 100, 1, 29, 59},     // 2000-02-29: divisible by 400, a leap year
        {1709164800, 124, 1, 29, 59},    // 2024-02-29
        {4107542399 + 1, 200, 2, 1, 59}, // 2100-03-01: divisible by 100, no leap year
        {1735689599, 124, 11, 31, 365},  // 2024-12-31 23:59:59
    };
    for (Row const &row : rows) {
        OrvTime t(static_cast<quint64>(row.seconds) * 1000000ULL);
        EXPECT_EQ(t.tm_year(), row.year) << row.seconds;
        EXPECT_EQ(t.tm_month(), row.month) << row.seconds;
        EXPECT_EQ(t.tm_day(), row.day) << row.seconds;
        EXPECT_EQ(t.tm_yearDay(), row.yearDay) << row.seconds;
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
    };
    std::vector<Row> const rows = {
        {0, 1, 1000, false}, {10, 5, 15, false}, {10, 5, 16, true},
        {10, 0, 10, false},  {10, 0, 11, true},
    };
    for (Row const &row : rows)
        EXPECT_EQ(orv::isTimeout(row.start, row.limit, row.now), row.expected)
            << row.start << " " << row.limit << " " << row.now;
}

TEST(OrvTime, XSleepSleepsAtLeastTheAskedTime) {
    for (quint64 ms : {1u, 25u}) {
        auto start = std::chrono::steady_clock::now();
        orv::xSleep(ms);
        EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(ms));
    }
}
