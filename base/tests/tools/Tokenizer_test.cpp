// Tokenizer_test.cpp: byte-wise cutting, typed reads and the quote-aware split.
#include "orv/Tokenizer.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>

using orv::Tokenizer;
using orv::TokenString;

namespace {

QStringList tokensOf(Tokenizer const &tok) {
    QStringList list;
    for (unsigned int i = 0; i < tok.size(); ++i)
        list << tok[i];
    return list;
}

struct ScanRow {
    char const *text;
    char const *delims;
    bool keepDelims;
    QStringList expected;
};

} // namespace

TEST(Tokenizer, CutsTextIntoTokensForEveryInputShape) {
    ScanRow const rows[] = {
        {"a,,b", ",", false, {"a", "b"}},
        {"a,,b", ",", true, {"a", ",", ",", "b"}},
        {"", ",", true, {}},
        {",", ",", false, {}},
        {",;,", ",;", true, {",", ";", ","}},
        {"  a b  ", " ", false, {"a", "b"}},
        {"a b,c", " ,", true, {"a", " ", "b", ",", "c"}},
        {"abc", "", false, {"abc"}},
        {"abc", "", true, {"abc"}},
        {"", "", false, {}},
        {"gr\xC3\xBCn,wei\xC3\x9F", ",", false, {"gr\xC3\xBCn", "wei\xC3\x9F"}},
        // Every byte of a multi-byte delimiter is a delimiter by itself ...
        {"a\xE2\x82\xAC"
         "b",
         "\xE2\x82\xAC",
         false,
         {"a", "b"}},
        // ... and a kept delimiter byte comes back as Latin-1.
        {"a\xE2\x82\xAC"
         "b",
         "\xE2\x82\xAC",
         true,
         {"a", "\xC3\xA2", "\xC2\x82", "\xC2\xAC", "b"}},
        // The lead byte of "ã" cuts "é" in two; the orphaned byte decodes as U+FFFD.
        {"x\xC3\xA9y", "\xC3\xA3", false, {"x", "\xEF\xBF\xBDy"}},
    };
    for (ScanRow const &row : rows) {
        Tokenizer tok(QString::fromUtf8(row.text), QString::fromUtf8(row.delims), row.keepDelims);
        EXPECT_EQ(tokensOf(tok), row.expected) << row.text << " / " << row.delims;
    }
}

TEST(Tokenizer, ScanAppendsToEarlierTokensAndRewinds) {
    Tokenizer tok("a b", " ", false);
    tok.nextToken();
    tok.scan("c", " ", false);
    EXPECT_EQ(tokensOf(tok), QStringList({"a", "b", "c"}));
    EXPECT_EQ(tok.nextToken(), "a");
}

TEST(Tokenizer, OutOfRangeAccessGivesEmptyAndKeepsIndex) {
    Tokenizer tok("a b", " ", false);
    EXPECT_TRUE(tok.tokenAt(2).isEmpty());
    EXPECT_TRUE(tok[99].isEmpty());
    EXPECT_EQ(tok.nextToken(), "a");
    EXPECT_EQ(tok.nextToken(), "b");
    EXPECT_TRUE(tok.nextToken().isEmpty());
    EXPECT_EQ(tok.remain(), 0u);
    EXPECT_FALSE(tok.hasMoreToken());
    EXPECT_TRUE(tok.peekNextToken().isEmpty());
    EXPECT_FALSE(tok.isPeekNextToken(""));
}

TEST(Tokenizer, IsLastTokenHoldsOnlyAfterTheLastTokenWasTaken) {
    Tokenizer tok("a b", " ", false);
    tok.nextToken();
    EXPECT_FALSE(tok.isLastToken()); // "b" is next, and it is the last, yet not "last"
    tok.nextToken();
    EXPECT_TRUE(tok.isLastToken());
    EXPECT_TRUE(Tokenizer().isLastToken());
    tok.reset();
    EXPECT_EQ(tok.remain(), 2u);
}

TEST(Tokenizer, PeekingDoesNotMoveTheIndex) {
    Tokenizer tok("x y", " ", false);
    EXPECT_EQ(tok.peekNextToken(), "x");
    EXPECT_TRUE(tok.isPeekNextToken("x"));
    EXPECT_FALSE(tok.isPeekNextToken("y"));
    EXPECT_EQ(tok.remain(), 2u);
}

TEST(Tokenizer, RecognisesNumbersAsNextToken) {
    struct Row {
        char const *token;
        bool number;
    } const rows[] = {{"12", true},   {"-3.5", true}, {"1e3", true},
                      {".5", true},   {"e5", false},  {"abc", false},
                      {"12x", false}, {"inf", false}, {"\xC3\xA9", false}};
    for (Row const &row : rows) {
        Tokenizer tok(QString::fromUtf8(row.token), " ", false);
        EXPECT_EQ(tok.isNextToken_a_Number(), row.number) << row.token;
        EXPECT_EQ(tok.remain(), 1u);
    }
    EXPECT_FALSE(Tokenizer().isNextToken_a_Number());
}

