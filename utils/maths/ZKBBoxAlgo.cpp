#include "ZKBBoxAlgo.h"

#include "ZKGeomMaths.h"
#include "ZKMatrixRoutines.h"

namespace {

// Corner i of the box: bit 0 picks x, bit 1 y, bit 2 z (0 = min, 1 = max).
ZKVec3f corner(const ZKBBox3f& box, int i) {
    return ZKVec3f((i & 1) ? box.max.x : box.min.x, (i & 2) ? box.max.y : box.min.y,
                   (i & 4) ? box.max.z : box.min.z);
}

} // namespace

void ZKBBoxAlgo::transformBBox(ZKBBox3f& out, const ZKBBox3f& in, const ZKMatrix4f& m) {
    out.setEmpty();
    if (in.isEmpty())
        return;
    for (int i = 0; i < 8; ++i) {
        const ZKVec3f c = corner(in, i);
        ZKVec3f p;
        ZKMatrixRoutines::mult_affineMatrix_Point3f(p.data(), m.m, c.data());
        out.add(p);
    }
}

void ZKBBoxAlgo::cameraProjBBox(ZKBBox3f& out, const ZKBBox3f& in, const ZKMatrix4f& m, float limit,
                                bool skipBeyondLimit) {
    out.setEmpty();
    if (in.isEmpty())
        return;
    for (int i = 0; i < 8; ++i) {
        ZKVec3f p;
        ZKGeomMaths::cameraProjPoint(p, corner(in, i), m, limit);
        if (skipBeyondLimit && p.z > limit)
            continue;
        out.add(p);
    }
}

void ZKBBoxAlgo::cameraProjBBox(ZKBBox2f& out, const ZKBBox3f& in, const ZKMatrix4f& m,
                                float limit) {
    out.setEmpty();
    if (in.isEmpty())
        return;
    for (int i = 0; i < 8; ++i) {
        ZKVec3f p;
        ZKGeomMaths::cameraProjPoint(p, corner(in, i), m, limit);
        out.add(ZKVec2f(p.x, p.y));
    }
}
