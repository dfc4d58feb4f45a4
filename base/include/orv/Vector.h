// Vector.h: the vector value types in 2, 3 and 4 dimensions.
//
//   orv::Vector3 a(1, 0, 0), b(0, 1, 0);
//   orv::Vector3 n = a % b;          // cross product, (0, 0, 1)
//   float d = a * b;                 // dot product
//   !n;                              // normalizes in place; a zero vector stays zero
//
// INVALID holds MAX_FLOAT in every component and is tested by memory, not by value.
// Dividing by exactly 0 gives INVALID rather than an infinity.
#pragma once

#include "orv/GMath.h"

#include <QtCore/QString>

#include <cstring>
#include <type_traits>

namespace orv {

class Matrix2;
class Matrix3;
template <typename T> class Matrix4T;
using Matrix4 = Matrix4T<float>;
using Matrix4d = Matrix4T<double>;

class Vector2;

class ORV_EXPORT Vector3 {
public:
    float x = 0.0f, y = 0.0f, z = 0.0f;

    static Vector3 const POINT_OF_ORIGIN, UNIT_X_POSITIVE, UNIT_X_NEGATIVE, UNIT_Y_POSITIVE,
        UNIT_Y_NEGATIVE, UNIT_Z_POSITIVE, UNIT_Z_NEGATIVE, INVALID;
    static constexpr float TOLERANCE = 1e-5f;

    constexpr Vector3() = default;
    constexpr Vector3(float x, float y, float z) : x(x), y(y), z(z) {}
    explicit Vector3(float const *v) : x(v[0]), y(v[1]), z(v[2]) {}
    Vector3(Vector2 const &v, float z);

    Vector3 operator+(Vector3 const &v) const { return {x + v.x, y + v.y, z + v.z}; }
    Vector3 operator-(Vector3 const &v) const { return {x - v.x, y - v.y, z - v.z}; }
    Vector3 operator-() const { return {-x, -y, -z}; }
    Vector3 &operator+=(Vector3 const &v) { return *this = *this + v; }
    Vector3 &operator-=(Vector3 const &v) { return *this = *this - v; }
    Vector3 operator*(float s) const { return {x * s, y * s, z * s}; }
    Vector3 &operator*=(float s) { return *this = *this * s; }
    Vector3 operator/(float s) const {
        if (s == 0.0f)
            return INVALID;
        float const inv = 1.0f / s;
        return {x * inv, y * inv, z * inv};
    }
    Vector3 &operator/=(float s) { return *this = *this / s; }
    float operator*(Vector3 const &v) const { return x * v.x + y * v.y + z * v.z; }
    Vector3 operator%(Vector3 const &v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    float operator~() const { return std::sqrt(x * x + y * y + z * z); }
    Vector3 &operator!() { return normalize(); }
    bool operator==(Vector3 const &v) const { return x == v.x && y == v.y && z == v.z; }
    bool operator!=(Vector3 const &v) const { return !(*this == v); }
    Vector3 &operator*=(Matrix3 const &m) { return rotate(m); }
    // Out of 0..2 reads MAX_FLOAT; a write goes to a scratch value and is lost.
    float operator[](int i) const {
        return i == 0 ? x : i == 1 ? y : i == 2 ? z : GMath::MAX_FLOAT;
    }
    float &operator[](int i);

    // A length at or below EPSILON leaves the vector as it is.
    Vector3 &normalize() {
        float const len = ~*this;
        if (len > GMath::EPSILON)
            *this *= 1.0f / len;
        return *this;
    }
    void setLength(float l) { *this *= l / ~*this; }
    void set(float nx, float ny, float nz) { x = nx, y = ny, z = nz; }
    void setZero() { x = y = z = 0.0f; }
    bool isZero() const { return x == 0.0f && y == 0.0f && z == 0.0f; }
    bool isNormalized() const {
        float const len = ~*this;
        return len >= GMath::MIN_ONE_ALLOWED && len <= GMath::MAX_ONE_ALLOWED;
    }
    bool isEqual(Vector3 const &v) const { return isNearly(v, GMath::EPSILON); }
    bool isNearly(Vector3 const &v, float t) const {
        return GMath::isNearly(x, v.x, t) && GMath::isNearly(y, v.y, t) &&
               GMath::isNearly(z, v.z, t);
    }
    bool compareWithTolerance(Vector3 const &v, float t) const { return isNearly(v, t); }
    bool compareMemory(Vector3 const &v) const { return std::memcmp(this, &v, sizeof v) == 0; }
    bool isValid() const { return !compareMemory(INVALID); }
    // Both must be unit vectors; with CHECK_NORMALIZING each that isn't is logged.
    float getAngle(Vector3 const &v) const;
    Vector3 getNormal() const { return Vector3(*this).normalize(); }
    Vector3 getScalingInverse(float s) const { return *this / s; }
    float getScalarTripleProduct(Vector3 const &b, Vector3 const &c) const {
        return *this * (b % c);
    }
    Vector3 average(Vector3 const &v) const { return (*this + v) * 0.5f; }
    static Vector3 interpolateLinear(float t, Vector3 const &a, Vector3 const &b) {
        return a * (1.0f - t) + b * t;
    }
    void addX(float d) { x += d; }
    void addY(float d) { y += d; }
    void addZ(float d) { z += d; }
    // The Euclidean distance strictly below d.
    bool isInTheNearOf(Vector3 const &v, float d) const { return ~(*this - v) < d; }
    // Any one axis beyond t decides; not a strict order, only for points spread along an axis.
    bool isSmaller_within_RBTree(Vector3 const &v, float t) const {
        return v.x > x + t || v.y > y + t || v.z > z + t;
    }
    // v := v * m with v as a row vector: the opposite side from Vector4::multiply.
    Vector3 &rotate(Matrix3 const &m);
    QString toString(bool exact = false) const;
};

class ORV_EXPORT Vector2 {
public:
    float x = 0.0f, y = 0.0f;

