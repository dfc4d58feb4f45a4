// ContourText.cpp: the contour reader. Bytes come from files of unknown origin, so every
// line is checked whole and a bad one names itself instead of being skipped.
#include "orv/ContourText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace orv {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

// Reads one number at p and moves p past it. Accepts a leading '+', which from_chars
// doesn't; from_chars itself never looks at the locale.
bool readNumber(char const *&p, char const *end, float &out) {
    if (p != end && *p == '+' && end - p > 1 && p[1] != '-' && p[1] != '+')
        ++p;
    double value = 0.0;
    auto const [next, ec] = std::from_chars(p, end, value, std::chars_format::general);
    if (ec != std::errc() || !std::isfinite(value) || std::fabs(value) > GMath::MAX_FLOAT)
        return false;
    p = next;
    out = float(value);
    return true;
}

// "x y", "x,y", "x , y": blanks around at most one comma between the numbers.
bool readPoint(char const *p, char const *end, Vector2 &point) {
    if (!readNumber(p, end, point.x))
        return false;
    char const *const afterX = p;
    while (p != end && isBlank(*p))
        ++p;
    if (p != end && *p == ',')
        for (++p; p != end && isBlank(*p);)
            ++p;
    if (p == afterX || !readNumber(p, end, point.y))
        return false;
    while (p != end && isBlank(*p))
        ++p;
    return p == end;
}

// The line as the error shows it: bounded, so that a huge line can't flood the log.
QString quoted(char const *begin, char const *end) {
    constexpr qint64 shown = 40;
    QByteArray const text(begin, int(std::min<qint64>(end - begin, shown)));
    return QString::fromUtf8(text) + (end - begin > shown ? QStringLiteral("...") : QString());
}

} // namespace

ContourParse ContourText::parse(QByteArray const &text) {
    ContourParse result;
    char const *p = text.constData(), *const end = p + text.size();
    for (qint64 line = 1; p < end; ++line) {
        char const *lineEnd = static_cast<char const *>(memchr(p, '\n', size_t(end - p)));
        char const *const next = lineEnd ? lineEnd + 1 : end;
        if (!lineEnd)
            lineEnd = end;
        if (lineEnd != p && lineEnd[-1] == '\r')
            --lineEnd;
        while (p != lineEnd && isBlank(*p))
            ++p;
        Vector2 point;
        if (p != lineEnd && *p != '#') {
            if (!readPoint(p, lineEnd, point)) {
                result.errorLine = line;
                result.error = QStringLiteral("expected two numbers \"x y\", found '%1'")
                                   .arg(quoted(p, lineEnd));
                return result;
            }
            result.points.push_back(point);
        }
        p = next;
    }
    result.ok = true;
    return result;
}

} // namespace orv
