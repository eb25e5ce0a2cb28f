#include "ZKVec.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

TEST(ZKVec, LayoutIsTheComponentsInOrder) {
    static_assert(sizeof(ZKVec2s) == 4 && sizeof(ZKVec2i) == 8 && sizeof(ZKVec2f) == 8);
    static_assert(sizeof(ZKVec2d) == 16 && sizeof(ZKVec3f) == 12 && sizeof(ZKVec3d) == 24);
    static_assert(sizeof(ZKVec4f) == 16 && sizeof(ZKVec4d) == 32);
    static_assert(std::is_standard_layout<ZKVec3d>::value);
    static_assert(std::is_trivially_copyable<ZKVec4f>::value);

    ZKVec4d v(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(v.data(), &v.x);
    EXPECT_EQ(v[3], 4.0);
    v[2] = 7.0;
    EXPECT_EQ(v.z, 7.0);

    EXPECT_EQ(ZKVec3f(), ZKVec3f(0, 0, 0));
    EXPECT_EQ(ZKVec3d::s_nullVec, ZKVec3d(0, 0, 0));
}

TEST(ZKVec, ArithmeticDotCrossAndLength) {
    const ZKVec3d a(1, 2, 3), b(4, -5, 6);
    EXPECT_EQ(a + b, ZKVec3d(5, -3, 9));
    EXPECT_EQ(a - b, ZKVec3d(-3, 7, -3));
    EXPECT_EQ(-a, ZKVec3d(-1, -2, -3));
    EXPECT_EQ(2.0 * a, ZKVec3d(2, 4, 6));
    EXPECT_EQ(b / 2.0, ZKVec3d(2, -2.5, 3));
    EXPECT_EQ(a.dot(b), 12.0);
    // Right-handed: X × Y = Z, and the product is orthogonal to both operands.
    EXPECT_EQ(ZKVec3f(1, 0, 0).cross(ZKVec3f(0, 1, 0)), ZKVec3f(0, 0, 1));
    EXPECT_EQ(a.cross(b), ZKVec3d(27, 6, -13));
    EXPECT_EQ(a.cross(b).dot(a), 0.0);
    EXPECT_EQ(ZKVec2d(3, 4).length(), 5.0);
    EXPECT_EQ(ZKVec4f(1, 1, 1, 1).sqrLength(), 4.0f);

    ZKVec2i p(3, 4);
    p += ZKVec2i(1, 1);
    p -= ZKVec2i(2, 0);
    p *= 3;
    EXPECT_EQ(p, ZKVec2i(6, 15));
    EXPECT_NE(p, ZKVec2i(6, 14));
    EXPECT_EQ(ZKVec2s(10, -4) + ZKVec2s(1, 2), ZKVec2s(11, -2));
    EXPECT_EQ(ZKVec3f(ZKVec3d(0.1, 0.2, 0.3)), ZKVec3f(0.1f, 0.2f, 0.3f));
}

// Each type keeps its own threshold below which it is left as it is.
TEST(ZKVec, NormalizationThresholdsDifferPerType) {
    ZKVec3d tiny3d(1e-101, 0, 0);
    EXPECT_EQ(tiny3d.normalize(), 1e-101);
    EXPECT_EQ(tiny3d, ZKVec3d(1e-101, 0, 0));
    ZKVec3d small3d(1e-99, 0, 0);
    EXPECT_EQ(small3d.normalize(), 1e-99);
    EXPECT_EQ(small3d, ZKVec3d(1, 0, 0));
    EXPECT_EQ(ZKVec3d(1e-101, 0, 0).normalize_d(), ZKVec3d(0, 0, 0));
    ZKVec3d out(9, 9, 9);
    ZKVec3d(0, 3e-60, 4e-60).getnormalize_d(out);
    EXPECT_DOUBLE_EQ(out.y, 0.6);
    EXPECT_DOUBLE_EQ(out.z, 0.8);

    // The same length 1e-60 is normalised by ZKVec3d but is below ZKVec4d's 1e-50.
    ZKVec4d tiny4d(1e-60, 0, 0, 0);
    tiny4d.normalize();
    EXPECT_EQ(tiny4d, ZKVec4d(1e-60, 0, 0, 0));
    ZKVec4d small4d(0, 0, 0, 1e-49);
    small4d.normalize();
    EXPECT_EQ(small4d, ZKVec4d(0, 0, 0, 1));

    // 1e-27 is below the 2D threshold 1e-26 but above ZKVec3d's.
    ZKVec2d tiny2d(1e-27, 0);
    tiny2d.normalize();
    EXPECT_EQ(tiny2d, ZKVec2d(1e-27, 0));
    EXPECT_EQ(tiny2d.normalizeWith(5.0), 1e-27);
    EXPECT_EQ(tiny2d, ZKVec2d(1e-27, 0));
    ZKVec3d same3d(1e-27, 0, 0);
    same3d.normalize();
    EXPECT_EQ(same3d, ZKVec3d(1, 0, 0));
    ZKVec2d small2d(0, -1e-25);
    EXPECT_EQ(small2d.normalizeWith(3.0), 1e-25);
    EXPECT_DOUBLE_EQ(small2d.y, -3.0);

    // The 2D types normalise only when L > 1e-26, the others unless L lies
    // inside their band: a NaN length leaves a 2D vector as it was and turns
    // the others into NaN.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ZKVec2d nan2d(nan, 2.0);
    nan2d.normalize();
    EXPECT_EQ(nan2d.y, 2.0);
    ZKVec2f nan2f(float(nan), 2.0f);
    EXPECT_TRUE(std::isnan(nan2f.normalize()));
    EXPECT_EQ(nan2f.y, 2.0f);
    ZKVec3d nan3d(nan, 2.0, 0.0);
    EXPECT_TRUE(std::isnan(nan3d.normalize()));
    EXPECT_TRUE(std::isnan(nan3d.y));
    ZKVec4f nan4f(float(nan), 2.0f, 0.0f, 0.0f);
    nan4f.normalize();
    EXPECT_TRUE(std::isnan(nan4f.y));

    // The float lengths are formed in float: a vector whose squared length
    // underflows has length 0 and stays as it is.
    ZKVec3f tiny3f(1e-29f, 0, 0);
    EXPECT_EQ(tiny3f.normalize_d(), ZKVec3f(0, 0, 0));
    EXPECT_EQ(tiny3f.normalize(), 0.0f);
    EXPECT_EQ(tiny3f, ZKVec3f(1e-29f, 0, 0));
    ZKVec4f zero4f;
    zero4f.normalize();
    EXPECT_EQ(zero4f, ZKVec4f(0, 0, 0, 0));

    ZKVec2f v2f(3, 4);
    EXPECT_EQ(v2f.normalizeWith(10.0f), 5.0f);
    EXPECT_FLOAT_EQ(v2f.x, 6.0f);
    EXPECT_FLOAT_EQ(v2f.y, 8.0f);
    ZKVec3f v3f(0, 0, -2);
    v3f.normalizeWith(0.5f);
    EXPECT_EQ(v3f, ZKVec3f(0, 0, -0.5f));
    ZKVec4f v4f(2, 0, 0, 0);
    v4f.normalize();
    EXPECT_EQ(v4f, ZKVec4f(1, 0, 0, 0));
}

TEST(ZKVec, OneOrthogonalVecCrossesTheAxisOfTheSmallestComponent) {
    ZKVec3d out;
    ZKVec3d(0, 0, 1).getOneOrthogonalVec(out); // ties fall to X
    EXPECT_EQ(out, ZKVec3d(0, -1, 0));
    ZKVec3d(1, 0, 0).getOneOrthogonalVec(out); // |z| > |y| fails: Z
    EXPECT_EQ(out, ZKVec3d(0, 1, 0));
    ZKVec3d(1, 1, 1).getOneOrthogonalVec(out); // all equal: X
    EXPECT_EQ(out, ZKVec3d(0, -1, 1));
    ZKVec3d(2, 1, 1).getOneOrthogonalVec(out); // |z| = |y|: Z
    EXPECT_EQ(out, ZKVec3d(-1, 2, 0));
    ZKVec3d(3, 1, 2).getOneOrthogonalVec(out); // y smallest: Y
    EXPECT_EQ(out, ZKVec3d(2, 0, -3));
    ZKVec3f outf;
    ZKVec3f(1, 2, 3).getOneOrthogonalVec(outf); // x smallest: X
    EXPECT_EQ(outf, ZKVec3f(0, -3, 2));

    // Not normalised: its length is |v|·sin of the angle to the chosen axis.
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> dist(-10.0, 10.0);
    for (int i = 0; i < 50; ++i) {
        const ZKVec3d v(dist(rng), dist(rng), dist(rng));
        v.getOneOrthogonalVec(out);
        EXPECT_NEAR(out.dot(v), 0.0, 1e-12);
        const double smallest =
            std::fmin(std::fabs(v.x), std::fmin(std::fabs(v.y), std::fabs(v.z)));
        EXPECT_NEAR(out.sqrLength(), v.sqrLength() - smallest * smallest, 1e-9);
    }
}

TEST(ZKVec, MakeThisOrthogonalToTakesTheNormalAsUnit) {
    ZKVec3d v(1, 2, 3);
    EXPECT_TRUE(v.makeThisOrthogonalTo(ZKVec3d(0, 0, 1)));
    EXPECT_EQ(v, ZKVec3d(1, 2, 0));
    // A longer normal is not normalised first.
    ZKVec3f w(1, 2, 3);
    EXPECT_TRUE(w.makeThisOrthogonalTo(ZKVec3f(0, 0, 2)));
    EXPECT_EQ(w, ZKVec3f(1, 2, -9));
}

TEST(ZKVec, IntegerCoordinatesTruncateTowardZero) {
    ZKVec2i i;
    i.setCoords(ZKVec2f(2.9f, -2.9f));
    EXPECT_EQ(i, ZKVec2i(2, -2));
    i.setCoords(ZKVec4d(-0.5, 7.99, 100, 100));
    EXPECT_EQ(i, ZKVec2i(0, 7));
    i.setCoords(ZKVec3f(1.5f, 2.5f, 99.0f));
    EXPECT_EQ(i, ZKVec2i(1, 2));
    // Out of range and NaN give INT_MIN, never undefined behaviour.
    i.setCoords(ZKVec3d(1e10, std::numeric_limits<double>::quiet_NaN(), 0));
    EXPECT_EQ(i, ZKVec2i(INT_MIN, INT_MIN));
    i.setCoords(ZKVec2s(-3, 32767));
    EXPECT_EQ(i, ZKVec2i(-3, 32767));

    ZKVec2s s;
    s.setCoords(ZKVec2i(65537, -65536)); // low 16 bits
    EXPECT_EQ(s, ZKVec2s(1, 0));
    s.setCoords(ZKVec2i(40000, -40000));
    EXPECT_EQ(s, ZKVec2s(-25536, 25536));
    s.setCoords(ZKVec2d(70000.7, -1.5));
    EXPECT_EQ(s, ZKVec2s(4464, -1));
    ZKVec2s fromFour, fromTwo;
    fromFour.setCoords(ZKVec4f(-12.75f, 3.25f, 5, 6));
    fromTwo.setCoords(ZKVec2f(-12.75f, 3.25f));
    EXPECT_EQ(fromFour, fromTwo);
    EXPECT_EQ(fromTwo, ZKVec2s(-12, 3));
}
