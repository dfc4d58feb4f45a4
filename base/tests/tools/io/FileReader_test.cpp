// FileReader_test.cpp: typed round trips with FileWriter, lines, seeks and bad input.
#include "orv/XFile.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

using orv::FileReader;
using orv::FileWriter;

namespace {

class FileReaderTest : public testing::Test {
protected:
    QString path(char const *name) const { return dir.filePath(QString::fromLatin1(name)); }
    QString fileWith(QByteArray const &bytes) {
        QString const name = path("in.bin");
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return name;
    }
    QTemporaryDir dir;
};

template <typename T> bool sameBits(T a, T b) { return std::memcmp(&a, &b, sizeof(T)) == 0; }

} // namespace

TEST_F(FileReaderTest, ReadsBackEveryValueTypeIncludingExtremes) {
    using I64 = std::numeric_limits<qint64>;
    using F = std::numeric_limits<float>;
    using D = std::numeric_limits<double>;
    {
        FileWriter out(path("v.bin"));
        ASSERT_TRUE(out.isOpen());
        for (char c : {char(-128), char(0), char(127)})
            out.writeChar(c);
        for (short s : {std::numeric_limits<short>::min(), short(-1), short(32767)})
            out.writeShort(s);
        for (int i : {std::numeric_limits<int>::min(), 0, std::numeric_limits<int>::max()})
            out.writeInt(i);
        for (unsigned int u : {0u, 1u, 0xFFFFFFFFu})
            out.writeUINT(u);
        for (qint64 l : {I64::min(), qint64(-1), I64::max()})
            out.writeLONG(l);
        for (float f : {F::lowest(), F::denorm_min(), -0.0f, F::infinity(), F::quiet_NaN()})
            out.writeFloat(f);
        for (double d : {D::lowest(), D::denorm_min(), D::max(), -D::infinity(), D::quiet_NaN()})
            out.writeDouble(d);
        out.writeBool(true);
        out.writeBool(false);
        out.writeString("Grüße");
        out.writeChar(0);
        out.writeLONG(-2); // read back as unsigned below
        out.writeShort(-2);
        out.writeChar(-2);
    }
    FileReader in(path("v.bin"));
    ASSERT_TRUE(in.isOpen());
    EXPECT_EQ(in.readChar(), char(-128));
    EXPECT_EQ(in.readChar(), 0);
    EXPECT_EQ(in.readChar(), 127);
    EXPECT_EQ(in.readShort(), std::numeric_limits<short>::min());
    EXPECT_EQ(in.readShort(), -1);
    EXPECT_EQ(in.readShort(), 32767);
    EXPECT_EQ(in.readInt(), std::numeric_limits<int>::min());
    EXPECT_EQ(in.readInt(), 0);
    EXPECT_EQ(in.readInt(), std::numeric_limits<int>::max());
    EXPECT_EQ(in.readUINT(), 0u);
    EXPECT_EQ(in.readUInt(), 1u);
    EXPECT_EQ(in.readUINT(), 0xFFFFFFFFu);
    EXPECT_EQ(in.readLONG(), I64::min());
    EXPECT_EQ(in.readLONG(), -1);
    EXPECT_EQ(in.readLONG(), I64::max());
    for (float f : {F::lowest(), F::denorm_min(), -0.0f, F::infinity(), F::quiet_NaN()})
        EXPECT_TRUE(sameBits(in.readFloat(), f)) << f;
    for (double d : {D::lowest(), D::denorm_min(), D::max(), -D::infinity(), D::quiet_NaN()})
        EXPECT_TRUE(sameBits(in.readDouble(), d)) << d;
    EXPECT_TRUE(in.readBool());
    EXPECT_FALSE(in.readBool());
    EXPECT_EQ(in.readString(), QString("Grüße"));
    EXPECT_EQ(in.readULONG(), 0xFFFFFFFFFFFFFFFEull);
    EXPECT_EQ(in.readUShort(), 0xFFFE);
    EXPECT_EQ(in.readUChar(), 0xFE);
    EXPECT_FALSE(in.canReadMore());
    EXPECT_FALSE(in.isEOF()); // only line reads set it
}

TEST_F(FileReaderTest, BoolIsTrueOnlyForAByteOf1) {
    FileReader in(fileWith(QByteArray("\x01\x02\x00\xff", 4)));
    EXPECT_TRUE(in.readBool());
    EXPECT_FALSE(in.readBool());
    EXPECT_FALSE(in.readBool());
    EXPECT_FALSE(in.readBool());
}

