// Quaternion_test.cpp: axis-angle construction, the Hamilton product and its sides,
// validity and the text form.
#include "orv/Matrix.h"
#include "orv/Quaternion.h"

#include "support/Test.h"

using namespace orv;

namespace {

// Rotates v by q as q v q*, through the Hamilton product.
Vector3 rotated(Quaternion const &q, Vector3 const &v) {
    Quaternion r;
    Quaternion::multiplication(r, q, Quaternion(0, v.x, v.y, v.z));
    Quaternion::multiplication(r, r, Quaternion(q.w, -q.x, -q.y, -q.z));
    return Vector3(r.x, r.y, r.z);
}

} // namespace

TEST(Quaternion, AxisAngleGivesHalfAngleComponents) {
    Quaternion const q(Vector3::UNIT_Z_POSITIVE, GMath::HALF_PI);
    EXPECT_NEAR(q.w, std::cos(GMath::HALF_PI / 2), 1e-7f);
    EXPECT_NEAR(q.z, std::sin(GMath::HALF_PI / 2), 1e-7f);
    EXPECT_EQ(q.x, 0.0f);
    EXPECT_TRUE(q.isNormalized());
}

TEST(Quaternion, ZeroAxisGivesIdentityAndAnError) {
    Quaternion q(2, 2, 2, 2);
    std::vector<QString> lines =
        orv::test::linesLoggedBy([&] { q.set(Vector3(0, 0, 0), 1.0f); }, orv::ERROR);
    EXPECT_TRUE(q.compareMemory(Quaternion(1, 0, 0, 0)));
    EXPECT_EQ(lines,
              std::vector<QString>{"Quaternion::set: The given axis vector is a zero vector."});
    lines = orv::test::linesLoggedBy([] { Quaternion(Vector3(0, 3, 0), 1.0f); });
    EXPECT_EQ(lines, std::vector<QString>{"Quaternion::set: The given axis vector with length "
                                          "3.000000 is not normalized."});
}

TEST(Quaternion, HamiltonProductComposesRotationsOnEitherSide) {
    Quaternion const a(Vector3::UNIT_Z_POSITIVE, 0.4f), b(Vector3::UNIT_X_POSITIVE, 1.1f);
    Quaternion ab;
    Quaternion::multiplication(ab, a, b);
    Matrix3 ma, mb, mab;
    ma.setRotation(a);
    mb.setRotation(b);
    mab.setRotation(ab);
    ma *= mb;
    for (int i = 0; i < 9; ++i)
        EXPECT_NEAR(ma[i], mab[i], 1e-6f) << i;
    // i * j = k
    Quaternion k;
    Quaternion(0, 1, 0, 0).multiplyBy(k, Quaternion(0, 0, 1, 0));
    EXPECT_TRUE(k.compareMemory(Quaternion(0, 0, 0, 1)));
    // In place: multiplyBy from the right, multiplyInverseBy from the left, without inversion.
    Quaternion right(0, 1, 0, 0), left(0, 1, 0, 0);
    right.multiplyBy(Quaternion(0, 0, 1, 0));
    left.multiplyInverseBy(Quaternion(0, 0, 1, 0));
    EXPECT_TRUE(right.compareMemory(Quaternion(0, 0, 0, 1)));
    EXPECT_TRUE(left.compareMemory(Quaternion(0, 0, 0, -1)));
}

TEST(Quaternion, RotationKeepsLength) {
    Quaternion q(Vector3(1, -2, 0.5f).getNormal(), 2.2f);
    Vector3 const v(3, -1, 7);
    EXPECT_NEAR(~rotated(q, v), ~v, 1e-5f);
    Quaternion big(3, 0, 4, 0);
    EXPECT_FLOAT_EQ(~big, 5.0f);
    EXPECT_FALSE(big.isNormalized());
    EXPECT_TRUE((!big).isNormalized());
    EXPECT_FLOAT_EQ(big * Quaternion(0.6f, 0, 0.8f, 0), 1.0f);
}

TEST(Quaternion, InvalidAndTextForm) {
    EXPECT_EQ(Quaternion::INVALID.toString(), "Quaternion-INVALID");
    EXPECT_TRUE(Quaternion().compareMemory(Quaternion(1, 0, 0, 0)));
    EXPECT_EQ(Quaternion(1, -0.5f, 0.25f, 0).toString(), "[+1.000, -0.500, +0.250, +0.000]");
}
