#include "ZKMatrixRoutines.h"

#include "ZKMatrix.h"

#include <cmath>
#include <utility>

namespace {

template <typename T> void scaleAll(T* out, const T* m, T s) {
    for (int i = 0; i < 16; ++i)
        out[i] = m[i] * s;
}

template <typename T> void addAll(T* out, const T* a, const T* b) {
    for (int i = 0; i < 16; ++i)
        out[i] = a[i] + b[i];
}

template <typename T> void subtractAll(T* out, const T* a, const T* b) {
    for (int i = 0; i < 16; ++i)
        out[i] = a[i] - b[i];
}

// Row r of the 3×3 part applied to (x, y, z), accumulated in Acc.
template <typename Acc, typename M, typename P> Acc linearRow(const M* m, int r, const P* p) {
    return Acc(m[r]) * Acc(p[0]) + Acc(m[4 + r]) * Acc(p[1]) + Acc(m[8 + r]) * Acc(p[2]);
}

// Row r of the 3×4 upper part applied to (x, y, z, 1).
template <typename Acc, typename M, typename P> Acc affineRow(const M* m, int r, const P* p) {
    return linearRow<Acc>(m, r, p) + Acc(m[12 + r]);
}

template <typename T> void affineProduct(T* out, const T* a, const T* b) {
    for (int c = 0; c < 3; ++c) {
        for (int r = 0; r < 3; ++r)
            out[4 * c + r] = linearRow<T>(a, r, b + 4 * c);
        out[4 * c + 3] = T(0);
    }
    for (int r = 0; r < 3; ++r)
        out[12 + r] = affineRow<T>(a, r, b + 12);
    out[15] = T(1);
}

template <typename T> void multLeftByTranslation(T* m, const T* t) {
    m[12] += t[0];
    m[13] += t[1];
    m[14] += t[2];
}

template <typename T> void multRightByTranslation(T* m, const T* t) {
    for (int r = 0; r < 3; ++r)
        m[12 + r] += m[r] * t[0] + m[4 + r] * t[1] + m[8 + r] * t[2];
}

template <typename T> void multLeftByScale(T* m, const T* s) {
    for (int r = 0; r < 3; ++r) {
        m[r] *= s[r];
        m[4 + r] *= s[r];
        m[8 + r] *= s[r];
        m[12 + r] *= s[r];
    }
}

template <typename T> void translationMatrix(T* m, const T* t) {
    for (int i = 0; i < 16; ++i)
        m[i] = (i % 5 == 0) ? T(1) : T(0);
    m[12] = t[0];
    m[13] = t[1];
    m[14] = t[2];
}

// Projective transform in Acc; keeps the first `count` components.
template <typename Acc, typename M, typename P, typename Out>
void projectPoint(Out* out, const M* m, const P* p, int count) {
    const Acc h =
        Acc(m[3]) * Acc(p[0]) + Acc(m[7]) * Acc(p[1]) + Acc(m[11]) * Acc(p[2]) + Acc(m[15]);
    Acc result[3] = {Acc(0), Acc(0), Acc(0)};
    if (h != Acc(0)) {
        for (int r = 0; r < 3; ++r)
            result[r] = affineRow<Acc>(m, r, p) / h;
    }
    for (int r = 0; r < count; ++r)
        out[r] = Out(result[r]);
}

// (3×3 part)·p, plus the translation for a point, accumulated in Acc.
template <typename Acc, typename M, typename P, typename Out>
void affineTransform(Out* out, const M* m, const P* p, bool isPoint) {
    Acc result[3];
    for (int r = 0; r < 3; ++r)
        result[r] = isPoint ? affineRow<Acc>(m, r, p) : linearRow<Acc>(m, r, p);
    for (int r = 0; r < 3; ++r)
        out[r] = Out(result[r]);
}

template <typename T> T determinant4(const T* m) {
    // Cofactor expansion along the first column, with the 2×2 minors of
    // columns 2 and 3 shared between the 3×3 cofactors.
    const T s0 = m[10] * m[15] - m[14] * m[11];
    const T s1 = m[6] * m[15] - m[14] * m[7];
    const T s2 = m[6] * m[11] - m[10] * m[7];
    const T s3 = m[2] * m[15] - m[14] * m[3];
    const T s4 = m[2] * m[11] - m[10] * m[3];
    const T s5 = m[2] * m[7] - m[6] * m[3];
    const T c0 = m[5] * s0 - m[9] * s1 + m[13] * s2;
    const T c1 = m[1] * s0 - m[9] * s3 + m[13] * s4;
    const T c2 = m[1] * s1 - m[5] * s3 + m[13] * s5;
    const T c3 = m[1] * s2 - m[5] * s4 + m[9] * s5;
    return m[0] * c0 - m[4] * c1 + m[8] * c2 - m[12] * c3;
}

template <int N, typename T> void transposeSquare(T* out, const T* m, int stride) {
    T t[16];
    for (int c = 0; c < N; ++c)
        for (int r = 0; r < N; ++r)
            t[N * r + c] = m[stride * c + r];
    for (int c = 0; c < N; ++c)
        for (int r = 0; r < N; ++r)
            out[stride * c + r] = t[N * c + r];
}

template <typename Out, typename In> void copy4To3(Out* out, const In* m) {
    for (int c = 0; c < 3; ++c)
        for (int r = 0; r < 3; ++r)
            out[3 * c + r] = Out(m[4 * c + r]);
}

template <typename Out, typename In> void copy3To4(Out* out, const In* m) {
    In t[9];
    for (int i = 0; i < 9; ++i)
        t[i] = m[i];
    for (int i = 0; i < 16; ++i)
        out[i] = Out(0);
    for (int c = 0; c < 3; ++c)
        for (int r = 0; r < 3; ++r)
            out[4 * c + r] = Out(t[3 * c + r]);
    out[15] = Out(1);
}

template <int Count, typename Out, typename In> void copyConverted(Out* out, const In* m) {
    for (int i = 0; i < Count; ++i)
        out[i] = Out(m[i]);
}

// Gaussian elimination on the augmented rows [m | I] in double. Rows are
// ordered for each column by pairwise swaps from the bottom (strict
// comparisons); only an exactly zero pivot is singular. Right-hand entries
// are updated only where the pivot row's entry is not exactly zero. out is
// written only on success and may be m.
template <int N, typename Out, typename In> bool invertGauss(Out* out, const In* m) {
    // Rows are swapped by value (not through pointers) and every loop has a
    // compile-time bound, so the whole elimination unrolls into registers.
    double row[N][2 * N];
#pragma GCC unroll 4
    for (int r = 0; r < N; ++r) {
#pragma GCC unroll 4
        for (int c = 0; c < N; ++c) {
            row[r][c] = double(m[N * c + r]);
            row[r][N + c] = (r == c) ? 1.0 : 0.0;
        }
    }
#pragma GCC unroll 4
    for (int col = 0; col < N; ++col) {
#pragma GCC unroll 4
        for (int k = N - 1; k > col; --k) {
            if (std::fabs(row[k][col]) > std::fabs(row[k - 1][col])) {
#pragma GCC unroll 8
                for (int j = 0; j < 2 * N; ++j)
                    std::swap(row[k][j], row[k - 1][j]);
            }
        }
        const double pivot = row[col][col];
        if (pivot == 0.0)
            return false;
#pragma GCC unroll 4
        for (int k = col + 1; k < N; ++k) {
            const double mult = row[k][col] / pivot;
#pragma GCC unroll 4
            for (int j = col + 1; j < N; ++j)
                row[k][j] -= mult * row[col][j];
#pragma GCC unroll 4
            for (int j = N; j < 2 * N; ++j) {
                const double s = row[col][j];
                if (s != 0.0)
                    row[k][j] -= mult * s;
            }
        }
    }
#pragma GCC unroll 4
    for (int i = N - 1; i >= 0; --i) {
        const double s = 1.0 / row[i][i];
#pragma GCC unroll 4
        for (int j = N; j < 2 * N; ++j)
            row[i][j] *= s;
#pragma GCC unroll 4
        for (int k = 0; k < i; ++k) {
            const double f = row[k][i];
#pragma GCC unroll 4
            for (int j = N; j < 2 * N; ++j)
                row[k][j] -= row[i][j] * f;
        }
    }
#pragma GCC unroll 4
    for (int c = 0; c < N; ++c)
#pragma GCC unroll 4
        for (int r = 0; r < N; ++r)
            out[N * c + r] = Out(row[r][N + c]);
    return true;
}

template <typename T> bool invertSub3x3(T* out, const T* m, bool withTranslation) {
    double inv[9];
    copy4To3(inv, m);
    const double t[3] = {double(m[12]), double(m[13]), double(m[14])};
    // kept: inverted in place, so a singular 3×3 part is written back as it was
    const bool ok = invertGauss<3>(inv, inv);
    copy3To4(out, inv);
    if (ok && withTranslation) {
        for (int r = 0; r < 3; ++r)
            out[12 + r] = T(-(inv[r] * t[0] + inv[3 + r] * t[1] + inv[6 + r] * t[2]));
    }
    return ok;
}

} // namespace

