// XLineReader_test.cpp: lines out of memory with the bounded buffer, the whole-file
// helper, and XLineInfo's text form and byte/character conversions.
#include "orv/XLineInfo.h"
#include "orv/XLineReader.h"
#include "orv/XMem.h"

#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

using namespace orv;

namespace {

QStringList allLines(QByteArray const &bytes, quint64 maxLen) {
    XMem mem(bytes);
    XLineReader reader(mem, maxLen);
    QStringList lines;
    while (char const *line = reader.nextLine())
        lines << QString::fromUtf8(line);
    return lines;
}

} // namespace

TEST(XLineReader, NextLineCutsAtLfStripsCrAndSplitsLongLines) {
    struct Row {
        QByteArray bytes;
        quint64 maxLen;
        QStringList lines;
    } const rows[] = {
        {"a\r\nb", 100, {"a", "b"}},
        {"", 100, {}},
        {"\n\nx\n", 100, {"", "", "x"}},
        {"abcdefgh\n", 4, {"abc", "def", "gh"}},
        // A last line of exactly the limit comes whole; its NUL needs the spare byte.
        {"abcd", 4, {"abcd"}},
        // A piece that ends in CR leaves an LF right behind it: an empty line, not a cut.
        {"ab\r\n", 3, {"ab", ""}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.bytes.toStdString());
        EXPECT_EQ(allLines(row.bytes, row.maxLen), row.lines);
    }
}

TEST(XLineReader, LimitsCopiesAndErrors) {
    XMem mem(QByteArray("one\ntwo\n"));
    XLineReader reader(mem, 100);
    std::vector<QString> const logged = test::linesLoggedBy([&] {
        EXPECT_FALSE(reader.setMaxLineLength(1));
        EXPECT_EQ(reader.midString(5, 5), QString());
    });
    EXPECT_EQ(logged, (std::vector<QString>{"XLineReader::setMaxLineLength, sz == 1",
                                            "XLineReader::midString, posEnd <= posStart, 5 <= 5"}));
    EXPECT_EQ(reader.maxLineLength(), 100u);
    EXPECT_STREQ(reader.nextLine(), "one");
    // A copy reads on from the same place with a buffer of its own.
    XLineReader copy(reader);
    EXPECT_STREQ(copy.nextLine(), "two");
    EXPECT_STREQ(reader.nextLine(), "two");
    EXPECT_EQ(reader.nextLine(), nullptr);
    reader.seekHome();
    EXPECT_STREQ(reader.nextLine(), "one");
    EXPECT_EQ(reader.midString(4, 7), "two");
    EXPECT_TRUE(reader.isValidPos(7));
    EXPECT_FALSE(reader.isValidPos(8));
    XLineReader empty;
    EXPECT_EQ(test::linesLoggedBy([&] { empty.seekHome(); }),
              std::vector<QString>{"XLineReader::seekHome, memory == nullptr"});
    EXPECT_FALSE(empty.isValid());
    EXPECT_EQ(empty.nextLine(), nullptr);
}

TEST(XLineReader, AllLinesFromFileSkipsAsAsked) {
    QTemporaryDir dir;
    QString const path = test::writeFile(dir, "lines.txt", "# head\r\n\nbody\n#x\n\xCE\xB1\n");
    struct Row {
        unsigned int flags;
        std::vector<QString> lines;
    } const rows[] = {
        {0, {"# head", "", "body", "#x", QString::fromUtf8("\xCE\xB1")}},
        {1, {"", "body", QString::fromUtf8("\xCE\xB1")}},
        {2, {"# head", "body", "#x", QString::fromUtf8("\xCE\xB1")}},
        {3, {"body", QString::fromUtf8("\xCE\xB1")}},
    };
    for (Row const &row : rows)
        EXPECT_EQ(XLineReader::all_lines_from_file(path, row.flags, 100), row.lines) << row.flags;
    std::vector<QString> const logged = test::linesLoggedBy([&] {
        EXPECT_TRUE(XLineReader::all_lines_from_file(dir.filePath("none"), 0, 100).empty());
    });
    EXPECT_EQ(logged, std::vector<QString>{"XLineReader::all_lines_from_file, problems with '" +
                                           dir.filePath("none") + "'"});
}

TEST(XLineInfo, RangesAndTextForm) {
    XLineInfo li;
    EXPECT_FALSE(li.isValid());
    EXPECT_EQ(li.wrapIndex, -1);
    li.posMemory = 1000;
    li.setLengths(5, 0);
    EXPECT_EQ(li.lengthTotal, 5u);
    EXPECT_EQ(li.getRelPos(1005), 5); // the end is in range
    EXPECT_EQ(li.getRelPos(1006), -1);
    EXPECT_TRUE(li.containsRange(1000, 1005));
    li.lineNumber = 7;
    EXPECT_EQ(li.toString(), "{ [7] 1.000/1.005 => LEN:5,(5), WRAPPED-LINE, LF:false }");
    li.wrapIndex = 2;
    li.hasLineEnd = true;
    EXPECT_EQ(li.toString(), "{ [7/2] 1.000/1.005 => LEN:5,(5), FULL-LINE, LF:true }");
}

TEST(XLineInfo, ByteAndCharacterConversions) {
    QString const s = QString::fromUtf8("a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80z"); // a é 中 😀 z
    EXPECT_EQ(XLineInfo::countBytes(s), 11);
    EXPECT_EQ(XLineInfo::countBytes(QChar(0xE9)), 2);
    EXPECT_EQ(XLineInfo::get_UTF8_Bytes_CountFromString(s, 1, 4), 9);
    EXPECT_EQ(XLineInfo::get_UTF8_Bytes_CountFromString(s, 3, 0), 0);
    struct Row {
        unsigned int bytes;
        int chars;
    } const rows[] = {{0, 0}, {1, 1}, {3, 2}, {4, 3}, {6, 3}, {8, 4}, {10, 5}, {11, 6}};
    for (Row const &row : rows) {
        EXPECT_EQ(XLineInfo::get_UTF8_Chars_CountFromBytes(s, row.bytes), row.chars) << row.bytes;
        EXPECT_EQ(XLineInfo::get_UTF8_Chars_CountFromBytes(s.toUtf8().constData(), row.bytes),
                  row.chars);
    }
    EXPECT_EQ(XLineInfo::elidedText("abcdefghij", 0), "abcdefgh...");
    EXPECT_EQ(XLineInfo::elidedText("abc", 3), "abc");
    std::vector<QString> const logged = test::linesLoggedBy([&] {
        EXPECT_EQ(XLineInfo::get_UTF8_Bytes_CountFromString(s, 6, 1), -1);
        EXPECT_EQ(XLineInfo::get_UTF8_Bytes_CountFromString(s, 5, 3), -1);
        EXPECT_EQ(XLineInfo::get_UTF8_Chars_CountFromBytes(s, 12), -1);
    });
    EXPECT_EQ(
        logged,
        (std::vector<QString>{
            "XLineInfo::get_UTF8_Bytes_CountFromString, pos >= s.length(), 6 >= 6",
            "XLineInfo::get_UTF8_Bytes_CountFromString, (pos+len) >= s.length(), (5+3) >= 6",
            "XLineInfo::get_UTF8_Chars_CountFromBytes, countBytes >= (uint)ar.length(), 12 >= "
            "11"}));
}
