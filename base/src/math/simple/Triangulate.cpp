// Triangulate.cpp: ear clipping. Each round walks the remaining corners until one is
// an ear, cuts it off and restarts the budget; a budget of two walks around the
// contour without an ear means that none will come, which bounds every run.
#include "orv/Triangulate.h"

#include "orv/Log.h"

namespace orv {

namespace {

// Corners whose doubled area is below this are reflex or too thin to cut.
constexpr float EAR_EPSILON = 1e-10f;

} // namespace

float Triangulate::getArea(std::vector<Vector2> const &contour) {
    float twice = 0.0f;
    for (size_t q = 0, p = contour.size() - 1; q < contour.size(); p = q++)
        twice += contour[p].x * contour[q].y - contour[q].x * contour[p].y;
    return twice * 0.5f;
}

bool Triangulate::isInsideTriangle(float ax, float ay, float bx, float by, float cx, float cy,
                                   float px, float py) {
    float const bcp = (cx - bx) * (py - by) - (cy - by) * (px - bx);
    float const cap = (ax - cx) * (py - cy) - (ay - cy) * (px - cx);
    float const abp = (bx - ax) * (py - ay) - (by - ay) * (px - ax);
    return bcp >= 0.0f && cap >= 0.0f && abp >= 0.0f;
}

bool Triangulate::snip(std::vector<Vector2> const &contour, int u, int v, int w, int n,
                       int const *V) {
    Vector2 const &a = contour[V[u]], &b = contour[V[v]], &c = contour[V[w]];
    if ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x) < EAR_EPSILON)
        return false;
    for (int p = 0; p < n; ++p) {
        if (p == u || p == v || p == w)
            continue;
        Vector2 const &q = contour[V[p]];
        if (isInsideTriangle(a.x, a.y, b.x, b.y, c.x, c.y, q.x, q.y))
            return false;
    }
    return true;
}

bool Triangulate::makeMesh(std::vector<Vector2> const &contour, std::vector<Vector2> &result) {
    if (contour.size() < 3)
        return false;
    if (contour.size() > size_t(GMath::MAX_INT)) {
        ppError("Triangulate::makeMesh, $ points are more than the int indices reach",
                qint64(contour.size()));
        return false;
    }
    int const n = int(contour.size());
    // Walk counter-clockwise whatever the contour's own orientation.
    std::vector<int> V(size_t(n), 0);
    bool const counterClockwise = getArea(contour) > 0.0f;
    for (int i = 0; i < n; ++i)
        V[size_t(i)] = counterClockwise ? i : n - 1 - i;

    int nv = n;
    int count = 2 * nv;
    for (int v = nv - 1; nv > 2;) {
        if (count-- <= 0)
            return false;
        int const u = v < nv ? v : 0;
        v = u + 1 < nv ? u + 1 : 0;
        int const w = v + 1 < nv ? v + 1 : 0;
        if (!snip(contour, u, v, w, nv, V.data()))
            continue;
        result.push_back(contour[size_t(V[size_t(u)])]);
        result.push_back(contour[size_t(V[size_t(v)])]);
        result.push_back(contour[size_t(V[size_t(w)])]);
        V.erase(V.begin() + v);
        --nv;
        count = 2 * nv;
    }
    return true;
}

} // namespace orv
