// LogLevel_test.cpp: tags, all-bits names and the simple-level masks.
#include "orv/LogLevel.h"

#include "support/Test.h"

using namespace orv;

TEST(LogLevel, TagFollowsFixedTestOrderFirstHitWins) {
    std::pair<unsigned int, char const *> const rows[] = {
        // clang-format off
        {TEST, "TEST#"}, {DEBUG, "DEBUG"}, {FATAL, "FATAL"}, {ERROR, "ERROR"}, {INFO, "INFO#"},
        {WARN, "WARN#"}, {COMMAND, "CMD##"}, {STATE, "STATE"}, {REQUEST, ">>SND"},
        {EVENT, "EVENT"}, {DESTRUCT, "~DEST"}, {RESPONSE, "<<REC"}, {0x44, "TEST#"},
        {0x22, "DEBUG"}, {FATAL | WARN, "FATAL"}, {ERROR | INFO, "ERROR"}, {INFO | WARN, "INFO#"},
        {WARN | COMMAND, "WARN#"}, {STATE | REQUEST, "STATE"}, {REQUEST | EVENT, ">>SND"},
        {EVENT | DESTRUCT, "EVENT"}, {DESTRUCT | RESPONSE, "~DEST"}, {0x1FFE, "TEST#"},
        {ERROR | LIBRARY_LEVEL_BITS, "ERROR"}, {0, ""}, {0x1, ""}, {LIBRARY_LEVEL_BITS, ""},
        {0x2000, ""},
    }; // clang-format on
    for (auto [flags, tag] : rows)
        EXPECT_STREQ(logLevelToString(flags), tag) << std::hex << flags;
    EXPECT_EQ(getLibraryID(ERROR | LIBRARY_LEVEL_BITS), 100u);
    EXPECT_EQ(getLibraryID(0xFFFF), 0u);
}

TEST(LogLevel, AllBitsNamesEverySetLevelInTableOrderAfreshOnEachCall) {
    char const *const all = " | FATAL | XERROR | WARNING | INFO | DEBUG | TEST | COMMAND | XSEND"
                            " | XRECEIVE | XEVENT | XSTATE | DESTRUCT";
    std::pair<unsigned int, char const *> const rows[] = {
        // clang-format off
        {0, "ZERO"}, {0x1, "LEVEL???"}, {LIBRARY_LEVEL_BITS, "LEVEL???"},
        {0x44, " | XERROR | TEST"}, {WARN | LIBRARY_LEVEL_BITS, " | WARNING"},
        {REQUEST | RESPONSE | EVENT, " | XSEND | XRECEIVE | XEVENT"}, {DEFAULT_LOG_MASK, all},
        {0xFFFFFFFF, all}, {INFO, " | INFO"},
    }; // clang-format on
    for (auto [flags, names] : rows)
        EXPECT_STREQ(logLevelToStringAllBits(flags), names) << std::hex << flags;
}

TEST(LogLevel, SimpleLevelsMapToCumulativeMasks) {
    // 7046 = FATAL | ERROR | COMMAND | REQUEST | RESPONSE | STATE | DESTRUCT, then WARN,
    // INFO | EVENT, TEST and DEBUG join; anything else is the default mask.
    std::pair<unsigned int, unsigned int> const rows[] = {
        {1, 7046}, {2, 7054}, {3, 8094}, {4, 8158}, {5, 8190}, {0, 8190}, {99, 8190}};
    for (auto [simple, mask] : rows)
        EXPECT_EQ(mapToLogLevelFlags(simple), mask) << simple;
    EXPECT_EQ(DEFAULT_LOG_MASK, 8190u);
}
