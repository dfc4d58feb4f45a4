// LongBlocks.h: what the memory classes share for blocks whose length needs 64 bits.
// Qt 5's arrays and strings have int sizes and MD5 takes 32-bit lengths, so every
// 64-bit length is refused (never cut) on its way into a Qt array, digested in
// pieces, and dumped straight from the bytes. Private to the library.
#pragma once

#include "orv/MD5.h"

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <limits>

namespace orv::xmem {

// Room is left for the array's header and its terminating 0.
constexpr quint64 MAX_QBYTEARRAY_LENGTH = std::numeric_limits<int>::max() - 64;
// A QString holds two bytes per character; UTF-8 or Latin-1 bytes never give more
// characters than there are bytes.
constexpr quint64 MAX_QSTRING_BYTES = MAX_QBYTEARRAY_LENGTH / 2;
// QSharedMemory::create takes an int.
constexpr quint64 MAX_QSHAREDMEMORY_LENGTH = std::numeric_limits<int>::max();

// True when len is at most max; otherwise an ERROR line
// "<where>, length <len> does not fit a <what> (at most <max> bytes)" and false.
bool fitsQt(quint64 len, quint64 max, char const *what, char const *where);

inline bool fitsQByteArray(quint64 len, char const *where) {
    return fitsQt(len, MAX_QBYTEARRAY_LENGTH, "QByteArray", where);
}

inline bool fitsQString(quint64 len, char const *where) {
    return fitsQt(len, MAX_QSTRING_BYTES, "QString", where);
}

// The finished digest of len bytes, of any length.
MD5 digestOf(char const *p, quint64 len);

// ArrayTools::qByteArrayToString over bytes that need not fit a QByteArray.
QString dumpBytes(char const *p, quint64 size, quint64 head, quint64 tail, bool asc, bool hex,
                  bool md5, quint64 limit, unsigned int group, QString const &separator);

} // namespace orv::xmem
