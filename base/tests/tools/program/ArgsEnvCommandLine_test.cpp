// ArgsEnvCommandLine_test.cpp: ArgsEnv built from a command line, and copies that
// outlive what they were made from (run it under the address sanitizer too).
#include "orv/ArgsEnv.h"
#include "orv/CommandLine.h"
#include "orv/XRecord.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace orv {
namespace {

// Items follow the command in key order, each as --key then its value when not empty.
TEST(ArgsEnvCommandLine, ItemsFollowTheCommandAsDashedKeyThenNonEmptyValue) {
    struct Row {
        char const *line;
        std::vector<std::string> items; // argv from 1 on
    } const rows[] = {
        {"cmd", {"cmd"}},
        {"cmd --flag", {"cmd", "--flag"}},
        {"cmd --key value", {"cmd", "--key", "value"}},
        {"cmd --a 1 --b --c \"x y\"", {"cmd", "--a", "1", "--b", "--c", "x y"}},
        {"copy --to \"my file\" --force", {"copy", "--force", "--to", "my file"}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.line);
        CommandLine cmd;
        ASSERT_TRUE(cmd.fromString(row.line));
        ArgsEnv args;
        args.fromCommandLine(cmd, false);
        ASSERT_EQ(args.argc, int(row.items.size()) + 1);
        EXPECT_EQ(std::vector<std::string>(args.argv + 1, args.argv + args.argc), row.items);
        EXPECT_EQ(args.argv[args.argc], nullptr);
        EXPECT_EQ(args.envv, nullptr);
    }
}

TEST(ArgsEnvCommandLine, CutsAnArgumentAt32767Bytes) {
    CommandLine cmd;
    cmd.setCommand(QStringLiteral("cmd"));
    cmd.setString(QStringLiteral("long"), QString(40000, 'x'));
    cmd.setString(QStringLiteral("edge"), QString(32767, 'y'));
    ArgsEnv args;
    args.fromCommandLine(cmd, false);
    ASSERT_EQ(args.argc, 6);
    EXPECT_EQ(std::strlen(args.argv[3]), 32767u); // the value of "edge", whole
    EXPECT_EQ(std::strlen(args.argv[5]), 32767u); // the value of "long", cut
    EXPECT_EQ(args.argv[5][32766], 'x');
}

TEST(ArgsEnvCommandLine, EnvironmentComesFromTheProcessWithoutDoubleQuotes) {
    qputenv("ORV_ARGSENV_PROBE", "\"quoted\"");
    CommandLine cmd;
    ASSERT_TRUE(cmd.fromString("cmd"));
    ArgsEnv args;
    args.fromCommandLine(cmd, true);
    ASSERT_NE(args.envv, nullptr);
    bool found = false;
    for (int i = 0; args.envv[i]; ++i)
        found = found || std::string(args.envv[i]) == "ORV_ARGSENV_PROBE=quoted";
    EXPECT_TRUE(found);
    qunsetenv("ORV_ARGSENV_PROBE");
}

TEST(ArgsEnvCommandLine, RecordReplacesTheEnvironmentInKeyOrderAndCutsLongValues) {
    ArgsEnv args;
    args.fromCommandLine(CommandLine(), true);
    XRecord record;
    record.setString(QStringLiteral("B"), QStringLiteral("2"));
    record.setString(QStringLiteral("A"), QString());
    record.setString(QStringLiteral("C"), QString(40000, 'z'));
    args.fromRecord(record);
    ASSERT_NE(args.envv, nullptr);
    EXPECT_STREQ(args.envv[0], "A=");
    EXPECT_STREQ(args.envv[1], "B=2");
    EXPECT_EQ(std::strlen(args.envv[2]), 32767u);
    EXPECT_EQ(args.envv[3], nullptr);
}

TEST(ArgsEnvCommandLine, CopiesOutliveTheirSources) {
    auto arg = std::make_unique<std::string>("program");
    auto env = std::make_unique<std::string>("NAME=value");
    char *argv[] = {arg->data(), nullptr};
    char *envv[] = {env->data(), nullptr};
    auto source = std::make_unique<ArgsEnv>();
    source->fromMain(1, argv, envv);
    arg.reset();
    env.reset();
    ArgsEnv copy(*source);
    ArgsEnv assigned;
    assigned = *source;
    source.reset();
    EXPECT_STREQ(copy.argv[0], "program");
    EXPECT_STREQ(copy.envv[0], "NAME=value");
    EXPECT_STREQ(assigned.argv[0], "program");
    EXPECT_STREQ(assigned.envv[0], "NAME=value");
}

TEST(ArgsEnvCommandLine, ShowsItsArgumentsAndEnvironmentOrThatItIsEmpty) {
    ArgsEnv args;
    auto shown = [&args] {
        testing::internal::CaptureStdout();
        args.showCout();
        return testing::internal::GetCapturedStdout();
    };
    EXPECT_EQ(shown(), "ArgsEnv is *EMPTY*\n");
    char a0[] = "p";
    char e0[] = "A=1";
    char *argv[] = {a0, nullptr};
    char *envv[] = {e0, nullptr};
    args.fromMain(1, argv, envv);
    EXPECT_EQ(shown(), "argc:1\n    argv[0] 'p'\nenv variables:1\n    env[0] 'A=1'\n");
}

} // namespace
} // namespace orv
