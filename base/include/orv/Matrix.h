// Matrix.h: 2x2, 3x3 and 4x4 matrices, row-major, working on column vectors.
//
//   orv::Matrix4 view;                      // identity
//   view.setRotationZ(orv::GMath::HALF_PI); // only the 3x3 block
//   view.translate({1, 0, 0});              // view := view * T, along the rotated X
//   orv::Matrix4 back = view.getInverse();  // ZERO when the matrix is singular
//
// Element (r, c), both from 1, lies at the flat index (r - 1) * n + (c - 1); the
// translation of a Matrix4 sits in elements 14, 24, 34. a *= b means a := a * b.
#pragma once

#include "orv/Vector.h"

#include <algorithm>

namespace orv {

class Quaternion;

class ORV_EXPORT Matrix2 {
public:
    float m[4] = {1.0f, 0.0f, 0.0f, 1.0f};

    Matrix2() = default;
    // The rotation by angle radians: cos, -sin, sin, cos.
    explicit Matrix2(float angle);
    Matrix2(float m11, float m12, float m21, float m22) : m{m11, m12, m21, m22} {}

    float getElement11() const { return m[0]; }
    float getElement12() const { return m[1]; }
    float getElement21() const { return m[2]; }
    float getElement22() const { return m[3]; }
    void setElement11(float v) { m[0] = v; }
    void setElement12(float v) { m[1] = v; }
    void setElement21(float v) { m[2] = v; }
    void setElement22(float v) { m[3] = v; }
    void set(float m11, float m12, float m21, float m22) { *this = Matrix2(m11, m12, m21, m22); }
    void setZero() { m[0] = m[1] = m[2] = m[3] = 0.0f; }
    float getDeterminant() const { return m[3] * m[0] - m[2] * m[1]; }
    // Out of 0..3 reads MAX_FLOAT; a write goes to a scratch value and is lost.
    float operator[](int i) const { return i >= 0 && i < 4 ? m[i] : GMath::MAX_FLOAT; }
    float &operator[](int i);
    QString toString() const;
};

class ORV_EXPORT Matrix3 {
public:
    float m[9] = {1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f};

    Matrix3() = default;
    Matrix3(float m11, float m12, float m13, float m21, float m22, float m23, float m31, float m32,
            float m33)
        : m{m11, m12, m13, m21, m22, m23, m31, m32, m33} {}

    float getElement11() const { return m[0]; }
    float getElement12() const { return m[1]; }
    float getElement13() const { return m[2]; }
    float getElement21() const { return m[3]; }
    float getElement22() const { return m[4]; }
    float getElement23() const { return m[5]; }
    float getElement31() const { return m[6]; }
    float getElement32() const { return m[7]; }
    float getElement33() const { return m[8]; }
    void setElement11(float v) { m[0] = v; }
    void setElement12(float v) { m[1] = v; }
    void setElement13(float v) { m[2] = v; }
    void setElement21(float v) { m[3] = v; }
    void setElement22(float v) { m[4] = v; }
    void setElement23(float v) { m[5] = v; }
    void setElement31(float v) { m[6] = v; }
    void setElement32(float v) { m[7] = v; }
    void setElement33(float v) { m[8] = v; }
    void getRow1(Vector3 &row) const { row.set(m[0], m[1], m[2]); }
    void getRow2(Vector3 &row) const { row.set(m[3], m[4], m[5]); }
    void getRow3(Vector3 &row) const { row.set(m[6], m[7], m[8]); }
    void setZero() { std::fill(m, m + 9, 0.0f); }

