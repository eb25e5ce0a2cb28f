#include "ZKMatrix.h"

#include "ZKMatrixRoutines.h"
#include "ZKMatrixRoutines_Euler.h"
#include "ZKMatrixRoutines_Rotation.h"
#include "internal/ZKRotationKernels.h"

#include <cmath>

namespace {

// 2×2 inversion shared by both precisions. For float every rounding through
// float below is exact, so the two forms differ only where the double form
// deliberately loses precision.
template <typename T> bool invert2x2(T* m, double& detOut) {
    const T det = m[0] * m[3] - m[1] * m[2];
    detOut = double(det);
    if (det == T(0))
        return false;
    // kept: the diagonal is divided by det rounded to float
    const T diagonalDet = T(float(det));
    const T a = m[0], b = m[1], c = m[2], d = m[3];
    m[0] = d / diagonalDet;
    m[3] = a / diagonalDet;
    // kept: the off-diagonal quotients use the full det but are rounded to float
    m[1] = T(float(-b / det));
    m[2] = T(float(-c / det));
    return true;
}

template <typename T, typename V> void setDiagonal(T* m, const V& s) {
    for (int i = 0; i < 16; ++i)
        m[i] = T(0);
    m[0] = s.x;
    m[5] = s.y;
    m[10] = s.z;
    m[15] = T(1);
}

// diag(s) applied after a translation by −pivot, then the pivot added back:
// a true scale about the pivot (translation pivot − s⊙pivot).
template <typename T, typename V> void scaleAboutPivot(T* m, const V& s, const V& pivot) {
    const T scale[3] = {s.x, s.y, s.z};
    const T p[3] = {pivot.x, pivot.y, pivot.z};
    ZKMatrixRoutines::affineMatrix_selfMultLeft_ByScale(m, scale);
    ZKMatrixRoutines::affineMatrix_selfMultLeft_ByTranslation(m, p);
}

template <typename T, typename V>
void fromXYZToAxis(T* m, const V& X, const V& Y, const V& Z, const V& O) {
    const V* columns[4] = {&X, &Y, &Z, &O};
    for (int c = 0; c < 4; ++c) {
        m[4 * c + 0] = columns[c]->x;
        m[4 * c + 1] = columns[c]->y;
        m[4 * c + 2] = columns[c]->z;
        m[4 * c + 3] = T(0);
    }
    m[15] = T(1);
}

template <typename T, typename V>
void fromAxisToXYZ(T* m, const V& X, const V& Y, const V& Z, const V& O) {
    const V* rows[3] = {&X, &Y, &Z};
    for (int r = 0; r < 3; ++r) {
        m[r] = rows[r]->x;
        m[4 + r] = rows[r]->y;
        m[8 + r] = rows[r]->z;
        m[12 + r] = -rows[r]->dot(O);
    }
    m[3] = m[7] = m[11] = T(0);
    m[15] = T(1);
}

template <typename T, typename V>
void fromAxisToAxis(T* m, const V& X1, const V& Y1, const V& Z1, const V& X2, const V& Y2,
                    const V& Z2, const V& O1, const V& O2) {
    T toWorld[16], toFrame[16];
    fromXYZToAxis(toWorld, X2, Y2, Z2, O2);
    fromAxisToXYZ(toFrame, X1, Y1, Z1, O1);
    ZKMatrixRoutines::mult_affineMatrix_affineMatrix(m, toWorld, toFrame);
}

// The rotation turning from into to about pivot, then moved so that the
// pivot lands on target. The caller prepares the matrix; parallel vectors
// (|from × to|² < 1e-7) within a quarter turn leave its 3×3 part unwritten.
template <typename T, typename V>
void rotationFromTo(T* m, const V& from, const V& to, const V& pivot, const V& target) {
    const V axis = from.cross(to);
    const double angle = ZKRotationKernels::angleBetween(from, to);
    const double ax = axis.x, ay = axis.y, az = axis.z;
    if (ax * ax + ay * ay + az * az < 1e-7) {
        if (angle > M_PI / 2.0) {
            V orthogonal;
            from.getOneOrthogonalVec(orthogonal);
            ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, orthogonal.data(), T(M_PI));
        }
    } else {
        ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, axis.data(), T(angle));
    }
    const T back[3] = {-pivot.x, -pivot.y, -pivot.z};
    const T forth[3] = {target.x, target.y, target.z};
    ZKMatrixRoutines::affineMatrix_selfMultRight_ByTranslation(m, back);
    ZKMatrixRoutines::affineMatrix_selfMultLeft_ByTranslation(m, forth);
}

template <typename T> int eulerAngles(const T* m, T& e0, T& e1, T& e2) {
    T e[3] = {T(0), T(0), T(0)};
    const int result = ZKMatrixRoutines_Euler::matrixToEuler(e, m);
    e0 = e[0];
    e1 = e[1];
    e2 = e[2];
    return result;
}

