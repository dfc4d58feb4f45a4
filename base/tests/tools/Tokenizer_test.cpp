// Tokenizer_test.cpp: byte-wise cutting, typed reads and the quote-aware split.
#include "orv/Tokenizer.h"

#include "support/Test.h"

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

} // namespace

TEST(Tokenizer, CutsTextIntoTokensForEveryInputShape) {
    struct Row {
        char const *text, *delims;
        bool keepDelims;
        QStringList expected;
    } const rows[] = {
        // clang-format off
        {"a,,b", ",", false, {"a", "b"}}, {"a,,b", ",", true, {"a", ",", ",", "b"}},
        {"", ",", true, {}}, {",", ",", false, {}}, {",;,", ",;", true, {",", ";", ","}},
        {"  a b  ", " ", false, {"a", "b"}}, {"a b,c", " ,", true, {"a", " ", "b", ",", "c"}},
        {"abc", "", false, {"abc"}}, {"abc", "", true, {"abc"}}, {"", "", false, {}},
        {"gr\xC3\xBCn,wei\xC3\x9F", ",", false, {"gr\xC3\xBCn", "wei\xC3\x9F"}},
        // Every byte of a multi-byte delimiter is a delimiter by itself ...
        {"a\u20ACb", "\u20AC", false, {"a", "b"}},
        // ... and a kept delimiter byte comes back as Latin-1.
        {"a\u20ACb", "\u20AC", true, {"a", "\xC3\xA2", "\xC2\x82", "\xC2\xAC", "b"}},
        // The lead byte of "ã" cuts "é" in two; the orphaned byte decodes as U+FFFD.
        {"x\xC3\xA9y", "\xC3\xA3", false, {"x", "\xEF\xBF\xBDy"}},
    }; // clang-format on
    for (Row const &row : rows) {
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

TEST(Tokenizer, PeekKeepsTheIndexOutOfRangeGivesEmptyAndQueueAndStackHoldAllTokens) {
    Tokenizer tok("a b", " ", false);
    EXPECT_TRUE(tok.tokenAt(2).isEmpty());
    EXPECT_TRUE(tok[99].isEmpty());
    EXPECT_EQ(tok.peekNextToken(), "a");
    EXPECT_TRUE(tok.isPeekNextToken("a"));
    EXPECT_FALSE(tok.isPeekNextToken("b"));
    EXPECT_EQ(tok.nextToken(), "a");
    EXPECT_FALSE(tok.isLastToken()); // "b" is next, and it is the last, yet not "last"
    EXPECT_EQ(tok.nextToken(), "b");
    EXPECT_TRUE(tok.isLastToken());
    EXPECT_TRUE(tok.nextToken().isEmpty());
    EXPECT_EQ(tok.remain(), 0u);
    EXPECT_TRUE(tok.peekNextToken().isEmpty());
    EXPECT_FALSE(tok.isPeekNextToken(""));
    EXPECT_TRUE(Tokenizer().isLastToken());
    // The queue and the stack hold all tokens whatever the index.
    std::queue<QString> queue = tok.getQueue();
    std::stack<QString> stack = tok.getStack();
    ASSERT_EQ(queue.size(), 2u);
    ASSERT_EQ(stack.size(), 2u);
    EXPECT_EQ(queue.front() + queue.back() + stack.top(), "abb");
}

TEST(Tokenizer, RecognisesNumbersAsNextToken) {
    // clang-format off
    std::pair<char const *, bool> const rows[] = {
        {"12", true}, {"-3.5", true}, {"1e3", true}, {".5", true}, {"e5", false}, {"abc", false},
        {"12x", false}, {"inf", false}, {"\xC3\xA9", false}};
    // clang-format on
    for (auto [token, number] : rows) {
        Tokenizer tok(QString::fromUtf8(token), " ", false);
        EXPECT_EQ(tok.isNextToken_a_Number(), number) << token;
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

TEST(Tokenizer, SplitsQuotedStretchesApart) {
    // Quoted records are shown in brackets.
    std::pair<char const *, QStringList> const rows[] = {
        {"a \"b c\" d", {"a", "[b c]", "d"}},
        // Blanks between two quoted strings give an empty unquoted record.
        {"\"x\"  \"y\"", {"[x]", "", "[y]"}},
        // Two quotes in a row: the record holds the quote itself.
        {"a\"\"b", {"a", "[\"]", "b"}},
        // Text after an unclosed quote is lost.
        {"a \"b c", {"a"}},
        {"", {}},
        {"\"", {}},
        {"gr\xC3\xBCn \"\xE4\xB8\xAD\"", {"gr\xC3\xBCn", "[\xE4\xB8\xAD]"}},
    };
    for (auto const &[text, expected] : rows) {
        QStringList shown;
        for (TokenString const &token : Tokenizer::get_token_strings(QString::fromUtf8(text), "\""))
            shown << (token.quoted ? '[' + token.text + ']' : token.text);
        EXPECT_EQ(shown, expected) << text;
    }
    // A delimiter of other length than one splits nothing.
    EXPECT_TRUE(Tokenizer::get_token_strings("x", "ab").empty());
    EXPECT_TRUE(Tokenizer::get_token_strings("x", "").empty());
}