TEST_F(FileReaderTest, SeeksAndReadsTheLastLong) {
    {
        FileWriter out(path("s.bin"));
        for (qint64 v : {11, 22, 33})
            out.writeLONG(v);
    }
    FileReader in(path("s.bin"));
    EXPECT_EQ(in.getFileLen(), 24);
    EXPECT_EQ(in.readLastLONG(), 33);
    EXPECT_TRUE(in.seek(8));
    EXPECT_EQ(in.getReadPos(), 8);
    EXPECT_TRUE(in.canReadMore());
    EXPECT_EQ(in.readLONG(), 22);
    EXPECT_EQ(in.toString(), path("s.bin") + ", open, readPos:16");
    EXPECT_FALSE(in.seek(-1));
    EXPECT_TRUE(in.isOpen());

    FileReader shortFile(fileWith("1234567"));
    EXPECT_EQ(shortFile.readLastLONG(), -1);
}

TEST_F(FileReaderTest, ReadsLinesWithoutLineEndsAndInPiecesWhenLong) {
    struct Row {
        QByteArray text;
        unsigned int maxLen;
        int flags;
        std::vector<QString> lines;
    };
    std::vector<Row> const rows = {
        {"  a \n\n# c\n", 100, 2 | 4 | 8, {"a"}},
        {"  a \n\n# c\n", 100, 0, {"  a ", "", "# c"}},
        {"x\r\ny\nlast", 100, 0, {"x", "y", "last"}},
        {"abcdefg\n", 5, 0, {"abc", "def", "g"}},
        {"ab\n", 3, 0, {"a", "b", ""}},
        {"ab\n", 0, 4, {"a", "b"}}, // too small a limit reads one byte at a time
        {"", 100, 0, {}},
    };
    for (Row const &row : rows) {
        FileReader in(fileWith(row.text));
        std::vector<QString> lines{"kept"};
        EXPECT_EQ(in.readAllAsciiLines(lines, row.maxLen, row.flags), int(row.lines.size()))
            << row.text.constData();
        lines.erase(lines.begin());
        EXPECT_EQ(lines, row.lines) << row.text.constData();
        EXPECT_TRUE(in.isEOF());
        EXPECT_EQ(in.readAsciiLine(100), QString());
        EXPECT_EQ(in.readAllAsciiLines(lines, 100, 0), 0);
    }
}

TEST_F(FileReaderTest, MissingFileOrFolderDoesNotOpen) {
    for (QString const &name : {path("missing"), dir.path(), QString()}) {
        FileReader in(name);
        EXPECT_FALSE(in.isOpen()) << name.toStdString();
        EXPECT_FALSE(in.open(name)) << name.toStdString();
        EXPECT_EQ(in.toString(), name + ", not open reading");
        EXPECT_EQ(in.readAsciiLine(80), QString());
        std::vector<QString> lines;
        EXPECT_EQ(in.readAllAsciiLines(lines, 80, 0), 0);
        EXPECT_EQ(in.readLastLONG(), -1);
    }
    EXPECT_FALSE(FileReader("").isOpen());
    EXPECT_FALSE(FileReader(static_cast<char const *>(nullptr)).isOpen());
}

TEST_F(FileReaderTest, LoadsAWholeFileWithinTheLimit) {
    QString const name = fileWith("0123456789");
    qint64 len = -5;
    std::unique_ptr<char[]> buffer(FileReader::readBufferFromFile(name, len, 10));
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(QByteArray(buffer.get(), int(len)), "0123456789");

    struct Row {
        QString file;
        qint64 maxLen;
    };
    for (Row const &row : {Row{name, 9}, Row{path("missing"), 100}, Row{dir.path(), 100}}) {
        len = -5;
        EXPECT_EQ(FileReader::readBufferFromFile(row.file, len, row.maxLen), nullptr);
        EXPECT_EQ(len, 0);
    }
    std::unique_ptr<char[]> empty(FileReader::readBufferFromFile(fileWith(""), len, 10));
    EXPECT_NE(empty, nullptr);
    EXPECT_EQ(len, 0);
}

// The one test that meets the deliberate 5 s pause of a failed read.
TEST_F(FileReaderTest, ReadPastTheEndGivesZeroesAndClosesTheFile) {
    FileReader in(fileWith(QByteArray("\x07\x00\x00\x00", 4)));
    EXPECT_EQ(in.readInt(), 7);
    EXPECT_TRUE(in.isOpen());
    EXPECT_EQ(in.readInt(), 0);
    EXPECT_FALSE(in.isOpen());
    EXPECT_EQ(in.toString(), path("in.bin") + ", not open reading");
}
