// GeoAlgo2D.h: the classic polygon tests on integer coordinates: orientation,
// segment crossing, pseudo-angle, bounds and the even-odd point-in-polygon rule.
//
//   std::vector<orv::Vector2> square = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
//   bool in = orv::GeoAlgo2D::contains(orv::Vector2(5, 5), square);   // true
//   int turn = orv::GeoAlgo2D::ccw({0, 0}, {1, 0}, {1, 1});           // 1: counter-clockwise
//
// The orientation tests are exact for any 64-bit coordinates.
#pragma once

#include "orv/Geometry2D.h"
#include "orv/PointIterator.h"

#include <vector>

namespace orv {

struct ORV_EXPORT GeoAlgo2D {
    // 1 for a left turn p0 -> p1 -> p2, -1 for a right turn. Collinear: -1 with p0
    // between the others, 0 with p2 between p0 and p1 (or on p0), 1 with p1 between.
    static int ccw(GPoint const &p0, GPoint const &p1, GPoint const &p2);
    // Whether the segments meet, touching ends and collinear overlap included.
    static bool intersect(GLine const &a, GLine const &b);
    // A monotonic stand-in for the angle of p1 -> p2 in degrees, 0 up to below 360,
    // without trigonometry; 0 for p1 == p2. Works on the lower 32 bits of dx and dy.
    static float theta(GPoint const &p1, GPoint const &p2);

    // The bounding rectangle. Empty input leaves the start values: x and y at the
    // int maximum, width and height negative. Float coordinates are truncated at the end.
    static GRect calculateBounds(std::vector<Vector2> const &points);
    static GRect calculateBounds(int const *xs, int const *ys, int n);
    static GRect calculateBounds(PointIterator2 &points);

    // Even-odd crossing rule; fewer than three points are never contained. The
    // Vector2 forms truncate every coordinate to int first; the double form tests
    // the exact point, so that points on edges can differ between them.
    static bool contains(Vector2 const &point, std::vector<Vector2> const &polygon);
    static bool contains(double x, double y, int const *xs, int const *ys, int n);
    // Walks the iterator from reset() to its end.
    static bool contains(Vector2 const &point, PointIterator2 &polygon);
    // contains() on the coordinates truncated to int: 1 inside, 0 outside.
    static int inside(GPoint const &point, std::vector<GPoint> const &polygon);

    // Foot of the perpendicular from p on the line through a and b. With onSegmentOnly
    // a foot outside the bounding box of a and b (compared as truncated integers) is
    // not defined (Vector2::isNotDefined).
    static Vector2 getBasePoint(Vector2 const &a, Vector2 const &b, Vector2 const &p,
                                bool onSegmentOnly);
};

} // namespace orv
