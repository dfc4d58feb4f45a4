// LongBlocks_test.cpp: a sparse file of 4 GiB + 5 bytes through every path that turns a
// block into a Qt array: each refuses with a line naming the length, none crashes or
// cuts; the dump and the copy-free reads still see the whole file.
#include "orv/ArrayTools.h"
#include "orv/MersenneTwister.h"
#include "orv/XFileMapper.h"
#include "orv/XMemoryWrapper.h"
#include "orv/XSharedMemory.h"

#include "support/Test.h"

#include <QtCore/QBuffer>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

#include <functional>

using namespace orv;

namespace {

quint64 const LONG_SIZE = (quint64(1) << 32) + 5;

QString refusal(char const *where, char const *what = "QByteArray", quint64 max = 2147483583) {
    return QStringLiteral("%1, length 4294967301 does not fit a %2 (at most %3 bytes)")
        .arg(where, what)
        .arg(max);
}

} // namespace

TEST(LongBlocks, EveryWayIntoAQtArrayRefusesALengthPastItAndNamesIt) {
    QTemporaryDir dir;
    QString const path = dir.filePath("long.bin");
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(static_cast<qint64>(LONG_SIZE))); // sparse: no page written
    }
    XFileMapper mapper(path);
    ASSERT_TRUE(mapper.mapReadOnly());
    char *bytes = mapper.mem();
    ASSERT_NE(bytes, nullptr);
    XSharedMemory segment(
        QStringLiteral("orv-long-blocks-%1").arg(QCoreApplication::applicationPid()));
    struct Row {
        QString line;
        std::function<bool()> refused;
    } const rows[] = {
        {refusal("XFileMapper::createByteArray"),
         [&] { return mapper.createByteArray().isEmpty(); }},
        {refusal("XByteArray::fromMem"),
         [&] { return XByteArray::fromMem(bytes, LONG_SIZE).isEmpty(); }},
        {refusal("XByteArray::setMemory"),
         [&] {
             XByteArray kept(QByteArray("kept"));
             kept.setMemory(bytes, LONG_SIZE);
             return kept.size() == 4 && kept.isOrvNumberTooBig();
         }},
        {refusal("XByteArray::loadFromFile"),
         [&] {
             XByteArray loaded;
             return !loaded.loadFromFile(path, 0) && loaded.isOrvNumberTooBig();
         }},
        {refusal("AbstractMemory::writeToQBuffer"),
         [&] {
             QBuffer buffer;
             return !mapper.writeToQBuffer(buffer) && buffer.data().isEmpty();
         }},
        {refusal("XMemoryWrapper::createByteArray"),
         [&] {
             XMemoryWrapper wrapper(bytes, LONG_SIZE, QIODevice::ReadOnly);
             return wrapper.seek(static_cast<qint64>(LONG_SIZE)) &&
                    wrapper.createByteArray().isEmpty();
         }},
        {refusal("MersenneTwister::fillQByteArray"),
         [] {
             QByteArray kept("kept");
             MersenneTwister(false, 16).fillQByteArray(kept, LONG_SIZE, 0, 255);
             return kept == "kept";
         }},
        {refusal("ArrayTools::createQByteArrayABC"),
         [] { return ArrayTools::createQByteArrayABC(LONG_SIZE).isEmpty(); }},
        {refusal("XSharedMemory::writeCreateMem", "QSharedMemory", 2147483647),
         [&] { return !segment.writeCreateMem(mapper) && !segment.isAttached(); }},
    };
    for (Row const &row : rows) {
        bool refused = false;
        EXPECT_EQ(test::linesLoggedBy([&] { refused = row.refused(); }, ERROR),
                  std::vector<QString>{row.line});
        EXPECT_TRUE(refused) << row.line.toStdString();
    }
    // The dump reads head and tail where they are: the length is the whole file's.
    EXPECT_EQ(mapper.toString(1, 1, false, true, false),
              QStringLiteral("[4.294.967.301] = HEX{00  .. 00} "));
    EXPECT_TRUE(mapper.unMap());
    EXPECT_TRUE(QFile::remove(path));
}
