// ZKGeomMaths: lines and segments against planes, axis planes and boxes;
// plane against plane.
#include "ZKGeomMaths.h"

#include "internal/ZKBBoxSlabs.h"

#include <cmath>
#include <limits>

namespace {

// Which way the line parameter of inter_LinePlane points.
enum class LineParameter { Negated, Forward };

template <typename V, typename L, typename P, typename T>
unsigned int linePlaneCrossing(V& out, T& t, const L& line, const P& plane, LineParameter sign) {
    const T k = plane.normal.dot(line.dir);
    const T e = plane.normal.dot(line.origin) + plane.d;
    if (k > -1e-5 && k < 1e-5)
        return (e > -1e-5 && e < 1e-5) ? ZK_INTER_IN_PLANE : ZK_INTER_PARALLEL;
    if (sign == LineParameter::Negated) {
        t = e / k;
        out = line.origin - line.dir * t;
    } else {
        t = -e / k;
        out = line.origin + line.dir * t;
    }
    return ZK_INTER_ONE;
}

template <typename V, typename S, typename P, typename T>
unsigned int segPlaneCrossing(V& out, T& t, const S& seg, const P& plane, T eps) {
    V u = seg.p1 - seg.p0;
    const T length = u.normalize();
    if (length == T(0))
        return ZK_INTER_MISSED;
    const T k = plane.normal.dot(u);
    const T e = plane.normal.dot(seg.p0) + plane.d;
    if (k > -1e-5 && k < 1e-5) {
        // Kept: the incoming t is rescaled even though nothing is crossed.
        t /= length;
        return (e > -1e-5 && e < 1e-5) ? ZK_INTER_IN_PLANE : ZK_INTER_PARALLEL;
    }
    t = e / k;
    out = seg.p0 - u * t;
    t /= length;
    // Kept: the range test runs on the negated fraction as computed, the
    // sign convention of the float inter_LinePlane.
    if (t <= -eps || t > T(1) + eps)
        return ZK_INTER_MISSED;
    if (t < T(0)) {
        t = T(0);
        out = seg.p0;
    } else if (t > T(1)) {
        t = T(1);
        out = seg.p1;
    }
    return ZK_INTER_ONE;
}

// Crossing with the plane where coordinate `axis` equals v.
template <typename L, typename T>
unsigned int axisPlaneCrossing(T& t, const L& line, int axis, T v, T eps) {
    const T o = line.origin[axis];
    const T d = line.dir[axis];
    if (d > -eps && d < eps)
        return (o - v > -eps && o - v < eps) ? ZK_INTER_IN_PLANE : ZK_INTER_PARALLEL;
    t = (v - o) / d;
    return ZK_INTER_ONE;
}

// Crossing of segment pq with the axis-parallel segment where coordinate
// `fixed` equals c and the other coordinate runs from lo to hi.
unsigned int segAxisSegCrossing(const ZKVec2f& p, const ZKVec2f& q, int fixed, float c, float lo,
                                float hi, float& out) {
    const int other = 1 - fixed;
    const float span = q[fixed] - p[fixed];
    if (span == 0.0f)
        return p[fixed] == c ? ZK_INTER_ON_AXIS_LINE : ZK_INTER_MISSED;
    if ((p[fixed] <= c && c <= q[fixed]) || (q[fixed] <= c && c <= p[fixed])) {
        out = (c - p[fixed]) * (q[other] - p[other]) / span + p[other];
        return (lo <= out && out <= hi) ? ZK_INTER_ONE : ZK_INTER_MISSED;
    }
    return ZK_INTER_MISSED;
}

template <typename L, typename P> unsigned int planePlaneCrossing(L& out, const P& a, const P& b) {
    const ZKVec3d na(a.normal), nb(b.normal);
    const double aa = na.sqrLength();
    const double bb = nb.sqrLength();
    if (aa == 0.0 || bb == 0.0)
        return ZK_INTER_MISSED;
    const ZKVec3d u = na.cross(nb);
    const double uu = u.sqrLength(); // = aa·bb − ab²
    if (uu == 0.0 || uu < 1e-10 * aa * bb) {
        // Same plane when the offsets along the unit normals agree, the
        // normals being turned the same way.
        const double side = na.dot(nb) < 0.0 ? -1.0 : 1.0;
        const double gap = double(a.d) / std::sqrt(aa) - side * double(b.d) / std::sqrt(bb);
        return std::fabs(gap) < 1e-5 ? ZK_INTER_IN_PLANE : ZK_INTER_PARALLEL;
    }
    // The point nearest the origin lies in the span of the two normals.
    const double ab = na.dot(nb);
    const double ha = -double(a.d);
    const double hb = -double(b.d);
    const double alpha = (ha * bb - hb * ab) / uu;
    const double beta = (hb * aa - ha * ab) / uu;
    using V = decltype(out.origin);
    out.origin = V(na * alpha + nb * beta);
    out.dir = V(u / std::sqrt(uu));
    return ZK_INTER_ONE;
}

} // namespace

