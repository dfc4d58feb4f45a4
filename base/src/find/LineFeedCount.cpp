// LineFeedCount.cpp: counting line feeds thirty-two bytes at a time where the processor
// has AVX2, sixteen (SSE2) elsewhere. A search without a line table counts every line
// of the file, so this pass costs about as much as the search for the terms.
#include "find/LineFeedCount.h"

#include <algorithm>
#include <cstring>

namespace orv::find {

namespace {

// Compiler vectors, so that one body serves both widths: inlined into a function built
// for AVX2 it becomes AVX2 code, elsewhere SSE2.
template <int W> struct Bytes { typedef unsigned char V __attribute__((vector_size(W))); };

template <int W>
__attribute__((always_inline)) inline quint64 countBlocks(char const *data, quint64 &from,
                                                          quint64 to) {
    // A copy: a position held by reference would be stored on every step, as the
    // bytes read might alias it.
    quint64 i = from;
    using V = typename Bytes<W>::V;
    V const lf = V{} + static_cast<unsigned char>('\n');
    quint64 count = 0;
    while (i + W <= to) {
        // Byte counters, summed before any of them can pass 255.
        V counters = V{};
        quint64 const blockEnd = std::min(to, i + 255 * W);
        for (; i + W <= blockEnd; i += W) {
            V v;
            std::memcpy(&v, data + i, W);
            counters -= V(v == lf);
        }
        unsigned char lanes[W];
        std::memcpy(lanes, &counters, W);
        for (int k = 0; k < W; ++k)
            count += lanes[k];
    }
    from = i;
    return count;
}

#if defined(__x86_64__)
__attribute__((target("avx2"))) quint64 countAvx2(char const *data, quint64 &i, quint64 to) {
    return countBlocks<32>(data, i, to);
}

bool const hasAvx2 = __builtin_cpu_supports("avx2");
#endif

} // namespace

quint64 countLineFeeds(char const *data, quint64 from, quint64 to) {
    quint64 i = from;
#if defined(__x86_64__)
    quint64 count = hasAvx2 ? countAvx2(data, i, to) : countBlocks<16>(data, i, to);
#else
    quint64 count = countBlocks<16>(data, i, to);
#endif
    for (; i < to; ++i)
        count += data[i] == '\n';
    return count;
}

} // namespace orv::find
