#include "ZKBBoxAlgo.h"
#include "ZKGeomMaths.h"

#include <gtest/gtest.h>

namespace {

// OpenGL-style perspective, near 1, far 10, 90 degrees: a point in front of
// the camera (z < 0) lands at x/−z, y/−z with depth in [−1, 1]; a point
// behind it at depth above (f + n)/(f − n) > 1.
ZKMatrix4f perspective() {
    ZKMatrix4f m;
    m.m[10] = -11.0f / 9.0f;
    m.m[11] = -1.0f;
    m.m[14] = -20.0f / 9.0f;
    m.m[15] = 0.0f;
    return m;
}

} // namespace

TEST(ZKBBoxAlgo, TransformBBoxBoundsTheEightTransformedCorners) {
    // A quarter turn about z, then a move by (10, 0, 0).
    ZKMatrix4f m;
    m.m[0] = 0, m.m[1] = 1, m.m[4] = -1, m.m[5] = 0;
    m.m[12] = 10;
    const ZKBBox3f in(ZKVec3f(0, 0, 0), ZKVec3f(1, 2, 3));
    ZKBBox3f out(ZKVec3f(-100, -100, -100), ZKVec3f(100, 100, 100));
    ZKBBoxAlgo::transformBBox(out, in, m);
    EXPECT_EQ(out.min, ZKVec3f(8, 0, 0));
    EXPECT_EQ(out.max, ZKVec3f(10, 1, 3));

    ZKBBoxAlgo::transformBBox(out, ZKBBox3f(), m);
    EXPECT_TRUE(out.isEmpty());
}

TEST(ZKBBoxAlgo, CameraProjectionNegatesBeyondTheLimit) {
    const ZKMatrix4f m = perspective();
    ZKVec3f front, behind;
    ZKGeomMaths::cameraProjPoint(front, ZKVec3f(1, 2, -2), m, 1.0f);
    EXPECT_FLOAT_EQ(front.x, 0.5f);
    EXPECT_FLOAT_EQ(front.y, 1.0f);
    EXPECT_NEAR(front.z, 1.0f / 9.0f, 1e-6f);
    // Behind the camera the division mirrors x and y; the negation undoes it.
    ZKGeomMaths::cameraProjPoint(behind, ZKVec3f(1, 2, 2), m, 1.0f);
    EXPECT_FLOAT_EQ(behind.x, 0.5f);
    EXPECT_FLOAT_EQ(behind.y, 1.0f);
    EXPECT_NEAR(behind.z, 21.0f / 9.0f, 1e-6f);
    // With a higher limit nothing is negated.
    ZKGeomMaths::cameraProjPoint(behind, ZKVec3f(1, 2, 2), m, 5.0f);
    EXPECT_FLOAT_EQ(behind.x, -0.5f);

    // The ZKVec2f form (through its static buffer) gives the same x and y.
    ZKVec2f flat;
    ZKGeomMaths::cameraProjPoint(flat, ZKVec3f(1, 2, 2), m, 1.0f);
    EXPECT_FLOAT_EQ(flat.x, 0.5f);
    EXPECT_FLOAT_EQ(flat.y, 1.0f);
    ZKGeomMaths::cameraProjPoint(flat, ZKVec3f(1, 2, 2), m, 5.0f);
    EXPECT_FLOAT_EQ(flat.x, -0.5f);

    // A zero homogeneous weight gives the zero point (z = 0, not beyond 0).
    ZKGeomMaths::cameraProjPoint(front, ZKVec3f(1, 2, 0), m, 0.0f);
    EXPECT_EQ(front, ZKVec3f(0, 0, 0));
}

TEST(ZKBBoxAlgo, CameraProjBBoxOptionallySkipsCornersBehindTheCamera) {
    const ZKMatrix4f m = perspective();
    const ZKBBox3f inFront(ZKVec3f(-1, -1, -4), ZKVec3f(1, 1, -2));
    ZKBBox3f out;
    ZKBBoxAlgo::cameraProjBBox(out, inFront, m, 1.0f, true);
    EXPECT_FLOAT_EQ(out.min.x, -0.5f);
    EXPECT_FLOAT_EQ(out.max.y, 0.5f);
    EXPECT_NEAR(out.min.z, 1.0f / 9.0f, 1e-6f);
    EXPECT_NEAR(out.max.z, 6.0f / 9.0f, 1e-6f);

    const ZKBBox3f straddling(ZKVec3f(-1, -1, -2), ZKVec3f(1, 1, 2));
    ZKBBoxAlgo::cameraProjBBox(out, straddling, m, 1.0f, true);
    EXPECT_NEAR(out.min.z, 1.0f / 9.0f, 1e-6f);
    EXPECT_NEAR(out.max.z, 1.0f / 9.0f, 1e-6f);
    ZKBBoxAlgo::cameraProjBBox(out, straddling, m, 1.0f, false);
    EXPECT_NEAR(out.max.z, 21.0f / 9.0f, 1e-6f);
    EXPECT_FLOAT_EQ(out.min.x, -0.5f);
    EXPECT_FLOAT_EQ(out.max.x, 0.5f);

    const ZKBBox3f behind(ZKVec3f(-1, -1, 2), ZKVec3f(1, 1, 3));
    ZKBBoxAlgo::cameraProjBBox(out, behind, m, 1.0f, true);
    EXPECT_TRUE(out.isEmpty());

    ZKBBox2f flat;
    ZKBBoxAlgo::cameraProjBBox(flat, straddling, m, 1.0f);
    EXPECT_EQ(flat.min, ZKVec2f(-0.5f, -0.5f));
    EXPECT_EQ(flat.max, ZKVec2f(0.5f, 0.5f));
    ZKBBoxAlgo::cameraProjBBox(flat, ZKBBox3f(), m, 1.0f);
    EXPECT_TRUE(flat.isEmpty());
}
