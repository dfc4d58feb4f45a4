// XTokenizer_test.cpp: views into the caller's text, quoted stretches, cursor and token classes.
#include "orv/XTokenizer.h"

#include "support/Test.h"

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
        // clang-format off
        {"a+b", "+", true, false, {"a", "+", "b"}}, {"a+b", "+", false, false, {"a", "b"}},
        {"a,,b", ",", true, false, {"a", ",", ",", "b"}},
        {"a \"b c\" d", " ", false, true, {"a", "\"b c\"", "d"}},
        {"a \"b c\" d", " ", true, true, {"a", " ", "\"b c\"", " ", "d"}},
        {"a \"b c\" d", " ", false, false, {"a", "\"b", "c\"", "d"}},
        {"\"x,y\",z", ",", false, true, {"\"x,y\"", "z"}}, {"\"\"", " ", false, true, {"\"\""}},
        // A word in progress before an opening quote is lost.
        {"abc\"d e\"", " ", false, true, {"\"d e\""}},
        // An unclosed quote swallows the rest ...
        {"a \"b c", " ", false, true, {"a"}},
        // ... unless a word was in progress: then the rest from the quote on is one token.
        {"ab\"c d", " ", false, true, {"\"c d"}}, {"", ",", true, true, {}},
        {",,,", ",", false, false, {}}, {",,,", ",", true, false, {",", ",", ","}},
        {"abc", "", true, false, {"abc"}}, {"Ab", "a", false, false, {"Ab"}}, // "Ab": case counts
        {"gr\xC3\xBCn wei\xC3\x9F", " ", false, false, {"gr\xC3\xBCn", "wei\xC3\x9F"}},
        {"a\u20ACb", "\u20AC", true, false, {"a", "\u20AC", "b"}},
        {"\u4F60\u3002\u597D", "\u3002", false, false, {"\u4F60", "\u597D"}},
    }; // clang-format on
    for (auto const &row : rows) {
        QString const text = QString::fromUtf8(row.text);
        XTokenizer tok(text, QString::fromUtf8(row.delims), row.keepDelims, row.quotes);
        EXPECT_EQ(tokensOf(tok), row.expected) << row.text << " / " << row.delims;
    }
}

TEST(XTokenizer, TokensAreViewsIntoTheCallersTextAndBuildTokenReplacesThemKeepingTheCursor) {
    QString const text = "ab, cd", second = "x y";
    XTokenizer tok(text, ", ", false, false);
    ASSERT_EQ(tok.size(), 2u);
    EXPECT_EQ(tok[1].string(), &text);
    EXPECT_EQ(tok[1].position(), 4);
    EXPECT_EQ(tok.stringAt(1), "cd");
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
    // classes: N number, R real number, S string, W white space, ( open, ) close, + operator
    struct Row {
        char const *token, *classes;
    } const rows[] = {
        // clang-format off
        {"12", "NR"}, {"-7", "NR"}, {"1.5", "R"}, {"1e3", "R"}, {"abc", ""}, {"\"x\"", "S"},
        {"\"", "S"}, {"\"x", ""}, {"", "W"}, {" \t", "W"}, {" \n", ""}, {"(", "("}, {"[", "("},
        {"{", "("}, {"}", ")"}, {"]", ")"}, {"+", "+"}, {"~", "+"}, {"%", ""}, {"((", ""},
    }; // clang-format on
    for (auto const &row : rows) {
        QString const text = QString::fromUtf8(row.token);
        QString const classes = row.classes;
        SCOPED_TRACE(row.token);
        EXPECT_EQ(XTokenizer::is_Number(ref(text)), classes.contains('N'));
        EXPECT_EQ(XTokenizer::is_RealNumber(ref(text)), classes.contains('R'));
        EXPECT_EQ(XTokenizer::is_String(ref(text)), classes.contains('S'));
        EXPECT_EQ(XTokenizer::is_WhiteSpace(ref(text)), classes.contains('W'));
        EXPECT_EQ(XTokenizer::is_Bracket_open(ref(text)), classes.contains('('));
        EXPECT_EQ(XTokenizer::is_Bracket_close(ref(text)), classes.contains(')'));
        EXPECT_EQ(XTokenizer::is_Operator(ref(text)), classes.contains('+'));
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
    for (auto [token, text] : std::initializer_list<std::pair<QString, char const *>>{
             {"\"b c\"", "b c"}, {"abc", "abc"}, {"\"", ""}})
        EXPECT_EQ(XTokenizer::get_String(ref(token)), text);
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
}
