// GMath_test.cpp: the constants by their bits, the safe domains and the start-up epsilon.
#include "orv/GMath.h"

#include "support/Test.h"

#include <cstring>

using orv::GMath;

namespace {

quint32 bitsOf(float v) {
    quint32 b;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

} // namespace

TEST(GMath, ConstantsHaveTheirStatedBits) {
    struct Row {
        char const *name;
        float value;
        quint32 bits;
    } const rows[] = {
        // clang-format off
        {"PI", GMath::PI, 0x40490FDB}, {"TWO_PI", GMath::TWO_PI, 0x40C90FDB},
        {"HALF_PI", GMath::HALF_PI, 0x3FC90FDB},
        {"RADIANS_TO_DEGREES", GMath::RADIANS_TO_DEGREES, 0x42652EE0},
        {"DEGREES_TO_RADIANS", GMath::DEGREES_TO_RADIANS, 0x3C8EFA35},
        {"MIN_FLOAT", GMath::MIN_FLOAT, 0x00800000}, {"MAX_FLOAT", GMath::MAX_FLOAT, 0x7F7FFFFF},
        {"MIN_DOUBLE", GMath::MIN_DOUBLE, 0x00000000},
        {"MAX_DOUBLE", GMath::MAX_DOUBLE, 0x7F800000},
        {"MIN_ONE_ALLOWED", GMath::MIN_ONE_ALLOWED, 0x3F7FFFEF},
        {"MAX_ONE_ALLOWED", GMath::MAX_ONE_ALLOWED, 0x3F800008},
        {"ZERO_TOLERANCE", GMath::ZERO_TOLERANCE, 0x358637BD},
    }; // clang-format on
    for (Row const &row : rows)
        EXPECT_EQ(bitsOf(row.value), row.bits) << row.name;
    EXPECT_EQ(GMath::MIN_GLONG, -2147483648LL);
    EXPECT_EQ(GMath::MAX_GLONG, 2147483647LL);
}

TEST(GMath, EpsilonIsTheHalvingResultComputedAtStartAndGoldenRatioSplitsByPhi) {
    EXPECT_EQ(GMath::EPSILON, 1.0f / (1 << 23));
    EXPECT_EQ(GMath::EPSILON_DOUBLE, 1.0 / (1LL << 52));
    EXPECT_EQ(GMath::computeMachineEpsilonFloat(), GMath::EPSILON);
    EXPECT_EQ(GMath::computeMachineEpsilonDouble(), GMath::EPSILON_DOUBLE);
    EXPECT_LT(GMath::MIN_ONE, 1.0f);
    EXPECT_GT(GMath::MAX_ONE, 1.0f);
    EXPECT_NEAR(GMath::PHI, 1.6180340f, 1e-6f);
    EXPECT_NEAR(GMath::INVERSE_PHI * GMath::PHI, 1.0f, 1e-6f);
    EXPECT_FLOAT_EQ(GMath::goldenRatioMajor(GMath::PHI), 1.0f);
    EXPECT_NEAR(GMath::goldenRatioMinor(1.0f), 0.381966f, 1e-6f);
    EXPECT_TRUE(GMath::isEqual(1.0f, 1.0f + GMath::EPSILON));
    EXPECT_FALSE(GMath::isEqual(1.0f, 1.0f + 4 * GMath::EPSILON));
}

TEST(GMath, AcosNeverLeavesItsRangeAndValidityLimitsAreExclusive) {
    for (float x : {1.5f, 1.0f, -2.0f, -1.0f})
        EXPECT_EQ(GMath::acos(x), x > 0 ? 0.0f : GMath::PI) << x;
    EXPECT_NEAR(GMath::acos(0.0f), GMath::HALF_PI, 1e-6f);
    for (float value : {0.0f, -1.0f, GMath::MIN_FLOAT, GMath::MAX_FLOAT})
        EXPECT_FALSE(GMath::isValid(value)) << value;
    EXPECT_TRUE(GMath::isValid(0.5f));
    for (int value : {2147483647, GMath::MIN_INT})
        EXPECT_FALSE(GMath::isValid(value)) << value;
    EXPECT_TRUE(GMath::isValid(0));
    for (qint64 value : {qint64(2147483647), qint64(-2147483648LL), qint64(1) << 40})
        EXPECT_FALSE(GMath::isValid(value)) << value;
    EXPECT_TRUE(GMath::isValid(qint64(-2147483647)));
}

TEST(GMath, RoundsHalfAwayFromZeroAtTheDigit) {
    struct Row {
        float value;
        unsigned int digits;
        float expected;
    } const rows[] = {{-2.5f, 0, -3.0f},
                      {2.5f, 0, 3.0f},
                      {1.234f, 2, 1.23f},
                      {1.235f, 1, 1.2f},
                      {-0.049f, 1, 0.0f}};
    for (Row const &row : rows)
        EXPECT_NEAR(GMath::round(row.value, row.digits), row.expected, 1e-6f)
            << row.value << " digits " << row.digits;
}

TEST(GMath, PrintConstantsWritesHeadingsAndFixedLines) {
    std::vector<QString> lines = orv::test::linesLoggedBy([] { GMath::printConstants(); });
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[0], "Mathematics constants:");
    EXPECT_EQ(lines[1], "  Basics:");
    EXPECT_EQ(lines[2], "    PI                 = 3.141592741012573242187500");
}
