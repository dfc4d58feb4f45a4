// triangulate_fuzz.cpp: feeds arbitrary bytes to the contour reader and what it reads to
// the ear clipping, and checks what must hold for any input: a named error or finite
// points, a bounded run, whole triangles made of the contour's own points.
#include "FuzzCheck.h"
#include "orv/ContourText.h"
#include "orv/Triangulate.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// The run time grows up to the cube of the point count; this keeps each input fast
// while every branch stays reachable.
constexpr size_t maxTriangulated = 300;

bool lessXY(orv::Vector2 const &a, orv::Vector2 const &b) {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

void fuzzMesh(std::vector<orv::Vector2> const &contour) {
    std::vector<orv::Vector2> triangles;
    bool const ok = orv::Triangulate::makeMesh(contour, triangles);
    size_t const full = contour.size() >= 3 ? 3 * (contour.size() - 2) : 0;
    check(triangles.size() % 3 == 0 && triangles.size() <= full);
    check(!ok || triangles.size() == full);
    std::vector<orv::Vector2> sorted = contour;
    std::sort(sorted.begin(), sorted.end(), lessXY);
    for (orv::Vector2 const &p : triangles)
        check(std::binary_search(sorted.begin(), sorted.end(), p, lessXY));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    QByteArray const text =
        QByteArray::fromRawData(reinterpret_cast<char const *>(data), static_cast<int>(size));
    orv::ContourParse const parsed = orv::ContourText::parse(text);
    check(parsed.ok == (parsed.errorLine == 0) && parsed.ok == parsed.error.isEmpty());
    for (orv::Vector2 const &p : parsed.points)
        check(std::isfinite(p.x) && std::isfinite(p.y));
    if (parsed.ok && parsed.points.size() <= maxTriangulated)
        fuzzMesh(parsed.points);
    return 0;
}
