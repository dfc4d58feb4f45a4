// XTokenizer_test.cpp: views into the caller's text, quoted stretches, cursor and token classes.
#include "orv/XTokenizer.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>

#include <limits>

using orv::XTokenizer;

namespace {

QStringList tokensOf(XTokenizer const &tok) {
    QStringList list;
    for (QStringRef const &token : tok)
        list << token.toString();
    return list;
}

QStringRef ref(QString const &text) { return QStringRef(&text); }

} // namespace

TEST(XTokenizer, CutsTextIntoViewsForEveryMode) {
    struct Row {
        char const *text;
        char const *delims;
        bool keepDelims;
        bool quotes;
        QStringList expected;
    } const rows[] = {
        {"a+b", "+", true, false, {"a", "+", "b"}},
        {"a+b", "+", false, false, {"a", "b"}},
        {"a,,b", ",", true, false, {"a", ",", ",", "b"}},
        {"a \"b c\" d", " ", false, true, {"a", "\"b c\"", "d"}},
        {"a \"b c\" d", " ", true, true, {"a", " ", "\"b c\"", " ", "d"}},
        {"a \"b c\" d", " ", false, false, {"a", "\"b", "c\"", "d"}},
        {"\"x,y\",z", ",", false, true, {"\"x,y\"", "z"}},
        {"\"\"", " ", false, true, {"\"\""}},
        // A word in progress before an opening quote is lost.
        {"abc\"d e\"", " ", false, true, {"\"d e\""}},
        // An unclosed quote swallows the rest ...
        {"a \"b c", " ", false, true, {"a"}},
        // ... unless a word was in progress: then the rest from the quote on is one token.
        {"ab\"c d", " ", false, true, {"\"c d"}},
        {"", ",", true, true, {}},
        {",,,", ",", false, false, {}},
        {",,,", ",", true, false, {",", ",", ","}},
        {"abc", "", true, false, {"abc"}},
        {"Ab", "a", false, false, {"Ab"}}, // case-sensitive
        {"gr\xC3\xBCn wei\xC3\x9F", " ", false, false, {"gr\xC3\xBCn", "wei\xC3\x9F"}},
        {"a\xE2\x82\xAC"
         "b",
         "\xE2\x82\xAC",
         true,
         false,
         {"a", "\xE2\x82\xAC", "b"}},
        {"\xE4\xBD\xA0\xE3\x80\x82\xE5\xA5\xBD",
         "\xE3\x80\x82",
         false,
         false,
         {"\xE4\xBD\xA0", "\xE5\xA5\xBD"}},
    };
    for (auto const &row : rows) {
        QString const text = QString::fromUtf8(row.text);
        XTokenizer tok(text, QString::fromUtf8(row.delims), row.keepDelims, row.quotes);
        EXPECT_EQ(tokensOf(tok), row.expected) << row.text << " / " << row.delims;
    }
}

TEST(XTokenizer, TokensAreViewsIntoTheCallersText) {
    QString const text = "ab, cd";
    XTokenizer tok(text, ", ", false, false);
    ASSERT_EQ(tok.size(), 2u);
    EXPECT_EQ(tok[1].string(), &text);
    EXPECT_EQ(tok[1].position(), 4);
    EXPECT_EQ(tok.stringAt(1), "cd");
}

TEST(XTokenizer, BuildTokenReplacesTokensAndKeepsTheCursor) {
    QString const first = "a b c";
    QString const second = "x y";
    XTokenizer tok(first, " ", false, false);
    tok.nextToken();
    EXPECT_EQ(tok.buildToken(second, " ", false, false), 2u);
    EXPECT_EQ(tokensOf(tok), QStringList({"x", "y"}));
    EXPECT_EQ(tok.nextToken(), "y");
}

TEST(XTokenizer, OutOfRangeGivesTheEmptyViewEvenAfterACallerWroteToIt) {
    QString const text = "a b";
    XTokenizer tok(text, " ", false, false);
    XTokenizer const &constTok = tok;
    EXPECT_TRUE(tok.tokenAt(999).isEmpty());
    EXPECT_TRUE(constTok[999].isEmpty());
    tok.tokenAt(999) = tok.tokenAt(0);
    EXPECT_TRUE(tok.tokenAt(999).isEmpty());
    EXPECT_TRUE(tok.currentToken(5).isEmpty());

    XTokenizer empty;
    EXPECT_TRUE(empty.firstToken().isEmpty());
    EXPECT_TRUE(empty.lastToken().isEmpty());
    EXPECT_FALSE(static_cast<bool>(empty));
    EXPECT_EQ(tok.firstToken(), "a");
    EXPECT_EQ(tok.lastToken(), "b");
}

TEST(XTokenizer, NextTokenRunsPastTheEndSoRestWraps) {
    QString const text = "a";
    XTokenizer const tok(text, " ", false, false);
    EXPECT_EQ(tok.rest(), 1u);
    EXPECT_EQ(tok.nextToken(), "a");
    EXPECT_TRUE(tok.nextToken().isEmpty());
    EXPECT_EQ(tok.rest(), std::numeric_limits<size_t>::max());
    EXPECT_FALSE(tok.hasMoreToken());
    tok.putBack();
    EXPECT_EQ(tok.rest(), 0u);
    tok.seekHome();
    EXPECT_TRUE(static_cast<bool>(tok));
    tok.putBack();
    tok.putBack();
    EXPECT_EQ(tok.rest(), 1u); // never below 0
}

