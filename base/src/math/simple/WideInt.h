// WideInt.h: exact 128-bit room for the 64-bit integer geometry, and the truncations
// of floating coordinates that never meet undefined behaviour. Private to src/math.
#pragma once

#include "orv/GMath.h"

#include <cmath>
#include <cstdint>

namespace orv::geometry2d {

// A sum, difference or product of two 64-bit values always fits here.
using Wide = __int128;

// The not-defined mark when v leaves the 64-bit range, so that an overflow shows.
inline qint64 narrowOrMark(Wide v) {
    return v > INT64_MAX || v < INT64_MIN ? GMath::MIN_GLONG : static_cast<qint64>(v);
}

// Truncates toward zero. Beyond +-2^65 every 64-bit sum lies on one side, so the
// value is held there: comparisons against rectangle edges stay exact. NaN is the
// caller's to refuse.
inline Wide truncateWide(double v) {
    constexpr double limit = 0x1p65;
    if (v >= limit)
        return Wide(1) << 65;
    if (v <= -limit)
        return -(Wide(1) << 65);
    return static_cast<Wide>(v);
}

// Truncation to int, held at the int limits; NaN gives 0.
inline int truncateToInt(double v) {
    if (std::isnan(v))
        return 0;
    if (v >= 2147483647.0)
        return GMath::MAX_INT;
    if (v <= -2147483648.0)
        return GMath::MIN_INT;
    return static_cast<int>(v);
}

} // namespace orv::geometry2d
