// XDelimiter_test.cpp: the delimiter alphabets and the whole-word tests on text and bytes.
#include "orv/XDelimiter.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <cstring>

using orv::XDelimiter;

TEST(XDelimiter, AsciiTableHolds33CharactersWithSlashTwice) {
    char const expected[] = " \t{,;:./}()[]@\\+-*/%^#!?<>|&~=\"'`";
    ASSERT_EQ(std::strlen(XDelimiter::pDelimASCII), 33u);
    EXPECT_STREQ(XDelimiter::pDelimASCII, expected);
    EXPECT_EQ(XDelimiter::sDelimAscii.count('/'), 2);
    EXPECT_EQ(XDelimiter::sDelimAscii, QString::fromLatin1(expected));
    EXPECT_STREQ(XDelimiter::pDelimASCII_Sentence, ".!?");
    EXPECT_EQ(XDelimiter::sDelimAscii_Sentence, ".!?");
}

TEST(XDelimiter, ChineseTableHolds15CharactersInOrderIncludingAnIdeograph) {
    char16_t const expected[] = {0x3002, 0xFF01, 0xFF0E, 0xFF0C, 0xFF1F, 0xFF1A, 0x2026, 0xFF08,
                                 0xFF09, 0x9AD8, 0x201D, 0x300A, 0x300B, 0x201C, 0x3000};
    ASSERT_EQ(XDelimiter::arDelimChinese.size(), 15u);
    ASSERT_EQ(XDelimiter::sDelimChinese.size(), 15);
    for (int i = 0; i < 15; ++i) {
        QString const one = QString::fromUtf8(XDelimiter::arDelimChinese[i]);
        ASSERT_EQ(one.size(), 1) << i;
        EXPECT_EQ(one.at(0).unicode(), expected[i]) << i;
        EXPECT_EQ(XDelimiter::sDelimChinese.at(i).unicode(), expected[i]) << i;
    }
    EXPECT_EQ(XDelimiter::sDelimAll, XDelimiter::sDelimAscii + XDelimiter::sDelimChinese);
    EXPECT_EQ(XDelimiter::sDelimAll_Sentence, ".!?" + XDelimiter::sDelimChinese);
}

TEST(XDelimiter, IsWordOnTextNeedsDelimitersAroundAndNoneAtItsEnds) {
    struct Row {
        char const *text;
        int first, last;
        bool word;
    } const rows[] = {
        {"an apple", 3, 7, true},
        {"pineapple", 4, 8, false},
        {"apple", 0, 4, true}, // the text's ends stand in for delimiters
        {"an apple", 0, 1, true},
        {"an apple", 3, 6, false}, // 'e' follows
        {"an apple", 2, 7, false}, // starts on a blank
        {"(x)", 1, 1, true},
        {"an apple", -1, 3, false},
        {"an apple", 3, 8, false}, // posLast == length
        {"an apple", 8, 8, false},
        {"", 0, 0, false},
        {"\xE4\xBD\xA0\xE3\x80\x82\xE5\xA5\xBD", 0, 0, true},  // "你。好"
        {"\xE6\x88\x91\xE9\xAB\x98\xE5\x85\xB4", 2, 2, true},  // "我高兴": U+9AD8 delimits
        {"\xE6\x88\x91\xE5\xBE\x88\xE5\x85\xB4", 2, 2, false}, // "我很兴"
    };
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
        size_t memSize;
        size_t offset, wordSize;
        bool word;
    } const rows[] = {
        {"an apple pie", 12, 3, 5, true},
        {"apple pie", 9, 0, 5, true},
        {"an apples pie", 13, 3, 5, false},
        {"(apple", 6, 1, 5, true}, // the word ends the memory
        {"an applexy", 10, 3, 5, false},
        // The last byte of the memory is never looked at: 'x' passes for a blank.
        {"an applex", 9, 3, 5, true},
        // A NUL byte next to the word counts as a delimiter.
        {"a\0apple\0b", 9, 2, 5, true},
    };
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
