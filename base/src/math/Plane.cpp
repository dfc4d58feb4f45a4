// Plane.cpp: the line-plane intersection and the plane's text form.
#include "orv/Plane.h"

#include "orv/XStringStream.h"

namespace orv {

Vector3 Plane::getIntersection(Vector3 const &planePosition, Vector3 const &planeNormal,
                               Vector3 const &linePosition, Vector3 const &lineDirection) {
    float const along = lineDirection * planeNormal;
    // A line parallel to the plane meets it nowhere or everywhere; a zero normal spans no
    // plane. Either would divide by zero.
    if (along == 0.0f)
        return Vector3::INVALID;
    float const t = (planePosition - linePosition) * planeNormal / along;
    return linePosition + lineDirection * t;
}

QString Plane::toString() const {
    return xprintF("position = $, normal = $", position.toString(), normal.toString());
}

} // namespace orv
