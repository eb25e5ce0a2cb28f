#include "ZKPixRect.h"

#include "ZKVec.h"

#include <algorithm>
#include <climits>

namespace {

int saturatedAdd(int a, int b) {
    const long long sum = (long long)a + b;
    return int(std::clamp<long long>(sum, INT_MIN, INT_MAX));
}

} // namespace

void ZKPixRect::set(int x, int y) {
    flags = 0;
    left = x;
    top = y;
    right = saturatedAdd(x, 1);
    bottom = saturatedAdd(y, 1);
}

void ZKPixRect::set(const ZKPixRect& r) {
    *this = r;
}

void ZKPixRect::set(const ZKVec2i& origin, const ZKPixSize& size) {
    flags = (size.width > 0 && size.height > 0) ? 0 : s_EMPTY;
    left = origin.x;
    top = origin.y;
    right = saturatedAdd(origin.x, size.width);
    bottom = saturatedAdd(origin.y, size.height);
}

void ZKPixRect::addNoEmptyTest(const ZKPixRect& r) {
    left = std::min(left, r.left);
    top = std::min(top, r.top);
    right = std::max(right, r.right);
    bottom = std::max(bottom, r.bottom);
}

void ZKPixRect::addNoEmptyTest(int x, int y) {
    left = std::min(left, x);
    top = std::min(top, y);
    right = std::max(right, saturatedAdd(x, 1));
    bottom = std::max(bottom, saturatedAdd(y, 1));
}

bool ZKPixRect::testIntersection(const ZKPixRect& a, const ZKPixRect& b) {
    if (a.isEmpty() || b.isEmpty())
        return false;
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

void ZKPixRect::intersectWith(const ZKPixRect& r) {
    const bool overlap = testIntersection(*this, r);
    left = std::max(left, r.left);
    top = std::max(top, r.top);
    right = std::min(right, r.right);
    bottom = std::min(bottom, r.bottom);
    if (!overlap)
        flags |= s_EMPTY;
}

bool ZKPixRect::contains(const ZKPixRect& r) const {
    if (isEmpty() || r.isEmpty())
        return false;
    return r.left >= left && r.top >= top && r.right <= right && r.bottom <= bottom;
}