    static Vector2 const POINT_OF_ORIGIN, UNIT_X_POSITIVE, UNIT_X_NEGATIVE, UNIT_Y_POSITIVE,
        UNIT_Y_NEGATIVE, INVALID;
    static constexpr float TOLERANCE = 1e-5f;

    constexpr Vector2() = default;
    constexpr Vector2(float x, float y) : x(x), y(y) {}

    Vector2 operator+(Vector2 const &v) const { return {x + v.x, y + v.y}; }
    Vector2 operator-(Vector2 const &v) const { return {x - v.x, y - v.y}; }
    Vector2 operator-() const { return {-x, -y}; }
    Vector2 &operator+=(Vector2 const &v) { return *this = *this + v; }
    Vector2 &operator-=(Vector2 const &v) { return *this = *this - v; }
    Vector2 operator*(float s) const { return {x * s, y * s}; }
    Vector2 &operator*=(float s) { return *this = *this * s; }
    Vector2 operator/(float s) const {
        if (s == 0.0f)
            return INVALID;
        float const inv = 1.0f / s;
        return {x * inv, y * inv};
    }
    Vector2 &operator/=(float s) { return *this = *this / s; }
    float operator*(Vector2 const &v) const { return x * v.x + y * v.y; }
    Vector3 operator%(Vector2 const &v) const { return {0.0f, 0.0f, x * v.y - y * v.x}; }
    float operator~() const { return std::sqrt(x * x + y * y); }
    Vector2 &operator!() { return normalize(); }
    bool operator==(Vector2 const &v) const { return x == v.x && y == v.y; }
    bool operator!=(Vector2 const &v) const { return !(*this == v); }
    // v := v * m as a row vector, the same side as Vector3::rotate.
    Vector2 &operator*=(Matrix2 const &m);

    Vector2 &normalize() {
        float const len = ~*this;
        if (len > GMath::EPSILON)
            *this *= 1.0f / len;
        return *this;
    }
    void setLength(float l) { *this *= l / ~*this; }
    void set(float nx, float ny) { x = nx, y = ny; }
    void setZero() { x = y = 0.0f; }
    bool isZero() const { return x == 0.0f && y == 0.0f; }
    bool isNormalized() const {
        float const len = ~*this;
        return len >= GMath::MIN_ONE_ALLOWED && len <= GMath::MAX_ONE_ALLOWED;
    }
    bool isEqual(Vector2 const &v) const { return isNearly(v, GMath::EPSILON); }
    bool isNearly(Vector2 const &v, float t) const {
        return GMath::isNearly(x, v.x, t) && GMath::isNearly(y, v.y, t);
    }
    bool compareWithTolerance(Vector2 const &v, float t) const { return isNearly(v, t); }
    bool compareMemory(Vector2 const &v) const { return std::memcmp(this, &v, sizeof v) == 0; }
    bool isValid() const { return !compareMemory(INVALID); }

    // The second reserved state: MIN_FLOAT in both components.
    void setNotDefined() { x = y = GMath::MIN_FLOAT; }
    bool isNotDefined() const { return x == GMath::MIN_FLOAT && y == GMath::MIN_FLOAT; }
    bool isDefined() const { return !isNotDefined(); }