template <typename T> void setEuler(T* m, T e0, T e1, T e2) {
    const T e[3] = {e0, e1, e2};
    ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(m, e);
}

template <typename V, typename T> V affinePoint(const T* m, const V& p) {
    V r;
    ZKMatrixRoutines::mult_affineMatrix_Point3d(r.data(), m, p.data());
    return r;
}

template <typename V, typename T> V affineDir(const T* m, const V& d) {
    V r;
    ZKMatrixRoutines::mult_affineMatrix_Dir(r.data(), m, d.data());
    return r;
}

} // namespace

bool ZKMatrix2f::inverse(double& det) {
    return invert2x2(m, det);
}

bool ZKMatrix2d::inverse(double& det) {
    return invert2x2(m, det);
}

bool ZKMatrix3f::equalsEps(const ZKMatrix3f& other, float eps) const {
    return allDifferences(other, eps, [](float d, float e) { return d <= e; });
}

bool ZKMatrix3d::equalsEps(const ZKMatrix3d& other, double eps) const {
    return allDifferences(other, eps, [](double d, double e) { return d <= e; });
}

void ZKMatrix3f::setRotation(const ZKVec3f& axis, float angle) {
    double q[4];
    ZKRotationKernels::axisAngleToUnitQuat(q, axis.data(), double(angle), 1e-8);
    ZKRotationKernels::quatToRotation<3>(m, q[0], q[1], q[2], q[3]);
}

void ZKMatrix3f::setRotationFromTo(const ZKVec3f& from, const ZKVec3f& to) {
    const ZKVec3f axis = from.cross(to);
    const double angle = ZKRotationKernels::angleBetween(from, to);
    const double ax = axis.x, ay = axis.y, az = axis.z;
    const double axisLength2 = ax * ax + ay * ay + az * az;
    if (-1e-5 < axisLength2 && axisLength2 < 1e-5) {
        if (-1e-5 < angle && angle < 1e-5) {
            setIdentity();
        } else {
            ZKVec3f orthogonal;
            from.getOneOrthogonalVec(orthogonal);
            setRotation(orthogonal, float(M_PI));
        }
        return;
    }
    setRotation(axis, float(angle));
}

ZKMatrix3d operator*(const ZKMatrix3d& a, const ZKMatrix3f& b) {
    return a * ZKMatrix3d(b);
}

ZKMatrix3d operator*(const ZKMatrix3f& a, const ZKMatrix3d& b) {
    return ZKMatrix3d(a) * b;
}

// 4×4, float.

bool ZKMatrix4f::equalsEps(const ZKMatrix4f& other, float eps) const {
    // kept: strict, unlike the 3×3 test
    return allDifferences(other, eps, [](float d, float e) { return d < e; });
}

void ZKMatrix4f::inverse(bool& ok) {
    const ZKMatrix4f copy = *this;
    ok = ZKMatrixRoutines::calcMatrixInverse(m, copy.m);
}

void ZKMatrix4f::translation(const ZKVec3f& t) {
    ZKMatrixRoutines::setTranslationMatrix(m, t.data());
}

void ZKMatrix4f::scale(const ZKVec3f& s) {
    setDiagonal(m, s);
}

void ZKMatrix4f::setScale(const ZKVec3f& s) {
    setDiagonal(m, s);
}

void ZKMatrix4f::scale(const ZKVec3f& s, const ZKVec3f& pivot) {
    setScale(s, pivot);
}

void ZKMatrix4f::setScale(const ZKVec3f& s, const ZKVec3f& pivot) {
    translation(-pivot);
    scaleAboutPivot(m, s, pivot);
}

void ZKMatrix4f::setRotationFromXYZToAxis(const ZKVec3f& X, const ZKVec3f& Y, const ZKVec3f& Z,
                                          const ZKVec3f& O) {
    fromXYZToAxis(m, X, Y, Z, O);
}

void ZKMatrix4f::setRotationFromAxisToXYZ(const ZKVec3f& X, const ZKVec3f& Y, const ZKVec3f& Z,
                                          const ZKVec3f& O) {
    fromAxisToXYZ(m, X, Y, Z, O);
}

void ZKMatrix4f::setRotationFromAxisToAxis(const ZKVec3f& X1, const ZKVec3f& Y1, const ZKVec3f& Z1,
                                           const ZKVec3f& X2, const ZKVec3f& Y2, const ZKVec3f& Z2,
                                           const ZKVec3f& O1, const ZKVec3f& O2) {
    fromAxisToAxis(m, X1, Y1, Z1, X2, Y2, Z2, O1, O2);
}

