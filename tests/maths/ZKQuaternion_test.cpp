#include "ZKMatrixRoutines.h"
#include "ZKMatrixRoutines_Euler.h"
#include "ZKMatrixRoutines_Rotation.h"
#include "ZKQuaternion.h"
#include "ZKQuaternionRoutines.h"

#include "ZKMathsTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

template <typename Q>
void expectQuat(const Q& q, double w, double x, double y, double z, double tol) {
    EXPECT_NEAR(q.w, w, tol);
    EXPECT_NEAR(q.x, x, tol);
    EXPECT_NEAR(q.y, y, tol);
    EXPECT_NEAR(q.z, z, tol);
}

} // namespace

TEST(ZKQuaternion, DefaultsAndLayout) {
    static_assert(sizeof(ZKQuaternion) == 4 * sizeof(float));
    static_assert(sizeof(ZKQuaternionD) == 4 * sizeof(double));
    const ZKQuaternion q;
    expectQuat(q, 1, 0, 0, 0, 0.0);
    ZKMatrix4f m;
    m.m[3] = 5.0f;
    q.getMatrix(m);
    EXPECT_EQ(m, ZKMatrix4f());
}

TEST(ZKQuaternionRoutines, AxisAngleConversions) {
    double q[4];
    const double z2[3] = {0, 0, 2};
    ZKQuaternionRoutines::axisToQuaternionU(q, z2, M_PI);
    zkExpectValues(q + 1, {0, 0, 1});
    EXPECT_NEAR(q[0], 0.0, 1e-15);
    const double tiny[3] = {0, 0, 1e-8};
    ZKQuaternionRoutines::axisToQuaternionU(q, tiny, 1.0);
    zkExpectValues(q, {1, 0, 0, 0});
    // Without U the axis is used as given.
    ZKQuaternionRoutines::axisToQuaternion(q, z2, M_PI);
    EXPECT_EQ(q[3], 2.0);

    double axis[3], angle;
    const double rot[4] = {std::cos(0.6), 0, std::sin(0.6), 0};
    ZKQuaternionRoutines::quaternionToAxis(axis, angle, rot);
    EXPECT_NEAR(angle, 1.2, 1e-15);
    EXPECT_EQ(axis[1], 1.0);
    const double scalar[4] = {2, 0, 0, 0};
    ZKQuaternionRoutines::quaternionToAxis(axis, angle, scalar);
    EXPECT_EQ(angle, 0.0);
    EXPECT_EQ(std::fabs(axis[0]) + std::fabs(axis[1]) + std::fabs(axis[2]), 0.0);

    // The double helpers of the rotation routines repeat the U conversion.
    double h[4];
    __axisToUnitQuat(h, z2, M_PI);
    const float z2f[3] = {0, 0, 2};
    double hf[4];
    __axisToUnitQuat(hf, z2f, M_PI);
    ZKQuaternionRoutines::axisToQuaternionU(q, z2, M_PI);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(h[i], q[i]);
        EXPECT_EQ(hf[i], q[i]);
    }
}

