// GeoAlgo2D_test.cpp: orientation and crossing on the exact integer boundary cases,
// the pseudo-angle, bounds, the foot on a segment, the point iterator, and the
// even-odd rule against an independent ray on random polygons.
#include "RandomPolygons.h"

#include "orv/GeoAlgo2D.h"

#include "support/Test.h"

#include <limits>

using namespace orv;

namespace {

constexpr qint64 MAX64 = std::numeric_limits<qint64>::max();
constexpr qint64 MIN64 = std::numeric_limits<qint64>::min();

} // namespace

TEST(GeoAlgo2D, CcwOnTurnsCollinearPointsAnd64BitLimits) {
    struct Row {
        GPoint p0, p1, p2;
        int expected;
    } const rows[] = {
        {{0, 0}, {1, 0}, {1, 1}, 1},
        {{0, 0}, {1, 0}, {1, -1}, -1},
        {{0, 0}, {1, 1}, {-1, -1}, -1}, // p0 between
        {{0, 0}, {2, 2}, {1, 1}, 0},    // p2 between p0 and p1
        {{0, 0}, {1, 1}, {2, 2}, 1},    // p1 between
        {{0, 0}, {1, 1}, {0, 0}, 0},    // p2 on p0
        {{0, 0}, {0, 0}, {0, 0}, 0},
        // The products need 128 bits: a 64-bit evaluation wraps and flips the sign.
        {{MIN64, MIN64}, {MAX64, MAX64}, {MAX64, MAX64 - 1}, -1},
        {{MIN64, MIN64}, {MAX64, MAX64}, {MAX64 - 1, MAX64}, 1},
        {{-(1LL << 62), 0}, {1LL << 62, 1}, {(1LL << 62) - 1, 1}, 1},
        {{MIN64, 0}, {0, 0}, {MAX64, 0}, 1},
        {{MIN64, 0}, {MAX64, 0}, {0, 0}, 0},
        {{0, 0}, {MIN64, 0}, {MAX64, 0}, -1},
    };
    for (Row const &row : rows)
        EXPECT_EQ(GeoAlgo2D::ccw(row.p0, row.p1, row.p2), row.expected) << "row " << &row - rows;
}

TEST(GeoAlgo2D, SegmentsIntersectWhenCrossingTouchingOrOverlapping) {
    struct Row {
        GLine a, b;
        bool expected;
    } const rows[] = {
        {{0, 0, 10, 10}, {0, 10, 10, 0}, true},  // crossing
        {{0, 0, 10, 0}, {10, 0, 10, 5}, true},   // touching at an end
        {{0, 0, 10, 0}, {5, 0, 5, 5}, true},     // an end on the other's inside
        {{0, 0, 10, 0}, {5, 0, 15, 0}, true},    // collinear, overlapping
        {{0, 0, 10, 0}, {10, 0, 15, 0}, true},   // collinear, sharing an end
        {{0, 0, 4, 0}, {5, 0, 9, 0}, false},     // collinear, apart
        {{0, 0, 10, 0}, {0, 1, 10, 1}, false},   // parallel
        {{0, 0, 10, 0}, {11, -1, 11, 1}, false}, // beyond the end
        {{MIN64, MIN64, MAX64, MAX64}, {MIN64, MAX64, MAX64, MIN64}, true},
        {{MIN64, MIN64, MAX64, MAX64}, {MIN64, MIN64 + 1, MAX64 - 1, MAX64}, false},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(GeoAlgo2D::intersect(row.a, row.b), row.expected) << "row " << &row - rows;
        EXPECT_EQ(GeoAlgo2D::intersect(row.b, row.a), row.expected) << "row " << &row - rows;
    }
}

TEST(GeoAlgo2D, ThetaRunsAroundFrom0ToBelow360) {
    struct Row {
        qint64 dx, dy;
        float degrees;
    } const rows[] = {{0, 0, 0},
                      {1, 0, 0},
                      {0, 1, 90},
                      {-1, 0, 180},
                      {0, -1, 270},
                      {1, 1, 45},
                      {-1, 1, 135},
                      {-1, -1, 225},
                      {1, -1, 315},
                      {3, 1, 22.5f},
                      {(1LL << 32) - 1, 0, 180}}; // only the lower 32 bits count: -1
    for (Row const &row : rows)
        EXPECT_FLOAT_EQ(GeoAlgo2D::theta({5, 5}, {5 + row.dx, 5 + row.dy}), row.degrees)
            << row.dx << "," << row.dy;
}

TEST(GeoAlgo2D, BoundsOfEveryFormAndOfNothing) {
    std::vector<Vector2> points = {{1.5f, -2.5f}, {7.9f, 3}, {-4, 0}};
    PointIteratorByArray it(&points);
    EXPECT_EQ(GeoAlgo2D::calculateBounds(points), GRect(-4, -2, 11, 5));
    EXPECT_EQ(GeoAlgo2D::calculateBounds(it), GRect(-4, -2, 11, 5));
    int const xs[] = {3, -1, 8}, ys[] = {0, 5, 2};
    EXPECT_EQ(GeoAlgo2D::calculateBounds(xs, ys, 3), GRect(-1, 0, 9, 5));
    GRect const none = GeoAlgo2D::calculateBounds(xs, ys, 0);
    EXPECT_EQ(none, GRect(GMath::MAX_INT, GMath::MAX_INT, -4294967295LL, -4294967295LL));
    EXPECT_EQ(GeoAlgo2D::calculateBounds(std::vector<Vector2>()), none);
}

