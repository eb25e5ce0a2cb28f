#include "ZKMatrix.h"
#include "ZKMatrixRoutines.h"
#include "ZKMatrixRoutines_Rotation.h"

#include "ZKMathsTestSupport.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

TEST(ZKMatrix, ColumnMajorLayoutAndColumnVectors) {
    static_assert(sizeof(ZKMatrix4d) == 16 * sizeof(double) &&
                  sizeof(ZKMatrix3f) == 9 * sizeof(float));
    ZKMatrix4d m;
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(m[i], (i % 5 == 0) ? 1.0 : 0.0) << i;
    m(1, 3) = 7.0; // row 1, column 3: the y translation
    EXPECT_EQ(m[13], 7.0);
    EXPECT_EQ(m * ZKVec4d(1, 2, 3, 1), ZKVec4d(1, 9, 3, 1));

    // (T·S)·p applies S first.
    ZKMatrix4d t, s;
    t.translation(ZKVec3d(10, 0, 0));
    s.scale(ZKVec3d(2, 2, 2));
    EXPECT_EQ((t * s) * ZKVec4d(1, 1, 1, 1), ZKVec4d(12, 2, 2, 1));
    EXPECT_EQ((s * t) * ZKVec4d(1, 1, 1, 1), ZKVec4d(22, 2, 2, 1));
    ZKMatrix4d ts = t;
    ts *= s;
    EXPECT_EQ(ts, t * s);
    EXPECT_EQ(t.transformPoint(ZKVec3d(1, 2, 3)), ZKVec3d(11, 2, 3));
    EXPECT_EQ(t.transformDir(ZKVec3d(1, 2, 3)), ZKVec3d(1, 2, 3));

    const ZKMatrix2d r(0, 1, -1, 0); // quarter turn: X to Y
    EXPECT_EQ(r * ZKVec2d(1, 0), ZKVec2d(0, 1));
    EXPECT_EQ(r * r, ZKMatrix2d(-1, 0, 0, -1));
    EXPECT_EQ(r + r - r, r);
    EXPECT_EQ(2.0 * r, r * 2.0);
    EXPECT_NE(r, ZKMatrix2d());
}

TEST(ZKMatrix, ProductsMatchEigen) {
    ZK_REQUIRE_EIGEN();
#ifdef ZK_TESTS_HAVE_EIGEN
    std::mt19937 rng(11);
    for (int i = 0; i < 20; ++i) {
        const auto a = zkWellConditioned<double, 4>(rng), b = zkWellConditioned<double, 4>(rng);
        const ZKMatrix4d ma(a.data()), mb(b.data());
        const Eigen::Matrix4d ea = Eigen::Map<const Eigen::Matrix4d>(a.data());
        const Eigen::Matrix4d eb = Eigen::Map<const Eigen::Matrix4d>(b.data());
        const Eigen::Matrix4d ep = ea * eb;
        EXPECT_LT(zkMaxAbsDiff((ma * mb).m, ep.data(), 16), 1e-13);
        const Eigen::Vector4d ev = ea * eb.col(0);
        const ZKVec4d v = ma * ZKVec4d(b[0], b[1], b[2], b[3]);
        EXPECT_LT(zkMaxAbsDiff(v.data(), ev.data(), 4), 1e-13);

        const auto c = zkWellConditioned<float, 3>(rng);
        const Eigen::Matrix3f ec = Eigen::Map<const Eigen::Matrix3f>(c.data());

        // The mixed products widen the float operand.
        const auto e = zkWellConditioned<double, 3>(rng);
        const Eigen::Matrix3d ee = Eigen::Map<const Eigen::Matrix3d>(e.data());
        const Eigen::Matrix3d mixed1 = ee * ec.cast<double>();
        const Eigen::Matrix3d mixed2 = ec.cast<double>() * ee;
        EXPECT_LT(zkMaxAbsDiff((ZKMatrix3d(e.data()) * ZKMatrix3f(c.data())).m, mixed1.data(), 9),
                  1e-13);
        EXPECT_LT(zkMaxAbsDiff((ZKMatrix3f(c.data()) * ZKMatrix3d(e.data())).m, mixed2.data(), 9),
                  1e-13);
    }
#endif
}

