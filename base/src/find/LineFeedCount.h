// LineFeedCount.h: counting the line feeds of a stretch of bytes 16 at a time, and
// finding the start of the line that holds a position. Not part of the library's
// interface.
#pragma once

#include <QtCore/QtGlobal>

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace orv::find {

// The LFs in [from, to) of data.
inline quint64 countLineFeeds(char const *data, quint64 from, quint64 to) {
    quint64 count = 0;
    quint64 i = from;
#if defined(__SSE2__)
    __m128i const lf = _mm_set1_epi8('\n');
    while (i + 16 <= to) {
        // Byte counters, summed before any of them can pass 255.
        __m128i counters = _mm_setzero_si128();
        quint64 const blockEnd = std::min(to, i + 255 * 16);
        for (; i + 16 <= blockEnd; i += 16) {
            __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const *>(data + i));
            counters = _mm_sub_epi8(counters, _mm_cmpeq_epi8(v, lf));
        }
        __m128i const sums = _mm_sad_epu8(counters, _mm_setzero_si128());
        count += quint64(_mm_cvtsi128_si64(sums)) +
                 quint64(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
    }
#endif
    for (; i < to; ++i)
        count += data[i] == '\n';
    return count;
}

// The first byte of the line that holds pos, looking back no further than from.
inline quint64 lineStartOf(char const *data, quint64 from, quint64 pos) {
    while (pos > from && data[pos - 1] != '\n')
        --pos;
    return pos;
}

} // namespace orv::find
