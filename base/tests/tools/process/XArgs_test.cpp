// XArgs_test.cpp: reading `--key value` lines, with their quote quirks and bad input,
// and `$(key)` replacement.
#include "orv/XArgs.h"

#include "orv/LogLevel.h"

#include "support/Test.h"

#include <map>
#include <vector>

namespace orv {
namespace {

using Attributes = std::map<QString, QString>;

XArgs parsed(QString const &line) {
    XArgs args;
    args.fromString(line);
    return args;
}

TEST(XArgs, FromStringFillsKeysAsTheQuoteStateLeavesThem) {
    struct Row {
        char const *line;
        Attributes expected;
    } const rows[] = {
        {"", {}},
        {"--a \"x y\"", {{"a", "x y"}}},
        {"--a 'x y'", {{"a", "'x y'"}}},
        {"--a \"\"", {{"a", ""}}},
        {"--a 1 --b", {{"a", "1"}, {"b", "NIX"}}},
        {"--a 1 2", {{"a", "2"}}},
        {"--a\t\"p\tq\"", {{"a", "p q"}}},
        // A value before any key goes to the empty key, which the record refuses.
        {"v --a 1", {{"a", "1"}}},
        {"--", {}},
        {"-- x", {}},
        // Unclosed: the rest is still read, its blanks kept.
        {"--a \"x y", {{"a", "x y"}}},
        // The `'` closes what the `"` opened, so the blank before y splits.
        {"--a \"x' y\"", {{"a", "y"}}},
    };
    for (Row const &row : rows)
        EXPECT_EQ(parsed(QString::fromUtf8(row.line)).getAttributes(), row.expected) << row.line;
}

TEST(XArgs, IndexGivesValueOrEmptyAndTruthMeansAttributes) {
    XArgs args;
    EXPECT_FALSE(args);
    args.setKeyOnly(QStringLiteral("k"));
    EXPECT_TRUE(args);
    EXPECT_EQ(args[QStringLiteral("k")], QStringLiteral("NIX"));
    EXPECT_EQ(args[QStringLiteral("missing")], QString());
    EXPECT_EQ(args.toString(), QStringLiteral("XArgs"));
}

TEST(XArgs, BadLinesAreLoggedAsErrors) {
    struct Row {
        char const *line;
        std::vector<QString> errors;
    } const rows[] = {
        {"--a \"x", {"***", "XArgs::from_String_old, string not closed '--a \"x'", "***"}},
        {"--", {"XArgv::from_String_old, -- without key is not allowed !"}},
    };
    for (Row const &row : rows)
        EXPECT_EQ(test::linesLoggedBy([&] { parsed(QString::fromUtf8(row.line)); }, ERROR),
                  row.errors)
            << row.line;
}

TEST(XArgs, ReplacedEnvironmentUsesKeysAndDropsBrokenVariables) {
    XArgs args = parsed(QStringLiteral("--a 1 --b two"));
    struct Row {
        char const *text;
        char const *expected;
    } const rows[] = {
        // clang-format off
        {"x$(a)y$(b)", "x1ytwo"}, {"$(c)", "$(c)"}, {"no variables", "no variables"},
        {"a$b(a)c", "a1c"}, {"cost $5 each", "cost "}, {"x$(a", "x"}, {"", ""},
    }; // clang-format on
    for (Row const &row : rows)
        EXPECT_EQ(args.replacedEnvironment(QString::fromUtf8(row.text)),
                  QString::fromUtf8(row.expected))
            << row.text;
}

} // namespace
} // namespace orv
