// ZKGeomMaths: point distances, projections, polygons, triangles and the
// camera projection.
#include "ZKGeomMaths.h"

#include "ZKMatrixRoutines.h"

#include <cmath>

namespace {

// The float and double forms share these templates over the vector type V
// and its scalar T.

// The point of the line that distance_PointLine measures to, dir taken as
// unit length; t receives its parameter.
template <typename V, typename L, typename T> V nearestOnLine(const V& p, const L& line, T& t) {
    t = (p - line.origin).dot(line.dir);
    return line.origin + line.dir * t;
}

template <typename V, typename L, typename T>
T pointLine(const V& p, const L& line, V& nearest, T& t) {
    nearest = nearestOnLine(p, line, t);
    return (p - nearest).length();
}

// The point of segment ab that distance_PointSeg measures to, and its
// fraction along ab.
template <typename V, typename T> V nearestOnSegment(const V& p, const V& a, const V& b, T& t) {
    const V ab = b - a;
    if ((p - a).dot(ab) <= T(0)) {
        t = T(0);
        return a;
    }
    if ((p - b).dot(ab) < T(0)) {
        const T len = ab.length();
        // A segment this short gives the zero direction: the line collapses onto a.
        if (len > -1e-14 && len < 1e-14) {
            t = T(0);
            return a;
        }
        const V dir = ab / len;
        const T along = (p - a).dot(dir);
        t = along / len;
        return a + dir * along;
    }
    t = T(1);
    return b;
}

template <typename V, typename T> T pointSeg(const V& p, const V& a, const V& b, V& nearest, T& t) {
    nearest = nearestOnSegment(p, a, b, t);
    return (p - nearest).length();
}

template <typename V, typename P> auto pointPlane(const V& p, const P& plane) {
    return std::fabs(plane.evaluate(p)) / plane.normal.length();
}

template <typename V, typename P> bool projectOnPlane(V& out, const V& p, const P& plane) {
    const auto n2 = plane.normal.sqrLength();
    if (n2 == 0)
        return false;
    out = p - plane.normal * (plane.evaluate(p) / n2);
    return true;
}

template <typename V>
bool projectOnTriangle(V& out, const V& p, const V& a, const V& b, const V& c) {
    using T = typename V::value_type;
    const V ab = b - a;
    const V ac = c - a;
    const V n = ab.cross(ac);
    const T n2 = n.sqrLength();
    // Degenerate when the edges ab and ac are parallel (sine below 1e-5).
    if (n2 == T(0) || n2 < T(1e-10) * ab.sqrLength() * ac.sqrLength())
        return false;
    out = p - n * ((p - a).dot(n) / n2);
    return true;
}

// Even-odd crossing count over n vertices given by vertex(i) (x and y used).
template <typename P, typename Vertex>
bool evenOddInside(const P& p, long long n, const Vertex& vertex) {
    if (n < 2)
        return false;
    bool inside = false;
    auto prev = vertex(n - 1);
    for (long long i = 0; i < n; ++i) {
        const auto cur = vertex(i);
        // Kept: >= on prev and > on cur, so a vertex at p.x above p counts
        // for both of its edges or for neither.
        if ((prev.x >= p.x) != (cur.x > p.x)) {
            // A vertical edge at p.x would give 0/0, a NaN that never
            // compares >= p.y: such an edge never counts.
            const float dx = cur.x - prev.x;
            if (dx != 0.0f && (p.x - prev.x) * (cur.y - prev.y) / dx + prev.y >= p.y)
                inside = !inside;
        }
        prev = cur;
    }
    return inside;
}

double cross2d(double ax, double ay, double bx, double by) {
    return ax * by - ay * bx;
}

bool inTriangle(double px, double py, double ax, double ay, double bx, double by, double cx,
                double cy) {
    if (cross2d(bx - ax, by - ay, cx - ax, cy - ay) == 0.0)
        return false;
    const double d1 = cross2d(bx - ax, by - ay, px - ax, py - ay);
    const double d2 = cross2d(cx - bx, cy - by, px - bx, py - by);
    const double d3 = cross2d(ax - cx, ay - cy, px - cx, py - cy);
    const bool negative = d1 < 0.0 || d2 < 0.0 || d3 < 0.0;
    const bool positive = d1 > 0.0 || d2 > 0.0 || d3 > 0.0;
    return !(negative && positive);
}

template <typename V> bool barycenter(V& out, const ZKStaticArray<V>& points) {
    if (points.empty())
        return false;
    double x = 0.0, y = 0.0, z = 0.0;
    for (const V& p : points) {
        x += p.x;
        y += p.y;
        z += p.z;
    }
    const double n = double(points.size());
    using T = typename V::value_type;
    out = V(T(x / n), T(y / n), T(z / n));
    return true;
}

} // namespace