void ZKMatrixRoutines::mult_Matrix_Matrix(float* out, const float* a, const float* b) {
    ZKMatrix4f::multiply(out, a, b);
}
void ZKMatrixRoutines::mult_Matrix_Matrix(double* out, const double* a, const double* b) {
    ZKMatrix4d::multiply(out, a, b);
}
void ZKMatrixRoutines::mult_Matrix3_Matrix3(float* out, const float* a, const float* b) {
    ZKMatrix3f::multiply(out, a, b);
}
void ZKMatrixRoutines::mult_Matrix3_Matrix3(double* out, const double* a, const double* b) {
    ZKMatrix3d::multiply(out, a, b);
}
void ZKMatrixRoutines::mult_Matrix_Real(float* out, const float* m, float s) {
    scaleAll(out, m, s);
}
void ZKMatrixRoutines::mult_Matrix_Real(double* out, const double* m, double s) {
    scaleAll(out, m, s);
}
void ZKMatrixRoutines::add_Matrix_Matrix(float* out, const float* a, const float* b) {
    addAll(out, a, b);
}
void ZKMatrixRoutines::add_Matrix_Matrix(double* out, const double* a, const double* b) {
    addAll(out, a, b);
}
void ZKMatrixRoutines::substract_Matrix_Matrix(float* out, const float* a, const float* b) {
    subtractAll(out, a, b);
}
void ZKMatrixRoutines::substract_Matrix_Matrix(double* out, const double* a, const double* b) {
    subtractAll(out, a, b);
}
void ZKMatrixRoutines::mult_affineMatrix_affineMatrix(float* out, const float* a, const float* b) {
    affineProduct(out, a, b);
}
void ZKMatrixRoutines::mult_affineMatrix_affineMatrix(double* out, const double* a,
                                                      const double* b) {
    affineProduct(out, a, b);
}

