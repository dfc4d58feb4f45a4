// XMem_test.cpp: block numbers and error words of every way to make a block, moves
// that keep the bytes where they are, growth, string records and the file operations.
#include "orv/XMem.h"

#include "support/Test.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QResource>
#include <QtCore/QStringList>

#include <cerrno>
#include <tuple>

using orv::XError;
using orv::XMem;
using orv::test::readFile;
using orv::test::writeFile;

namespace {

QByteArray bytesOf(XMem const &block) {
    return QByteArray(block.mem(), static_cast<int>(block.length()));
}

XMem blockInError(QByteArray const &bytes) {
    XMem block(bytes);
    char c = 0;
    block.charAtPos(c, 1000); // out of range: sets the error word
    return block;
}

// The bytes, and an error word that is clean or holds blockInError's error.
void expectBlock(XMem const &block, QByteArray const &bytes, bool inError) {
    EXPECT_EQ(bytesOf(block), bytes);
    EXPECT_TRUE(inError ? block.isOrvError(XError::ORV_ERROR_OUT_OF_RANGE) : block.isOK());
}

} // namespace

TEST(XMem, ConstructorsFillAsToldAndEachDrawsTheNextBlockNumber) {
    XMem const none(0, 5);
    EXPECT_EQ(none.mem(), nullptr);
    EXPECT_FALSE(static_cast<bool>(none));
    EXPECT_EQ(bytesOf(XMem(3, 7)), QByteArray("\x07\x07\x07", 3));
    EXPECT_EQ(bytesOf(XMem(3, -2)), QByteArray(3, '\0')); // every negative fill is no fill
    EXPECT_EQ(bytesOf(XMem("ab")), QByteArray("ab\0", 3));
    EXPECT_EQ(bytesOf(XMem(std::string("ab"))), QByteArray("ab\0", 3));
    EXPECT_EQ(bytesOf(XMem(QStringLiteral("\u00e9"))), QByteArray("\xc3\xa9\0", 3));
    EXPECT_EQ(bytesOf(XMem(QByteArray("ab"))), QByteArray("ab")); // raw: no terminator
    XMem const a, b(4, 1), c("x"), d(a);
    EXPECT_EQ(b.getCounterMemBlock(), a.getCounterMemBlock() + 1);
    EXPECT_EQ(c.getCounterMemBlock(), a.getCounterMemBlock() + 2);
    EXPECT_EQ(d.getCounterMemBlock(), a.getCounterMemBlock() + 3);
    // A copy leaves the error behind.
    XMem const source = blockInError("abc");
    expectBlock(XMem(source), "abc", false);
}

TEST(XMem, MovesTakeBytesNumberAndErrorLeavingTheSourceEmptyAndClean) {
    XMem source = blockInError("abcdef");
    char const *bytes = source.mem();
    unsigned int const number = source.getCounterMemBlock();
    XMem moved(std::move(source));
    EXPECT_EQ(moved.mem(), bytes);
    EXPECT_EQ(moved.getCounterMemBlock(), number);
    expectBlock(moved, "abcdef", true);
    expectBlock(source, QByteArray(), false);
    EXPECT_EQ(source.mem(), nullptr);
    EXPECT_EQ(source.getCounterMemBlock(), number); // keeps its number
    XMem target("old");
    target = std::move(moved);
    EXPECT_EQ(target.mem(), bytes);
    EXPECT_EQ(target.getCounterMemBlock(), number);
    expectBlock(target, "abcdef", true);
    EXPECT_TRUE(moved.isOK());
    EXPECT_EQ(moved.mem(), nullptr);
}