float ZKGeomMaths::distance_PointPoint(const ZKVec3f& a, const ZKVec3f& b) {
    return (a - b).length();
}
double ZKGeomMaths::distance_PointPoint(const ZKVec3d& a, const ZKVec3d& b) {
    return (a - b).length();
}

float ZKGeomMaths::distance_PointLine(const ZKVec3f& p, const ZKLine3f& line, ZKVec3f& nearest) {
    float t;
    return pointLine(p, line, nearest, t);
}
float ZKGeomMaths::distance_PointLine(const ZKVec3f& p, const ZKLine3f& line, ZKVec3f& nearest,
                                      float& t) {
    return pointLine(p, line, nearest, t);
}
float ZKGeomMaths::distance_PointLine(const ZKVec3f& p, const ZKLine3f& line) {
    ZKVec3f nearest;
    return distance_PointLine(p, line, nearest);
}
float ZKGeomMaths::sqrDistance_PointLine(const ZKVec3f& p, const ZKLine3f& line) {
    float t;
    return (p - nearestOnLine(p, line, t)).sqrLength();
}
double ZKGeomMaths::distance_PointLine(const ZKVec3d& p, const ZKLine3d& line, ZKVec3d& nearest) {
    double t;
    return pointLine(p, line, nearest, t);
}
double ZKGeomMaths::distance_PointLine(const ZKVec3d& p, const ZKLine3d& line, ZKVec3d& nearest,
                                       double& t) {
    return pointLine(p, line, nearest, t);
}
double ZKGeomMaths::distance_PointLine(const ZKVec3d& p, const ZKLine3d& line) {
    ZKVec3d nearest;
    return distance_PointLine(p, line, nearest);
}
double ZKGeomMaths::sqrDistance_PointLine(const ZKVec3d& p, const ZKLine3d& line) {
    double t;
    return (p - nearestOnLine(p, line, t)).sqrLength();
}

float ZKGeomMaths::distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg) {
    return distance_PointSeg(p, seg.p0, seg.p1);
}
float ZKGeomMaths::distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg, ZKVec3f& nearest) {
    float t;
    return pointSeg(p, seg.p0, seg.p1, nearest, t);
}
float ZKGeomMaths::distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg, float& t) {
    ZKVec3f nearest;
    return pointSeg(p, seg.p0, seg.p1, nearest, t);
}
float ZKGeomMaths::distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg, ZKVec3f& nearest,
                                     float& t) {
    return pointSeg(p, seg.p0, seg.p1, nearest, t);
}
float ZKGeomMaths::distance_PointSeg(const ZKVec3f& p, const ZKVec3f& a, const ZKVec3f& b) {
    ZKVec3f nearest;
    float t;
    return pointSeg(p, a, b, nearest, t);
}
double ZKGeomMaths::distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg) {
    return distance_PointSeg(p, seg.p0, seg.p1);
}
double ZKGeomMaths::distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg, ZKVec3d& nearest) {
    double t;
    return pointSeg(p, seg.p0, seg.p1, nearest, t);
}
double ZKGeomMaths::distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg, double& t) {
    ZKVec3d nearest;
    return pointSeg(p, seg.p0, seg.p1, nearest, t);
}
double ZKGeomMaths::distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg, ZKVec3d& nearest,
                                      double& t) {
    return pointSeg(p, seg.p0, seg.p1, nearest, t);
}
double ZKGeomMaths::distance_PointSeg(const ZKVec3d& p, const ZKVec3d& a, const ZKVec3d& b) {
    ZKVec3d nearest;
    double t;
    return pointSeg(p, a, b, nearest, t);
}
float ZKGeomMaths::sqrDistance_PointSeg(const ZKVec2f& p, const ZKVec2f& a, const ZKVec2f& b) {
    float t;
    return (p - nearestOnSegment(p, a, b, t)).sqrLength();
}
float ZKGeomMaths::sqrDistance2d_PointSeg(const ZKVec3f& p, const ZKVec3f& a, const ZKVec3f& b) {
    return sqrDistance_PointSeg(ZKVec2f(p.x, p.y), ZKVec2f(a.x, a.y), ZKVec2f(b.x, b.y));
}

