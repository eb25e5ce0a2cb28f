#include "ZKMatrixRoutines.h"
#include "ZKMatrixRoutines_Euler.h"
#include "ZKMatrixRoutines_Rotation.h"
#include "ZKQuaternionRoutines.h"

#include "ZKMathsTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

const double kIdentity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

} // namespace

TEST(ZKMatrixRoutines, InversesAndDeterminantsMatchEigen) {
    ZK_REQUIRE_EIGEN();
#ifdef ZK_TESTS_HAVE_EIGEN
    std::mt19937 rng(42);
    for (int i = 0; i < 50; ++i) {
        const auto m = zkWellConditioned<double, 4>(rng);
        const Eigen::Matrix4d em = Eigen::Map<const Eigen::Matrix4d>(m.data());
        double inv[16];
        ASSERT_TRUE(ZKMatrixRoutines::calcMatrixInverse(inv, m.data()));
        const Eigen::Matrix4d einv = em.inverse();
        EXPECT_LT(zkMaxAbsDiff(inv, einv.data(), 16), 1e-14);
        EXPECT_NEAR(ZKMatrixRoutines::det4(m.data()), em.determinant(), 1e-11);

        const auto m3 = zkWellConditioned<double, 3>(rng);
        double inv3[9];
        ASSERT_TRUE(ZKMatrixRoutines::calcMatrix3x3Inverse(inv3, m3.data()));
        const Eigen::Matrix3d einv3 = Eigen::Map<const Eigen::Matrix3d>(m3.data()).inverse();
        EXPECT_LT(zkMaxAbsDiff(inv3, einv3.data(), 9), 1e-14);

        // In place.
        double copy[16];
        std::copy(m.begin(), m.end(), copy);
        ASSERT_TRUE(ZKMatrixRoutines::calcMatrixInverse(copy, copy));
        EXPECT_LT(zkMaxAbsDiff(copy, inv, 16), 1e-15);
    }
#endif
}

