// ByteSearch.h: finding a literal in raw bytes, exactly or with ASCII letters folded.
// Not part of the library's interface.
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

namespace orv::find {

// The first position in [from, size) where needle starts, or size when none does.
// With foldAscii, ASCII letters match in either case; other bytes match exactly.
quint64 searchBytes(char const *data, quint64 size, quint64 from, QByteArray const &needle,
                    bool foldAscii);

} // namespace orv::find
