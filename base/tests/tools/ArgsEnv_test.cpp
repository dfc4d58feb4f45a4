// ArgsEnv_test.cpp: the deep copy of arguments and environment and its moves.
#include "orv/ArgsEnv.h"

#include <gtest/gtest.h>

#include <utility>

namespace orv {
namespace {

TEST(ArgsEnv, FromMainCopiesEveryStringIntoItsOwnBlock) {
    char a0[] = "prog", a1[] = "--key", e0[] = "HOME=/root";
    char *argv[] = {a0, a1, nullptr};
    char *envv[] = {e0, nullptr};
    ArgsEnv args;
    args.fromMain(2, argv, envv);
    a1[2] = 'X'; // the copy doesn't follow the original
    ASSERT_EQ(args.argc, 2);
    EXPECT_STREQ(args.argv[0], "prog");
    EXPECT_STREQ(args.argv[1], "--key");
    EXPECT_STREQ(args.envv[0], "HOME=/root");
    EXPECT_TRUE(args.argv[2] == nullptr && args.envv[1] == nullptr);
}

TEST(ArgsEnv, NoArgumentsGiveVectorsOfOneNullEntry) {
    ArgsEnv args;
    args.fromMain(0, nullptr, nullptr);
    EXPECT_EQ(args.argc, 0);
    ASSERT_TRUE(args.argv != nullptr && args.envv != nullptr);
    EXPECT_TRUE(args.argv[0] == nullptr && args.envv[0] == nullptr);
}

TEST(ArgsEnv, CopyIsDeepAndMoveEmptiesTheSource) {
    char a0[] = "prog";
    char *argv[] = {a0, nullptr};
    ArgsEnv source;
    source.fromMain(1, argv, nullptr);
    ArgsEnv copy(source);
    EXPECT_NE(copy.argv[0], source.argv[0]);
    EXPECT_STREQ(copy.argv[0], "prog");
    char *const block = source.argv[0];
    ArgsEnv moved(std::move(source));
    EXPECT_EQ(moved.argv[0], block);
    EXPECT_EQ(source.argc, 0);
    EXPECT_TRUE(source.argv == nullptr && source.envv == nullptr);
    copy = std::move(moved);
    EXPECT_EQ(copy.argv[0], block);
    moved = copy;
    EXPECT_STREQ(moved.argv[0], "prog");
    EXPECT_NE(moved.argv[0], block);
}

} // namespace
} // namespace orv
