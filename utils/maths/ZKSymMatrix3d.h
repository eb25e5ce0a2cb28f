// ZKSymMatrix3d.h: a symmetric 3×3 matrix with a Jacobi eigen solver, and
// ZKEigenpair3d, one eigenvector with its eigenvalue.
//
// ZKSymMatrix3d stores the full symmetric matrix as a flat array m of nine
// doubles in the column-major layout of the other matrices (element (r, c)
// at 3·c + r); only the upper triangle is read by the solver. Plain values,
// safe from several threads when not shared for writing.
#pragma once

#include "ZKExport.h"
#include "ZKMatrix.h"
#include "ZKVec.h"

// An eigenvector followed by its eigenvalue.
struct ZKUTILS_EXPORT ZKEigenpair3d {
    ZKVec3d vec;
    double value = 0.0;
};

class ZKUTILS_EXPORT ZKSymMatrix3d {
public:
    double m[9] = {1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};

    ZKSymMatrix3d() = default;
    explicit ZKSymMatrix3d(const ZKMatrix3d& matrix);
    // The six distinct elements: the diagonal, then (0,1), (0,2), (1,2).
    ZKSymMatrix3d(double a00, double a11, double a22, double a01, double a02, double a12);

    // Cyclic Jacobi rotations on a working copy, at most maxSweeps sweeps,
    // stopping once the sum of the off-diagonal magnitudes falls below eps.
    // Pair i receives column i of the accumulated rotations and its
    // eigenvalue; with sort, the pairs come in ascending order of
    // |eigenvalue|. maxSweeps < 1 gives the diagonal and the axes. A rotation
    // that meets an element below eps/100 divides it by the difference of its
    // two diagonal values, so an exactly equal pair there gives NaN pairs.
    void computeEigenPairs_Jacobi(ZKEigenpair3d* pairs, bool sort, int maxSweeps, double eps) const;
};
