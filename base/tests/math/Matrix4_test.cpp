// Matrix4_test.cpp: Matrix4 and Matrix4d: construction, the multiplication side,
// inverse, view matrix, bit comparison and the text forms.
#include "orv/Matrix.h"

#include "support/Test.h"

using namespace orv;

namespace {

template <typename T> void expectNear(Matrix4T<T> const &a, Matrix4T<T> const &b, T tolerance) {
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(a[i], b[i], tolerance) << "index " << i;
}

Matrix4 sample() { return Matrix4(2, 0, 1, 3, 1, 3, 0, -1, 0, 1, 4, 2, 0, 0, 0, 1); }

Vector4 transformed(Matrix4 const &m, Vector3 const &p) {
    Vector4 v(p, 1.0f);
    v.multiply(m);
    return v;
}

} // namespace

TEST(Matrix4, ConstructionForms) {
    EXPECT_EQ(Matrix4(), Matrix4::IDENTITY);
    EXPECT_EQ(Matrix4(false), Matrix4::ZERO);
    float values[16];
    for (int i = 0; i < 16; ++i)
        values[i] = static_cast<float>(i);
    Matrix4 const rows(values, false), columns(values, true);
    EXPECT_EQ(rows.getElement12(), 1.0f);
    EXPECT_EQ(columns.getElement12(), 4.0f);
    float out[16];
    EXPECT_EQ(Matrix4(rows.getTransposed(out), false), columns);
    Matrix4 t = rows;
    t.transpose();
    EXPECT_EQ(t, columns);
}

// Translations multiply from the right; rotation setters and scale keep them.
TEST(Matrix4, TranslateRotateAndScale) {
    Matrix4 m;
    m.translate({1, 2, 3});
    m += Vector3(4, 4, 4);
    m.setRotationX(0.7f);
    EXPECT_NEAR(m.getElement23(), -std::sin(0.7f), 1e-7f);
    EXPECT_NEAR(m.getElement32(), std::sin(0.7f), 1e-7f);
    m.setIdentityRotation();
    m.scale(2.0f);
    EXPECT_EQ(m, Matrix4(2, 0, 0, 5, 0, 2, 0, 6, 0, 0, 2, 7, 0, 0, 0, 1));
    Matrix4 r;
    r.setRotationZ(GMath::HALF_PI);
    r.translate({1, 0, 0}); // along the rotated X, which is world Y
    EXPECT_NEAR(r.getElement14(), 0.0f, 1e-6f);
    EXPECT_NEAR(r.getElement24(), 1.0f, 1e-6f);
}

TEST(Matrix4, MultiplyIsSafeOnItself) {
    Matrix4 a = sample(), b = sample();
    Matrix4 const copy = sample();
    a.multiply(a);
    b *= copy;
    EXPECT_EQ(a, b);
    // Row 1 of sample times column 1: 2*2 + 0*1 + 1*0 + 3*0.
    EXPECT_EQ(a.getElement11(), 4.0f);
    EXPECT_EQ(a.getElement14(), 2 * 3 + 0 * -1 + 1 * 2 + 3 * 1.0f);
}

TEST(Matrix4, InverseTimesMatrixIsIdentity) {
    Matrix4 m = sample();
    m.setRotationY(0.3f);
    m.translate({1, -2, 0.5f});
    Matrix4 product = m;
    product *= m.getInverse();
    expectNear(product, Matrix4::IDENTITY, 1e-5f);
    Matrix4d d(3, 1, 0, 0, 1, 2, 0, 1, 0, 0, 5, 0, 2, 0, 0, 1);
    Matrix4d dp = d.getInverse();
    dp *= d;
    expectNear(dp, Matrix4d::IDENTITY, 1e-12);
    EXPECT_FLOAT_EQ(sample().getDeterminant(), 25.0f); // 2 * 12 + 1 * 1 from the 3x3 block
}

