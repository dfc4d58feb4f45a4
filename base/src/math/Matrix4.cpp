// Matrix4.cpp: the 4x4 matrix body shared by Matrix4 and Matrix4d.
#include "MathScratch.h"
#include "orv/Log.h"
#include "orv/Matrix.h"

namespace orv {

namespace {

template <typename T> T determinantLimit();
template <> float determinantLimit<float>() { return GMath::EPSILON; }
template <> double determinantLimit<double>() { return GMath::EPSILON_DOUBLE; }

template <typename T> char const *rowOrderTitle();
template <> char const *rowOrderTitle<float>() { return "Matrix4 - view row order"; }
template <> char const *rowOrderTitle<double>() { return "Matrix4d - view row order"; }

// The 2x2 minors of the upper row pair (s) and the lower one (c), from which both
// the determinant (returned) and the cofactors follow.
template <typename T> T minorsOf(T const *m, T *s, T *c) {
    s[0] = m[0] * m[5] - m[4] * m[1], s[1] = m[0] * m[6] - m[4] * m[2];
    s[2] = m[0] * m[7] - m[4] * m[3], s[3] = m[1] * m[6] - m[5] * m[2];
    s[4] = m[1] * m[7] - m[5] * m[3], s[5] = m[2] * m[7] - m[6] * m[3];
    c[5] = m[10] * m[15] - m[14] * m[11], c[4] = m[9] * m[15] - m[13] * m[11];
    c[3] = m[9] * m[14] - m[13] * m[10], c[2] = m[8] * m[15] - m[12] * m[11];
    c[1] = m[8] * m[14] - m[12] * m[10], c[0] = m[8] * m[13] - m[12] * m[9];
    return s[0] * c[5] - s[1] * c[4] + s[2] * c[3] + s[3] * c[2] - s[4] * c[1] + s[5] * c[0];
}

} // namespace

template <typename T> Matrix4T<T>::Matrix4T(T const *values, bool transposed) {
    for (int i = 0; i < 16; ++i)
        m[i] = transposed ? values[(i % 4) * 4 + i / 4] : values[i];
}

template <typename T> void Matrix4T<T>::setRotationX(T angle) {
    T const c = std::cos(angle), s = std::sin(angle);
    setRotation(1, 0, 0, 0, c, -s, 0, s, c);
}

template <typename T> void Matrix4T<T>::setRotationY(T angle) {
    T const c = std::cos(angle), s = std::sin(angle);
    setRotation(c, 0, s, 0, 1, 0, -s, 0, c);
}

template <typename T> void Matrix4T<T>::setRotationZ(T angle) {
    T const c = std::cos(angle), s = std::sin(angle);
    setRotation(c, -s, 0, s, c, 0, 0, 0, 1);
}

template <typename T> Matrix3 Matrix4T<T>::getRotation() const {
    auto f = [this](int i) { return static_cast<float>(m[i]); };
    return Matrix3(f(0), f(1), f(2), f(4), f(5), f(6), f(8), f(9), f(10));
}

template <typename T> void Matrix4T<T>::multiply(Matrix4T const &b) {
    // Into locals first, so that a.multiply(a) reads the old values throughout.
    T r[16];
    for (int row = 0; row < 16; row += 4)
        for (int col = 0; col < 4; ++col)
            r[row + col] = m[row] * b.m[col] + m[row + 1] * b.m[col + 4] +
                           m[row + 2] * b.m[col + 8] + m[row + 3] * b.m[col + 12];
    std::copy(r, r + 16, m);
}

template <typename T>
void Matrix4T<T>::lookAt(Vector3 const &eye, Vector3 const &center, Vector3 const &up) {
    auto normalized = [](Vector3 v) { return ~v == 0.0f ? v : v * (1.0f / ~v); };
    Vector3 const f = normalized(eye - center);
    Vector3 const s = normalized(up % f);
    Vector3 const u = normalized(f % s);
    setIdentity();
    multiply(Matrix4T(s.x, s.y, s.z, 0, u.x, u.y, u.z, 0, f.x, f.y, f.z, 0, 0, 0, 0, 1));
    translate(-eye);
}

template <typename T> T Matrix4T<T>::getDeterminant() const {
    T s[6], c[6];
    return minorsOf(m, s, c);
}

template <typename T> Matrix4T<T> Matrix4T<T>::getInverse() const {
    T s[6], c[6];
    T const det = minorsOf(m, s, c);
    if (std::fabs(det) <= determinantLimit<T>())
        return ZERO;
    T const k = T(1) / det;
    return Matrix4T((m[5] * c[5] - m[6] * c[4] + m[7] * c[3]) * k,
                    (-m[1] * c[5] + m[2] * c[4] - m[3] * c[3]) * k,
                    (m[13] * s[5] - m[14] * s[4] + m[15] * s[3]) * k,
                    (-m[9] * s[5] + m[10] * s[4] - m[11] * s[3]) * k,
                    (-m[4] * c[5] + m[6] * c[2] - m[7] * c[1]) * k,
                    (m[0] * c[5] - m[2] * c[2] + m[3] * c[1]) * k,
                    (-m[12] * s[5] + m[14] * s[2] - m[15] * s[1]) * k,
                    (m[8] * s[5] - m[10] * s[2] + m[11] * s[1]) * k,
                    (m[4] * c[4] - m[5] * c[2] + m[7] * c[0]) * k,
                    (-m[0] * c[4] + m[1] * c[2] - m[3] * c[0]) * k,
                    (m[12] * s[4] - m[13] * s[2] + m[15] * s[0]) * k,
                    (-m[8] * s[4] + m[9] * s[2] - m[11] * s[0]) * k,
                    (-m[4] * c[3] + m[5] * c[1] - m[6] * c[0]) * k,
                    (m[0] * c[3] - m[1] * c[1] + m[2] * c[0]) * k,
                    (-m[12] * s[3] + m[13] * s[1] - m[14] * s[0]) * k,
                    (m[8] * s[3] - m[9] * s[1] + m[10] * s[0]) * k);
}

template <typename T> void Matrix4T<T>::transpose() {
    T t[16];
    std::copy(getTransposed(t), t + 16, m);
}

template <typename T> T *Matrix4T<T>::getTransposed(T *out) const {
    for (int i = 0; i < 16; ++i)
        out[i] = m[(i % 4) * 4 + i / 4];
    return out;
}

template <typename T> T &Matrix4T<T>::operator[](int i) {
    return i >= 0 && i < 16 ? m[i] : math::scratch<T>();
}

template <typename T> QString Matrix4T<T>::format(float v) {
    return v == 0.0f ? QString(13, QLatin1Char(' '))
                     : QString::asprintf("%13.2f", static_cast<double>(v));
}

template <typename T> QString Matrix4T<T>::toString(bool exact) const {
    QString out;
    for (int r = 0; r < 16; r += 4) {
        if (!exact) {
            out += xprintF("[$,$,$,$]", m[r], m[r + 1], m[r + 2], m[r + 3]);
            continue;
        }
        QString n[4];
        for (int c = 0; c < 4; ++c)
            n[c] = QString::asprintf(" %.30lf", static_cast<double>(m[r + c]));
        out += xprintF("\n\t[$ $ $ $]", n[0], n[1], n[2], n[3]);
    }
    return out;
}

template <typename T> void Matrix4T<T>::show(unsigned int indent, bool byColumn) const {
    // The column title names Matrix4 for both precisions, as it always has.
    ppInfo(indent, byColumn ? "Matrix4 - view column order" : rowOrderTitle<T>());
    int const step = byColumn ? 1 : 4, stride = byColumn ? 4 : 1;
    for (int i = 0; i < 4; ++i) {
        int const o = i * step;
        ppInfo(indent, "$, $, $, $", m[o], m[o + stride], m[o + 2 * stride], m[o + 3 * stride]);
    }
}

template <typename T> void Matrix4T<T>::print(unsigned int indent) const {
    ppInfo(indent, "  |       1       |       2       |       3       |       4       |");
    ppInfo(indent, "--+---------------+---------------+---------------+---------------+");
    for (int r = 0; r < 4; ++r) {
        auto f = [this, r](int c) { return format(static_cast<float>(m[r * 4 + c])); };
        ppInfo(indent, QString::asprintf("%d | %s | %s | %s | %s |", r + 1, qPrintable(f(0)),
                                         qPrintable(f(1)), qPrintable(f(2)), qPrintable(f(3))));
    }
}

template class Matrix4T<float>;
template class Matrix4T<double>;

} // namespace orv
