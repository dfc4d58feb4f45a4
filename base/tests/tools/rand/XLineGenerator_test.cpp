// XLineGenerator_test.cpp: fixed lines of the default seed, character ranges and word
// lengths over long lines, the tables, refused parameters, and the log view of lines.
#include "orv/XLineGenerator.h"

#include "support/Test.h"

using namespace orv;
using Params = XLineGenerator::Params;

namespace {

Params params(unsigned int lineLen, unsigned int wordLen, bool sequence, int language = 0,
              WORD_DELIMITER::WordDelim delim = WORD_DELIMITER::SPACE_ONLY,
              SENTENCE_ENDING::SE ending = SENTENCE_ENDING::ASCII) {
    Params p;
    p.lineLen = lineLen;
    p.wordLen = wordLen;
    p.sequence = sequence;
    p.language = language;
    p.wordDelimiter = delim;
    p.sentenceEnding = ending;
    return p;
}

bool isDelimiter(QChar c, Params const &p) {
    return p.sequence ? XLineGenerator::getWordDelimiter(p.wordDelimiter).contains(c) : c == ' ';
}

} // namespace

// The first lines of the default seed, one row per kind of line; the Greek and Chinese
// ones spelled out by code point.
TEST(XLineGenerator, SeededLinesAreFixed) {
    Params shortDefault;
    shortDefault.lineLen = 40;
    Params lower = params(30, 5, false);
    lower.uppercase = false;
    struct Row {
        Params p;
        std::vector<char const *> lines; // UTF-8
    } const rows[] = {
        {shortDefault,
         {"AB CDEFGHI JKLMNO PQRSTUVWX YZ ABC DEFG?", "ABCDEF GH IJKLMNOP QRSTUVWX YZABCDEFGHI."}},
        {lower, {"nup rth f sy oj fivo otti zqw!"}},
        {params(24, 7, false, XLineGenerator::GREEK),
         {"\u03B7\u039F\u03C6\u03C3\u03C3\u03B3\u03A1 \u03AD\u03C8\u03AB \u0393\u03C1\u03B0"
          "\u03AA\u03B8 \u03A0\u03C1\u03B6\u03B9\u03BE."}},
        {params(16, 4, true, XLineGenerator::CHINESE_SMALL, WORD_DELIMITER::EXT,
                SENTENCE_ENDING::CHIN),
         {"\u4F00\u4F01\u4F02\u4F03\u2026\u4F04\u4F05\u4F06\t\u4F07\u4F08\u4F09>\u4F0A"
          "\u4F0B\u3002",
          "\u4F00\u4F01\u4F02\u4F03\uFF01\u4F04\u4F05\uFF1F\u4F06\u4F07=\u4F08\uFF1A"
          "\u4F09\u4F0A\u3002"}},
        {params(12, 2, false, XLineGenerator::CHINESE_FULL, WORD_DELIMITER::ASCII,
                SENTENCE_ENDING::EXT),
         {"\u65AF\u6C1C \u65AE \u5E97 \u9268 \u9121\u7128\u3002"}},
        // wordLen 0: a delimiter first, then one at every second place.
        {params(10, 0, true, 0, WORD_DELIMITER::CHIN), {"\u2026A\u2026B\u2026C\u3002DE?"}},
        {params(1, 5, false), {"?"}},
        {params(2, 5, true), {"A?"}},
        {params(3, 2, false), {"NU?"}},
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(row.p.toString().toStdString());
        XLineGenerator generator(false);
        for (char const *line : row.lines)
            EXPECT_EQ(generator.genLine(row.p), QString::fromUtf8(line));
    }
}

