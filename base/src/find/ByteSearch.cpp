// ByteSearch.cpp: literal search in bytes. Sixteen positions at a time are tested on
// the needle's first and last byte (SSE2, part of every x86-64), and only where both
// agree are the bytes between compared; memchr serves one-byte needles.
#include "find/ByteSearch.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace orv::find {

namespace {

bool isAsciiLetter(unsigned char c) { return ((c | 0x20) >= 'a') && ((c | 0x20) <= 'z'); }

// The bit that folding ignores in this byte: 0x20 for letters, none for the rest.
unsigned char foldMask(unsigned char c, bool fold) { return fold && isAsciiLetter(c) ? 0x20 : 0; }

bool equalAt(unsigned char const *p, unsigned char const *needle, quint64 m, bool fold) {
    if (!fold)
        return std::memcmp(p, needle, m) == 0;
    for (quint64 i = 0; i < m; ++i) {
        unsigned char const mask = foldMask(needle[i], true);
        if ((p[i] | mask) != (needle[i] | mask))
            return false;
    }
    return true;
}

quint64 searchScalar(unsigned char const *data, quint64 size, quint64 from,
                     unsigned char const *needle, quint64 m, bool fold) {
    for (quint64 i = from; i + m <= size; ++i)
        if (equalAt(data + i, needle, m, fold))
            return i;
    return size;
}

} // namespace

quint64 searchBytes(char const *dataIn, quint64 size, quint64 from, QByteArray const &needleIn,
                    bool fold) {
    auto const *data = reinterpret_cast<unsigned char const *>(dataIn);
    auto const *needle = reinterpret_cast<unsigned char const *>(needleIn.constData());
    quint64 const m = static_cast<quint64>(needleIn.size());
    if (m == 0)
        return from <= size ? from : size;
    if (from >= size || size - from < m)
        return size;
    if (m == 1 && !foldMask(needle[0], fold)) {
        void const *hit = std::memchr(data + from, needle[0], size - from);
        return hit ? quint64(static_cast<unsigned char const *>(hit) - data) : size;
    }
    quint64 i = from;
#if defined(__SSE2__)
    unsigned char const maskFirst = foldMask(needle[0], fold);
    unsigned char const maskLast = foldMask(needle[m - 1], fold);
    __m128i const first = _mm_set1_epi8(static_cast<char>(needle[0] | maskFirst));
    __m128i const last = _mm_set1_epi8(static_cast<char>(needle[m - 1] | maskLast));
    __m128i const orFirst = _mm_set1_epi8(static_cast<char>(maskFirst));
    __m128i const orLast = _mm_set1_epi8(static_cast<char>(maskLast));
    for (; i + m - 1 + 16 <= size; i += 16) {
        __m128i const a = _mm_loadu_si128(reinterpret_cast<__m128i const *>(data + i));
        __m128i const b = _mm_loadu_si128(reinterpret_cast<__m128i const *>(data + i + m - 1));
        __m128i const eqA = _mm_cmpeq_epi8(_mm_or_si128(a, orFirst), first);
        __m128i const eqB = _mm_cmpeq_epi8(_mm_or_si128(b, orLast), last);
        unsigned int bits = static_cast<unsigned int>(_mm_movemask_epi8(_mm_and_si128(eqA, eqB)));
        while (bits) {
            unsigned int const k = static_cast<unsigned int>(__builtin_ctz(bits));
            if (m <= 2 || equalAt(data + i + k + 1, needle + 1, m - 2, fold))
                return i + k;
            bits &= bits - 1;
        }
    }
#endif
    return searchScalar(data, size, i, needle, m, fold);
}

} // namespace orv::find
