// XByteArray_test.cpp: views without copies, the field writers, text access, the checked
// compressed form (also as read and written by an independent zlib) and the file helpers.
#include "orv/XByteArray.h"

#include "support/Test.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QResource>
#include <QtCore/QStandardPaths>

#include <stdexcept>
#include <utility>

using orv::XByteArray;
using orv::XError;
using orv::test::readFile;
using orv::test::writeFile;

TEST(XByteArray, ViewsCopiesAndMovesShareTheBytesAndCarryTheErrorWord) {
    char const foreign[] = "abcdef";
    XByteArray const view = XByteArray::fromMem(foreign, 6);
    EXPECT_EQ(view.mem(), foreign);
    EXPECT_EQ(view.length(), 6u);
    XByteArray source("abc", 3);
    source.setOrvError(XError::ORV_ERROR_EOF);
    char const *bytes = source.constData();
    XByteArray const copy(source);
    EXPECT_EQ(copy.mem(), bytes);
    EXPECT_TRUE(copy.isOrvEOF());
    XByteArray const moved(std::move(source));
    EXPECT_EQ(moved.mem(), bytes);
    EXPECT_TRUE(moved.isOrvEOF());
    XByteArray assigned;
    assigned = XByteArray(moved);
    EXPECT_EQ(assigned.constData(), bytes);
    EXPECT_TRUE(assigned.isOrvEOF());
    EXPECT_FALSE(static_cast<bool>(assigned)); // bytes, but in error
}

TEST(XByteArray, FieldWritersAreBigEndianAndReadersAlwaysReadTheHead) {
    XByteArray ar;
    ar.writeUInt32(0x01020304);
    EXPECT_EQ(ar.readUInt32(), 0x01020304u);
    ar.writeUInt32(0xAABBCCDD);
    EXPECT_EQ(ar.readUInt32(), 0x01020304u);
    EXPECT_EQ(ar.readUInt16(), 0x0102u);
    ar.writeUInt16(0xEEFF);
    ar.writeUInt8(0x7F);
    ar.writePadByte();
    ar.writePadBytes(2);
    EXPECT_EQ(QByteArray(ar), QByteArray("\x01\x02\x03\x04\xAA\xBB\xCC\xDD\xEE\xFF\x7F\0\0\0", 14));
    EXPECT_EQ(XByteArray("\x01", 1).readUInt16(), 0u); // too short
}

TEST(XByteArray, TextMembersStopAtTheFirstZero) {
    XByteArray const ar("ab\0cd", 5);
    EXPECT_EQ(ar.find(QStringLiteral("cd")), std::string::npos);
    EXPECT_EQ(ar.find(QStringLiteral("b")), 1u);
    EXPECT_EQ(XByteArray("abab", 4).rfind(QStringLiteral("ab")), 2u);
    EXPECT_EQ(XByteArray("aab", 3).find_first_not_of(QStringLiteral("a")), 2u);
    EXPECT_EQ(ar.toStdString(), "ab");
    EXPECT_EQ(XByteArray("\xe9x", 2).toQString(), QStringLiteral("\u00e9x")); // Latin-1
    EXPECT_EQ(XByteArray("hello", 5).substr(1, 3), "ell");
    EXPECT_THROW(ar.substr(3, 1), std::out_of_range);
    std::vector<XByteArray> const parts = XByteArray("a,b;;c\0d", 8).splitX(QStringLiteral(",;"));
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(QByteArray(parts[2]), QByteArray("c"));
}

TEST(XByteArray, AppendingAndDeepCopies) {
    XByteArray ar;
    ar += std::string("ab\0cd", 5);
    ar += QStringLiteral("\u00e9");
    ar.writeQStringUTF8(QStringLiteral("x"), true);
    EXPECT_EQ(QByteArray(ar), QByteArray("ab\xc3\xa9x\n"));
    char source[] = "xyz";
    ar.setMemory(source, 3);
    source[0] = '-';
    EXPECT_EQ(QByteArray(ar), QByteArray("xyz"));
    EXPECT_TRUE(ar == XByteArray("xyz", 3));
    EXPECT_TRUE(ar != XByteArray("xyz\0", 4));
}

