// ByteSearch.h: finding a literal, or the first of several, in raw bytes, exactly or
// with ASCII letters folded. Not part of the library's interface.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <cstddef>

namespace orv::find {

// The first position in [from, size) where needle starts, or size when none does.
// With foldAscii, ASCII letters match in either case; other bytes match exactly.
quint64 searchBytes(char const *data, quint64 size, quint64 from, QByteArray const &needle,
                    bool foldAscii);

struct ByteNeedle {
    QByteArray bytes;
    bool foldAscii = false;
};

// Whether the needle's first byte is seldom frequent in text (not a space, nor a
// lowercase letter, nor a letter of either case when folded): searchAnyBytes passes
// over most blocks on the first bytes alone when all its needles start so; otherwise
// each needle on its own with searchBytes is faster.
bool startsRarely(ByteNeedle const &needle);

// The most needles searchAnyBytes tests in one vector pass; callers group more.
constexpr size_t MAX_NEEDLES_AT_ONCE = 8;

// The first position in [from, size) where any of count needles starts, or size when
// none does. One pass over the bytes for up to MAX_NEEDLES_AT_ONCE needles, unless one
// starts with a letter folded: then one search per needle.
quint64 searchAnyBytes(char const *data, quint64 size, quint64 from, ByteNeedle const *needles,
                       size_t count);

} // namespace orv::find
