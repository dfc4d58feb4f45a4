// Matrix_test.cpp: Matrix2 and Matrix3: rotations, the quaternion round trip, the
// rotation check and the text forms.
#include "orv/Matrix.h"
#include "orv/Quaternion.h"

#include "support/Test.h"

using namespace orv;

namespace {

void expectNear(Matrix3 const &a, Matrix3 const &b, float tolerance) {
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(a[i], b[i], tolerance) << "index " << i;
}

} // namespace

TEST(Matrix2, RotationDeterminantAndIndex) {
    Matrix2 const r(GMath::HALF_PI);
    EXPECT_NEAR(r.getElement12(), -1.0f, 1e-6f);
    EXPECT_NEAR(r.getElement21(), 1.0f, 1e-6f);
    EXPECT_NEAR(r.getDeterminant(), 1.0f, 1e-6f);
    EXPECT_EQ(Matrix2(1, 2, 3, 4).getDeterminant(), -2.0f);
    Matrix2 m;
    EXPECT_EQ(m[4], GMath::MAX_FLOAT);
    m[-1] = 7.0f;
    EXPECT_EQ(m.toString(), "[+1.00 +0.00] [+0.00 +1.00]");
}

TEST(Matrix3, AxisRotationMatchesTheNamedAxes) {
    float const a = 0.3f, c = std::cos(a), s = std::sin(a);
    Matrix3 byAxis, named;
    byAxis.setRotation(Vector3::UNIT_X_POSITIVE, a);
    named.setRotationX(a);
    expectNear(byAxis, named, 1e-6f);
    EXPECT_NEAR(named.getElement23(), -s, 1e-7f);
    EXPECT_NEAR(named.getElement32(), s, 1e-7f);
    byAxis.setRotation(Vector3::UNIT_Y_POSITIVE, a);
    named.setRotationY(a);
    expectNear(byAxis, named, 1e-6f);
    byAxis.setRotation(Vector3::UNIT_Z_POSITIVE, a);
    named.setRotationZ(a);
    expectNear(byAxis, named, 1e-6f);
    EXPECT_NEAR(named.getElement11(), c, 1e-7f);
}

TEST(Matrix3, QuaternionRoundTripOnBothSidesOfTheTraceTest) {
    Vector3 const axes[] = {Vector3(1, 2, 3).getNormal(), Vector3::UNIT_X_POSITIVE,
                            Vector3::UNIT_Y_POSITIVE, Vector3::UNIT_Z_POSITIVE,
                            Vector3(-1, 0.5f, 0.2f).getNormal()};
    // Small angles keep the trace at or above 0, angles near PI push it below.
    float const angles[] = {0.0f, 0.4f, 1.5f, 2.5f, 3.0f, -2.8f};
    for (Vector3 const &axis : axes)
        for (float angle : angles) {
            Matrix3 m;
            m.setRotation(axis, angle);
            Quaternion const q = m.getQuaternion();
            EXPECT_TRUE(q.isNormalized()) << q.toString().toStdString();
            Matrix3 back;
            back.setRotation(q);
            expectNear(back, m, 2e-6f);
            Quaternion const direct(axis, angle);
            EXPECT_NEAR(std::fabs(q * direct), 1.0f, 1e-5f) << angle;
        }
}

TEST(Matrix3, RotationMatrixCheckKeepsItsFirstTerm) {
    Matrix3 m;
    EXPECT_TRUE(m.isRotationMatrix());
    m.setRotationZ(0.001f);
    EXPECT_TRUE(m.isRotationMatrix());
    // |m11 m12 + m12 m22| = |sin 2a|, so a large Z rotation is refused.
    m.setRotationZ(1.0f);
    EXPECT_FALSE(m.isRotationMatrix());
    m.setRotationX(1.0f);
    EXPECT_TRUE(m.isRotationMatrix());
    EXPECT_FALSE(Matrix3(1, 0, 0, 0, 1, 0, 0, 0, -1).isRotationMatrix()); // a mirror
    EXPECT_FALSE(Matrix3(1.1f, 0, 0, 0, 1, 0, 0, 0, 1).isRotationMatrix());
}

TEST(Matrix3, ProductDeterminantAndRows) {
    Matrix3 a(1, 2, 3, 4, 5, 6, 7, 8, 10);
    EXPECT_FLOAT_EQ(a.getDeterminant(), -3.0f);
    Matrix3 b;
    b.setRotation(Vector3(0, 1, 0), Vector3(1, 0, 0), Vector3(0, 0, 1));
    a *= b; // swaps the first two columns
    Vector3 row;
    a.getRow1(row);
    EXPECT_EQ(row, Vector3(2, 1, 3));
    a.getRow3(row);
    EXPECT_EQ(row, Vector3(8, 7, 10));
    a *= a;
    EXPECT_FLOAT_EQ(a.getElement11(), 2 * 2 + 1 * 5 + 3 * 8);
    EXPECT_EQ(a[9], GMath::MAX_FLOAT);
}

TEST(Matrix3, UnnormalizedInputsAreLoggedAndUsed) {
    std::vector<QString> lines = orv::test::linesLoggedBy([] {
        Matrix3 m;
        m.setRotation(Vector3(0, 0, 2), 0.0f);
        m.setRotation(Quaternion(2, 0, 0, 0));
    });
    EXPECT_EQ(lines, (std::vector<QString>{
                         "Matrix3::setRotation: The axis vector with length 2.000000 is not "
                         "normalized",
                         "Matrix3::setRotation: The quaternion with length "
                         "2.000000000000000000000000 is not normalized"}));
}

TEST(Matrix3, TextForm) {
    Matrix3 m(1, -0.5f, 0, 0, 1, 0, 0, 0, 2.25f);
    EXPECT_EQ(m.toString(), "[+1.00 -0.50 +0.00] [+0.00 +1.00 +0.00] [+0.00 +0.00 +2.25]");
}