void ZKMatrixRoutines::affineMatrix_selfMultLeft_ByTranslation(float* m, const float* t) {
    multLeftByTranslation(m, t);
}
void ZKMatrixRoutines::affineMatrix_selfMultLeft_ByTranslation(double* m, const double* t) {
    multLeftByTranslation(m, t);
}
void ZKMatrixRoutines::affineMatrix_selfMultRight_ByTranslation(float* m, const float* t) {
    multRightByTranslation(m, t);
}
void ZKMatrixRoutines::affineMatrix_selfMultRight_ByTranslation(double* m, const double* t) {
    multRightByTranslation(m, t);
}
void ZKMatrixRoutines::affineMatrix_selfMultLeft_ByScale(float* m, const float* s) {
    multLeftByScale(m, s);
}
void ZKMatrixRoutines::affineMatrix_selfMultLeft_ByScale(double* m, const double* s) {
    multLeftByScale(m, s);
}
void ZKMatrixRoutines::setTranslationMatrix(float* m, const float* t) {
    translationMatrix(m, t);
}
void ZKMatrixRoutines::setTranslationMatrix(double* m, const double* t) {
    translationMatrix(m, t);
}

void ZKMatrixRoutines::mult_Matrix_Point3f(float* out, const float* m, const float* p) {
    projectPoint<float>(out, m, p, 3);
}
void ZKMatrixRoutines::mult_Matrix_Point3d(double* out, const float* m, const double* p) {
    projectPoint<double>(out, m, p, 3);
}
void ZKMatrixRoutines::mult_Matrix_Point3d(double* out, const double* m, const double* p) {
    projectPoint<double>(out, m, p, 3);
}
void ZKMatrixRoutines::mult_Matrix_Vec2fVec3f(float* out, const float* m, const float* p) {
    projectPoint<float>(out, m, p, 2);
}
void ZKMatrixRoutines::mult_Matrix_Vec2dVec3d(double* out, const double* m, const double* p) {
    projectPoint<double>(out, m, p, 2);
}
void ZKMatrixRoutines::mult_Matrix_Point4f(float* out, const float* m, const float* p) {
    const float in[4] = {p[0], p[1], p[2], p[3]};
    ZKMatrix4f::apply(out, m, in);
}
void ZKMatrixRoutines::mult_Matrix_Point4d(double* out, const double* m, const double* p) {
    const double in[4] = {p[0], p[1], p[2], p[3]};
    ZKMatrix4d::apply(out, m, in);
}
void ZKMatrixRoutines::mult_affineMatrix_Point3f(float* out, const float* m, const float* p) {
    affineTransform<double>(out, m, p, true);
}
void ZKMatrixRoutines::mult_affineMatrix_Point3d(double* out, const float* m, const double* p) {
    affineTransform<double>(out, m, p, true);
}
void ZKMatrixRoutines::mult_affineMatrix_Point3d(double* out, const double* m, const double* p) {
    affineTransform<double>(out, m, p, true);
}
void ZKMatrixRoutines::mult_affineMatrix_Dir(float* out, const float* m, const float* d) {
    affineTransform<float>(out, m, d, false);
}
void ZKMatrixRoutines::mult_affineMatrix_Dir(double* out, const double* m, const double* d) {
    affineTransform<double>(out, m, d, false);
}
void ZKMatrixRoutines::mult_affineMatrix4f_Dir3d(double* out, const float* m, const double* d) {
    affineTransform<double>(out, m, d, false);
}
void ZKMatrixRoutines::mult_affineMatrix4d_Dir3d(double* out, const double* m, const double* d) {
    affineTransform<double>(out, m, d, false);
}

