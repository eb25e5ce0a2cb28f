#include "ZKBBox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <random>

namespace {

template <typename B, typename V> void expectBounds(const B& box, const V& min, const V& max) {
    EXPECT_EQ(box.min, min);
    EXPECT_EQ(box.max, max);
}

} // namespace

// min then max, nothing else.
static_assert(sizeof(ZKBBox1f) == 2 * sizeof(float) && sizeof(ZKBBox2f) == 4 * sizeof(float) &&
              sizeof(ZKBBox3f) == 6 * sizeof(float));

TEST(ZKBBox1f, EmptyIntervalGrowsFromItsFirstValue) {
    ZKBBox1f box;
    EXPECT_TRUE(box.isEmpty());
    // Kept: a NaN bound counts as empty, since !(max >= min).
    EXPECT_TRUE(ZKBBox1f(0.0f, std::numeric_limits<float>::quiet_NaN()).isEmpty());
    EXPECT_FALSE(ZKBBox1f(2.0f, 2.0f).isEmpty());

    box.add(3.0f);
    expectBounds(box, 3.0f, 3.0f);
    box.add(ZKArray<float>{5.0f, -1.0f, 4.0f});
    expectBounds(box, -1.0f, 5.0f);
    EXPECT_TRUE(box.contains(-1.0f) && box.contains(5.0f));
    EXPECT_FALSE(box.contains(5.5f));
}

TEST(ZKBBox1f, AddingAnIntervalDoesNotTestIt) {
    // Kept: a non-empty interval is extended by an empty other's bounds.
    ZKBBox1f box(0.0f, 1.0f);
    box.add(ZKBBox1f(5.0f, 2.0f));
    expectBounds(box, 0.0f, 5.0f);

    // Kept: an empty interval copies other as it is, even an empty one.
    ZKBBox1f empty;
    empty.add(ZKBBox1f(5.0f, 2.0f));
    expectBounds(empty, 5.0f, 2.0f);

    ZKBBox1f grown(0.0f, 1.0f);
    grown.add(ZKBBox1f(-2.0f, 0.5f));
    expectBounds(grown, -2.0f, 1.0f);
}

TEST(ZKBBox1f, OverlapAndNarrowing) {
    const ZKBBox1f a(0.0f, 2.0f);
    EXPECT_TRUE(a.intersects(ZKBBox1f(2.0f, 3.0f))); // touching counts
    EXPECT_FALSE(a.intersects(ZKBBox1f(2.5f, 3.0f)) || ZKBBox1f(2.5f, 3.0f).intersects(a));

    ZKBBox1f n = a;
    n.intersectWith(ZKBBox1f(1.0f, 5.0f));
    expectBounds(n, 1.0f, 2.0f);
    n.intersectWith(ZKBBox1f(3.0f, 4.0f));
    EXPECT_TRUE(n.isEmpty());
}

TEST(ZKBBox3f, OnlyTheFirstAxisDecidesEmptiness) {
    EXPECT_TRUE(ZKBBox3f().isEmpty());
    // Valid x, inverted y: not empty, so add() takes the growing path.
    ZKBBox3f box(ZKVec3f(0, 5, 0), ZKVec3f(1, 2, 1));
    EXPECT_FALSE(box.isEmpty());
    box.add(ZKVec3f(0.5f, 3.0f, 0.5f));
    expectBounds(box, ZKVec3f(0, 3, 0), ZKVec3f(1, 2, 1));
    EXPECT_FALSE(box.containsPoint(ZKVec3f(0.5f, 2.5f, 0.5f)));

    // Unlike ZKBBox1f, the box tests max.x < min.x: a NaN bound is not empty.
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(ZKBBox3f(ZKVec3f(nan, 0, 0), ZKVec3f(1, 1, 1)).isEmpty());
    EXPECT_FALSE(ZKBBox2f(ZKVec2f(0, 0), ZKVec2f(nan, 1)).isEmpty());

    // Inverted x only: empty, the first point replaces everything.
    ZKBBox3f xInverted(ZKVec3f(1, 0, 0), ZKVec3f(0, 1, 1));
    EXPECT_TRUE(xInverted.isEmpty());
    xInverted.add(ZKVec3f(7, 8, 9));
    expectBounds(xInverted, ZKVec3f(7, 8, 9), ZKVec3f(7, 8, 9));
    EXPECT_EQ(xInverted.getMaxSize(), 0.0f);

    ZKBBox2f box2(ZKVec2f(0, 1), ZKVec2f(1, 0));
    EXPECT_FALSE(box2.isEmpty());
    box2.setEmpty();
    EXPECT_TRUE(box2.isEmpty());
}

