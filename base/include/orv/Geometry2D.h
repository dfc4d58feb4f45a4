// Geometry2D.h: integer geometry for pixel coordinates and screen layout: GPoint,
// GDimension, GRect, GLine and GThickness, with 64-bit fields.
//
//   orv::GRect r(0, 0, 10, 10);
//   r.containsPoint(10, 10);                          // true: right and bottom edges count
//   orv::GPoint p = orv::GPoint::fromString("3, 4");  // not defined unless two numbers
//
// GMath::MIN_GLONG (-2147483648) in a field marks it as not defined. A point or a
// dimension is not defined when both fields hold the mark, a rectangle, line or
// thickness when any field does. Arithmetic whose result leaves the 64-bit range
// gives the mark too, and the containment tests compute exactly at any coordinate.
// Bodies of the one-liners are in orv/inline/Geometry2DInline.h.
#pragma once

#include "orv/GMath.h"

#include <QtCore/QString>

#include <type_traits>

namespace orv {

class ORV_EXPORT GPoint {
public:
    static GPoint const INVALID; // the mark in both fields

    qint64 x = 0, y = 0;

    GPoint() = default;
    constexpr GPoint(qint64 x, qint64 y) : x(x), y(y) {}
    GPoint(GPoint const &) = default;
    GPoint &operator=(GPoint const &) = default;
    virtual ~GPoint();

    void set(qint64 nx, qint64 ny);
    void setXY(qint64 nx, qint64 ny);
    bool operator==(GPoint const &p) const;
    bool operator!=(GPoint const &p) const;
    // A field whose sum leaves the 64-bit range becomes not defined.
    GPoint &operator+=(GPoint const &p);
    GPoint &operator-=(GPoint const &p);

    bool isDefined() const;    // neither field holds the mark
    bool isNotDefined() const; // both do
    bool isValid() const;      // differs from INVALID: the same as isNotDefined() false
    void setNotDefined();
    void setInvalid();
    static GPoint getNotdefined();

    // |dx| <= distance and |dy| <= distance on the lower 32 bits of the coordinates.
    bool isInTheNearOf(GPoint const &other, int distance) const;

    // Two numbers cut by ", \t"; any other count gives the not-defined point, and a
    // token that is no number leaves the mark in its field. Null asserts.
    static GPoint fromString(char const *pStr);
    // Always the literal "(%s, %s)": the coordinates never reach the text.
    QString toString() const;
};

class ORV_EXPORT GDimension {
public:
    static GDimension const INVALID;

    qint64 width = 0, height = 0;

    GDimension() = default;
    constexpr GDimension(qint64 width, qint64 height) : width(width), height(height) {}
    GDimension(GDimension const &) = default;
    GDimension &operator=(GDimension const &) = default;
    virtual ~GDimension();

    void set(qint64 w, qint64 h);
    bool operator==(GDimension const &d) const;
    bool operator!=(GDimension const &d) const;
    bool isDefined() const;    // neither field holds the mark
    bool isNotDefined() const; // both do
    bool isValid() const;      // differs from INVALID
    void setNotDefined();
    void setInvalid();
    static GDimension getNotdefined();

    static GDimension fromString(char const *pStr); // two numbers, as GPoint
    QString toString() const;                       // "(w, h)" through format1000
};

class ORV_EXPORT GRect {
public:
    static GRect const INVALID;

    GRect() = default;
    constexpr GRect(qint64 x, qint64 y, qint64 width, qint64 height)
        : x(x), y(y), width(width), height(height) {}
    GRect(qint64 width, qint64 height) : width(width), height(height) {}
    explicit GRect(GDimension const &size) : width(size.width), height(size.height) {}
    GRect(GRect const &) = default;
    GRect &operator=(GRect const &) = default;
    virtual ~GRect();

    bool operator==(GRect const &r) const;
    bool operator!=(GRect const &r) const;

    qint64 getX() const;
    qint64 getY() const;
    qint64 left() const;
    qint64 top() const;
    qint64 right() const;  // x + width
    qint64 bottom() const; // y + height
    qint64 getWidth() const;
    qint64 getHeight() const;
    GPoint getPosition() const;
    GDimension getSize() const;
    GPoint getTopLeft() const;
    GPoint getTopRight() const;
    GPoint getBottomLeft() const;
    GPoint getBottomRight() const;
    GPoint getMiddle() const; // x + width / 2, y + height / 2, integer division

