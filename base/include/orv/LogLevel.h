// LogLevel.h: the level words of the log and their text forms.
//
// A level word holds level flags in its low 16 bits and the id of the library
// that logged in its high 16 bits; this library's words carry id 100:
//
//   unsigned int word = orv::ERROR | orv::LIBRARY_LEVEL_BITS;   // 0x640004
//   orv::logLevelToString(word);                                // "ERROR"
#pragma once

#include "orv/OrvGlobal.h"

namespace orv {

enum LogLevel : unsigned int {
    FATAL = 0x0002,
    ERROR = 0x0004,
    WARN = 0x0008,
    INFO = 0x0010,
    DEBUG = 0x0020,
    TEST = 0x0040,
    COMMAND = 0x0080,
    REQUEST = 0x0100,
    RESPONSE = 0x0200,
    EVENT = 0x0400,
    STATE = 0x0800,
    DESTRUCT = 0x1000,
};

constexpr unsigned int LIBRARY_ID = 100;
constexpr unsigned int LIBRARY_LEVEL_BITS = LIBRARY_ID << 16; // 0x640000
constexpr unsigned int DEFAULT_LOG_MASK = 8190;               // all twelve levels

// Coarse verbosity steps; any other value means everything.
enum SIMPLE_LOG_LEVEL : unsigned int {
    SIMPLE_ERROR = 1,
    SIMPLE_WARN = 2,
    SIMPLE_INFO = 3,
    SIMPLE_TEST = 4,
    SIMPLE_DEBUG = 5,
};

inline unsigned int getLibraryID(unsigned int flags) { return flags >> 16; }

// The mask that a SIMPLE_LOG_LEVEL stands for.
ORV_EXPORT unsigned int mapToLogLevelFlags(unsigned int simple);

// The five-letter tag of the first matching level, tested in the order
// TEST, DEBUG, FATAL, ERROR, INFO, WARN, COMMAND, STATE, REQUEST, EVENT,
// DESTRUCT, RESPONSE; "" when no level bit is set.
ORV_EXPORT char const *logLevelToString(unsigned int flags);

// Names of all set levels, " | NAME" each. Returns one static buffer: not for
// two threads at once.
ORV_EXPORT char const *logLevelToStringAllBits(unsigned int flags);

} // namespace orv
