// Quaternion.h: rotations as quaternions, components in the order w, x, y, z.
//
//   orv::Quaternion q(orv::Vector3::UNIT_Z_POSITIVE, orv::GMath::HALF_PI);
//   q.multiplyBy(other);          // q := q * other (Hamilton product)
//   float len = ~q;               // length; !q normalizes in place
#pragma once

#include "orv/Vector.h"

namespace orv {

class ORV_EXPORT Quaternion {
public:
    float w = 1.0f, x = 0.0f, y = 0.0f, z = 0.0f;

    static Quaternion const INVALID;

    constexpr Quaternion() = default;
    constexpr Quaternion(float w, float x, float y, float z) : w(w), x(x), y(y), z(z) {}
    Quaternion(Vector3 const &axis, float angle) { set(axis, angle); }

    // A zero axis logs an error and gives the identity; an unnormalised one is
    // logged (debug) with CHECK_NORMALIZING and used as it is.
    void set(Vector3 const &axis, float angle);
    void setW(float v) { w = v; }
    void setX(float v) { x = v; }
    void setY(float v) { y = v; }
    void setZ(float v) { z = v; }

    float operator~() const { return std::sqrt(w * w + x * x + y * y + z * z); }
    Quaternion &operator!() {
        float const len = ~*this;
        if (len > GMath::EPSILON) {
            float const inv = 1.0f / len;
            w *= inv, x *= inv, y *= inv, z *= inv;
        }
        return *this;
    }
    // The four-dimensional dot product.
    float operator*(Quaternion const &q) const { return w * q.w + x * q.x + y * q.y + z * q.z; }

    bool isNormalized() const {
        float const len = ~*this;
        return len >= GMath::MIN_ONE_ALLOWED && len <= GMath::MAX_ONE_ALLOWED;
    }
    bool compareMemory(Quaternion const &q) const { return std::memcmp(this, &q, sizeof q) == 0; }
    bool isValid() const { return !compareMemory(INVALID); }

    // result := a * b; result may be a or b.
    static void multiplication(Quaternion &result, Quaternion const &a, Quaternion const &b) {
        result = Quaternion(a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z,
                            a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
                            a.w * b.y - a.x * b.z + a.y * b.w + a.z * b.x,
                            a.w * b.z + a.x * b.y - a.y * b.x + a.z * b.w);
    }
    void multiplyBy(Quaternion const &b) { multiplication(*this, *this, b); }
    void multiplyBy(Quaternion &result, Quaternion const &b) const {
        multiplication(result, *this, b);
    }
    // this := a * this. Nothing is inverted: the name stands for the left multiplication.
    void multiplyInverseBy(Quaternion const &a) { multiplication(*this, a, *this); }

    QString toString() const;
};

inline constexpr Quaternion Quaternion::INVALID{GMath::MAX_FLOAT, GMath::MAX_FLOAT,
                                                GMath::MAX_FLOAT, GMath::MAX_FLOAT};

} // namespace orv