TEST(Tokenizer, NextFamilyGivesDefaultOnBadTokenAndMovesOn) {
    Tokenizer tok("x 42 -1 9000000000 18446744073709551615 2.5 y", " ", false);
    EXPECT_EQ(tok.nextLong(7), 7);
    EXPECT_EQ(tok.remain(), 6u);
    EXPECT_EQ(tok.nextInt(5), 42);
    EXPECT_EQ(tok.nextUInt(5), 5u); // "-1" is no unsigned number
    EXPECT_EQ(tok.nextLong(0), 9000000000LL);
    EXPECT_EQ(tok.nextULong(0), 18446744073709551615ULL);
    EXPECT_FLOAT_EQ(tok.nextFloat(0.f), 2.5f);
    EXPECT_FLOAT_EQ(tok.nextFloat(-1.f), -1.f);
    EXPECT_EQ(tok.remain(), 0u);
    // Past the end: the default, and the index stays.
    EXPECT_EQ(tok.nextInt(-9), -9);
    EXPECT_EQ(tok.nextULong(3), 3u);
    EXPECT_EQ(tok.remain(), 0u);
}

TEST(Tokenizer, AtFamilyGivesZeroOnBadTokenAndDefaultOnlyOutOfRange) {
    Tokenizer tok("x 42 -1 9000000000", " ", false);
    EXPECT_EQ(tok.LONG_at(0, 7), 0);
    EXPECT_EQ(tok.intAt(0, 7), 0);
    EXPECT_EQ(tok.uintAt(2, 7), 0u);
    EXPECT_EQ(tok.ULONG_at(0, 7), 0u);
    EXPECT_EQ(tok.intAt(1, 7), 42);
    EXPECT_EQ(tok.intAt(2, 7), -1);
    EXPECT_EQ(tok.LONG_at(3, 7), 9000000000LL);
    EXPECT_EQ(tok.intAt(4, 7), 7);
    EXPECT_EQ(tok.ULONG_at(99, 8), 8u);
    EXPECT_EQ(tok.remain(), 4u);
}

TEST(Tokenizer, QueueAndStackHoldAllTokensWhateverTheIndex) {
    Tokenizer tok("a b c", " ", false);
    tok.nextToken();
    tok.nextToken();
    std::queue<QString> queue = tok.getQueue();
    std::stack<QString> stack = tok.getStack();
    ASSERT_EQ(queue.size(), 3u);
    ASSERT_EQ(stack.size(), 3u);
    EXPECT_EQ(queue.front(), "a");
    EXPECT_EQ(queue.back(), "c");
    EXPECT_EQ(stack.top(), "c");
}

TEST(Tokenizer, CopyAndMoveTakeTokensAndIndex) {
    Tokenizer tok("a b c", " ", false);
    tok.nextToken();
    Tokenizer copy(tok);
    EXPECT_EQ(copy.nextToken(), "b");
    Tokenizer moved(std::move(copy));
    EXPECT_EQ(moved.nextToken(), "c");
    Tokenizer assigned;
    assigned = tok;
    EXPECT_EQ(assigned.remain(), 2u);
    EXPECT_EQ(tokensOf(assigned), QStringList({"a", "b", "c"}));
}

TEST(Tokenizer, SplitsQuotedStretchesApart) {
    struct Row {
        char const *text;
        std::vector<TokenString> expected;
    } const rows[] = {
        {"a \"b c\" d", {{"a", false}, {"b c", true}, {"d", false}}},
        // Blanks between two quoted strings give an empty unquoted record.
        {"\"x\"  \"y\"", {{"x", true}, {"", false}, {"y", true}}},
        // Two quotes in a row: the record holds the quote itself.
        {"a\"\"b", {{"a", false}, {"\"", true}, {"b", false}}},
        // Text after an unclosed quote is lost.
        {"a \"b c", {{"a", false}}},
        {"", {}},
        {"\"", {}},
        {"gr\xC3\xBCn \"\xE4\xB8\xAD\"", {{"gr\xC3\xBCn", false}, {"\xE4\xB8\xAD", true}}},
    };
    for (auto const &row : rows) {
        std::vector<TokenString> got =
            Tokenizer::get_token_strings(QString::fromUtf8(row.text), "\"");
        ASSERT_EQ(got.size(), row.expected.size()) << row.text;
        for (size_t i = 0; i < got.size(); ++i) {
            EXPECT_EQ(got[i].text, row.expected[i].text) << row.text << " #" << i;
            EXPECT_EQ(got[i].quoted, row.expected[i].quoted) << row.text << " #" << i;
        }
    }
}

TEST(Tokenizer, QuoteSplitRejectsDelimiterOfOtherLength) {
    EXPECT_TRUE(Tokenizer::get_token_strings("x", "ab").empty());
    EXPECT_TRUE(Tokenizer::get_token_strings("x", "").empty());
}
