// LogLevel.cpp: text forms of level words and the simple-level masks.
#include "orv/LogLevel.h"

#include <cstring>

namespace orv {

namespace {

struct LevelName {
    unsigned int bit;
    char const *tag;
};

// logLevelToString tests in this order; the first hit wins, so a word with
// both TEST and ERROR reads as a test line.
constexpr LevelName tagOrder[] = {
    {TEST, "TEST#"},    {DEBUG, "DEBUG"}, {FATAL, "FATAL"},    {ERROR, "ERROR"},
    {INFO, "INFO#"},    {WARN, "WARN#"},  {COMMAND, "CMD##"},  {STATE, "STATE"},
    {REQUEST, ">>SND"}, {EVENT, "EVENT"}, {DESTRUCT, "~DEST"}, {RESPONSE, "<<REC"},
};

constexpr LevelName allBitsNames[] = {
    {FATAL, " | FATAL"},     {ERROR, " | XERROR"},  {WARN, " | WARNING"},
    {INFO, " | INFO"},       {DEBUG, " | DEBUG"},   {TEST, " | TEST"},
    {COMMAND, " | COMMAND"}, {REQUEST, " | XSEND"}, {RESPONSE, " | XRECEIVE"},
    {EVENT, " | XEVENT"},    {STATE, " | XSTATE"},  {DESTRUCT, " | DESTRUCT"},
};

} // namespace

unsigned int mapToLogLevelFlags(unsigned int simple) {
    switch (simple) {
    case SIMPLE_ERROR: return 7046;
    case SIMPLE_WARN: return 7054;
    case SIMPLE_INFO: return 8094;
    case SIMPLE_TEST: return 8158;
    default: return 8190;
    }
}

char const *logLevelToString(unsigned int flags) {
    for (LevelName const &level : tagOrder)
        if (flags & level.bit)
            return level.tag;
    return "";
}

char const *logLevelToStringAllBits(unsigned int flags) {
    static char buffer[1024];
    if (flags == 0)
        return "ZERO";
    buffer[0] = '\0';
    for (LevelName const &level : allBitsNames)
        if (flags & level.bit)
            std::strcat(buffer, level.tag);
    return buffer[0] ? buffer : "LEVEL???";
}

} // namespace orv
