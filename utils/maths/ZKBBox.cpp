#include "ZKBBox.h"

#include "internal/ZKBBoxSlabs.h"

#include <algorithm>
#include <cmath>

// ZKBBox2f and ZKBBox3f share every algorithm below, written once over the
// box type B and its vector type V (2 or 3 components, read with operator[]).
namespace {

// Grows the first N axes of box by the point p.
template <int N, typename B, typename V> void growAxes(B& box, const V& p) {
    for (int i = 0; i < N; ++i) {
        if (p[i] < box.min[i])
            box.min[i] = p[i];
        else if (p[i] > box.max[i])
            box.max[i] = p[i];
    }
}

template <typename B, typename V> void addPointInitialized(B& box, const V& p) {
    growAxes<V::size()>(box, p);
}

template <typename B, typename V> void addPoint(B& box, const V& p) {
    if (box.isEmpty()) {
        box.min = p;
        box.max = p;
        return;
    }
    addPointInitialized(box, p);
}

template <typename B> void addBoxInitialized(B& box, const B& other) {
    addPointInitialized(box, other.min);
    addPointInitialized(box, other.max);
}

template <typename B> void addBox(B& box, const B& other) {
    // Kept: an empty box copies other as it is, even an empty other, and a
    // non-empty box adds other's bounds as points without testing other.
    if (box.isEmpty()) {
        box = other;
        return;
    }
    addBoxInitialized(box, other);
}

// The edge lengths folded from the first axis on by pick (std::max or std::min).
template <typename B, typename Pick> float foldEdges(const B& box, Pick pick) {
    float size = box.max[0] - box.min[0];
    for (int i = 1; i < decltype(box.min)::size(); ++i)
        size = pick(size, box.max[i] - box.min[i]);
    return size;
}

template <typename B> float maxSize(const B& box) {
    return foldEdges(box, [](float a, float b) { return std::max(a, b); });
}

template <typename B> float minSize(const B& box) {
    return foldEdges(box, [](float a, float b) { return std::min(a, b); });
}

template <typename B, typename V> bool containsPointEps(const B& box, const V& p, float eps) {
    for (int i = 0; i < V::size(); ++i) {
        if (!(box.min[i] - eps <= p[i] && p[i] <= box.max[i] + eps))
            return false;
    }
    return true;
}

template <typename B> bool intersectBoxEps(const B& box, const B& other, float eps) {
    for (int i = 0; i < decltype(box.min)::size(); ++i) {
        if (box.min[i] - eps > other.max[i] + eps || other.min[i] - eps > box.max[i] + eps)
            return false;
    }
    return true;
}

// The part of a + t·(b − a), t in [0, 1], inside the box.
template <typename B, typename V>
bool clipSegment(const B& box, const V& a, const V& b, float& tIn, float& tOut) {
    if (box.isEmpty())
        return false;
    float enter = 0.0f;
    float leave = 1.0f;
    if (!ZKInternal::clipSlabs(box, a, b - a, 0.0f, enter, leave))
        return false;
    tIn = enter;
    tOut = leave;
    return true;
}

template <typename B, typename V>
V nearestAndDistances2(const B& box, const V& p, float& min2, float& max2) {
    V nearest = p;
    float near2 = 0.0f;
    float far2 = 0.0f;
    for (int i = 0; i < V::size(); ++i) {
        if (p[i] < box.min[i])
            nearest[i] = box.min[i];
        else if (p[i] > box.max[i])
            nearest[i] = box.max[i];
        const float dn = p[i] - nearest[i];
        const float dFar = std::max(std::fabs(p[i] - box.min[i]), std::fabs(p[i] - box.max[i]));
        near2 += dn * dn;
        far2 += dFar * dFar;
    }
    min2 = near2;
    max2 = far2;
    return nearest;
}

} // namespace

void ZKBBox1f::add(float v) {
    if (isEmpty()) {
        min = max = v;
    } else if (v < min) {
        min = v;
    } else if (v > max) {
        max = v;
    }
}

void ZKBBox1f::add(const ZKStaticArray<float>& values) {
    for (float v : values)
        add(v);
}

void ZKBBox1f::add(const ZKBBox1f& other) {
    // Kept: an empty interval copies other even when other is empty, and a
    // non-empty one is extended by other's bounds without testing other.
    if (isEmpty()) {
        *this = other;
        return;
    }
    add(other.min);
    add(other.max);
}

void ZKBBox1f::intersectWith(const ZKBBox1f& other) {
    if (other.min > min)
        min = other.min;
    if (other.max < max)
        max = other.max;
}