TEST(XMem, AssignmentsKeepOrCarryErrorAndNumberEachByItsRule) {
    // Copy assignment reuses the capacity, draws a new number, keeps the target's error.
    XMem target = blockInError(QByteArray(64, 'x'));
    char const *storage = target.mem();
    unsigned int const before = target.getCounterMemBlock();
    XMem const source("short");
    target = source;
    EXPECT_EQ(target.mem(), storage);
    expectBlock(target, QByteArray("short\0", 6), true);
    EXPECT_NE(target.getCounterMemBlock(), before);
    EXPECT_NE(target.getCounterMemBlock(), source.getCounterMemBlock());
    // Text assignments change only the bytes.
    XMem text = blockInError("abc");
    unsigned int const number = text.getCounterMemBlock();
    text = QStringLiteral("\u00e9");
    EXPECT_EQ(bytesOf(text), QByteArray("\xc3\xa9\0", 3));
    text = QByteArray("raw");
    EXPECT_EQ(bytesOf(text), QByteArray("raw"));
    text = std::string("s");
    expectBlock(text, QByteArray("s\0", 2), true);
    EXPECT_EQ(text.getCounterMemBlock(), number);
    // _assign and copy() carry bytes, error and number; copy() renumbers its source.
    XMem assigned;
    assigned._assign(text);
    expectBlock(assigned, QByteArray("s\0", 2), true);
    EXPECT_EQ(assigned.getCounterMemBlock(), number);
    XMem const twin = text.copy();
    expectBlock(twin, QByteArray("s\0", 2), true);
    EXPECT_EQ(twin.getCounterMemBlock(), number);
    EXPECT_NE(text.getCounterMemBlock(), number);
}

TEST(XMem, ReAllocKeepsTheHeadZeroesTheRestAndFillsOnAnythingButMinusOne) {
    XMem block(QByteArray("0123456789"));
    std::tuple<quint64, int, QByteArray> const steps[] = {
        {4, -1, "0123"},
        {6, -1, QByteArray("0123\0\0", 6)},
        {4, 7, "\x07\x07\x07\x07"},
        {2, -2, "\xfe\xfe"}, // only -1 means no fill here
    };
    for (auto const &[size, fill, bytes] : steps) {
        block.reAlloc(size, fill);
        EXPECT_EQ(bytesOf(block), bytes) << size << " " << fill;
    }
}

TEST(XMem, SetStringStoresTheTerminatorAndPrintsTheLengthLine) {
    XMem block;
    std::string const out = orv::test::coutWithoutTrailers([&] {
        block.setString("abc");
        block.setString("");
        EXPECT_EQ(block.length(), 1u);
        EXPECT_EQ(block.get_string(), QString());
        EXPECT_EQ(block.stringLen(), 0u);
        block.setString(std::string("ab\0cd", 5)); // stops at the embedded 0
    });
    EXPECT_EQ(out, "XMem::setString, len > 8GB, len:3\nXMem::setString, len > 8GB, len:2\n");
    EXPECT_EQ(bytesOf(block), QByteArray("ab\0", 3));
    EXPECT_EQ(block.toString(5, 5, false, true, false), QStringLiteral("[3] = HEX{61 62 00} "));
    block.setString(static_cast<char const *>(nullptr)); // empties, keeps the capacity
    EXPECT_EQ(block.length(), 0u);
    EXPECT_NE(block.mem(), nullptr);
    EXPECT_TRUE(block.isEmpty());
    // stringLen needs a terminator inside the block.
    EXPECT_EQ(XMem("abc").stringLen(), 3u);
    EXPECT_EQ(XMem(QByteArray("ab\0cd", 5)).stringLen(), 2u);
    EXPECT_EQ(XMem(QByteArray("abcd")).stringLen(), 0u);
}

