// FileWriter_test.cpp: byte layout, truncation, whole-array writes and a file shared by threads.
#include "orv/XFile.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>
#include <thread>

using orv::FileReader;
using orv::FileWriter;

namespace {

QByteArray contents(QString const &name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

} // namespace

TEST(FileWriter, WritesRawValuesInHostOrder) {
    QTemporaryDir dir;
    QString const name = dir.filePath("raw.bin");
    {
        FileWriter out(name);
        out.writeUINT(1);
        out.writeShort(0x0203);
        out.writeBool(true);
        out.writeBool(false);
        out.writeString("ab");
        out.writeLineAscii("é");
        out.write(QByteArray());
        EXPECT_EQ(out.tell(), 12);
        EXPECT_TRUE(out.isOpen());
    }
    EXPECT_EQ(contents(name), QByteArray("\x01\x00\x00\x00\x03\x02\x01\x00"
                                         "ab\xe9\n",
                                         12));
}

TEST(FileWriter, OpenEmptiesAnExistingFileAndFailsInAMissingFolder) {
    QTemporaryDir dir;
    QString const name = dir.filePath("t.bin");
    ASSERT_TRUE(orv::writeByteArrayToFile("long old contents", name));
    ASSERT_TRUE(orv::writeByteArrayToFile("new", name));
    EXPECT_EQ(contents(name), "new");

    QString const bad = dir.filePath("no/such/dir/t.bin");
    FileWriter out(bad);
    EXPECT_FALSE(out.isOpen());
    EXPECT_FALSE(out.open(dir.path()));
    EXPECT_FALSE(orv::writeByteArrayToFile("x", bad));
    EXPECT_FALSE(QFile::exists(bad));
}

TEST(FileWriter, ThreadsSharingAFileNeverTearARecord) {
    QTemporaryDir dir;
    QString const name = dir.filePath("shared.bin");
    int const recordsPerThread = 20000;
    int const recordSize = 24; // thread byte, 7 filler, index, index again
    {
        FileWriter out(name);
        auto writer = [&out](char id) {
            char record[recordSize];
            for (qint64 i = 0; i < recordsPerThread; ++i) {
                std::memset(record, id, 8);
                std::memcpy(record + 8, &i, 8);
                std::memcpy(record + 16, &i, 8);
                out.write(record, recordSize);
            }
        };
        std::thread a(writer, 'A'), b(writer, 'B');
        a.join();
        b.join();
    }
    FileReader in(name);
    ASSERT_EQ(in.getFileLen(), 2 * recordsPerThread * recordSize);
    qint64 next[2] = {0, 0};
    for (int r = 0; r < 2 * recordsPerThread; ++r) {
        char head[8];
        ASSERT_EQ(in.readBytes(head, 8), 8u);
        ASSERT_TRUE(head[0] == 'A' || head[0] == 'B');
        ASSERT_EQ(QByteArray(head, 8), QByteArray(8, head[0])) << "record " << r;
        qint64 const index = in.readLONG();
        ASSERT_EQ(in.readLONG(), index) << "record " << r;
        // Each thread's records arrive whole and in its own order.
        ASSERT_EQ(index, next[head[0] - 'A']++);
    }
}
