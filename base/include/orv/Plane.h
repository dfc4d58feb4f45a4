// Plane.h: a plane by a point and a normal, with its distances, line intersection
// and projection as static functions on plain vectors.
//
//   orv::Plane ground({0, 0, 0}, {0, 0, 1});
//   float h = orv::Plane::getDistanceDirected({0, 0, 0}, {0, 0, 1}, {3, 4, -2});  // -2
//   orv::Vector3 hit = ground.getIntersection(orv::Line3({0, 0, 5}, {1, 0, -1})); // (5, 0, 0)
#pragma once

#include "orv/Line.h"

namespace orv {

class ORV_EXPORT Plane {
public:
    Plane() = default;
    Plane(Vector3 const &position, Vector3 const &normal) : position(position), normal(normal) {}

    Vector3 const &getPosition() const { return position; }
    Vector3 const &getNormal() const { return normal; }
    // Normalized a x b: the normal of the plane spanned by a and b; zero when they are
    // parallel, as for three collinear points.
    static Vector3 getNormal(Vector3 const &a, Vector3 const &b) { return (a % b).normalize(); }

    // Signed by the side of the normal; the normal needn't be a unit vector.
    static float getDistanceDirected(Vector3 const &position, Vector3 const &normal,
                                     Vector3 const &point) {
        return (point - position) * normal / ~normal;
    }
    static float getDistance(Vector3 const &position, Vector3 const &normal, Vector3 const &point) {
        return std::fabs(getDistanceDirected(position, normal, point));
    }

    Vector3 getIntersection(Line3 const &line) const {
        return getIntersection(position, normal, line.getPosition(), line.getDirection());
    }
    // INVALID for a line parallel to the plane (or lying in it) and for a zero normal.
    static Vector3 getIntersection(Vector3 const &planePosition, Vector3 const &planeNormal,
                                   Vector3 const &linePosition, Vector3 const &lineDirection);
    // (normal x v) x normal: the part of v in the plane when normal is a unit vector.
    static Vector3 getProjectedVector(Vector3 const &normal, Vector3 const &v) {
        return (normal % v) % normal;
    }

    QString toString() const;

private:
    Vector3 position, normal;
};

} // namespace orv
