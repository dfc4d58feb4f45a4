// XProcess_test.cpp: argument splitting, status texts, the result's texts, and real
// child processes run through the blocking run.
#include "orv/XProcess.h"

#include "orv/ArgsEnv.h"
#include "orv/EnvVariables.h"
#include "orv/LogLevel.h"

#include "support/Test.h"

#include <vector>

namespace orv {
namespace {

XProcessResult runShell(XProcess &process, QString const &script) {
    process.setProgram(QStringLiteral("/bin/sh"));
    process.setArguments({QStringLiteral("-c"), script});
    return process.sync_process_result(0);
}

TEST(XProcess, GetArgsSplitsByTheChosenQuote) {
    struct Row {
        char const *line;
        bool singleQuotes;
        QStringList expected;
    } const rows[] = {
        // clang-format off
        {"a \"b c\" d", false, {"a", "b c", "d"}}, {"  a\tb  ", false, {"a", "b"}}, {"", false, {}},
        {"a \"b", false, {"a"}}, {"'a b' 'c'", true, {"a b", "", "c"}}, {"'\"x\"'", true, {"x"}},
        {"a b", true, {"a b"}},
    }; // clang-format on
    for (Row const &row : rows)
        EXPECT_EQ(XProcess::getArgs(QString::fromUtf8(row.line), row.singleQuotes), row.expected)
            << row.line;
}

TEST(XProcess, ErrorAndStateTextsCoverEveryValue) {
    char const *const errors[] = {"FailedToStart", "Crashed",      "Timedout",       "ReadError",
                                  "FailedToStart", "UnknownError", "UNKNOWN ERROR:6"};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(XProcess::processErrorToString(static_cast<QProcess::ProcessError>(i)),
                  QString::fromUtf8(errors[i]));
    char const *const states[] = {"NOT RUNNING", "STARTING", "RUNNING", "UNKNOWN-PROCESS-STATE:3"};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(XProcess::processStateToString(static_cast<QProcess::ProcessState>(i)),
                  QString::fromUtf8(states[i]));
    EXPECT_EQ(XProcess().toString(), QStringLiteral("[0], NOT RUNNING"));
}

TEST(XProcessResult, GetOutCutsOneNewlineOnly) {
    struct Row {
        char const *text;
        char const *expected;
    } const rows[] = {
        {"x\n", "x"}, {"x\r\n", "x\r"}, {"x", "x"}, {"x\n\n", "x\n"}, {"", ""},
    };
    for (Row const &row : rows) {
        XProcessResult result;
        result.output = result.outputError = QString::fromUtf8(row.text);
        EXPECT_EQ(result.get_out(), QString::fromUtf8(row.expected)) << row.text;
        EXPECT_EQ(result.get_err_out(), QString::fromUtf8(row.expected)) << row.text;
    }
    XProcessResult result;
    result.output = QStringLiteral("abcdefgh\n");
    EXPECT_EQ(result.get_out_elided(2, 2), QStringLiteral("ab...gh"));
}

TEST(XProcessResult, ShowLogsExitCodeOrOutput) {
    struct Row {
        int exitCode;
        char const *output;
        char const *outputError;
        bool withOutput;
        std::vector<QString> expected;
    } const rows[] = {
        {3, "out", "err", true, {"XProcessResult, exit code:3"}},
        {0, "out", "err", true, {"out", "XProcessResult DONE"}},
        {0, "", "err", true, {"err", "XProcessResult DONE"}},
        {0, "out", "err", false, {"XProcessResult DONE"}},
    };
    for (Row const &row : rows) {
        XProcessResult result;
        result.exitCode = row.exitCode;
        result.output = QString::fromUtf8(row.output);
        result.outputError = QString::fromUtf8(row.outputError);
        EXPECT_EQ(test::linesLoggedBy([&] { result.show(0, row.withOutput); }), row.expected)
            << row.exitCode << row.output;
    }
}

TEST(XProcess, RunGivesOutputsAndExitCodeAndFiresTheListenersOfEveryRun) {
    XProcess process;
    process.setProgram(QStringLiteral("/bin/sh"));
    process.setArgs(QStringLiteral("-c \"echo out; echo err >&2; exit 3\""), false);
    XProcessResult const result = process.sync_process_result(0);
    EXPECT_EQ(result.output, QStringLiteral("out\n"));
    EXPECT_EQ(result.outputError, QStringLiteral("err\n"));
    EXPECT_EQ(result.get_out(), QStringLiteral("out"));
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_FALSE(result.is_valid());
    EXPECT_FALSE(result);
    EXPECT_EQ(result.processState, QProcess::NotRunning);
    EXPECT_EQ(result.processError, QProcess::UnknownError);
    EXPECT_GT(process.processId_past(), 0);
    EXPECT_TRUE(process.isNotRunning());
    EXPECT_GT(process.mcProcessTimeStart(), 0u);
    // A second run fires the listeners of both runs.
    EXPECT_EQ(runShell(process, "exit 5").exitCode, 5);
    EXPECT_EQ(process.listenerFinished.size(), 2u);
    EXPECT_EQ(process.listenerState.size(), 2u);
    // A command line given to start is split into program and arguments.
    XProcess command;
    command.start(QStringLiteral("/bin/sh -c \"exit 4\""));
    ASSERT_TRUE(command.waitForFinished(10000));
    EXPECT_EQ(command.exitCode(), 4);
}

TEST(XProcess, MissingProgramReadsAsValidAndOnlyTheErrorTells) {
    XProcess process;
    std::vector<QProcess::ProcessError> seen;
    process.listenerProcessError.addListener([&](QProcess::ProcessError e) { seen.push_back(e); });
    process.setProgram(QStringLiteral("/nonexistent/orv-no-such-program"));
    XProcessResult result;
    std::vector<QString> const errors =
        test::linesLoggedBy([&] { result = process.sync_process_result(0); }, ERROR);
    EXPECT_EQ(errors,
              std::vector<QString>{"XProcess::sync_process_result, waitForStarted PROBLEMS"});
    EXPECT_EQ(result.processError, QProcess::FailedToStart);
    EXPECT_EQ(process.processErrorAsString(), QStringLiteral("FailedToStart"));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.is_valid());
    EXPECT_EQ(seen, std::vector<QProcess::ProcessError>{QProcess::FailedToStart});
}

TEST(XProcess, AddEnvStartsFromTheSystemEnvironmentEachTime) {
    struct Row {
        std::vector<char const *> lines;
        char const *expected;
    } const rows[] = {
        // clang-format off
        {{"--ORV_PX_A \"a b\""}, "a b|"}, {{"--ORV_PX_A 1 --ORV_PX_B"}, "1|NIX"},
        {{"--ORV_PX_A 1", "--ORV_PX_B 2"}, "|2"},
    }; // clang-format on
    for (Row const &row : rows) {
        XProcess process;
        for (char const *line : row.lines)
            process.addEnv(QString::fromUtf8(line));
        EXPECT_EQ(runShell(process, "printf '%s|%s' \"$ORV_PX_A\" \"$ORV_PX_B\"").output,
                  QString::fromUtf8(row.expected))
            << row.lines.front();
    }
}

TEST(XProcess, AddToPathPutsDirFirstInTheCallersPath) {
    QString const before = getEnv(QStringLiteral("PATH"));
    XProcess process;
    process.addToPath(QString());
    EXPECT_EQ(getEnv(QStringLiteral("PATH")), before);
    process.addToPath(QStringLiteral("/opt/orv-px"));
    EXPECT_EQ(getEnv(QStringLiteral("PATH")), QStringLiteral("/opt/orv-px:") + before);
    setEnv(QStringLiteral("PATH"), before);
}

TEST(XProcess, DescriptionsAndConsoleSwitchOnlyLog) {
    XProcess process;
    process.setProgram(QStringLiteral("/bin/echo"));
    process.setArgs(QStringLiteral("a \"b c\""), false);
    std::vector<QString> const expected{
        "XProcess, program: </bin/echo>", "arguments:2", "<a>", "<b c>", "Args:1", "<x>",
        "XProcess::setWindowsConsoleWin"};
    EXPECT_EQ(test::linesLoggedBy([&] {
                  process.show_before_running(0, false);
                  XProcess::showArgs(0, {QStringLiteral("x")});
                  process.setWindowsConsoleWin();
              }),
              expected);
    EXPECT_TRUE(process.isNotRunning());
}

TEST(ArgsEnv, StartProgramBuildsAProcessButStartsNothing) {
    XProcess::atomicFlagDebug = true;
    std::vector<QString> const lines = test::linesLoggedBy([] { ArgsEnv().startProgram(); });
    XProcess::atomicFlagDebug = false;
    EXPECT_EQ(lines, std::vector<QString>{"ArgsEnv::startProgram"});
}

} // namespace
} // namespace orv
