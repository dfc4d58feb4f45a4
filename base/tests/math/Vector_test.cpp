// Vector_test.cpp: Vector2/3/4 arithmetic, the reserved states, angles and text forms.
#include "orv/Matrix.h"

#include "support/Test.h"

using namespace orv;

namespace {

// Restores the global switch whatever a test does with it.
struct CheckNormalizing {
    bool const saved = GMath::CHECK_NORMALIZING;
    explicit CheckNormalizing(bool on) { GMath::CHECK_NORMALIZING = on; }
    ~CheckNormalizing() { GMath::CHECK_NORMALIZING = saved; }
};

} // namespace

TEST(Vector3, OperatorsFollowTheFixedLanguage) {
    Vector3 const a(1, 2, 3), b(4, 5, 6);
    EXPECT_EQ(a + b, Vector3(5, 7, 9));
    EXPECT_EQ(b - a, Vector3(3, 3, 3));
    EXPECT_EQ(-a, Vector3(-1, -2, -3));
    EXPECT_EQ(a * 2.0f, Vector3(2, 4, 6));
    EXPECT_FLOAT_EQ(a * b, 32.0f);
    EXPECT_EQ(a % b, Vector3(-3, 6, -3));
    EXPECT_FLOAT_EQ(~Vector3(2, 3, 6), 7.0f);
    EXPECT_FLOAT_EQ(a.getScalarTripleProduct(b, Vector3(7, 8, 10)), -3.0f);
    EXPECT_EQ(Vector2(1, 2) % Vector2(3, 4), Vector3(0, 0, -2)); // a Vector3 along Z
    EXPECT_FLOAT_EQ(Vector2(1, 2) * Vector2(3, 4), 11.0f);
}

TEST(Vector2, DivisionByZeroGivesInvalidAndNotDefinedIsASecondReservedState) {
    Vector2 const v = Vector2(1, 1) / 0.0f;
    EXPECT_EQ(v, Vector2(GMath::MAX_FLOAT, GMath::MAX_FLOAT));
    EXPECT_EQ(v.toString(), "Vector2-INVALID");
    Vector3 w(1, 2, 3);
    w /= 0.0f;
    EXPECT_FALSE(w.isValid());
    EXPECT_EQ(Vector2(2, 4) / 2.0f, Vector2(1, 2));
    Vector2 v2(1, 1);
    v2.setNotDefined();
    EXPECT_TRUE(v2.isNotDefined() && !v2.isDefined() && v2.isValid());
    EXPECT_TRUE(Vector2(GMath::MIN_FLOAT, 1).isDefined());
}

TEST(Vector3, NormalizingZeroLeavesItZeroAndIndexIsGuarded) {
    Vector3 zero(0, 0, 0);
    EXPECT_EQ(!zero, Vector3(0, 0, 0));
    Vector2 tiny(GMath::EPSILON / 2, 0);
    EXPECT_EQ(tiny.normalize(), Vector2(GMath::EPSILON / 2, 0));
    Vector3 v(3, 0, 4);
    EXPECT_TRUE((!v).isEqual(Vector3(0.6f, 0, 0.8f)));
    v.setLength(10);
    EXPECT_TRUE(v.isNearly(Vector3(6, 0, 8), 1e-5f));
    EXPECT_EQ(v[3], GMath::MAX_FLOAT);
    EXPECT_EQ(static_cast<Vector3 const &>(v)[-1], GMath::MAX_FLOAT);
    v[7] = 5.0f;
    EXPECT_TRUE(v.isNearly(Vector3(6, 0, 8), 1e-5f));
}

TEST(Vector3, AngleOfUnitVectorsClampsTheDotProduct) {
    CheckNormalizing quiet(false);
    EXPECT_NEAR(Vector3::UNIT_X_POSITIVE.getAngle(Vector3::UNIT_Y_POSITIVE), GMath::HALF_PI, 1e-6f);
    EXPECT_EQ(Vector3::UNIT_X_POSITIVE.getAngle(Vector3::UNIT_X_NEGATIVE), GMath::PI);
    EXPECT_EQ(Vector3(1.0000005f, 0, 0).getAngle(Vector3::UNIT_X_POSITIVE), 0.0f);
    EXPECT_NEAR(Vector2::UNIT_X_POSITIVE.getAngle(Vector2(0.6f, 0.8f)), std::acos(0.6f), 1e-6f);
}