void ZKBBox2f::add(const ZKVec2f& p) {
    addPoint(*this, p);
}
void ZKBBox2f::addInitialized(const ZKVec2f& p) {
    addPointInitialized(*this, p);
}
void ZKBBox2f::addInitialized(const ZKBBox2f& other) {
    addBoxInitialized(*this, other);
}
void ZKBBox2f::add(const ZKStaticArray<ZKVec2f>& points) {
    for (const ZKVec2f& p : points)
        addPoint(*this, p);
}
void ZKBBox2f::add(const ZKBBox2f& other) {
    addBox(*this, other);
}
float ZKBBox2f::getMaxSize() const {
    return maxSize(*this);
}
float ZKBBox2f::getMinSize() const {
    return minSize(*this);
}
float ZKBBox2f::getDiameter() const {
    return (max - min).length();
}
bool ZKBBox2f::containsPoint(const ZKVec2f& p) const {
    return containsPointEps(*this, p, 0.0f);
}
bool ZKBBox2f::containsPoint(const ZKVec2f& p, float eps) const {
    return containsPointEps(*this, p, eps);
}
bool ZKBBox2f::intersectBBox(const ZKBBox2f& other) const {
    return intersectBoxEps(*this, other, 0.0f);
}
bool ZKBBox2f::intersectBBox(const ZKBBox2f& other, float eps) const {
    return intersectBoxEps(*this, other, eps);
}
bool ZKBBox2f::intersectSegment(const ZKVec2f& a, const ZKVec2f& b, float& t) const {
    float tOut;
    return clipSegment(*this, a, b, t, tOut);
}
bool ZKBBox2f::intersectSegment(const ZKVec2f& a, const ZKVec2f& b, float& tIn, float& tOut) const {
    return clipSegment(*this, a, b, tIn, tOut);
}
ZKVec2f ZKBBox2f::getNearestPointInBBoxMinMaxDistance2(const ZKVec2f& p, float& min2,
                                                       float& max2) const {
    return nearestAndDistances2(*this, p, min2, max2);
}
void ZKBBox2f::getMinMaxDistance2(const ZKVec2f& p, float& min2, float& max2) const {
    nearestAndDistances2(*this, p, min2, max2);
}

void ZKBBox3f::add(const ZKVec3f& p) {
    addPoint(*this, p);
}
void ZKBBox3f::add(const ZKVec2f& p) {
    if (isEmpty()) {
        min.x = max.x = p.x;
        min.y = max.y = p.y;
        return;
    }
    growAxes<2>(*this, p);
}
void ZKBBox3f::addInitialized(const ZKVec3f& p) {
    addPointInitialized(*this, p);
}
void ZKBBox3f::addInitialized(const ZKBBox3f& other) {
    addBoxInitialized(*this, other);
}
void ZKBBox3f::add(const ZKStaticArray<ZKVec3f>& points) {
    for (const ZKVec3f& p : points)
        addPoint(*this, p);
}
void ZKBBox3f::add(const ZKBBox3f& other) {
    addBox(*this, other);
}
float ZKBBox3f::getMaxSize() const {
    return maxSize(*this);
}
float ZKBBox3f::getMinSize() const {
    return minSize(*this);
}
float ZKBBox3f::getDiameter() const {
    return (max - min).length();
}
bool ZKBBox3f::containsPoint(const ZKVec3f& p) const {
    return containsPointEps(*this, p, 0.0f);
}
bool ZKBBox3f::containsPoint(const ZKVec3f& p, float eps) const {
    return containsPointEps(*this, p, eps);
}
bool ZKBBox3f::intersectBBox(const ZKBBox3f& other) const {
    return intersectBoxEps(*this, other, 0.0f);
}
bool ZKBBox3f::intersectBBox(const ZKBBox3f& other, float eps) const {
    return intersectBoxEps(*this, other, eps);
}
bool ZKBBox3f::intersectSegment(const ZKVec3f& a, const ZKVec3f& b, float& t) const {
    float tOut;
    return clipSegment(*this, a, b, t, tOut);
}
bool ZKBBox3f::intersectSegment(const ZKVec3f& a, const ZKVec3f& b, float& tIn, float& tOut) const {
    return clipSegment(*this, a, b, tIn, tOut);
}
ZKVec3f ZKBBox3f::getNearestPointInBBoxMinMaxDistance2(const ZKVec3f& p, float& min2,
                                                       float& max2) const {
    return nearestAndDistances2(*this, p, min2, max2);
}
void ZKBBox3f::getMinMaxDistance2(const ZKVec3f& p, float& min2, float& max2) const {
    nearestAndDistances2(*this, p, min2, max2);
}
