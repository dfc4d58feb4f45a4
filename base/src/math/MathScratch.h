// MathScratch.h: where out-of-range element writes of the math types land, so that
// a bad index never touches foreign memory. Private to the math sources.
#pragma once

#include "orv/GMath.h"

namespace orv::math {

// Reset to MAX_FLOAT on every call, so a read after a bad index shows the mark.
template <typename T> T &scratch() {
    static T value;
    value = static_cast<T>(GMath::MAX_FLOAT);
    return value;
}

} // namespace orv::math