TEST(ZKMatrix, Inverse2x2ReportsDeterminantAndRoundsThroughFloat) {
    ZKMatrix2d m(2, 0, 0, 4);
    double det = 0;
    EXPECT_TRUE(m.inverse(det));
    EXPECT_EQ(det, 8.0);
    EXPECT_EQ(m, ZKMatrix2d(0.5, 0, 0, 0.25));

    ZKMatrix2d singular(1, 2, 2, 4);
    EXPECT_FALSE(singular.inverse(det));
    EXPECT_EQ(det, 0.0);
    EXPECT_EQ(singular, ZKMatrix2d(1, 2, 2, 4));

    // kept: the diagonal divides by det rounded to float; the off-diagonal
    // quotients use the double det and are rounded to float.
    ZKMatrix2d r(1, 0.1, 0.2, 1);
    EXPECT_TRUE(r.inverse(det));
    EXPECT_EQ(det, 1.0 - 0.1 * 0.2);
    EXPECT_EQ(r.m[0], 1.0 / double(float(det)));
    EXPECT_EQ(r.m[3], 1.0 / double(float(det)));
    EXPECT_NE(r.m[0], 1.0 / det);
    EXPECT_EQ(r.m[1], double(float(-0.1 / det)));
    EXPECT_EQ(r.m[2], double(float(-0.2 / det)));
    EXPECT_NE(r.m[1], -0.1 / det);

    ZKMatrix2f f(3, 1, 2, 1); // det 1 in float
    EXPECT_TRUE(f.inverse(det));
    EXPECT_EQ(det, 1.0);
    EXPECT_EQ(f, ZKMatrix2f(1, -1, -2, 3));
}

// kept: a difference equal to eps passes the 3×3 test and fails the 4×4 one.
TEST(ZKMatrix, EqualsEpsBoundDiffersBetween3x3And4x4) {
    ZKMatrix3d a3, b3;
    for (int i = 0; i < 9; ++i)
        b3.m[i] = a3.m[i] + (i % 2 ? 0.5 : -0.5);
    EXPECT_TRUE(a3.equalsEps(b3, 0.5));
    EXPECT_FALSE(a3.equalsEps(b3, 0.4375));
    EXPECT_FALSE(a3.equals(b3));
    EXPECT_TRUE(a3.equals(ZKMatrix3d()));

    ZKMatrix4f a4, b4;
    for (int i = 0; i < 16; ++i)
        b4.m[i] = a4.m[i] + (i % 2 ? 0.5f : -0.5f);
    EXPECT_FALSE(a4.equalsEps(b4, 0.5f));
    EXPECT_TRUE(a4.equalsEps(b4, 0.5625f));
}

TEST(ZKMatrix, Rotation3fFromAxisAngle) {
    ZKMatrix3f r;
    r.setRotation(ZKVec3f(0, 0, 2), float(M_PI / 2)); // the axis need not be unit
    const ZKVec3f y = r * ZKVec3f(1, 0, 0);
    EXPECT_NEAR(y.x, 0.0f, 1e-7f);
    EXPECT_NEAR(y.y, 1.0f, 1e-7f);
    EXPECT_NEAR(y.z, 0.0f, 1e-7f);

    r.setRotation(ZKVec3f(0, 1e-9f, 0), 1.0f);
    EXPECT_EQ(r, ZKMatrix3f());

    // The same rotation as the 4×4 axis-angle routine, in the 3×3 layout.
    std::mt19937 rng(3);
    std::uniform_real_distribution<float> angleDist(-3.0f, 3.0f);
    for (int i = 0; i < 20; ++i) {
        const auto a = zkRandomUnitAxis(rng);
        const ZKVec3f axis(float(a[0] * 3), float(a[1] * 3), float(a[2] * 3));
        const float angle = angleDist(rng);
        r.setRotation(axis, angle);
        float m4[16] = {};
        ZKMatrixRoutines_Rotation::axisAngleToMatrix(m4, axis.data(), angle);
        for (int c = 0; c < 3; ++c)
            for (int row = 0; row < 3; ++row)
                EXPECT_EQ(r(row, c), m4[4 * c + row]);
    }
}

