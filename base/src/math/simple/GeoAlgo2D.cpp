// GeoAlgo2D.cpp: orientation, segment crossing, pseudo-angle, bounds and the even-odd
// point-in-polygon rule.
#include "orv/GeoAlgo2D.h"

#include "WideInt.h"
#include "orv/Line.h"
#include "orv/XError.h"

#include <algorithm>
#include <cmath>

namespace orv {

using geometry2d::truncateToInt;
using geometry2d::Wide;

namespace {

using UWide = unsigned __int128;

int signOf(Wide v) { return (v > 0) - (v < 0); }

UWide magnitude(Wide v) { return static_cast<UWide>(v < 0 ? -v : v); }

// The sign of a * b - c * d, exact for differences of 64-bit values: each factor has at
// most 64 bits of magnitude, so each product fits in 128 unsigned bits, while the
// products themselves could overflow the signed 128-bit type.
int compareProducts(Wide a, Wide b, Wide c, Wide d) {
    int const left = signOf(a) * signOf(b), right = signOf(c) * signOf(d);
    if (left != right)
        return left < right ? -1 : 1;
    UWide const ml = magnitude(a) * magnitude(b), mr = magnitude(c) * magnitude(d);
    if (ml == mr)
        return 0;
    return (ml > mr) == (left >= 0) ? 1 : -1;
}

GRect boundsOf(int minX, int minY, int maxX, int maxY) {
    return GRect(minX, minY, qint64(maxX) - minX, qint64(maxY) - minY);
}

// The float forms keep their extremes in float and truncate them at the end.
template <typename Next> GRect floatBounds(Next next) {
    float minX = GMath::MAX_FLOAT, minY = GMath::MAX_FLOAT;
    float maxX = -GMath::MAX_FLOAT, maxY = -GMath::MAX_FLOAT;
    Vector2 p;
    while (next(p)) {
        minX = std::min(minX, p.x), maxX = std::max(maxX, p.x);
        minY = std::min(minY, p.y), maxY = std::max(maxY, p.y);
    }
    return boundsOf(truncateToInt(minX), truncateToInt(minY), truncateToInt(maxX),
                    truncateToInt(maxY));
}

std::vector<Vector2> collect(PointIterator2 &points) {
    std::vector<Vector2> all;
    all.reserve(points.size());
    points.reset();
    while (points.hasMorePoints())
        all.push_back(points.nextPoint());
    return all;
}

GRect intBounds(int const *xs, int const *ys, size_t n) {
    int minX = GMath::MAX_INT, minY = GMath::MAX_INT, maxX = GMath::MIN_INT, maxY = GMath::MIN_INT;
    for (size_t i = 0; i < n; ++i) {
        minX = std::min(minX, xs[i]), maxX = std::max(maxX, xs[i]);
        minY = std::min(minY, ys[i]), maxY = std::max(maxY, ys[i]);
    }
    return boundsOf(minX, minY, maxX, maxY);
}

// The crossing rule on a ray from (x, y) towards +x; the count's parity decides.
bool evenOdd(double x, double y, int const *xs, int const *ys, size_t n) {
    if (n < 3)
        return false;
    ORV_ASSERT_PTR(xs);
    ORV_ASSERT_PTR(ys);
    if (!intBounds(xs, ys, n).containsPoint(x, y))
        return false;
    bool inside = false;
    for (size_t i = 0, j = n - 1; i < n; j = i++) {
        double const x1 = xs[j], y1 = ys[j], x2 = xs[i], y2 = ys[i];
        if (y1 == y2 || x >= std::max(x1, x2))
            continue;
        // Half-open in y: the lower end of an edge counts, the upper doesn't, so that a
        // ray through a vertex crosses once.
        if (!(std::min(y1, y2) <= y && y < std::max(y1, y2)))
            continue;
        if (x < std::min(x1, x2) || x1 + (y - y1) * (x2 - x1) / (y2 - y1) > x)
            inside = !inside;
    }
    return inside;
}

// The point forms that copy the polygon's coordinates to int first.
template <typename P, typename ToInt>
bool evenOddOnInts(int x, int y, std::vector<P> const &polygon, ToInt toInt) {
    std::vector<int> xs, ys;
    xs.reserve(polygon.size()), ys.reserve(polygon.size());
    for (P const &p : polygon) {
        xs.push_back(toInt(p.x));
        ys.push_back(toInt(p.y));
    }
    return evenOdd(x, y, xs.data(), ys.data(), polygon.size());
}

} // namespace

int GeoAlgo2D::ccw(GPoint const &p0, GPoint const &p1, GPoint const &p2) {
    Wide const dx1 = Wide(p1.x) - p0.x, dy1 = Wide(p1.y) - p0.y;
    Wide const dx2 = Wide(p2.x) - p0.x, dy2 = Wide(p2.y) - p0.y;
    int const turn = compareProducts(dx1, dy2, dy1, dx2);
    if (turn != 0)
        return turn;
    if (signOf(dx1) * signOf(dx2) < 0 || signOf(dy1) * signOf(dy2) < 0)
        return -1; // p0 between
    // Collinear and on one side of p0, p2 = k p1 with k >= 0: the sums of the absolute
    // components compare as the squared lengths do, and can't overflow.
    Wide const length1 = magnitude(dx1) + magnitude(dy1);
    Wide const length2 = magnitude(dx2) + magnitude(dy2);
    return length1 < length2 ? 1 : 0;
}

bool GeoAlgo2D::intersect(GLine const &a, GLine const &b) {
    return ccw(a.start, a.end, b.end) * ccw(a.start, a.end, b.start) <= 0 &&
           ccw(b.start, b.end, a.end) * ccw(b.start, b.end, a.start) <= 0;
}

float GeoAlgo2D::theta(GPoint const &p1, GPoint const &p2) {
    // The lower 32 bits of the differences, taken without a signed overflow.
    float const dx = float(qint32(quint32(quint64(p2.x) - quint64(p1.x))));
    float const dy = float(qint32(quint32(quint64(p2.y) - quint64(p1.y))));
    float t = dx == 0.0f && dy == 0.0f ? 0.0f : dy / (std::fabs(dx) + std::fabs(dy));
    if (dx < 0.0f)
        t = 2.0f - t;
    else if (dy < 0.0f)
        t = 4.0f + t;
    return t * 90.0f;
}

GRect GeoAlgo2D::calculateBounds(std::vector<Vector2> const &points) {
    auto it = points.begin();
    return floatBounds([&](Vector2 &p) { return it != points.end() && (p = *it++, true); });
}

GRect GeoAlgo2D::calculateBounds(int const *xs, int const *ys, int n) {
    if (n <= 0)
        return intBounds(xs, ys, 0);
    ORV_ASSERT_PTR(xs);
    ORV_ASSERT_PTR(ys);
    return intBounds(xs, ys, size_t(n));
}

GRect GeoAlgo2D::calculateBounds(PointIterator2 &points) {
    points.reset();
    return floatBounds(
        [&](Vector2 &p) { return points.hasMorePoints() && (p = points.nextPoint(), true); });
}

bool GeoAlgo2D::contains(double x, double y, int const *xs, int const *ys, int n) {
    return n > 0 && evenOdd(x, y, xs, ys, size_t(n));
}

bool GeoAlgo2D::contains(Vector2 const &point, std::vector<Vector2> const &polygon) {
    return evenOddOnInts(truncateToInt(point.x), truncateToInt(point.y), polygon,
                         [](float v) { return truncateToInt(v); });
}

bool GeoAlgo2D::contains(Vector2 const &point, PointIterator2 &polygon) {
    return contains(point, collect(polygon));
}

int GeoAlgo2D::inside(GPoint const &point, std::vector<GPoint> const &polygon) {
    // qint64 to int keeps the lower 32 bits.
    return evenOddOnInts(int(point.x), int(point.y), polygon, [](qint64 v) { return int(v); }) ? 1
                                                                                               : 0;
}

Vector2 GeoAlgo2D::getBasePoint(Vector2 const &a, Vector2 const &b, Vector2 const &p,
                                bool onSegmentOnly) {
    Vector2 foot = Line2::getFootOfPerpendicularByPoints(a, b, p);
    if (!onSegmentOnly)
        return foot;
    auto between = [](float v, float end1, float end2) {
        int const t = truncateToInt(v), e1 = truncateToInt(end1), e2 = truncateToInt(end2);
        return std::min(e1, e2) <= t && t <= std::max(e1, e2);
    };
    if (!between(foot.x, a.x, b.x) || !between(foot.y, a.y, b.y))
        foot.setNotDefined();
    return foot;
}

} // namespace orv
