// Line_test.cpp: 3D line intersection on every axis triple, distances, feet and
// projections against double-precision formulas, the degenerate cases, text forms.
#include "orv/Circle.h"
#include "orv/Plane.h"

#include "support/Test.h"

#include <random>

using namespace orv;

namespace {

struct D3 {
    double x, y, z;
    D3(Vector3 const &v) : x(v.x), y(v.y), z(v.z) {}
    D3(double x, double y, double z) : x(x), y(y), z(z) {}
    D3 operator+(D3 const &o) const { return {x + o.x, y + o.y, z + o.z}; }
    D3 operator-(D3 const &o) const { return {x - o.x, y - o.y, z - o.z}; }
    D3 operator*(double s) const { return {x * s, y * s, z * s}; }
    double dot(D3 const &o) const { return x * o.x + y * o.y + z * o.z; }
    double length() const { return std::sqrt(dot(*this)); }
};

double gap(Vector3 const &actual, D3 const &expected) { return (D3(actual) - expected).length(); }

Vector3 axis(int i, float length) {
    Vector3 v;
    v[i] = length;
    return v;
}

} // namespace

// Every ordered pair of axes picks another of the six (i, j, k) triples.
TEST(Line3, LinesAlongAnyTwoAxesMeetInTheirCommonPoint) {
    Vector3 const meeting(1, 2, 3);
    for (int a = 0; a < 3; ++a)
        for (int b = 0; b < 3; ++b)
            if (a != b) {
                Line3 const first(meeting - axis(a, 4), axis(a, 2));
                Line3 const second(meeting + axis(b, 3), axis(b, -1));
                EXPECT_EQ(Line3::getIntersection(first, second), meeting) << a << b;
            }
}

// Parallel or zero directions break the main conditions; skew lines must agree on the
// third axis within 2e-6.
TEST(Line3, ParallelZeroOrSkewLinesGiveInvalidWithTheirLines) {
    struct Row {
        Line3 second;
        bool meets;
        char const *firstLine; // null: no line
        size_t count;
    } const rows[] = {
        {Line3({0, 1, 0}, {2, 0, 0}), false, "Line3::getIntersection, main conditions failed.", 1},
        {Line3({0, 1, 0}, {0, 0, 0}), false, "Line3::getIntersection, main conditions failed.", 1},
        {Line3({0, 0, 1e-6f}, {0, 1, 0}), true, nullptr, 0},
        {Line3({0, 0, 3e-6f}, {0, 1, 0}), false,
         "Line3::_getIntersectionInternally, no intersection possible - lines are skewed, "
         "distance lines=",
         3},
        {Line3({0, 0, 1}, {0, 1, 0}), false, "Line3::_getIntersectionInternally", 3},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.second.toString().toStdString());
        Vector3 result;
        auto const lines = test::linesLoggedBy(
            [&] {
                result = Line3::getIntersection(Line3({1, 0, 0}), row.second);
            },
            ERROR | DEBUG);
        EXPECT_EQ(result.isValid(), row.meets);
        ASSERT_EQ(lines.size(), row.count);
        if (row.firstLine) {
            EXPECT_TRUE(lines[0].startsWith(row.firstLine)) << lines[0].toStdString();
        }
    }
}

