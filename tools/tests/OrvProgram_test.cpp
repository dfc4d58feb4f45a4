// OrvProgram_test.cpp: the orv program end to end: help, listing, commands that
// succeed and fail with their exit codes, and the logger options.
#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>

namespace {

struct ChildRun {
    int exitCode = -1;
    QString output;
};

ChildRun runOrv(QStringList const &args) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(ORV_PROGRAM, args);
    ChildRun run;
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    run.output = QString::fromUtf8(process.readAll());
    return run;
}

QString sample(char const *name) { return QStringLiteral(ORV_SAMPLE_DIR "/") + name; }

TEST(OrvProgram, ListingNamesEveryCommandWithItsDescriptionAndGives1) {
    ChildRun const run = runOrv({});
    EXPECT_EQ(run.exitCode, 1);
    for (char const *command : {"cmdline", "format", "loginfo", "md5", "tree"}) {
        QRegularExpression const line(QStringLiteral("\\b%1 \\.+ \\S").arg(command));
        EXPECT_TRUE(run.output.contains(line)) << command << "\n" << run.output.toStdString();
    }
    EXPECT_TRUE(run.output.contains("basic tests:5"));
}

// Each run gives its status and output lines that hold every text of has and none of lacks.
TEST(OrvProgram, CommandsGiveTheirResultAndStatus) {
    struct Row {
        QStringList args;
        int exitCode;
        QStringList has, lacks;
    } const rows[] = {
        {{"md5", "--help"}, 20, {"md5 --file F", "--logTrailler false"}, {}},
        {{"md5", "--HELP"}, 20, {"md5 --file F", "--logTrailler false"}, {}},
        {{"nosuch"}, 1, {"test 'nosuch' not found"}, {}},
        {{"md5", "--file", sample("fox.txt")}, 0, {"37c4b87edffc5d198ff5a185cee7ee09  "}, {}},
        {{"md5", "--file", sample("missing.txt")}, 4, {"EXIT_ORV_ERROR 4 - 'file not found'"}, {}},
        {{"md5"}, 6, {"EXIT_ORV_ERROR 6 - 'argument problem (missing, range, ... ?)'"}, {}},
        {{"format", "--text", "a $ b $ c $", "--args", "x,y"}, 0, {"a x b y c $"}, {}},
        {{"cmdline", "--line", "copy --to \"my file\" --force"}, 0, {"to = 'my file'"}, {}},
        {{"cmdline", "--line", "copy --to \"open"},
         9,
         {"EXIT_ORV_ERROR 9 - 'parsing problem'"},
         {}},
        {{"loginfo", "--count", "-1"}, 6, {"--count must not be negative"}, {}},
        // The log level drops the lower levels.
        {{"loginfo", "--logLevel", "err"},
         0,
         {"loginfo line 1 at ERROR"},
         {"loginfo line 1 at WARN", "loginfo line 1 at INFO", "executing test 'loginfo'"}},
        {{"loginfo"}, 0, {"loginfo line 1 at TEST", "executing test 'loginfo'"}, {}},
        // Tree files are told apart by their first field: a name's length, or a digest.
        {{"tree", "--file", sample("cube.tree")},
         0,
         {"plain form, 5 entries", "    size + XTree{edge:double, 2.500000}",
          "    ids: int32 [3], 1 2 3 "},
         {}},
        {{"tree", "--file", sample("cube.ctree"), "--stats"},
         0,
         {"compressed form, 5 entries", "SIMPLE 3", "    int32[] 1", "bytes 211 (file 155)"},
         {}},
        {{"tree", "--file", sample("cube_cut.tree")},
         9,
         {"XDataStream::readVal, type problems <>", "EXIT_ORV_ERROR 9 - 'parsing problem'"},
         {}},
        {{"tree", "--file", sample("fox.txt")},
         10,
         {"XByteArray::unCompress, CHECKSUM-ERROR", "EXIT_ORV_ERROR 10 - 'checksum problem'"},
         {}},
        {{"tree"}, 6, {"tree: missing --file"}, {}},
    };
    for (Row const &row : rows) {
        ChildRun const run = runOrv(row.args);
        SCOPED_TRACE(row.args.join(' ').toStdString() + "\n" + run.output.toStdString());
        EXPECT_EQ(run.exitCode, row.exitCode);
        for (QString const &text : row.has)
            EXPECT_TRUE(run.output.contains(text)) << text.toStdString();
        for (QString const &text : row.lacks)
            EXPECT_FALSE(run.output.contains(text)) << text.toStdString();
    }
}

TEST(OrvProgram, LogFileHoldsTheHeaderAndTheLines) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    ChildRun const run =
        runOrv({"loginfo", "--count", "2", "--logDir", dir.path(), "--logFile", "orv.log"});
    EXPECT_EQ(run.exitCode, 0);
    QFile file(dir.filePath("orv.log"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << run.output.toStdString();
    QString const log = QString::fromLatin1(file.readAll());
    EXPECT_TRUE(log.contains("lib:orv tool")) << log.toStdString();
    EXPECT_TRUE(log.contains("loginfo line 2 at WARN"));
    EXPECT_TRUE(log.contains("'loginfo', result:0"));
}

TEST(OrvProgram, WithoutTraillerConsoleLinesAreTheBareText) {
    QRegularExpression const bare(QStringLiteral("(^|\\n)loginfo line 1 at INFO\\r?\\n"));
    EXPECT_TRUE(runOrv({"loginfo", "--logTrailler", "false"}).output.contains(bare));
    EXPECT_FALSE(runOrv({"loginfo"}).output.contains(bare));
}

} // namespace
