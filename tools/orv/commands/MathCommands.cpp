// MathCommands.cpp: commands of the math subsystem: the ear-clipping triangulation
// of a polygon read from a file.
#include "orv/ContourText.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/TestContext.h"
#include "orv/Triangulate.h"
#include "orv/XProgram.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cmath>

namespace {

using namespace orv;

// In double, so that the total doesn't lose the small triangles of a big polygon.
double triangleArea(Vector2 const &a, Vector2 const &b, Vector2 const &c) {
    return 0.5 *
           ((double(b.x) - a.x) * (double(c.y) - a.y) - (double(b.y) - a.y) * (double(c.x) - a.x));
}

double contourArea(std::vector<Vector2> const &contour) {
    double twice = 0.0;
    for (size_t q = 0, p = contour.size() - 1; q < contour.size(); p = q++)
        twice += double(contour[p].x) * contour[q].y - double(contour[q].x) * contour[p].y;
    return 0.5 * twice;
}

int triangulateCommand(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("file"))) {
        ppError("triangulate: missing --file");
        return EXIT_ORV_ARGUMENT;
    }
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    if (!QFileInfo(file).isFile()) {
        ppError("triangulate: file '$' not found", file);
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) {
        ppError("triangulate: cannot read '$': $", file, in.errorString());
        return EXIT_ORV_IO;
    }
    ContourParse parsed = ContourText::parse(in.readAll());
    if (!parsed) {
        ppError("triangulate: '$' line $: $", file, parsed.errorLine, parsed.error);
        return EXIT_ORV_PARSING;
    }
    std::vector<Vector2> &contour = parsed.points;
    // Files that close the ring repeat the first point; as a vertex of its own it would
    // make the contour degenerate.
    if (contour.size() > 3 && contour.front() == contour.back()) {
        contour.pop_back();
        ppInfo("triangulate: the last point repeats the first and closes the ring; dropped");
    }
    if (contour.size() < 3) {
        ppError("triangulate: a polygon needs at least 3 points, '$' has $", file,
                qint64(contour.size()));
        return EXIT_ORV_MATH;
    }
    std::vector<Vector2> triangles;
    triangles.reserve(3 * (contour.size() - 2));
    if (!Triangulate::makeMesh(contour, triangles)) {
        ppError("triangulate: the contour of $ points is self-intersecting or degenerate: no "
                "ear left after $ triangles",
                qint64(contour.size()), qint64(triangles.size() / 3));
        return EXIT_ORV_MATH;
    }
    double total = 0.0;
    for (size_t i = 0; i < triangles.size(); i += 3) {
        Vector2 const &a = triangles[i], &b = triangles[i + 1], &c = triangles[i + 2];
        ppInfo("triangle $: ($, $) ($, $) ($, $)", qint64(i / 3 + 1), a.x, a.y, b.x, b.y, c.x, c.y);
        total += triangleArea(a, b, c);
    }
    ppInfo("triangles: $, area: $, contour area: $", qint64(triangles.size() / 3), total,
           std::fabs(contourArea(contour)));
    return EXIT_ORV_OK;
}

ModuleTests const mathCommands{
    {TestContext::FnKernel(triangulateCommand), QStringLiteral("triangulate"),
     QStringLiteral("ear-clipping triangulation of a polygon, one \"x y\" per line: --file F"),
     true},
};

} // namespace
