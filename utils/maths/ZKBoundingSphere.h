// ZKBoundingSphere.h: an incrementally grown bounding sphere, in float.
//
// The sphere is its centre followed by its radius. A radius of exactly -1
// marks the empty sphere; a default sphere is empty. Growing by a point
// outside the sphere moves and widens it just enough to enclose both the old
// sphere and the point, so the result depends on the order of the points and
// is not the smallest enclosing sphere.
//
// Plain value: no virtual members, no heap storage, no shared state.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKVec.h"

class ZKUTILS_EXPORT ZKBoundingSphere {
public:
    ZKVec3f center;
    float radius = -1.0f;

    constexpr ZKBoundingSphere() = default;
    constexpr ZKBoundingSphere(const ZKVec3f& center_, float radius_)
        : center(center_), radius(radius_) {}

    bool isEmpty() const { return radius == -1.0f; }
    void setEmpty() { radius = -1.0f; }

    // Sets the centre only; the radius is kept.
    void set(const ZKVec3f& p) { center = p; }
    // Empty sphere: centre p, radius 0. Otherwise, with d = |p − centre|:
    // nothing changes when d <= radius; else the centre moves towards p by
    // (d − radius) / (2d) of (p − centre) and the radius becomes
    // (radius + d) / 2.
    void add(const ZKVec3f& p);
    // Adds the points in order.
    void add(const ZKStaticArray<ZKVec3f>& points);
};