unsigned int ZKGeomMaths::inter_LinePlane(ZKVec3f& out, float& t, const ZKLine3f& line,
                                          const ZKPlane3f& plane) {
    // Kept: the float form's parameter is the opposite of the double form's.
    return linePlaneCrossing(out, t, line, plane, LineParameter::Negated);
}
unsigned int ZKGeomMaths::inter_LinePlane(ZKVec3d& out, double& t, const ZKLine3d& line,
                                          const ZKPlane3d& plane) {
    return linePlaneCrossing(out, t, line, plane, LineParameter::Forward);
}

unsigned int ZKGeomMaths::inter_SegPlane(ZKVec3f& out, float& t, const ZKSegment3f& seg,
                                         const ZKPlane3f& plane, float eps) {
    return segPlaneCrossing(out, t, seg, plane, eps);
}
unsigned int ZKGeomMaths::inter_SegPlane(ZKVec3d& out, double& t, const ZKSegment3d& seg,
                                         const ZKPlane3d& plane, double eps) {
    return segPlaneCrossing(out, t, seg, plane, eps);
}

unsigned int ZKGeomMaths::inter_LineBox(float& tIn, float& tOut, const ZKLine3f& line,
                                        const ZKBBox3f& box) {
    const float length = line.dir.length();
    if (box.isEmpty() || length == 0.0f)
        return ZK_INTER_MISSED;
    float enter = -std::numeric_limits<float>::infinity();
    float leave = std::numeric_limits<float>::infinity();
    if (!ZKInternal::clipSlabs(box, line.origin, line.dir, 1e-5f * length, enter, leave))
        return ZK_INTER_MISSED;
    tIn = enter;
    tOut = leave;
    return ZK_INTER_ONE;
}

unsigned int ZKGeomMaths::inter_PlanePlane(ZKLine3f& out, const ZKPlane3f& a, const ZKPlane3f& b) {
    return planePlaneCrossing(out, a, b);
}
unsigned int ZKGeomMaths::inter_PlanePlane(ZKLine3d& out, const ZKPlane3d& a, const ZKPlane3d& b) {
    return planePlaneCrossing(out, a, b);
}

unsigned int inter2d_Seg_VSeg(const ZKVec2f& p, const ZKVec2f& q, float x, float yMin, float yMax,
                              float& y) {
    return segAxisSegCrossing(p, q, 0, x, yMin, yMax, y);
}
unsigned int inter2d_Seg_HSeg(const ZKVec2f& p, const ZKVec2f& q, float y, float xMin, float xMax,
                              float& x) {
    return segAxisSegCrossing(p, q, 1, y, xMin, xMax, x);
}

unsigned int inter_LinePlaneYZ(float& t, const ZKLine3f& line, float v, float eps) {
    return axisPlaneCrossing(t, line, 0, v, eps);
}
unsigned int inter_LinePlaneXZ(float& t, const ZKLine3f& line, float v, float eps) {
    return axisPlaneCrossing(t, line, 1, v, eps);
}
unsigned int inter_LinePlaneXY(float& t, const ZKLine3f& line, float v, float eps) {
    return axisPlaneCrossing(t, line, 2, v, eps);
}
unsigned int inter_LinePlaneYZ(double& t, const ZKLine3d& line, double v, double eps) {
    return axisPlaneCrossing(t, line, 0, v, eps);
}
unsigned int inter_LinePlaneXZ(double& t, const ZKLine3d& line, double v, double eps) {
    return axisPlaneCrossing(t, line, 1, v, eps);
}
unsigned int inter_LinePlaneXY(double& t, const ZKLine3d& line, double v, double eps) {
    return axisPlaneCrossing(t, line, 2, v, eps);
}
