// FileHelpers_test.cpp: path texts, whole-file reads and file times.
#include "orv/FileHelpers.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using namespace orv;

TEST(FileHelpers, PathTextsTable) {
    EXPECT_EQ(getDirPath(""), QString());
    EXPECT_EQ(getDirPath("/a/b/c.txt"), QLatin1String("/a/b"));
    EXPECT_EQ(getDirPath("a\\b\\c"), QLatin1String("a\\b"));
    EXPECT_EQ(getDirPath("noSeparator"), QString());
    EXPECT_EQ(getAbsPath("/data/main.xml", "inc/a.xml"), QLatin1String("/data/inc/a.xml"));
    EXPECT_EQ(getAbsPath("/data/", "a.xml"), QLatin1String("/data//a.xml"));
    EXPECT_EQ(getAbsPath("C:\\x\\y.xml", "z\\w.xml"), QLatin1String("C:/x/z/w.xml"));
    EXPECT_EQ(getFileExtension("a", true), QString());
    EXPECT_EQ(getFileExtension("Photo.JPG", true), QLatin1String("jpg"));
    EXPECT_EQ(getFileExtension("Photo.JPG", false), QLatin1String("JPG"));
    EXPECT_EQ(getPureFilename("/a/b.txt"), QLatin1String("b.txt"));
    EXPECT_EQ(getRelPath("/a/b", "/a/b/c/d.txt"), QLatin1String("c/d.txt"));
    EXPECT_EQ(getTmpFilename("x"), QDir::tempPath() + "/x");
}

TEST(FileHelpers, ShortenFilePathKeepsFirstAndLastComponent) {
    EXPECT_EQ(shortenFilePath("/home/user/docs/file.txt", 10),
              QLatin1String("/home\\.../file.txt"));
    EXPECT_EQ(shortenFilePath("C:\\a\\b\\c.txt", 5), QLatin1String("C:\\...\\c.txt"));
    EXPECT_EQ(shortenFilePath("/a/b.txt", 8), QLatin1String("/a/b.txt"));
    EXPECT_EQ(shortenFilePath("abcdefgh", 3), QLatin1String("abcdefgh"));
}

TEST(FileHelpers, ReadsWholeFilesAndFailsWithEmptyResult) {
    QTemporaryDir dir;
    QString const path = dir.filePath("t.txt");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("gr\xc3\xbc\xc3\x9f\n");
    file.close();
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
    QString const path = dir.filePath("t.txt");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QDateTime const when = QDateTime::fromMSecsSinceEpoch(1577934245123LL);
    ASSERT_TRUE(file.setFileTime(when, QFileDevice::FileModificationTime));
    file.close();
    EXPECT_EQ(get_timestamp_micro_sec(QFileInfo(path)), 1577934245123ULL);
    EXPECT_EQ(get_timestamp_string(QFileInfo(path), "yyyy"), QLatin1String("2020"));
    EXPECT_EQ(get_directory(QFileInfo(path), false).path(), QDir(dir.path()).path());
    EXPECT_EQ(get_directory(QFileInfo(dir.path()), false).path(), QDir(dir.path()).path());
}