TEST(ZKQuaternionRoutines, HamiltonProductMatchesMatrixComposition) {
    const double i[4] = {0, 1, 0, 0}, j[4] = {0, 0, 1, 0};
    double k[4];
    ZKQuaternionRoutines::multQuaternions(k, i, j);
    EXPECT_EQ(k[3], 1.0);
    ZKQuaternionRoutines::multQuaternions(k, j, i);
    EXPECT_EQ(k[3], -1.0);

    std::mt19937 rng(17);
    std::uniform_real_distribution<double> angle(-3.0, 3.0);
    for (int n = 0; n < 20; ++n) {
        const auto axA = zkRandomUnitAxis(rng), axB = zkRandomUnitAxis(rng);
        double a[4], b[4], ab[4], ma[16], mb[16], mab[16], product[16];
        ZKQuaternionRoutines::axisToQuaternionU(a, axA.data(), angle(rng));
        ZKQuaternionRoutines::axisToQuaternionU(b, axB.data(), angle(rng));
        ZKQuaternionRoutines::multQuaternions(ab, a, b);
        ZKQuaternionRoutines::quaternionToMatrix(ma, a);
        ZKQuaternionRoutines::quaternionToMatrix(mb, b);
        ZKQuaternionRoutines::quaternionToMatrix(mab, ab);
        ZKMatrixRoutines::mult_Matrix_Matrix(product, ma, mb);
        EXPECT_LT(zkMaxAbsDiff(mab, product, 16), 1e-14);

        // Rotating a point equals applying the matrix.
        const double p[3] = {1.5, -2.0, 0.25};
        double byQuat[3], byMatrix[3];
        ZKQuaternionRoutines::applyQuatOnVec3d(byQuat, a, p);
        ZKMatrixRoutines::mult_affineMatrix_Point3d(byMatrix, ma, p);
        EXPECT_LT(zkMaxAbsDiff(byQuat, byMatrix, 3), 1e-14);

        // (a ⊗ conj(b)) ⊗ b = a for a unit b; the inverse undoes a.
        double div[4], back[4], inv[4], one[4];
        ZKQuaternionRoutines::divQuaternionsU(div, a, b);
        ZKQuaternionRoutines::multQuaternions(back, div, b);
        EXPECT_LT(zkMaxAbsDiff(back, a, 4), 1e-15);
        ZKQuaternionRoutines::inverseQuaternion(inv, a);
        ZKQuaternionRoutines::multQuaternions(one, a, inv);
        EXPECT_NEAR(one[0], 1.0, 1e-15);
        EXPECT_NEAR(one[1], 0.0, 1e-15);
    }

    const float q[4] = {2, 1, -1, 3};
    float conj[4], invU[4], inv[4], sum[4], diff[4], dot;
    ZKQuaternionRoutines::conjugateQuaternion(conj, q);
    ZKQuaternionRoutines::inverseQuaternionU(invU, q);
    zkExpectValues(conj, {2, -1, 1, -3});
    zkExpectValues(invU, {2, -1, 1, -3});
    ZKQuaternionRoutines::inverseQuaternion(inv, q); // conj / 15
    EXPECT_FLOAT_EQ(inv[2], 1.0f / 15.0f);
    const float zero[4] = {0, 0, 0, 0};
    ZKQuaternionRoutines::inverseQuaternion(inv, zero);
    zkExpectValues(inv, {0, 0, 0, 0});
    ZKQuaternionRoutines::addQuaternions(sum, q, conj);
    zkExpectValues(sum, {4, 0, 0, 0});
    ZKQuaternionRoutines::subQuaternions(diff, q, conj);
    zkExpectValues(diff, {0, 2, -2, 6});
    ZKQuaternionRoutines::dotQuaternions(dot, q, conj);
    EXPECT_EQ(dot, 4.0f - 1.0f - 1.0f - 9.0f);
}

