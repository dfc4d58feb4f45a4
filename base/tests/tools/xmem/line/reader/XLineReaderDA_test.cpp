// XLineReaderDA_test.cpp: the line table against grep's byte offsets, wrapping at word
// borders (also of one 50 MB line), the binary test, the failures with their log
// lines, and a sparse 8 GiB file read at its end with little resident memory.
#include "orv/XLineReaderDA.h"
#include "orv/XMem.h"

#include "support/ExternalTool.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/ResidentMemory.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cstring>

using namespace orv;

namespace {

QString const mixed = QStringLiteral(ORV_TEST_DATA_DIR "/mixed.txt");

struct Entry {
    quint64 pos;
    unsigned int length, total, line;
    int wrap;
    bool lineEnd;
    bool operator==(Entry const &o) const {
        return pos == o.pos && length == o.length && total == o.total && line == o.line &&
               wrap == o.wrap && lineEnd == o.lineEnd;
    }
};

std::ostream &operator<<(std::ostream &os, Entry const &e) {
    return os << "{" << e.pos << "," << e.length << "," << e.total << ",line " << e.line << ",wrap "
              << e.wrap << "," << e.lineEnd << "}";
}

std::vector<Entry> tableOf(XLineReaderDA const &reader) {
    std::vector<Entry> entries;
    for (XLineInfo const &li : reader)
        entries.push_back(
            {li.posMemory, li.length, li.lengthTotal, li.lineNumber, li.wrapIndex, li.hasLineEnd});
    return entries;
}

std::vector<Entry> tableOf(QByteArray const &bytes, quint64 maxLen) {
    XMem mem(bytes);
    return tableOf(XLineReaderDA(mem, maxLen, true));
}

} // namespace

TEST(XLineReaderDA, LineStartsAndTextsEqualWhatGrepReports) {
    for (QString const &file : {mixed, QStringLiteral("/usr/share/common-licenses/GPL-3")}) {
        SCOPED_TRACE(file.toStdString());
        if (!QFile::exists(file))
            continue;
        QByteArray grep;
        if (!test::runTool("grep", {"-b", "", file}, grep))
            GTEST_SKIP() << "grep is not installed";
        XLineReaderDA reader;
        ASSERT_TRUE(reader.openFile(file, 1 << 20, true));
        QList<QByteArray> lines = grep.split('\n');
        lines.removeLast(); // behind the last LF grep writes
        ASSERT_EQ(reader.countLines(), quint64(lines.size()));
        for (unsigned int i = 0; i < reader.countLines(); ++i) {
            int const colon = lines[int(i)].indexOf(':');
            QByteArray text = lines[int(i)].mid(colon + 1);
            if (text.endsWith('\r'))
                text.chop(1);
            EXPECT_EQ(reader.lineInfoAt(i).posMemory, lines[int(i)].left(colon).toULongLong());
            EXPECT_EQ(reader.lineAt(i), QString::fromUtf8(text));
        }
    }
}

TEST(XLineReaderDA, TablesOfLineEndsEmptyLinesAndWraps) {
    struct Row {
        QByteArray bytes;
        quint64 maxLen;
        std::vector<Entry> entries;
    } const rows[] = {
        // A last line without LF still counts a byte for its end.
        {"a\nb", 100, {{0, 1, 2, 0, 0, true}, {2, 1, 2, 1, 0, true}}},
        {"a\r\n", 100, {{0, 1, 3, 0, 0, true}}},
        {"\n\r\n", 100, {{0, 0, 1, 0, 0, true}, {1, 0, 2, 1, 0, true}}},
        // The blank at 9 is the last border before the limit and ends the piece.
        {"aaaa bbbb cccc dddd", 10, {{0, 10, 10, 0, 0, false}, {10, 9, 10, 0, 1, true}}},
        // A border right at the limit begins the next piece.
        {"aaaaaaaaaa bbb\n", 10, {{0, 10, 10, 0, 0, false}, {10, 4, 5, 0, 1, true}}},
        // No border: cut at the limit, and the next piece starts three bytes on.
        {"abcdefghijklmnop", 10, {{0, 10, 10, 0, 0, false}, {13, 3, 4, 0, 1, true}}},
        // No character start either: the cut skips one byte.
        {QByteArray(12, '\x80'), 10, {{0, 10, 10, 0, 0, false}, {11, 1, 2, 0, 1, true}}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.bytes.toStdString());
        EXPECT_EQ(tableOf(row.bytes, row.maxLen), row.entries);
    }
}