void ZKMatrix4f::setRotationFromTo(const ZKVec3f& from, const ZKVec3f& to, const ZKVec3f& pivot,
                                   const ZKVec3f& target) {
    // kept: starts from the identity (ZKMatrix4d only clears the translation)
    setIdentity();
    rotationFromTo(m, from, to, pivot, target);
}

void ZKMatrix4f::setRotation_sub3x3(const ZKVec3f& axis, float angle) {
    ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, axis.data(), angle);
}

int ZKMatrix4f::getEulerAngles(float& e0, float& e1, float& e2) const {
    return eulerAngles(m, e0, e1, e2);
}

void ZKMatrix4f::setRotation_sub3x3_euler(float e0, float e1, float e2) {
    setEuler(m, e0, e1, e2);
}

void ZKMatrix4f::transpose3() {
    // kept: only the 3×3 part (ZKMatrix4d transposes all 16 elements)
    ZKMatrixRoutines::copyTransposeAffine(m, m);
}

ZKVec3f ZKMatrix4f::transformPoint(const ZKVec3f& p) const {
    ZKVec3f r;
    ZKMatrixRoutines::mult_affineMatrix_Point3f(r.data(), m, p.data());
    return r;
}

ZKVec3f ZKMatrix4f::transformDir(const ZKVec3f& d) const {
    return affineDir(m, d);
}

// 4×4, double.

bool ZKMatrix4d::equalsEps(const ZKMatrix4d& other, double eps) const {
    // kept: strict, unlike the 3×3 test
    return allDifferences(other, eps, [](double d, double e) { return d < e; });
}

void ZKMatrix4d::inverse(bool& ok) {
    const ZKMatrix4d copy = *this;
    ok = ZKMatrixRoutines::calcMatrixInverse(m, copy.m);
}

void ZKMatrix4d::translation(const ZKVec3d& t) {
    ZKMatrixRoutines::setTranslationMatrix(m, t.data());
}

void ZKMatrix4d::scale(const ZKVec3d& s) {
    setDiagonal(m, s);
}

void ZKMatrix4d::setScale(const ZKVec3d& s) {
    setDiagonal(m, s);
}

void ZKMatrix4d::scale(const ZKVec3d& s, const ZKVec3d& pivot) {
    // kept: diag(s) translated by pivot, not a scale about the pivot as in
    // ZKMatrix4f (a translation by −pivot set first would be cleared by diag(s))
    setDiagonal(m, s);
    const double p[3] = {pivot.x, pivot.y, pivot.z};
    ZKMatrixRoutines::affineMatrix_selfMultLeft_ByTranslation(m, p);
}

void ZKMatrix4d::setRotationFromXYZToAxis(const ZKVec3d& X, const ZKVec3d& Y, const ZKVec3d& Z,
                                          const ZKVec3d& O) {
    fromXYZToAxis(m, X, Y, Z, O);
}

void ZKMatrix4d::setRotationFromAxisToXYZ(const ZKVec3d& X, const ZKVec3d& Y, const ZKVec3d& Z,
                                          const ZKVec3d& O) {
    fromAxisToXYZ(m, X, Y, Z, O);
}

void ZKMatrix4d::setRotationFromAxisToAxis(const ZKVec3d& X1, const ZKVec3d& Y1, const ZKVec3d& Z1,
                                           const ZKVec3d& X2, const ZKVec3d& Y2, const ZKVec3d& Z2,
                                           const ZKVec3d& O1, const ZKVec3d& O2) {
    fromAxisToAxis(m, X1, Y1, Z1, X2, Y2, Z2, O1, O2);
}

void ZKMatrix4d::setRotationFromTo(const ZKVec3d& from, const ZKVec3d& to, const ZKVec3d& pivot,
                                   const ZKVec3d& target) {
    // kept: only the translation is cleared, so a skipped rotation keeps the
    // linear part the matrix held
    m[12] = m[13] = m[14] = 0.0;
    rotationFromTo(m, from, to, pivot, target);
}

void ZKMatrix4d::setRotation_sub3x3(const ZKVec3d& axis, double angle) {
    ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, axis.data(), angle);
}

int ZKMatrix4d::getEulerAngles(double& e0, double& e1, double& e2) const {
    return eulerAngles(m, e0, e1, e2);
}

void ZKMatrix4d::setRotation_sub3x3_euler(double e0, double e1, double e2) {
    setEuler(m, e0, e1, e2);
}

void ZKMatrix4d::transpose3() {
    // kept: despite its name it transposes all 16 elements
    ZKMatrixRoutines::copyTranspose(m, m);
}

ZKVec3d ZKMatrix4d::transformPoint(const ZKVec3d& p) const {
    return affinePoint(m, p);
}

ZKVec3d ZKMatrix4d::transformDir(const ZKVec3d& d) const {
    return affineDir(m, d);
}