TEST(ZKBBox3f, GrowingSizesAndMerging) {
    ZKBBox3f box;
    box.add(ZKStaticArray<ZKVec3f>{ZKVec3f(1, 2, 3), ZKVec3f(-1, 4, 3), ZKVec3f(0, 0, 5)});
    expectBounds(box, ZKVec3f(-1, 0, 3), ZKVec3f(1, 4, 5));
    EXPECT_EQ(box.getMaxSize(), 4.0f);
    EXPECT_EQ(box.getMinSize(), 2.0f);
    EXPECT_FLOAT_EQ(box.getDiameter(), std::sqrt(24.0f));
    EXPECT_EQ(box.getCenter(), ZKVec3f(0, 2, 4));

    // A 2D point only moves x and y; z of an empty box stays as it was.
    ZKBBox3f flat;
    flat.add(ZKVec2f(2, 3));
    expectBounds(flat, ZKVec3f(2, 3, FLT_MAX), ZKVec3f(2, 3, -FLT_MAX));
    flat.add(ZKVec2f(-2, 5));
    expectBounds(flat, ZKVec3f(-2, 3, FLT_MAX), ZKVec3f(2, 5, -FLT_MAX));

    // addInitialized skips the empty test: on a default box the first value
    // only lowers the min.
    ZKBBox3f raw;
    raw.addInitialized(ZKVec3f(1, 1, 1));
    expectBounds(raw, ZKVec3f(1, 1, 1), ZKVec3f(-FLT_MAX, -FLT_MAX, -FLT_MAX));
    ZKBBox3f unit(ZKVec3f(0, 0, 0), ZKVec3f(1, 1, 1));
    unit.addInitialized(ZKBBox3f(ZKVec3f(-1, 0.5f, 0), ZKVec3f(0.5f, 2, 3)));
    expectBounds(unit, ZKVec3f(-1, 0, 0), ZKVec3f(1, 2, 3));

    // add(box) follows the ZKBBox1f rule: an empty other still extends.
    ZKBBox3f merged(ZKVec3f(0, 0, 0), ZKVec3f(1, 1, 1));
    merged.add(ZKBBox3f(ZKVec3f(3, 3, 3), ZKVec3f(2, 2, 2)));
    EXPECT_EQ(merged.max, ZKVec3f(3, 3, 3));
    ZKBBox3f fromEmpty;
    fromEmpty.add(unit);
    expectBounds(fromEmpty, unit.min, unit.max);
}

TEST(ZKBBox3f, ContainmentAndOverlapAreInclusive) {
    const ZKBBox3f box(ZKVec3f(0, 0, 0), ZKVec3f(1, 1, 1));
    EXPECT_TRUE(box.containsPoint(ZKVec3f(1, 0, 0.5f)));
    EXPECT_FALSE(box.containsPoint(ZKVec3f(1.25f, 0.5f, 0.5f)));
    // A point exactly eps outside a face is accepted.
    EXPECT_TRUE(box.containsPoint(ZKVec3f(1.25f, 0.5f, 0.5f), 0.25f));
    EXPECT_FALSE(box.containsPoint(ZKVec3f(1.25f, 0.5f, 0.5f), 0.2f));
    EXPECT_FALSE(ZKBBox3f().containsPoint(ZKVec3f(0, 0, 0)));

    const ZKBBox3f touching(ZKVec3f(1, 0, 0), ZKVec3f(2, 1, 1));
    EXPECT_TRUE(box.intersectBBox(touching));
    const ZKBBox3f apart(ZKVec3f(1.5f, 0, 0), ZKVec3f(2, 1, 1));
    EXPECT_FALSE(box.intersectBBox(apart));
    // Each interval widened by eps: a gap of 2·eps still overlaps.
    EXPECT_TRUE(box.intersectBBox(apart, 0.25f));
    EXPECT_FALSE(box.intersectBBox(apart, 0.2f));
    const ZKBBox3f apartInZ(ZKVec3f(0, 0, 3), ZKVec3f(1, 1, 4));
    EXPECT_FALSE(box.intersectBBox(apartInZ));

    const ZKBBox2f square(ZKVec2f(0, 0), ZKVec2f(2, 2));
    EXPECT_TRUE(square.containsPoint(ZKVec2f(2, 2)));
    EXPECT_FALSE(square.containsPoint(ZKVec2f(2, 2.5f)));
    EXPECT_TRUE(square.intersectBBox(ZKBBox2f(ZKVec2f(2, 2), ZKVec2f(3, 3))));
    EXPECT_FALSE(square.intersectBBox(ZKBBox2f(ZKVec2f(0, 3), ZKVec2f(1, 4))));
}

