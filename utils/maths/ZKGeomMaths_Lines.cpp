// ZKGeomMaths: lines and segments against each other, in 3D and 2D.
//
// Every routine here computes in double; the float forms widen their inputs
// and round their results.
#include "ZKGeomMaths.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMeetDistance = 1e-5;
// Sine of the angle below which two directions are parallel, squared.
constexpr double kParallelSine2 = 1e-10;

ZKLine3d wide(const ZKLine3f& l) {
    return ZKLine3d(l);
}
const ZKLine3d& wide(const ZKLine3d& l) {
    return l;
}
ZKSegment3d wide(const ZKSegment3f& s) {
    return ZKSegment3d(s);
}
const ZKSegment3d& wide(const ZKSegment3d& s) {
    return s;
}

bool areParallel(const ZKVec3d& u, const ZKVec3d& v) {
    const double c2 = u.cross(v).sqrLength();
    return c2 == 0.0 || c2 < kParallelSine2 * u.sqrLength() * v.sqrLength();
}

// Parameters of the nearest points of a.origin + ta·a.dir and b.origin +
// tb·b.dir. Returns true when the lines are parallel (or a direction is
// zero): ta = 0 and tb puts b's point nearest to a.origin (0 for a zero b.dir).
bool nearestParameters(const ZKLine3d& a, const ZKLine3d& b, double& ta, double& tb) {
    const ZKVec3d w = a.origin - b.origin;
    const double aa = a.dir.sqrLength();
    const double ab = a.dir.dot(b.dir);
    const double bb = b.dir.sqrLength();
    const double aw = a.dir.dot(w);
    const double bw = b.dir.dot(w);
    if (areParallel(a.dir, b.dir)) {
        ta = 0.0;
        tb = bb > 0.0 ? bw / bb : 0.0;
        return true;
    }
    const double denom = a.dir.cross(b.dir).sqrLength(); // = aa·bb − ab²
    ta = (ab * bw - bb * aw) / denom;
    tb = (aa * bw - ab * aw) / denom;
    return false;
}

template <typename V, typename L, typename T>
void nearestPoints(V& pa, V& pb, T& ta, T& tb, bool& parallel, const L& a, const L& b) {
    const ZKLine3d& wa = wide(a);
    const ZKLine3d& wb = wide(b);
    double sa, sb;
    parallel = nearestParameters(wa, wb, sa, sb);
    pa = V(wa.pointAt(sa));
    pb = V(wb.pointAt(sb));
    ta = T(sa);
    tb = T(sb);
}

template <typename L, typename T>
T lineLineDistance(const L& a, const L& b, T& ta, T& tb, bool& parallel) {
    ZKVec3d pa, pb;
    nearestPoints(pa, pb, ta, tb, parallel, a, b);
    return T((pa - pb).length());
}

template <typename L, typename S, typename T>
T lineSegDistance(const L& line, const S& seg, T& tLine, T& tSeg) {
    const ZKLine3d& l = wide(line);
    const ZKSegment3d& s = wide(seg);
    const double dd = l.dir.sqrLength();
    double tl = 0.0, ts = 0.0;
    if (dd == 0.0) {
        // A zero direction leaves the point line.origin.
        ZKVec3d nearest;
        const double dist = ZKGeomMaths::distance_PointSeg(l.origin, s, nearest, ts);
        tLine = T(0);
        tSeg = T(ts);
        return T(dist);
    }
    const ZKLine3d segLine(s.p0, s.getVector());
    if (!nearestParameters(segLine, l, ts, tl)) {
        // The distance is convex in the segment fraction: clamping the
        // unbounded optimum is the bounded one.
        const double clamped = std::min(1.0, std::max(0.0, ts));
        if (clamped != ts) {
            ts = clamped;
            tl = (s.pointAt(ts) - l.origin).dot(l.dir) / dd;
        }
    }
    tLine = T(tl);
    tSeg = T(ts);
    return T((l.pointAt(tl) - s.pointAt(ts)).length());
}

template <typename V, typename L, typename T>
unsigned int lineLineCrossing(V& out, T& ta, T& tb, const L& a, const L& b) {
    const ZKLine3d& wa = wide(a);
    const ZKLine3d& wb = wide(b);
    if (wa.dir.sqrLength() == 0.0 || wb.dir.sqrLength() == 0.0)
        return ZK_INTER_MISSED;
    double sa, sb;
    const bool parallel = nearestParameters(wa, wb, sa, sb);
    const ZKVec3d pa = wa.pointAt(sa);
    const ZKVec3d pb = wb.pointAt(sb);
    const bool meet = (pa - pb).length() < kMeetDistance;
    if (parallel)
        return meet ? ZK_INTER_IN_PLANE : ZK_INTER_PARALLEL;
    if (!meet)
        return ZK_INTER_MISSED;
    out = V((pa + pb) * 0.5);
    ta = T(sa);
    tb = T(sb);
    return ZK_INTER_ONE;
}

