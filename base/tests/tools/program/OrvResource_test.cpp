// OrvResource_test.cpp: the "orv" tree seen from copies of this program placed inside such
// a tree, inside one without "data", and outside any; and texts read from there.
#include "orv/OrvResource.h"

#include "ChildLines.h"
#include "support/LoggedLines.h"
#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using orv::OrvResource;

namespace {

// Where the child's copy of the program runs: <tree>/bin.
QStringList reportFromCopyIn(QTemporaryDir const &dir, QString const &tree) {
    QString const bin = dir.filePath(tree + "/bin");
    EXPECT_TRUE(QDir().mkpath(bin));
    QString const program = bin + "/prog";
    EXPECT_TRUE(QFile::copy(QCoreApplication::applicationFilePath(), program));
    return orv::test::childLines(program, QStringLiteral("OrvResourceChild.DISABLED_Reports"),
                                 QProcessEnvironment::systemEnvironment(), dir.filePath(tree));
}

} // namespace

TEST(OrvResource, FindsTheTreeEndingInOrvAboveTheProgram) {
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath("myorv/data"));
    orv::test::writeFile(dir, "myorv/a.txt", QByteArray("abc\0def", 7));
    orv::test::writeFile(dir, "myorv/data/d.txt", "data text");
    QString const tree = dir.filePath("myorv");
    QStringList const expected = {
        "source:" + tree,
        "data:" + tree + "/data",
        "build:" + tree + "/x",
        "buildData:" + tree + "/data/x",
        "load:abc", // stops at the NUL byte
        "loadData:data text",
        "log:::OrvResource::load_thumb, relPath 'none'",
        "log:::OrvResource::load_thumb, absPath '" + tree + "/none'",
        "log:::OrvResource::load_thumb,  problems reading strFile '" + tree + "/none'",
    };
    EXPECT_EQ(reportFromCopyIn(dir, "myorv"), expected);
}

TEST(OrvResource, TreeWithoutDataGivesItsOwnPathAndSaysSo) {
    QTemporaryDir dir;
    QString const tree = dir.filePath("orv");
    QStringList const lines = reportFromCopyIn(dir, "orv");
    QStringList const expected = {
        "source:" + tree,
        "dataLog:OrvResource::getOrvSourceDataPath - 'orv/data' path not found !",
        "data:" + tree,
        "build:" + tree + "/x",
        "buildData:" + tree + "/x",
        "load:",
        "loadData:",
        "log:::OrvResource::load_thumb, relPath 'none'",
        "log:::OrvResource::load_thumb, absPath '" + tree + "/none'",
        "log:::OrvResource::load_thumb,  problems reading strFile '" + tree + "/none'",
    };
    EXPECT_EQ(lines, expected);
}

TEST(OrvResource, WithoutTreePathsAreEmptyAndBuildFallsBackOnCurrentDirectory) {
    QTemporaryDir dir;
    QString const cwd = dir.filePath("plain");
    QString const notFound = "log:OrvResource::getOrvSourceDataPath - 'orv' path not found !";
    QStringList const expected = {
        "source:",
        "data:",
        "build:" + cwd + "/x",
        "buildData:" + cwd + "/x",
        "load:",
        "loadData:",
        "log:::OrvResource::load_thumb, relPath 'none'",
        notFound,
        "log:::OrvResource::load_thumb, absPath '" + cwd + "/none'",
        "log:::OrvResource::load_thumb,  problems reading strFile '" + cwd + "/none'",
    };
    EXPECT_EQ(reportFromCopyIn(dir, "plain"), expected);
}

TEST(OrvResourceChild, DISABLED_Reports) {
    using orv::test::report;
    report("source:" + OrvResource::getOrvSourcePath());
    QString data;
    for (QString const &line :
         orv::test::linesLoggedBy([&] { data = OrvResource::getOrvSourceDataPath(); }))
        if (line.contains(QLatin1String("orv/data")))
            report("dataLog:" + line);
    report("data:" + data);
    report("build:" + OrvResource::buildOrvPath("x"));
    report("buildData:" + OrvResource::buildOrvDataPath("x"));
    report("load:" + OrvResource::load("a.txt"));
    report("loadData:" + OrvResource::loadOrvData("d.txt"));
    for (QString const &line : orv::test::linesLoggedBy([] { OrvResource::load("none"); }))
        report("log:" + line);
}