TEST(ZKMatrixRoutines, InversionFailsOnlyOnAnExactlyZeroPivot) {
    double out[16];
    std::fill(out, out + 16, -7.0);
    double zeroRow[16] = {1, 0, 3, 4, 5, 0, 7, 8, 9, 0, 11, 12, 13, 0, 15, 16};
    EXPECT_FALSE(ZKMatrixRoutines::calcMatrixInverse(out, zeroRow));
    EXPECT_TRUE(std::all_of(out, out + 16, [](double v) { return v == -7.0; }));
    float outf[9] = {};
    const float singular3[9] = {1, 2, 3, 2, 4, 6, 0, 1, 1};
    EXPECT_FALSE(ZKMatrixRoutines::calcMatrix3x3Inverse(outf, singular3));

    // A permutation matrix needs the row swaps; its inverse is its transpose.
    const double perm[16] = {0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0};
    double transposed[16];
    ASSERT_TRUE(ZKMatrixRoutines::calcMatrixInverse(out, perm));
    ZKMatrixRoutines::copyTranspose(transposed, perm);
    EXPECT_TRUE(std::equal(out, out + 16, transposed));
    EXPECT_EQ(ZKMatrixRoutines::det4(perm), -1.0); // a 4-cycle

    // No tolerance: a nearly singular matrix still inverts.
    const double tiny[16] = {1e-300, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    ASSERT_TRUE(ZKMatrixRoutines::calcMatrixInverse(out, tiny));
    EXPECT_DOUBLE_EQ(out[0], 1e300);
}

TEST(ZKMatrixRoutines, AffineInversesWriteTheirLayoutWhateverTheOutcome) {
    // Rotation a quarter turn about Z, then translation (1, 2, 3).
    const double m[16] = {0, 1, 0, 9, -1, 0, 0, 9, 0, 0, 2, 9, 1, 2, 3, 9};
    double out[16];
    ASSERT_TRUE(ZKMatrixRoutines::calcInverseOfAffineMatrix(out, m));
    const double expected[16] = {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 0.5, 0, -2, 1, -1.5, 1};
    EXPECT_TRUE(std::equal(out, out + 16, expected));
    ASSERT_TRUE(ZKMatrixRoutines::calcInverseOfSubMatrix3x3(out, m));
    EXPECT_EQ(out[12], 0.0);
    EXPECT_EQ(out[4], 1.0);

    // kept: a singular 3×3 part gives false, and the layout is written with
    // that 3×3 part as it was (it is inverted in place) and no translation,
    // so callers must test the result.
    float singular[16] = {1, 2, 3, 5, 2, 4, 6, 5, 0, 0, 1, 5, 7, 8, 9, 5};
    float outf[16];
    std::fill(outf, outf + 16, 42.0f);
    EXPECT_FALSE(ZKMatrixRoutines::calcInverseOfAffineMatrix(outf, singular));
    const float untranslated[16] = {1, 2, 3, 0, 2, 4, 6, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    EXPECT_TRUE(std::equal(outf, outf + 16, untranslated));
    EXPECT_FALSE(ZKMatrixRoutines::calcInverseOfSubMatrix3x3(singular, singular));
    EXPECT_TRUE(std::equal(singular, singular + 16, untranslated));
}

TEST(ZKMatrixRoutines, ProductsAndAffineHelpers) {
    std::mt19937 rng(5);
    auto a = zkWellConditioned<double, 4>(rng), b = zkWellConditioned<double, 4>(rng);
    for (auto* m : {&a, &b}) {
        (*m)[3] = (*m)[7] = (*m)[11] = 0.0;
        (*m)[15] = 1.0;
    }
    double full[16], affine[16];
    ZKMatrixRoutines::mult_Matrix_Matrix(full, a.data(), b.data());
    ZKMatrixRoutines::mult_affineMatrix_affineMatrix(affine, a.data(), b.data());
    EXPECT_LT(zkMaxAbsDiff(full, affine, 16), 1e-14);
    EXPECT_EQ(affine[3], 0.0);
    EXPECT_EQ(affine[15], 1.0);
    double sum[16], diff[16], twice[16];
    ZKMatrixRoutines::add_Matrix_Matrix(sum, a.data(), b.data());
    ZKMatrixRoutines::substract_Matrix_Matrix(diff, sum, b.data());
    EXPECT_LT(zkMaxAbsDiff(diff, a.data(), 16), 1e-15);
    ZKMatrixRoutines::mult_Matrix_Real(twice, a.data(), 2.0);
    ZKMatrixRoutines::add_Matrix_Matrix(sum, a.data(), a.data());
    EXPECT_TRUE(std::equal(twice, twice + 16, sum));

    // The self-multiplications equal the products with explicit matrices.
    const double t[3] = {1, -2, 3}, s[3] = {2, 3, 4};
    double tm[16], sm[16], expected[16], m[16];
    ZKMatrixRoutines::setTranslationMatrix(tm, t);
    EXPECT_EQ(tm[13], -2.0);
    EXPECT_EQ(tm[0], 1.0);
    std::copy(kIdentity, kIdentity + 16, sm);
    sm[0] = 2, sm[5] = 3, sm[10] = 4;
    std::copy(a.begin(), a.end(), m);
    ZKMatrixRoutines::affineMatrix_selfMultLeft_ByTranslation(m, t);
    ZKMatrixRoutines::mult_Matrix_Matrix(expected, tm, a.data());
    EXPECT_LT(zkMaxAbsDiff(m, expected, 16), 1e-14);
    std::copy(a.begin(), a.end(), m);
    ZKMatrixRoutines::affineMatrix_selfMultRight_ByTranslation(m, t);
    ZKMatrixRoutines::mult_Matrix_Matrix(expected, a.data(), tm);
    EXPECT_LT(zkMaxAbsDiff(m, expected, 16), 1e-14);
    std::copy(a.begin(), a.end(), m);
    ZKMatrixRoutines::affineMatrix_selfMultLeft_ByScale(m, s);
    ZKMatrixRoutines::mult_Matrix_Matrix(expected, sm, a.data());
    EXPECT_LT(zkMaxAbsDiff(m, expected, 16), 1e-14);

    const float a3[9] = {1, 2, 3, 4, 5, 6, 7, 8, 10}, b3[9] = {0, 1, 0, 1, 0, 0, 0, 0, 1};
    float p3[9];
    ZKMatrixRoutines::mult_Matrix3_Matrix3(p3, a3, b3); // swaps the first two columns
    const float swapped[9] = {4, 5, 6, 1, 2, 3, 7, 8, 10};
    EXPECT_TRUE(std::equal(p3, p3 + 9, swapped));
}

TEST(ZKMatrixRoutines, PointAndDirectionTransforms) {
    // A projective matrix: the weight is 2 for every point.
    const float m[16] = {1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 4, 6, 8, 2};
    const float p[3] = {2, 4, 6};
    float out[3];
    ZKMatrixRoutines::mult_Matrix_Point3f(out, m, p);
    zkExpectValues(out, {3, 7, 13});
    float out2[2];
    ZKMatrixRoutines::mult_Matrix_Vec2fVec3f(out2, m, p);
    zkExpectValues(out2, {3, 7});

    double outd[3];
    const double pd[3] = {2, 4, 6};
    // A zero weight gives the zero point.
    const float flat[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 5, 5, 0};
    ZKMatrixRoutines::mult_Matrix_Point3f(out, flat, p);
    zkExpectValues(out, {0, 0, 0});
    double flatd[16];
    ZKMatrixRoutines::copy_Matrix4fToMatrix4d(flatd, flat);
    double outd2[2] = {9, 9};
    ZKMatrixRoutines::mult_Matrix_Vec2dVec3d(outd2, flatd, pd);
    zkExpectValues(outd2, {0, 0});

    // Affine forms ignore the last row; directions ignore the translation.
    ZKMatrixRoutines::mult_affineMatrix_Point3f(out, m, p);
    zkExpectValues(out, {6, 14, 26});
    ZKMatrixRoutines::mult_affineMatrix_Dir(out, m, p);
    zkExpectValues(out, {2, 8, 18});
    ZKMatrixRoutines::mult_affineMatrix4f_Dir3d(outd, m, pd);
    zkExpectValues(outd, {2, 8, 18});
    double md[16];
    ZKMatrixRoutines::copy_Matrix4fToMatrix4d(md, m);
    ZKMatrixRoutines::mult_affineMatrix4d_Dir3d(outd, md, pd);
    EXPECT_EQ(outd[0], 2.0);
    // The float-matrix point accumulates in double: 2^24 + 1 survives.
    const float big[16] = {16777216.0f, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1};
    const double one[3] = {1, 0, 0};
    ZKMatrixRoutines::mult_affineMatrix_Point3d(outd, big, one);
    EXPECT_EQ(outd[0], 16777217.0);

    const double h[4] = {1, 2, 3, 4};
    double h4[4];
    ZKMatrixRoutines::mult_Matrix_Point4d(h4, md, h);
    EXPECT_EQ(h4[0], 17.0);
    EXPECT_EQ(h4[3], 8.0);
    float h4f[4] = {1, 2, 3, 4};
    ZKMatrixRoutines::mult_Matrix_Point4f(h4f, m, h4f); // in place
    EXPECT_EQ(h4f[1], 28.0f);
}

TEST(ZKMatrixRoutines, TransposesAndCopies) {
    double m[16], out[16];
    for (int i = 0; i < 16; ++i)
        m[i] = i;
    std::fill(out, out + 16, -1.0);
    ZKMatrixRoutines::copyTransposeAffine(out, m);
    const double affine[16] = {0, 4, 8, -1, 1, 5, 9, -1, 2, 6, 10, -1, -1, -1, -1, -1};
    EXPECT_TRUE(std::equal(out, out + 16, affine));
    ZKMatrixRoutines::copyTranspose(out, m);
    EXPECT_EQ(out[1], 4.0);
    EXPECT_EQ(out[12], 3.0);
    float m3[9] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    ZKMatrixRoutines::copyTransposeMatrix3x3(m3, m3);
    const float t3[9] = {0, 3, 6, 1, 4, 7, 2, 5, 8};
    EXPECT_TRUE(std::equal(m3, m3 + 9, t3));

    double d3[9], d4[16];
    ZKMatrixRoutines::copy_Matrix4dToMatrix3d(d3, m);
    const double upper[9] = {0, 1, 2, 4, 5, 6, 8, 9, 10};
    EXPECT_TRUE(std::equal(d3, d3 + 9, upper));
    ZKMatrixRoutines::copy_Matrix3dToMatrix4d(d4, d3);
    const double padded[16] = {0, 1, 2, 0, 4, 5, 6, 0, 8, 9, 10, 0, 0, 0, 0, 1};
    EXPECT_TRUE(std::equal(d4, d4 + 16, padded));
    float f4[16];
    ZKMatrixRoutines::copy_Matrix3dToMatrix4f(f4, d3);
    ZKMatrixRoutines::copy_Matrix4fToMatrix3d(d3, f4);
    EXPECT_TRUE(std::equal(d3, d3 + 9, upper));
    ZKMatrixRoutines::copy_Matrix3fToMatrix3d(d3, t3);
    EXPECT_EQ(d3[1], 3.0);
    const double third[16] = {1.0 / 3.0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    ZKMatrixRoutines::copy_Matrix4dToMatrix4f(f4, third);
    EXPECT_EQ(f4[0], 1.0f / 3.0f);
}

TEST(ZKMatrixRoutines, AxisAngleWritesOnlyThe3x3Part) {
    double m[16];
    for (int i = 0; i < 16; ++i)
        m[i] = 50.0 + i;
    const double zeroAxis[3] = {0, 0, 0};
    ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, zeroAxis, 1.0);
    const double expected[16] = {1, 0, 0, 53, 0, 1, 0, 57, 0, 0, 1, 61, 62, 63, 64, 65};
    EXPECT_TRUE(std::equal(m, m + 16, expected));

    // A quarter turn about a non-unit Z axis turns X onto Y.
    const double z2[3] = {0, 0, 2};
    ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, z2, M_PI / 2);
    EXPECT_NEAR(m[1], 1.0, 1e-15);
    EXPECT_NEAR(m[4], -1.0, 1e-15);

    ZK_REQUIRE_EIGEN();
#ifdef ZK_TESTS_HAVE_EIGEN
    std::mt19937 rng(9);
    std::uniform_real_distribution<double> angle(-M_PI, M_PI);
    for (int i = 0; i < 20; ++i) {
        const auto a = zkRandomUnitAxis(rng);
        const double theta = angle(rng);
        const double scaled[3] = {a[0] * 0.3, a[1] * 0.3, a[2] * 0.3};
        ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, scaled, theta);
        const Eigen::Matrix3d ref =
            Eigen::AngleAxisd(theta, Eigen::Vector3d(a[0], a[1], a[2])).toRotationMatrix();
        for (int c = 0; c < 3; ++c)
            for (int r = 0; r < 3; ++r)
                EXPECT_NEAR(m[4 * c + r], ref(r, c), 1e-14);

        // matrixToAxis hands over the quaternion of this matrix.
        double axis[3], back;
        EXPECT_EQ(ZKMatrixRoutines_Rotation::matrixToAxis(axis, back, m), 0);
        const double sign = (axis[0] * a[0] + axis[1] * a[1] + axis[2] * a[2]) < 0 ? -1.0 : 1.0;
        EXPECT_NEAR(sign * back, theta, 1e-7);
        EXPECT_NEAR(sign * axis[0], a[0], 1e-7);
    }
#endif
}

