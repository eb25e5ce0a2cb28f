#include "ZKBoundingSphere.h"

void ZKBoundingSphere::add(const ZKVec3f& p) {
    if (isEmpty()) {
        center = p;
        radius = 0.0f;
        return;
    }
    const ZKVec3f toP = p - center;
    const float d = toP.length();
    if (d <= radius)
        return;
    const float k = (d - radius) / (2.0f * d);
    center += toP * k;
    radius = (radius + d) * 0.5f;
}

void ZKBoundingSphere::add(const ZKStaticArray<ZKVec3f>& points) {
    for (const ZKVec3f& p : points)
        add(p);
}
