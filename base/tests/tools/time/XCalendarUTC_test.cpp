// XCalendarUTC_test.cpp: UTC fields over leap years and month ends, and the text forms.
#include "orv/XCalendarUTC.h"

#include "support/ConsoleCapture.h"

#include <gtest/gtest.h>

#include <vector>

using orv::XCalendarUTC;

namespace {

struct Date {
    int year, month, day, hour, minute, sec;
};

void expectDate(XCalendarUTC const &calendar, Date const &date) {
    EXPECT_EQ(calendar.year(), date.year);
    EXPECT_EQ(calendar.month(), date.month);
    EXPECT_EQ(calendar.day(), date.day);
    EXPECT_EQ(calendar.hour(), date.hour);
    EXPECT_EQ(calendar.minute(), date.minute);
    EXPECT_EQ(calendar.sec(), date.sec);
}

} // namespace

TEST(XCalendarUTC, SecondsGiveUtcFieldsAcrossLeapYearsAndMonthEnds) {
    struct Row {
        long long seconds;
        Date date;
    };
    std::vector<Row> const rows = {
        {951782399, {2000, 2, 28, 23, 59, 59}},
        {951782400, {2000, 2, 29, 0, 0, 0}}, // 2000 is a leap year
        {1709164800, {2024, 2, 29, 0, 0, 0}},
        {-2203891201, {1900, 2, 28, 23, 59, 59}},
        {-2203891200, {1900, 3, 1, 0, 0, 0}}, // 1900 is none
        {4107542400, {2100, 3, 1, 0, 0, 0}},  // nor is 2100
        {1682899199, {2023, 4, 30, 23, 59, 59}},
        {1682899200, {2023, 5, 1, 0, 0, 0}},
        {1735689599, {2024, 12, 31, 23, 59, 59}},
        {1735689600, {2025, 1, 1, 0, 0, 0}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.seconds);
        XCalendarUTC calendar;
        calendar.fromSecondsSince1970(row.seconds);
        expectDate(calendar, row.date);
    }
}

TEST(XCalendarUTC, SettersAndGettersRoundTrip) {
    std::vector<Date> const dates = {
        {2000, 2, 29, 23, 59, 59},
        {1900, 2, 28, 0, 0, 0},
        {2100, 12, 31, 12, 30, 1},
        {2024, 1, 1, 0, 0, 0},
    };
    for (Date const &date : dates) {
        XCalendarUTC calendar;
        calendar.setYear(date.year);
        calendar.setMonth(date.month);
        calendar.setDay(date.day);
        calendar.setHour(date.hour);
        calendar.setMinute(date.minute);
        calendar.setSec(date.sec);
        XCalendarUTC copy(calendar);
        calendar.setYear(1);
        expectDate(copy, date);
    }
}

TEST(XCalendarUTC, FreshCalendarIsTheZeroOfTm) {
    expectDate(XCalendarUTC(), {1900, 1, 0, 0, 0, 0});
}

TEST(XCalendarUTC, AsStringGoesDownToTheScheduledField) {
    XCalendarUTC calendar;
    calendar.fromSecondsSince1970(1668957448); // 2022-11-20 15:17:28
    struct Row {
        int schedule;
        char const *expected;
    };
    std::vector<Row> const rows = {
        {1, "2022"},
        {2, "2022_11"},
        {3, "2022_11_20"},
        {4, "2022_11_20___15"},
        {5, "2022_11_20___15_17"},
        {6, "2022_11_20___15_17_28"},
        {7, ""},
        {-1, ""},
    };
    for (Row const &row : rows)
        EXPECT_EQ(calendar.asString(static_cast<orv::SCHEDULE>(row.schedule)), row.expected)
            << row.schedule;
}

TEST(XCalendarUTC, AsStringOfNoScheduleIsEmptyAndSaysSo) {
    XCalendarUTC calendar;
    testing::internal::CaptureStdout();
    QString text = calendar.asString(orv::SCHEDULE_NONE);
    EXPECT_EQ(orv::test::withoutSimpleTrailers(testing::internal::GetCapturedStdout()),
              "XScheduler::run - wrong place here !\n");
    EXPECT_TRUE(text.isEmpty());
}

TEST(XCalendarUTC, ToStringHasNoPadding) {
    XCalendarUTC calendar;
    calendar.fromSecondsSince1970(1641092645); // 2022-01-02 03:04:05
    EXPECT_EQ(calendar.toString(), "2022/1/2, 3:4,5");
}