TEST(XTokenizer, WhiteSpaceTestTakesAbsoluteIndexWhileOthersFollowTheCursor) {
    QString const text = " ,5";
    XTokenizer tok(text, ",", true, false); // " ", ",", "5"
    tok.nextToken();
    EXPECT_TRUE(tok.is_WhiteSpace(0u));  // token 0, not the cursor's token
    EXPECT_FALSE(tok.is_WhiteSpace(1u)); // ","
    EXPECT_FALSE(tok.is_Number(0));      // ","
    EXPECT_TRUE(tok.is_Number(1));       // "5"
    EXPECT_TRUE(tok.is_One_of_these_Chars(",", 0));
    EXPECT_TRUE(tok.is_Next_Token(","));
    EXPECT_EQ(tok.currentToken(1), "5");
}

TEST(XTokenizer, ClassifiesTokens) {
    struct Row {
        char const *token;
        bool number, real, string, white;
        char const *shownClass;
    } const rows[] = {
        {"12", true, true, false, false, "NUMBER"},
        {"-7", true, true, false, false, "NUMBER"},
        {"1.5", false, true, false, false, "REAL NUMBER"},
        {"1e3", false, true, false, false, "REAL NUMBER"},
        {"abc", false, false, false, false, "OTHER"},
        {"\"x\"", false, false, true, false, "STRING"},
        {"\"", false, false, true, false, "STRING"},
        {"\"x", false, false, false, false, "OTHER"},
        {"", false, false, false, true, "OTHER"},
        {" \t", false, false, false, true, "OTHER"},
        {" \n", false, false, false, false, "OTHER"},
    };
    for (auto const &row : rows) {
        QString const text = QString::fromUtf8(row.token);
        EXPECT_EQ(XTokenizer::is_Number(ref(text)), row.number) << row.token;
        EXPECT_EQ(XTokenizer::is_RealNumber(ref(text)), row.real) << row.token;
        EXPECT_EQ(XTokenizer::is_String(ref(text)), row.string) << row.token;
        EXPECT_EQ(XTokenizer::is_WhiteSpace(ref(text)), row.white) << row.token;
    }
}

TEST(XTokenizer, SingleCharacterClassesUseTheirSets) {
    struct Row {
        char const *token;
        bool open, close, op;
    } const rows[] = {
        {"(", true, false, false}, {"[", true, false, false},  {"{", true, false, false},
        {"}", false, true, false}, {"]", false, true, false},  {"+", false, false, true},
        {"~", false, false, true}, {"%", false, false, false}, {"((", false, false, false},
        {"", false, false, false},
    };
    for (auto const &row : rows) {
        QString const text = row.token;
        EXPECT_EQ(XTokenizer::is_Bracket_open(ref(text)), row.open) << row.token;
        EXPECT_EQ(XTokenizer::is_Bracket_close(ref(text)), row.close) << row.token;
        EXPECT_EQ(XTokenizer::is_Operator(ref(text)), row.op) << row.token;
    }
    QString const lt = "<";
    EXPECT_TRUE(XTokenizer::is_Bracket_open(ref(lt), "<"));
    EXPECT_FALSE(XTokenizer::is_One_of_these_Chars(ref(lt), ""));
}

TEST(XTokenizer, NextNumberReadsGiveZeroOnBadTokenAndMoveOn) {
    QString const text = "12 x 2.5 y";
    XTokenizer const tok(text, " ", false, false);
    EXPECT_EQ(tok.nextInt(), 12);
    EXPECT_EQ(tok.nextInt(), 0);
    EXPECT_DOUBLE_EQ(tok.nextDouble(), 2.5);
    EXPECT_DOUBLE_EQ(tok.nextDouble(), 0.0);
    EXPECT_EQ(tok.rest(), 0u);
    EXPECT_EQ(tok.nextInt(), 0); // past the end
}

TEST(XTokenizer, StringHelpersStripQuotesAndWhitespace) {
    QString const quoted = "\"b c\"";
    QString const plain = "abc";
    QString const lone = "\"";
    EXPECT_EQ(XTokenizer::get_String(ref(quoted)), "b c");
    EXPECT_EQ(XTokenizer::get_String(ref(plain)), "abc");
    EXPECT_EQ(XTokenizer::get_String(ref(lone)), "");
    EXPECT_EQ(XTokenizer::removeWhitespace(" a\tb\nc\rd "), "abcd");
    EXPECT_EQ(XTokenizer::removeWhitespace(""), "");
}

TEST(XTokenizer, RemovingWhiteSpaceTokensKeepsOrderAndRewinds) {
    QString const text = "a b\t\tc ";
    XTokenizer tok(text, " \t", true, false);
    tok.nextToken();
    tok.remove_White_Space_Token();
    EXPECT_EQ(tokensOf(tok), QStringList({"a", "b", "c"}));
    EXPECT_EQ(tok.rest(), 3u);
}

TEST(XTokenizer, FillCollectsDistinctTexts) {
    QString const text = "b a b";
    XTokenizer tok(text, " ", false, false);
    std::set<QString> out{"z"};
    tok.fill(out);
    EXPECT_EQ(out, (std::set<QString>{"a", "b", "z"}));
    EXPECT_EQ(tok.get_token_direct().size(), 3u);
}
