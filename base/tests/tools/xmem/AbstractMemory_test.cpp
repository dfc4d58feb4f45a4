// AbstractMemory_test.cpp: the shared operations, seen through a block that cannot
// grow (XByteArray) and one that can (XMem), and the dumps every toString ends in.
#include "orv/AbstractMemory.h"
#include "orv/XByteArray.h"
#include "orv/XMem.h"

#include "support/Test.h"

#include <QtCore/QBuffer>

#include <memory>

using orv::XByteArray;
using orv::XMem;

TEST(AbstractMemory, SetMemCopiesOverTheHeadButNeverGrows) {
    XByteArray block("abcdef", 6);
    EXPECT_TRUE(block.setMem("XY", 2));
    EXPECT_EQ(QByteArray(block), QByteArray("XYcdef"));
    EXPECT_FALSE(block.setMem("1234567", 7));
    EXPECT_FALSE(block.setMem(nullptr, 1));
    EXPECT_FALSE(block.setString(nullptr, true));
    EXPECT_TRUE(block.setString("ab", true));
    EXPECT_EQ(QByteArray(block), QByteArray("ab\0def", 6));
    EXPECT_TRUE(block.setQString(QStringLiteral("\u00e9")));
    EXPECT_EQ(QByteArray(block), QByteArray("\xe9\0\0def", 6)); // Latin-1 with terminator
    EXPECT_TRUE(block.isOK()); // none of these touch the error word
}

TEST(AbstractMemory, FillAndFillPatternWrapAcrossTheBlock) {
    XByteArray block(7, 'x');
    block.fillPattern(QStringLiteral("abc"));
    EXPECT_EQ(QByteArray(block), QByteArray("abcabca"));
    block.fillPattern(QString());
    EXPECT_EQ(QByteArray(block), QByteArray("abcabca"));
    block.fill('-');
    EXPECT_EQ(QByteArray(block), QByteArray("-------"));
    XMem none;
    none.fill('x'); // no storage: nothing to do
    none.fillPattern(QStringLiteral("ab"));
    EXPECT_EQ(none.mem(), nullptr);
}

TEST(AbstractMemory, CharAtAndToStringAnswerBadPositionsAndMissingBytesNeutrally) {
    XByteArray const block("a\xff", 2);
    EXPECT_EQ(block.charAt(0), 'a');
    EXPECT_EQ(block.charAt(1), -1);
    EXPECT_EQ(block.charAt(2), 0);
    XMem emptied("abc");
    emptied.clear(); // storage without bytes
    EXPECT_EQ(emptied.charAt(0), 0);
    EXPECT_EQ(emptied.toString(5, 5, false, true, false), QStringLiteral("length() == 0"));
    EXPECT_EQ(XMem().charAt(0), -1); // no storage
    EXPECT_EQ(XMem().toString(5, 5, false, true, false), QStringLiteral("mem() == nullptr"));
}

TEST(AbstractMemory, ContentsAreComparedByDigest) {
    XMem const a(QByteArray("same"));
    EXPECT_TRUE(a.hasSameContents(XMem(QByteArray("same"))));
    EXPECT_TRUE(a.hasSameContents(XByteArray("same", 4)));
    EXPECT_FALSE(a.hasSameContents(XMem(QByteArray("other"))));
    EXPECT_FALSE(a.hasSameContents(XMem()));
    EXPECT_FALSE(XMem().hasSameContents(XMem())); // an empty this never matches
    EXPECT_FALSE(XMem().createMD5().isFinalized());
    EXPECT_EQ(a.createMD5().toString(), orv::MD5(QStringLiteral("same")).toString());
}

TEST(AbstractMemory, ToStringShowsHeadAndTailOfLongBlocks) {
    XByteArray block(100, '\0');
    for (int i = 0; i < 100; ++i)
        block[i] = static_cast<char>(i);
    EXPECT_EQ(block.toString(5, 5, false, true, false),
              QStringLiteral("[100] = HEX{00 01 02 03 04  .. 5F 60 61 62 63} "));
    XMem const text("Hi!");
    EXPECT_EQ(text.toString(5, 5, true, true, false),
              QStringLiteral("[4] = {Hi!.} HEX{48 69 21 00} "));
    EXPECT_EQ(text.toString_MD5(), QStringLiteral("[4] = MD5{") +
                                       orv::MD5(QByteArray("Hi!\0", 4).constData(), 4).toString() +
                                       "} ");
    EXPECT_EQ(text.toStdString(1, 1, true, false, false), "[4] = {H .. .} ");
}

TEST(AbstractMemory, ToStringOfABlockInErrorNamesTheError) {
    XByteArray block("abc", 3);
    block.setOrvError(orv::XError::ORV_ERROR_EOF);
    EXPECT_EQ(block.toString(5, 5, false, true, false),
              QStringLiteral("AbstractMemory, error:") + block.errAsString());
    // XMem leaves the error branch out: its dump always shows the bytes.
    XMem mem(QByteArray("abc"));
    char c = 0;
    mem.charAtPos(c, 9);
    EXPECT_EQ(mem.toString(5, 5, false, true, false), QStringLiteral("[3] = HEX{61 62 63} "));
}

TEST(AbstractMemory, CopiesOutOnlyWhatThereIs) {
    XMem const block(QByteArray("abc"));
    std::unique_ptr<char const[]> const copy(block.memCopy());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy.get(), block.mem());
    EXPECT_EQ(QByteArray(copy.get(), 3), QByteArray("abc"));
    EXPECT_EQ(XMem().memCopy(), nullptr);
    XByteArray writable("xy", 2);
    std::unique_ptr<char[]> const mutableCopy(writable.memCopy());
    EXPECT_EQ(QByteArray(mutableCopy.get(), 2), QByteArray("xy"));

    QBuffer buffer;
    EXPECT_FALSE(XMem().writeToQBuffer(buffer));
    EXPECT_TRUE(block.writeToQBuffer(buffer));
    EXPECT_EQ(buffer.data(), QByteArray("abc"));
}
