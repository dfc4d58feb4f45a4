// LogFilter_test.cpp: substring filters with case and negation, and their conjunction.
#include "orv/LogFilter.h"
#include "orv/LogMessage.h"

#include "support/Test.h"

#include <memory>

using namespace orv;

TEST(LogFilterString, MatchesSubstringWithCaseAndNegationAndDescribesItself) {
    // filter, ignore case, negated, text, match
    std::tuple<char const *, bool, bool, char const *, bool> const rows[] = {
        {"abc", true, false, "xABCx", true},  {"abc", false, false, "xABCx", false},
        {"x", false, true, "abc", true},      {"x", false, true, "axc", false},
        {"", false, false, "anything", true}, {"", false, true, "anything", false},
        {"ABC", true, true, "xabcx", false},
    };
    for (auto [filter, ignoreCase, negated, text, expected] : rows) {
        LogMessageString msg{QString(text)};
        EXPECT_EQ(LogFilterString(filter, ignoreCase, negated).matchLogMessage(&msg), expected)
            << filter << " in " << text << " case:" << ignoreCase;
    }
    EXPECT_FALSE(LogFilterString("a", false, true).matchLogMessage(nullptr));
    EXPECT_EQ(LogFilterString("err", true, false).toString(), "isIgnoreCase:true, filter 'err'");
    LogFilterString byDefault; // case matters and nothing is negated
    EXPECT_FALSE(byDefault.isNegated());
    EXPECT_EQ(byDefault.toString(), "isIgnoreCase:false, filter ''");
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
    LogFilterList list;
    test::expectFatal([&] { list.matchLogMessage(nullptr); }, "^nullptr:lm == NULL\n");
}
