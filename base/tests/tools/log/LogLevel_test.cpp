// LogLevel_test.cpp: tags, all-bits names and the simple-level masks.
#include "orv/LogLevel.h"

#include <gtest/gtest.h>

using namespace orv;

TEST(LogLevel, TagFollowsFixedTestOrderFirstHitWins) {
    struct Row {
        unsigned int flags;
        char const *tag;
    } const rows[] = {{TEST, "TEST#"},
                      {DEBUG, "DEBUG"},
                      {FATAL, "FATAL"},
                      {ERROR, "ERROR"},
                      {INFO, "INFO#"},
                      {WARN, "WARN#"},
                      {COMMAND, "CMD##"},
                      {STATE, "STATE"},
                      {REQUEST, ">>SND"},
                      {EVENT, "EVENT"},
                      {DESTRUCT, "~DEST"},
                      {RESPONSE, "<<REC"},
                      {0x44, "TEST#"},
                      {0x22, "DEBUG"},
                      {FATAL | WARN, "FATAL"},
                      {ERROR | INFO, "ERROR"},
                      {INFO | WARN, "INFO#"},
                      {WARN | COMMAND, "WARN#"},
                      {STATE | REQUEST, "STATE"},
                      {REQUEST | EVENT, ">>SND"},
                      {EVENT | DESTRUCT, "EVENT"},
                      {DESTRUCT | RESPONSE, "~DEST"},
                      {0x1FFE, "TEST#"},
                      {ERROR | LIBRARY_LEVEL_BITS, "ERROR"},
                      {0, ""},
                      {0x1, ""},
                      {LIBRARY_LEVEL_BITS, ""},
                      {0x2000, ""}};
    for (auto const &row : rows)
        EXPECT_STREQ(logLevelToString(row.flags), row.tag) << std::hex << row.flags;
}

TEST(LogLevel, AllBitsNamesEverySetLevelInTableOrderAfreshOnEachCall) {
    char const *const all = " | FATAL | XERROR | WARNING | INFO | DEBUG | TEST | COMMAND | XSEND"
                            " | XRECEIVE | XEVENT | XSTATE | DESTRUCT";
    struct Row {
        unsigned int flags;
        char const *names;
    } const rows[] = {{0, "ZERO"},
                      {0x1, "LEVEL???"},
                      {LIBRARY_LEVEL_BITS, "LEVEL???"},
                      {0x44, " | XERROR | TEST"},
                      {WARN | LIBRARY_LEVEL_BITS, " | WARNING"},
                      {REQUEST | RESPONSE | EVENT, " | XSEND | XRECEIVE | XEVENT"},
                      {DEFAULT_LOG_MASK, all},
                      {0xFFFFFFFF, all},
                      {INFO, " | INFO"}};
    for (auto const &row : rows)
        EXPECT_STREQ(logLevelToStringAllBits(row.flags), row.names) << std::hex << row.flags;
}

TEST(LogLevel, SimpleLevelsMapToCumulativeMasks) {
    unsigned int const base = FATAL | ERROR | COMMAND | REQUEST | RESPONSE | STATE | DESTRUCT;
    struct Row {
        unsigned int simple;
        unsigned int mask;
        unsigned int bits;
    } const rows[] = {{1, 7046, base},
                      {2, 7054, base | WARN},
                      {3, 8094, base | WARN | INFO | EVENT},
                      {4, 8158, base | WARN | INFO | EVENT | TEST},
                      {5, 8190, base | WARN | INFO | EVENT | TEST | DEBUG},
                      {0, 8190, DEFAULT_LOG_MASK},
                      {99, 8190, DEFAULT_LOG_MASK}};
    for (auto const &row : rows) {
        EXPECT_EQ(mapToLogLevelFlags(row.simple), row.mask) << row.simple;
        EXPECT_EQ(mapToLogLevelFlags(row.simple), row.bits) << row.simple;
    }
}

TEST(LogLevel, LibraryIdSitsInTheHighHalf) {
    EXPECT_EQ(LIBRARY_LEVEL_BITS, 0x640000u);
    EXPECT_EQ(getLibraryID(ERROR | LIBRARY_LEVEL_BITS), 100u);
    EXPECT_EQ(getLibraryID(0xFFFF), 0u);
}
