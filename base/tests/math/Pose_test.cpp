// Pose_test.cpp: keeping CoordinateSystem3 orthonormal, and the pose text forms.
#include "orv/Pose.h"

#include "support/Test.h"

using namespace orv;

namespace {

void expectOrthonormal(CoordinateSystem3 const &cs) {
    for (Vector3 const &axis : {cs.abscissa, cs.ordinate, cs.applicate})
        EXPECT_TRUE(axis.isNormalized());
    EXPECT_NEAR(cs.abscissa * cs.ordinate, 0.0f, 1e-6f);
    EXPECT_NEAR((cs.abscissa % cs.ordinate) * cs.applicate, 1.0f, 1e-6f); // right-handed
}

} // namespace

TEST(CoordinateSystem3, SetNormalizesAndRebuildsSkewedAxes) {
    CoordinateSystem3 cs;
    cs.set({2, 0, 0}, {0, 3, 0}, {0, 0, 4});
    EXPECT_EQ(cs.applicate, Vector3::UNIT_Z_POSITIVE);
    cs.set({1, 0, 0}, {1, 1, 0}, {0, 1, 1});
    expectOrthonormal(cs);
    EXPECT_EQ(cs.abscissa, Vector3::UNIT_X_POSITIVE);
    EXPECT_TRUE(cs.ordinate.isNearly(Vector3::UNIT_Y_POSITIVE, 1e-6f));
    EXPECT_TRUE(cs.applicate.isNearly(Vector3::UNIT_Z_POSITIVE, 1e-6f));
}

TEST(CoordinateSystem3, RightHandRuleBuildsTheApplicate) {
    CoordinateSystem3 cs;
    cs.setAfterRightHandRule({0, 2, 0}, {1, 1, 0});
    expectOrthonormal(cs);
    EXPECT_TRUE(cs.applicate.isNearly(Vector3::UNIT_Z_NEGATIVE, 1e-6f));
}

TEST(CoordinateSystem3, RotationTurnsAllAxes) {
    Matrix3 m;
    m.setRotationZ(GMath::HALF_PI);
    CoordinateSystem3 cs;
    cs.setRotation(m);
    expectOrthonormal(cs);
    EXPECT_TRUE(cs.abscissa.isNearly(Vector3::UNIT_Y_NEGATIVE, 1e-6f));
    EXPECT_TRUE(cs.applicate.isNearly(Vector3::UNIT_Z_POSITIVE, 1e-6f));
}

TEST(Pose3, TextForms) {
    Pose3 pose({1, 2, 3}, CoordinateSystem3());
    Pose3 copy;
    copy.set(pose);
    EXPECT_EQ(copy.toString(), "posMemory:[+1.000, +2.000, +3.000], orn:abscissa:[+1.000, "
                               "+0.000, +0.000], ordinate:[+0.000, +1.000, +0.000], "
                               "applicate:[+0.000, +0.000, +1.000]");
}
