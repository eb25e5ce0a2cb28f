// ZKPlane.h: the 3D planes ZKPlane3f (float) and ZKPlane3d (double).
//
// A plane is its normal (a, b, c) followed by d: the set of points p with
// a·x + b·y + c·z + d = 0. The normal need not be unit length. Plain values,
// no shared state.
#pragma once

#include "ZKExport.h"
#include "ZKVec.h"

template <typename V> class ZKPlane3Base {
public:
    using vec_type = V;
    using value_type = typename V::value_type;

    V normal;
    value_type d = value_type(0);

    constexpr ZKPlane3Base() = default;
    constexpr ZKPlane3Base(const V& normal_, value_type d_) : normal(normal_), d(d_) {}

    // The plane of that normal through point.
    static ZKPlane3Base throughPoint(const V& normal, const V& point) {
        return ZKPlane3Base(normal, -normal.dot(point));
    }

    // n·p + d: zero on the plane, its sign tells the side.
    value_type evaluate(const V& p) const { return normal.dot(p) + d; }
};

class ZKUTILS_EXPORT ZKPlane3f : public ZKPlane3Base<ZKVec3f> {
public:
    using ZKPlane3Base::ZKPlane3Base;
    constexpr ZKPlane3f() = default;
    constexpr ZKPlane3f(const ZKPlane3Base& p) : ZKPlane3Base(p) {}
};

class ZKUTILS_EXPORT ZKPlane3d : public ZKPlane3Base<ZKVec3d> {
public:
    using ZKPlane3Base::ZKPlane3Base;
    constexpr ZKPlane3d() = default;
    constexpr ZKPlane3d(const ZKPlane3Base& p) : ZKPlane3Base(p) {}
    explicit ZKPlane3d(const ZKPlane3f& p) : ZKPlane3Base(ZKVec3d(p.normal), p.d) {}
};
