// ByteSearch.cpp: literal search in bytes. Thirty-two positions at a time (AVX2, where
// the processor has it) or sixteen (SSE2, part of every x86-64) are tested on the
// needle's first and last byte, and only where both agree are the bytes between
// compared. memchr serves one-byte needles and needles that start outside ASCII, whose
// first byte is rare in most text. Several needles are tested in the same blocks, so
// that an or of terms reads the bytes once instead of once per term.
#include "find/ByteSearch.h"

#include <algorithm>
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

// Compiler vectors, so that one body serves both widths: inlined into a function built
// for AVX2 it becomes AVX2 code, elsewhere SSE2.
template <int W> struct Lanes { typedef unsigned char V __attribute__((vector_size(W))); };

// By reference: a 32-byte vector passed by value would change the calling convention.
template <int W>
__attribute__((always_inline)) inline void loadLanes(typename Lanes<W>::V &v,
                                                     unsigned char const *p) {
    std::memcpy(&v, p, W);
}

// One bit per lane whose top bit is set, lane 0 in bit 0.
template <int W>
__attribute__((always_inline)) inline unsigned int bitsOf(typename Lanes<W>::V const &v) {
    unsigned int bits = 0;
    for (int h = 0; h < W / 16; ++h) {
        __m128i half;
        std::memcpy(&half, reinterpret_cast<char const *>(&v) + 16 * h, 16);
        bits |= static_cast<unsigned int>(_mm_movemask_epi8(half)) << (16 * h);
    }
    return bits;
}

// Whether any lane has its top bit set: one mask of the halves or'ed together.
template <int W> __attribute__((always_inline)) inline bool anyLane(typename Lanes<W>::V const &v) {
    __m128i half, other;
    std::memcpy(&half, &v, 16);
    for (int h = 1; h < W / 16; ++h) {
        std::memcpy(&other, reinterpret_cast<char const *>(&v) + 16 * h, 16);
        half = _mm_or_si128(half, other);
    }
    return _mm_movemask_epi8(half) != 0;
}
#endif

bool anyStartsAt(unsigned char const *data, quint64 size, quint64 p, ByteNeedle const *needles,
                 size_t count) {
    for (size_t k = 0; k < count; ++k) {
        auto const m = static_cast<quint64>(needles[k].bytes.size());
        if (p + m <= size &&
            equalAt(data + p, reinterpret_cast<unsigned char const *>(needles[k].bytes.constData()),
                    m, needles[k].foldAscii))
            return true;
    }
    return false;
}

#if defined(__x86_64__)
// First a block is tested on the needles' first bytes alone (none a folded letter, so
// compared as they are); only where one agrees are the last bytes loaded and tested, as
// in scanAvx2, and a position where a needle agrees on both compared whole. N is the
// count of needles, fixed so that the loops unroll and the constants stay in registers.
template <int W, size_t N>
__attribute__((always_inline)) inline quint64 scanAny(unsigned char const *data, quint64 size,
                                                      quint64 i, ByteNeedle const *needles,
                                                      quint64 longest, bool *found) {
    using V = typename Lanes<W>::V;
    V first[N], last[N], orLast[N];
    quint64 lastAt[N];
    for (size_t k = 0; k < N; ++k) {
        auto const *needle = reinterpret_cast<unsigned char const *>(needles[k].bytes.constData());
        lastAt[k] = static_cast<quint64>(needles[k].bytes.size()) - 1;
        unsigned char const maskLast = foldMask(needle[lastAt[k]], needles[k].foldAscii);
        first[k] = V{} + needle[0];
        last[k] = V{} + static_cast<unsigned char>(needle[lastAt[k]] | maskLast);
        orLast[k] = V{} + maskLast;
    }
    for (; i + longest - 1 + W <= size; i += W) {
        V a, b, eqFirst[N], any = V{};
        loadLanes<W>(a, data + i);
        for (size_t k = 0; k < N; ++k) {
            eqFirst[k] = V(a == first[k]);
            any |= eqFirst[k];
        }
        if (!anyLane<W>(any))
            continue;
        any = V{};
        for (size_t k = 0; k < N; ++k) {
            loadLanes<W>(b, data + i + lastAt[k]);
            any |= eqFirst[k] & V((b | orLast[k]) == last[k]);
        }
        for (unsigned int bits = bitsOf<W>(any); bits; bits &= bits - 1) {
            quint64 const p = i + static_cast<unsigned int>(__builtin_ctz(bits));
            if (anyStartsAt(data, size, p, needles, N)) {
                *found = true;
                return p;
            }
        }
    }
    *found = false;
    return i;
}

