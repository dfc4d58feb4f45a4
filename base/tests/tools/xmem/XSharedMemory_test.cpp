// XSharedMemory_test.cpp: block copies between two handles of one segment, the refusals
// of a detached handle, of an oversized block and of a taken key, and the lifecycle trace.
#include "orv/XSharedMemory.h"

#include "orv/XByteArray.h"
#include "orv/XMem.h"

#include "support/Test.h"

#include <QtCore/QCoreApplication>

using orv::XSharedMemory;
using orv::test::linesLoggedBy;

namespace {

// Keys of their own per process, so that parallel runs never meet.
QString keyFor(char const *name) {
    return QStringLiteral("orv-test-%1-%2").arg(QCoreApplication::applicationPid()).arg(name);
}

} // namespace

TEST(XSharedMemory, SecondHandleReadsWhatTheCreatorWrote) {
    XSharedMemory creator(keyFor("copy"));
    orv::XMem source(QByteArray("abcdef"));
    ASSERT_TRUE(creator.writeCreateMem(source));
    EXPECT_EQ(creator.toString(), QStringLiteral("attached, size:6"));

    XSharedMemory reader(keyFor("copy"));
    ASSERT_TRUE(reader.attach());
    orv::XMem target(QByteArray("much longer than six"));
    ASSERT_TRUE(reader.readMem(target));
    EXPECT_EQ(target.length(), 6u);
    EXPECT_EQ(QByteArray(target.mem(), 6), QByteArray("abcdef"));
    EXPECT_EQ(QByteArray(reader.createByteArray()), QByteArray("abcdef"));

    orv::XByteArray tooSmall(3, '-');
    EXPECT_FALSE(reader.readMem(tooSmall));
}

TEST(XSharedMemory, LargerBlockIsRefusedAndSmallerOneOverwritesTheHead) {
    XSharedMemory segment(keyFor("write"));
    orv::XMem initial(QByteArray("1234"));
    ASSERT_TRUE(segment.writeCreateMem(initial));
    orv::XMem larger(QByteArray("abcde"));
    bool written = true;
    std::vector<QString> const lines =
        linesLoggedBy([&] { written = segment.writeMem(larger); }, orv::ERROR);
    EXPECT_FALSE(written);
    EXPECT_EQ(lines, std::vector<QString>{
                         "XSharedMemory::writeMem, xmem.size() > sharedMem.Size(), 5 > 4"});
    EXPECT_EQ(QByteArray(segment.createByteArray()), QByteArray("1234"));

    orv::XMem head(QByteArray("ab"));
    EXPECT_TRUE(segment.writeMem(head));
    EXPECT_EQ(QByteArray(segment.createByteArray()), QByteArray("ab34"));
}

TEST(XSharedMemory, DetachedHandleRefusesEveryCopy) {
    XSharedMemory detached(keyFor("absent"));
    EXPECT_FALSE(detached.attach()); // nobody created it
    orv::XMem block(QByteArray("x"));
    struct Row {
        std::function<bool()> call;
        char const *line;
    };
    Row const rows[] = {
        {[&] { return detached.readMem(block); }, "XSharedMemory::readMem, NOT ATTACHED !, size:0"},
        {[&] { return detached.writeMem(block); }, "XSharedMemory::writeMem, NOT ATTACHED !"},
        {[&] { return !detached.createByteArray().isEmpty(); },
         "XSharedMemory::createByteArray, not attached !"},
    };
    for (Row const &row : rows) {
        bool result = true;
        std::vector<QString> const lines = linesLoggedBy([&] { result = row.call(); }, orv::ERROR);
        EXPECT_FALSE(result) << row.line;
        EXPECT_EQ(lines, std::vector<QString>{row.line});
    }
    EXPECT_TRUE(detached.toString().startsWith(QStringLiteral("not attached, ")))
        << detached.toString().toStdString();
}

TEST(XSharedMemory, CreateOnTakenKeyOrFromEmptyBlockFails) {
    XSharedMemory first(keyFor("taken"));
    orv::XMem block(QByteArray("abc"));
    ASSERT_TRUE(first.writeCreateMem(block));
    XSharedMemory second(keyFor("taken"));
    bool created = true;
    std::vector<QString> const lines =
        linesLoggedBy([&] { created = second.writeCreateMem(block); }, orv::ERROR);
    EXPECT_FALSE(created);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].startsWith(
        "XSharedMemory::writeCreateMem, cannot create_growable shared memory 3 bytes, err:"));
    XSharedMemory third(keyFor("empty"));
    orv::XMem empty;
    EXPECT_FALSE(third.writeCreateMem(empty));
    EXPECT_FALSE(third.isAttached());
}

TEST(XSharedMemory, DebugFlagTracesConstructionAndDetach) {
    bool const wasDebug = orv::AbstractMemory::isDebug();
    orv::XMem block(QByteArray("ab"));
    orv::AbstractMemory::setDebug(true);
    std::vector<QString> const lines = linesLoggedBy(
        [&] {
            XSharedMemory segment(keyFor("trace"));
            segment.writeCreateMem(block);
        },
        orv::DEBUG);
    orv::AbstractMemory::setDebug(wasDebug);
    std::vector<QString> const expected = {
        "XSharedMemory::XSharedMemory, key:'" + keyFor("trace") + "'",
        "XSharedMemory::writeCreateMem, size is now:2", "XSharedMemory::~XSharedMemory, detach"};
    EXPECT_EQ(lines, expected);
}
