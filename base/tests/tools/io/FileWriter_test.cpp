// FileWriter_test.cpp: byte layout, truncation, whole-array writes and a file shared by threads.
#include "orv/XFile.h"

#include "support/Test.h"

#include <QtCore/QFile>

#include <cstring>
#include <thread>

using orv::FileReader;
using orv::FileWriter;

using orv::test::readFile;

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
    EXPECT_EQ(readFile(name), QByteArray("\x01\x00\x00\x00\x03\x02\x01\x00"
                                         "ab\xe9\n",
                                         12));
}

TEST(FileWriter, OpenEmptiesAnExistingFileAndFailsInAMissingFolder) {
    QTemporaryDir dir;
    QString const name = dir.filePath("t.bin");
    ASSERT_TRUE(orv::writeByteArrayToFile("long old contents", name));
    ASSERT_TRUE(orv::writeByteArrayToFile("new", name));
    EXPECT_EQ(readFile(name), "new");

    QString const bad = dir.filePath("no/such/dir/t.bin");
    FileWriter out(bad);
    EXPECT_FALSE(out.isOpen());
    EXPECT_FALSE(out.open(dir.path()));
    EXPECT_FALSE(orv::writeByteArrayToFile("x", bad));
    EXPECT_FALSE(QFile::exists(bad));
}

TEST(FileWriter, ThreadsSharingAFileNeverTearARecord) {
    struct Record {
        char id[8]; // the writing thread's letter, 8 times
        qint64 index, again;
    };
    int const perThread = 20000;
    QTemporaryDir dir;
    QString const name = dir.filePath("shared.bin");
    {
        FileWriter out(name);
        auto writer = [&out](char id) {
            Record record;
            std::memset(record.id, id, 8);
            for (qint64 i = 0; i < perThread; ++i) {
                record.index = record.again = i;
                out.write(reinterpret_cast<char const *>(&record), sizeof record);
            }
        };
        std::thread a(writer, 'A'), b(writer, 'B');
        a.join();
        b.join();
    }
    FileReader in(name);
    ASSERT_EQ(in.getFileLen(), qint64(2 * perThread * sizeof(Record)));
    qint64 next[2] = {0, 0};
    for (int r = 0; r < 2 * perThread; ++r) {
        SCOPED_TRACE(r);
        Record record;
        ASSERT_EQ(in.readBytes(reinterpret_cast<char *>(&record), sizeof record), sizeof record);
        ASSERT_TRUE(record.id[0] == 'A' || record.id[0] == 'B');
        ASSERT_EQ(QByteArray(record.id, 8), QByteArray(8, record.id[0]));
        ASSERT_EQ(record.again, record.index);
        // Each thread's records arrive whole and in its own order.
        ASSERT_EQ(record.index, next[record.id[0] - 'A']++);
    }
}