float ZKGeomMaths::distance_PointPlane(const ZKVec3f& p, const ZKPlane3f& plane) {
    return pointPlane(p, plane);
}
double ZKGeomMaths::distance_PointPlane(const ZKVec3d& p, const ZKPlane3d& plane) {
    return pointPlane(p, plane);
}

bool ZKGeomMaths::projectionOrthoOn_Plane(ZKVec3f& out, const ZKVec3f& p, const ZKPlane3f& plane) {
    return projectOnPlane(out, p, plane);
}
bool ZKGeomMaths::projectionOrthoOn_Plane(ZKVec3d& out, const ZKVec3d& p, const ZKPlane3d& plane) {
    return projectOnPlane(out, p, plane);
}
bool ZKGeomMaths::projectPointOn_TriPlane(ZKVec3f& out, const ZKVec3f& p, const ZKVec3f& a,
                                          const ZKVec3f& b, const ZKVec3f& c) {
    return projectOnTriangle(out, p, a, b, c);
}
bool ZKGeomMaths::projectPointOn_TriPlane(ZKVec3d& out, const ZKVec3d& p, const ZKVec3d& a,
                                          const ZKVec3d& b, const ZKVec3d& c) {
    return projectOnTriangle(out, p, a, b, c);
}

bool ZKGeomMaths::pointIsOn_Segment(const ZKVec3f& p, const ZKSegment3f& seg, float eps) {
    return distance_PointSeg(p, seg) <= eps;
}
bool ZKGeomMaths::pointIsOn_Segment(const ZKVec3d& p, const ZKSegment3d& seg, double eps) {
    return distance_PointSeg(p, seg) <= eps;
}

bool ZKGeomMaths::pointIsIn_Polygon_2d(const ZKVec3f& p, const ZKVec3f* first,
                                       const ZKVec3f* last) {
    return evenOddInside(p, last - first, [first](long long i) { return first[i]; });
}
bool ZKGeomMaths::pointIsIn_Polygon_2d(const ZKVec2f& p, const ZKVec2f* first,
                                       const ZKVec2f* last) {
    return evenOddInside(p, last - first, [first](long long i) { return first[i]; });
}
bool ZKGeomMaths::pointIsIn_Polygon_2d(const ZKVec3f& p, const int* firstIndex,
                                       const int* lastIndex, const ZKVec3f* vertices) {
    return evenOddInside(p, lastIndex - firstIndex,
                         [firstIndex, vertices](long long i) { return vertices[firstIndex[i]]; });
}

bool ZKGeomMaths::pointIsIn_Triangle_2d(const ZKVec2f& p, const ZKVec2f& a, const ZKVec2f& b,
                                        const ZKVec2f& c) {
    return inTriangle(p.x, p.y, a.x, a.y, b.x, b.y, c.x, c.y);
}
bool ZKGeomMaths::pointIsIn_Triangle_2d(const ZKVec3f& p, const ZKVec3f& a, const ZKVec3f& b,
                                        const ZKVec3f& c) {
    return inTriangle(p.x, p.y, a.x, a.y, b.x, b.y, c.x, c.y);
}

bool ZKGeomMaths::getBarycenter(ZKVec3f& out, const ZKStaticArray<ZKVec3f>& points) {
    return barycenter(out, points);
}
bool ZKGeomMaths::getBarycenter(ZKVec3d& out, const ZKStaticArray<ZKVec3d>& points) {
    return barycenter(out, points);
}

void ZKGeomMaths::cameraProjPoint(ZKVec3f& out, const ZKVec3f& p, const ZKMatrix4f& m,
                                  float limit) {
    float projected[3];
    ZKMatrixRoutines::mult_Matrix_Point3f(projected, m.m, p.data());
    const float sign = projected[2] > limit ? -1.0f : 1.0f;
    out = ZKVec3f(sign * projected[0], sign * projected[1], projected[2]);
}

void ZKGeomMaths::cameraProjPoint(ZKVec2f& out, const ZKVec3f& p, const ZKMatrix4f& m,
                                  float limit) {
    // Kept: one function-local static buffer, so this form is not reentrant.
    static float projected[3];
    ZKMatrixRoutines::mult_Matrix_Point3f(projected, m.m, p.data());
    const float sign = projected[2] > limit ? -1.0f : 1.0f;
    out = ZKVec2f(sign * projected[0], sign * projected[1]);
}
