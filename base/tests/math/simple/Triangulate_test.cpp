// Triangulate_test.cpp: ear clipping covers random simple polygons exactly in both
// orientations, fails on self-intersecting and degenerate contours and always ends;
// the contour reader on good and bad lines.
#include "RandomPolygons.h"

#include "orv/ContourText.h"
#include "orv/Triangulate.h"

#include "support/Test.h"

using namespace orv;

namespace {

double twiceArea(Vector2 const &a, Vector2 const &b, Vector2 const &c) {
    return (double(b.x) - a.x) * (double(c.y) - a.y) - (double(b.y) - a.y) * (double(c.x) - a.x);
}

double shoelace(std::vector<Vector2> const &contour) {
    double twice = 0;
    for (size_t i = 0, j = contour.size() - 1; i < contour.size(); j = i++)
        twice += double(contour[j].x) * contour[i].y - double(contour[i].x) * contour[j].y;
    return 0.5 * twice;
}

// n - 2 counter-clockwise triangles whose areas add up to the polygon's, each with its
// centroid inside (checked on every step-th triangle).
void expectExactCover(std::vector<Vector2> const &contour, size_t step) {
    std::vector<Vector2> triangles;
    ASSERT_TRUE(Triangulate::makeMesh(contour, triangles)) << contour.size();
    ASSERT_EQ(triangles.size(), 3 * (contour.size() - 2));
    double total = 0;
    for (size_t i = 0; i < triangles.size(); i += 3) {
        Vector2 const &a = triangles[i], &b = triangles[i + 1], &c = triangles[i + 2];
        double const twice = twiceArea(a, b, c);
        ASSERT_GT(twice, 0) << "triangle " << i / 3;
        total += 0.5 * twice;
        // Nudged off every vertex's x, which the vertical ray needs; still inside.
        double const cx = (double(a.x) + b.x + c.x) / 3 + 1e-9, cy = (double(a.y) + b.y + c.y) / 3;
        if ((i / 3) % step == 0) {
            ASSERT_TRUE(test::insideByVerticalRay(cx, cy, contour)) << "triangle " << i / 3;
        }
    }
    EXPECT_NEAR(total, std::fabs(shoelace(contour)), 1e-9 * std::fabs(shoelace(contour)));
}

std::vector<Vector2> reversed(std::vector<Vector2> contour) {
    std::reverse(contour.begin(), contour.end());
    return contour;
}

} // namespace

TEST(Triangulate, SmallContoursAndTheirResults) {
    struct Row {
        char const *name;
        std::vector<Vector2> contour;
        bool ok;
        size_t points;
    } const rows[] = {
        {"square", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, true, 6},
        {"clockwise square", {{0, 1}, {1, 1}, {1, 0}, {0, 0}}, true, 6},
        {"triangle", {{0, 0}, {4, 0}, {0, 3}}, true, 3},
        {"reflex L", {{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}}, true, 12},
        {"bow-tie", {{0, 0}, {2, 2}, {2, 0}, {0, 2}}, false, 3}, // one ear, then none
        {"collinear", {{0, 0}, {1, 1}, {2, 2}}, false, 0},
        {"repeated point", {{0, 0}, {4, 0}, {4, 0}, {0, 4}}, false, 0},
        {"two points", {{0, 0}, {1, 0}}, false, 0},
        {"empty", {}, false, 0},
    };
    for (Row const &row : rows) {
        std::vector<Vector2> triangles = {{9, 9}}; // appended to, not cleared
        EXPECT_EQ(Triangulate::makeMesh(row.contour, triangles), row.ok) << row.name;
        EXPECT_EQ(triangles.size(), 1 + row.points) << row.name;
        EXPECT_EQ(triangles.front(), Vector2(9, 9)) << row.name;
    }
}