TEST(ZKMatrix, Rotation3fFromTo) {
    ZKMatrix3f r;
    r.m[4] = 5.0f;
    r.setRotationFromTo(ZKVec3f(1, 2, 3), ZKVec3f(1, 2, 3));
    EXPECT_EQ(r, ZKMatrix3f());

    // Opposite vectors: a half turn about an axis orthogonal to v.
    const ZKVec3f v(0, 0, 1);
    r.setRotationFromTo(v, -v);
    const ZKVec3f turned = r * v;
    EXPECT_NEAR(turned.z, -1.0f, 1e-6f);
    const ZKVec3f axis(0, -1, 0); // getOneOrthogonalVec of (0, 0, 1)
    const ZKVec3f kept = r * axis;
    EXPECT_NEAR((kept - axis).length(), 0.0f, 1e-6f);

    const ZKVec3f from(1, 0, 0), to(0, 3, 3);
    r.setRotationFromTo(from, to);
    const ZKVec3f image = r * from;
    EXPECT_NEAR(image.x, 0.0f, 1e-6f);
    EXPECT_NEAR(image.y, float(M_SQRT1_2), 1e-6f);
    EXPECT_NEAR(image.z, float(M_SQRT1_2), 1e-6f);
}

TEST(ZKMatrix, ScaleWithPivotDiffersBetweenFloatAndDouble) {
    const ZKVec3d s(2, 3, 4), p(1, -2, 5);
    ZKMatrix4d d;
    d.m[3] = 9.0;
    d.m[12] = 9.0;
    d.scale(s, p);
    // kept: the double form's translation is the pivot itself
    EXPECT_EQ(d[12], 1.0);
    EXPECT_EQ(d[13], -2.0);
    EXPECT_EQ(d[14], 5.0);
    EXPECT_EQ(d[5], 3.0);
    EXPECT_EQ(d[3], 0.0); // built whole, whatever the matrix held

    ZKMatrix4f f, g;
    f.scale(ZKVec3f(2, 3, 4), ZKVec3f(1, -2, 5));
    // a true scale about the pivot: translation p − s⊙p, the pivot is fixed
    EXPECT_EQ(f[12], -1.0f);
    EXPECT_EQ(f[13], 4.0f);
    EXPECT_EQ(f[14], -15.0f);
    EXPECT_EQ(f.transformPoint(ZKVec3f(1, -2, 5)), ZKVec3f(1, -2, 5));
    g.m[3] = 9.0f;
    g.setScale(ZKVec3f(2, 3, 4), ZKVec3f(1, -2, 5));
    EXPECT_EQ(g, f);

    float diag[16] = {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 0, 0, 0, 1};
    f.scale(ZKVec3f(2, 3, 4));
    EXPECT_EQ(f, ZKMatrix4f(diag));
    g.translation(ZKVec3f(5, 5, 5));
    g.setScale(ZKVec3f(2, 3, 4));
    EXPECT_EQ(g, ZKMatrix4f(diag));
}

TEST(ZKMatrix, RotationFromToAboutPivotOntoTarget) {
    const ZKVec3d from(1, 0, 0), to(0, 1, 0), pivot(1, 1, 1), target(5, 6, 7);
    ZKMatrix4d m;
    m.setRotationFromTo(from, to, pivot, target);
    const ZKVec3d onTarget = m.transformPoint(pivot);
    EXPECT_NEAR((onTarget - target).length(), 0.0, 1e-12);
    const ZKVec3d turned = m.transformPoint(pivot + from) - target;
    EXPECT_NEAR((turned - to).length(), 0.0, 1e-12);
    ZKMatrix4f mf;
    mf.setRotationFromTo(ZKVec3f(1, 0, 0), ZKVec3f(0, 1, 0), ZKVec3f(1, 1, 1), ZKVec3f(5, 6, 7));
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(mf[i], m[i], 1e-6) << i;

    // Parallel within a quarter turn: the 3×3 part is not written. The float
    // form starts from the identity, the double form keeps what it held.
    ZKMatrix4d held;
    held.scale(ZKVec3d(2, 2, 2));
    held.setRotationFromTo(ZKVec3d(1, 0, 0), ZKVec3d(2, 0, 0), ZKVec3d(0, 0, 0), ZKVec3d(1, 2, 3));
    EXPECT_EQ(held[0], 2.0); // kept: the former linear part survives
    EXPECT_EQ(held[12], 1.0);
    EXPECT_EQ(held[13], 2.0);
    ZKMatrix4f heldf;
    heldf.scale(ZKVec3f(2, 2, 2));
    heldf.setRotationFromTo(ZKVec3f(1, 0, 0), ZKVec3f(2, 0, 0), ZKVec3f(0, 0, 0), ZKVec3f(1, 2, 3));
    EXPECT_EQ(heldf[0], 1.0f);
    EXPECT_EQ(heldf[14], 3.0f);

    // Opposite: a half turn about getOneOrthogonalVec of from.
    ZKMatrix4d half;
    half.setRotationFromTo(ZKVec3d(0, 0, 1), ZKVec3d(0, 0, -1), ZKVec3d(0, 0, 0), ZKVec3d(0, 0, 0));
    const ZKVec3d flipped = half.transformDir(ZKVec3d(0, 0, 1));
    EXPECT_NEAR(flipped.z, -1.0, 1e-12);
    EXPECT_NEAR(half.transformDir(ZKVec3d(0, 1, 0)).y, 1.0, 1e-12);
}

