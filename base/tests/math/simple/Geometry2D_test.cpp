// Geometry2D_test.cpp: the not-defined rules, reading and text forms, the inclusive
// and exclusive containment families, rectangle combinations and 64-bit limits.
#include "orv/Geometry2D.h"

#include "support/Test.h"

#include <cmath>
#include <limits>

#include <unistd.h>

using namespace orv;

namespace {

constexpr qint64 MARK = GMath::MIN_GLONG;
constexpr qint64 MAX64 = std::numeric_limits<qint64>::max();
constexpr qint64 MIN64 = std::numeric_limits<qint64>::min();

} // namespace

// A point needs the mark in both fields to be not defined, a rectangle or line in any.
TEST(Geometry2D, NotDefinedFollowsBothForPointsAndAnyForRectangles) {
    GPoint const halfPoint(MARK, 1);
    EXPECT_FALSE(halfPoint.isDefined());
    EXPECT_FALSE(halfPoint.isNotDefined());
    EXPECT_FALSE(GDimension(1, MARK).isNotDefined());
    GRect const halfRect(1, 2, MARK, 4);
    EXPECT_TRUE(halfRect.isNotDefined());
    EXPECT_FALSE(halfRect.isDefined());
    EXPECT_TRUE(halfRect.isValid());
    EXPECT_TRUE(GLine(1, 2, 3, MARK).isNotDefined());
}

TEST(Geometry2D, FromStringNeedsTheExactCount) {
    EXPECT_EQ(GPoint::fromString("1,\t2"), GPoint(1, 2));
    EXPECT_EQ(GPoint::fromString(" -7 , 9 "), GPoint(-7, 9));
    EXPECT_TRUE(GPoint::fromString("1 2 3").isNotDefined());
    EXPECT_EQ(GPoint::fromString("1 x"), GPoint(1, MARK)); // no number: the mark
    EXPECT_EQ(GPoint::fromString("8589934592 1"), GPoint(8589934592LL, 1));
    EXPECT_TRUE(GRect::fromString("1 2 3").isNotDefined());
    EXPECT_EQ(GRect::fromString("1,2,3,4"), GRect(1, 2, 3, 4));
    EXPECT_EQ(GThickness::fromString("1 2 3 4"), GThickness(1, 2, 3, 4));
    EXPECT_TRUE(GThickness::fromString("1 2").isNotDefined());
}

TEST(Geometry2DDeathTest, FromStringOfNullAsserts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The handler prints to stdout; the death test reads stderr.
    EXPECT_EXIT(
        {
            ::dup2(2, 1);
            GPoint::fromString(nullptr);
        },
        testing::ExitedWithCode(1), "pStr == NULL");
}

TEST(Geometry2D, TextForms) {
    EXPECT_EQ(GPoint(3, 4).toString(), "(%s, %s)");
    EXPECT_EQ(GDimension(1234567, 2).toString(), "(1.234.567, 2)");
    EXPECT_EQ(GRect(1, 2, 3000, 4).toString(), "(1, 2, 3.000, 4)");
    EXPECT_EQ(GThickness(1, 2, 3, 4).toString(), "(top:1, left:2, bottom:3, right:4)");
}

TEST(GRect, ContainmentIsInclusiveOrStrictOnAllEdges) {
    GRect const r(0, 0, 10, 10);
    struct Row {
        double x, y;
        bool inclusive, strict;
    } const rows[] = {
        {10, 10, true, false},  {0, 5, true, false},     {5, 5, true, true},
        {11, 5, false, false},  {10.9, 5, true, false},  {-0.5, 5, true, false}, // truncated
        {NAN, 5, false, false}, {1e30, 5, false, false},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(r.containsPoint(row.x, row.y), row.inclusive) << row.x;
        EXPECT_EQ(r.containsPoint(float(row.x), float(row.y)), row.inclusive) << row.x;
        EXPECT_EQ(r.containsPointExclude(row.x, row.y), row.strict) << row.x;
    }
    EXPECT_TRUE(r.containsPoint(GPoint(10, 0)));
    EXPECT_TRUE(r.containsLineHorz(10));
    EXPECT_FALSE(r.containsLineHorz(-1));
    EXPECT_TRUE(r.containsRect(GRect(0, 0, 10, 10)));
    EXPECT_FALSE(r.containsRectExclude(GRect(0, 0, 10, 10)));
    EXPECT_TRUE(r.containsRectExclude(GRect(1, 1, 8, 8)));
}

