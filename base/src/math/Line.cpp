// Line.cpp: feet of perpendiculars, distances and the intersection of 2D and 3D lines.
#include "orv/Line.h"

#include "orv/Log.h"
#include "orv/Plane.h"

namespace orv {

namespace {

// Meeting lines solved in float rarely agree exactly on the third axis.
constexpr float INTERSECTION_TOLERANCE = 2e-6f;

// Whether the axis triple (i, j, k) can solve the system: d1[i] and the determinant
// on axes i and j must not be zero.
float solvingDeterminant(int i, int j, Vector3 const &d1, Vector3 const &d2) {
    return d1[i] == 0.0f ? 0.0f : d2[i] * d1[j] - d2[j] * d1[i];
}

bool sameDirection(Line3 const &a, Line3 const &b, float t) {
    return a.getDirection().isNearly(b.getDirection(), t);
}

template <typename V> V footOnUnitLine(V const &position, V const &unit, V const &point) {
    return position + unit * ((point - position) * unit);
}

} // namespace

Vector2 Line2::getFootOfPerpendicularByLine(Vector2 const &position, Vector2 const &unitDirection,
                                            Vector2 const &point) {
    if (GMath::CHECK_NORMALIZING && !unitDirection.isNormalized())
        ppDebug("Line2::getFootOfPerpendicularByLine: The line direction vector with length $ is "
                "not normalized",
                ~unitDirection);
    return footOnUnitLine(position, unitDirection, point);
}

Vector2 Line2::getFootOfPerpendicularByPoints(Vector2 const &a, Vector2 const &b,
                                              Vector2 const &point) {
    return footOnUnitLine(a, (b - a).normalize(), point);
}

QString Line2::toString() const {
    return xprintF("$ - $", position.toString(), direction.toString());
}

QString LineSegment2::toString() const {
    if (point1.isNotDefined() || point2.isNotDefined())
        return QStringLiteral("NOT DEFINED");
    return xprintF("$-$, deltaX:$, deltaY:$", point1.toString(), point2.toString(), getDeltaX(),
                   getDeltaY());
}

float Line3::getDistance(Vector3 const &p1, Vector3 const &d1, Vector3 const &p2,
                         Vector3 const &d2) {
    Vector3 const n = d1 % d2;
    float const length = ~n;
    // Parallel lines keep one distance everywhere: that of any point of the second.
    if (length == 0.0f)
        return getDistance(p1, d1, p2);
    return std::fabs((p2 - p1) * n) / length;
}

float Line3::getDistance(Vector3 const &position, Vector3 const &direction, Vector3 const &point) {
    float const squared = direction * direction;
    if (squared == 0.0f)
        return ~(point - position);
    // One root instead of two: |v x d| / |d| = sqrt(|v x d|^2 / |d|^2).
    Vector3 const cross = (point - position) % direction;
    return std::sqrt(cross * cross / squared);
}

Vector3 Line3::getFootOfPerpendicular(Line3 const &a, Line3 const &b) {
    // The plane through b that holds b's direction and the common perpendicular cuts a
    // in the nearest point; Plane refuses the zero normal that parallel lines give.
    Vector3 const m = (b.direction % (a.direction % b.direction)).normalize();
    return Plane::getIntersection(b.position, m, a.position, a.direction);
}

Vector3 Line3::getFootOfPerpendicularByLine(Vector3 const &position, Vector3 const &unitDirection,
                                            Vector3 const &point) {
    if (GMath::CHECK_NORMALIZING && !unitDirection.isNormalized())
        ppDebug(QString::asprintf("Line3::getFootOfPerpendicularByLine: The line direction vector "
                                  "with length %26.24f is not normalized",
                                  static_cast<double>(~unitDirection)));
    return footOnUnitLine(position, unitDirection, point);
}

Vector3 Line3::getFootOfPerpendicularByPoints(Vector3 const &a, Vector3 const &b,
                                              Vector3 const &point) {
    return footOnUnitLine(a, (b - a).normalize(), point);
}

Vector3 Line3::getIntersection(Line3 const &a, Line3 const &b) {
    Vector3 const &d1 = a.direction, &d2 = b.direction;
    // The first pair of axes on which both lines have a proper 2x2 system; the
    // remaining axis checks that the solution lies on both lines.
    static int const triples[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 2, 0},
                                      {1, 0, 2}, {2, 0, 1}, {2, 1, 0}};
    for (auto const &axes : triples) {
        float const det = solvingDeterminant(axes[0], axes[1], d1, d2);
        if (det != 0.0f)
            return _getIntersectionInternally(axes[0], axes[1], axes[2], a.position, d1, b.position,
                                              d2, det);
    }
    ppError("Line3::getIntersection, main conditions failed.");
    return Vector3::INVALID;
}

Vector3 Line3::_getIntersectionInternally(int i, int j, int k, Vector3 const &p1, Vector3 const &d1,
                                          Vector3 const &p2, Vector3 const &d2, float det) {
    float const s = (d1[i] * p2[j] - d1[i] * p1[j] - p2[i] * d1[j] + p1[i] * d1[j]) / det;
    float const t = (s * d2[i] + p2[i] - p1[i]) / d1[i];
    float const left = t * d1[k] + p1[k];
    float const right = s * d2[k] + p2[k];
    if (GMath::isNearly(left, right, INTERSECTION_TOLERANCE))
        return p1 + d1 * t;
    ppDebug("Line3::_getIntersectionInternally, no intersection possible - lines are skewed, "
            "distance lines=$",
            getDistance(p1, d1, p2, d2));
    ppDebug("Line3::_getIntersectionInternally,   result equation left  = $", left);
    ppDebug("Line3::_getIntersectionInternally,   result equation right = $", right);
    return Vector3::INVALID;
}

Vector3 Line3::getNormal(Vector3 const &position, Vector3 const &direction, Vector3 const &point) {
    return (point - footOnUnitLine(position, direction.getNormal(), point)).normalize();
}

bool Line3::is_collinear_equal(Line3 const &a, Line3 const &b) {
    return sameDirection(a, b, GMath::EPSILON);
}

bool Line3::is_collinear_nearly(Line3 const &a, Line3 const &b) {
    return sameDirection(a, b, Vector3::TOLERANCE);
}

bool Line3::is_collinear_by_tolerance(Line3 const &a, Line3 const &b, float t) {
    return sameDirection(a, b, t);
}

QString Line3::toString() const {
    return xprintF("position = $, direction = $", position.toString(), direction.toString());
}

bool LineSegment3::isFootOfPerpendicularInside(Line3 const &line) const {
    Vector3 const d = point2 - point1;
    Vector3 const foot = Line3::getFootOfPerpendicular(Line3(point1, d), line);
    if (!foot.isValid())
        return false;
    Vector3 const f = foot - point1;
    // Same direction from point1 and not farther than point2. A foot on point1 leaves f
    // zero, which no unit vector matches.
    return d.getNormal().isNearly(f.getNormal(), Vector3::TOLERANCE) && ~d >= ~f;
}

QString LineSegment3::toString() const {
    return xprintF("$-$, deltaX:$, deltaY:$, deltaZ:$", point1.toString(), point2.toString(),
                   getDeltaX(), getDeltaY(), getDeltaZ());
}

} // namespace orv
