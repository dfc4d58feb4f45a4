// FileHelpers_test.cpp: path texts, whole-file reads and file times.
#include "orv/FileHelpers.h"

#include "support/Test.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>

using namespace orv;

TEST(FileHelpers, PathTextsTable) {
    std::pair<QString, QString> const rows[] = {
        // clang-format off
        {getDirPath(""), QString()}, {getDirPath("/a/b/c.txt"), "/a/b"},
        {getDirPath("a\\b\\c"), "a\\b"}, {getDirPath("noSeparator"), QString()},
        {getAbsPath("/data/main.xml", "inc/a.xml"), "/data/inc/a.xml"},
        {getAbsPath("/data/", "a.xml"), "/data//a.xml"},
        {getAbsPath("C:\\x\\y.xml", "z\\w.xml"), "C:/x/z/w.xml"},
        {getFileExtension("a", true), QString()}, {getFileExtension("Photo.JPG", true), "jpg"},
        {getFileExtension("Photo.JPG", false), "JPG"}, {getPureFilename("/a/b.txt"), "b.txt"},
        {getRelPath("/a/b", "/a/b/c/d.txt"), "c/d.txt"},
        {getTmpFilename("x"), QDir::tempPath() + "/x"},
        // shortening keeps the first and the last component
        {shortenFilePath("/home/user/docs/file.txt", 10), "/home\\.../file.txt"},
        {shortenFilePath("C:\\a\\b\\c.txt", 5), "C:\\...\\c.txt"},
        {shortenFilePath("/a/b.txt", 8), "/a/b.txt"}, {shortenFilePath("abcdefgh", 3), "abcdefgh"},
    }; // clang-format on
    for (auto const &[got, expected] : rows)
        EXPECT_EQ(got, expected);
}

TEST(FileHelpers, ReadsWholeFilesAndFailsWithEmptyResult) {
    QTemporaryDir dir;
    QString const path = test::writeFile(dir, "t.txt", "gr\xc3\xbc\xc3\x9f\n");
    EXPECT_EQ(string_from_file(path), QString::fromUtf8("grüß\n"));
    EXPECT_EQ(string_from_file(QFileInfo(path)), QString::fromUtf8("grüß\n"));
    EXPECT_EQ(readAsciiFileByteArray(path), QByteArray("gr\xc3\xbc\xc3\x9f\n"));
    EXPECT_EQ(readAsciiFile(path), QString::fromLatin1("gr\xc3\xbc\xc3\x9f\n"));
    QString const missing = dir.filePath("missing.txt");
    EXPECT_EQ(string_from_file(missing), QString());
    EXPECT_EQ(readAsciiFile(missing), QString());
    EXPECT_TRUE(readAsciiFileByteArray(missing).isEmpty());
    EXPECT_EQ(string_from_file(dir.path()), QString());
}

TEST(FileHelpers, TimestampIsInMillisecondsDespiteItsName) {
    QTemporaryDir dir;
    QFile file(test::writeFile(dir, "t.txt", ""));
    ASSERT_TRUE(file.open(QIODevice::Append));
    ASSERT_TRUE(file.setFileTime(QDateTime::fromMSecsSinceEpoch(1577934245123LL),
                                 QFileDevice::FileModificationTime));
    file.close();
    QFileInfo const info(file.fileName());
    EXPECT_EQ(get_timestamp_micro_sec(info), 1577934245123ULL);
    EXPECT_EQ(get_timestamp_string(info, "yyyy"), QLatin1String("2020"));
    EXPECT_EQ(get_directory(info, false).path(), QDir(dir.path()).path());
    EXPECT_EQ(get_directory(QFileInfo(dir.path()), false).path(), QDir(dir.path()).path());
}
