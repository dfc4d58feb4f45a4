// XMemFile_test.cpp: the MIME type that rides with the bytes: set by loads, cleared
// by new content, carried by copies and moves; whole-file text reads.
#include "orv/XMemFile.h"

#include "support/Test.h"

#include <QtCore/QFile>

#include <functional>

using namespace orv;

namespace {

using test::writeFile;

XMemFile typed() {
    XMemFile mem(QByteArray("abc"));
    mem.setMimeType(XMimeType::fromFileExtension("png"));
    return mem;
}

} // namespace

TEST(XMemFile, WholeLoadTakesTypeAndUrlPartialOrFailedLoadLeavesThem) {
    QTemporaryDir dir;
    QString const path = writeFile(dir, "page.HTML", "<p>hello</p>");
    XMemFile whole;
    ASSERT_TRUE(whole.loadFromFile(path, 0));
    EXPECT_EQ(whole.getMimeType().toString(), QString("text/html {%1}").arg(path));
    EXPECT_EQ(whole.asString(), QString("<p>hello</p>"));

    XMemFile part;
    ASSERT_TRUE(part.loadFromFile(path, 3));
    EXPECT_FALSE(part.hasMimeType());
    EXPECT_EQ(part.asString(), QString("<p>"));

    XMemFile kept = typed();
    ASSERT_TRUE(kept.loadFromFile(path, 100)); // above the size: the whole file
    EXPECT_TRUE(kept.getMimeType().isSubType_png());
    EXPECT_EQ(kept.size(), 12u);

    XMemFile missing; // fails with the error word, the type stays
    EXPECT_FALSE(missing.loadFromFile(dir.filePath("none.txt"), 0));
    EXPECT_TRUE(missing.isOrvError(XError::ORV_ERROR_CANNOT_READ_RESOURCE));
    EXPECT_TRUE(missing.getMimeType().isMime("text/plain"));
}

TEST(XMemFile, NewContentDropsTheType) {
    std::pair<char const *, std::function<void(XMemFile &)>> const rows[] = {
        {"setString", [](XMemFile &m) { m.setString("x"); }},
        {"setString QString", [](XMemFile &m) { m.setString(QString("x")); }},
        {"set_raw_data", [](XMemFile &m) { m.set_raw_data("xy", 2); }},
        {"set_raw_data QByteArray", [](XMemFile &m) { m.set_raw_data(QByteArray("xy")); }},
        {"clear", [](XMemFile &m) { m.clear(); }},
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(row.first);
        XMemFile mem = typed();
        ASSERT_TRUE(mem.hasMimeType());
        row.second(mem);
        EXPECT_FALSE(mem.hasMimeType());
    }
}

TEST(XMemFile, CopiesAndMovesCarryTheType) {
    XMemFile source = typed();
    XMemFile copied(source);
    EXPECT_TRUE(copied.isMimeType(source.getMimeType()));
    EXPECT_NE(copied.getCounterMemBlock(), source.getCounterMemBlock());

    XMemFile assigned;
    assigned = source;
    EXPECT_TRUE(assigned.getMimeType().isSubType_png());
    EXPECT_EQ(assigned.getCounterMemBlock(), source.getCounterMemBlock());
    EXPECT_EQ(assigned.asString(), QString("abc"));

    unsigned int const number = source.getCounterMemBlock();
    XMemFile moved(std::move(source));
    EXPECT_TRUE(moved.getMimeType().isSubType_png());
    EXPECT_EQ(moved.getCounterMemBlock(), number);
    XMemFile target;
    target = std::move(moved);
    EXPECT_TRUE(target.getMimeType().isSubType_png());
    EXPECT_EQ(target.asString(), QString("abc"));
}

TEST(XMemFile, FileTextEndsInItsTerminator) {
    QTemporaryDir dir;
    QString const text = XMemFile::fromFile(writeFile(dir, "a.txt", "caf\xC3\xA9"));
    EXPECT_EQ(text, QString::fromUtf8("caf\xC3\xA9") + QChar(0));
    EXPECT_EQ(XMemFile::fromFile(QFileInfo(dir.filePath("a.txt"))), text);
    EXPECT_TRUE(XMemFile::fromFile(dir.filePath("missing.txt")).isEmpty());
}
