// ArgsEnv_test.cpp: deep copies of arguments and environment, from main, from a command
// line and from a record; copies that outlive their sources (run it under the address
// sanitizer too), moves, and the console listing.
#include "orv/ArgsEnv.h"
#include "orv/CommandLine.h"
#include "orv/XRecord.h"

#include "support/Test.h"

#include <cstring>
#include <memory>
#include <string>

namespace orv {
namespace {

TEST(ArgsEnv, FromMainCopiesEveryStringSoCopiesOutliveTheSourceAndMovesEmptyIt) {
    auto arg = std::make_unique<std::string>("prog"), key = std::make_unique<std::string>("--k");
    auto env = std::make_unique<std::string>("HOME=/root");
    char *argv[] = {arg->data(), key->data(), nullptr};
    char *envv[] = {env->data(), nullptr};
    ArgsEnv source;
    source.fromMain(2, argv, envv);
    arg.reset();
    key.reset();
    env.reset();
    ASSERT_EQ(source.argc, 2);
    EXPECT_STREQ(source.argv[0], "prog");
    EXPECT_STREQ(source.argv[1], "--k");
    EXPECT_STREQ(source.envv[0], "HOME=/root");
    EXPECT_TRUE(source.argv[2] == nullptr && source.envv[1] == nullptr);
    ArgsEnv copy(source), assigned;
    assigned = source;
    EXPECT_TRUE(copy.argv[0] != source.argv[0] && assigned.argv[0] != source.argv[0]);
    EXPECT_STREQ(copy.envv[0], "HOME=/root");
    EXPECT_STREQ(assigned.argv[1], "--k");
    char *const block = source.argv[0];
    ArgsEnv moved(std::move(source));
    EXPECT_EQ(moved.argv[0], block);
    EXPECT_TRUE(source.argc == 0 && source.argv == nullptr && source.envv == nullptr);
    copy = std::move(moved);
    EXPECT_EQ(copy.argv[0], block);

    ArgsEnv none;
    none.fromMain(0, nullptr, nullptr);
    EXPECT_EQ(none.argc, 0);
    ASSERT_TRUE(none.argv != nullptr && none.envv != nullptr);
    EXPECT_TRUE(none.argv[0] == nullptr && none.envv[0] == nullptr);
}

// Items follow the command in key order, each as --key then its value when not empty.
TEST(ArgsEnv, CommandLineItemsFollowTheCommandAsDashedKeyThenNonEmptyValue) {
    std::pair<char const *, std::vector<std::string>> const rows[] = {
        // clang-format off
        {"cmd", {"cmd"}}, {"cmd --flag", {"cmd", "--flag"}},
        {"cmd --key value", {"cmd", "--key", "value"}},
        {"cmd --a 1 --b --c \"x y\"", {"cmd", "--a", "1", "--b", "--c", "x y"}},
        {"copy --to \"my file\" --force", {"copy", "--force", "--to", "my file"}},
    }; // clang-format on
    for (auto const &[line, items] : rows) {
        SCOPED_TRACE(line);
        CommandLine cmd;
        ASSERT_TRUE(cmd.fromString(line));
        ArgsEnv args;
        args.fromCommandLine(cmd, false);
        ASSERT_EQ(args.argc, int(items.size()) + 1);
        EXPECT_EQ(std::vector<std::string>(args.argv + 1, args.argv + args.argc), items);
        EXPECT_EQ(args.argv[args.argc], nullptr);
        EXPECT_EQ(args.envv, nullptr);
    }
}

TEST(ArgsEnv, CommandLineArgumentsAndRecordValuesAreCutAt32767Bytes) {
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
    // A record replaces the environment, in key order.
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

TEST(ArgsEnv, CommandLineEnvironmentComesFromTheProcessWithoutDoubleQuotes) {
    qputenv("ORV_ARGSENV_PROBE", "\"quoted\"");
    ArgsEnv args;
    args.fromCommandLine(CommandLine(), true);
    qunsetenv("ORV_ARGSENV_PROBE");
    ASSERT_NE(args.envv, nullptr);
    bool found = false;
    for (int i = 0; args.envv[i]; ++i)
        found = found || std::string(args.envv[i]) == "ORV_ARGSENV_PROBE=quoted";
    EXPECT_TRUE(found);
}

TEST(ArgsEnv, ShowsItsArgumentsAndEnvironmentOrThatItIsEmpty) {
    ArgsEnv args;
    EXPECT_EQ(test::coutOf([&] { args.showCout(); }), "ArgsEnv is *EMPTY*\n");
    char a0[] = "p", e0[] = "A=1";
    char *argv[] = {a0, nullptr}, *envv[] = {e0, nullptr};
    args.fromMain(1, argv, envv);
    EXPECT_EQ(test::coutOf([&] { args.showCout(); }),
              "argc:1\n    argv[0] 'p'\nenv variables:1\n    env[0] 'A=1'\n");
}

} // namespace
} // namespace orv
