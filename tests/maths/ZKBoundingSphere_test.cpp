#include "ZKBoundingSphere.h"

#include <gtest/gtest.h>

#include <random>

// Centre then radius, nothing else.
static_assert(sizeof(ZKBoundingSphere) == 4 * sizeof(float));

TEST(ZKBoundingSphere, FirstPointAndPointsInsideLeaveItAsItIs) {
    ZKBoundingSphere sphere;
    EXPECT_TRUE(sphere.isEmpty());
    sphere.add(ZKVec3f(1, 2, 3));
    EXPECT_FALSE(sphere.isEmpty());
    EXPECT_EQ(sphere.center, ZKVec3f(1, 2, 3));
    EXPECT_EQ(sphere.radius, 0.0f);

    sphere.add(ZKVec3f(5, 2, 3));
    EXPECT_EQ(sphere.center, ZKVec3f(3, 2, 3));
    EXPECT_EQ(sphere.radius, 2.0f);
    const ZKBoundingSphere before = sphere;
    sphere.add(ZKVec3f(3, 3, 3.5f));
    sphere.add(ZKVec3f(1, 2, 3)); // on the surface
    EXPECT_EQ(sphere.center, before.center);
    EXPECT_EQ(sphere.radius, before.radius);

    // Outside: the new sphere touches the point and the far side of the old one.
    sphere.add(ZKVec3f(3, 8, 3));
    EXPECT_EQ(sphere.radius, 4.0f);
    EXPECT_EQ(sphere.center, ZKVec3f(3, 4, 3));

    // set() moves the centre only.
    sphere.set(ZKVec3f(0, 0, 0));
    EXPECT_EQ(sphere.center, ZKVec3f(0, 0, 0));
    EXPECT_EQ(sphere.radius, 4.0f);
    sphere.setEmpty();
    EXPECT_TRUE(sphere.isEmpty());
}

TEST(ZKBoundingSphere, GrownSphereEnclosesEveryPointAdded) {
    std::mt19937 rng(99);
    std::normal_distribution<float> coord(0.0f, 10.0f);
    ZKArray<ZKVec3f> points;
    for (int i = 0; i < 500; ++i)
        points.push_back(ZKVec3f(coord(rng), coord(rng), coord(rng)));
    ZKBoundingSphere sphere;
    sphere.add(points);
    for (const ZKVec3f& p : points)
        EXPECT_LE((p - sphere.center).length(), sphere.radius * (1.0f + 1e-5f));
    // Each step keeps the previous sphere inside the next one.
    ZKBoundingSphere step;
    for (const ZKVec3f& p : points) {
        const ZKBoundingSphere old = step;
        step.add(p);
        if (!old.isEmpty()) {
            EXPECT_LE((old.center - step.center).length() + old.radius,
                      step.radius * (1.0f + 1e-5f));
        }
    }
}
