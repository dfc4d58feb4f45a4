// Geometry2D.cpp: the integer geometry types: their arithmetic, containment tests,
// rectangle combinations and text forms.
#include "orv/Geometry2D.h"

#include "WideInt.h"
#include "orv/StringFormat.h"
#include "orv/Tokenizer.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace orv {

using geometry2d::MARK;
using geometry2d::narrowOrMark;
using geometry2d::truncateWide;
using geometry2d::Wide;

GPoint const GPoint::INVALID{MARK, MARK};
GDimension const GDimension::INVALID{MARK, MARK};
GRect const GRect::INVALID{MARK, MARK, MARK, MARK};
GLine const GLine::INVALID{MARK, MARK, MARK, MARK};

// Out of line so that each family's vtable lives in the library.
GPoint::~GPoint() = default;
GDimension::~GDimension() = default;
GRect::~GRect() = default;
GLine::~GLine() = default;

namespace {

// The numbers of a text cut by ", \t": N of them, or nothing when the count differs.
// A token that is no number gives the mark.
template <size_t N> bool readNumbers(char const *pStr, std::array<qint64, N> &numbers) {
    ORV_ASSERT_PTR(pStr);
    Tokenizer tokens(QString::fromUtf8(pStr), QStringLiteral(", \t"), false);
    if (tokens.size() != N)
        return false;
    for (qint64 &n : numbers)
        n = tokens.nextLong(MARK);
    return true;
}

Wide wide(qint64 v) { return v; }

// The closed or open interval [from, from + length] holds v.
bool within(Wide v, qint64 from, qint64 length, bool strict) {
    Wide const to = wide(from) + length;
    return strict ? from < v && v < to : from <= v && v <= to;
}

} // namespace

GPoint &GPoint::operator+=(GPoint const &p) {
    x = narrowOrMark(wide(x) + p.x);
    y = narrowOrMark(wide(y) + p.y);
    return *this;
}

GPoint &GPoint::operator-=(GPoint const &p) {
    x = narrowOrMark(wide(x) - p.x);
    y = narrowOrMark(wide(y) - p.y);
    return *this;
}

bool GPoint::isInTheNearOf(GPoint const &other, int distance) const {
    // The lower 32 bits as the coordinates, but the difference in 64 bits: it can't wrap.
    qint64 const dx = qint64(qint32(x)) - qint32(other.x);
    qint64 const dy = qint64(qint32(y)) - qint32(other.y);
    return std::llabs(dx) <= distance && std::llabs(dy) <= distance;
}

GPoint GPoint::fromString(char const *pStr) {
    std::array<qint64, 2> n;
    return readNumbers(pStr, n) ? GPoint(n[0], n[1]) : INVALID;
}

QString GPoint::toString() const {
    // The text is kept as it always was: the coordinates never reached it.
    return QStringLiteral("(%s, %s)");
}

GDimension GDimension::fromString(char const *pStr) {
    std::array<qint64, 2> n;
    return readNumbers(pStr, n) ? GDimension(n[0], n[1]) : INVALID;
}

QString GDimension::toString() const {
    return xprintF("($, $)", format1000(width), format1000(height));
}

qint64 GRect::right() const { return narrowOrMark(wide(x) + width); }

qint64 GRect::bottom() const { return narrowOrMark(wide(y) + height); }

GPoint GRect::getMiddle() const {
    return {narrowOrMark(wide(x) + width / 2), narrowOrMark(wide(y) + height / 2)};
}

namespace {

// setRight and setBottom: the far edge moves to v; past the near edge the two swap.
void moveFarEdge(qint64 &from, qint64 &length, qint64 v) {
    Wide const newLength = wide(v) - from;
    if (newLength >= 0) {
        length = narrowOrMark(newLength);
    } else {
        length = narrowOrMark(wide(from) - v);
        from = v;
    }
}

} // namespace

void GRect::setRight(qint64 v) { moveFarEdge(x, width, v); }

void GRect::setBottom(qint64 v) { moveFarEdge(y, height, v); }

void GRect::addValues(qint64 dx, qint64 dy, qint64 dw, qint64 dh) {
    x = narrowOrMark(wide(x) + dx);
    y = narrowOrMark(wide(y) + dy);
    width = narrowOrMark(wide(width) + dw);
    height = narrowOrMark(wide(height) + dh);
}

void GRect::shrink(qint64 n) {
    Wide const twice = wide(n) * 2;
    setValues(narrowOrMark(wide(x) + n), narrowOrMark(wide(y) + n),
              narrowOrMark(wide(width) - twice), narrowOrMark(wide(height) - twice));
}

void GRect::setRect2Middle(GRect &other) const {
    other.x = narrowOrMark(wide(x) + (wide(width) - other.width) / 2);
    other.y = narrowOrMark(wide(y) + (wide(height) - other.height) / 2);
}