// The lower end of an edge counts and the upper doesn't.
TEST(GeoAlgo2D, ContainsCountsTheBottomEdgeButNotTheTop) {
    std::vector<Vector2> square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
    PointIteratorByArray it(&square);
    EXPECT_TRUE(GeoAlgo2D::contains(Vector2(5, 0), square));
    EXPECT_FALSE(GeoAlgo2D::contains(Vector2(5, 10), square));
    EXPECT_TRUE(GeoAlgo2D::contains(Vector2(5.9f, 5.9f), it));
    EXPECT_FALSE(GeoAlgo2D::contains(Vector2(11, 5), square));
    EXPECT_FALSE(GeoAlgo2D::contains(Vector2(1, 1), {{0, 0}, {10, 0}}));
    // The Vector2 form truncates to (4, 5), the double form doesn't.
    EXPECT_TRUE(GeoAlgo2D::contains(Vector2(4.9f, 5.6f), {{0, 0}, {10, 0}, {0, 10}}));
    int const xs[] = {0, 10, 0}, ys[] = {0, 0, 10};
    EXPECT_FALSE(GeoAlgo2D::contains(4.9, 5.6, xs, ys, 3));
    EXPECT_EQ(GeoAlgo2D::inside({2, 2}, {{0, 0}, {10, 0}, {0, 10}}), 1);
    EXPECT_EQ(GeoAlgo2D::inside({8, 8}, {{0, 0}, {10, 0}, {0, 10}}), 0);
}

// Random rings, self-intersecting too: even-odd is the same whatever the ray's direction
// for a point on no edge. Edges between integer points pass x = k + 0.5 at multiples of
// 1 / (2 dx), dx <= 100, which y = m + 0.2731 never is.
TEST(GeoAlgo2D, ContainsAgreesWithAVerticalRayOnRandomPolygons) {
    std::mt19937 rng(2018);
    std::uniform_int_distribution<int> coordinate(-50, 50), size(3, 40);
    int insideCount = 0;
    for (int round = 0; round < 300; ++round) {
        std::vector<Vector2> polygon(size_t(size(rng)));
        std::vector<int> xs, ys;
        for (Vector2 &p : polygon) {
            p = Vector2(float(coordinate(rng)), float(coordinate(rng)));
            xs.push_back(int(p.x)), ys.push_back(int(p.y));
        }
        for (int probe = 0; probe < 20; ++probe) {
            double const x = coordinate(rng) + 0.5, y = coordinate(rng) + 0.2731;
            bool const expected = test::insideByVerticalRay(x, y, polygon);
            ASSERT_EQ(GeoAlgo2D::contains(x, y, xs.data(), ys.data(), int(xs.size())), expected)
                << "round " << round << " probe " << x << "," << y;
            insideCount += expected;
        }
    }
    EXPECT_GT(insideCount, 300); // the probes did reach the insides
}

TEST(GeoAlgo2D, BasePointOnTheSegmentOrNotDefined) {
    Vector2 const a(0, 0), b(10, 0);
    EXPECT_EQ(GeoAlgo2D::getBasePoint(a, b, {4, 3}, true), Vector2(4, 0));
    EXPECT_TRUE(GeoAlgo2D::getBasePoint(a, b, {12, 3}, true).isNotDefined());
    EXPECT_EQ(GeoAlgo2D::getBasePoint(a, b, {12, 3}, false), Vector2(12, 0));
    EXPECT_EQ(GeoAlgo2D::getBasePoint(a, b, {10.5f, 3}, true), Vector2(10.5f, 0)); // truncated
}

TEST(PointIteratorByArray, WalksOnceAndLogsOutOfBound) {
    std::vector<Vector2> points = {{1, 2}, {3, 4}}, none;
    PointIteratorByArray it(&points), empty(&none);
    EXPECT_EQ(it.nextPoint(), Vector2(1, 2));
    EXPECT_EQ(it.lastPoint(), Vector2(3, 4)); // the ends don't move the position
    EXPECT_EQ(it.nextPoint(), Vector2(3, 4));
    EXPECT_FALSE(it.hasMorePoints());
    std::vector<QString> const lines = test::linesLoggedBy(
        [&] {
            EXPECT_EQ(it.nextPoint(), Vector2(0, 0));
            EXPECT_EQ(empty.firstPoint(), Vector2(0, 0));
            EXPECT_EQ(empty.lastPoint(), Vector2(0, 0));
        },
        DEBUG);
    EXPECT_EQ(lines, (std::vector<QString>{"PointIteratorByArray::nextPoint, out of bound",
                                           "PointIteratorByArray::firstPoint, out of bound",
                                           "PointIteratorByArray::lastPoint, out of bound"}));
}
