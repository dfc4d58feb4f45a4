// XCalendarUTC_test.cpp: UTC fields over leap years and month ends, and the text forms.
#include "orv/XCalendarUTC.h"

#include "support/Test.h"

#include <vector>

using orv::XCalendarUTC;

namespace {

// year, month, day, hour, minute, second
std::vector<int> fieldsOf(XCalendarUTC const &c) {
    return {c.year(), c.month(), c.day(), c.hour(), c.minute(), c.sec()};
}

} // namespace

TEST(XCalendarUTC, SecondsGiveUtcFieldsAcrossLeapYearsAndMonthEnds) {
    struct Row {
        long long seconds;
        std::vector<int> fields;
    } const rows[] = {
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
        EXPECT_EQ(fieldsOf(calendar), row.fields);
    }
    EXPECT_EQ(fieldsOf(XCalendarUTC()), (std::vector<int>{1900, 1, 0, 0, 0, 0})); // zero of tm
}

TEST(XCalendarUTC, SetFieldsShowInTheTextsOfACopy) {
    XCalendarUTC calendar;
    calendar.setYear(2022);
    calendar.setMonth(1);
    calendar.setDay(2);
    calendar.setHour(3);
    calendar.setMinute(4);
    calendar.setSec(5);
    XCalendarUTC copy(calendar);
    calendar.setYear(1);
    EXPECT_EQ(copy.toString(), "2022/1/2, 3:4,5"); // no padding
    EXPECT_EQ(copy.asString(orv::SCHEDULE_SECOND), "2022_01_02___03_04_05");
}

TEST(XCalendarUTC, AsStringGoesDownToTheScheduledFieldAndNoScheduleSaysSo) {
    XCalendarUTC calendar;
    calendar.fromSecondsSince1970(1668957448); // 2022-11-20 15:17:28
    struct Row {
        int schedule;
        char const *expected, *printed;
    } const rows[] = {
        // clang-format off
        {1, "2022", ""}, {2, "2022_11", ""}, {3, "2022_11_20", ""}, {4, "2022_11_20___15", ""},
        {5, "2022_11_20___15_17", ""}, {6, "2022_11_20___15_17_28", ""}, {7, "", ""}, {-1, "", ""},
        {orv::SCHEDULE_NONE, "", "XScheduler::run - wrong place here !\n"},
    }; // clang-format on
    for (Row const &row : rows) {
        SCOPED_TRACE(row.schedule);
        QString text;
        EXPECT_EQ(orv::test::coutWithoutTrailers(
                      [&] { text = calendar.asString(static_cast<orv::SCHEDULE>(row.schedule)); }),
                  row.printed);
        EXPECT_EQ(text, row.expected);
    }
}
