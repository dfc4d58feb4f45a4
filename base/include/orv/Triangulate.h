// Triangulate.h: ear clipping of a simple polygon into triangles, in float.
//
//   std::vector<orv::Vector2> square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, triangles;
//   if (orv::Triangulate::makeMesh(square, triangles))
//       ...;   // triangles holds 3 * (4 - 2) points, each triple counter-clockwise
//
// Either orientation is accepted. Self-intersecting and degenerate contours (zero
// area, collinear or repeated points) end with false. The time grows with the square
// of the vertex count, up to its cube on contours with few ears.
#pragma once

#include "orv/Vector.h"

#include <vector>

namespace orv {

struct ORV_EXPORT Triangulate {
    // Signed area by the shoelace sum: positive counter-clockwise; 0 for an empty contour.
    static float getArea(std::vector<Vector2> const &contour);
    // Whether p lies in the counter-clockwise triangle abc; the boundary counts.
    static bool isInsideTriangle(float ax, float ay, float bx, float by, float cx, float cy,
                                 float px, float py);
    // Whether the corner V[u], V[v], V[w] is an ear of the n remaining vertices listed
    // by V: convex, and no other of them inside or on its triangle.
    static bool snip(std::vector<Vector2> const &contour, int u, int v, int w, int n, int const *V);
    // Appends the triangles to result (it isn't cleared), three points each. False for
    // fewer than three points, for a contour with no ear left (self-intersecting or
    // degenerate: the triangles found so far stay in result) and, with an ERROR line,
    // for more than 2^31 - 1 points.
    static bool makeMesh(std::vector<Vector2> const &contour, std::vector<Vector2> &result);
};

} // namespace orv