// Whether the fraction s of a segment of the given length lies on it within
// the meeting distance; s is then clamped to [0, 1].
bool onSegment(double& s, double length) {
    const double tolerance = kMeetDistance / length;
    if (s < -tolerance || s > 1.0 + tolerance)
        return false;
    s = std::min(1.0, std::max(0.0, s));
    return true;
}

// Collinear segments a0 + s·ua (ua of length lengthA) and b0b1, in 2D or 3D:
// whether b's end points, as fractions of a, reach a within the meeting
// distance.
template <typename V>
bool collinearOverlap(const V& a0, const V& ua, double lengthA, const V& b0, const V& b1) {
    const double aa = lengthA * lengthA;
    const double f0 = (b0 - a0).dot(ua) / aa;
    const double f1 = (b1 - a0).dot(ua) / aa;
    const double tolerance = kMeetDistance / lengthA;
    return std::max(f0, f1) >= -tolerance && std::min(f0, f1) <= 1.0 + tolerance;
}

template <typename V, typename S, typename T>
unsigned int segSegCrossing(V& out, T& ta, T& tb, const S& a, const S& b) {
    const ZKSegment3d& wa = wide(a);
    const ZKSegment3d& wb = wide(b);
    const ZKVec3d ua = wa.getVector();
    const ZKVec3d ub = wb.getVector();
    const double lengthA = ua.length();
    const double lengthB = ub.length();
    if (lengthA == 0.0 || lengthB == 0.0)
        return ZK_INTER_MISSED;
    double sa, sb;
    const ZKLine3d la(wa.p0, ua);
    const ZKLine3d lb(wb.p0, ub);
    const bool parallel = nearestParameters(la, lb, sa, sb);
    const bool apart = (la.pointAt(sa) - lb.pointAt(sb)).length() >= kMeetDistance;
    if (parallel) {
        if (apart)
            return ZK_INTER_PARALLEL;
        return collinearOverlap(wa.p0, ua, lengthA, wb.p0, wb.p1) ? ZK_INTER_IN_PLANE
                                                                  : ZK_INTER_MISSED;
    }
    if (apart)
        return ZK_INTER_MISSED;
    if (!onSegment(sa, lengthA) || !onSegment(sb, lengthB))
        return ZK_INTER_MISSED;
    out = V((la.pointAt(sa) + lb.pointAt(sb)) * 0.5);
    ta = T(sa);
    tb = T(sb);
    return ZK_INTER_ONE;
}

double cross2d(const ZKVec2d& u, const ZKVec2d& v) {
    return u.x * v.y - u.y * v.x;
}

// 2D lines oa + sa·da and ob + sb·db; writes sa, sb only for ZK_INTER_ONE.
unsigned int lines2dCrossing(const ZKVec2d& oa, const ZKVec2d& da, const ZKVec2d& ob,
                             const ZKVec2d& db, double& sa, double& sb) {
    const double c = cross2d(da, db);
    const ZKVec2d w = ob - oa;
    if (c == 0.0 || c * c < kParallelSine2 * da.sqrLength() * db.sqrLength()) {
        // Distance from ob to line a.
        const double apart = std::fabs(cross2d(w, da)) / da.length();
        return apart < kMeetDistance ? ZK_INTER_IN_PLANE : ZK_INTER_PARALLEL;
    }
    sa = cross2d(w, db) / c;
    sb = cross2d(w, da) / c;
    return ZK_INTER_ONE;
}

} // namespace

void ZKGeomMaths::calcNearestPoints_LineLine_Unnormalize_dDir(ZKVec3f& pa, ZKVec3f& pb, float& ta,
                                                              float& tb, bool& parallel,
                                                              const ZKLine3f& a,
                                                              const ZKLine3f& b) {
    nearestPoints(pa, pb, ta, tb, parallel, a, b);
}
void ZKGeomMaths::calcNearestPoints_LineLine_Unnormalize_dDir(ZKVec3d& pa, ZKVec3d& pb, double& ta,
                                                              double& tb, bool& parallel,
                                                              const ZKLine3d& a,
                                                              const ZKLine3d& b) {
    nearestPoints(pa, pb, ta, tb, parallel, a, b);
}
void ZKGeomMaths::calcNearestPoints_LineLine(ZKVec3f& pa, ZKVec3f& pb, float& ta, float& tb,
                                             bool& parallel, const ZKLine3f& a, const ZKLine3f& b) {
    nearestPoints(pa, pb, ta, tb, parallel, a, b);
}
void ZKGeomMaths::calcNearestPoints_LineLine(ZKVec3d& pa, ZKVec3d& pb, double& ta, double& tb,
                                             bool& parallel, const ZKLine3d& a, const ZKLine3d& b) {
    nearestPoints(pa, pb, ta, tb, parallel, a, b);
}

