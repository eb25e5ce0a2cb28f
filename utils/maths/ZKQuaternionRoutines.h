// ZKQuaternionRoutines.h: rotation quaternions on flat arrays of four values
// in the order w, x, y, z (scalar part first). For a rotation by angle θ
// (radians) about a unit axis u: w = cos(θ/2), (x, y, z) = u·sin(θ/2).
//
// Every routine takes its output first and exists for float and double
// arrays with the same behaviour. Routines whose names end in U assume unit
// input. Matrices are flat 4×4 column-major arrays (column vectors). The
// outputs may alias the inputs.
//
// A stateless class of static functions, safe from several threads.
#pragma once

#include "ZKExport.h"

class ZKUTILS_EXPORT ZKQuaternionRoutines {
public:
    // Component-wise a + b and a − b.
    static void addQuaternions(float* out, const float* a, const float* b);
    static void addQuaternions(double* out, const double* a, const double* b);
    static void subQuaternions(float* out, const float* a, const float* b);
    static void subQuaternions(double* out, const double* a, const double* b);
    // The Hamilton product a⊗b (b applied first).
    static void multQuaternions(float* out, const float* a, const float* b);
    static void multQuaternions(double* out, const double* a, const double* b);
    // a⊗conj(b), which is a⊗b⁻¹ for a unit b.
    static void divQuaternionsU(float* out, const float* a, const float* b);
    static void divQuaternionsU(double* out, const double* a, const double* b);
    // (w, −x, −y, −z); inverseQuaternionU is the same operation.
    static void conjugateQuaternion(float* out, const float* q);
    static void conjugateQuaternion(double* out, const double* q);
    static void inverseQuaternionU(float* out, const float* q);
    static void inverseQuaternionU(double* out, const double* q);
    // conj(q)/|q|²; the zero quaternion gives zeros.
    static void inverseQuaternion(float* out, const float* q);
    static void inverseQuaternion(double* out, const double* q);
    // Rotates the 3D point p by q, taken as unit:
    // (w² − u·u)·p + 2(u·p)·u + 2w·(u × p) with u = (x, y, z).
    static void applyQuatOnVec3f(float* out, const float* q, const float* p);
    static void applyQuatOnVec3d(double* out, const double* q, const double* p);
    // The four-component dot product, accumulated from w to z.
    static void dotQuaternions(float& out, const float* a, const float* b);
    static void dotQuaternions(double& out, const double* a, const double* b);

    // (cos(angle/2), axis·sin(angle/2)) with the axis used as given.
    static void axisToQuaternion(float* out, const float* axis, float angle);
    static void axisToQuaternion(double* out, const double* axis, double angle);
    // As axisToQuaternion with the axis divided by its length; an axis
    // shorter than 1e-7 gives the identity (1, 0, 0, 0). Computed in double.
    static void axisToQuaternionU(float* out, const float* axis, float angle);
    static void axisToQuaternionU(double* out, const double* axis, double angle);
    // angle = 2·acos(w) and the unit vector part as axis; a quaternion with a
    // zero vector part gives angle 0 and a zero axis.
    static void quaternionToAxis(float* axis, float& angle, const float* q);
    static void quaternionToAxis(double* axis, double& angle, const double* q);

    // The full 4×4 rotation matrix of q (not normalised first), last row and
    // column (0, 0, 0, 1).
    static void quaternionToMatrix(float* out, const float* q);
    static void quaternionToMatrix(double* out, const double* q);
    // Only the upper-left 3×3 of out; the other seven elements are kept.
    static void quaternionToMatrix_sub3x3(float* out, const float* q);
    static void quaternionToMatrix_sub3x3(double* out, const double* q);
    // The unit quaternion of the rotation part of m.
    static void RotMatrixToQuaternion(float* out, const float* m);
    static void RotMatrixToQuaternion(double* out, const double* m);
    // From the Euler angles e (see ZKMatrixRoutines_Euler); evaluated in
    // double, rounded to float by the float form.
    static void eulerToQuaternion(float* out, const float* e);
    static void eulerToQuaternion(double* out, const double* e);
    // Through the matrix of q and ZKMatrixRoutines_Euler::matrixToEuler.
    static void quaternionToEuler(float* out, const float* q);
    static void quaternionToEuler(double* out, const double* q);

    // a·(1 − t) ± b·t, the sign of b following the sign of a·b; not
    // normalised.
    static void quaternionLERP(float* out, const float* a, const float* b, float t);
    static void quaternionLERP(double* out, const double* a, const double* b, double t);
    // a·sin((1 − t)θ) ± b·sin(tθ) with θ the angle between a and b. There is
    // no division by sin θ: the result has length sin θ for unit inputs (the
    // zero quaternion when a = b) and callers normalise it. When a·b < 0 the
    // z component takes b with a plus sign while w, x, y subtract it.
    static void quaternionSLERP(float* out, const float* a, const float* b, float t);
    static void quaternionSLERP(double* out, const double* a, const double* b, double t);
};

// The length of a float quaternion: w² and x² formed in float, y², z², the
// sum and the root in double.
ZKUTILS_EXPORT double quatNorm(const float* q);
