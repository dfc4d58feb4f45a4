// Log.h: the message family, one group of functions per level.
//
//   orv::ppInfo("loaded $ rows from '$'", rows, path);
//   orv::ppDebug(4, "detail $", value);        // indented by 4 blanks
//   orv::ppLog(orv::WARN, 0, "low disk: $", formatBytes(free));
//
// Formatting happens on the calling thread, also for levels the mask drops.
// The QString forms take the text as it stands: `$` means nothing there.
#pragma once

#include "orv/LogMessage.h"
#include "orv/Logger.h"

#include <type_traits>

namespace orv {

template <typename... Args>
void ppLog(unsigned int level, unsigned int space, char const *format, Args const &...args) {
    Logger::log(LogMessageString::create(format, args...), level, space);
}

inline void ppLog(unsigned int level, unsigned int space, QString const &text) {
    Logger::log(LogMessageString::create(text), level, space);
}

// The indented form takes any integer, so that a literal 0 doesn't read as a null format.
#define ORV_DEFINE_LOG_GROUP(name, levelBit)                                                       \
    template <typename... Args> void name(char const *format, Args const &...args) {               \
        ppLog(levelBit, 0, format, args...);                                                       \
    }                                                                                              \
    template <typename Space, typename... Args,                                                    \
              typename = std::enable_if_t<std::is_integral_v<Space>>>                              \
    void name(Space space, char const *format, Args const &...args) {                              \
        ppLog(levelBit, static_cast<unsigned int>(space), format, args...);                        \
    }                                                                                              \
    inline void name(QString const &text) { ppLog(levelBit, 0, text); }                            \
    inline void name(unsigned int space, QString const &text) { ppLog(levelBit, space, text); }

ORV_DEFINE_LOG_GROUP(ppFatal, FATAL)
ORV_DEFINE_LOG_GROUP(ppError, ERROR)
ORV_DEFINE_LOG_GROUP(ppWarning, WARN)
ORV_DEFINE_LOG_GROUP(ppInfo, INFO)
ORV_DEFINE_LOG_GROUP(ppDebug, DEBUG)
ORV_DEFINE_LOG_GROUP(ppTest, TEST)
ORV_DEFINE_LOG_GROUP(ppCommand, COMMAND)
ORV_DEFINE_LOG_GROUP(ppRequest, REQUEST)
ORV_DEFINE_LOG_GROUP(ppResponse, RESPONSE)
ORV_DEFINE_LOG_GROUP(ppEvent, EVENT)
ORV_DEFINE_LOG_GROUP(ppState, STATE)
ORV_DEFINE_LOG_GROUP(ppDestruct, DESTRUCT)

#undef ORV_DEFINE_LOG_GROUP

} // namespace orv
