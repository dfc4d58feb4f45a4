// Matrix_benchmark.cpp: matrix product, vector normalization and quaternion product
// beside a plain hand-written std::array peer (QtGui's QMatrix4x4 isn't linked) and,
// where the system has it, Eigen.
#include "orv/Matrix.h"
#include "orv/Quaternion.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

#ifdef ORV_HAVE_EIGEN
#include <Eigen/Dense>
#endif

namespace {

using Plain16 = std::array<float, 16>;

Plain16 plainMultiply(Plain16 const &a, Plain16 const &b) {
    Plain16 r;
    for (int row = 0; row < 16; row += 4)
        for (int col = 0; col < 4; ++col)
            r[row + col] = a[row] * b[col] + a[row + 1] * b[col + 4] + a[row + 2] * b[col + 8] +
                           a[row + 3] * b[col + 12];
    return r;
}

orv::Matrix4 sampleMatrix() {
    orv::Matrix4 m;
    m.setRotationY(0.3f);
    m.translate({1, 2, 3});
    return m;
}

void BM_Matrix4_Multiply(benchmark::State &state) {
    orv::Matrix4 const b = sampleMatrix();
    orv::Matrix4 a = b;
    for (auto _ : state) {
        a.multiply(b);
        benchmark::DoNotOptimize(a);
    }
}
BENCHMARK(BM_Matrix4_Multiply);

void BM_Plain_Matrix4Multiply(benchmark::State &state) {
    orv::Matrix4 const m = sampleMatrix();
    Plain16 b;
    std::copy(m.m, m.m + 16, b.begin());
    Plain16 a = b;
    for (auto _ : state) {
        a = plainMultiply(a, b);
        benchmark::DoNotOptimize(a);
    }
}
BENCHMARK(BM_Plain_Matrix4Multiply);

void BM_Vector3_Normalize(benchmark::State &state) {
    orv::Vector3 const v(3, -4, 12);
    for (auto _ : state) {
        orv::Vector3 n = v;
        benchmark::DoNotOptimize(n);
        n.normalize();
        benchmark::DoNotOptimize(n);
    }
}
BENCHMARK(BM_Vector3_Normalize);

void BM_Plain_Vector3Normalize(benchmark::State &state) {
    std::array<float, 3> const v{3, -4, 12};
    for (auto _ : state) {
        std::array<float, 3> n = v;
        benchmark::DoNotOptimize(n);
        float const len = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        if (len > 0)
            for (float &c : n)
                c /= len;
        benchmark::DoNotOptimize(n);
    }
}
BENCHMARK(BM_Plain_Vector3Normalize);

#ifdef ORV_HAVE_EIGEN

// Row-major like Matrix4, so that both multiply the same 16 floats in the same layout.
using EigenMatrix4 = Eigen::Matrix<float, 4, 4, Eigen::RowMajor>;

void BM_Eigen_Matrix4Multiply(benchmark::State &state) {
    orv::Matrix4 const m = sampleMatrix();
    EigenMatrix4 const b = Eigen::Map<EigenMatrix4 const>(m.m);
    EigenMatrix4 a = b;
    for (auto _ : state) {
        a = a * b;
        benchmark::DoNotOptimize(a);
    }
}
BENCHMARK(BM_Eigen_Matrix4Multiply);

void BM_Eigen_Vector3Normalize(benchmark::State &state) {
    Eigen::Vector3f const v(3, -4, 12);
    for (auto _ : state) {
        Eigen::Vector3f n = v;
        benchmark::DoNotOptimize(n);
        n.normalize();
        benchmark::DoNotOptimize(n);
    }
}
BENCHMARK(BM_Eigen_Vector3Normalize);

#else

void BM_Eigen_Missing(benchmark::State &state) {
    state.SkipWithError("Eigen (Debian libeigen3-dev) not installed: no Eigen peer measured");
    for (auto _ : state) {
    }
}
BENCHMARK(BM_Eigen_Missing);

#endif

void BM_Quaternion_Multiply(benchmark::State &state) {
    orv::Quaternion const b(orv::Vector3(1, 2, 3).getNormal(), 0.01f);
    orv::Quaternion a(orv::Vector3::UNIT_Z_POSITIVE, 0.5f);
    for (auto _ : state) {
        a.multiplyBy(b);
        benchmark::DoNotOptimize(a);
    }
}
BENCHMARK(BM_Quaternion_Multiply);

void BM_Plain_QuaternionMultiply(benchmark::State &state) {
    orv::Quaternion const qb(orv::Vector3(1, 2, 3).getNormal(), 0.01f);
    orv::Quaternion const qa(orv::Vector3::UNIT_Z_POSITIVE, 0.5f);
    std::array<float, 4> const b{qb.w, qb.x, qb.y, qb.z};
    std::array<float, 4> a{qa.w, qa.x, qa.y, qa.z};
    for (auto _ : state) {
        a = {a[0] * b[0] - a[1] * b[1] - a[2] * b[2] - a[3] * b[3],
             a[0] * b[1] + a[1] * b[0] + a[2] * b[3] - a[3] * b[2],
             a[0] * b[2] - a[1] * b[3] + a[2] * b[0] + a[3] * b[1],
             a[0] * b[3] + a[1] * b[2] - a[2] * b[1] + a[3] * b[0]};
        benchmark::DoNotOptimize(a);
    }
}
BENCHMARK(BM_Plain_QuaternionMultiply);

void BM_Matrix4_Inverse(benchmark::State &state) {
    orv::Matrix4 const m = sampleMatrix();
    for (auto _ : state)
        benchmark::DoNotOptimize(m.getInverse());
}
BENCHMARK(BM_Matrix4_Inverse);

} // namespace

BENCHMARK_MAIN();
