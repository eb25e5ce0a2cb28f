// ZKSegment.h: the 3D segments ZKSegment3f (float) and ZKSegment3d (double).
//
// A segment is its first end point p0 followed by its second end point p1;
// its points are p0 + t·(p1 − p0) for t in [0, 1]. Plain values, no shared
// state.
#pragma once

#include "ZKExport.h"
#include "ZKVec.h"

template <typename V> class ZKSegment3Base {
public:
    using vec_type = V;
    using value_type = typename V::value_type;

    V p0;
    V p1;

    constexpr ZKSegment3Base() = default;
    constexpr ZKSegment3Base(const V& p0_, const V& p1_) : p0(p0_), p1(p1_) {}

    // p1 − p0.
    V getVector() const { return p1 - p0; }
    // p0 + t·(p1 − p0).
    V pointAt(value_type t) const { return p0 + (p1 - p0) * t; }
};

class ZKUTILS_EXPORT ZKSegment3f : public ZKSegment3Base<ZKVec3f> {
public:
    using ZKSegment3Base::ZKSegment3Base;
    constexpr ZKSegment3f() = default;
};

class ZKUTILS_EXPORT ZKSegment3d : public ZKSegment3Base<ZKVec3d> {
public:
    using ZKSegment3Base::ZKSegment3Base;
    constexpr ZKSegment3d() = default;
    explicit ZKSegment3d(const ZKSegment3f& s) : ZKSegment3Base(ZKVec3d(s.p0), ZKVec3d(s.p1)) {}
};
