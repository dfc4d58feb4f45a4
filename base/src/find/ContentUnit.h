// ContentUnit.h: one unit of text (a file line or a sentence) as the evaluator sees
// it. Not part of the library's interface.
#pragma once

#include "orv/XContentFilter.h"

namespace orv::find {

struct XContentFilter::Unit {
    XLineInfo li;
    QString text;
    // The unit's bytes in memory, for exact byte positions; null for text from elsewhere.
    char const *bytes = nullptr;
    // Stands for any unit in which no term occurs: every term search comes back empty.
    bool termsAbsent = false;
};

} // namespace orv::find