    // setLeft and setTop move the edge alone, as setX and setY do.
    void setX(qint64 v);
    void setY(qint64 v);
    void setLeft(qint64 v);
    void setTop(qint64 v);
    // width := v - x; if that is negative, x := v and width := old x - v.
    void setRight(qint64 v);
    void setBottom(qint64 v); // the same on y and height
    void setWidth(qint64 v);
    void setHeight(qint64 v);
    void setPosition(GPoint const &p);
    void setSize(GDimension const &d);
    void setValues(GRect const &r);
    void setValues(qint64 nx, qint64 ny, qint64 w, qint64 h);
    void addValues(qint64 dx, qint64 dy, qint64 dw, qint64 dh);
    // x and y grow by n, width and height shrink by 2n.
    void shrink(qint64 n);
    // Moves other so that it is centred in this rectangle (integer division by 2).
    void setRect2Middle(GRect &other) const;

    bool isDefined() const;    // no field holds the mark
    bool isNotDefined() const; // any field does
    bool isValid() const;      // differs from INVALID
    void setNotDefined();
    void setInvalid();
    static GRect getNotdefined();
    // x and y not negative, width and height at least 1.
    bool isNormal() const;

    // Inclusive: x <= px <= x + width and y <= py <= y + height. The float and double
    // forms truncate to an integer first; a NaN is never contained.
    bool containsPoint(GPoint const &p) const;
    bool containsPoint(qint64 px, qint64 py) const;
    bool containsPoint(float px, float py) const;
    bool containsPoint(double px, double py) const;
    // Strict comparisons on all four edges.
    bool containsPointExclude(GPoint const &p) const;
    bool containsPointExclude(qint64 px, qint64 py) const;
    bool containsPointExclude(float px, float py) const;
    bool containsPointExclude(double px, double py) const;
    // Other integer types, which would otherwise be ambiguous between the forms above.
    template <typename Int, std::enable_if_t<std::is_integral_v<Int>, int> = 0>
    bool containsPoint(Int px, Int py) const {
        return containsPoint(qint64(px), qint64(py));
    }
    template <typename Int, std::enable_if_t<std::is_integral_v<Int>, int> = 0>
    bool containsPointExclude(Int px, Int py) const {
        return containsPointExclude(qint64(px), qint64(py));
    }
    bool containsLineHorz(qint64 py) const;
    // Both corners of r, (x, y) and (x + width, y + height).
    bool containsRect(GRect const &r) const;
    bool containsRectExclude(GRect const &r) const;
    // Any corner of r inside this rectangle. Only r's corners are tested, so
    // a.intersects(b) and b.intersects(a) can differ.
    bool intersects(GRect const &r) const;
    bool intersectsExclude(GRect const &r) const;

    // Not normalized: a negative width or height means no overlap.
    static GRect getIntersectedRect(GRect const &a, GRect const &b);
    static void getIntersectedRect(GRect &out, GRect const &a, GRect const &b);
    // A rectangle of negative width or height counts as empty and gives the other.
    static GRect getUnionRect(GRect const &a, GRect const &b);

    static GRect fromString(char const *pStr); // four numbers, as GPoint
    QString toString() const;                  // "(x, y, w, h)" through format1000

private:
    qint64 x = 0, y = 0, width = 0, height = 0;
};

class ORV_EXPORT GLine {
public:
    static GLine const INVALID;

    GPoint start, end;

    GLine() = default;
    GLine(GPoint const &start, GPoint const &end) : start(start), end(end) {}
    constexpr GLine(qint64 x1, qint64 y1, qint64 x2, qint64 y2) : start(x1, y1), end(x2, y2) {}
    GLine(GLine const &) = default;
    GLine &operator=(GLine const &) = default;
    virtual ~GLine();

    bool operator==(GLine const &l) const;
    bool operator!=(GLine const &l) const;
    bool isDefined() const;    // none of the four numbers holds the mark
    bool isNotDefined() const; // any does
    bool isValid() const;      // differs from INVALID
    void setNotDefined();
    void setInvalid();
    static GLine getNotdefined();

    static GLine fromString(char const *pStr); // x1 y1 x2 y2, as GPoint
};

class ORV_EXPORT GThickness {
public:
    static GThickness const thickness0; // all zero

    qint64 top = 0, left = 0, bottom = 0, right = 0;

    GThickness() = default;
    constexpr GThickness(qint64 top, qint64 left, qint64 bottom, qint64 right)
        : top(top), left(left), bottom(bottom), right(right) {}

    void set(qint64 n);
    void set(qint64 t, qint64 l, qint64 b, qint64 r);
    void set(GThickness const &t);
    bool operator==(GThickness const &t) const;
    bool operator!=(GThickness const &t) const;
    bool isZero() const;
    qint64 getHeight() const; // top + bottom
    qint64 getWidth() const;  // left + right
    bool isDefined() const;   // no field holds the mark
    bool isNotDefined() const;
    void setNotDefined();

    static GThickness fromString(char const *pStr); // top left bottom right, as GPoint
    QString toString() const;                       // "(top:t, left:l, bottom:b, right:r)"
};

} // namespace orv

#include "orv/inline/Geometry2DInline.h"
