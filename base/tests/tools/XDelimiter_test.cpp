// XDelimiter_test.cpp: the delimiter alphabets and the whole-word tests on text and bytes.
#include "orv/XDelimiter.h"

#include "support/Test.h"

#include <cstring>

using orv::XDelimiter;

TEST(XDelimiter, AsciiTableHolds33CharactersWithSlashTwice) {
    char const expected[] = " \t{,;:./}()[]@\\+-*/%^#!?<>|&~=\"'`";
    EXPECT_STREQ(XDelimiter::pDelimASCII, expected);
    EXPECT_EQ(XDelimiter::sDelimAscii, QString::fromLatin1(expected));
    EXPECT_STREQ(XDelimiter::pDelimASCII_Sentence, ".!?");
    EXPECT_EQ(XDelimiter::sDelimAscii_Sentence, ".!?");
}

TEST(XDelimiter, ChineseTableHolds15CharactersInOrderIncludingAnIdeograph) {
    QString const expected = QString::fromUtf16(u"\u3002\uFF01\uFF0E\uFF0C\uFF1F\uFF1A\u2026\uFF08"
                                                u"\uFF09\u9AD8\u201D\u300A\u300B\u201C\u3000");
    ASSERT_EQ(XDelimiter::arDelimChinese.size(), 15u);
    QString joined;
    for (char const *one : XDelimiter::arDelimChinese) {
        EXPECT_EQ(QString::fromUtf8(one).size(), 1) << one;
        joined += QString::fromUtf8(one);
    }
    EXPECT_EQ(joined, expected);
    EXPECT_EQ(XDelimiter::sDelimChinese, expected);
    EXPECT_EQ(XDelimiter::sDelimAll, XDelimiter::sDelimAscii + expected);
    EXPECT_EQ(XDelimiter::sDelimAll_Sentence, ".!?" + expected);
}

TEST(XDelimiter, IsWordOnTextNeedsDelimitersAroundAndNoneAtItsEnds) {
    struct Row {
        char const *text;
        int first, last;
        bool word;
    } const rows[] = {
        // clang-format off
        {"an apple", 3, 7, true}, {"pineapple", 4, 8, false},
        {"apple", 0, 4, true}, // the text's ends stand in for delimiters
        {"an apple", 0, 1, true}, {"(x)", 1, 1, true},
        {"an apple", 3, 6, false}, // 'e' follows
        {"an apple", 2, 7, false}, // starts on a blank
        {"an apple", -1, 3, false}, {"an apple", 3, 8, false}, {"an apple", 8, 8, false},
        {"", 0, 0, false}, {"\u4F60\u3002\u597D", 0, 0, true},
        {"\u6211\u9AD8\u5174", 2, 2, true}, // U+9AD8 delimits
        {"\u6211\u5F88\u5174", 2, 2, false},
    }; // clang-format on
    for (auto const &row : rows)
        EXPECT_EQ(XDelimiter::isWord(QString::fromUtf8(row.text), row.first, row.last,
                                     XDelimiter::sDelimAll),
                  row.word)
            << row.text << " " << row.first << ".." << row.last;
    EXPECT_TRUE(XDelimiter::isWord("an apple", 3, 7, XDelimiter::sDelimAscii));
    EXPECT_FALSE(XDelimiter::isWord("an apple", 3, 7, ""));
}

TEST(XDelimiter, IsWordOnBytesChecksTheBytesAroundTheWord) {
    char const *delims = XDelimiter::pDelimASCII;
    struct Row {
        char const *mem;
        size_t memSize, offset, wordSize;
        bool word;
    } const rows[] = {
        // clang-format off
        {"an apple pie", 12, 3, 5, true}, {"apple pie", 9, 0, 5, true},
        {"an apples pie", 13, 3, 5, false}, {"an applexy", 10, 3, 5, false},
        {"(apple", 6, 1, 5, true}, // the word ends the memory
        // The last byte of the memory is never looked at: 'x' passes for a blank.
        {"an applex", 9, 3, 5, true},
        // A NUL byte next to the word counts as a delimiter.
        {"a\0apple\0b", 9, 2, 5, true},
    }; // clang-format on
    for (auto const &row : rows)
        EXPECT_EQ(
            XDelimiter::isWord(row.mem, row.memSize, row.mem + row.offset, row.wordSize, delims),
            row.word)
            << row.mem << " @" << row.offset;
}

TEST(XDelimiter, IsWordOnBytesRejectsNullPointersAndRanges) {
    char const mem[] = "an apple";
    EXPECT_FALSE(XDelimiter::isWord(nullptr, 8, mem + 3, 5, " "));
    EXPECT_FALSE(XDelimiter::isWord(mem, 8, nullptr, 5, " "));
    EXPECT_FALSE(XDelimiter::isWord(mem, 8, mem + 3, 5, nullptr));
    EXPECT_FALSE(XDelimiter::isWord(mem + 1, 7, mem, 2, " ")); // word before the memory
    EXPECT_FALSE(XDelimiter::isWord(mem, 8, mem + 4, 5, " ")); // runs one past the end
    EXPECT_FALSE(XDelimiter::isWord(mem, 3, mem, 5, " "));     // longer than the memory
    EXPECT_FALSE(XDelimiter::isWord(mem, 0, mem, 1, " "));
    EXPECT_TRUE(XDelimiter::isWord(mem, 8, mem + 3, 5, " ")); // exactly at the end is fine
}
