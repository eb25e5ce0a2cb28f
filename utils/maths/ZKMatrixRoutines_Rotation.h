// ZKMatrixRoutines_Rotation.h: axis-angle rotations on flat 4×4 arrays
// (column-major, column vectors, angles in radians), and the double-precision
// helpers the rotation code shares with the quaternions.
//
// A stateless class of static functions, safe from several threads.
#pragma once

#include "ZKExport.h"

class ZKUTILS_EXPORT ZKMatrixRoutines_Rotation {
public:
    // Writes the rotation by angle about axis (which need not be unit length)
    // into the upper-left 3×3 of out only; the other seven elements are not
    // touched. An axis shorter than 1e-7 gives the identity 3×3. Computed in
    // double through the quaternion of the rotation.
    static void axisAngleToMatrix(float* out, const float* axis, float angle);
    static void axisAngleToMatrix(double* out, const double* axis, double angle);

    // The rotation axis (unit) and angle of a rotation matrix, through its
    // quaternion; a matrix without rotation gives angle 0 and a zero axis.
    // Returns 0.
    static int matrixToAxis(float* axis, float& angle, const float* m);
    static int matrixToAxis(double* axis, double& angle, const double* m);
};

// The unit quaternion (w, x, y, z) of a rotation by angle about axis, in
// double: the identity when |axis| < 1e-7.
ZKUTILS_EXPORT void __axisToUnitQuat(double* q, const double* axis, double angle);
ZKUTILS_EXPORT void __axisToUnitQuat(double* q, const float* axis, double angle);

// Writes the rotation matrix of the double quaternion q (not normalised
// first) into the upper-left 3×3 of a 4×4 array; the other seven elements
// are left as they were.
ZKUTILS_EXPORT void __quaternionToMatrix_sub3x3(double* m, const double* q);
ZKUTILS_EXPORT void __quaternionToMatrix_sub3x3(float* m, const double* q);