TEST(XMem, GrowsBehindTheEndAlsoFromItsOwnBytesWhereTheBaseRefusesToGrow) {
    XMem block(QByteArray("ab"));
    block.append_raw_data(QByteArray("cd"));
    for (int i = 0; i < 8; ++i) // its own head, while the storage moves
        block.append_raw_data(block.mem(), 2);
    EXPECT_EQ(bytesOf(block), QByteArray("abcd") + QByteArray("ab").repeated(8));
    block.clear();
    EXPECT_EQ(block.length(), 0u);
    EXPECT_NE(block.mem(), nullptr);
    EXPECT_TRUE(block.setMem("xyzzy", 5));
    EXPECT_EQ(bytesOf(block), QByteArray("xyzzy"));
    EXPECT_FALSE(block.setMem(nullptr, 1));
    EXPECT_EQ(bytesOf(block), QByteArray("xyzzy"));
    EXPECT_TRUE(block.setString("ab", false)); // through the growing slot
    EXPECT_EQ(bytesOf(block), QByteArray("ab"));
}

TEST(XMem, StringRecordsAndArraysRoundTripAndDamagedArraysGiveWhatCanBeRead) {
    XMem records;
    records.append_string(QStringLiteral("h\u00e9"));
    qint64 const len = 3;
    EXPECT_EQ(bytesOf(records), QByteArray(reinterpret_cast<char const *>(&len), 8) + "h\xc3\xa9");
    std::vector<QString> const texts = {QStringLiteral("one"), QString(), QStringLiteral("\u00fc")};
    XMem array("junk that goes");
    array.set_string_array(texts);
    EXPECT_EQ(array.get_string_array(), texts);
    array.set_string_array({});
    EXPECT_EQ(bytesOf(array), QByteArray(8, '\0'));
    EXPECT_TRUE(array.get_string_array().empty());

    array.set_string_array({QStringLiteral("one"), QStringLiteral("two")});
    QByteArray const good = bytesOf(array);
    QByteArray hugeLength = good, negativeLength = good;
    hugeLength[8 + 7] = '\x7f';
    negativeLength[8 + 7] = '\x80';
    std::tuple<char const *, QByteArray, size_t> const rows[] = {
        // clang-format off
        {"empty", QByteArray(), 0}, {"short of a count", QByteArray(7, '\x01'), 0},
        {"truncated record", good.left(good.size() - 1), 1},
        {"truncated length", good.left(8 + 11 + 4), 1}, {"huge length", hugeLength, 0},
        {"negative length", negativeLength, 0},
        {"count without records", QByteArray("\xff\xff\xff\xff\xff\xff\xff\x7f", 8), 0},
    }; // clang-format on
    for (auto const &[name, bytes, expected] : rows)
        EXPECT_EQ(XMem(bytes).get_string_array().size(), expected) << name;
}

TEST(XMem, CharAccessSetsTheErrorWordAndByteArraysCopyDeeply) {
    XMem block;
    char c = 'x';
    EXPECT_FALSE(block.charAtPos(c, 0));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_NOT_INITIALIZED));
    block.clearError();
    EXPECT_FALSE(block.setCharAtPos('a', 0));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_NOT_INITIALIZED));
    EXPECT_TRUE(XMem().createByteArray().isEmpty());
    block.clear();
    EXPECT_TRUE(block.isOK());
    block = QByteArray("ab");
    orv::XByteArray const copy = block.createByteArray();
    EXPECT_TRUE(block.charAtPos(c, 1));
    EXPECT_EQ(c, 'b');
    EXPECT_TRUE(block.setCharAtPos('z', 0));
    expectBlock(block, "zb", false);
    EXPECT_EQ(QByteArray(copy), QByteArray("ab"));
    EXPECT_FALSE(block.setCharAtPos('z', 2));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_OUT_OF_RANGE));
    EXPECT_FALSE(static_cast<bool>(block)); // bytes, but in error
}

