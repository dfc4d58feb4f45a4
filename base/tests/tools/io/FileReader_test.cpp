// FileReader_test.cpp: typed round trips with FileWriter, lines, seeks and bad input.
#include "orv/XFile.h"

#include "support/Test.h"

#include <climits>
#include <cstring>
#include <limits>
#include <typeinfo>

using orv::FileReader;
using orv::FileWriter;

namespace {

class FileReaderTest : public testing::Test {
protected:
    QString path(char const *name) const { return dir.filePath(name); }
    QString fileWith(QByteArray const &bytes) { return orv::test::writeFile(dir, "in.bin", bytes); }
    QTemporaryDir dir;
};

template <typename T> bool sameBits(T a, T b) { return std::memcmp(&a, &b, sizeof(T)) == 0; }

// Writes values with write into a fresh file and reads them back with read, which
// must give each value's bits as type R has them.
template <typename W, typename R>
void roundTrip(QString const &name, std::vector<W> const &values, void (FileWriter::*write)(W),
               R (FileReader::*read)()) {
    {
        FileWriter out(name);
        ASSERT_TRUE(out.isOpen());
        for (W v : values)
            (out.*write)(v);
    }
    FileReader in(name);
    ASSERT_TRUE(in.isOpen());
    for (W v : values)
        EXPECT_TRUE(sameBits((in.*read)(), static_cast<R>(v))) << typeid(R).name() << ' ' << +v;
    EXPECT_FALSE(in.canReadMore());
    EXPECT_FALSE(in.isEOF()); // only line reads set it
}

} // namespace

TEST_F(FileReaderTest, ReadsBackEveryValueTypeIncludingExtremes) {
    using F = std::numeric_limits<float>;
    using D = std::numeric_limits<double>;
    QString const name = path("v.bin");
    roundTrip(name, {-128, 0, 127, -2}, &FileWriter::writeChar, &FileReader::readChar);
    roundTrip(name, {-2}, &FileWriter::writeChar, &FileReader::readUChar); // 0xFE
    roundTrip(name, {SHRT_MIN, -1, 32767}, &FileWriter::writeShort, &FileReader::readShort);
    roundTrip(name, {-2}, &FileWriter::writeShort, &FileReader::readUShort); // 0xFFFE
    roundTrip(name, {INT_MIN, 0, INT_MAX}, &FileWriter::writeInt, &FileReader::readInt);
    roundTrip(name, {0u, 1u, 0xFFFFFFFFu}, &FileWriter::writeUINT, &FileReader::readUINT);
    roundTrip(name, {0u, 1u, 0xFFFFFFFFu}, &FileWriter::writeUINT, &FileReader::readUInt);
    roundTrip(name, {LLONG_MIN, -1, LLONG_MAX}, &FileWriter::writeLONG, &FileReader::readLONG);
    roundTrip(name, {-2}, &FileWriter::writeLONG, &FileReader::readULONG); // 2^64 - 2
    roundTrip(name, {F::lowest(), F::denorm_min(), -0.0f, F::infinity(), F::quiet_NaN()},
              &FileWriter::writeFloat, &FileReader::readFloat);
    roundTrip(name, {D::lowest(), D::denorm_min(), D::max(), -D::infinity(), D::quiet_NaN()},
              &FileWriter::writeDouble, &FileReader::readDouble);
    roundTrip(name, {true, false}, &FileWriter::writeBool, &FileReader::readBool);
    {
        FileWriter out(name);
        out.writeString("Grüße");
        out.writeChar(0);
    }
    EXPECT_EQ(FileReader(name).readString(), QString("Grüße"));
    // A bool is true only for a byte of 1.
    FileReader in(fileWith(QByteArray("\x01\x02\x00\xff", 4)));
    for (bool expected : {true, false, false, false})
        EXPECT_EQ(in.readBool(), expected);
}

TEST_F(FileReaderTest, SeeksAndReadsTheLastLong) {
    QString const name = path("s.bin");
    roundTrip(name, {11, 22, 33}, &FileWriter::writeLONG, &FileReader::readLONG);
    FileReader in(name);
    EXPECT_EQ(in.getFileLen(), 24);
    EXPECT_EQ(in.readLastLONG(), 33);
    EXPECT_TRUE(in.seek(8));
    EXPECT_EQ(in.getReadPos(), 8);
    EXPECT_TRUE(in.canReadMore());
    EXPECT_EQ(in.readLONG(), 22);
    EXPECT_EQ(in.toString(), name + ", open, readPos:16");
    EXPECT_FALSE(in.seek(-1));
    EXPECT_TRUE(in.isOpen());
    EXPECT_EQ(FileReader(fileWith("1234567")).readLastLONG(), -1);
}

TEST_F(FileReaderTest, ReadsLinesWithoutLineEndsAndInPiecesWhenLong) {
    struct Row {
        QByteArray text;
        unsigned int maxLen;
        int flags;
        std::vector<QString> lines;
    } const rows[] = {
        {"  a \n\n# c\n", 100, 2 | 4 | 8, {"a"}},
        {"  a \n\n# c\n", 100, 0, {"  a ", "", "# c"}},
        {"x\r\ny\nlast", 100, 0, {"x", "y", "last"}},
        {"abcdefg\n", 5, 0, {"abc", "def", "g"}},
        {"ab\n", 3, 0, {"a", "b", ""}},
        {"ab\n", 0, 4, {"a", "b"}}, // too small a limit reads one byte at a time
        {QByteArray("a\0b\nc", 5), 100, 0, {"a", "c"}}, // a line's text ends at a 0 byte
        {"one\ntwo", UINT_MAX, 0, {"one", "two"}},      // memory for the line, not the limit
        {"", 100, 0, {}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.text.constData());
        FileReader in(fileWith(row.text));
        std::vector<QString> lines{"kept"};
        EXPECT_EQ(in.readAllAsciiLines(lines, row.maxLen, row.flags), int(row.lines.size()));
        lines.erase(lines.begin());
        EXPECT_EQ(lines, row.lines);
        EXPECT_TRUE(in.isEOF());
        EXPECT_EQ(in.readAsciiLine(100), QString());
        EXPECT_EQ(in.readAllAsciiLines(lines, 100, 0), 0);
    }
}

TEST_F(FileReaderTest, MissingFileOrFolderDoesNotOpen) {
    for (QString const &name : {path("missing"), dir.path(), QString()}) {
        SCOPED_TRACE(name.toStdString());
        FileReader in(name);
        EXPECT_FALSE(in.isOpen());
        EXPECT_FALSE(in.open(name));
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
    struct Row {
        QString file;
        qint64 maxLen;
        char const *bytes; // null: no buffer
    } const rows[] = {{fileWith("0123456789"), 10, "0123456789"},
                      {path("in.bin"), 9, nullptr},
                      {path("missing"), 100, nullptr},
                      {dir.path(), 100, nullptr},
                      {orv::test::writeFile(dir, "e", ""), 10, ""}};
    for (Row const &row : rows) {
        SCOPED_TRACE(row.file.toStdString() + " " + std::to_string(row.maxLen));
        qint64 len = -5;
        std::unique_ptr<char[]> buffer(FileReader::readBufferFromFile(row.file, len, row.maxLen));
        EXPECT_EQ(buffer != nullptr, row.bytes != nullptr);
        EXPECT_EQ(len, row.bytes ? qint64(std::strlen(row.bytes)) : 0);
        EXPECT_EQ(QByteArray(buffer.get(), int(len)), row.bytes);
    }
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
