// Helpers shared by the maths tests: seeded random matrices and, where Eigen
// is available, views of the flat column-major arrays as Eigen matrices.
#pragma once

#include <array>
#include <cmath>
#include <initializer_list>
#include <random>

#include <gtest/gtest.h>

#ifdef ZK_TESTS_HAVE_EIGEN
#include <Eigen/Dense>
#define ZK_REQUIRE_EIGEN()                                                                         \
    do {                                                                                           \
    } while (false)
#else
#define ZK_REQUIRE_EIGEN() GTEST_SKIP() << "Eigen is not installed"
#endif

// N×N values uniformly in [-1, 1] with the diagonal pushed to 4 + |x|: a
// diagonally dominant, hence well-conditioned, matrix.
template <typename T, int N> std::array<T, N * N> zkWellConditioned(std::mt19937& rng) {
    std::uniform_real_distribution<double> dist(-1.0, 1.0);
    std::array<T, N * N> m{};
    for (int i = 0; i < N * N; ++i)
        m[i] = T(dist(rng));
    for (int i = 0; i < N; ++i)
        m[N * i + i] = T(4.0 + std::fabs(double(m[N * i + i])));
    return m;
}

inline std::array<double, 3> zkRandomUnitAxis(std::mt19937& rng) {
    std::uniform_real_distribution<double> dist(-1.0, 1.0);
    for (;;) {
        const double x = dist(rng), y = dist(rng), z = dist(rng);
        const double len = std::sqrt(x * x + y * y + z * z);
        if (len > 0.1 && len <= 1.0)
            return {x / len, y / len, z / len};
    }
}

template <typename T> T zkMaxAbsDiff(const T* a, const T* b, int count) {
    T worst = T(0);
    for (int i = 0; i < count; ++i)
        worst = std::fmax(worst, std::fabs(a[i] - b[i]));
    return worst;
}

// Every element of v equals the expected list exactly (tol 0) or within tol.
template <typename T>
void zkExpectValues(const T* v, std::initializer_list<double> expected, double tol = 0.0) {
    int i = 0;
    for (double e : expected) {
        EXPECT_NEAR(double(v[i]), e, tol) << "element " << i;
        ++i;
    }
}
