// StringText_test.cpp: eliding, entities, base64/hex, wildcard patterns and byte search.
#include "orv/StringText.h"

#include "support/Test.h"

#include <cstring>

using namespace orv;

TEST(StringText, TextFormsOfElidingQuotingAndEncoding) {
    QString const text = QString::fromUtf8("a<é\xc2\x80");
    QString const encoded = encode_entities(text, "<");
    std::pair<QString, QString> const rows[] = {
        // clang-format off
        {elidedString("", 1, 1), QString()}, {elidedString("abcdefgh", 2, 2), "ab...gh"},
        {elidedString("abcdefgh", 3, 0), "abc..."}, {elidedString("abcdefgh", 0, 3), "...fgh"},
        {elidedString("abcd", 2, 2), "abcd"},
        {elidedString("abcd", 4000000000u, 4000000000u), "abcd"},
        {encode_char(QLatin1Char('A')), "&#65;"},
        {encoded, QLatin1String("a&#60;&#233;") + QChar(0x80)}, // 128 itself stays
        {decode_entities(encoded), text}, {decode_entities("x&#;y&#abc;&#65"), "x&#;y&#abc;&#65"},
        {ensureStringIsQuoted("a"), "\"a\""}, {ensureStringIsQuoted("\"a"), "\"a\""},
        {ensureStringIsQuoted("a\""), "\"a\""}, {ensureStringIsQuoted("\"a\""), "\"a\""},
        {ensureStringIsQuoted(""), "\"\""}, {ensureStringIsQuoted("\""), "\""},
        {base64_encode("hello"), "aGVsbG8="}, {hex_encode("AB"), "4142"},
        // foreign characters are skipped
        {base64_decode("!!!"), QString()}, {base64_decode("aGVs!bG8="), "hello"},
        {hex_decode("zz"), QString()}, {base64_decode(""), QString()},
    }; // clang-format on
    for (auto const &[got, expected] : rows)
        EXPECT_EQ(got, expected);
}

TEST(StringText, Base64AndHexRoundTripUtf8) {
    QString const text = QString::fromUtf8("hello äöü € \x01");
    EXPECT_EQ(base64_decode(base64_encode(text)), text);
    EXPECT_EQ(hex_decode(hex_encode(text)), text);
}

TEST(StringText, WildcardPatternTable) {
    struct Row {
        char const *s, *pattern;
        bool match;
    } const rows[] = {
        // clang-format off
        {"Main.CPP", "*.cpp", true}, {"main.cpp", "cpp", true}, {"main.cpp", "main*", true},
        {"main.cpp", "*ain*", true}, {"main.cpp", "m*.c*", true}, {"main.cpp", "*", true},
        {"main.cpp", "main", false},     // no star: only the ending counts
        {"main.cpp", "x*", false},       // first token must be at position 0
        {"main.cpp", "*.h", false},
        {"main.cpp", "m*p", false},      // the first "p" is taken, so the end isn't reached
        {"a.cpp.cpp", "*.cpp", false},   // likewise the first ".cpp"
        {"main.cpp", "?ain.cpp", false}, // `?` is an ordinary character
        {"", "*", false}, {"main.cpp", "", false},
    }; // clang-format on
    for (Row const &r : rows)
        EXPECT_EQ(pattern_match_wild_card(QString(r.s), QString(r.pattern)), r.match)
            << r.s << " / " << r.pattern;
    EXPECT_TRUE(pattern_match_wild_card(QFileInfo("/src/Main.CPP"), "*.cpp"));
    EXPECT_FALSE(pattern_match_wild_card(QFileInfo("/src.cpp/Main"), "*.cpp"));
}

TEST(StringText, MemSearchTable) {
    struct Row {
        char const *mem, *what;
        bool ignoreCase;
        int offset; // -1: not found
    } const rows[] = {
        // clang-format off
        {"xxabcxx", "abc", false, 2}, {"xxABCxx", "abc", false, -1}, {"xxABCxx", "abc", true, 2},
        {"xxabc", "abc", false, -1}, // a match at the very end is missed
        {"abc", "abc", false, -1},
        {"aabxx", "ab", false, -1},     // the overlapping start is skipped
        {"Abcxxabcxx", "abc", true, 5}, // the first byte's own case wins over position
        {"Abcxxxxxxx", "abc", true, 0}, // other case only when its own is absent
        {"12-34-56", "-5", false, 5},
    }; // clang-format on
    for (Row const &r : rows) {
        quint64 const size = std::strlen(r.mem);
        char *hit = memSearch(r.mem, size, r.what, std::strlen(r.what), r.ignoreCase);
        EXPECT_EQ(hit ? static_cast<int>(hit - r.mem) : -1, r.offset) << r.mem << " / " << r.what;
        EXPECT_EQ(memSearch(r.mem, size, QString(r.what), r.ignoreCase), hit);
    }
    // Empty or short input finds nothing.
    char const mem[] = "abc";
    EXPECT_EQ(memSearch(mem, 3, "a", 0, false), nullptr);
    EXPECT_EQ(memSearch(mem, 0, "a", 1, false), nullptr);
    EXPECT_EQ(memSearch(mem, 2, "abc", 3, false), nullptr);
    EXPECT_EQ(memSearch(mem, 3, QString(), false), nullptr);
}

TEST(StringText, MemSearchWordSkipsHitsInsideWords) {
    char const mem[] = "concat cat x";
    EXPECT_EQ(memSearchWord(mem, std::strlen(mem), "cat", false), mem + 7);
    EXPECT_EQ(memSearchWord(mem, std::strlen(mem), "CAT", true), mem + 7);
    char const none[] = "concat xx";
    EXPECT_EQ(memSearchWord(none, std::strlen(none), "cat", false), nullptr);
}

TEST(StringText, ToUpperCaseTouchesAsciiLettersOnly) {
    char text[] = "abZ1-\xe4z";
    toUpperCase(text, 6);
    EXPECT_STREQ(text, "ABZ1-\xe4z");
}
