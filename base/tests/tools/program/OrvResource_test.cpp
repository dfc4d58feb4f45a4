// OrvResource_test.cpp: the "orv" tree seen from copies of this program placed inside such
// a tree, inside one without "data", and outside any; and texts read from there.
#include "orv/OrvResource.h"

#include "ChildLines.h"
#include "support/Test.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

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

// What loading a missing file logs: where it looked.
QStringList missingLoad(QString const &base, QString const &between = QString()) {
    QStringList lines{"log:::OrvResource::load_thumb, relPath 'none'"};
    if (!between.isEmpty())
        lines << between;
    return lines << "log:::OrvResource::load_thumb, absPath '" + base + "/none'"
                 << "log:::OrvResource::load_thumb,  problems reading strFile '" + base + "/none'";
}

} // namespace

TEST(OrvResource, FindsTheTreeEndingInOrvAboveTheProgramOrSaysWhatItFallsBackOn) {
    QTemporaryDir dir;
    QDir().mkpath(dir.filePath("myorv/data"));
    orv::test::writeFile(dir, "myorv/a.txt", QByteArray("abc\0def", 7));
    orv::test::writeFile(dir, "myorv/data/d.txt", "data text");
    QString const tree = dir.filePath("myorv"), bare = dir.filePath("orv");
    QString const cwd = dir.filePath("plain");
    EXPECT_EQ(reportFromCopyIn(dir, "myorv"),
              QStringList({"source:" + tree, "data:" + tree + "/data", "build:" + tree + "/x",
                           "buildData:" + tree + "/data/x",
                           "load:abc", // stops at the NUL byte
                           "loadData:data text"}) +
                  missingLoad(tree));
    // A tree without "data" gives its own path and says so.
    EXPECT_EQ(
        reportFromCopyIn(dir, "orv"),
        QStringList({"source:" + bare,
                     "dataLog:OrvResource::getOrvSourceDataPath - 'orv/data' path not found !",
                     "data:" + bare, "build:" + bare + "/x", "buildData:" + bare + "/x",
                     "load:", "loadData:"}) +
            missingLoad(bare));
    // Outside any tree the paths are empty and build falls back on the current directory.
    EXPECT_EQ(
        reportFromCopyIn(dir, "plain"),
        QStringList({"source:", "data:", "build:" + cwd + "/x", "buildData:" + cwd + "/x",
                     "load:", "loadData:"}) +
            missingLoad(cwd, "log:OrvResource::getOrvSourceDataPath - 'orv' path not found !"));
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
