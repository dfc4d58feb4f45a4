// XFile_test.cpp: the UTF-8 text writer, temporary names and the file and folder helpers.
#include "orv/XFile.h"

#include "support/Test.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>

using orv::XFile;

TEST(XFile, WritesUtf8LinesEndingInLfToANameWithAccentsAndOnlyInWriteMode) {
    QTemporaryDir dir;
    QString const name = dir.filePath("café.txt");
    {
        XFile file(name, XFile::WRITE);
        ASSERT_TRUE(static_cast<bool>(file));
        EXPECT_TRUE(file.write("Grüße", true));
        EXPECT_TRUE(file.write("", false));
        EXPECT_TRUE(file.write_cstring("end"));
        EXPECT_FALSE(file.write_cstring("")); // nothing written
    }
    EXPECT_EQ(orv::test::readFile(name), QString("Grüße\nend").toUtf8());
    // Other modes open nothing, and neither does a missing folder.
    QString const never = dir.filePath("never.txt");
    for (XFile::MODE mode : {XFile::CLOSED, XFile::READ})
        EXPECT_FALSE(static_cast<bool>(XFile(never, mode)));
    EXPECT_FALSE(QFile::exists(never));
    EXPECT_FALSE(static_cast<bool>(XFile(dir.filePath("no/dir/x.txt"), XFile::WRITE)));
}

TEST(XFile, RandomLinesAreCapitalsNumberedFromOne) {
    QTemporaryDir dir;
    for (bool numbered : {true, false}) {
        QString const name = dir.filePath("random.txt");
        EXPECT_TRUE(XFile(name, XFile::WRITE).write_random_line(12, 3, numbered));
        QString const capitals = "[A-Z]{12}\n";
        QRegularExpression const expected(numbered ? "^000001 " + capitals + "000002 " + capitals +
                                                         "000003 " + capitals + "$"
                                                   : "^(" + capitals + "){3}$");
        QString const text = QString::fromLatin1(orv::test::readFile(name));
        EXPECT_TRUE(expected.match(text).hasMatch()) << text.toStdString();
    }
}

TEST(XFile, TemporaryNamesLieInTheTempFolder) {
    QString const tmp = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    EXPECT_EQ(XFile::createTmpFileName("a.log"), tmp + "/a.log");
    QString const txt = XFile::createTmpFileName(12, true);
    EXPECT_EQ(txt.size(), tmp.size() + 1 + 12 + 4);
    EXPECT_TRUE(txt.endsWith(".txt"));
    EXPECT_NE(XFile::createTmpFileName(12, false), XFile::createTmpFileName(12, false));
}

TEST(FileTools, TellFilesFromFoldersAndMissingNames) {
    QTemporaryDir dir;
    QString const file = dir.filePath("f.bin");
    ASSERT_TRUE(orv::writeByteArrayToFile("12345", file));
    EXPECT_TRUE(orv::fileExists(file));
    EXPECT_TRUE(orv::fileExists(QFile::encodeName(file).constData()));
    EXPECT_FALSE(orv::fileExists(dir.path()));
    EXPECT_FALSE(orv::fileExists(QString()));
    EXPECT_FALSE(orv::fileExists(static_cast<char const *>(nullptr)));
    EXPECT_TRUE(orv::dirExists(dir.path()));
    EXPECT_FALSE(orv::dirExists(file));
    EXPECT_FALSE(orv::dirExists(dir.filePath("missing")));
    EXPECT_EQ(orv::getFileLength(file), 5);
    EXPECT_EQ(orv::getFileLength(dir.filePath("missing")), -1);
}

TEST(FileTools, MakesFoldersForADirectoryOrForAFileName) {
    QTemporaryDir dir;
    EXPECT_TRUE(orv::mkDirPath(dir.filePath("a/b/c"), true));
    EXPECT_TRUE(orv::dirExists(dir.filePath("a/b/c")));
    EXPECT_TRUE(orv::mkDirPath(dir.filePath("a/b/c"), true)); // already there

    EXPECT_TRUE(orv::mkDirPath(dir.filePath("x/y/file.txt"), false));
    EXPECT_TRUE(orv::dirExists(dir.filePath("x/y")));
    EXPECT_FALSE(QFile::exists(dir.filePath("x/y/file.txt")));

    ASSERT_TRUE(orv::writeByteArrayToFile("f", dir.filePath("plain")));
    struct Row {
        QString path;
        bool isDirectory;
    };
    for (Row const &row : {Row{"file.txt", false}, Row{"/file.txt", false}, Row{"", true},
                           Row{dir.filePath("plain/sub"), true}}) {
        EXPECT_FALSE(orv::mkDirPath(row.path, row.isDirectory)) << row.path.toStdString();
    }
}