// Two to MAX_NEEDLES_AT_ONCE needles.
template <int W>
__attribute__((always_inline)) inline quint64
scanAnyOf(unsigned char const *data, quint64 size, quint64 i, ByteNeedle const *needles,
          size_t count, quint64 longest, bool *found) {
    static_assert(MAX_NEEDLES_AT_ONCE == 8, "one case per count");
    switch (count) {
    case 2: return scanAny<W, 2>(data, size, i, needles, longest, found);
    case 3: return scanAny<W, 3>(data, size, i, needles, longest, found);
    case 4: return scanAny<W, 4>(data, size, i, needles, longest, found);
    case 5: return scanAny<W, 5>(data, size, i, needles, longest, found);
    case 6: return scanAny<W, 6>(data, size, i, needles, longest, found);
    case 7: return scanAny<W, 7>(data, size, i, needles, longest, found);
    default: return scanAny<W, 8>(data, size, i, needles, longest, found);
    }
}

__attribute__((target("avx2"))) quint64 scanAnyAvx2(unsigned char const *data, quint64 size,
                                                    quint64 i, ByteNeedle const *needles,
                                                    size_t count, quint64 longest, bool *found) {
    return scanAnyOf<32>(data, size, i, needles, count, longest, found);
}

quint64 scanAnySse2(unsigned char const *data, quint64 size, quint64 i, ByteNeedle const *needles,
                    size_t count, quint64 longest, bool *found) {
    return scanAnyOf<16>(data, size, i, needles, count, longest, found);
}
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

bool startsRarely(ByteNeedle const &needle) {
    if (needle.bytes.isEmpty())
        return false;
    auto const c = static_cast<unsigned char>(needle.bytes.at(0));
    return c != ' ' && !(c >= 'a' && c <= 'z') && !foldMask(c, needle.foldAscii);
}

quint64 searchAnyBytes(char const *dataIn, quint64 size, quint64 from, ByteNeedle const *needles,
                       size_t count) {
    if (count == 1)
        return searchBytes(dataIn, size, from, needles[0].bytes, needles[0].foldAscii);
    auto const *data = reinterpret_cast<unsigned char const *>(dataIn);
    quint64 longest = 0;
    bool foldedStart = false;
    for (size_t k = 0; k < count; ++k) {
        if (needles[k].bytes.isEmpty())
            return from <= size ? from : size;
        longest = std::max(longest, static_cast<quint64>(needles[k].bytes.size()));
        foldedStart |=
            foldMask(static_cast<unsigned char>(needles[k].bytes.at(0)), needles[k].foldAscii) != 0;
    }
    // The shared pass compares first bytes as they are.
    if (foldedStart) {
        quint64 best = size;
        for (size_t k = 0; k < count; ++k)
            best = std::min(
                best, searchBytes(dataIn, size, from, needles[k].bytes, needles[k].foldAscii));
        return best;
    }
    quint64 i = from;
#if defined(__x86_64__)
    if (count >= 2 && count <= MAX_NEEDLES_AT_ONCE) {
        bool found = false;
        i = hasAvx2 ? scanAnyAvx2(data, size, i, needles, count, longest, &found)
                    : scanAnySse2(data, size, i, needles, count, longest, &found);
        if (found)
            return i;
    }
#endif
    for (; i < size; ++i)
        if (anyStartsAt(data, size, i, needles, count))
            return i;
    return size;
}

} // namespace orv::find
