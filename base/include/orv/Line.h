// Line.h: infinite lines and segments in 2D and 3D, as small value types with the
// geometry on them as static functions on plain vectors.
//
//   orv::Line3 a({0, 0, 0}, {1, 0, 0}), b({5, -1, 0}, {0, 1, 0});
//   orv::Vector3 p = orv::Line3::getIntersection(a, b);   // (5, 0, 0); INVALID if none
//
// All float. Directions are kept as given: the functions that need a unit direction
// say so in their parameter name.
#pragma once

#include "orv/Vector.h"

namespace orv {

class ORV_EXPORT Line2 {
public:
    Line2() = default;
    Line2(Vector2 const &position, Vector2 const &direction)
        : position(position), direction(direction) {}

    Vector2 const &getPosition() const { return position; }
    Vector2 const &getDirection() const { return direction; }

    // With CHECK_NORMALIZING, a direction that isn't a unit vector is logged; the work goes on.
    static Vector2 getFootOfPerpendicularByLine(Vector2 const &position,
                                                Vector2 const &unitDirection, Vector2 const &point);
    // a == b gives a: the zero direction stays zero.
    static Vector2 getFootOfPerpendicularByPoints(Vector2 const &a, Vector2 const &b,
                                                  Vector2 const &point);
    QString toString() const;

private:
    Vector2 position, direction;
};

class ORV_EXPORT LineSegment2 {
public:
    LineSegment2() = default;
    // false: both points not defined (Vector2::setNotDefined).
    explicit LineSegment2(bool defined) {
        if (!defined)
            setNotDefined();
    }
    LineSegment2(Vector2 const &point1, Vector2 const &point2) : point1(point1), point2(point2) {}

    Vector2 const &getPoint1() const { return point1; }
    Vector2 const &getPoint2() const { return point2; }
    float getDeltaX() const { return point2.x - point1.x; }
    float getDeltaY() const { return point2.y - point1.y; }
    // Only the first point decides.
    bool isDefined() const { return point1.isDefined(); }
    void setNotDefined() {
        point1.setNotDefined();
        point2.setNotDefined();
    }
    QString toString() const;

private:
    Vector2 point1, point2;
};

class ORV_EXPORT Line3 {
public:
    Line3() = default;
    // Through the origin.
    explicit Line3(Vector3 const &direction) : direction(direction) {}
    Line3(Vector3 const &position, Vector3 const &direction)
        : position(position), direction(direction) {}

    void set(Vector3 const &p, Vector3 const &d) { position = p, direction = d; }
    Vector3 const &getPosition() const { return position; }
    Vector3 const &getDirection() const { return direction; }
    Vector3 &getDirectionAsReference() { return direction; }

    float getDistance(Line3 const &other) const {
        return getDistance(position, direction, other.position, other.direction);
    }
    float getDistance(Vector3 const &point) const {
        return getDistance(position, direction, point);
    }
    // Line to line. Parallel lines give the distance of p2 from the first line.
    static float getDistance(Vector3 const &p1, Vector3 const &d1, Vector3 const &p2,
                             Vector3 const &d2);
    // Point to line; a zero direction shrinks the line to its position.
    static float getDistance(Vector3 const &position, Vector3 const &direction,
                             Vector3 const &point);
    static float getDistanceByPoints(Vector3 const &a, Vector3 const &b, Vector3 const &point) {
        return getDistance(a, b - a, point);
    }

    // The point on a nearest to b; INVALID for parallel lines or a zero direction.
    static Vector3 getFootOfPerpendicular(Line3 const &a, Line3 const &b);
    // With CHECK_NORMALIZING, a direction that isn't a unit vector is logged; the work goes on.
    static Vector3 getFootOfPerpendicularByLine(Vector3 const &position,
                                                Vector3 const &unitDirection, Vector3 const &point);
    static Vector3 getFootOfPerpendicularByPoints(Vector3 const &a, Vector3 const &b,
                                                  Vector3 const &point);
    // The meeting point; INVALID with an ERROR line for parallel lines or a zero
    // direction, INVALID with three DEBUG lines for skew lines (tolerance 2e-6).
    static Vector3 getIntersection(Line3 const &a, Line3 const &b);
    // The unit vector from the foot of the perpendicular to point; zero for a point on the line.
    static Vector3 getNormal(Vector3 const &position, Vector3 const &direction,
                             Vector3 const &point);

    // These compare the directions alone, componentwise; opposite directions differ.
    // equal: GMath::EPSILON, nearly: 1e-5, by_tolerance: t.
    static bool is_collinear_equal(Line3 const &a, Line3 const &b);
    static bool is_collinear_nearly(Line3 const &a, Line3 const &b);
    static bool is_collinear_by_tolerance(Line3 const &a, Line3 const &b, float t);

    QString toString() const;

private:
    static Vector3 _getIntersectionInternally(int i, int j, int k, Vector3 const &p1,
                                              Vector3 const &d1, Vector3 const &p2,
                                              Vector3 const &d2, float det);

    Vector3 position, direction;
};

class ORV_EXPORT LineSegment3 {
public:
    LineSegment3() = default;
    LineSegment3(Vector3 const &point1, Vector3 const &point2) : point1(point1), point2(point2) {}

    Vector3 getPoint1Copy() const { return point1; }
    Vector3 const &getPoint2() const { return point2; }
    float getDeltaX() const { return point2.x - point1.x; }
    float getDeltaY() const { return point2.y - point1.y; }
    float getDeltaZ() const { return point2.z - point1.z; }

    // The segment taken as the whole line through both points.
    float getDistance(Line3 const &line) const {
        return Line3::getDistance(point1, point2 - point1, line.getPosition(), line.getDirection());
    }
    // Whether the point of the segment's line nearest to line lies on the segment;
    // a foot on point1 itself counts as outside.
    bool isFootOfPerpendicularInside(Line3 const &line) const;
    QString toString() const;

private:
    Vector3 point1, point2;
};

} // namespace orv
