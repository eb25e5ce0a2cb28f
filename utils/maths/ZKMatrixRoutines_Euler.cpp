#include "ZKMatrixRoutines_Euler.h"

#include <cmath>

namespace {

template <typename T> void eulerMatrix(T* m, const T* e) {
    // std::sin and std::cos take the precision of T: single for the float form.
    const T c0 = std::cos(e[0]), s0 = std::sin(e[0]);
    const T c1 = std::cos(e[1]), s1 = std::sin(e[1]);
    const T c2 = std::cos(e[2]), s2 = std::sin(e[2]);
    m[0] = c2 * c1;
    m[1] = s2 * c1;
    m[2] = -s1;
    m[4] = s0 * s1 * c2 - c0 * s2;
    m[5] = c0 * c2 + s0 * s1 * s2;
    m[6] = s0 * c1;
    m[8] = s0 * s2 + c0 * s1 * c2;
    m[9] = c0 * s1 * s2 - s0 * c2;
    m[10] = c0 * c1;
}

// Sum of the differences between six elements rebuilt from the candidate
// angles and those of m (elements 10, 9, 5, 8, 4, 0, in that order).
double candidateError(const double* cand, const double* m) {
    double r[11];
    eulerMatrix(r, cand);
    return std::fabs(r[10] - m[10]) + std::fabs(r[9] - m[9]) + std::fabs(r[5] - m[5]) +
           std::fabs(r[8] - m[8]) + std::fabs(r[4] - m[4]) + std::fabs(r[0] - m[0]);
}

template <typename T> int eulerOfMatrix(T* e, const T* in) {
    double m[11];
    for (int i = 0; i < 11; ++i)
        m[i] = double(in[i]);

    const double p = asin_safe(m[2]);
    const double cp = std::cos(p);
    if (cp != 0.0) {
        const double a1 = asin_safe(m[6] / cp);
        const double a2 = asin_safe(m[6] / (-cp));
        const double g1 = asin_safe(m[1] / cp);
        const double g2 = asin_safe(m[1] / (-cp));
        const double candidates[8][3] = {
            {a1, -p, g1},
            {M_PI - a1, -p, g1},
            {a1, -p, M_PI - g1},
            {M_PI - a1, -p, M_PI - g1},
            {a2, p + M_PI, g2},
            {M_PI - a2, -p, g2}, // kept: row 5 takes −p, not p + π
            {a2, p + M_PI, M_PI - g2},
            {M_PI - a2, p + M_PI, M_PI - g2},
        };
        // kept: 100.0 is the "nothing written yet" sentinel; while the best
        // error is above 0.001 a candidate up to 1.5 times worse replaces it,
        // below that the smaller angle triple wins among near-equal fits.
        double best = 100.0;
        for (const double* cand : candidates) {
            const double err = candidateError(cand, m);
            bool take = (best == 100.0);
            if (!take && err < 1.5 * best + 1e-21) {
                const double candLength2 =
                    cand[0] * cand[0] + cand[1] * cand[1] + cand[2] * cand[2];
                const double e0 = e[0], e1 = e[1], e2 = e[2];
                take = best > 0.001 || candLength2 < e0 * e0 + e1 * e1 + e2 * e2;
            }
            if (take) {
                e[0] = T(cand[0]);
                e[1] = T(cand[1]);
                e[2] = T(cand[2]);
                best = err;
            }
        }
        return best > 0.01 ? -1 : 0;
    }

    // Gimbal lock: reached only when cos(p) is exactly 0.
    const double a = asin_safe(m[4]);
    if (m[4] * m[9] >= -1e-6 || m[5] * m[8] <= 1e-6) {
        e[1] = T(double(float(-M_PI / 2.0))); // kept: −π/2 rounded through float
        e[2] = T(0);
        e[0] = T(std::fabs(-std::cos(a) - m[8]) < 0.001 ? -a : M_PI - a);
    } else {
        e[1] = T(M_PI / 2.0);
        e[2] = T(0);
        e[0] = T(std::fabs(std::cos(a) - m[8]) < 0.001 ? a : M_PI - a);
    }
    return 0;
}

} // namespace

double asin_safe(double x) {
    if (x < -1.0)
        x = -1.0;
    else if (x > 1.0)
        x = 1.0;
    return std::asin(x);
}

void ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(float* out, const float* e) {
    eulerMatrix(out, e);
}
void ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(double* out, const double* e) {
    eulerMatrix(out, e);
}
int ZKMatrixRoutines_Euler::matrixToEuler(float* e, const float* m) {
    return eulerOfMatrix(e, m);
}
int ZKMatrixRoutines_Euler::matrixToEuler(double* e, const double* m) {
    return eulerOfMatrix(e, m);
}
