// ZKMatrixRoutines_Euler.h: Euler angles to and from flat 4×4 rotation
// matrices (column-major, column vectors).
//
// The angles e0, e1, e2 are in radians and compose as M = Rz(e2)·Ry(e1)·Rx(e0):
// a rotation about X by e0 applied first, then about Y by e1, then about Z
// by e2. A stateless class of static functions, safe from several threads.
#pragma once

#include "ZKExport.h"

class ZKUTILS_EXPORT ZKMatrixRoutines_Euler {
public:
    // Writes the upper-left 3×3 of out from the three angles e; the other
    // seven elements are not touched. The float form uses single-precision
    // sine and cosine.
    static void eulerToMatrix_sub3x3(float* out, const float* e);
    static void eulerToMatrix_sub3x3(double* out, const double* e);

    // Finds angles e whose matrix best fits the 3×3 part of m, among eight
    // candidates built from arc sines (in double for both forms). Returns 0
    // on a good fit and −1 when the best candidate still misfits (its sum of
    // six element differences is above 0.01); e holds the best candidate
    // either way.
    static int matrixToEuler(float* e, const float* m);
    static int matrixToEuler(double* e, const double* m);
};

// The arc sine of x clamped to [−1, 1].
ZKUTILS_EXPORT double asin_safe(double x);
