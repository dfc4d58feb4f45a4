// Pose.h: a right-handed coordinate system of three axes, and a pose (position
// and orientation) built on it.
//
//   orv::CoordinateSystem3 cs;
//   cs.setAfterRightHandRule({1, 1, 0}, {0, 1, 0});  // applicate := abscissa x ordinate
//   orv::Pose3 pose({0, 0, 5}, cs);
#pragma once

#include "orv/Matrix.h"

namespace orv {

class ORV_EXPORT CoordinateSystem3 {
public:
    Vector3 abscissa = Vector3::UNIT_X_POSITIVE;
    Vector3 ordinate = Vector3::UNIT_Y_POSITIVE;
    Vector3 applicate = Vector3::UNIT_Z_POSITIVE;

    void initialize() { *this = CoordinateSystem3(); }
    // Stores the axes, then controlOrthonormality().
    void set(Vector3 const &abscissa, Vector3 const &ordinate, Vector3 const &applicate);
    void setAfterRightHandRule(Vector3 const &abscissa, Vector3 const &ordinate);
    // Rotates each axis by m (Vector3::rotate), then controlOrthonormality().
    void setRotation(Matrix3 const &m);
    // Normalizes each axis; rebuilds by Gram-Schmidt when | 1 - |triple product| | > 0.01.
    void controlOrthonormality();
    void orthonormalizeAfterGramSchmidt();
    void orthonormalizeAfterRightHandRule();
    QString toString() const;
};

class ORV_EXPORT Pose3 {
public:
    Vector3 position;
    CoordinateSystem3 orientation;

    Pose3() = default;
    Pose3(Vector3 const &position, CoordinateSystem3 const &orientation)
        : position(position), orientation(orientation) {}
    void set(Pose3 const &p) { *this = p; }
    QString toString() const;
};

} // namespace orv
