// LongBlocks.cpp: the refusal of lengths a Qt 5 array cannot take, and the digest of
// blocks of any length.
#include "tools/xmem/LongBlocks.h"

#include "orv/Log.h"

namespace orv::xmem {

bool fitsQt(quint64 len, quint64 max, char const *what, char const *where) {
    if (len <= max)
        return true;
    ppError("$, length $ does not fit a $ (at most $ bytes)", where, len, what, max);
    return false;
}

MD5 digestOf(char const *p, quint64 len) {
    MD5 md5;
    quint64 constexpr piece = quint64(1) << 30;
    for (quint64 pos = 0; pos < len; pos += piece)
        md5.update(p + pos, static_cast<unsigned int>(qMin(piece, len - pos)));
    md5.finalize();
    return md5;
}

} // namespace orv::xmem
