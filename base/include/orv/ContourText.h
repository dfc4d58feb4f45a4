// ContourText.h: the text form of a polygon contour, one point per line, as the
// triangulation reads it from files.
//
//   orv::ContourParse parsed = orv::ContourText::parse("0 0\n4 0\n0 3\n");
//   if (!parsed) ppError("line $: $", parsed.errorLine, parsed.error);
//
// A line holds two numbers cut by blanks, tabs or one comma ("1.5 -2", "1.5,-2").
// Empty lines and lines starting with '#' are skipped; CR LF ends a line as LF does.
// Numbers are decimal (an exponent allowed), finite and within the float range.
#pragma once

#include "orv/Vector.h"

#include <QtCore/QByteArray>

#include <vector>

namespace orv {

// A failure unless parse says otherwise.
struct ORV_EXPORT ContourParse {
    std::vector<Vector2> points;
    QString error;        // empty on success
    qint64 errorLine = 0; // from 1; 0 on success
    bool ok = false;
    explicit operator bool() const { return ok; }
};

struct ORV_EXPORT ContourText {
    // Stops at the first bad line; points holds those read before it.
    [[nodiscard]] static ContourParse parse(QByteArray const &text);
};

} // namespace orv
