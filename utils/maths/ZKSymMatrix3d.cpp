#include "ZKSymMatrix3d.h"

#include <cmath>
#include <utility>

ZKSymMatrix3d::ZKSymMatrix3d(const ZKMatrix3d& matrix) {
    for (int i = 0; i < 9; ++i)
        m[i] = matrix.m[i];
}

ZKSymMatrix3d::ZKSymMatrix3d(double a00, double a11, double a22, double a01, double a02, double a12)
    : m{a00, a01, a02, a01, a11, a12, a02, a12, a22} {}

namespace {

// One Jacobi rotation step on the pair (a_ij, a_kl) of a 3×3 array.
inline void rotate(double (&a)[3][3], int i, int j, int k, int l, double s, double tau) {
    const double g = a[i][j];
    const double h = a[k][l];
    a[i][j] = g - s * (h + g * tau);
    a[k][l] = h + s * (g - h * tau);
}

void swapIfLarger(ZKEigenpair3d* pairs, int i, int j) {
    if (std::fabs(pairs[i].value) > std::fabs(pairs[j].value))
        std::swap(pairs[i], pairs[j]);
}

} // namespace

void ZKSymMatrix3d::computeEigenPairs_Jacobi(ZKEigenpair3d* pairs, bool sort, int maxSweeps,
                                             double eps) const {
    double a[3][3];
    double v[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
    double b[3], d[3], z[3] = {0.0, 0.0, 0.0};
    for (int r = 0; r < 3; ++r)
        for (int c = 0; c < 3; ++c)
            a[r][c] = m[3 * c + r];
    for (int i = 0; i < 3; ++i)
        b[i] = d[i] = a[i][i];

    static const int kPairs[3][2] = {{0, 1}, {0, 2}, {1, 2}};
    for (int sweep = 0; sweep < maxSweeps; ++sweep) {
        const double sm = std::fabs(a[0][1]) + std::fabs(a[0][2]) + std::fabs(a[1][2]);
        if (eps > sm)
            break;
        const double tresh = (sweep < 3) ? 0.2 * sm / 9.0 : 0.0;
        for (const auto& pq : kPairs) {
            const int p = pq[0], q = pq[1];
            const double g = std::fabs(a[p][q]);
            if (sweep >= 4 && eps > 100.0 * g) {
                a[p][q] = 0.0;
                continue;
            }
            if (g <= tresh)
                continue;
            double h = d[q] - d[p];
            double t;
            // kept: divides by h even when it is exactly 0 (the pairs come out NaN)
            if (eps > 100.0 * g) {
                t = a[p][q] / h;
            } else {
                const double theta = 0.5 * h / a[p][q];
                t = 1.0 / (std::fabs(theta) + std::sqrt(theta * theta + 1.0));
                if (theta < 0.0)
                    t = -t;
            }
            const double c = 1.0 / std::sqrt(t * t + 1.0);
            const double s = t * c;
            const double tau = s / (1.0 + c);
            h = t * a[p][q];
            z[p] -= h;
            z[q] += h;
            d[p] -= h;
            d[q] += h;
            a[p][q] = 0.0;
            for (int j = 0; j < p; ++j)
                rotate(a, j, p, j, q, s, tau);
            for (int j = p + 1; j < q; ++j)
                rotate(a, p, j, j, q, s, tau);
            for (int j = q + 1; j < 3; ++j)
                rotate(a, p, j, q, j, s, tau);
            for (int j = 0; j < 3; ++j)
                rotate(v, j, p, j, q, s, tau);
        }
        for (int i = 0; i < 3; ++i) {
            b[i] += z[i];
            d[i] = b[i];
            z[i] = 0.0;
        }
    }

    for (int i = 0; i < 3; ++i) {
        pairs[i].vec = ZKVec3d(v[0][i], v[1][i], v[2][i]);
        pairs[i].value = d[i];
    }
    if (sort) {
        swapIfLarger(pairs, 0, 1);
        swapIfLarger(pairs, 1, 2);
        swapIfLarger(pairs, 0, 1);
    }
}
