// XFileMapper_test.cpp: the open / map / unmap cycle, the refusals with their log
// lines, bad files, and a sparse file far larger than the machine's memory.
#include "orv/Log.h"
#include "orv/XFileMapper.h"

#include "support/Test.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cstring>
#include <functional>
#include <tuple>
#include <vector>

using namespace orv;

namespace {

using test::writeFile;

// Whether action logged a line with exactly this text.
bool logs(QString const &text, std::function<void()> const &action) {
    std::vector<QString> const lines = test::linesLoggedBy(action);
    return std::find(lines.begin(), lines.end(), text) != lines.end();
}

// Resident memory of this process in KiB, from the kernel's status file.
long residentKiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (QByteArray const &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    return -1;
}

} // namespace

TEST(XFileMapper, MapsLazilyAndRefusesASecondOpenWhileMapped) {
    QTemporaryDir dir;
    XFileMapper mapper(QFileInfo(writeFile(dir, "a.txt", "one\ntwo\n")));
    EXPECT_EQ(mapper.fileName(), QFileInfo(dir.filePath("a.txt")).absoluteFilePath());
    ASSERT_TRUE(mapper.mapReadOnly());
    EXPECT_FALSE(mapper.isMapped());
    ASSERT_NE(mapper.mem(), nullptr);
    EXPECT_TRUE(mapper.isMapped());
    EXPECT_EQ(QByteArray(mapper.mem(), 8), QByteArray("one\ntwo\n"));
    EXPECT_EQ(*mapper.lastChar(), '\n');
    bool again = true;
    EXPECT_TRUE(
        logs("XFileMapper::mapReadOnly, already mapped !", [&] { again = mapper.mapReadOnly(); }));
    EXPECT_FALSE(again);
    EXPECT_TRUE(logs("XFileMapper::mapReadWrite, already mapped !",
                     [&] { again = mapper.mapReadWrite(); }));
    EXPECT_FALSE(again);
    EXPECT_TRUE(mapper.unMap());
    EXPECT_FALSE(mapper.isMapped());
    // Reusable after unMap.
    ASSERT_TRUE(mapper.mapReadOnly());
    EXPECT_NE(mapper.mem(), nullptr);
}

TEST(XFileMapper, MemBeforeOpeningIsNullAndOpenButUnmappedRefusesUnMapAndByteArray) {
    QTemporaryDir dir;
    XFileMapper mapper(writeFile(dir, "a.txt", "abc"));
    ASSERT_TRUE(mapper.mapReadOnly());
    bool result = true;
    EXPECT_TRUE(
        logs("XFileMapper::mapReadyOnly, was NOT mapped !", [&] { result = mapper.unMap(); }));
    EXPECT_FALSE(result);
    XByteArray early;
    EXPECT_TRUE(logs("XFileMapper::createByteArray, NOT mapped - call",
                     [&] { early = mapper.createByteArray(); }));
    EXPECT_TRUE(early.isEmpty());
    // Still open: mem() maps without a new open.
    EXPECT_NE(mapper.mem(), nullptr);
    EXPECT_EQ(mapper.createByteArray(), QByteArray("abc"));
    EXPECT_FALSE(mapper.mapReadOnly()); // now mapped, so refused
    // Before any open: null, with its line.
    XFileMapper unopened(QStringLiteral("/nonexistent/file"));
    char *mem = reinterpret_cast<char *>(1);
    EXPECT_TRUE(
        logs("XFileMapper::mem, forgot to call 'mapReadOnly' ?", [&] { mem = unopened.mem(); }));
    EXPECT_EQ(mem, nullptr);
    EXPECT_FALSE(unopened.isMapped());
}