TEST(XLineReaderDA, WrapsAtAChineseFullStopAfterItsThreeBytes) {
    QByteArray const line = QByteArray("\xE4\xB8\xAD\xE6\x96\x87\xE3\x80\x82") + "abcdefghijklmnop";
    XMem mem(line);
    XLineReaderDA reader(mem, 12, true);
    EXPECT_EQ(reader.lineInfoAt(0).length, 9u);
    EXPECT_EQ(reader.lineInfoAt(1).posMemory, 9u);
    EXPECT_TRUE(reader.isWrappedUTF8Extended());
}

TEST(XLineReaderDA, OneLineOf50MBWrapsAtWordBordersWithinTheLimit) {
    QByteArray line;
    line.reserve(50 << 20);
    char const *words[] = {"alpha ", "beta, ", "gamma; ", "delta. ", "epsilonzeta "};
    for (int i = 0; line.size() < (50 << 20); ++i)
        line += words[i % 5];
    XMem mem(line);
    quint64 const limit = 4096;
    XLineReaderDA reader(mem, limit, true);
    ASSERT_GT(reader.countLines(), quint64(line.size()) / limit);
    quint64 next = 0;
    for (unsigned int i = 0; i < reader.countLines(); ++i) {
        XLineInfo const &li = reader.lineInfoAt(i);
        ASSERT_EQ(li.posMemory, next) << i; // pieces tile the line
        ASSERT_LE(li.length, limit);
        ASSERT_EQ(li.lineNumber, 0u);
        ASSERT_EQ(li.wrapIndex, int(i));
        bool const last = i + 1 == reader.countLines();
        ASSERT_EQ(li.hasLineEnd, last);
        // A border ends the piece or, standing right at the limit, begins the next one.
        int const end = int(li.posMemory + li.length);
        if (!last) {
            ASSERT_TRUE(std::strchr(" ,;.", line[end - 1]) || std::strchr(" ,;.", line[end])) << i;
        }
        next = li.posMemory + li.length;
    }
    EXPECT_EQ(next, quint64(line.size()));
    EXPECT_EQ(reader.longestLine(), limit);
    EXPECT_EQ(reader.file_to_screen(unsigned(reader.countLines() - 1)), 0);
}

TEST(XLineReaderDA, TableGrowsWithLinesNotBytes) {
    EXPECT_EQ(sizeof(XLineInfo), 32u);
    QByteArray shortLines, longLines;
    for (int i = 0; i < 1000; ++i) {
        shortLines += "x\n";
        longLines += QByteArray(999, 'x') + '\n';
    }
    EXPECT_EQ(tableOf(shortLines, 4096).size(), tableOf(longLines, 4096).size());
}

TEST(XLineReaderDA, BinaryIsAControlByteInTheFirstKiB) {
    struct Row {
        QByteArray bytes;
        bool binary;
    } const rows[] = {
        {QByteArray("ab\0cd", 5), true},
        {"a\tb\r\n\bc\n", false},
        {"a\x01", true},
        {QByteArray(1024, 'a') + '\x01', false},
    };
    for (Row const &row : rows) {
        XMem mem(row.bytes);
        EXPECT_EQ(XLineReaderDA(mem, 100, true).isBinaryFile(), row.binary)
            << row.bytes.toHex().toStdString();
    }
}