    void setRotationX(float angle);
    void setRotationY(float angle);
    void setRotationZ(float angle);
    // An unnormalised quaternion is logged (debug) with CHECK_NORMALIZING and used as it is.
    void setRotation(Quaternion const &q);
    // Rodrigues; an unnormalised axis is logged with CHECK_NORMALIZING and used as it is.
    void setRotation(Vector3 const &axis, float angle);
    // The three vectors become the rows.
    void setRotation(Vector3 const &row1, Vector3 const &row2, Vector3 const &row3);
    Quaternion getQuaternion() const;
    float getDeterminant() const;
    // Tolerance 0.01. The first test isn't the plain row 1 . row 2, so a large
    // rotation about Z can be refused.
    bool isRotationMatrix() const;
    Matrix3 &operator*=(Matrix3 const &b);
    float operator[](int i) const { return i >= 0 && i < 9 ? m[i] : GMath::MAX_FLOAT; }
    float &operator[](int i);
    QString toString() const;
};

// Matrix4 (float) and Matrix4d (double) share one body.
template <typename T> class Matrix4T {
public:
    T m[16];

    static Matrix4T const IDENTITY;
    static Matrix4T const ZERO;

    Matrix4T() { setIdentity(); }
    // Identity if true, all zero if false.
    explicit Matrix4T(bool identity) {
        if (identity)
            setIdentity();
        else
            setZero();
    }
    // transposed true reads the 16 values as column-major.
    Matrix4T(T const *values, bool transposed);
    Matrix4T(T m11, T m12, T m13, T m14, T m21, T m22, T m23, T m24, T m31, T m32, T m33, T m34,
             T m41, T m42, T m43, T m44)
        : m{m11, m12, m13, m14, m21, m22, m23, m24, m31, m32, m33, m34, m41, m42, m43, m44} {}

    T getElement(int row, int column) const { return m[(row - 1) * 4 + column - 1]; }
    void setElement(int row, int column, T v) { m[(row - 1) * 4 + column - 1] = v; }
#define ORV_MATRIX4_ELEMENT(r, c)                                                                  \
    T getElement##r##c() const { return m[(r - 1) * 4 + c - 1]; }                                  \
    void setElement##r##c(T v) { m[(r - 1) * 4 + c - 1] = v; }
    // clang-format off
    ORV_MATRIX4_ELEMENT(1, 1) ORV_MATRIX4_ELEMENT(1, 2) ORV_MATRIX4_ELEMENT(1, 3) ORV_MATRIX4_ELEMENT(1, 4)
    ORV_MATRIX4_ELEMENT(2, 1) ORV_MATRIX4_ELEMENT(2, 2) ORV_MATRIX4_ELEMENT(2, 3) ORV_MATRIX4_ELEMENT(2, 4)
    ORV_MATRIX4_ELEMENT(3, 1) ORV_MATRIX4_ELEMENT(3, 2) ORV_MATRIX4_ELEMENT(3, 3) ORV_MATRIX4_ELEMENT(3, 4)
    ORV_MATRIX4_ELEMENT(4, 1) ORV_MATRIX4_ELEMENT(4, 2) ORV_MATRIX4_ELEMENT(4, 3) ORV_MATRIX4_ELEMENT(4, 4)
    // clang-format on
#undef ORV_MATRIX4_ELEMENT

                        void setIdentity() {
        setZero();
        m[0] = m[5] = m[10] = m[15] = T(1);
    }
    void setZero() { std::fill(m, m + 16, T(0)); }
    // Only the 3x3 block; the fourth row and column stay.
    void setIdentityRotation() { setRotation(1, 0, 0, 0, 1, 0, 0, 0, 1); }
    void setRotation(T m11, T m12, T m13, T m21, T m22, T m23, T m31, T m32, T m33) {
        m[0] = m11, m[1] = m12, m[2] = m13;
        m[4] = m21, m[5] = m22, m[6] = m23;
        m[8] = m31, m[9] = m32, m[10] = m33;
    }
    void setRotationX(T angle);
    void setRotationY(T angle);
    void setRotationZ(T angle);
    // Matrix4d narrows to float.
    Matrix3 getRotation() const;

    // this := this * T(v)
    void translate(Vector3 const &v) {
        for (int r = 0; r < 16; r += 4)
            m[r + 3] += m[r] * v.x + m[r + 1] * v.y + m[r + 2] * v.z;
    }
    Matrix4T &operator+=(Vector3 const &v) {
        translate(v);
        return *this;
    }
    // Only the diagonal elements 11, 22, 33.
    void scale(T s) { m[0] *= s, m[5] *= s, m[10] *= s; }
    // this := this * b; safe for a.multiply(a).
    void multiply(Matrix4T const &b);
    Matrix4T &operator*=(Matrix4T const &b) {
        multiply(b);
        return *this;
    }
    // A right-handed view matrix: the line of sight eye - center points backwards.
    void lookAt(Vector3 const &eye, Vector3 const &center, Vector3 const &up);
    // ZERO when |determinant| <= EPSILON (EPSILON_DOUBLE for Matrix4d).
    Matrix4T getInverse() const;
    void invert() { *this = getInverse(); }
    T getDeterminant() const;
    void transpose();
    // 16 values into out (the caller's buffer of 16); returns out.
    T *getTransposed(T *out) const;

    // By the bits: -0.0 differs from 0.0.
    bool operator==(Matrix4T const &b) const { return std::memcmp(m, b.m, sizeof m) == 0; }
    bool operator!=(Matrix4T const &b) const { return !(*this == b); }
    // Out of 0..15 reads MAX_FLOAT; a write goes to a scratch value and is lost.
    T operator[](int i) const { return i >= 0 && i < 16 ? m[i] : T(GMath::MAX_FLOAT); }
    T &operator[](int i);

    // "%13.2f", and thirteen blanks for exactly 0, so that sparse matrices read well.
    static QString format(float v);
    QString toString(bool exact = std::is_same_v<T, double>) const;
    // Four lines by column, or by row.
    void show(unsigned int indent, bool byColumn = false) const;
    void print(unsigned int indent) const;
};

template <typename T> inline const Matrix4T<T> Matrix4T<T>::IDENTITY(true);
template <typename T> inline const Matrix4T<T> Matrix4T<T>::ZERO(false);

extern template class ORV_EXPORT Matrix4T<float>;
extern template class ORV_EXPORT Matrix4T<double>;

} // namespace orv