TEST(XFileMapper, ReadWriteCreatesSizesAndWritesTheFile) {
    QTemporaryDir dir;
    QString const path = dir.filePath("new.bin");
    {
        XFileMapper mapper(path);
        ASSERT_TRUE(mapper.mapReadWrite());
        ASSERT_TRUE(mapper.resize(5));
        ASSERT_NE(mapper.mem(), nullptr);
        std::memcpy(mapper.mem(), "hello", 5);
        EXPECT_EQ(mapper.length(), 5u);
    } // the destructor unmaps
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("hello"));
}

TEST(XFileMapper, BadFilesFailWithoutACrash) {
    QTemporaryDir dir;
    QString const empty = writeFile(dir, "empty.txt", QByteArray());
    QString const locked = writeFile(dir, "locked.txt", "secret");
    QFile::setPermissions(locked, QFileDevice::Permissions());
    // name, path, read-write, opens
    std::vector<std::tuple<char const *, QString, bool, bool>> rows = {
        {"missing file", dir.filePath("missing.txt"), false, false},
        {"directory read-only", dir.path(), false, false},
        {"directory read-write", dir.path(), true, false},
        {"inside a missing directory", dir.filePath("no/such/dir/f.bin"), true, false},
        {"empty file", empty, false, true},
    };
    // Root reads whatever the permissions say; the missing directory covers it there.
    if (!QFileInfo(locked).isReadable()) {
        rows.emplace_back("no permission read-only", locked, false, false);
        rows.emplace_back("no permission read-write", locked, true, false);
    }
    for (auto const &[name, path, readWrite, opens] : rows) {
        SCOPED_TRACE(name);
        XFileMapper mapper(path);
        EXPECT_EQ(readWrite ? mapper.mapReadWrite() : mapper.mapReadOnly(), opens);
        EXPECT_EQ(mapper.mem(), nullptr);
        EXPECT_FALSE(mapper.isMapped());
        EXPECT_EQ(mapper.lastChar(), nullptr);
        EXPECT_FALSE(mapper.unMap());
    }
}

TEST(XFileMapper, EmptyFileMapsOnceItHasBytes) {
    QTemporaryDir dir;
    XFileMapper mapper(writeFile(dir, "empty.txt", QByteArray()));
    ASSERT_TRUE(mapper.mapReadWrite());
    EXPECT_EQ(mapper.mem(), nullptr);
    char *last = reinterpret_cast<char *>(1);
    EXPECT_TRUE(logs("XFileMapper::lastChar, pMap == nullptr", [&] { last = mapper.lastChar(); }));
    EXPECT_EQ(last, nullptr);
    ASSERT_TRUE(mapper.resize(1));
    EXPECT_NE(mapper.mem(), nullptr);
    EXPECT_EQ(mapper.lastChar(), mapper.mem());
}

TEST(XFileMapper, SparseFileBeyondMemoryIsWrittenAndReadAtItsEnd) {
    QTemporaryDir dir;
    QString const path = dir.filePath("huge.bin");
    quint64 const size = 32ull << 30;
    QByteArray const marker("marker near the end");
    quint64 const at = size - 4096 - static_cast<quint64>(marker.size());
    {
        XFileMapper writer(path);
        ASSERT_TRUE(writer.mapReadWrite());
        ASSERT_TRUE(writer.resize(size));
        ASSERT_NE(writer.mem(), nullptr);
        std::memcpy(writer.mem() + at, marker.constData(), static_cast<size_t>(marker.size()));
        EXPECT_TRUE(writer.unMap());
    }
    long const before = residentKiB();
    XFileMapper reader(path);
    ASSERT_TRUE(reader.mapReadOnly());
    EXPECT_EQ(reader.length(), size);
    char const *bytes = reader.mem();
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(QByteArray(bytes + at, marker.size()), marker);
    EXPECT_EQ(bytes[0], '\0');
    EXPECT_EQ(*reader.lastChar(), '\0');
    // Only the touched pages come in: far below a single GiB of the 32.
    EXPECT_LT(residentKiB() - before, 64 * 1024);
    EXPECT_TRUE(reader.unMap());
    EXPECT_TRUE(QFile::remove(path));
}
