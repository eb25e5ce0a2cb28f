// ZKBBoxSlabs.h: the slab clipping shared by the box's segment test and the
// line-box intersection of ZKGeomMaths. Private to the library.
#pragma once

#include <cmath>

namespace ZKInternal {

// Clips origin + t·dir, t in [enter, leave] on entry, against each axis
// interval [box.min[i], box.max[i]] of a non-empty box. An axis whose
// direction component has |d| <= parallelBelow (0: only an exact 0) does not
// move the parameters and only tests the origin's coordinate. An inverted
// axis never lets the line through. Returns false when the line misses;
// enter and leave are then meaningless.
template <typename B, typename V, typename T>
bool clipSlabs(const B& box, const V& origin, const V& dir, T parallelBelow, T& enter, T& leave) {
    for (int i = 0; i < V::size(); ++i) {
        const T o = origin[i];
        const T d = dir[i];
        if (std::fabs(d) <= parallelBelow) {
            if (!(box.min[i] <= o && o <= box.max[i]))
                return false;
            continue;
        }
        // The line enters through the face it meets first: min when it moves
        // up the axis, max when it moves down.
        const T t0 = ((d > T(0) ? box.min[i] : box.max[i]) - o) / d;
        const T t1 = ((d > T(0) ? box.max[i] : box.min[i]) - o) / d;
        if (t0 > enter)
            enter = t0;
        if (t1 < leave)
            leave = t1;
        if (!(enter <= leave))
            return false;
    }
    return true;
}

} // namespace ZKInternal