// Only the corners of the argument are tested.
TEST(GRect, IntersectsLooksAtTheCornersOfItsArgument) {
    GRect const big(0, 0, 100, 100), small(10, 10, 5, 5);
    EXPECT_TRUE(big.intersects(small));
    EXPECT_FALSE(small.intersects(big));
    EXPECT_TRUE(big.intersects(GRect(100, 100, 5, 5)));
    EXPECT_FALSE(big.intersectsExclude(GRect(100, 100, 5, 5)));
}

TEST(GRect, IntersectedAndUnionRectangles) {
    GRect const a(0, 0, 10, 10), b(5, 5, 10, 10), far(20, 0, 5, 5);
    EXPECT_EQ(GRect::getIntersectedRect(a, b), GRect(5, 5, 5, 5));
    EXPECT_LT(GRect::getIntersectedRect(a, far).getWidth(), 0);
    EXPECT_EQ(GRect::getUnionRect(a, far), GRect(0, 0, 25, 10));
    EXPECT_EQ(GRect::getUnionRect(GRect(1, 1, -1, 5), far), far);
    EXPECT_EQ(GRect::getUnionRect(far, GRect(1, 1, 5, -1)), far);
}

TEST(GRect, EdgesSizesAndCentring) {
    GRect r(10, 10, 5, 5);
    r.setRight(20);
    EXPECT_EQ(r, GRect(10, 10, 10, 5));
    r.setRight(4); // past the left edge: the two swap
    EXPECT_EQ(r, GRect(4, 10, 6, 5));
    r.setBottom(0);
    EXPECT_EQ(r, GRect(4, 0, 6, 10));
    EXPECT_EQ(GRect(5, 1, 5, 9).getMiddle(), GPoint(7, 5)); // integer division
    GRect inner(0, 0, 3, 3);
    GRect(0, 0, 10, 10).setRect2Middle(inner);
    EXPECT_EQ(inner, GRect(3, 3, 3, 3));
}

// Sums past the 64-bit range give the mark; containment is exact at any coordinate.
TEST(Geometry2D, SixtyFourBitLimitsDoNotWrap) {
    GPoint p(MAX64, 0);
    p += GPoint(1, 1);
    EXPECT_EQ(p, GPoint(MARK, 1));
    p = GPoint(MIN64, 0);
    p -= GPoint(1, 0);
    EXPECT_EQ(p.x, MARK);
    GRect const edge(MAX64 - 1, MIN64, 10, 10);
    EXPECT_EQ(edge.right(), MARK);
    EXPECT_TRUE(edge.containsPoint(MAX64, MIN64 + 10));
    EXPECT_FALSE(edge.containsPoint(MAX64 - 2, MIN64));
    EXPECT_TRUE(GRect(MIN64, MIN64, MAX64, MAX64).containsPoint(-1, -1));
    EXPECT_EQ(GRect::getIntersectedRect(edge, GRect(0, MIN64, MAX64, 5)),
              GRect(MAX64 - 1, MIN64, 1, 5));
    GRect grow(0, 0, MAX64, 1);
    grow.addValues(0, 0, 1, 1);
    EXPECT_TRUE(grow.isNotDefined());
    EXPECT_EQ(GThickness(MAX64, 0, 1, 0).getHeight(), MARK);
    EXPECT_EQ(GThickness(1, 2, 3, 4).getWidth(), 6);
    // isInTheNearOf works on the lower 32 bits of each coordinate.
    EXPECT_TRUE(GPoint((1LL << 32) + 5, 0).isInTheNearOf(GPoint(3, 0), 2));
    EXPECT_FALSE(GPoint(5, 0).isInTheNearOf(GPoint(2, 0), 2));
}