TEST(XMemFiles, LoadsReadThePartTheWholeOrAQtResource) {
    QTemporaryDir dir;
    QString const path = writeFile(dir, "a.bin", "0123456789");
    XMem block;
    EXPECT_TRUE(block.loadFromFile(path, 4));
    EXPECT_EQ(bytesOf(block), QByteArray("0123"));
    EXPECT_TRUE(block.loadFromFile(path, 99)); // shortened to the file
    EXPECT_EQ(bytesOf(block), QByteArray("0123456789"));
    EXPECT_TRUE(block.loadFromFileAsString(path));
    expectBlock(block, QByteArray("0123456789\0", 11), false);
    EXPECT_TRUE(block.loadMem(writeFile(dir, "b.bin", "abc")));
    EXPECT_EQ(bytesOf(block), QByteArray("abc"));
    ASSERT_TRUE(QResource::registerResource(QStringLiteral(ORV_TEST_DATA_DIR "/xmem.rcc")));
    EXPECT_TRUE(block.loadMem(QStringLiteral(":/xmem/hello.txt")));
    EXPECT_EQ(bytesOf(block), QByteArray("hello resource\n"));
    EXPECT_FALSE(block.loadMem(QStringLiteral(":/xmem/none.txt")));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    QResource::unregisterResource(QStringLiteral(ORV_TEST_DATA_DIR "/xmem.rcc"));
}

TEST(XMemFiles, LoadFailuresAndTheirErrorWords) {
    QTemporaryDir dir;
    QString const empty = writeFile(dir, "empty.bin", QByteArray());
    QString const missing = dir.filePath("missing");
    XMem block;
    EXPECT_FALSE(block.loadFromFile(empty, 0));
    EXPECT_TRUE(block.isOK()); // an empty file is no error
    EXPECT_FALSE(block.loadFromFile(missing, 0));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    block.clear();
    EXPECT_FALSE(block.loadFromFileAsString(missing));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    block.clear();
    EXPECT_FALSE(block.loadMem(missing));
    EXPECT_EQ(block.getErrno(), static_cast<unsigned int>(ENOENT));
    block.clear();
    EXPECT_FALSE(block.loadMem(empty));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    block.clear();
    EXPECT_FALSE(block.loadMem(dir.path()));
    EXPECT_TRUE(block.isError());
}

TEST(XMemFiles, SaveWritesTheBlockOrSaysWhyNot) {
    QTemporaryDir dir;
    QString const m = dir.filePath("m.bin"), s = dir.filePath("s.bin");
    XMem block(QByteArray("abcdef"));
    EXPECT_TRUE(block.saveMem(m));
    EXPECT_EQ(readFile(m), QByteArray("abcdef"));
    EXPECT_TRUE(block.saveToFile(s, 3));
    EXPECT_EQ(readFile(s), QByteArray("abc"));
    EXPECT_TRUE(block.saveToFile(s, 0));
    EXPECT_EQ(readFile(s), QByteArray("abcdef"));
    EXPECT_FALSE(block.saveToFile(s, 7));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_OUT_OF_RANGE));
    EXPECT_EQ(readFile(s), QByteArray()); // opened, so emptied
    block.clearError();
    EXPECT_FALSE(block.saveMem(dir.filePath("no/dir/m.bin")));
    EXPECT_TRUE(block.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    block.clearError();
    EXPECT_FALSE(block.saveToFile(dir.filePath("no/dir/s.bin"), 0));
    EXPECT_EQ(block.getErrno(), static_cast<unsigned int>(ENOENT));
    XMem empty;
    EXPECT_FALSE(empty.saveMem(dir.filePath("e.bin")));
    EXPECT_TRUE(empty.isOrvError(XError::ORV_ERROR_NOT_INITIALIZED));
    empty.clear();
    EXPECT_FALSE(empty.saveToFile(dir.filePath("e.bin"), 0));
    EXPECT_TRUE(empty.isOrvError(XError::ORV_ERROR_NOT_INITIALIZED));
    EXPECT_FALSE(QFile::exists(dir.filePath("e.bin")));
}

TEST(XMemDeathTest, RawDataFromNullIsFatal) {
    XMem block;
    orv::test::expectFatal([&] { block.set_raw_data(nullptr, 1); },
                           "^nullptr:pMem == NULL\n[^\n]*base/src/tools/xmem/XMem\\.cpp\n");
}
