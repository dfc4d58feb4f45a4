// XMemoryWrapper_test.cpp: reading and writing a fixed block through the device,
// refusals at its end, and the block views of what was written.
#include "orv/XMemoryWrapper.h"

#include "orv/XByteArray.h"
#include "orv/XMem.h"

#include "support/Test.h"

#include <QtCore/QDataStream>

using orv::XMemoryWrapper;

TEST(XMemoryWrapper, ReadsTheRestThenRefusesAtTheEnd) {
    orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
    char block[4] = {'a', 'b', 'c', 'd'};
    XMemoryWrapper device(block, 4, QIODevice::ReadOnly);
    EXPECT_TRUE(device.openMode() & QIODevice::Unbuffered);
    char buffer[10] = {};
    quint64 const endsBefore = XMemoryWrapper::countReadsAtEnd();
    EXPECT_EQ(device.read(buffer, 10), 4);
    EXPECT_EQ(QByteArray(buffer, 4), QByteArray("abcd"));
    EXPECT_TRUE(device.atEnd());
    EXPECT_EQ(device.read(buffer, 10), -1);
    EXPECT_EQ(XMemoryWrapper::countReadsAtEnd(), endsBefore + 1);
    EXPECT_TRUE(log.waitForText("XMemoryWrapper::readData, EOF"));

    ASSERT_TRUE(device.seek(1));
    EXPECT_EQ(device.bytesAvailable(), 3);
    EXPECT_EQ(device.readString(), QStringLiteral("bcd"));
    ASSERT_TRUE(device.reset());
    EXPECT_EQ(device.restSize(), 4);
}

TEST(XMemoryWrapper, WriteThatDoesNotFitWritesNothing) {
    orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
    char block[4] = {'-', '-', '-', '-'};
    XMemoryWrapper device(block, 4, QIODevice::WriteOnly);
    EXPECT_EQ(device.write("12345", 5), -1);
    EXPECT_EQ(QByteArray(block, 4), QByteArray("----"));
    EXPECT_EQ(device.pos(), 0);
    EXPECT_TRUE(log.waitForText(
        "XMemoryWrapper::writeData, want to write:5 bytes but only:4 free bytes left"));
    EXPECT_EQ(device.write("123", 3), 3);
    EXPECT_EQ(device.write("45", 2), -1);
    EXPECT_EQ(device.writeString(QStringLiteral("4")), 1);
    EXPECT_EQ(QByteArray(block, 4), QByteArray("1234"));
    EXPECT_EQ(device.size(), 4);
}

TEST(XMemoryWrapper, ByteArrayIsTheBlockUpToThePositionAndAnEmptySourceLeavesItEmpty) {
    orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
    orv::XMem mem(8, 0);
    XMemoryWrapper device(mem, QIODevice::NotOpen);
    EXPECT_TRUE(device.createByteArray().isEmpty());
    EXPECT_TRUE(log.waitForText("XMemoryWrapper::createByteArray, XMemoryWrapper is not open!"));
    EXPECT_EQ(device.toString(4, 4, false, true, false),
              QStringLiteral("XMemoryWrapper is not open!"));
    EXPECT_FALSE(device.seek(0));

    ASSERT_TRUE(device.open(QIODevice::ReadWrite));
    EXPECT_TRUE(device.createByteArray().isEmpty());
    EXPECT_TRUE(log.waitForText("XMemoryWrapper::createByteArray, posMemory() == 0"));
    QDataStream(&device) << quint16(0x4142);
    EXPECT_EQ(device.createByteArray(), QByteArray("AB"));
    EXPECT_TRUE(device.createMD5() == mem.createMD5());

    device.fillPattern(QStringLiteral("xy"));
    EXPECT_EQ(QByteArray(mem.mem(), 8), QByteArray("xyxyxyxy"));
    orv::XMem empty;
    XMemoryWrapper onEmpty(empty, QIODevice::ReadWrite);
    EXPECT_EQ(onEmpty.mem(), nullptr);
    EXPECT_FALSE(onEmpty.isOpen());
    EXPECT_TRUE(log.waitForText("XMemoryWrapper::XMemoryWrapper, pMem == nullptr"));
}

TEST(XMemoryWrapper, MoveTakesBlockPositionAndMode) {
    orv::XByteArray bytes(QByteArray("abcdef"));
    XMemoryWrapper first(bytes, QIODevice::ReadOnly);
    ASSERT_TRUE(first.seek(2));
    XMemoryWrapper second(std::move(first));
    EXPECT_EQ(first.mem(), nullptr);
    EXPECT_FALSE(first.isOpen());
    EXPECT_EQ(second.readString(), QStringLiteral("cdef"));
    XMemoryWrapper third;
    third = std::move(second);
    EXPECT_EQ(third.length(), 6u);
    EXPECT_TRUE(third.atEnd());
}