TEST(ZKMatrix, Transpose3DiffersBetweenFloatAndDouble) {
    float fv[16];
    double dv[16];
    for (int i = 0; i < 16; ++i) {
        fv[i] = float(i);
        dv[i] = double(i);
    }
    ZKMatrix4f f(fv);
    f.transpose3();
    const float fExpected[16] = {0, 4, 8, 3, 1, 5, 9, 7, 2, 6, 10, 11, 12, 13, 14, 15};
    EXPECT_EQ(f, ZKMatrix4f(fExpected));

    ZKMatrix4d d(dv);
    d.transpose3(); // kept: all 16 elements
    const double dExpected[16] = {0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15};
    EXPECT_EQ(d, ZKMatrix4d(dExpected));
}

TEST(ZKMatrix, FramesAndInverse) {
    // An orthonormal frame: X, Y, Z rotated a quarter turn about Z, origin O.
    const ZKVec3d X(0, 1, 0), Y(-1, 0, 0), Z(0, 0, 1), O(3, 4, 5);
    ZKMatrix4d toWorld, toFrame;
    toWorld.setRotationFromXYZToAxis(X, Y, Z, O);
    toFrame.setRotationFromAxisToXYZ(X, Y, Z, O);
    EXPECT_EQ(toWorld.transformPoint(ZKVec3d(1, 0, 0)), O + X);
    EXPECT_EQ(toFrame.transformPoint(O + Y * 2.0), ZKVec3d(0, 2, 0));
    EXPECT_TRUE((toWorld * toFrame).equalsEps(ZKMatrix4d(), 1e-15));

    // Frame 1 coordinates carried to frame 2: the arguments are the three
    // axes of each frame, then the two origins.
    const ZKVec3d X2(0, 0, 1), Y2(1, 0, 0), Z2(0, 1, 0), O2(-1, -1, -1);
    ZKMatrix4d both;
    both.setRotationFromAxisToAxis(X, Y, Z, X2, Y2, Z2, O, O2);
    EXPECT_EQ(both.transformPoint(O + X), O2 + X2);
    EXPECT_EQ(both.transformPoint(O + Z * 3.0), O2 + Z2 * 3.0);

    bool ok = false;
    ZKMatrix4d inv = toWorld;
    inv.inverse(ok);
    EXPECT_TRUE(ok);
    EXPECT_TRUE(inv.equalsEps(toFrame, 1e-15));
    ZKMatrix4f singular;
    singular.m[5] = 0.0f;
    const ZKMatrix4f before = singular;
    singular.inverse(ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(singular, before);
}

TEST(ZKMatrix, EulerAndAxisMembersWriteOnlyThe3x3Part) {
    ZKMatrix4d m;
    m.translation(ZKVec3d(7, 8, 9));
    m.setRotation_sub3x3_euler(0.25, -0.5, 1.0);
    EXPECT_EQ(m[12], 7.0);
    EXPECT_EQ(m[15], 1.0);
    double e0, e1, e2;
    EXPECT_EQ(m.getEulerAngles(e0, e1, e2), 0);
    EXPECT_NEAR(e0, 0.25, 1e-12);
    EXPECT_NEAR(e1, -0.5, 1e-12);
    EXPECT_NEAR(e2, 1.0, 1e-12);

    ZKMatrix4f f;
    f.translation(ZKVec3f(1, 2, 3));
    f.setRotation_sub3x3(ZKVec3f(0, 0, 1), float(M_PI / 2));
    EXPECT_EQ(f[14], 3.0f);
    const ZKVec3f y = f.transformDir(ZKVec3f(1, 0, 0));
    EXPECT_NEAR(y.y, 1.0f, 1e-6f);
}