TEST(XLineReaderDA, FailuresLogAndAnswerEmpty) {
    QTemporaryDir dir;
    QString const empty = test::writeFile(dir, "empty.txt", "");
    XLineReaderDA reader;
    EXPECT_EQ(
        test::linesLoggedBy([&] { EXPECT_FALSE(reader.openFile(empty, 100, true)); }),
        std::vector<QString>{"XLineReaderDA::open, mem() == nullptr, file <" + empty + "> !"});
    // The failed open leaves the reader refusing every further file.
    EXPECT_EQ(test::linesLoggedBy([&] { EXPECT_FALSE(reader.openFile(mixed, 100, true)); }),
              std::vector<QString>{"XLineReaderDA::openFile, <<<" + mixed + ">>> already mapped"});
    XLineReaderDA missing;
    QString const none = dir.filePath("none.txt");
    std::vector<QString> const logged =
        test::linesLoggedBy([&] { EXPECT_FALSE(missing.openFile(none, 100, true)); });
    EXPECT_EQ(logged.back(), "XLineReaderDA::open, problems mapping file <" + none + "> !");

    XLineReaderDA open;
    ASSERT_TRUE(open.openFile(mixed, 100, true));
    EXPECT_EQ(open.countLines(), 9u);
    EXPECT_EQ(test::linesLoggedBy([&] { EXPECT_EQ(open.lineAt(9), QString()); }),
              std::vector<QString>{"XLineReaderDA::lineAt, index:9, allowed range:0-8"});
    EXPECT_EQ(open.lineAtRamPos(26), QString::fromUtf8("Zweite Zeile: Gr\xC3\xBC\xC3\x9F"
                                                       "e aus K\xC3\xB6ln."));
    EXPECT_STREQ(open.cStringAt(open.lineInfoAt(8)), "last line without end");
    EXPECT_EQ(open.toString(false), "lines:9");
    // Closed, the table stays but its text can't be read any more.
    open.closeFile();
    EXPECT_FALSE(open.isOpen());
    EXPECT_EQ(open.countLines(), 9u);
    EXPECT_EQ(
        test::linesLoggedBy([&] { EXPECT_EQ(open.lineAt(0), QString()); }),
        std::vector<QString>{"XLineReaderDA::lineAt, !lineReader.isValidPos(li.posMemory), pos:0"});
    EXPECT_EQ(open.toString(false), "not open (XLineReaderDA)");
}

TEST(XLineReaderDA, FileToScreenCountsFileLinesOverWrappedPieces) {
    XMem mem(QByteArray("aaaa bbbb cccc\nx\n"));
    XLineReaderDA reader(mem, 10, true);
    ASSERT_EQ(reader.countLines(), 3u);
    EXPECT_EQ(reader.file_to_screen(0), 0);
    EXPECT_EQ(reader.file_to_screen(1), 0);
    EXPECT_EQ(reader.file_to_screen(2), 1);
    EXPECT_EQ(test::linesLoggedBy([&] { EXPECT_EQ(reader.file_to_screen(3), -1); }),
              std::vector<QString>{
                  "XLineReaderDA::file_to_screen, range problem, index >= arLines.size(), 3 >=3"});
}

// Opening maps without reading: the text at the far end of a sparse 8 GiB file is read
// while the resident memory hardly moves. (Building the whole table of such a file
// reads all 8 GiB and is measured in the find benchmark.)
TEST(XLineReaderDA, SparseFileOf8GiBIsReadAtItsEndWithSmallResidentMemory) {
    QTemporaryDir dir;
    QString const path = dir.filePath("sparse.txt");
    quint64 const size = 8ull << 30;
    QByteArray const tail("\nthe very last line\n");
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("first line\n");
        ASSERT_TRUE(file.seek(qint64(size) - tail.size()));
        file.write(tail);
    }
    long const before = test::residentKiB();
    XLineReaderDA reader;
    ASSERT_TRUE(reader.openFile(path, 1 << 20, false));
    EXPECT_EQ(reader.countAllBytes(), size);
    // The last line starts behind the last LF but one.
    char const *data = reader.getMemory();
    char const *end = data + size - 1;
    char const *start = static_cast<char const *>(memrchr(data + size - 4096, '\n', 4095)) + 1;
    XLineInfo last;
    last.posMemory = quint64(start - data);
    last.setLengths(unsigned(end - start), unsigned(end - start) + 1);
    EXPECT_EQ(last.posMemory, size - tail.size() + 1);
    EXPECT_EQ(reader.lineAt(last), "the very last line");
    EXPECT_EQ(QByteArray(data, 10), "first line");
    EXPECT_LT(test::residentKiB() - before, 16 * 1024);
}