TEST(ZKMatrixRoutines, EulerAnglesComposeXThenYThenZ) {
    double m[16] = {};
    const double e[3] = {0, 0, M_PI / 2};
    ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(m, e);
    EXPECT_NEAR(m[1], 1.0, 1e-15); // X onto Y
    EXPECT_EQ(m[15], 0.0);         // not written

    double out[3] = {9, 9, 9};
    EXPECT_EQ(ZKMatrixRoutines_Euler::matrixToEuler(out, kIdentity), 0);
    zkExpectValues(out, {0, 0, 0});

    // m2 = -1 is not a gimbal lock: cos(asin(-1)) is about 6e-17, not 0.
    const double down[16] = {0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1};
    EXPECT_EQ(ZKMatrixRoutines_Euler::matrixToEuler(out, down), 0);
    EXPECT_TRUE(std::isfinite(out[0]) && std::isfinite(out[1]) && std::isfinite(out[2]));
    double rebuilt[16] = {};
    ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(rebuilt, out);
    for (int i : {0, 1, 2, 4, 5, 6, 8, 9, 10})
        EXPECT_NEAR(rebuilt[i], down[i], 1e-7) << i;

    std::mt19937 rng(21);
    std::uniform_real_distribution<double> angle(-3.0, 3.0);
    for (int i = 0; i < 100; ++i) {
        const double in[3] = {angle(rng), angle(rng) / 2, angle(rng)};
        double a[16] = {}, b[16] = {}, found[3];
        ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(a, in);
        ASSERT_EQ(ZKMatrixRoutines_Euler::matrixToEuler(found, a), 0);
        ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(b, found);
        EXPECT_LT(zkMaxAbsDiff(a, b, 16), 1e-9);
    }

    ZK_REQUIRE_EIGEN();
#ifdef ZK_TESTS_HAVE_EIGEN
    const double angles[3] = {0.3, -1.1, 2.0};
    ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(m, angles);
    const Eigen::Matrix3d ref = (Eigen::AngleAxisd(angles[2], Eigen::Vector3d::UnitZ()) *
                                 Eigen::AngleAxisd(angles[1], Eigen::Vector3d::UnitY()) *
                                 Eigen::AngleAxisd(angles[0], Eigen::Vector3d::UnitX()))
                                    .toRotationMatrix();
    for (int c = 0; c < 3; ++c)
        for (int r = 0; r < 3; ++r)
            EXPECT_NEAR(m[4 * c + r], ref(r, c), 1e-15);
#endif
}

