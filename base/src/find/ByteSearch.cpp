// ByteSearch.cpp: literal search in bytes. Thirty-two positions at a time (AVX2, where
// the processor has it) or sixteen (SSE2, part of every x86-64) are tested on the
// needle's first and last byte, and only where both agree are the bytes between
// compared. memchr serves one-byte needles and needles that start outside ASCII, whose
// first byte is rare in most text.
#include "find/ByteSearch.h"

#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
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

#if defined(__x86_64__)
// Scans from i while 32 bytes and the needle's tail fit; returns the hit or, with
// *done false, the position where the scalar rest must go on.
__attribute__((target("avx2"))) quint64 scanAvx2(unsigned char const *data, quint64 size, quint64 i,
                                                 unsigned char const *needle, quint64 m, bool fold,
                                                 bool *found) {
    unsigned char const maskFirst = foldMask(needle[0], fold);
    unsigned char const maskLast = foldMask(needle[m - 1], fold);
    __m256i const first = _mm256_set1_epi8(static_cast<char>(needle[0] | maskFirst));
    __m256i const last = _mm256_set1_epi8(static_cast<char>(needle[m - 1] | maskLast));
    __m256i const orFirst = _mm256_set1_epi8(static_cast<char>(maskFirst));
    __m256i const orLast = _mm256_set1_epi8(static_cast<char>(maskLast));
    for (; i + m - 1 + 32 <= size; i += 32) {
        __m256i const a = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(data + i));
        __m256i const b = _mm256_loadu_si256(reinterpret_cast<__m256i const *>(data + i + m - 1));
        __m256i const eqA = _mm256_cmpeq_epi8(_mm256_or_si256(a, orFirst), first);
        __m256i const eqB = _mm256_cmpeq_epi8(_mm256_or_si256(b, orLast), last);
        unsigned int bits =
            static_cast<unsigned int>(_mm256_movemask_epi8(_mm256_and_si256(eqA, eqB)));
        while (bits) {
            unsigned int const k = static_cast<unsigned int>(__builtin_ctz(bits));
            if (m <= 2 || equalAt(data + i + k + 1, needle + 1, m - 2, fold)) {
                *found = true;
                return i + k;
            }
            bits &= bits - 1;
        }
    }
    *found = false;
    return i;
}

quint64 scanSse2(unsigned char const *data, quint64 size, quint64 i, unsigned char const *needle,
                 quint64 m, bool fold, bool *found) {
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
            if (m <= 2 || equalAt(data + i + k + 1, needle + 1, m - 2, fold)) {
                *found = true;
                return i + k;
            }
            bits &= bits - 1;
        }
    }
    *found = false;
    return i;
}

bool const hasAvx2 = __builtin_cpu_supports("avx2");
#endif

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
    if (!foldMask(needle[0], fold) && (m == 1 || needle[0] >= 0x80)) {
        for (quint64 i = from; i + m <= size; ++i) {
            void const *hit = std::memchr(data + i, needle[0], size - i - m + 1);
            if (!hit)
                break;
            i = quint64(static_cast<unsigned char const *>(hit) - data);
            if (std::memcmp(data + i, needle, m) == 0)
                return i;
        }
        return size;
    }
    quint64 i = from;
#if defined(__x86_64__)
    bool found = false;
    i = hasAvx2 ? scanAvx2(data, size, i, needle, m, fold, &found)
                : scanSse2(data, size, i, needle, m, fold, &found);
    if (found)
        return i;
#endif
    return searchScalar(data, size, i, needle, m, fold);
}

} // namespace orv::find
