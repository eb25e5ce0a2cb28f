// ZKMatrixRoutines.h: the flat-array matrix engine behind the matrix classes.
//
// Every routine takes its output first and its inputs after it and works on
// plain arrays: 16 values for a 4×4 matrix, 9 for a 3×3 matrix, 3 or 4 for a
// point. Storage is column-major with column vectors (element (r, c) at
// index N·c + r, p' = M·p, affine translation at 12, 13, 14). Unless a
// routine says otherwise the output must not alias an input of a product;
// the transforms of points and directions accept out == p.
//
// A stateless class of static functions, safe from several threads.
#pragma once

#include "ZKExport.h"

class ZKUTILS_EXPORT ZKMatrixRoutines {
public:
    // out = a·b: out[4c+r] = sum over k of a[4k+r]·b[4c+k].
    static void mult_Matrix_Matrix(float* out, const float* a, const float* b);
    static void mult_Matrix_Matrix(double* out, const double* a, const double* b);
    // out = a·b for 3×3 arrays.
    static void mult_Matrix3_Matrix3(float* out, const float* a, const float* b);
    static void mult_Matrix3_Matrix3(double* out, const double* a, const double* b);
    // Every element of the 4×4 m times s.
    static void mult_Matrix_Real(float* out, const float* m, float s);
    static void mult_Matrix_Real(double* out, const double* m, double s);
    // Element-wise sum and difference of 4×4 arrays.
    static void add_Matrix_Matrix(float* out, const float* a, const float* b);
    static void add_Matrix_Matrix(double* out, const double* a, const double* b);
    static void substract_Matrix_Matrix(float* out, const float* a, const float* b);
    static void substract_Matrix_Matrix(double* out, const double* a, const double* b);
    // a·b for affine matrices (last row 0, 0, 0, 1).
    static void mult_affineMatrix_affineMatrix(float* out, const float* a, const float* b);
    static void mult_affineMatrix_affineMatrix(double* out, const double* a, const double* b);

    // m := T(t)·m: t added to the translation.
    static void affineMatrix_selfMultLeft_ByTranslation(float* m, const float* t);
    static void affineMatrix_selfMultLeft_ByTranslation(double* m, const double* t);
    // m := m·T(t): the translation increased by the 3×3 part times t.
    static void affineMatrix_selfMultRight_ByTranslation(float* m, const float* t);
    static void affineMatrix_selfMultRight_ByTranslation(double* m, const double* t);
    // m := S(s)·m: row r (indices r, 4+r, 8+r, 12+r) times s[r], r = 0, 1, 2.
    static void affineMatrix_selfMultLeft_ByScale(float* m, const float* s);
    static void affineMatrix_selfMultLeft_ByScale(double* m, const double* s);
    // Identity with t at indices 12-14.
    static void setTranslationMatrix(float* m, const float* t);
    static void setTranslationMatrix(double* m, const double* t);

    // Projective transform of a 3D point: h = m3·x + m7·y + m11·z + m15;
    // (0, 0, 0) when h is exactly 0, else (M·(x, y, z, 1)) / h.
    static void mult_Matrix_Point3f(float* out, const float* m, const float* p);
    static void mult_Matrix_Point3d(double* out, const float* m, const double* p);
    static void mult_Matrix_Point3d(double* out, const double* m, const double* p);
    // The same projective transform, keeping the first two components.
    static void mult_Matrix_Vec2fVec3f(float* out, const float* m, const float* p);
    static void mult_Matrix_Vec2dVec3d(double* out, const double* m, const double* p);
    // M·(x, y, z, w), no division.
    static void mult_Matrix_Point4f(float* out, const float* m, const float* p);
    static void mult_Matrix_Point4d(double* out, const double* m, const double* p);
    // (3×3 part)·p + translation; the float-matrix forms accumulate in double.
    static void mult_affineMatrix_Point3f(float* out, const float* m, const float* p);
    static void mult_affineMatrix_Point3d(double* out, const float* m, const double* p);
    static void mult_affineMatrix_Point3d(double* out, const double* m, const double* p);
    // (3×3 part)·d, translation ignored.
    static void mult_affineMatrix_Dir(float* out, const float* m, const float* d);
    static void mult_affineMatrix_Dir(double* out, const double* m, const double* d);
    static void mult_affineMatrix4f_Dir3d(double* out, const float* m, const double* d);
    static void mult_affineMatrix4d_Dir3d(double* out, const double* m, const double* d);

    // Determinant of a 4×4 matrix (cofactor expansion).
    static float det4(const float* m);
    static double det4(const double* m);

    // Full 4×4 transpose (out may be m).
    static void copyTranspose(float* out, const float* m);
    static void copyTranspose(double* out, const double* m);
    // Transposes the 3×3 part into out; the other seven elements of out are
    // left untouched (out may be m).
    static void copyTransposeAffine(float* out, const float* m);
    static void copyTransposeAffine(double* out, const double* m);
    // 3×3 transpose (out may be m).
    static void copyTransposeMatrix3x3(float* out, const float* m);
    static void copyTransposeMatrix3x3(double* out, const double* m);

    // Copies between sizes and precisions: 4×4 to 3×3 keeps the upper-left
    // 3×3; 3×3 to 4×4 sets indices 3, 7, 11, 12-14 to 0 and 15 to 1.
    static void copy_Matrix4dToMatrix3d(double* out, const double* m);
    static void copy_Matrix3dToMatrix4d(double* out, const double* m);
    static void copy_Matrix3fToMatrix3d(double* out, const float* m);
    static void copy_Matrix3dToMatrix4f(float* out, const double* m);
    static void copy_Matrix4fToMatrix3d(double* out, const float* m);
    static void copy_Matrix4fToMatrix4d(double* out, const float* m);
    static void copy_Matrix4dToMatrix4f(float* out, const double* m);

    // General 4×4 inversion by Gaussian elimination in double with row
    // swaps. Only an exactly zero pivot counts as singular: then false and out
    // untouched. out may be m.
    static bool calcMatrixInverse(float* out, const float* m);
    static bool calcMatrixInverse(double* out, const double* m);
    // The same scheme on 3×3 arrays.
    static bool calcMatrix3x3Inverse(float* out, const float* m);
    static bool calcMatrix3x3Inverse(double* out, const double* m);
    // Inverts the 3×3 part of m (in double, in place) and writes it back into
    // a 4×4 out with indices 3, 7, 11, 12-14 set to 0 and 15 to 1. Written
    // whatever the outcome: when the 3×3 part is singular out receives that
    // part as it was and false is returned, so callers must test the result.
    // out may be m.
    static bool calcInverseOfSubMatrix3x3(float* out, const float* m);
    static bool calcInverseOfSubMatrix3x3(double* out, const double* m);
    // As calcInverseOfSubMatrix3x3; on success only, the translation
    // becomes −(R⁻¹·t) with t the translation of m. out may be m.
    static bool calcInverseOfAffineMatrix(float* out, const float* m);
    static bool calcInverseOfAffineMatrix(double* out, const double* m);
};