// kept: candidate 5 is (π − A2, −p, G2), with −p where its neighbours take
// p + π. For this matrix (no rotation: the fit is poor) candidate 5 is the
// last one written, so its −p is what the caller receives.
TEST(ZKMatrixRoutines, MatrixToEulerKeepsCandidateFiveAndReportsPoorFits) {
    const double m[16] = {0.625,  -0.125, -0.875, 0, 0.25, 0.375, -0.375, 0,
                          -0.125, -0.5,   -0.875, 0, 0,    0,     0,      1};
    double e[3];
    EXPECT_EQ(ZKMatrixRoutines_Euler::matrixToEuler(e, m), -1);
    const double p = std::asin(-0.875), cp = std::cos(p);
    EXPECT_EQ(e[1], -p);
    EXPECT_EQ(e[0], M_PI - std::asin(-0.375 / -cp));
    EXPECT_EQ(e[2], std::asin(-0.125 / -cp));

    // Out-of-range elements are clamped, never NaN.
    const double wild[16] = {5, 5, 5, 0, 5, 5, 5, 0, 5, 5, 5, 0, 0, 0, 0, 1};
    EXPECT_EQ(ZKMatrixRoutines_Euler::matrixToEuler(e, wild), -1);
    EXPECT_TRUE(std::isfinite(e[0]) && std::isfinite(e[1]) && std::isfinite(e[2]));
    EXPECT_EQ(asin_safe(2.0), M_PI / 2);
    EXPECT_EQ(asin_safe(-7.0), -M_PI / 2);
    EXPECT_EQ(asin_safe(0.5), std::asin(0.5));
}
