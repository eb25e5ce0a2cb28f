#include "ZKPixRect.h"
#include "ZKVec.h"

#include <gtest/gtest.h>

#include <climits>

TEST(ZKPixRect, DefaultIsMarkedEmptyAndSetClearsTheMarker) {
    ZKPixRect r;
    EXPECT_TRUE(r.isEmpty());
    EXPECT_EQ(r.flags, ZKPixRect::s_EMPTY);
    r.set(3, 4);
    EXPECT_EQ(r, ZKPixRect(3, 4, 4, 5));
    EXPECT_FALSE(r.isEmpty());
    r.set(ZKVec2i(-2, 5), ZKPixSize(10, 3));
    EXPECT_EQ(r, ZKPixRect(-2, 5, 8, 8));
    EXPECT_EQ(r.getWidth(), 10);
    EXPECT_EQ(r.getHeight(), 3);
    r.set(ZKVec2i(1, 1), ZKPixSize(0, 3));
    EXPECT_TRUE(r.isEmpty());
    EXPECT_EQ(r.flags, ZKPixRect::s_EMPTY);
    // Coordinates saturate instead of overflowing.
    r.set(ZKVec2i(INT_MAX - 1, 0), ZKPixSize(10, 1));
    EXPECT_EQ(r.right, INT_MAX);
    r.set(ZKPixRect(1, 2, 3, 4));
    EXPECT_EQ(r, ZKPixRect(1, 2, 3, 4));
    EXPECT_TRUE(ZKPixRect(5, 0, 5, 10).isEmpty());
}

TEST(ZKPixRect, AddGrowsWithoutLookingAtEmptiness) {
    ZKPixRect r;
    r.set(2, 2);
    r.addNoEmptyTest(5, 0);
    EXPECT_EQ(r, ZKPixRect(2, 0, 6, 3));
    r.addNoEmptyTest(ZKPixRect(-1, 1, 3, 9));
    EXPECT_EQ(r, ZKPixRect(-1, 0, 6, 9));

    // A default rectangle is not tested: its zero corner is taken in, and it
    // stays marked.
    ZKPixRect unset;
    unset.addNoEmptyTest(4, 4);
    EXPECT_EQ(unset.left, 0);
    EXPECT_EQ(unset.right, 5);
    EXPECT_TRUE(unset.isEmpty());
}

TEST(ZKPixRect, IntersectionAndContainment) {
    const ZKPixRect a(0, 0, 10, 10), b(5, 5, 15, 15), c(10, 0, 20, 10);
    EXPECT_TRUE(ZKPixRect::testIntersection(a, b));
    EXPECT_FALSE(ZKPixRect::testIntersection(a, c)); // right is exclusive
    EXPECT_FALSE(ZKPixRect::testIntersection(a, ZKPixRect()));

    ZKPixRect i = a;
    i.intersectWith(b);
    EXPECT_EQ(i, ZKPixRect(5, 5, 10, 10));
    i = a;
    i.intersectWith(c);
    EXPECT_TRUE(i.isEmpty());

    EXPECT_TRUE(a.contains(ZKPixRect(2, 3, 10, 10)));
    EXPECT_TRUE(a.contains(a));
    EXPECT_FALSE(a.contains(b));
    EXPECT_FALSE(a.contains(ZKPixRect()));
    EXPECT_FALSE(ZKPixRect().contains(ZKPixRect(0, 0, 0, 0)));
}
