#include "ZKQuaternionRoutines.h"

#include "ZKMatrixRoutines_Euler.h"
#include "internal/ZKRotationKernels.h"

#include <cmath>

namespace {

template <typename T> void store(T* out, T w, T x, T y, T z) {
    out[0] = w;
    out[1] = x;
    out[2] = y;
    out[3] = z;
}

template <typename T> void add(T* out, const T* a, const T* b) {
    store(out, a[0] + b[0], a[1] + b[1], a[2] + b[2], a[3] + b[3]);
}

template <typename T> void sub(T* out, const T* a, const T* b) {
    store(out, a[0] - b[0], a[1] - b[1], a[2] - b[2], a[3] - b[3]);
}

template <typename T> void hamilton(T* out, const T* a, const T* b) {
    store(out, a[0] * b[0] - a[1] * b[1] - a[2] * b[2] - a[3] * b[3],
          a[0] * b[1] + a[1] * b[0] + a[2] * b[3] - a[3] * b[2],
          a[0] * b[2] + a[2] * b[0] + a[3] * b[1] - a[1] * b[3],
          a[0] * b[3] + a[3] * b[0] + a[1] * b[2] - a[2] * b[1]);
}

template <typename T> T dot4(const T* a, const T* b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

template <typename T> void divideU(T* out, const T* a, const T* b) {
    store(out, dot4(a, b), a[1] * b[0] - a[0] * b[1] - a[2] * b[3] + a[3] * b[2],
          a[2] * b[0] - a[0] * b[2] - a[3] * b[1] + a[1] * b[3],
          a[3] * b[0] - a[0] * b[3] - a[1] * b[2] + a[2] * b[1]);
}

template <typename T> void conjugate(T* out, const T* q) {
    store(out, q[0], -q[1], -q[2], -q[3]);
}

template <typename T> void inverse(T* out, const T* q) {
    const T n = q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3];
    if (n == T(0)) {
        store(out, T(0), T(0), T(0), T(0));
        return;
    }
    store(out, q[0] / n, -q[1] / n, -q[2] / n, -q[3] / n);
}

template <typename T> void rotatePoint(T* out, const T* q, const T* p) {
    const T w = q[0], ux = q[1], uy = q[2], uz = q[3];
    const T a = w * w - (ux * ux + uy * uy + uz * uz);
    const T b = T(2) * (ux * p[0] + uy * p[1] + uz * p[2]);
    const T c = T(2) * w;
    const T cx = uy * p[2] - uz * p[1];
    const T cy = uz * p[0] - ux * p[2];
    const T cz = ux * p[1] - uy * p[0];
    const T rx = a * p[0] + b * ux + c * cx;
    const T ry = a * p[1] + b * uy + c * cy;
    const T rz = a * p[2] + b * uz + c * cz;
    out[0] = rx;
    out[1] = ry;
    out[2] = rz;
}

template <typename T> void axisToQuat(T* out, const T* axis, T angle) {
    const double s = std::sin(double(angle) * 0.5);
    store(out, T(std::cos(double(angle) * 0.5)), T(axis[0] * s), T(axis[1] * s), T(axis[2] * s));
}

template <typename T> void axisToQuatU(T* out, const T* axis, T angle) {
    double q[4];
    ZKRotationKernels::axisAngleToUnitQuat(q, axis, double(angle), 1e-7);
    store(out, T(q[0]), T(q[1]), T(q[2]), T(q[3]));
}

template <typename T> void quatToAxis(T* axis, T& angle, const T* q) {
    const T s = std::sqrt(q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    if (s == T(0)) {
        angle = T(0);
        axis[0] = axis[1] = axis[2] = T(0);
        return;
    }
    const T x = q[1] / s, y = q[2] / s, z = q[3] / s;
    angle = T(2) * std::acos(q[0]);
    axis[0] = x;
    axis[1] = y;
    axis[2] = z;
}

template <typename T> void quatToMatrixSub3x3(T* out, const T* q) {
    ZKRotationKernels::quatToRotation<4>(out, q[0], q[1], q[2], q[3]);
}

template <typename T> void quatToMatrix(T* out, const T* q) {
    quatToMatrixSub3x3(out, q);
    out[3] = out[7] = out[11] = T(0);
    out[12] = out[13] = out[14] = T(0);
    out[15] = T(1);
}

template <typename T> void matrixToQuat(T* out, const T* m) {
    T w = std::sqrt((m[0] + m[5] + m[10] + T(1)) * T(0.5));
    T x, y, z;
    if (w != T(0)) {
        const T f = T(0.5) / w;
        x = (m[6] - m[9]) * f;
        y = (m[8] - m[2]) * f;
        z = (m[1] - m[4]) * f;
    } else if (m[5] < m[10]) {
        // kept: the major component gets f here (and in the m5 case), s in
        // the m0 case; the final normalisation absorbs it
        const T s = std::sqrt((m[10] + T(1)) * T(0.5));
        const T f = T(0.5) / s;
        x = (m[2] + m[8]) * f;
        y = (m[6] + m[9]) * f;
        z = f;
    } else if (m[5] <= m[0]) {
        const T s = std::sqrt((m[0] + T(1)) * T(0.5));
        const T f = T(0.5) / s;
        x = s;
        y = (m[1] + m[4]) * f;
        z = (m[2] + m[8]) * f;
    } else {
        const T s = std::sqrt((m[5] + T(1)) * T(0.5));
        const T f = T(0.5) / s;
        x = (m[1] + m[4]) * f;
        y = f;
        z = (m[6] + m[9]) * f;
    }
    const T len = std::sqrt(w * w + x * x + y * y + z * z);
    store(out, w / len, x / len, y / len, z / len);
}

template <typename T> void eulerToQuat(T* out, const T* e) {
    const double c0 = std::cos(double(e[0]) * 0.5), s0 = std::sin(double(e[0]) * 0.5);
    const double c1 = std::cos(double(e[1]) * 0.5), s1 = std::sin(double(e[1]) * 0.5);
    const double c2 = std::cos(double(e[2]) * 0.5), s2 = std::sin(double(e[2]) * 0.5);
    store(out, T(s0 * s1 * s2 + c0 * c1 * c2), T(s0 * c1 * c2 - c0 * s1 * s2),
          T(s0 * c1 * s2 + c0 * s1 * c2), T(c0 * c1 * s2 - s0 * s1 * c2));
}

template <typename T> void quatToEuler(T* out, const T* q) {
    T m[16];
    quatToMatrix(m, q);
    ZKMatrixRoutines_Euler::matrixToEuler(out, m);
}

template <typename T> void lerp(T* out, const T* a, const T* b, T t) {
    const T sign = dot4(a, b) < T(0) ? T(-1) : T(1);
    const T u = T(1) - t;
    T r[4];
    for (int i = 0; i < 4; ++i)
        r[i] = a[i] * u + sign * b[i] * t;
    store(out, r[0], r[1], r[2], r[3]);
}

template <typename T> void slerp(T* out, const T* a, const T* b, T t) {
    const T d = dot4(a, b);
    const bool opposite = !(d >= T(0));
    const double theta = std::acos(opposite ? -double(d) : double(d));
    const double s0 = std::sin((1.0 - double(t)) * theta);
    const double s1 = std::sin(double(t) * theta);
    T r[4];
    // kept: no division by sin θ and no small-angle case; callers normalise
    if (!opposite) {
        for (int i = 0; i < 4; ++i)
            r[i] = T(a[i] * s0 + b[i] * s1);
    } else {
        for (int i = 0; i < 3; ++i)
            r[i] = T(a[i] * s0 - b[i] * s1);
        r[3] = T(a[3] * s0 + b[3] * s1); // kept: z adds b where w, x, y subtract it
    }
    store(out, r[0], r[1], r[2], r[3]);
}

} // namespace

// Each public overload forwards to the one algorithm above. The helpers read
// all their inputs before writing, so the outputs may alias the inputs.

void ZKQuaternionRoutines::addQuaternions(float* out, const float* a, const float* b) {
    add(out, a, b);
}
void ZKQuaternionRoutines::addQuaternions(double* out, const double* a, const double* b) {
    add(out, a, b);
}
void ZKQuaternionRoutines::subQuaternions(float* out, const float* a, const float* b) {
    sub(out, a, b);
}
void ZKQuaternionRoutines::subQuaternions(double* out, const double* a, const double* b) {
    sub(out, a, b);
}
void ZKQuaternionRoutines::multQuaternions(float* out, const float* a, const float* b) {
    hamilton(out, a, b);
}
void ZKQuaternionRoutines::multQuaternions(double* out, const double* a, const double* b) {
    hamilton(out, a, b);
}
void ZKQuaternionRoutines::divQuaternionsU(float* out, const float* a, const float* b) {
    divideU(out, a, b);
}
void ZKQuaternionRoutines::divQuaternionsU(double* out, const double* a, const double* b) {
    divideU(out, a, b);
}
void ZKQuaternionRoutines::conjugateQuaternion(float* out, const float* q) {
    conjugate(out, q);
}
void ZKQuaternionRoutines::conjugateQuaternion(double* out, const double* q) {
    conjugate(out, q);
}
void ZKQuaternionRoutines::inverseQuaternionU(float* out, const float* q) {
    conjugate(out, q);
}
void ZKQuaternionRoutines::inverseQuaternionU(double* out, const double* q) {
    conjugate(out, q);
}
void ZKQuaternionRoutines::inverseQuaternion(float* out, const float* q) {
    inverse(out, q);
}
void ZKQuaternionRoutines::inverseQuaternion(double* out, const double* q) {
    inverse(out, q);
}
void ZKQuaternionRoutines::applyQuatOnVec3f(float* out, const float* q, const float* p) {
    rotatePoint(out, q, p);
}
void ZKQuaternionRoutines::applyQuatOnVec3d(double* out, const double* q, const double* p) {
    rotatePoint(out, q, p);
}
void ZKQuaternionRoutines::dotQuaternions(float& out, const float* a, const float* b) {
    out = dot4(a, b);
}
void ZKQuaternionRoutines::dotQuaternions(double& out, const double* a, const double* b) {
    out = dot4(a, b);
}
void ZKQuaternionRoutines::axisToQuaternion(float* out, const float* axis, float angle) {
    axisToQuat(out, axis, angle);
}
void ZKQuaternionRoutines::axisToQuaternion(double* out, const double* axis, double angle) {
    axisToQuat(out, axis, angle);
}
void ZKQuaternionRoutines::axisToQuaternionU(float* out, const float* axis, float angle) {
    axisToQuatU(out, axis, angle);
}
void ZKQuaternionRoutines::axisToQuaternionU(double* out, const double* axis, double angle) {
    axisToQuatU(out, axis, angle);
}
void ZKQuaternionRoutines::quaternionToAxis(float* axis, float& angle, const float* q) {
    quatToAxis(axis, angle, q);
}
void ZKQuaternionRoutines::quaternionToAxis(double* axis, double& angle, const double* q) {
    quatToAxis(axis, angle, q);
}
void ZKQuaternionRoutines::quaternionToMatrix(float* out, const float* q) {
    quatToMatrix(out, q);
}
void ZKQuaternionRoutines::quaternionToMatrix(double* out, const double* q) {
    quatToMatrix(out, q);
}
void ZKQuaternionRoutines::quaternionToMatrix_sub3x3(float* out, const float* q) {
    quatToMatrixSub3x3(out, q);
}
void ZKQuaternionRoutines::quaternionToMatrix_sub3x3(double* out, const double* q) {
    quatToMatrixSub3x3(out, q);
}
void ZKQuaternionRoutines::RotMatrixToQuaternion(float* out, const float* m) {
    matrixToQuat(out, m);
}
void ZKQuaternionRoutines::RotMatrixToQuaternion(double* out, const double* m) {
    matrixToQuat(out, m);
}
void ZKQuaternionRoutines::eulerToQuaternion(float* out, const float* e) {
    eulerToQuat(out, e);
}
void ZKQuaternionRoutines::eulerToQuaternion(double* out, const double* e) {
    eulerToQuat(out, e);
}
void ZKQuaternionRoutines::quaternionToEuler(float* out, const float* q) {
    quatToEuler(out, q);
}
void ZKQuaternionRoutines::quaternionToEuler(double* out, const double* q) {
    quatToEuler(out, q);
}
void ZKQuaternionRoutines::quaternionLERP(float* out, const float* a, const float* b, float t) {
    lerp(out, a, b, t);
}
void ZKQuaternionRoutines::quaternionLERP(double* out, const double* a, const double* b, double t) {
    lerp(out, a, b, t);
}
void ZKQuaternionRoutines::quaternionSLERP(float* out, const float* a, const float* b, float t) {
    slerp(out, a, b, t);
}
void ZKQuaternionRoutines::quaternionSLERP(double* out, const double* a, const double* b,
                                           double t) {
    slerp(out, a, b, t);
}

double quatNorm(const float* q) {
    const float w2 = q[0] * q[0];
    const float x2 = q[1] * q[1];
    const double y = q[2], z = q[3];
    return std::sqrt(double(w2) + double(x2) + y * y + z * z);
}
