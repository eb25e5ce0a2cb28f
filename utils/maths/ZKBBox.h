// ZKBBox.h: axis-aligned bounding intervals and boxes in one, two and three
// dimensions, ZKBBox1f, ZKBBox2f and ZKBBox3f, all in float.
//
// A box is its min followed by its max. Empty convention: a box is empty when
// its max is not >= its min on the first axis; only the first axis is tested,
// so a box whose x interval is valid and whose y interval is inverted counts
// as non-empty. A default box is empty (min = FLT_MAX, max = -FLT_MAX on every
// axis); setEmpty() restores that state.
//
// Growing: add() of a point into an empty box makes the box that point; into
// a non-empty box it moves, per axis, the min down when the value is below it
// or else the max up when the value is above it. addInitialized() does the
// same without the empty test (the caller guarantees a non-empty box).
//
// Plain values: no virtual members, no heap storage, no shared state.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKVec.h"

#include <cfloat>

class ZKUTILS_EXPORT ZKBBox1f {
public:
    float min = FLT_MAX;
    float max = -FLT_MAX;

    constexpr ZKBBox1f() = default;
    constexpr ZKBBox1f(float min_, float max_) : min(min_), max(max_) {}

    // Kept: !(max >= min), so a NaN bound also makes the interval empty.
    bool isEmpty() const { return !(max >= min); }
    void setEmpty() { min = FLT_MAX, max = -FLT_MAX; }

    void add(float v);
    // Adds each value in order.
    void add(const ZKStaticArray<float>& values);
    // An empty interval takes other's two values as they are, even when other
    // is empty; a non-empty one adds other.min and then other.max as values,
    // whether other is empty or not.
    void add(const ZKBBox1f& other);

    // min <= v <= max.
    bool contains(float v) const { return min <= v && v <= max; }
    // The closed intervals overlap.
    bool intersects(const ZKBBox1f& other) const {
        return !(min > other.max) && !(other.min > max);
    }
    // Narrows this interval to its overlap with other; the result may be empty.
    void intersectWith(const ZKBBox1f& other);

    float getSize() const { return max - min; }
    float getCenter() const { return (min + max) * 0.5f; }
};

class ZKUTILS_EXPORT ZKBBox2f {
public:
    ZKVec2f min{FLT_MAX, FLT_MAX};
    ZKVec2f max{-FLT_MAX, -FLT_MAX};

    constexpr ZKBBox2f() = default;
    constexpr ZKBBox2f(const ZKVec2f& min_, const ZKVec2f& max_) : min(min_), max(max_) {}

    // Only the first axis is tested: max.x < min.x.
    bool isEmpty() const { return max.x < min.x; }
    void setEmpty() { *this = ZKBBox2f(); }

    void add(const ZKVec2f& p);
    void addInitialized(const ZKVec2f& p);
    // addInitialized(other.min), then addInitialized(other.max).
    void addInitialized(const ZKBBox2f& other);
    void add(const ZKStaticArray<ZKVec2f>& points);
    // As ZKBBox1f::add(const ZKBBox1f&), per axis.
    void add(const ZKBBox2f& other);

    ZKVec2f getSize() const { return max - min; }
    ZKVec2f getCenter() const { return (min + max) * 0.5f; }
    // Largest, smallest edge length; length of the diagonal max − min.
    float getMaxSize() const;
    float getMinSize() const;
    float getDiameter() const;

    // min <= p <= max on every axis; the second form widens the box by eps
    // (bounds inclusive).
    bool containsPoint(const ZKVec2f& p) const;
    bool containsPoint(const ZKVec2f& p, float eps) const;
    // The closed boxes overlap on every axis; the second form widens each
    // interval by eps.
    bool intersectBBox(const ZKBBox2f& other) const;
    bool intersectBBox(const ZKBBox2f& other, float eps) const;

    // Slab intersection of the segment ab with the closed box. On success
    // returns true with the parameters along ab (0 at a, 1 at b) where the
    // segment enters (t, or tIn) and leaves (tOut) the box, 0 <= tIn <= tOut
    // <= 1; a starting inside gives tIn = 0. An axis along which the segment
    // does not move (equal coordinates) only tests a's coordinate. An empty
    // box, or one inverted on an axis, is never crossed. On false nothing is
    // written.
    bool intersectSegment(const ZKVec2f& a, const ZKVec2f& b, float& t) const;
    bool intersectSegment(const ZKVec2f& a, const ZKVec2f& b, float& tIn, float& tOut) const;

    // min2, max2: squared smallest and largest distances from p to the box
    // (min2 is 0 inside). The first form also returns the point of the box
    // nearest to p (p clamped to the box).
    ZKVec2f getNearestPointInBBoxMinMaxDistance2(const ZKVec2f& p, float& min2, float& max2) const;
    void getMinMaxDistance2(const ZKVec2f& p, float& min2, float& max2) const;
};

class ZKUTILS_EXPORT ZKBBox3f {
public:
    ZKVec3f min{FLT_MAX, FLT_MAX, FLT_MAX};
    ZKVec3f max{-FLT_MAX, -FLT_MAX, -FLT_MAX};

    constexpr ZKBBox3f() = default;
    constexpr ZKBBox3f(const ZKVec3f& min_, const ZKVec3f& max_) : min(min_), max(max_) {}

    // Only the first axis is tested: max.x < min.x.
    bool isEmpty() const { return max.x < min.x; }
    void setEmpty() { *this = ZKBBox3f(); }

    void add(const ZKVec3f& p);
    // Adds (x, y) on the first two axes in the same way; z is not touched.
    void add(const ZKVec2f& p);
    void addInitialized(const ZKVec3f& p);
    // addInitialized(other.min), then addInitialized(other.max).
    void addInitialized(const ZKBBox3f& other);
    void add(const ZKStaticArray<ZKVec3f>& points);
    // As ZKBBox1f::add(const ZKBBox1f&), per axis.
    void add(const ZKBBox3f& other);

    ZKVec3f getSize() const { return max - min; }
    ZKVec3f getCenter() const { return (min + max) * 0.5f; }
    // Largest, smallest edge length; length of the diagonal max − min.
    float getMaxSize() const;
    float getMinSize() const;
    float getDiameter() const;

    // min <= p <= max on every axis; the second form widens the box by eps
    // (bounds inclusive).
    bool containsPoint(const ZKVec3f& p) const;
    bool containsPoint(const ZKVec3f& p, float eps) const;
    // The closed boxes overlap on every axis; the second form widens each
    // interval by eps.
    bool intersectBBox(const ZKBBox3f& other) const;
    bool intersectBBox(const ZKBBox3f& other, float eps) const;

    // As ZKBBox2f::intersectSegment, in 3D.
    bool intersectSegment(const ZKVec3f& a, const ZKVec3f& b, float& t) const;
    bool intersectSegment(const ZKVec3f& a, const ZKVec3f& b, float& tIn, float& tOut) const;

    // As ZKBBox2f, in 3D.
    ZKVec3f getNearestPointInBBoxMinMaxDistance2(const ZKVec3f& p, float& min2, float& max2) const;
    void getMinMaxDistance2(const ZKVec3f& p, float& min2, float& max2) const;
};