TEST(XByteArray, FactoriesBuildUtf8Lines) {
    std::vector<QString> const lines = {QStringLiteral("a"), QStringLiteral("\u00e9")};
    EXPECT_EQ(QByteArray(XByteArray::fromStringLines(lines, false)), QByteArray("a\n\xc3\xa9\n"));
    EXPECT_EQ(QByteArray(XByteArray::fromStringLines(lines, true)),
              QByteArray("a\r\n\xc3\xa9\r\n"));
    QString const text = QStringLiteral("x\n\n\u00fc\n");
    EXPECT_EQ(QByteArray(XByteArray::from_QString_UTF8(text)), text.toUtf8());
    EXPECT_EQ(XByteArray("abc", 3).md5String(),
              QString::fromLatin1(orv::MD5::md5FromQByteArray("abc")));
}

TEST(XByteArray, CompressedFormIsDigestThenQtForm) {
    XByteArray const original(QByteArray("compress me ").repeated(100));
    XByteArray const packed = XByteArray::compress(original);
    ASSERT_GT(packed.size(), 20);
    QByteArray const body = packed.mid(16);
    EXPECT_EQ(packed.left(16), orv::MD5::md5_16(body));
    EXPECT_EQ(qUncompress(body), QByteArray(original));
    EXPECT_EQ(QByteArray(XByteArray::unCompress(packed)), QByteArray(original));
    EXPECT_EQ(QByteArray(XByteArray::unCompress(XByteArray::compress(XByteArray()))), QByteArray());
}

TEST(XByteArray, DamagedCompressedInputGivesTheEmptyArray) {
    XByteArray const packed = XByteArray::compress(XByteArray(QByteArray(500, 'q')));
    QByteArray digestFlip = packed, bodyFlip = packed, lengthFlip = packed;
    digestFlip[3] = static_cast<char>(digestFlip[3] ^ 0x01);
    bodyFlip[packed.size() - 2] = static_cast<char>(bodyFlip[packed.size() - 2] ^ 0x40);
    lengthFlip[16] = '\x7f';
    // A well-formed digest over a broken stream: the digest alone lets it through.
    QByteArray const junk("\x00\x00\x00\x10not zlib at all", 19);
    QByteArray const lying = orv::MD5::md5_16(junk) + junk;
    // Found by fuzzing: a length field of almost 2 GB made every call allocate it.
    QByteArray const bigClaim = QByteArray("\x7f\xff\xff\x00", 4) + qCompress("abc").mid(4);
    std::pair<char const *, QByteArray> const rows[] = {
        // clang-format off
        {"empty", QByteArray()},
        {"2 GB claim, valid digest", orv::MD5::md5_16(bigClaim) + bigClaim},
        {"2 GB claim, wrong digest", QByteArray(16, 'd') + bigClaim},
        {"shorter than a digest", packed.left(15)}, {"digest only", packed.left(16)},
        {"truncated", packed.left(packed.size() - 3)}, {"bit in digest", digestFlip},
        {"bit in stream", bodyFlip}, {"length field", lengthFlip},
        {"valid digest, no stream", lying}, {"oversized junk", QByteArray(1 << 20, '\xa5')},
    }; // clang-format on
    for (auto const &[name, input] : rows)
        EXPECT_TRUE(XByteArray::unCompress(XByteArray(input)).isEmpty()) << name;
}

class XByteArrayPython : public testing::Test {
protected:
    void SetUp() override {
        python = QStandardPaths::findExecutable(QStringLiteral("python3"));
        if (python.isEmpty())
            GTEST_SKIP() << "python3 is missing";
    }

    // Runs a script with input on stdin; gives stdout, or "<failed>" and stderr.
    QByteArray run(char const *script, QByteArray const &input) {
        QProcess process;
        QString const code = QStringLiteral("import hashlib, struct, sys, zlib\n") + script;
        process.start(python, {QStringLiteral("-c"), code});
        if (!process.waitForStarted(10000))
            return "<not started>";
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(30000) || process.exitCode() != 0)
            return "<failed> " + process.readAllStandardError();
        return process.readAllStandardOutput();
    }

    QString python;
};

