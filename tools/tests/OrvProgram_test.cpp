// OrvProgram_test.cpp: the orv program end to end: help, listing, commands that
// succeed and fail with their exit codes, and the logger options.
#include "support/ChildRun.h"
#include "support/Test.h"

#include <QtCore/QRegularExpression>

namespace {

using orv::test::ChildRun;

ChildRun runOrv(QStringList const &args) { return orv::test::runChild(ORV_PROGRAM, args); }

QString sample(char const *name) { return QStringLiteral(ORV_SAMPLE_DIR "/") + name; }

TEST(OrvProgram, ListingNamesEveryCommandWithItsDescriptionAndGives1) {
    // In alphabetical order; the count below follows the list.
    QStringList const commands{"cmdline", "find",        "format", "get",        "grep",
                               "lines",   "loginfo",     "md5",    "regression", "serve",
                               "tree",    "triangulate", "xml"};
    ChildRun const run = runOrv({});
    EXPECT_EQ(run.exitCode, 1);
    for (QString const &command : commands)
        EXPECT_TRUE(run.output.contains(QRegularExpression("\\b" + command + " \\.+ \\S")))
            << command.toStdString() << "\n"
            << run.output.toStdString();
    EXPECT_TRUE(run.output.contains(QStringLiteral("basic tests:%1").arg(commands.size())));
}

// Each run gives its status and output lines that hold every text of has and none of lacks.
TEST(OrvProgram, CommandsGiveTheirResultAndStatus) {
    QString const fox = sample("fox.txt"), missing = sample("missing.txt"), dir = ORV_SAMPLE_DIR;
    QString const argumentProblem = "EXIT_ORV_ERROR 6 - 'argument problem (missing, range, ... ?)'";
    QString const hit1 = fox + ":1:16:The quick brown fox jumps over the lazy dog";
    struct Row {
        QStringList args;
        int exitCode;
        QStringList has{}, lacks{};
    } const rows[] = {
        {{"md5", "--help"},
         20,
         {"md5 --file F", "--logTrailler false",
          "--logRotate (second | minute | hour | day | month | year)"}},
        {{"md5", "--HELP"}, 20, {"md5 --file F", "--logTrailler false"}},
        {{"nosuch"}, 1, {"test 'nosuch' not found"}},
        {{"md5", "--file", fox}, 0, {"37c4b87edffc5d198ff5a185cee7ee09  "}},
        {{"md5", "--file", missing}, 4, {"EXIT_ORV_ERROR 4 - 'file not found'"}},
        {{"md5"}, 6, {argumentProblem}},
        {{"format", "--text", "a $ b $ c $", "--args", "x,y"}, 0, {"a x b y c $"}},
        {{"cmdline", "--line", "copy --to \"my file\" --force"}, 0, {"to = 'my file'"}},
        {{"cmdline", "--line", "copy --to \"open"}, 9, {"EXIT_ORV_ERROR 9 - 'parsing problem'"}},
        {{"loginfo", "--count", "-1"}, 6, {"--count must not be negative"}},
        // A hit as grep -n -b shows it, with the offset of the hit itself.
        {{"grep", "--file", fox, "--expr", "fox{i} & ~cat"}, 0, {hit1, "grep: 2 hits"}},
        {{"grep", "--file", fox, "--expr", "o.", "--regex", "--scope", "sentence"},
         0,
         {":1:12:The quick", ":1:17:", "grep: 4 hits"}},
        {{"grep", "--file", fox, "--expr", "fox dog"},
         2,
         {"XContentFilter::checkSyntax - 2 Finder tokens not allowed", "bad expression"}},
        {{"grep", "--file", fox, "--expr", "(fox"},
         2,
         {"Brackets open/close must be symmetric +( -) => 0, but we have:1"}},
        {{"grep", "--file", fox, "--expr", "[", "--regex"}, 2, {"missing terminating ]"}},
        {{"grep", "--file", missing, "--expr", "fox"}, 4, {"file '"}},
        {{"grep", "--file", fox, "--expr", "fox", "--scope", "page"}, 6, {"--scope must be"}},
        {{"lines", "--file", fox}, 0, {"encoding: ASCII_ENCODED", "lines: 1, wrapped pieces: 0"}},
        // The log level drops the lower levels.
        {{"loginfo", "--logLevel", "err"},
         0,
         {"loginfo line 1 at ERROR"},
         {"loginfo line 1 at WARN", "loginfo line 1 at INFO", "executing test 'loginfo'"}},
        {{"loginfo"}, 0, {"loginfo line 1 at TEST", "executing test 'loginfo'"}},
        // A tree search: hits as grep prints them, the counters, no progress on a pipe.
        // The folder's other files grow with the samples: the names fix the two searched.
        {{"find", "--dir", dir, "--expr", "fox{i}", "--name", "fox.txt,command.txt"},
         0,
         {sample("command.txt") + ":1:12:copy --from fox.txt", hit1, ", files :2, lines :2, ",
          ", hits :2\n", "2 matching files (0 binary), 0 unreadable folders, 0 unreadable files"},
         {"find: scanning", "\r"}},
        {{"find", "--dir", dir, "--name", "*.xml", "--max-size", "48"},
         0,
         {sample("include-loop.xml"), sample("scene-camera.xml")},
         {sample("scene.xml")}},
        {{"find"}, 6, {"find: missing --dir"}},
        {{"find", "--dir", sample("missing")}, 4, {"find: folder '"}},
        {{"find", "--dir", dir, "--expr", "(fox"}, 2, {"find: bad expression"}},
        {{"find", "--dir", dir, "--min-size", "10q"}, 6, {"find: --min-size: '10q' is no size"}},
        {{"find", "--dir", dir, "--newer", "2024-13-01"},
         6,
         {"find: --newer: '2024-13-01' is no date"}},
        {{"find", "--dir", dir, "--ext", ","}, 6, {"names no extension"}},
        {{"find", "--dir", dir, "--min-size", "2k", "--max-size", "1k"},
         6,
         {"--min-size is above --max-size"}},
        {{"find", "--dir", dir, "--threads", "0"}, 6, {"--threads must be"}},
        {{"xml", "--file", sample("scene.xml"), "--query", "camera"},
         0,
         {"5 elements, 7 attributes, depth 1", "<camera fov=\"60\" >front view</camera>"}},
        {{"xml", "--file", sample("missing.xml")}, 4, {"xml: file '"}},
        {{"xml", "--file", sample("include-loop.xml")}, 7, {"includes itself"}},
        {{"xml", "--file", sample("scene.xml"), "--schema", sample("scene-schema.xml")},
         7,
         {"/scene@demo: <mesh> occurs 2 times, allowed 0..1",
          "/scene@demo: attribute 'scale' = 20 is above 10",
          "/scene@demo: attribute 'mode' = 'slow' is not one of 0,fast,good",
          "3 schema finding(s)"}},
        {{"regression"}, 6, {"regression: give either --file F or --filter P"}},
        {{"regression", "--file", missing}, 4, {"regression: file '"}},
        // A filter runs the commands without arguments.
        {{"regression", "--filter", "md5"},
         1,
         {"TEST [001] 'md5' Error:6 => 'argument problem (missing, range, ... ?)'",
          "~~~ RegressionTests: Total Tests:1, 0 are OK, 1 Failed"}},
        {{"regression", "--filter", "zzz"}, 0, {"*** RegressionTests: All 0 tests are OK"}},
        // Tree files are told apart by their first field: a name's length, or a digest.
        {{"tree", "--file", sample("cube.tree")},
         0,
         {"plain form, 5 entries", "    size + XTree{edge:double, 2.500000}",
          "    ids: int32 [3], 1 2 3 "}},
        {{"tree", "--file", sample("cube.ctree"), "--stats"},
         0,
         {"compressed form, 5 entries", "SIMPLE 3", "    int32[] 1", "bytes 211 (file 155)"}},
        {{"tree", "--file", sample("cube_cut.tree")},
         9,
         {"XDataStream::readVal, type problems <>", "EXIT_ORV_ERROR 9 - 'parsing problem'"}},
        {{"tree", "--file", fox},
         10,
         {"XByteArray::unCompress, CHECKSUM-ERROR", "EXIT_ORV_ERROR 10 - 'checksum problem'"}},
        {{"tree"}, 6, {"tree: missing --file"}},
        {{"triangulate"}, 6, {argumentProblem}},
        {{"triangulate", "--file", missing}, 4, {}},
        {{"triangulate", "--file", dir}, 4, {}},
    };
    for (Row const &row : rows) {
        ChildRun const run = runOrv(row.args);
        SCOPED_TRACE(row.args.join(' ').toStdString() + "\n" + run.output.toStdString());
        EXPECT_EQ(run.exitCode, row.exitCode);
        orv::test::expectHasAndLacks(run.output, row.has, row.lacks);
    }
}

// Each polygon file gives its status and a line holding the text.
TEST(OrvProgram, TriangulateReadsAPolygonFileAndRefusesBadOnes) {
    QTemporaryDir dir;
    struct Row {
        QByteArray content;
        int exitCode;
        QString has;
    } const rows[] = {
        {"0 0\n4 0\n4 3\n0 3\n", 0, "triangles: 2, area: 12.000000, contour area: 12.000000"},
        {"0 3\n4 3\n4 0\n0 0\n0 3\n", 0, "triangles: 2, area: 12.000000"}, // closed, clockwise
        {"0 0\n2 2\n2 0\n0 2\n", 3, "self-intersecting or degenerate: no ear left after 1"},
        {"", 3, "a polygon needs at least 3 points"},
        {"0 0\n1 0\nnan 1\n", 9, "line 3: expected two numbers \"x y\", found 'nan 1'"},
        {QByteArray("0 0\n\xff\x00 1\n", 8), 9, "line 2: expected two numbers"},
    };
    int index = 0;
    for (Row const &row : rows) {
        QString const path = orv::test::writeFile(dir, QString::number(++index), row.content);
        ChildRun const run = runOrv({"triangulate", "--file", path});
        SCOPED_TRACE(row.content.toStdString() + "\n" + run.output.toStdString());
        EXPECT_EQ(run.exitCode, row.exitCode);
        EXPECT_TRUE(run.output.contains(row.has)) << row.has.toStdString();
    }
}

// Every command the listing names runs in the sample regression list, which holds
// seven runs that must fail.
TEST(OrvProgram, TheSampleRegressionListRunsEveryCommand) {
    QRegularExpression const listed(QStringLiteral("\\] +(\\w+) \\.+ "));
    QStringList commands;
    for (QString const &line : runOrv({}).output.split('\n'))
        if (QRegularExpressionMatch const match = listed.match(line); match.hasMatch())
            commands << match.captured(1);
    ASSERT_GE(commands.size(), 9) << commands.join(' ').toStdString();
    ChildRun const run = runOrv({"regression", "--file", sample("regression.txt")});
    EXPECT_EQ(run.exitCode, 1) << run.output.toStdString();
    for (QString const &command : commands)
        EXPECT_TRUE(run.output.contains(QRegularExpression("TEST \\[\\d{3}\\] '" + command + "'")))
            << command.toStdString();
    QRegularExpressionMatch const counts =
        QRegularExpression("~~~ RegressionTests: Total Tests:(\\d+), (\\d+) are OK, 7 Failed\\n")
            .match(run.output);
    ASSERT_TRUE(counts.hasMatch()) << run.output.toStdString();
    EXPECT_EQ(counts.captured(1).toInt(), counts.captured(2).toInt() + 7);
    EXPECT_TRUE(run.output.contains("regression: a regression run can't start another one"));
}

TEST(OrvProgram, LogFileHoldsTheHeaderAndTheLinesAndTheTraillerCanGo) {
    QTemporaryDir dir;
    ChildRun const run =
        runOrv({"loginfo", "--count", "2", "--logDir", dir.path(), "--logFile", "orv.log"});
    EXPECT_EQ(run.exitCode, 0);
    orv::test::expectHasAndLacks(QString::fromLatin1(orv::test::readFile(dir.filePath("orv.log"))),
                                 {"lib:orv tool", "loginfo line 2 at WARN", "'loginfo', result:0"},
                                 {});
    QRegularExpression const bare(QStringLiteral("(^|\\n)loginfo line 1 at INFO\\r?\\n"));
    EXPECT_TRUE(runOrv({"loginfo", "--logTrailler", "false"}).output.contains(bare));
    EXPECT_FALSE(runOrv({"loginfo"}).output.contains(bare));
}

} // namespace