TEST(ZKQuaternionRoutines, MatrixConversions) {
    double q[4];
    const double identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    ZKQuaternionRoutines::RotMatrixToQuaternion(q, identity);
    zkExpectValues(q, {1, 0, 0, 0});

    // Half turns take the w = 0 branches.
    const double halfZ[16] = {-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    ZKQuaternionRoutines::RotMatrixToQuaternion(q, halfZ);
    zkExpectValues(q, {0, 0, 0, 1});
    const double halfX[16] = {1, 0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1};
    ZKQuaternionRoutines::RotMatrixToQuaternion(q, halfX);
    zkExpectValues(q, {0, 1, 0, 0});
    const float halfY[16] = {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1};
    float qf[4];
    ZKQuaternionRoutines::RotMatrixToQuaternion(qf, halfY);
    zkExpectValues(qf, {0, 0, 1, 0});

    // kept: in the m10 case the major component receives f, not s. For the
    // half turn about (1, 0, 1)/√2 this gives (0, 2/√5, 0, 1/√5), not the
    // rotation's own quaternion (0, 1/√2, 0, 1/√2).
    const double halfXZ[16] = {0, 0, 1, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1};
    ZKQuaternionRoutines::RotMatrixToQuaternion(q, halfXZ);
    EXPECT_EQ(q[0], 0.0);
    EXPECT_NEAR(q[1], 2.0 / std::sqrt(5.0), 1e-15);
    EXPECT_EQ(q[2], 0.0);
    EXPECT_NEAR(q[3], 1.0 / std::sqrt(5.0), 1e-15);
    // kept: the m0 case puts s (0.8) in x, the m5 case f (0.625) in y. Half
    // turns about (0.8, 0.6, 0) and (0.6, 0.8, 0) give (0, 0.8, 1.2, 0) and
    // (0, 1.2, 0.625, 0) before the final normalisation.
    const double halfM0[16] = {0.28, 0.96, 0, 0, 0.96, -0.28, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1};
    ZKQuaternionRoutines::RotMatrixToQuaternion(q, halfM0);
    EXPECT_EQ(q[0], 0.0);
    EXPECT_NEAR(q[1], 0.8 / std::sqrt(0.64 + 1.44), 1e-15);
    EXPECT_NEAR(q[2], 1.2 / std::sqrt(0.64 + 1.44), 1e-15);
    EXPECT_EQ(q[3], 0.0);
    const float halfM5[16] = {-0.28f, 0.96f, 0, 0, 0.96f, 0.28f, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1};
    ZKQuaternionRoutines::RotMatrixToQuaternion(qf, halfM5);
    EXPECT_EQ(qf[0], 0.0f);
    EXPECT_NEAR(qf[1], 1.2 / std::sqrt(1.44 + 0.390625), 1e-6);
    EXPECT_NEAR(qf[2], 0.625 / std::sqrt(1.44 + 0.390625), 1e-6);
    EXPECT_EQ(qf[3], 0.0f);

    // Away from the half turns, matrix → quaternion → matrix is exact up to
    // rounding; the sub-3×3 form keeps the other seven elements.
    std::mt19937 rng(23);
    std::uniform_real_distribution<double> angle(-3.0, 3.0);
    for (int n = 0; n < 20; ++n) {
        const auto axis = zkRandomUnitAxis(rng);
        const double theta = angle(rng);
        double m[16], back[16];
        for (int i = 0; i < 16; ++i)
            m[i] = back[i] = 100.0 + i;
        ZKMatrixRoutines_Rotation::axisAngleToMatrix(m, axis.data(), theta);
        ZKQuaternionRoutines::RotMatrixToQuaternion(q, m);
        ZKQuaternionRoutines::quaternionToMatrix_sub3x3(back, q);
        EXPECT_LT(zkMaxAbsDiff(m, back, 16), 1e-14);
        EXPECT_EQ(back[3], 103.0);
        EXPECT_EQ(back[12], 112.0);
        __quaternionToMatrix_sub3x3(back, q);
        EXPECT_LT(zkMaxAbsDiff(m, back, 16), 1e-14);
    }

    // Not normalised first: a doubled quaternion gives the formulas' values.
    const double twice[4] = {2, 0, 0, 0};
    double scaled[16];
    ZKQuaternionRoutines::quaternionToMatrix(scaled, twice);
    EXPECT_EQ(scaled[0], 7.0);
    EXPECT_EQ(scaled[5], 7.0);
    EXPECT_EQ(scaled[12], 0.0); // the full form writes the translation and weight
    EXPECT_EQ(scaled[15], 1.0);
}

TEST(ZKQuaternionRoutines, EulerRoundTripsAgreeWithTheMatrixRoutines) {
    std::mt19937 rng(29);
    std::uniform_real_distribution<double> angle(-1.4, 1.4);
    for (int n = 0; n < 30; ++n) {
        const double e[3] = {angle(rng), angle(rng), angle(rng)};
        double q[4], fromQuat[16], direct[16] = {}, back[3];
        ZKQuaternionRoutines::eulerToQuaternion(q, e);
        ZKQuaternionRoutines::quaternionToMatrix(fromQuat, q);
        ZKMatrixRoutines_Euler::eulerToMatrix_sub3x3(direct, e);
        for (int i : {0, 1, 2, 4, 5, 6, 8, 9, 10})
            EXPECT_NEAR(fromQuat[i], direct[i], 1e-14) << i;
        ZKQuaternionRoutines::quaternionToEuler(back, q);
        EXPECT_NEAR(back[0], e[0], 1e-9);
        EXPECT_NEAR(back[1], e[1], 1e-9);
        EXPECT_NEAR(back[2], e[2], 1e-9);
    }
}

TEST(ZKQuaternionRoutines, InterpolationKeepsItsQuirks) {
    const double a[4] = {1, 0, 0, 0}, b[4] = {0.6, 0.8, 0, 0};
    double out[4];
    ZKQuaternionRoutines::quaternionLERP(out, a, b, 0.25);
    EXPECT_DOUBLE_EQ(out[0], 0.75 + 0.15);
    EXPECT_DOUBLE_EQ(out[1], 0.2);
    const double nb[4] = {-0.6, -0.8, 0, 0};
    ZKQuaternionRoutines::quaternionLERP(out, a, nb, 0.25); // b's sign follows a·b
    EXPECT_DOUBLE_EQ(out[0], 0.75 + 0.15);
    EXPECT_DOUBLE_EQ(out[1], 0.2);

    // kept: no division by sin θ: equal inputs give the zero quaternion and
    // t = 0 gives a·sin θ.
    const double u[4] = {0.5, 0.5, 0.5, 0.5};
    ZKQuaternionRoutines::quaternionSLERP(out, u, u, 0.3);
    for (double v : out)
        EXPECT_EQ(v, 0.0);
    ZKQuaternionRoutines::quaternionSLERP(out, a, b, 0.0);
    const double sinTheta = std::sin(std::acos(0.6));
    EXPECT_DOUBLE_EQ(out[0], sinTheta);
    EXPECT_EQ(out[1], 0.0);
    ZKQuaternionRoutines::quaternionSLERP(out, a, b, 0.5);
    const double s = std::sin(0.5 * std::acos(0.6));
    EXPECT_DOUBLE_EQ(out[0], s + 0.6 * s);
    EXPECT_DOUBLE_EQ(out[1], 0.8 * s);

    // kept: with a·b < 0, w, x, y subtract b but z adds it.
    const float fa[4] = {1, 0, 0, 0}, fb[4] = {-0.6f, 0, 0, 0.8f};
    float fout[4];
    ZKQuaternionRoutines::quaternionSLERP(fout, fa, fb, 0.5f);
    const double fs = std::sin(0.5 * std::acos(double(0.6f)));
    EXPECT_FLOAT_EQ(fout[0], float(fs + 0.6 * fs));
    EXPECT_FLOAT_EQ(fout[3], float(0.8 * fs));
    EXPECT_GT(fout[3], 0.0f);
}

TEST(ZKQuaternionRoutines, QuatNormSquaresWAndXInFloat) {
    const float q[4] = {3, 4, 0, 12};
    EXPECT_EQ(quatNorm(q), 13.0);
    // w² overflows in float; y² is formed in double.
    const float bigW[4] = {1e20f, 0, 0, 0};
    EXPECT_EQ(quatNorm(bigW), std::numeric_limits<double>::infinity());
    const float bigY[4] = {0, 0, 1e20f, 0};
    EXPECT_DOUBLE_EQ(quatNorm(bigY), double(1e20f));
}

TEST(ZKQuaternion, ConstructorsAndProducts) {
    // kept: opposite vectors give the identity, not a half turn.
    expectQuat(ZKQuaternion(ZKVec3f(1, 0, 0), ZKVec3f(-1, 0, 0)), 1, 0, 0, 0, 0.0);
    expectQuat(ZKQuaternionD(ZKVec3d(0, 0, 5), ZKVec3d(0, 0, 0)), 1, 0, 0, 0, 0.0);
    const ZKQuaternionD quarter(ZKVec3d(2, 0, 0), ZKVec3d(0, 3, 0));
    expectQuat(quarter, M_SQRT1_2, 0, 0, M_SQRT1_2, 1e-15);
    expectQuat(ZKQuaternionD(ZKVec3d(0, 0, 4), M_PI / 2), M_SQRT1_2, 0, 0, M_SQRT1_2, 1e-15);
    expectQuat(ZKQuaternionD(0.0, 0.0, M_PI / 2), M_SQRT1_2, 0, 0, M_SQRT1_2, 1e-15);
    ZKMatrix4d m;
    m.setRotation_sub3x3(ZKVec3d(0, 0, 1), M_PI / 2);
    expectQuat(ZKQuaternionD(m), M_SQRT1_2, 0, 0, M_SQRT1_2, 1e-15);

    ZKVec3d axis;
    double angle;
    quarter.getAxisAngle(axis, angle);
    EXPECT_NEAR(angle, M_PI / 2, 1e-15);
    EXPECT_NEAR(axis.z, 1.0, 1e-15);

    const ZKQuaternionD i(0, 1, 0, 0), j(0, 0, 1, 0);
    expectQuat(i * j, 0, 0, 0, 1, 0.0);
    ZKQuaternionD left = i, right = i;
    left.multLeftBy(j);   // j ⊗ i = −k
    right.multRightBy(j); // i ⊗ j = k
    expectQuat(left, 0, 0, 0, -1, 0.0);
    expectQuat(right, 0, 0, 0, 1, 0.0);
    ZKQuaternionD divided = i;
    divided.div(j); // i ⊗ conj(j) = i ⊗ (−j) = −k
    expectQuat(divided, 0, 0, 0, -1, 0.0);
    expectQuat(i / j, 0, 0, 0, -1, 0.0);
    expectQuat(i + j, 0, 1, 1, 0, 0.0);
    expectQuat(i - j, 0, 1, -1, 0, 0.0);

    // kept: *= and /= use only their argument.
    ZKQuaternionD q(0.5, 0.5, 0.5, 0.5);
    q *= j; // j ⊗ j = −1
    expectQuat(q, -1, 0, 0, 0, 0.0);
    ZKQuaternion qf(0.5f, 0.5f, 0.5f, 0.5f);
    qf /= ZKQuaternion(0, 3, 0, 0); // (0,3,0,0) ⊗ conj = (9, 0, 0, 0)
    expectQuat(qf, 9, 0, 0, 0, 0.0);

    ZKQuaternion n(0, 3, 0, 4);
    n.normalize();
    expectQuat(n, 0, 0.6, 0, 0.8, 1e-7);
    ZKQuaternion z(0, 0, 0, 0);
    z.normalize(); // no test for zero length: 0/0
    EXPECT_TRUE(std::isnan(z.w));
}