TEST(Matrix4, SingularInverseIsZero) {
    Matrix4 singular(1, 2, 3, 4, 2, 4, 6, 8, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_EQ(singular.getInverse(), Matrix4::ZERO);
    singular.invert();
    EXPECT_EQ(singular, Matrix4::ZERO);
    EXPECT_EQ(Matrix4d(false).getInverse(), Matrix4d::ZERO);
    // A determinant of 2^-30 is tiny for float but far above the double epsilon.
    double const small = 1.0 / (1 << 30);
    Matrix4d nearly(small, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_EQ(nearly.getInverse().getElement11(), 1 << 30);
    Matrix4 nearlyF(static_cast<float>(small), 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_EQ(nearlyF.getInverse(), Matrix4::ZERO);
}

TEST(Matrix4, LookAtBuildsARightHandedViewMatrix) {
    Matrix4 view;
    view.lookAt({1, 2, 5}, {1, 2, 0}, {0, 1, 0});
    Vector4 const center = transformed(view, {1, 2, 0});
    EXPECT_NEAR(center.x, 0.0f, 1e-6f);
    EXPECT_NEAR(center.z, -5.0f, 1e-6f);
    view.lookAt({0, 0, 0}, {10, 0, 0}, {0, 1, 0});
    Vector4 const ahead = transformed(view, {10, 0, 0});
    EXPECT_NEAR(ahead.z, -10.0f, 1e-5f);
    Vector4 const above = transformed(view, {0, 3, 0});
    EXPECT_NEAR(above.y, 3.0f, 1e-6f);
    // Up along the line of sight: the side axis has length 0 and stays so, without NaN.
    view.lookAt({0, 0, 5}, {0, 0, 0}, {0, 0, 1});
    for (int i = 0; i < 16; ++i)
        EXPECT_FALSE(std::isnan(view[i])) << i;
}

TEST(Matrix4, EqualityComparesBitsAndIndexIsGuarded) {
    Matrix4 a(false), b(false);
    b.setElement33(-0.0f);
    EXPECT_NE(a, b);
    EXPECT_EQ(a[16], GMath::MAX_FLOAT);
    a[-3] = 1.0f;
    EXPECT_EQ(a, Matrix4::ZERO);
    Matrix3 const r = Matrix4d(true).getRotation();
    EXPECT_EQ(r.getElement33(), 1.0f);
}

TEST(Matrix4, TextForms) {
    EXPECT_EQ(Matrix4::format(0.0f), QString(13, ' '));
    EXPECT_EQ(Matrix4::format(-1.5f), "        -1.50");
    Matrix4 m;
    m.setElement14(2.5f);
    EXPECT_EQ(m.toString(false), "[1.000000,0.000000,0.000000,2.500000]"
                                 "[0.000000,1.000000,0.000000,0.000000]"
                                 "[0.000000,0.000000,1.000000,0.000000]"
                                 "[0.000000,0.000000,0.000000,1.000000]");
    QString const zero = " 0.000000000000000000000000000000";
    QString const one = " 1.000000000000000000000000000000";
    EXPECT_TRUE(Matrix4d().toString().startsWith("\n\t[" + one + " " + zero + " " + zero + " " +
                                                 zero + "]\n\t[" + zero + " " + one));
    EXPECT_EQ(Matrix4d().toString(), Matrix4(true).toString(true));
}

TEST(Matrix4, PrintAndShowWriteTheirTables) {
    Matrix4 m;
    m.setElement12(3.0f);
    std::vector<QString> lines = orv::test::linesLoggedBy([&] { m.print(0); });
    std::vector<QString> const table = {
        "  |       1       |       2       |       3       |       4       |",
        "--+---------------+---------------+---------------+---------------+",
        "1 |          1.00 |          3.00 |               |               |",
        "2 |               |          1.00 |               |               |",
        "3 |               |               |          1.00 |               |",
        "4 |               |               |               |          1.00 |"};
    EXPECT_EQ(lines, table);
    lines = orv::test::linesLoggedBy([&] {
        m.show(0, true);
        Matrix4d().show(0, false);
    });
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(lines[0], "Matrix4 - view column order");
    EXPECT_EQ(lines[2], "3.000000, 1.000000, 0.000000, 0.000000");
    EXPECT_EQ(lines[5], "Matrix4d - view row order");
    EXPECT_EQ(lines[6], "1.000000, 0.000000, 0.000000, 0.000000");
}