TEST(ZKBBox3f, NearestPointAndDistanceBounds) {
    const ZKBBox3f box(ZKVec3f(0, 0, 0), ZKVec3f(1, 1, 1));
    float min2 = -1, max2 = -1;
    const ZKVec3f nearest =
        box.getNearestPointInBBoxMinMaxDistance2(ZKVec3f(2, 0.5f, -1), min2, max2);
    EXPECT_EQ(nearest, ZKVec3f(1, 0.5f, 0));
    EXPECT_EQ(min2, 2.0f);
    EXPECT_EQ(max2, 8.25f); // to the corner (0, 0 or 1, 1)

    // max2 is the farthest corner and min2 is 0 inside, for random points.
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> coord(-3.0f, 3.0f);
    const ZKBBox3f b(ZKVec3f(-1, 0, 0.5f), ZKVec3f(2, 1, 1.5f));
    for (int i = 0; i < 200; ++i) {
        const ZKVec3f p(coord(rng), coord(rng), coord(rng));
        b.getMinMaxDistance2(p, min2, max2);
        float far2 = 0.0f;
        for (int c = 0; c < 8; ++c) {
            const ZKVec3f corner((c & 1) ? b.max.x : b.min.x, (c & 2) ? b.max.y : b.min.y,
                                 (c & 4) ? b.max.z : b.min.z);
            far2 = std::max(far2, (p - corner).sqrLength());
        }
        EXPECT_NEAR(max2, far2, 1e-4f);
        if (b.containsPoint(p)) {
            EXPECT_EQ(min2, 0.0f);
        } else {
            EXPECT_GT(min2, 0.0f);
        }
    }

    const ZKBBox2f square(ZKVec2f(0, 0), ZKVec2f(2, 2));
    EXPECT_EQ(square.getNearestPointInBBoxMinMaxDistance2(ZKVec2f(1, 5), min2, max2),
              ZKVec2f(1, 2));
    EXPECT_EQ(min2, 9.0f);
    EXPECT_EQ(max2, 26.0f);
}

TEST(ZKBBox3f, SegmentIntersectionAgreesWithDenseSampling) {
    std::mt19937 rng(20240601);
    std::uniform_real_distribution<float> coord(-2.0f, 2.0f);
    std::uniform_real_distribution<float> extent(0.1f, 2.5f);
    constexpr int samples = 2000;
    int hits = 0;
    for (int trial = 0; trial < 400; ++trial) {
        const ZKVec3f lo(coord(rng), coord(rng), coord(rng));
        const ZKBBox3f box(lo, lo + ZKVec3f(extent(rng), extent(rng), extent(rng)));
        const ZKVec3f a(coord(rng), coord(rng), coord(rng));
        const ZKVec3f b(coord(rng), coord(rng), coord(rng));
        float firstInside = 2.0f, lastInside = -1.0f;
        for (int i = 0; i <= samples; ++i) {
            const float t = float(i) / samples;
            if (box.containsPoint(a + (b - a) * t)) {
                firstInside = std::min(firstInside, t);
                lastInside = std::max(lastInside, t);
            }
        }
        float tIn = -5.0f, tOut = -5.0f, t = -5.0f;
        const bool crossed = box.intersectSegment(a, b, tIn, tOut);
        EXPECT_EQ(box.intersectSegment(a, b, t), crossed);
        if (lastInside >= 0.0f) {
            ASSERT_TRUE(crossed) << trial;
            EXPECT_LE(tIn, firstInside + 1e-5f);
            EXPECT_GE(tOut, lastInside - 1e-5f);
            EXPECT_EQ(t, tIn);
        }
        if (crossed) {
            ++hits;
            EXPECT_LE(0.0f, tIn);
            EXPECT_LE(tIn, tOut);
            EXPECT_LE(tOut, 1.0f);
            // The parameters are on the box, whatever sampling missed.
            EXPECT_TRUE(box.containsPoint(a + (b - a) * tIn, 1e-4f)) << trial;
            EXPECT_TRUE(box.containsPoint(a + (b - a) * tOut, 1e-4f)) << trial;
            // Sampling misses only crossings shorter than its step.
            if (lastInside < 0.0f) {
                EXPECT_LT(tOut - tIn, 2.0f / samples) << trial;
            }
        }
    }
    EXPECT_GT(hits, 30); // the draw exercises both outcomes

    const ZKBBox3f unit(ZKVec3f(0, 0, 0), ZKVec3f(1, 1, 1));
    float tIn, tOut;
    // Starting inside enters at 0; an axis-parallel segment tests the origin.
    ASSERT_TRUE(
        unit.intersectSegment(ZKVec3f(0.5f, 0.5f, 0.5f), ZKVec3f(0.5f, 0.5f, 3), tIn, tOut));
    EXPECT_EQ(tIn, 0.0f);
    EXPECT_FLOAT_EQ(tOut, 0.2f);
    EXPECT_FALSE(unit.intersectSegment(ZKVec3f(2, 0.5f, 0), ZKVec3f(2, 0.5f, 1), tIn, tOut));
    EXPECT_FALSE(ZKBBox3f().intersectSegment(ZKVec3f(0, 0, 0), ZKVec3f(1, 1, 1), tIn, tOut));

    const ZKBBox2f square(ZKVec2f(0, 0), ZKVec2f(2, 2));
    ASSERT_TRUE(square.intersectSegment(ZKVec2f(-2, 1), ZKVec2f(2, 1), tIn, tOut));
    EXPECT_EQ(tIn, 0.5f);
    EXPECT_EQ(tOut, 1.0f);
    EXPECT_FALSE(square.intersectSegment(ZKVec2f(-2, 3), ZKVec2f(2, 3), tIn));
}
