// Vector.cpp: the vector operations that log, touch matrices or build text.
#include "orv/Vector.h"

#include "MathScratch.h"
#include "orv/Log.h"
#include "orv/Matrix.h"

namespace orv {

namespace {

template <typename T> QString fixed3(char const *invalid, bool valid, T x, T y, T z, T w) {
    if (!valid)
        return QLatin1String(invalid);
    return QString::asprintf("[%+.3f, %+.3f, %+.3f, %+.3f]", static_cast<double>(x),
                             static_cast<double>(y), static_cast<double>(z),
                             static_cast<double>(w));
}

} // namespace

float &Vector3::operator[](int i) {
    return i == 0 ? x : i == 1 ? y : i == 2 ? z : math::scratch<float>();
}

float Vector3::getAngle(Vector3 const &v) const {
    if (GMath::CHECK_NORMALIZING) {
        if (!isNormalized())
            ppWarning("Vector3::getAngle: The calling vector with length $ is not normalized.",
                      ~*this);
        if (!v.isNormalized())
            ppWarning("Vector3::getAngle: The passed vector with length $ is not normalized.", ~v);
    }
    // A dot product of unit vectors just outside [-1, 1] is rounding; acos keeps it from a NaN.
    return GMath::acos(*this * v);
}

Vector3 &Vector3::rotate(Matrix3 const &m) {
    float const *e = m.m;
    *this = Vector3(x * e[0] + y * e[3] + z * e[6], x * e[1] + y * e[4] + z * e[7],
                    x * e[2] + y * e[5] + z * e[8]);
    return *this;
}

QString Vector3::toString(bool exact) const {
    if (!isValid())
        return QStringLiteral("Vector3-INVALID");
    return QString::asprintf(exact ? "[%.30lf, %.30lf, %.30lf]" : "[%+.3f, %+.3f, %+.3f]",
                             static_cast<double>(x), static_cast<double>(y),
                             static_cast<double>(z));
}

Vector2 &Vector2::operator*=(Matrix2 const &m) {
    *this = Vector2(x * m.m[0] + y * m.m[2], x * m.m[1] + y * m.m[3]);
    return *this;
}

float Vector2::getAngle(Vector2 const &v) const {
    if (GMath::CHECK_NORMALIZING) {
        if (!isNormalized())
            ppWarning("Vector2::getAngle: The calling vector with length $ is not normalized.",
                      ~*this);
        // The printf code stays in the text: the formatter only knows `$`.
        if (!v.isNormalized())
            ppWarning("Vector2::getAngle: The passed vector with length %26.24f is not normalized.",
                      ~v);
    }
    // A dot product of unit vectors just outside [-1, 1] is rounding; acos keeps it from a NaN.
    return GMath::acos(*this * v);
}

QString Vector2::toString() const {
    if (!isValid())
        return QStringLiteral("Vector2-INVALID");
    return xprintF("[$, $]", x, y);
}

namespace {

template <typename V, typename M> V columnProduct(M const &m, V const &v) {
    using T = decltype(v.x);
    auto e = [&m](int i) { return static_cast<T>(m.m[i]); };
    return V(e(0) * v.x + e(1) * v.y + e(2) * v.z + e(3) * v.w,
             e(4) * v.x + e(5) * v.y + e(6) * v.z + e(7) * v.w,
             e(8) * v.x + e(9) * v.y + e(10) * v.z + e(11) * v.w,
             e(12) * v.x + e(13) * v.y + e(14) * v.z + e(15) * v.w);
}

template <typename V, typename M> V rowProduct(V const &v, M const &m) {
    using T = decltype(v.x);
    auto e = [&m](int i) { return static_cast<T>(m.m[i]); };
    return V(v.x * e(0) + v.y * e(4) + v.z * e(8) + v.w * e(12),
             v.x * e(1) + v.y * e(5) + v.z * e(9) + v.w * e(13),
             v.x * e(2) + v.y * e(6) + v.z * e(10) + v.w * e(14),
             v.x * e(3) + v.y * e(7) + v.z * e(11) + v.w * e(15));
}

} // namespace

template <typename T> void Vector4T<T>::multiply(Matrix4 const &m) {
    *this = columnProduct(m, *this);
}
template <typename T> void Vector4T<T>::multiply(Matrix4d const &m) {
    *this = columnProduct(m, *this);
}
template <typename T> void Vector4T<T>::multiply_left(Matrix4 const &m) {
    *this = rowProduct(*this, m);
}
template <typename T> void Vector4T<T>::multiply_left(Matrix4d const &m) {
    *this = rowProduct(*this, m);
}

template <typename T> QString Vector4T<T>::toString() const {
    return fixed3(std::is_same_v<T, float> ? "Vector4-INVALID" : "Vector4d-INVALID", isValid(), x,
                  y, z, w);
}

template class Vector4T<float>;
template class Vector4T<double>;

} // namespace orv
