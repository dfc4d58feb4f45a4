// ArgsEnvCommandLine_test.cpp: ArgsEnv built from a command line, and copies that
// outlive what they were made from (run it under the address sanitizer too).
#include "orv/ArgsEnv.h"
#include "orv/CommandLine.h"
#include "orv/XRecord.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

namespace orv {
namespace {

TEST(ArgsEnvCommandLine, CountsProgramCommandKeysAndNonEmptyValues) {
    struct Row {
        char const *line;
        int argc;
    } const rows[] = {
        {"cmd", 2}, {"cmd --flag", 3}, {"cmd --key value", 4}, {"cmd --a 1 --b --c \"x y\"", 7}};
    for (Row const &row : rows) {
        CommandLine cmd;
        ASSERT_TRUE(cmd.fromString(row.line)) << row.line;
        ArgsEnv args;
        args.fromCommandLine(cmd, false);
        EXPECT_EQ(args.argc, row.argc) << row.line;
        EXPECT_EQ(args.argv[args.argc], nullptr) << row.line;
        EXPECT_EQ(args.envv, nullptr) << row.line;
    }
}

TEST(ArgsEnvCommandLine, ItemsFollowAsDashedKeyThenValue) {
    CommandLine cmd;
    ASSERT_TRUE(cmd.fromString("copy --to \"my file\" --force"));
    ArgsEnv args;
    args.fromCommandLine(cmd, false);
    ASSERT_EQ(args.argc, 5);
    EXPECT_STREQ(args.argv[1], "copy");
    // Items come in key order.
    EXPECT_STREQ(args.argv[2], "--force");
    EXPECT_STREQ(args.argv[3], "--to");
    EXPECT_STREQ(args.argv[4], "my file");
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

TEST(ArgsEnvCommandLine, EmptyObjectShowsItselfAsEmpty) {
    ArgsEnv args;
    testing::internal::CaptureStdout();
    args.showCout();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "ArgsEnv is *EMPTY*\n");
    char a0[] = "p";
    char e0[] = "A=1";
    char *argv[] = {a0, nullptr};
    char *envv[] = {e0, nullptr};
    args.fromMain(1, argv, envv);
    testing::internal::CaptureStdout();
    args.showCout();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "argc:1\n    argv[0] 'p'\nenv variables:1\n    env[0] 'A=1'\n");
}

} // namespace
} // namespace orv
