// XProgram_test.cpp: the help check, the exit-code texts, the log-level words and the
// library names.
#include "orv/OrvTestFramework.h"
#include "orv/OrvVersion.h"
#include "orv/XError.h"
#include "orv/XProgram.h"

#include "support/Test.h"

#include <vector>

namespace orv {
namespace {

TEST(XProgram, HelpMatchesAnyPositionAndLetterCase) {
    char p[] = "prog", h1[] = "--help", h2[] = "--HeLp", x[] = "-help", y[] = "help";
    struct Row {
        std::vector<char *> args;
        bool help;
    } const rows[] = {{{p, h1}, true}, {{h2}, true}, {{p, x, y}, false}, {{}, false}};
    for (Row const &row : rows) {
        std::vector<char *> argv = row.args;
        argv.push_back(nullptr);
        EXPECT_EQ(checkArgsHelp(static_cast<int>(row.args.size()), argv.data()), row.help)
            << row.args.size();
    }
}

TEST(XProgram, ExitCodesHaveTheirTexts) {
    struct Row {
        int code;
        char const *text;
    } const rows[] = {{0, "everything OK"},        {1, "general failure"},
                      {4, "file not found"},       {6, "argument problem (missing, range, ... ?)"},
                      {10, "checksum problem"},    {20, "unknown errorcode"},
                      {30, "main helper problem"}, {-1, "unknown errorcode"}};
    for (Row const &row : rows)
        EXPECT_EQ(exitOrvErrorCodeToString(row.code), row.text) << row.code;
}

TEST(XProgramDeathTest, ExitAppEndsWithStatusOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(exitApp(QStringLiteral("giving up"), 0), testing::ExitedWithCode(1), "");
}

TEST(OrvTestFramework, LogLevelWordsAreCaseSensitive) {
    struct Row {
        char const *word;
        unsigned int mask;
    } const rows[] = {{"debug", 5118},  {"test", 990}, {"info", 926},  {"warn", 910},
                      {"warning", 910}, {"err", 902},  {"error", 902}, {"ERROR", 8190},
                      {"", 8190},       {"Info", 8190}};
    for (Row const &row : rows)
        EXPECT_EQ(OrvTestFramework::stringToLogLevel(row.word), row.mask) << row.word;
}

TEST(XLibBase, IniLibraryLeavesTheErrorTextsInPlace) {
    XLibBase::iniLibrary(0, nullptr, nullptr);
    XLibBase::iniLibrary(0, nullptr, nullptr);
    EXPECT_TRUE(XLibBase::flagInitialized);
    EXPECT_EQ(XErrorMap::getError(150), "orv,truncate");
    EXPECT_EQ(XErrorMap::getError(160), "orv,eof");
}

TEST(OrvLibraries, NamesShareOneWidthAndUnknownIdsShareOneBuffer) {
    // Fixed at the first lookup: a name added later doesn't reach the padded table.
    QByteArray const base = OrvLibraries::libNameByIdent(100);
    QByteArray const geo = OrvLibraries::libNameByIdent(200);
    EXPECT_TRUE(base.startsWith("BASE"));
    EXPECT_EQ(base.size(), geo.size());
    EXPECT_TRUE(geo.startsWith("GEO ") && geo.endsWith('*'));
    EXPECT_EQ(QByteArray(getLibraryName(0x640010)), base);
    char const *first = OrvLibraries::libNameByIdent(7);
    EXPECT_STREQ(first, "UN-KN:7");
    OrvLibraries::libNameByIdent(8);
    EXPECT_STREQ(first, "UN-KN:8");
}

} // namespace
} // namespace orv
