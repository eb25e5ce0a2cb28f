// ZKLine.h: the infinite 3D lines ZKLine3f (float) and ZKLine3d (double).
//
// A line is its origin followed by its direction (three values each); its
// points are origin + t·dir. The distance routines of ZKGeomMaths take the
// direction as unit length; the intersection routines accept any length and
// give parameters in units of the direction. Plain values, no shared state.
#pragma once

#include "ZKExport.h"
#include "ZKVec.h"

template <typename V> class ZKLine3Base {
public:
    using vec_type = V;
    using value_type = typename V::value_type;

    V origin;
    V dir;

    constexpr ZKLine3Base() = default;
    constexpr ZKLine3Base(const V& origin_, const V& dir_) : origin(origin_), dir(dir_) {}

    // origin + t·dir.
    V pointAt(value_type t) const { return origin + dir * t; }
};

class ZKUTILS_EXPORT ZKLine3f : public ZKLine3Base<ZKVec3f> {
public:
    using ZKLine3Base::ZKLine3Base;
    constexpr ZKLine3f() = default;
};

class ZKUTILS_EXPORT ZKLine3d : public ZKLine3Base<ZKVec3d> {
public:
    using ZKLine3Base::ZKLine3Base;
    constexpr ZKLine3d() = default;
    explicit ZKLine3d(const ZKLine3f& l) : ZKLine3Base(ZKVec3d(l.origin), ZKVec3d(l.dir)) {}
};
