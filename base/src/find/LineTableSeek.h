// LineTableSeek.h: finding the table entry of a byte position when positions come in
// rising order. Not part of the library's interface.
#pragma once

#include "orv/XLineInfo.h"

#include <algorithm>
#include <vector>

namespace orv::find {

// The first index at or after from whose entry is not before(entry), for a predicate
// that holds on a prefix of the table; near is a byte position close to that entry's.
// The first look goes where near would be if the lines after from were all of their
// mean length, which in text lands within a few lines of the answer; steps then grow
// away from it in the direction the look tells. A handful of looks in a table far larger
// than the caches, each a miss that the next must wait for, cost more than anything
// else per candidate, so the fewer the better.
template <typename Before>
size_t seekEntry(std::vector<XLineInfo> const &entries, size_t from, quint64 near, Before before) {
    size_t const n = entries.size();
    if (from >= n)
        return n;
    size_t guess = from;
    quint64 const start = entries[from].posMemory;
    if (near > start && n - 1 > from) {
        quint64 const mean =
            std::max<quint64>(1, (entries[n - 1].posMemory - start) / (n - 1 - from));
        guess = from + size_t(std::min<quint64>((near - start) / mean, n - 1 - from));
    }
    // The next looks fall a few entries around the guess: asked for together, their
    // misses overlap instead of following one another.
    for (size_t k = guess > from + 8 ? guess - 8 : from; k <= guess + 8 && k < n; k += 2)
        __builtin_prefetch(&entries[k]);
    size_t lo = guess, hi = guess, step = 1;
    auto const base = entries.begin();
    if (!before(entries[guess])) {
        // At or before the guess: step back until an entry is before the answer.
        while (lo > from) {
            size_t const probe = lo - from > step ? lo - step : from;
            if (before(entries[probe])) {
                lo = probe + 1;
                break;
            }
            lo = hi = probe;
            step <<= 1;
        }
        return size_t(
            std::partition_point(base + std::ptrdiff_t(lo), base + std::ptrdiff_t(hi), before) -
            base);
    }
    while (hi < n && before(entries[hi])) {
        lo = hi + 1;
        hi = lo + step;
        step <<= 1;
    }
    hi = std::min(hi, n);
    return size_t(
        std::partition_point(base + std::ptrdiff_t(lo), base + std::ptrdiff_t(hi), before) - base);
}

} // namespace orv::find