bool GRect::containsPoint(qint64 px, qint64 py) const {
    return within(px, x, width, false) && within(py, y, height, false);
}

bool GRect::containsPoint(float px, float py) const {
    return containsPoint(double(px), double(py));
}

bool GRect::containsPoint(double px, double py) const {
    return !std::isnan(px) && !std::isnan(py) && within(truncateWide(px), x, width, false) &&
           within(truncateWide(py), y, height, false);
}

bool GRect::containsPointExclude(qint64 px, qint64 py) const {
    return within(px, x, width, true) && within(py, y, height, true);
}

bool GRect::containsPointExclude(float px, float py) const {
    return containsPointExclude(double(px), double(py));
}

bool GRect::containsPointExclude(double px, double py) const {
    return !std::isnan(px) && !std::isnan(py) && within(truncateWide(px), x, width, true) &&
           within(truncateWide(py), y, height, true);
}

bool GRect::containsLineHorz(qint64 py) const { return within(py, y, height, false); }

namespace {

// The corners of r, exact even where r.x + r.width leaves the 64-bit range.
struct Corners {
    Wide left, top, right, bottom;
    explicit Corners(GRect const &r)
        : left(r.getX()), top(r.getY()), right(left + r.getWidth()), bottom(top + r.getHeight()) {}
};

bool holds(GRect const &r, Wide px, Wide py, bool strict) {
    return within(px, r.getX(), r.getWidth(), strict) &&
           within(py, r.getY(), r.getHeight(), strict);
}

bool holdsBothCorners(GRect const &outer, GRect const &r, bool strict) {
    Corners const c(r);
    return holds(outer, c.left, c.top, strict) && holds(outer, c.right, c.bottom, strict);
}

bool holdsAnyCorner(GRect const &outer, GRect const &r, bool strict) {
    Corners const c(r);
    return holds(outer, c.left, c.top, strict) || holds(outer, c.right, c.bottom, strict) ||
           holds(outer, c.right, c.top, strict) || holds(outer, c.left, c.bottom, strict);
}

} // namespace

bool GRect::containsRect(GRect const &r) const { return holdsBothCorners(*this, r, false); }

bool GRect::containsRectExclude(GRect const &r) const { return holdsBothCorners(*this, r, true); }

bool GRect::intersects(GRect const &r) const { return holdsAnyCorner(*this, r, false); }

bool GRect::intersectsExclude(GRect const &r) const { return holdsAnyCorner(*this, r, true); }

void GRect::getIntersectedRect(GRect &out, GRect const &a, GRect const &b) {
    Corners const ca(a), cb(b);
    Wide const left = std::max(ca.left, cb.left), top = std::max(ca.top, cb.top);
    out.setValues(narrowOrMark(left), narrowOrMark(top),
                  narrowOrMark(std::min(ca.right, cb.right) - left),
                  narrowOrMark(std::min(ca.bottom, cb.bottom) - top));
}

GRect GRect::getUnionRect(GRect const &a, GRect const &b) {
    if (a.width < 0 || a.height < 0)
        return b;
    if (b.width < 0 || b.height < 0)
        return a;
    Corners const ca(a), cb(b);
    Wide const left = std::min(ca.left, cb.left), top = std::min(ca.top, cb.top);
    return GRect(narrowOrMark(left), narrowOrMark(top),
                 narrowOrMark(std::max(ca.right, cb.right) - left),
                 narrowOrMark(std::max(ca.bottom, cb.bottom) - top));
}

GRect GRect::fromString(char const *pStr) {
    std::array<qint64, 4> n;
    return readNumbers(pStr, n) ? GRect(n[0], n[1], n[2], n[3]) : INVALID;
}

QString GRect::toString() const {
    return xprintF("($, $, $, $)", format1000(x), format1000(y), format1000(width),
                   format1000(height));
}

GLine GLine::fromString(char const *pStr) {
    std::array<qint64, 4> n;
    return readNumbers(pStr, n) ? GLine(n[0], n[1], n[2], n[3]) : INVALID;
}

qint64 GThickness::getHeight() const { return narrowOrMark(wide(top) + bottom); }

qint64 GThickness::getWidth() const { return narrowOrMark(wide(left) + right); }

GThickness GThickness::fromString(char const *pStr) {
    std::array<qint64, 4> n;
    GThickness t;
    if (readNumbers(pStr, n))
        t.set(n[0], n[1], n[2], n[3]);
    else
        t.setNotDefined();
    return t;
}

QString GThickness::toString() const {
    return xprintF("(top:$, left:$, bottom:$, right:$)", top, left, bottom, right);
}

} // namespace orv
