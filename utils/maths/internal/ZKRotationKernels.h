// ZKRotationKernels.h: the rotation arithmetic shared inside the maths
// subsystem (matrix routines, quaternion routines, the matrix classes).
// Private to the library: never included from a public header.
#pragma once

#include <cmath>

namespace ZKRotationKernels {

// Quaternion of a rotation by angle about axis, in double, for an axis that
// need not be unit length: (cos(angle/2), axis·sin(angle/2)/|axis|). An
// axis shorter than minLength gives the identity (1, 0, 0, 0).
template <typename AxisT>
inline void axisAngleToUnitQuat(double* q, const AxisT* axis, double angle, double minLength) {
    const double ax = axis[0], ay = axis[1], az = axis[2];
    const double len = std::sqrt(ax * ax + ay * ay + az * az);
    if (len < minLength) {
        q[0] = 1.0;
        q[1] = q[2] = q[3] = 0.0;
        return;
    }
    const double k = std::sin(angle * 0.5) / len;
    q[0] = std::cos(angle * 0.5);
    q[1] = ax * k;
    q[2] = ay * k;
    q[3] = az * k;
}

// Writes the rotation matrix of the quaternion (w, x, y, z), not normalised
// first, into the upper-left 3×3 of a column-major N×N array (N = 3 or 4),
// computing in C and storing in Out; other elements are not touched.
template <int N, typename C, typename Out> inline void quatToRotation(Out* m, C w, C x, C y, C z) {
    const C one = C(1), two = C(2);
    m[0] = Out(two * (w * w + x * x) - one);
    m[1] = Out(two * (x * y + w * z));
    m[2] = Out(two * (x * z - w * y));
    m[N + 0] = Out(two * (x * y - w * z));
    m[N + 1] = Out(two * (w * w + y * y) - one);
    m[N + 2] = Out(two * (w * x + y * z));
    m[2 * N + 0] = Out(two * (w * y + x * z));
    m[2 * N + 1] = Out(two * (y * z - w * x));
    m[2 * N + 2] = Out(two * (w * w + z * z) - one);
}

// The angle between from and to as the rotation builders use it: 0 when
// either length is 0, else acos of the cosine clamped to [−1, 1] (π at or
// below −1, 0 at or above 1), all in double.
template <typename V> inline double angleBetween(const V& from, const V& to) {
    const double fx = from.x, fy = from.y, fz = from.z;
    const double tx = to.x, ty = to.y, tz = to.z;
    const double lengths =
        std::sqrt(fx * fx + fy * fy + fz * fz) * std::sqrt(tx * tx + ty * ty + tz * tz);
    if (lengths == 0.0)
        return 0.0;
    const double c = (fx * tx + fy * ty + fz * tz) / lengths;
    if (c <= -1.0)
        return M_PI;
    if (c >= 1.0)
        return 0.0;
    return std::acos(c);
}

} // namespace ZKRotationKernels