TEST(Triangulate, AreaSignTriangleBoundaryAndReflexCorners) {
    std::vector<Vector2> const square = {{0, 0}, {2, 0}, {2, 2}, {0, 2}};
    EXPECT_FLOAT_EQ(Triangulate::getArea(square), 4);
    EXPECT_FLOAT_EQ(Triangulate::getArea(reversed(square)), -4);
    EXPECT_TRUE(Triangulate::isInsideTriangle(0, 0, 2, 0, 0, 2, 1, 1)); // on an edge
    EXPECT_TRUE(Triangulate::isInsideTriangle(0, 0, 2, 0, 0, 2, 0, 0)); // on a corner
    EXPECT_FALSE(Triangulate::isInsideTriangle(0, 0, 2, 0, 0, 2, 1.01f, 1));
    std::vector<Vector2> const arrow = {{0, 0}, {4, 0}, {2, 1}, {2, 4}};
    int const V[] = {0, 1, 2, 3};
    EXPECT_FALSE(Triangulate::snip(arrow, 1, 2, 3, 4, V)); // reflex at (2, 1)
    EXPECT_TRUE(Triangulate::snip(arrow, 0, 1, 2, 4, V));
    EXPECT_FALSE(Triangulate::snip(arrow, 3, 0, 1, 4, V)); // (2, 1) inside
}

// Star-shaped rings up to 10000 points, and rings untangled by 2-opt, which rarely are.
TEST(Triangulate, CoversRandomPolygonsInBothOrientations) {
    std::vector<std::pair<std::string, std::vector<Vector2>>> polygons;
    for (int n : {3, 4, 5, 10, 100, 1000, 10000})
        polygons.emplace_back("star " + std::to_string(n), test::starPolygon(n, unsigned(n)));
    for (int n : {6, 30, 150})
        for (unsigned seed = 1; seed <= 3; ++seed)
            polygons.emplace_back("2-opt " + std::to_string(n) + " seed " + std::to_string(seed),
                                  test::untangledPolygon(n, seed));
    for (auto const &[name, polygon] : polygons) {
        SCOPED_TRACE(name);
        size_t const step = polygon.size() > 1000 ? 97 : 1;
        expectExactCover(polygon, step);
        expectExactCover(reversed(polygon), step);
    }
}

// A shuffled ring crosses itself; whatever the outcome, the run ends with at most
// n - 2 triangles, and a true result has them all.
TEST(Triangulate, SelfIntersectingRingsAlwaysEnd) {
    std::mt19937 rng(77);
    for (int round = 0; round < 40; ++round) {
        std::vector<Vector2> ring = test::starPolygon(60, unsigned(round));
        std::shuffle(ring.begin(), ring.end(), rng);
        std::vector<Vector2> triangles;
        bool const ok = Triangulate::makeMesh(ring, triangles);
        EXPECT_EQ(triangles.size() % 3, 0u);
        EXPECT_LE(triangles.size(), 3u * 58);
        if (ok) {
            EXPECT_EQ(triangles.size(), 3u * 58);
        }
    }
}

TEST(ContourText, ReadsPointsAndNamesTheFirstBadLine) {
    struct Row {
        QByteArray text;
        std::vector<Vector2> points; // when it reads
        qint64 errorLine;            // 0 when it reads
    } const rows[] = {
        {"0 0\n4 0\n0 3\n", {{0, 0}, {4, 0}, {0, 3}}, 0},
        {"# ring\r\n\r\n 1.5,\t-2 \r\n+3e2 , .5\n1 2", {{1.5f, -2}, {300, 0.5f}, {1, 2}}, 0},
        {"", {}, 0},
        {"1 2\n3\n", {}, 2},
        {"1 2 3\n", {}, 1},
        {"1,,2\n", {}, 1},
        {"1 2\nx y\n", {}, 2},
        {"nan 1\n", {}, 1},
        {"1 inf\n", {}, 1},
        {"1e39 0\n", {}, 1},
        {"1-2\n", {}, 1},
        {"+-1 2\n", {}, 1},
        {"0x10 2\n", {}, 1},
        {"1 2 # note\n", {}, 1},
        {QByteArray("1\0 2\n", 5), {}, 1},
    };
    for (Row const &row : rows) {
        ContourParse const parsed = ContourText::parse(row.text);
        SCOPED_TRACE(row.text.toStdString());
        EXPECT_EQ(bool(parsed), row.errorLine == 0);
        EXPECT_EQ(parsed.errorLine, row.errorLine);
        if (row.errorLine == 0)
            EXPECT_EQ(parsed.points, row.points);
        else
            EXPECT_TRUE(parsed.error.startsWith("expected two numbers \"x y\", found '"))
                << parsed.error.toStdString();
    }
}
