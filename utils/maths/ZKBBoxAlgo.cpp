#include "ZKBBoxAlgo.h"

#include "ZKGeomMaths.h"
#include "ZKMatrixRoutines.h"

namespace {

// Corner i of the box: bit 0 picks x, bit 1 y, bit 2 z (0 = min, 1 = max).
ZKVec3f corner(const ZKBBox3f& box, int i) {
    return ZKVec3f((i & 1) ? box.max.x : box.min.x, (i & 2) ? box.max.y : box.min.y,
                   (i & 4) ? box.max.z : box.min.z);
}

// Rebuilds out from the eight corners of in, each mapped by `map` to a
// ZKVec3f and handed with out to `add`.
template <typename B, typename Map, typename Add>
void boundCorners(B& out, const ZKBBox3f& in, Map map, Add add) {
    out.setEmpty();
    if (in.isEmpty())
        return;
    for (int i = 0; i < 8; ++i)
        add(out, map(corner(in, i)));
}

// The corner as cameraProjPoint projects it.
auto cameraProjection(const ZKMatrix4f& m, float limit) {
    return [&m, limit](const ZKVec3f& c) {
        ZKVec3f p;
        ZKGeomMaths::cameraProjPoint(p, c, m, limit);
        return p;
    };
}

} // namespace

void ZKBBoxAlgo::transformBBox(ZKBBox3f& out, const ZKBBox3f& in, const ZKMatrix4f& m) {
    boundCorners(
        out, in,
        [&m](const ZKVec3f& c) {
            ZKVec3f p;
            ZKMatrixRoutines::mult_affineMatrix_Point3f(p.data(), m.m, c.data());
            return p;
        },
        [](ZKBBox3f& box, const ZKVec3f& p) { box.add(p); });
}

void ZKBBoxAlgo::cameraProjBBox(ZKBBox3f& out, const ZKBBox3f& in, const ZKMatrix4f& m, float limit,
                                bool skipBeyondLimit) {
    boundCorners(out, in, cameraProjection(m, limit),
                 [limit, skipBeyondLimit](ZKBBox3f& box, const ZKVec3f& p) {
                     if (!(skipBeyondLimit && p.z > limit))
                         box.add(p);
                 });
}

void ZKBBoxAlgo::cameraProjBBox(ZKBBox2f& out, const ZKBBox3f& in, const ZKMatrix4f& m,
                                float limit) {
    boundCorners(out, in, cameraProjection(m, limit),
                 [](ZKBBox2f& box, const ZKVec3f& p) { box.add(ZKVec2f(p.x, p.y)); });
}
