// LineTableSeek.h: finding the table entry of a byte position when positions come in
// rising order. Not part of the library's interface.
#pragma once

#include "orv/XLineInfo.h"

#include <algorithm>
#include <vector>

namespace orv::find {

// The first index at or after from whose entry is not before(entry), for a predicate
// that holds on a prefix of the table. Steps grow from from, so that a nearby answer
// costs a few looks instead of a binary search through a table far larger than the
// caches.
template <typename Before>
size_t seekEntry(std::vector<XLineInfo> const &entries, size_t from, Before before) {
    size_t const n = entries.size();
    size_t lo = from, hi = from, step = 1;
    while (hi < n && before(entries[hi])) {
        lo = hi + 1;
        hi = lo + step;
        step <<= 1;
    }
    hi = std::min(hi, n);
    auto const base = entries.begin();
    return size_t(
        std::partition_point(base + std::ptrdiff_t(lo), base + std::ptrdiff_t(hi), before) - base);
}

} // namespace orv::find