// The plain formulas in double: projections on unit vectors and the closest points
// of two lines from their normal equations, on random well-conditioned lines.
TEST(Line3, DistancesFeetAndProjectionsAgreeWithDoubleFormulas) {
    std::mt19937 rng(18);
    std::uniform_real_distribution<float> coordinate(-10.0f, 10.0f);
    auto random = [&] { return Vector3(coordinate(rng), coordinate(rng), coordinate(rng)); };
    double const tolerance = 2e-4;
    for (int round = 0; round < 200; ++round) {
        Vector3 const p1 = random(), d1 = random(), p2 = random(), d2 = random(), q = random();
        if (~d1 < 1 || ~d2 < 1 || ~(d1.getNormal() % d2.getNormal()) < 0.1f)
            continue;
        D3 const u1 = D3(d1) * (1 / D3(d1).length());
        D3 const footQ = D3(p1) + u1 * (D3(q) - p1).dot(u1);
        EXPECT_NEAR(Line3::getDistance(p1, d1, q), (D3(q) - footQ).length(), tolerance);
        EXPECT_LT(gap(Line3::getFootOfPerpendicularByPoints(p1, p1 + d1, q), footQ), tolerance);
        EXPECT_LT(
            gap(Line3::getNormal(p1, d1, q), (D3(q) - footQ) * (1 / (D3(q) - footQ).length())),
            tolerance);

        D3 const w = D3(p1) - p2;
        double const a = D3(d1).dot(d1), b = D3(d1).dot(d2), c = D3(d2).dot(d2);
        double const det = a * c - b * b;
        double const s = (b * D3(d2).dot(w) - c * D3(d1).dot(w)) / det;
        double const t = (a * D3(d2).dot(w) - b * D3(d1).dot(w)) / det;
        D3 const nearest = D3(p1) + D3(d1) * s;
        EXPECT_NEAR(Line3::getDistance(p1, d1, p2, d2), (nearest - (D3(p2) + D3(d2) * t)).length(),
                    tolerance);
        EXPECT_LT(gap(Line3::getFootOfPerpendicular(Line3(p1, d1), Line3(p2, d2)), nearest),
                  tolerance);

        D3 const n = D3(d2) * (1 / D3(d2).length());
        EXPECT_NEAR(Plane::getDistanceDirected(p2, d2, q), (D3(q) - p2).dot(n), tolerance);
        EXPECT_LT(gap(Plane::getProjectedVector(d2.getNormal(), q), D3(q) - n * D3(q).dot(n)),
                  tolerance);
        Vector3 const hit = Plane(p2, d2).getIntersection(Line3(p1, d1));
        if (std::fabs(D3(d1).dot(n)) > 0.1 * D3(d1).length()) {
            EXPECT_NEAR((D3(hit) - p2).dot(n), 0.0, tolerance * 10);
        }
    }
}

TEST(Line3, CollinearityLooksAtDirectionsAloneWithEachTolerance) {
    Line3 const x({5, 5, 5}, {1, 0, 0});
    Line3 const nearX({0, 0, 0}, {1, 5e-6f, 0}), opposite({0, 0, 0}, {-1, 0, 0});
    EXPECT_TRUE(Line3::is_collinear_equal(x, Line3({1, 0, 0})));
    EXPECT_FALSE(Line3::is_collinear_equal(x, opposite));
    EXPECT_FALSE(Line3::is_collinear_nearly(x, opposite));
    EXPECT_FALSE(Line3::is_collinear_equal(x, nearX));
    EXPECT_TRUE(Line3::is_collinear_nearly(x, nearX));
    EXPECT_FALSE(Line3::is_collinear_by_tolerance(x, nearX, 1e-6f));
}

// Parallel input is guarded where the plain formula would divide by zero.
TEST(Line3, ParallelAndDegenerateInputStaysFinite) {
    Line3 const x({1, 0, 0}), parallel({0, 3, 4}, {-2, 0, 0});
    EXPECT_FLOAT_EQ(x.getDistance(parallel), 5.0f);
    EXPECT_FALSE(Line3::getFootOfPerpendicular(x, parallel).isValid());
    EXPECT_FLOAT_EQ(Line3::getDistanceByPoints({1, 1, 1}, {1, 1, 1}, {1, 4, 5}), 5.0f);
    EXPECT_EQ(Line3::getNormal({0, 0, 0}, {1, 0, 0}, {7, 0, 0}), Vector3(0, 0, 0));
}