float ZKMatrixRoutines::det4(const float* m) {
    return determinant4(m);
}
double ZKMatrixRoutines::det4(const double* m) {
    return determinant4(m);
}

void ZKMatrixRoutines::copyTranspose(float* out, const float* m) {
    transposeSquare<4>(out, m, 4);
}
void ZKMatrixRoutines::copyTranspose(double* out, const double* m) {
    transposeSquare<4>(out, m, 4);
}
void ZKMatrixRoutines::copyTransposeAffine(float* out, const float* m) {
    transposeSquare<3>(out, m, 4);
}
void ZKMatrixRoutines::copyTransposeAffine(double* out, const double* m) {
    transposeSquare<3>(out, m, 4);
}
void ZKMatrixRoutines::copyTransposeMatrix3x3(float* out, const float* m) {
    transposeSquare<3>(out, m, 3);
}
void ZKMatrixRoutines::copyTransposeMatrix3x3(double* out, const double* m) {
    transposeSquare<3>(out, m, 3);
}

void ZKMatrixRoutines::copy_Matrix4dToMatrix3d(double* out, const double* m) {
    copy4To3(out, m);
}
void ZKMatrixRoutines::copy_Matrix3dToMatrix4d(double* out, const double* m) {
    copy3To4(out, m);
}
void ZKMatrixRoutines::copy_Matrix3fToMatrix3d(double* out, const float* m) {
    copyConverted<9>(out, m);
}
void ZKMatrixRoutines::copy_Matrix3dToMatrix4f(float* out, const double* m) {
    copy3To4(out, m);
}
void ZKMatrixRoutines::copy_Matrix4fToMatrix3d(double* out, const float* m) {
    copy4To3(out, m);
}
void ZKMatrixRoutines::copy_Matrix4fToMatrix4d(double* out, const float* m) {
    copyConverted<16>(out, m);
}
void ZKMatrixRoutines::copy_Matrix4dToMatrix4f(float* out, const double* m) {
    copyConverted<16>(out, m);
}

bool ZKMatrixRoutines::calcMatrixInverse(float* out, const float* m) {
    return invertGauss<4>(out, m);
}
bool ZKMatrixRoutines::calcMatrixInverse(double* out, const double* m) {
    return invertGauss<4>(out, m);
}
bool ZKMatrixRoutines::calcMatrix3x3Inverse(float* out, const float* m) {
    return invertGauss<3>(out, m);
}
bool ZKMatrixRoutines::calcMatrix3x3Inverse(double* out, const double* m) {
    return invertGauss<3>(out, m);
}
bool ZKMatrixRoutines::calcInverseOfSubMatrix3x3(float* out, const float* m) {
    return invertSub3x3(out, m, false);
}
bool ZKMatrixRoutines::calcInverseOfSubMatrix3x3(double* out, const double* m) {
    return invertSub3x3(out, m, false);
}
bool ZKMatrixRoutines::calcInverseOfAffineMatrix(float* out, const float* m) {
    return invertSub3x3(out, m, true);
}
bool ZKMatrixRoutines::calcInverseOfAffineMatrix(double* out, const double* m) {
    return invertSub3x3(out, m, true);
}
