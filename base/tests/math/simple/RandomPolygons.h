// RandomPolygons.h: random simple polygons on integer coordinates, star-shaped or
// untangled by 2-opt, and an even-odd test of its own (a vertical ray) to check against.
#pragma once

#include "orv/Vector.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace orv::test {

// Vertices on rays in angular order, 1e5 to 1e6 from the origin: rounding to integers
// moves none across its neighbour's ray, so the polygon stays simple. Counter-clockwise.
inline std::vector<Vector2> starPolygon(int n, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> jitter(-0.4, 0.4), radius(1e5, 1e6);
    std::vector<Vector2> points;
    for (int i = 0; i < n; ++i) {
        double const angle = (i + jitter(rng)) * 2 * M_PI / n, r = radius(rng);
        points.emplace_back(float(std::lround(r * std::cos(angle))),
                            float(std::lround(r * std::sin(angle))));
    }
    return points;
}

inline long long orientation(Vector2 const &a, Vector2 const &b, Vector2 const &c) {
    long long const v = (long long)(b.x - a.x) * (long long)(c.y - a.y) -
                        (long long)(b.y - a.y) * (long long)(c.x - a.x);
    return (v > 0) - (v < 0);
}

// Random points without three on a line, reordered by 2-opt until no two edges cross:
// each reversal shortens the ring, so it ends, and the result is rarely star-shaped.
inline std::vector<Vector2> untangledPolygon(int n, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_int_distribution<int> coordinate(0, 10000);
    std::vector<Vector2> p;
    while (int(p.size()) < n) {
        Vector2 const c(float(coordinate(rng)), float(coordinate(rng)));
        bool collinear = false;
        for (size_t i = 0; i < p.size() && !collinear; ++i)
            for (size_t j = i + 1; j < p.size() && !collinear; ++j)
                collinear = orientation(p[i], p[j], c) == 0;
        if (!collinear && std::find(p.begin(), p.end(), c) == p.end())
            p.push_back(c);
    }
    for (bool crossed = true; crossed;) {
        crossed = false;
        for (int i = 0; i < n; ++i)
            for (int j = i + 2; j < n && !(i == 0 && j == n - 1); ++j) {
                Vector2 const &a = p[i], &b = p[i + 1], &c = p[j], &d = p[(j + 1) % n];
                if (orientation(a, b, c) * orientation(a, b, d) < 0 &&
                    orientation(c, d, a) * orientation(c, d, b) < 0) {
                    std::reverse(p.begin() + i + 1, p.begin() + j + 1);
                    crossed = true;
                }
            }
    }
    return p;
}

// Even-odd by a ray towards +y; the point must lie on no vertex's x.
inline bool insideByVerticalRay(double x, double y, std::vector<Vector2> const &polygon) {
    bool inside = false;
    for (size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        Vector2 const &a = polygon[j], &b = polygon[i];
        if ((a.x > x) != (b.x > x) && a.y + (x - a.x) * (b.y - a.y) / (b.x - a.x) > y)
            inside = !inside;
    }
    return inside;
}

} // namespace orv::test
