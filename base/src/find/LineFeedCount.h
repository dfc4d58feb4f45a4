// LineFeedCount.h: counting the line feeds of a stretch of bytes, and
// finding the start of the line that holds a position. Not part of the library's
// interface.
#pragma once

#include <QtCore/QtGlobal>

namespace orv::find {

// The LFs in [from, to) of data.
quint64 countLineFeeds(char const *data, quint64 from, quint64 to);

// The first byte of the line that holds pos, looking back no further than from.
inline quint64 lineStartOf(char const *data, quint64 from, quint64 pos) {
    while (pos > from && data[pos - 1] != '\n')
        --pos;
    return pos;
}

} // namespace orv::find
