// Line_benchmark.cpp: the 3D line and plane operations beside Eigen's ParametrizedLine
// and Hyperplane, where the system has Eigen. The main is in Matrix_benchmark.cpp.
#include "orv/Plane.h"

#include <benchmark/benchmark.h>

#ifdef ORV_HAVE_EIGEN
#include <Eigen/Geometry>
#endif

namespace {

orv::Vector3 const position(1, 2, 3), direction(0.48f, 0.6f, 0.64f), point(-4, 5, 0.5f);
orv::Vector3 const planePosition(0, 0, 1), planeNormal(0.0f, 0.6f, 0.8f);

void BM_Line3_DistanceToPoint(benchmark::State &state) {
    orv::Vector3 p = point;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(orv::Line3::getDistance(position, direction, p));
    }
}
BENCHMARK(BM_Line3_DistanceToPoint);

void BM_Plane_IntersectLine(benchmark::State &state) {
    orv::Vector3 p = position;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(
            orv::Plane::getIntersection(planePosition, planeNormal, p, direction));
    }
}
BENCHMARK(BM_Plane_IntersectLine);

// No peer: Eigen has no line-line intersection.
void BM_Line3_IntersectLines(benchmark::State &state) {
    // Lines that meet: skew ones would measure the formatting of the three debug lines.
    orv::Line3 const a(position, direction),
        b(position + direction * 2 - orv::Vector3(0, 3, 0), {0, 1, 0});
    orv::Line3 first = a;
    for (auto _ : state) {
        benchmark::DoNotOptimize(first);
        benchmark::DoNotOptimize(orv::Line3::getIntersection(first, b));
    }
}
BENCHMARK(BM_Line3_IntersectLines);

#ifdef ORV_HAVE_EIGEN

Eigen::Vector3f eigen(orv::Vector3 const &v) { return {v.x, v.y, v.z}; }

void BM_Eigen_LineDistanceToPoint(benchmark::State &state) {
    Eigen::ParametrizedLine<float, 3> const line(eigen(position), eigen(direction));
    Eigen::Vector3f p = eigen(point);
    for (auto _ : state) {
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(line.distance(p));
    }
}
BENCHMARK(BM_Eigen_LineDistanceToPoint);

void BM_Eigen_HyperplaneIntersectLine(benchmark::State &state) {
    Eigen::Hyperplane<float, 3> const plane(eigen(planeNormal), eigen(planePosition));
    Eigen::Vector3f p = eigen(position);
    for (auto _ : state) {
        benchmark::DoNotOptimize(p);
        Eigen::ParametrizedLine<float, 3> const line(p, eigen(direction));
        benchmark::DoNotOptimize(line.intersectionPoint(plane));
    }
}
BENCHMARK(BM_Eigen_HyperplaneIntersectLine);

#endif

} // namespace