TEST(XLineGenerator, CharactersStayInTheLanguageRange) {
    struct Row {
        int language;
        bool uppercase;
        ushort lo, hi;
    } const rows[] = {
        // clang-format off
        {XLineGenerator::ASCII, true, 'A', 'Z'}, {XLineGenerator::ASCII, false, 'a', 'z'},
        {XLineGenerator::CHINESE_SMALL, true, 0x4F00, 0x520F},
        {XLineGenerator::CHINESE_FULL, false, 0x4E00, 0x9FFF},
        {XLineGenerator::GREEK, false, 0x0391, 0x03C9},
    }; // clang-format on
    XLineGenerator generator(true);
    for (auto const &row : rows)
        for (bool sequence : {false, true}) {
            Params p = params(2000, 9, sequence, row.language, WORD_DELIMITER::ASCII);
            p.uppercase = row.uppercase;
            QString const line = generator.genLine(p);
            ushort seenLo = 0xFFFF, seenHi = 0;
            for (QChar c : line.left(line.size() - 1)) {
                if (isDelimiter(c, p))
                    continue;
                ASSERT_TRUE(c.unicode() >= row.lo && c.unicode() <= row.hi)
                    << p.toString().toStdString() << " char " << c.unicode();
                seenLo = qMin(seenLo, c.unicode());
                seenHi = qMax(seenHi, c.unicode());
            }
            if (row.hi - row.lo < 100) { // small alphabets are covered end to end
                EXPECT_EQ(seenLo, row.lo) << p.toString().toStdString();
                EXPECT_EQ(seenHi, row.hi) << p.toString().toStdString();
            }
        }
}

TEST(XLineGenerator, WordsKeepTheirLengthsAndNoDelimiterTouchesAnother) {
    XLineGenerator generator(true);
    for (unsigned int wordLen : {2U, 5U, 12U})
        for (bool sequence : {false, true}) {
            Params const p = params(3000, wordLen, sequence, 0, WORD_DELIMITER::EXT);
            QString const line = generator.genLine(p);
            ASSERT_FALSE(isDelimiter(line[line.size() - 2], p));
            std::vector<int> words{0};
            for (QChar c : line.left(line.size() - 2)) {
                if (isDelimiter(c, p))
                    words.push_back(0);
                else
                    ++words.back();
            }
            words.pop_back(); // the last word is cut by the line's end
            ASSERT_GT(words.size(), 100U);
            EXPECT_TRUE(words[0] >= 2 && words[0] <= static_cast<int>(wordLen)) << words[0];
            for (size_t i = 1; i < words.size(); ++i)
                ASSERT_TRUE(words[i] >= 1 && words[i] < static_cast<int>(wordLen))
                    << "wordLen " << wordLen << " word " << i << " of " << words[i];
        }
}

TEST(XLineGenerator, TablesHoldTheirCharactersWithRepetitions) {
    std::pair<QStringRef, int> const rows[] = {
        {XLineGenerator::getWordDelimiter(WORD_DELIMITER::SPACE_ONLY), 1},
        {XLineGenerator::getWordDelimiter(WORD_DELIMITER::ASCII), 27},
        {XLineGenerator::getWordDelimiter(WORD_DELIMITER::CHIN), 3},
        {XLineGenerator::getWordDelimiter(WORD_DELIMITER::EXT), 35},
        {XLineGenerator::getSentenceEnding(SENTENCE_ENDING::ASCII), 3},
        {XLineGenerator::getSentenceEnding(SENTENCE_ENDING::CHIN), 4},
        {XLineGenerator::getSentenceEnding(SENTENCE_ENDING::EXT), 7},
    };
    for (auto const &row : rows)
        EXPECT_EQ(row.first.size(), row.second) << row.first.toString().toStdString();
    EXPECT_EQ(XLineGenerator::sWordDelimiterASCII.count('/'), 2);
    EXPECT_EQ(XLineGenerator::sLineEndingExt, QStringLiteral(".!?\uFF0E\u3002\u2026\u2026"));
    EXPECT_TRUE(XLineGenerator::sWordDelimiterExt.endsWith(
        QStringLiteral("\uFF0E\u3002\uFF1A\u2026\u2026\u3002\uFF01\uFF1F")));
    EXPECT_TRUE(XLineGenerator::getWordDelimiter(WORD_DELIMITER::WordDelim(4)).isEmpty());
    EXPECT_TRUE(XLineGenerator::getSentenceEnding(SENTENCE_ENDING::SE(-1)).isEmpty());
}

