// Matrix routines side by side with Eigen: 4×4 inversion and product, the
// affine point transform and the 3×3 symmetric eigen solver.
#include "ZKMatrixRoutines.h"
#include "ZKSymMatrix3d.h"

#include <Eigen/Dense>
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr int kCount = 256;

template <typename T> std::vector<T> randomValues(int count, unsigned seed) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<double> dist(-1.0, 1.0);
    std::vector<T> values(count);
    for (T& v : values)
        v = T(dist(rng));
    return values;
}

// kCount diagonally dominant 4×4 matrices, column-major.
template <typename T> std::vector<T> wellConditioned(unsigned seed) {
    std::vector<T> m = randomValues<T>(16 * kCount, seed);
    for (int k = 0; k < kCount; ++k)
        for (int i = 0; i < 4; ++i)
            m[16 * k + 5 * i] = T(4.0 + std::fabs(double(m[16 * k + 5 * i])));
    return m;
}

// Runs body(i) once per iteration, i cycling through the kCount inputs.
template <typename Body> void cycleInputs(benchmark::State& state, Body body) {
    int i = 0;
    for (auto _ : state) {
        body(i);
        benchmark::ClobberMemory();
        i = (i + 1) % kCount;
    }
}

void ZK_Inverse4d(benchmark::State& state) {
    state.SetLabel("4x4 double");
    const std::vector<double> m = wellConditioned<double>(1);
    double out[16];
    cycleInputs(state, [&](int i) {
        benchmark::DoNotOptimize(ZKMatrixRoutines::calcMatrixInverse(out, &m[16 * i]));
    });
}
BENCHMARK(ZK_Inverse4d);

void Eigen_Inverse4d(benchmark::State& state) {
    state.SetLabel("4x4 double");
    const std::vector<double> m = wellConditioned<double>(1);
    Eigen::Matrix4d out;
    cycleInputs(state, [&](int i) {
        out = Eigen::Map<const Eigen::Matrix4d>(&m[16 * i]).inverse();
        benchmark::DoNotOptimize(out.data());
    });
}
BENCHMARK(Eigen_Inverse4d);

void ZK_MultMatrix4d(benchmark::State& state) {
    state.SetLabel("4x4 double");
    const std::vector<double> a = wellConditioned<double>(2), b = wellConditioned<double>(3);
    double out[16];
    cycleInputs(state, [&](int i) {
        ZKMatrixRoutines::mult_Matrix_Matrix(out, &a[16 * i], &b[16 * i]);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(ZK_MultMatrix4d);

void Eigen_MultMatrix4d(benchmark::State& state) {
    state.SetLabel("4x4 double");
    const std::vector<double> a = wellConditioned<double>(2), b = wellConditioned<double>(3);
    Eigen::Matrix4d out;
    cycleInputs(state, [&](int i) {
        out.noalias() = Eigen::Map<const Eigen::Matrix4d>(&a[16 * i]) *
                        Eigen::Map<const Eigen::Matrix4d>(&b[16 * i]);
        benchmark::DoNotOptimize(out.data());
    });
}
BENCHMARK(Eigen_MultMatrix4d);

void ZK_AffinePoint3f(benchmark::State& state) {
    state.SetLabel("4x4 float");
    const std::vector<float> m = wellConditioned<float>(4);
    const std::vector<float> p = randomValues<float>(3 * kCount, 5);
    float out[3];
    cycleInputs(state, [&](int i) {
        ZKMatrixRoutines::mult_affineMatrix_Point3f(out, &m[16 * i], &p[3 * i]);
        benchmark::DoNotOptimize(out);
    });
}
BENCHMARK(ZK_AffinePoint3f);

void Eigen_AffinePoint3f(benchmark::State& state) {
    state.SetLabel("4x4 float");
    const std::vector<float> m = wellConditioned<float>(4);
    const std::vector<float> p = randomValues<float>(3 * kCount, 5);
    Eigen::Vector3f out;
    cycleInputs(state, [&](int i) {
        const Eigen::Map<const Eigen::Matrix4f> mat(&m[16 * i]);
        out.noalias() = mat.topLeftCorner<3, 3>() * Eigen::Map<const Eigen::Vector3f>(&p[3 * i]) +
                        mat.topRightCorner<3, 1>();
        benchmark::DoNotOptimize(out.data());
    });
}
BENCHMARK(Eigen_AffinePoint3f);

std::vector<ZKSymMatrix3d> symmetricMatrices() {
    const std::vector<double> v = randomValues<double>(6 * kCount, 6);
    std::vector<ZKSymMatrix3d> out;
    for (int k = 0; k < kCount; ++k)
        out.emplace_back(v[6 * k], v[6 * k + 1], v[6 * k + 2], v[6 * k + 3], v[6 * k + 4],
                         v[6 * k + 5]);
    return out;
}

void ZKJacobi_SymmetricEigen3x3(benchmark::State& state) {
    state.SetLabel("3x3 double");
    const std::vector<ZKSymMatrix3d> s = symmetricMatrices();
    ZKEigenpair3d pairs[3];
    cycleInputs(state, [&](int i) {
        s[i].computeEigenPairs_Jacobi(pairs, true, 50, 1e-15);
        benchmark::DoNotOptimize(pairs);
    });
}
BENCHMARK(ZKJacobi_SymmetricEigen3x3);

void EigenSelfAdjoint_SymmetricEigen3x3(benchmark::State& state) {
    state.SetLabel("3x3 double");
    const std::vector<ZKSymMatrix3d> s = symmetricMatrices();
    Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver;
    cycleInputs(state, [&](int i) {
        solver.compute(Eigen::Map<const Eigen::Matrix3d>(s[i].m));
        benchmark::DoNotOptimize(solver.eigenvalues().data());
    });
}
BENCHMARK(EigenSelfAdjoint_SymmetricEigen3x3);

} // namespace

BENCHMARK_MAIN();
