// Geometry2DInline.h: the one-line bodies of the integer geometry types; included by
// orv/Geometry2D.h only. Anything with arithmetic that can leave the 64-bit range
// lives in src/math/simple/Geometry2D.cpp.
#pragma once

namespace orv {

namespace geometry2d {
constexpr qint64 MARK = GMath::MIN_GLONG;
} // namespace geometry2d

inline void GPoint::set(qint64 nx, qint64 ny) { x = nx, y = ny; }
inline void GPoint::setXY(qint64 nx, qint64 ny) { x = nx, y = ny; }
inline bool GPoint::operator==(GPoint const &p) const { return x == p.x && y == p.y; }
inline bool GPoint::operator!=(GPoint const &p) const { return !(*this == p); }
inline bool GPoint::isDefined() const { return x != geometry2d::MARK && y != geometry2d::MARK; }
inline bool GPoint::isNotDefined() const { return x == geometry2d::MARK && y == geometry2d::MARK; }
inline bool GPoint::isValid() const { return !isNotDefined(); }
inline void GPoint::setNotDefined() { x = y = geometry2d::MARK; }
inline void GPoint::setInvalid() { setNotDefined(); }
inline GPoint GPoint::getNotdefined() { return INVALID; }

inline void GDimension::set(qint64 w, qint64 h) { width = w, height = h; }
inline bool GDimension::operator==(GDimension const &d) const {
    return width == d.width && height == d.height;
}
inline bool GDimension::operator!=(GDimension const &d) const { return !(*this == d); }
inline bool GDimension::isDefined() const {
    return width != geometry2d::MARK && height != geometry2d::MARK;
}
inline bool GDimension::isNotDefined() const {
    return width == geometry2d::MARK && height == geometry2d::MARK;
}
inline bool GDimension::isValid() const { return !isNotDefined(); }
inline void GDimension::setNotDefined() { width = height = geometry2d::MARK; }
inline void GDimension::setInvalid() { setNotDefined(); }
inline GDimension GDimension::getNotdefined() { return INVALID; }

inline bool GRect::operator==(GRect const &r) const {
    return x == r.x && y == r.y && width == r.width && height == r.height;
}
inline bool GRect::operator!=(GRect const &r) const { return !(*this == r); }
inline qint64 GRect::getX() const { return x; }
inline qint64 GRect::getY() const { return y; }
inline qint64 GRect::left() const { return x; }
inline qint64 GRect::top() const { return y; }
inline qint64 GRect::getWidth() const { return width; }
inline qint64 GRect::getHeight() const { return height; }
inline GPoint GRect::getPosition() const { return {x, y}; }
inline GDimension GRect::getSize() const { return {width, height}; }
inline GPoint GRect::getTopLeft() const { return {x, y}; }
inline GPoint GRect::getTopRight() const { return {right(), y}; }
inline GPoint GRect::getBottomLeft() const { return {x, bottom()}; }
inline GPoint GRect::getBottomRight() const { return {right(), bottom()}; }
inline void GRect::setX(qint64 v) { x = v; }
inline void GRect::setY(qint64 v) { y = v; }
inline void GRect::setLeft(qint64 v) { x = v; }
inline void GRect::setTop(qint64 v) { y = v; }
inline void GRect::setWidth(qint64 v) { width = v; }
inline void GRect::setHeight(qint64 v) { height = v; }
inline void GRect::setPosition(GPoint const &p) { x = p.x, y = p.y; }
inline void GRect::setSize(GDimension const &d) { width = d.width, height = d.height; }
inline void GRect::setValues(GRect const &r) { *this = r; }
inline void GRect::setValues(qint64 nx, qint64 ny, qint64 w, qint64 h) {
    x = nx, y = ny, width = w, height = h;
}
inline bool GRect::isDefined() const {
    return x != geometry2d::MARK && y != geometry2d::MARK && width != geometry2d::MARK &&
           height != geometry2d::MARK;
}
inline bool GRect::isNotDefined() const { return !isDefined(); }
inline bool GRect::isValid() const { return *this != INVALID; }
inline void GRect::setNotDefined() { x = y = width = height = geometry2d::MARK; }
inline void GRect::setInvalid() { setNotDefined(); }
inline GRect GRect::getNotdefined() { return INVALID; }
inline bool GRect::isNormal() const { return x >= 0 && y >= 0 && width >= 1 && height >= 1; }
inline bool GRect::containsPoint(GPoint const &p) const { return containsPoint(p.x, p.y); }
inline bool GRect::containsPointExclude(GPoint const &p) const {
    return containsPointExclude(p.x, p.y);
}
inline GRect GRect::getIntersectedRect(GRect const &a, GRect const &b) {
    GRect out;
    getIntersectedRect(out, a, b);
    return out;
}

inline bool GLine::operator==(GLine const &l) const { return start == l.start && end == l.end; }
inline bool GLine::operator!=(GLine const &l) const { return !(*this == l); }
inline bool GLine::isDefined() const { return start.isDefined() && end.isDefined(); }
inline bool GLine::isNotDefined() const { return !isDefined(); }
inline bool GLine::isValid() const { return *this != INVALID; }
inline void GLine::setNotDefined() {
    start.setNotDefined();
    end.setNotDefined();
}
inline void GLine::setInvalid() { setNotDefined(); }
inline GLine GLine::getNotdefined() { return INVALID; }

inline constexpr GThickness GThickness::thickness0{0, 0, 0, 0};

inline void GThickness::set(qint64 n) { top = left = bottom = right = n; }
inline void GThickness::set(qint64 t, qint64 l, qint64 b, qint64 r) {
    top = t, left = l, bottom = b, right = r;
}
inline void GThickness::set(GThickness const &t) { *this = t; }
inline bool GThickness::operator==(GThickness const &t) const {
    return top == t.top && left == t.left && bottom == t.bottom && right == t.right;
}
inline bool GThickness::operator!=(GThickness const &t) const { return !(*this == t); }
inline bool GThickness::isZero() const { return *this == thickness0; }
inline bool GThickness::isDefined() const {
    return top != geometry2d::MARK && left != geometry2d::MARK && bottom != geometry2d::MARK &&
           right != geometry2d::MARK;
}
inline bool GThickness::isNotDefined() const { return !isDefined(); }
inline void GThickness::setNotDefined() { set(geometry2d::MARK); }

} // namespace orv