    float getAngle(Vector2 const &v) const;
    Vector2 getNormal() const { return Vector2(*this).normalize(); }
    Vector2 getScalingInverse(float s) const { return *this / s; }
    Vector2 average(Vector2 const &v) const { return (*this + v) * 0.5f; }
    static Vector2 interpolateLinear(float t, Vector2 const &a, Vector2 const &b) {
        return a * (1.0f - t) + b * t;
    }
    void addX(float d) { x += d; }
    void addY(float d) { y += d; }
    bool isInTheNearOf(Vector2 const &v, float d) const { return ~(*this - v) < d; }
    bool isSmaller_within_RBTree(Vector2 const &v, float t) const {
        return v.x > x + t || v.y > y + t;
    }
    QString toString() const;
};

inline Vector3::Vector3(Vector2 const &v, float z) : x(v.x), y(v.y), z(z) {}

inline constexpr Vector2 Vector2::POINT_OF_ORIGIN{0.0f, 0.0f};
inline constexpr Vector2 Vector2::UNIT_X_POSITIVE{1.0f, 0.0f};
inline constexpr Vector2 Vector2::UNIT_X_NEGATIVE{-1.0f, 0.0f};
inline constexpr Vector2 Vector2::UNIT_Y_POSITIVE{0.0f, 1.0f};
inline constexpr Vector2 Vector2::UNIT_Y_NEGATIVE{0.0f, -1.0f};
inline constexpr Vector2 Vector2::INVALID{GMath::MAX_FLOAT, GMath::MAX_FLOAT};
inline constexpr Vector3 Vector3::POINT_OF_ORIGIN{0.0f, 0.0f, 0.0f};
inline constexpr Vector3 Vector3::UNIT_X_POSITIVE{1.0f, 0.0f, 0.0f};
inline constexpr Vector3 Vector3::UNIT_X_NEGATIVE{-1.0f, 0.0f, 0.0f};
inline constexpr Vector3 Vector3::UNIT_Y_POSITIVE{0.0f, 1.0f, 0.0f};
inline constexpr Vector3 Vector3::UNIT_Y_NEGATIVE{0.0f, -1.0f, 0.0f};
inline constexpr Vector3 Vector3::UNIT_Z_POSITIVE{0.0f, 0.0f, 1.0f};
inline constexpr Vector3 Vector3::UNIT_Z_NEGATIVE{0.0f, 0.0f, -1.0f};
inline constexpr Vector3 Vector3::INVALID{GMath::MAX_FLOAT, GMath::MAX_FLOAT, GMath::MAX_FLOAT};

// The homogeneous forms, in single and double precision.
template <typename T> class Vector4T {
public:
    T x, y, z, w;

    static Vector4T const INVALID;

    // Vector4 stays unset, for arrays that are filled right after; Vector4d is zero.
    Vector4T() {
        if constexpr (!std::is_same_v<T, float>)
            x = y = z = w = T(0);
    }
    constexpr Vector4T(T x, T y, T z, T w) : x(x), y(y), z(z), w(w) {}
    Vector4T(Vector2 const &v, T z, T w) : x(v.x), y(v.y), z(z), w(w) {}
    Vector4T(Vector3 const &v, T w) : x(v.x), y(v.y), z(v.z), w(w) {}

    // v := m * v, v a column vector.
    void multiply(Matrix4 const &m);
    void multiply(Matrix4d const &m);
    // v := v * m, v a row vector.
    void multiply_left(Matrix4 const &m);
    void multiply_left(Matrix4d const &m);
    // For a projected point; w = 0 is not guarded.
    void computeNDC() {
        x /= w, y /= w, z /= w;
        w = T(1);
    }
    bool compareMemory(Vector4T const &v) const { return std::memcmp(this, &v, sizeof v) == 0; }
    bool isValid() const { return !compareMemory(INVALID); }
    T getX() const { return x; }
    T getY() const { return y; }
    T getZ() const { return z; }
    T getW() const { return w; }
    QString toString() const;
};

template <typename T>
inline constexpr Vector4T<T> Vector4T<T>::INVALID{GMath::MAX_FLOAT, GMath::MAX_FLOAT,
                                                  GMath::MAX_FLOAT, GMath::MAX_FLOAT};

extern template class ORV_EXPORT Vector4T<float>;
extern template class ORV_EXPORT Vector4T<double>;
using Vector4 = Vector4T<float>;
using Vector4d = Vector4T<double>;

} // namespace orv
