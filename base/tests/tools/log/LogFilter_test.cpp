// LogFilter_test.cpp: substring filters with case and negation, and their conjunction.
#include "orv/LogFilter.h"
#include "orv/LogMessage.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <memory>

using namespace orv;

TEST(LogFilterString, MatchesSubstringWithCaseAndNegation) {
    struct Row {
        char const *filter;
        bool ignoreCase;
        bool negated;
        char const *text;
        bool expected;
    } const rows[] = {
        {"abc", true, false, "xABCx", true},  {"abc", false, false, "xABCx", false},
        {"x", false, true, "abc", true},      {"x", false, true, "axc", false},
        {"", false, false, "anything", true}, {"", false, true, "anything", false},
        {"ABC", true, true, "xabcx", false},
    };
    for (Row const &row : rows) {
        LogFilterString filter(row.filter, row.ignoreCase, row.negated);
        LogMessageString msg{QString(row.text)};
        EXPECT_EQ(filter.matchLogMessage(&msg), row.expected)
            << row.filter << " in " << row.text << " case:" << row.ignoreCase;
    }
    EXPECT_FALSE(LogFilterString("a", false, true).matchLogMessage(nullptr));
}

TEST(LogFilterString, DescribesItself) {
    EXPECT_EQ(LogFilterString("err", true, false).toString(), "isIgnoreCase:true, filter 'err'");
    LogFilterString filter; // case matters and nothing is negated by default
    EXPECT_FALSE(filter.isNegated());
    EXPECT_EQ(filter.toString(), "isIgnoreCase:false, filter ''");
}

TEST(LogFilterList, AllFiltersMustMatchAndRemoveTakesTheSameObject) {
    LogFilterList list;
    LogMessageString msg{QString("socket retry")};
    EXPECT_TRUE(list.matchLogMessage(&msg));
    auto socket = std::make_shared<LogFilterString>("SOCKET", true, false);
    auto noRetry = std::make_shared<LogFilterString>("retry", false, true);
    list.addFilter(socket);
    list.addFilter(noRetry);
    EXPECT_EQ(list.size(), 2u);
    EXPECT_FALSE(list.matchLogMessage(&msg));
    list.removeFilter(std::make_shared<LogFilterString>("retry", false, true));
    EXPECT_EQ(list.size(), 2u);
    list.removeFilter(noRetry);
    EXPECT_EQ(list.size(), 1u);
    EXPECT_TRUE(list.matchLogMessage(&msg));
    // The list's own flag isn't consulted.
    list.setNegated(true);
    EXPECT_TRUE(list.matchLogMessage(&msg));
}

TEST(LogFilterListDeathTest, NullMessageIsFatal) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    LogFilterList list;
    EXPECT_EXIT(list.matchLogMessage(nullptr), testing::ExitedWithCode(1), "");
}