TEST(Vector3, AngleWarnsAboutUnnormalizedVectorsOnlyWhenChecking) {
    for (bool checking : {true, false}) {
        std::vector<QString> const lines = orv::test::linesLoggedBy([checking] {
            CheckNormalizing on(checking);
            Vector3(2, 0, 0).getAngle(Vector3(0, 2, 0));
            Vector2(2, 0).getAngle(Vector2(0, 2));
        });
        std::vector<QString> const expected = {
            "Vector3::getAngle: The calling vector with length 2.000000 is not normalized.",
            "Vector3::getAngle: The passed vector with length 2.000000 is not normalized.",
            "Vector2::getAngle: The calling vector with length 2.000000 is not normalized.",
            "Vector2::getAngle: The passed vector with length %26.24f is not normalized."};
        EXPECT_EQ(lines, checking ? expected : std::vector<QString>());
    }
}

// Row vector times the Z rotation turns the other way round than M * v.
TEST(Vector3, RotateMultipliesAsARowVector) {
    Matrix3 rz;
    rz.setRotationZ(GMath::HALF_PI);
    Vector3 v = Vector3::UNIT_X_POSITIVE;
    v *= rz;
    EXPECT_TRUE(v.isNearly(Vector3::UNIT_Y_NEGATIVE, 1e-6f)) << v.toString().toStdString();
    Vector2 w = Vector2::UNIT_X_POSITIVE;
    w *= Matrix2(GMath::HALF_PI);
    EXPECT_TRUE(w.isNearly(Vector2::UNIT_Y_NEGATIVE, 1e-6f));
}

TEST(Vector3, OrderingHelperTakesAnyAxisAlone) {
    Vector3 const a(1, 1, 1);
    EXPECT_TRUE(a.isSmaller_within_RBTree(Vector3(0, 0, 2), 0.5f));
    EXPECT_FALSE(a.isSmaller_within_RBTree(Vector3(1.4f, 1.4f, 1.4f), 0.5f));
    for (float range : {5.0f, 5.01f}) {
        EXPECT_EQ(Vector2(0, 0).isInTheNearOf(Vector2(3, 4), range), range > 5) << range;
        EXPECT_EQ(Vector3(1, 2, 3).isInTheNearOf(Vector3(3, 4, 4), range - 2), range > 5) << range;
    }
}

TEST(Vector3, TextForms) {
    EXPECT_EQ(Vector2(1.5f, -2).toString(), "[1.500000, -2.000000]");
    EXPECT_EQ(Vector3(1.5f, -2, 0).toString(), "[+1.500, -2.000, +0.000]");
    EXPECT_EQ(Vector3(0.5f, 0, 0).toString(true),
              "[0.500000000000000000000000000000, 0.000000000000000000000000000000, "
              "0.000000000000000000000000000000]");
    EXPECT_EQ(Vector3::INVALID.toString(), "Vector3-INVALID");
    EXPECT_EQ(Vector4(1, 2, 3, 4).toString(), "[+1.000, +2.000, +3.000, +4.000]");
    EXPECT_EQ(Vector4::INVALID.toString(), "Vector4-INVALID");
    EXPECT_EQ(Vector4d::INVALID.toString(), "Vector4d-INVALID");
    EXPECT_EQ(Vector4d().toString(), "[+0.000, +0.000, +0.000, +0.000]");
}

TEST(Vector4, MultiplyIsColumnAndMultiplyLeftIsRow) {
    Matrix4 t;
    t.translate({1, 2, 3});
    Vector4 p(Vector3(1, 1, 1), 1), r(1, 1, 1, 1);
    p.multiply(t);
    EXPECT_TRUE(p.compareMemory(Vector4(2, 3, 4, 1)));
    r.multiply_left(t); // the translation lands in w as a row vector
    EXPECT_EQ(r.w, 7.0f);
    Vector4 ndc(2, 4, 6, 2);
    ndc.computeNDC();
    EXPECT_TRUE(ndc.compareMemory(Vector4(1, 2, 3, 1)));
}