float ZKGeomMaths::distance_LineLine(const ZKLine3f& a, const ZKLine3f& b) {
    float ta, tb;
    bool parallel;
    return lineLineDistance(a, b, ta, tb, parallel);
}
float ZKGeomMaths::distance_LineLine(const ZKLine3f& a, const ZKLine3f& b, float& ta, float& tb,
                                     bool& parallel) {
    return lineLineDistance(a, b, ta, tb, parallel);
}
double ZKGeomMaths::distance_LineLine(const ZKLine3d& a, const ZKLine3d& b) {
    double ta, tb;
    bool parallel;
    return lineLineDistance(a, b, ta, tb, parallel);
}
double ZKGeomMaths::distance_LineLine(const ZKLine3d& a, const ZKLine3d& b, double& ta, double& tb,
                                      bool& parallel) {
    return lineLineDistance(a, b, ta, tb, parallel);
}

float ZKGeomMaths::distance_LineSeg(const ZKLine3f& line, const ZKSegment3f& seg) {
    float tLine, tSeg;
    return lineSegDistance(line, seg, tLine, tSeg);
}
float ZKGeomMaths::distance_LineSeg(const ZKLine3f& line, const ZKSegment3f& seg, float& tLine,
                                    float& tSeg) {
    return lineSegDistance(line, seg, tLine, tSeg);
}
double ZKGeomMaths::distance_LineSeg(const ZKLine3d& line, const ZKSegment3d& seg) {
    double tLine, tSeg;
    return lineSegDistance(line, seg, tLine, tSeg);
}
double ZKGeomMaths::distance_LineSeg(const ZKLine3d& line, const ZKSegment3d& seg, double& tLine,
                                     double& tSeg) {
    return lineSegDistance(line, seg, tLine, tSeg);
}

unsigned int ZKGeomMaths::inter_LineLine(ZKVec3f& out, float& ta, float& tb, const ZKLine3f& a,
                                         const ZKLine3f& b) {
    return lineLineCrossing(out, ta, tb, a, b);
}
unsigned int ZKGeomMaths::inter_LineLine(ZKVec3d& out, double& ta, double& tb, const ZKLine3d& a,
                                         const ZKLine3d& b) {
    return lineLineCrossing(out, ta, tb, a, b);
}

unsigned int ZKGeomMaths::inter_SegSeg(ZKVec3f& out, float& ta, float& tb, const ZKSegment3f& a,
                                       const ZKSegment3f& b) {
    return segSegCrossing(out, ta, tb, a, b);
}
unsigned int ZKGeomMaths::inter_SegSeg(ZKVec3d& out, double& ta, double& tb, const ZKSegment3d& a,
                                       const ZKSegment3d& b) {
    return segSegCrossing(out, ta, tb, a, b);
}

unsigned int ZKGeomMaths::inter2d_LineLine(ZKVec2f& out, float& ta, float& tb,
                                           const ZKVec2f& originA, const ZKVec2f& dirA,
                                           const ZKVec2f& originB, const ZKVec2f& dirB) {
    const ZKVec2d oa(originA), da(dirA), ob(originB), db(dirB);
    if (da.sqrLength() == 0.0 || db.sqrLength() == 0.0)
        return ZK_INTER_MISSED;
    double sa, sb;
    const unsigned int result = lines2dCrossing(oa, da, ob, db, sa, sb);
    if (result != ZK_INTER_ONE)
        return result;
    out = ZKVec2f(oa + da * sa);
    ta = float(sa);
    tb = float(sb);
    return ZK_INTER_ONE;
}

unsigned int ZKGeomMaths::inter2d_SegSeg(ZKVec2f& out, float& ta, float& tb, const ZKVec2f& a0,
                                         const ZKVec2f& a1, const ZKVec2f& b0, const ZKVec2f& b1) {
    const ZKVec2d oa(a0), ob(b0);
    const ZKVec2d ua = ZKVec2d(a1) - oa;
    const ZKVec2d ub = ZKVec2d(b1) - ob;
    const double lengthA = ua.length();
    const double lengthB = ub.length();
    if (lengthA == 0.0 || lengthB == 0.0)
        return ZK_INTER_MISSED;
    double sa, sb;
    const unsigned int result = lines2dCrossing(oa, ua, ob, ub, sa, sb);
    if (result == ZK_INTER_PARALLEL)
        return result;
    if (result == ZK_INTER_IN_PLANE)
        return collinearOverlap(oa, ua, lengthA, ob, ZKVec2d(b1)) ? ZK_INTER_IN_PLANE
                                                                  : ZK_INTER_MISSED;
    if (!onSegment(sa, lengthA) || !onSegment(sb, lengthB))
        return ZK_INTER_MISSED;
    out = ZKVec2f(oa + ua * sa);
    ta = float(sa);
    tb = float(sb);
    return ZK_INTER_ONE;
}
