// Triangulate_benchmark.cpp: ear clipping of star-shaped polygons from 100 to 10,000
// vertices, with the fitted growth, beside GEOS's polygon triangulation where the system
// has it; and the even-odd test on the same polygons.
#include "orv/GeoAlgo2D.h"
#include "orv/Triangulate.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#ifdef ORV_HAVE_GEOS
#include <geos_c.h>
#endif

namespace {

// Vertices on rays in angular order at integer coordinates: simple, and with many
// reflex corners, as the tests' polygons are.
std::vector<orv::Vector2> starPolygon(int n) {
    std::mt19937 rng{unsigned(n)};
    std::uniform_real_distribution<double> jitter(-0.4, 0.4), radius(1e5, 1e6);
    std::vector<orv::Vector2> points;
    for (int i = 0; i < n; ++i) {
        double const angle = (i + jitter(rng)) * 2 * M_PI / n, r = radius(rng);
        points.emplace_back(float(std::lround(r * std::cos(angle))),
                            float(std::lround(r * std::sin(angle))));
    }
    return points;
}

// The polygon sizes every triangulation runs on, for the growth from 100 to 10,000.
void polygonSizes(benchmark::internal::Benchmark *bench) {
    bench->Arg(100)->Arg(1000)->Arg(3000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity();
}

void BM_Triangulate_StarPolygon(benchmark::State &state) {
    std::vector<orv::Vector2> const polygon = starPolygon(int(state.range(0)));
    std::vector<orv::Vector2> triangles;
    triangles.reserve(3 * polygon.size());
    for (auto _ : state) {
        triangles.clear();
        if (!orv::Triangulate::makeMesh(polygon, triangles))
            state.SkipWithError("the star polygon didn't triangulate");
        benchmark::DoNotOptimize(triangles.data());
    }
    state.SetComplexityN(state.range(0));
    state.counters["vertices/s"] =
        benchmark::Counter(double(state.range(0)), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_Triangulate_StarPolygon)->Apply(polygonSizes);

#ifdef ORV_HAVE_GEOS

// GEOS's C interface has no bare ear clipping: its constrained Delaunay triangulation
// clips ears and then flips edges towards Delaunay triangles, so it does more work.
void BM_GEOS_ConstrainedDelaunayStarPolygon(benchmark::State &state) {
    std::vector<orv::Vector2> const polygon = starPolygon(int(state.range(0)));
    GEOSContextHandle_t const geos = GEOS_init_r();
    unsigned int const n = unsigned(polygon.size());
    GEOSCoordSequence *ring = GEOSCoordSeq_create_r(geos, n + 1, 2);
    for (unsigned int i = 0; i <= n; ++i)
        GEOSCoordSeq_setXY_r(geos, ring, i, polygon[i % n].x, polygon[i % n].y);
    GEOSGeometry *const area =
        GEOSGeom_createPolygon_r(geos, GEOSGeom_createLinearRing_r(geos, ring), nullptr, 0);
    for (auto _ : state) {
        GEOSGeometry *const triangles = GEOSConstrainedDelaunayTriangulation_r(geos, area);
        if (triangles == nullptr || GEOSGetNumGeometries_r(geos, triangles) != int(n - 2))
            state.SkipWithError("GEOS didn't triangulate the star polygon");
        GEOSGeom_destroy_r(geos, triangles);
    }
    GEOSGeom_destroy_r(geos, area);
    GEOS_finish_r(geos);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_GEOS_ConstrainedDelaunayStarPolygon)->Apply(polygonSizes);

#else

void BM_GEOS_Missing(benchmark::State &state) {
    state.SkipWithError("GEOS (Debian libgeos-dev) not installed: no triangulation peer measured");
    for (auto _ : state) {
    }
}
BENCHMARK(BM_GEOS_Missing);

#endif

void BM_GeoAlgo2D_Contains(benchmark::State &state) {
    std::vector<orv::Vector2> const polygon = starPolygon(int(state.range(0)));
    orv::Vector2 const probe(1000, 2000);
    for (auto _ : state)
        benchmark::DoNotOptimize(orv::GeoAlgo2D::contains(probe, polygon));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_GeoAlgo2D_Contains)->Arg(1000)->Arg(10000)->Complexity();

} // namespace

BENCHMARK_MAIN();