TEST(XLineGenerator, SameSeedGivesTheSameLinesAndRandomizeOthers) {
    Params const p = params(50, 6, false);
    XLineGenerator a(false), b(false), randomized(true);
    std::vector<QString> const lines = a.genLines(4, p);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines, b.genLines(4, p));
    EXPECT_NE(lines, randomized.genLines(4, p));
    b.iniRandom();
    EXPECT_NE(a.genLine(p), b.genLine(p));
}

TEST(XLineGenerator, RefusedParametersGiveAnEmptyLineAndAnError) {
    test::CapturingAppender &log = test::startCapturingLogger();
    Params const rows[] = {
        params(0, 12, true),
        params(static_cast<unsigned int>(-1), 12, false),
        params(12, 1, true),
        params(12, static_cast<unsigned int>(-5), false),
        params(12, 12, true, 4),
        params(12, 12, false, -1),
        params(12, 12, true, 0, WORD_DELIMITER::WordDelim(9)),
        params(12, 12, false, 0, WORD_DELIMITER::ASCII, SENTENCE_ENDING::SE(-1)),
    };
    XLineGenerator generator(false);
    for (Params const &p : rows) {
        SCOPED_TRACE(p.toString().toStdString());
        EXPECT_TRUE(generator.genLine(p).isEmpty());
        EXPECT_TRUE(log.waitForText(QStringLiteral("XLineGenerator::genLine, no line for %1 "
                                                   "wordDelimiter:%2, sentenceEnding:%3")
                                        .arg(p.toString())
                                        .arg(p.wordDelimiter)
                                        .arg(p.sentenceEnding)));
    }
    EXPECT_TRUE(generator.randChar(QString()).isNull());
    EXPECT_TRUE(log.waitForText("XLineGenerator::randChar, no character to choose from"));
}

TEST(XLineGenerator, ParamsTextNamesFlagsAndLanguage) {
    EXPECT_EQ(
        Params().toString(),
        QStringLiteral("lineLen:80, wordLen:12, uppercase:true, sequence:true, lang:ASCII, "));
    Params p = params(5, 3, false, XLineGenerator::GREEK);
    p.uppercase = false;
    EXPECT_EQ(
        p.toString(),
        QStringLiteral("lineLen:5, wordLen:3, uppercase:false, sequence:false, lang:GREEK, "));
    EXPECT_TRUE(params(5, 3, true, XLineGenerator::CHINESE_SMALL)
                    .toString()
                    .endsWith(QStringLiteral("lang:CHINESE_SMALL, ")));
}

TEST(XLineGenerator, ShowLinesLogsHeadGapAndTail) {
    test::CapturingAppender &log = test::startCapturingLogger();
    std::vector<QString> const lines = {"first line", "xx", "yy", "ok", "last line!"};
    XLineGenerator::showLines(4, lines, 1, 2, 3, 2);
    ASSERT_TRUE(log.waitForText("[4] las...e!   len:10"));
    std::vector<test::CapturedLine> const shown = log.takenFrom("[0] fir...ne   len:10");
    ASSERT_EQ(shown.size(), 4U);
    EXPECT_EQ(shown[1].text, QStringLiteral("... ... ... ... ... ... ... ... ... ... .. ."));
    EXPECT_EQ(shown[2].text, QStringLiteral("[3] ok"));
    EXPECT_EQ(shown[0].space, 4U);

    XLineGenerator::showLines({"aa", "bb"}, 1, 1, 5, 5);
    EXPECT_TRUE(log.waitForText("[1] bb"));
    EXPECT_EQ(log.takenFrom("[0] aa").size(), 2U);
}