TEST(LineSegment3, FootOfPerpendicularInsideOnlyBetweenItsPoints) {
    LineSegment3 const segment({0, 0, 0}, {10, 0, 0});
    struct Row {
        float x;
        bool inside;
    } const rows[] = {{5, true}, {0.5f, true}, {12, false}, {-3, false}, {0, false}};
    for (Row const &row : rows)
        EXPECT_EQ(segment.isFootOfPerpendicularInside(Line3({row.x, 0, 2}, {0, 1, 0})), row.inside)
            << row.x;
    EXPECT_FLOAT_EQ(segment.getDistance(Line3({5, 0, 2}, {0, 1, 0})), 2.0f);
    EXPECT_FALSE(segment.isFootOfPerpendicularInside(Line3({1, 1, 0}, {1, 0, 0})));
}

TEST(Plane, DistancesIntersectionsAndDegenerateInput) {
    Vector3 const position(0, 0, 1), normal(0, 0, 2);
    EXPECT_FLOAT_EQ(Plane::getDistanceDirected(position, normal, {3, 4, 4}), 3.0f);
    EXPECT_FLOAT_EQ(Plane::getDistanceDirected(position, normal, {3, 4, -2}), -3.0f);
    EXPECT_FLOAT_EQ(Plane::getDistance(position, normal, {3, 4, -2}), 3.0f);
    EXPECT_EQ(Plane(position, normal).getIntersection(Line3({0, 0, 5}, {1, 0, -1})),
              Vector3(4, 0, 1));
    // Three collinear points span no plane, and a parallel line misses one.
    Vector3 const a(1, 1, 1), b(2, 2, 2), c(4, 4, 4);
    Vector3 const none = Plane::getNormal(b - a, c - a);
    EXPECT_TRUE(none.isZero());
    EXPECT_FALSE(Plane(a, none).getIntersection(Line3({0, 0, 0}, {0, 0, 1})).isValid());
    EXPECT_FALSE(Plane::getIntersection(a, {0, 0, 1}, {0, 0, 0}, {1, 1, 0}).isValid());
    EXPECT_EQ(Plane::getNormal({2, 0, 0}, {0, 3, 0}), Vector3::UNIT_Z_POSITIVE);
}

TEST(Line2, FootOfPerpendicularAndTheNotNormalizedDebugLines) {
    EXPECT_EQ(Line2::getFootOfPerpendicularByPoints({0, 1}, {4, 1}, {3, 7}), Vector2(3, 1));
    auto const lines = test::linesLoggedBy(
        [] {
            Line2::getFootOfPerpendicularByLine({0, 0}, {2, 0}, {1, 1});
            Line3::getFootOfPerpendicularByLine({0, 0, 0}, {2, 0, 0}, {1, 1, 1});
        },
        DEBUG);
    EXPECT_EQ(lines, (std::vector<QString>{
                         "Line2::getFootOfPerpendicularByLine: The line direction vector with "
                         "length 2.000000 is not normalized",
                         "Line3::getFootOfPerpendicularByLine: The line direction vector with "
                         "length 2.000000000000000000000000 is not normalized"}));
}

TEST(Line, TextFormsTheNotDefinedSegmentAndTheCircle) {
    LineSegment2 const undefined(false);
    EXPECT_FALSE(undefined.isDefined());
    EXPECT_EQ(undefined.toString(), "NOT DEFINED");
    EXPECT_TRUE(LineSegment2(true).isDefined());
    EXPECT_EQ(Line2({1, 2}, {0, 1}).toString(), "[1.000000, 2.000000] - [0.000000, 1.000000]");
    EXPECT_EQ(Line3({1, 0, 0}).toString(),
              "position = [+0.000, +0.000, +0.000], direction = [+1.000, +0.000, +0.000]");
    Circle c;
    c.setRadius(1);
    c.setCapHeight(0.5f);
    EXPECT_EQ(c.toString(), "vCenter:[0.000000, 0.000000], radius:1.000000, capRadius:0.000000, "
                            "capHeight:0.500000, piDiameterRatio:1.570796");
}