TEST_F(XByteArrayPython, ReadsWhatTheLibraryCompressed) {
    char const *script = R"(
data = sys.stdin.buffer.read()
digest, body = data[:16], data[16:]
assert hashlib.md5(body).digest() == digest, "digest"
size, = struct.unpack(">I", body[:4])
out = zlib.decompress(body[4:])
assert len(out) == size, "length"
sys.stdout.buffer.write(out)
)";
    QByteArray original;
    for (int i = 0; i < 5000; ++i)
        original.append(static_cast<char>((i * 7919) % 251));
    EXPECT_EQ(run(script, XByteArray::compress(XByteArray(original))), original);
}

TEST_F(XByteArrayPython, LibraryReadsWhatPythonCompressed) {
    char const *script = R"(
data = sys.stdin.buffer.read()
body = struct.pack(">I", len(data)) + zlib.compress(data, 9)
sys.stdout.buffer.write(hashlib.md5(body).digest() + body)
)";
    QByteArray const original = QByteArray("made by an independent zlib\n").repeated(300);
    QByteArray const packed = run(script, original);
    ASSERT_FALSE(packed.startsWith("<")) << packed.constData();
    EXPECT_EQ(QByteArray(XByteArray::unCompress(XByteArray(packed))), original);
}

TEST(XByteArrayFiles, LoadReadsPartsButRefusesTooBigOnes) {
    QTemporaryDir dir;
    QString const path = writeFile(dir, "a.bin", "0123456789");
    XByteArray ar;
    EXPECT_TRUE(ar.loadFromFile(path, 3));
    EXPECT_EQ(QByteArray(ar), QByteArray("012"));
    EXPECT_EQ(QByteArray(XByteArray::load(path)), QByteArray("0123456789"));
    EXPECT_FALSE(ar.loadFromFile(path, 11));
    EXPECT_TRUE(ar.isOrvNumberTooBig());

    ASSERT_TRUE(QResource::registerResource(QStringLiteral(ORV_TEST_DATA_DIR "/xmem.rcc")));
    XByteArray res;
    EXPECT_TRUE(res.loadFromFile(QStringLiteral(":/xmem/hello.txt"), 5));
    EXPECT_EQ(QByteArray(res), QByteArray("hello"));
    EXPECT_FALSE(res.loadFromFile(QStringLiteral(":/xmem/hello.txt"), 99));
    EXPECT_TRUE(res.isOrvNumberTooBig());
    res.clearError();
    EXPECT_FALSE(res.loadFromFile(QStringLiteral(":/xmem/none"), 0));
    EXPECT_TRUE(res.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    QResource::unregisterResource(QStringLiteral(ORV_TEST_DATA_DIR "/xmem.rcc"));
}

TEST(XByteArrayFiles, LoadFailuresAndTheirErrorWords) {
    QTemporaryDir dir;
    XByteArray const missing = XByteArray::load(dir.filePath("missing"));
    EXPECT_TRUE(missing.isEmpty());
    EXPECT_TRUE(missing.isOK()); // a missing file is only logged
    XByteArray const empty = XByteArray::load(writeFile(dir, "empty", QByteArray()));
    EXPECT_TRUE(empty.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    XByteArray folder; // not a file, so it "does not exist": logged only
    EXPECT_FALSE(folder.loadFromFile(dir.path(), 0));
    EXPECT_TRUE(folder.isOK());
}

TEST(XByteArrayFiles, SaveWritesThePartAndReportsWhatItCouldNot) {
    QTemporaryDir dir;
    QString const path = dir.filePath("s.bin");
    XByteArray ar("abcdef", 6);
    EXPECT_TRUE(ar.saveToFile(path, 0));
    EXPECT_EQ(readFile(path), QByteArray("abcdef"));
    EXPECT_TRUE(ar.saveToFile(path, 2));
    EXPECT_EQ(readFile(path), QByteArray("ab"));
    EXPECT_FALSE(ar.saveToFile(path, 10)); // more than there is: a short write
    EXPECT_EQ(readFile(path), QByteArray("abcdef"));
    EXPECT_TRUE(ar.isOK());
    EXPECT_FALSE(ar.saveToFile(dir.filePath("no/dir/s.bin"), 0));
    EXPECT_TRUE(ar.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
}
