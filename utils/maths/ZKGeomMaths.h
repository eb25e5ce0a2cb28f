// ZKGeomMaths.h: distances, intersections and projections between points,
// lines, segments, planes, boxes and polygons.
//
// Conventions shared by every routine:
// - Results go through out-parameters; distance routines take their inputs
//   first and their outputs after them, intersection routines their outputs
//   first. Most routines exist in float and double; the float forms compute
//   in float unless they say otherwise.
// - Lines (ZKLine3f/3d) are origin + t·dir. The distance routines take dir
//   as unit length (their parameters are then distances along the line); the
//   intersection and nearest-point routines accept any length and give
//   parameters in units of dir. Segment parameters are fractions: 0 at p0,
//   1 at p1. Planes are n·p + d = 0 with any non-zero normal length.
// - Intersection routines return one of the ZKGeomInter outcome codes below.
//   Unless a routine says otherwise, its out-parameters are written only
//   when it returns ZK_INTER_ONE.
// - Tolerance: two directions are parallel when the sine of their angle is
//   below 1e-5 (|u × v| < 1e-5·|u|·|v|, so a zero vector is parallel to
//   everything), and two points meet when they are less than 1e-5 apart, the
//   rule inter_LinePlane applies to unit vectors.
//
// A stateless class of static functions, safe from several threads, except
// the ZKVec2f form of cameraProjPoint (see there).
#pragma once

#include "ZKArray.h"
#include "ZKBBox.h"
#include "ZKExport.h"
#include "ZKLine.h"
#include "ZKMatrix.h"
#include "ZKPlane.h"
#include "ZKSegment.h"
#include "ZKVec.h"

// Outcome codes of the intersection routines.
enum ZKGeomInter : unsigned int {
    ZK_INTER_ONE = 1,          // one intersection; the out-parameters hold it
    ZK_INTER_MISSED = 2,       // none within the bounded element, or a degenerate element
    ZK_INTER_PARALLEL = 3,     // parallel and apart
    ZK_INTER_ON_AXIS_LINE = 4, // the 2D segment lies on the axis-parallel line
    ZK_INTER_IN_PLANE = 5,     // the line lies in the plane (or on the other line)
};

class ZKUTILS_EXPORT ZKGeomMaths {
public:
    // Distances ------------------------------------------------------------

    static float distance_PointPoint(const ZKVec3f& a, const ZKVec3f& b);
    static double distance_PointPoint(const ZKVec3d& a, const ZKVec3d& b);

    // nearest = origin + ((p − origin)·dir)·dir, dir taken as unit length;
    // returns |p − nearest|; t receives (p − origin)·dir.
    static float distance_PointLine(const ZKVec3f& p, const ZKLine3f& line, ZKVec3f& nearest);
    static float distance_PointLine(const ZKVec3f& p, const ZKLine3f& line, ZKVec3f& nearest,
                                    float& t);
    static float distance_PointLine(const ZKVec3f& p, const ZKLine3f& line);
    static float sqrDistance_PointLine(const ZKVec3f& p, const ZKLine3f& line);
    static double distance_PointLine(const ZKVec3d& p, const ZKLine3d& line, ZKVec3d& nearest);
    static double distance_PointLine(const ZKVec3d& p, const ZKLine3d& line, ZKVec3d& nearest,
                                     double& t);
    static double distance_PointLine(const ZKVec3d& p, const ZKLine3d& line);
    static double sqrDistance_PointLine(const ZKVec3d& p, const ZKLine3d& line);

    // With a, b the end points: |p − a| when (p − a)·(b − a) <= 0; else the
    // distance to the line through a and b when (p − b)·(b − a) < 0 (a
    // segment shorter than 1e-14 collapses onto a); else |p − b|. nearest
    // receives the point reached, t its fraction along ab (0 at a, 1 at b).
    static float distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg);
    static float distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg, ZKVec3f& nearest);
    static float distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg, float& t);
    static float distance_PointSeg(const ZKVec3f& p, const ZKSegment3f& seg, ZKVec3f& nearest,
                                   float& t);
    static float distance_PointSeg(const ZKVec3f& p, const ZKVec3f& a, const ZKVec3f& b);
    static double distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg);
    static double distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg, ZKVec3d& nearest);
    static double distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg, double& t);
    static double distance_PointSeg(const ZKVec3d& p, const ZKSegment3d& seg, ZKVec3d& nearest,
                                    double& t);
    static double distance_PointSeg(const ZKVec3d& p, const ZKVec3d& a, const ZKVec3d& b);
    // The same rule, squared, in the plane: on ZKVec2f points, or on the x
    // and y of ZKVec3f points (z ignored).
    static float sqrDistance_PointSeg(const ZKVec2f& p, const ZKVec2f& a, const ZKVec2f& b);
    static float sqrDistance2d_PointSeg(const ZKVec3f& p, const ZKVec3f& a, const ZKVec3f& b);

    // |a·x + b·y + c·z + d| / |(a, b, c)|; a zero normal gives NaN or infinity.
    static float distance_PointPlane(const ZKVec3f& p, const ZKPlane3f& plane);
    static double distance_PointPlane(const ZKVec3d& p, const ZKPlane3d& plane);

    // Nearest points of two lines, directions of any length, computed in
    // double. pa = a.origin + ta·a.dir and pb = b.origin + tb·b.dir. When the
    // lines are parallel (or a direction is zero) parallel is true, ta = 0 and
    // pb is the point of b nearest to a.origin (tb = 0 when b.dir is zero).
    static void calcNearestPoints_LineLine_Unnormalize_dDir(ZKVec3f& pa, ZKVec3f& pb, float& ta,
                                                            float& tb, bool& parallel,
                                                            const ZKLine3f& a, const ZKLine3f& b);
    static void calcNearestPoints_LineLine_Unnormalize_dDir(ZKVec3d& pa, ZKVec3d& pb, double& ta,
                                                            double& tb, bool& parallel,
                                                            const ZKLine3d& a, const ZKLine3d& b);
    // The same for unit directions: ta and tb are then distances along the
    // lines.
    static void calcNearestPoints_LineLine(ZKVec3f& pa, ZKVec3f& pb, float& ta, float& tb,
                                           bool& parallel, const ZKLine3f& a, const ZKLine3f& b);
    static void calcNearestPoints_LineLine(ZKVec3d& pa, ZKVec3d& pb, double& ta, double& tb,
                                           bool& parallel, const ZKLine3d& a, const ZKLine3d& b);

    // |pa − pb| of the nearest points above; the parameters and the parallel
    // flag as calcNearestPoints_LineLine gives them.
    static float distance_LineLine(const ZKLine3f& a, const ZKLine3f& b);
    static float distance_LineLine(const ZKLine3f& a, const ZKLine3f& b, float& ta, float& tb,
                                   bool& parallel);
    static double distance_LineLine(const ZKLine3d& a, const ZKLine3d& b);
    static double distance_LineLine(const ZKLine3d& a, const ZKLine3d& b, double& ta, double& tb,
                                    bool& parallel);

    // Smallest distance between the line and the segment, computed in double;
    // tLine in units of line.dir, tSeg the fraction along the segment. A
    // segment parallel to the line takes tSeg = 0; a zero line direction
    // takes tLine = 0 (the distance from line.origin to the segment).
    static float distance_LineSeg(const ZKLine3f& line, const ZKSegment3f& seg);
    static float distance_LineSeg(const ZKLine3f& line, const ZKSegment3f& seg, float& tLine,
                                  float& tSeg);
    static double distance_LineSeg(const ZKLine3d& line, const ZKSegment3d& seg);
    static double distance_LineSeg(const ZKLine3d& line, const ZKSegment3d& seg, double& tLine,
                                   double& tSeg);

    // Intersections ----------------------------------------------------------

    // k = n·dir, e = n·origin + d. When −1e-5 < k < 1e-5: ZK_INTER_IN_PLANE
    // when also −1e-5 < e < 1e-5, else ZK_INTER_PARALLEL, nothing written.
    // Otherwise ZK_INTER_ONE with the crossing point in out and:
    //  float:  t = e/k,  out = origin − t·dir;
    //  double: t = −e/k, out = origin + t·dir.
    // The two forms give parameters of opposite sign for the same geometry.
    static unsigned int inter_LinePlane(ZKVec3f& out, float& t, const ZKLine3f& line,
                                        const ZKPlane3f& plane);
    static unsigned int inter_LinePlane(ZKVec3d& out, double& t, const ZKLine3d& line,
                                        const ZKPlane3d& plane);

    // u = p1 − p0 normalised, L its length; L exactly 0 gives ZK_INTER_MISSED.
    // k = n·u, e = n·p0 + d. When −1e-5 < k < 1e-5 the incoming t is divided
    // by L and the result is ZK_INTER_IN_PLANE when −1e-5 < e < 1e-5, else
    // ZK_INTER_PARALLEL. Otherwise t = e/k, out = p0 − t·u, t := t/L, and
    // both are written; then ZK_INTER_MISSED when t <= −eps or t > 1 + eps;
    // else t is clamped to [0, 1] (out becoming p0 or p1 when clamped) and
    // the result is ZK_INTER_ONE. Note the sign: t is the negated fraction of
    // the segment at which the crossing lies (as the float inter_LinePlane
    // parameter), so only crossings at fractions in (−1 − eps, eps) pass.
    // The double form behaves the same.
    static unsigned int inter_SegPlane(ZKVec3f& out, float& t, const ZKSegment3f& seg,
                                       const ZKPlane3f& plane, float eps);
    static unsigned int inter_SegPlane(ZKVec3d& out, double& t, const ZKSegment3d& seg,
                                       const ZKPlane3d& plane, double eps);

    // Lines of any direction length: ZK_INTER_ONE when their nearest points
    // are less than 1e-5 apart (out their midpoint, ta, tb in units of the
    // directions); ZK_INTER_MISSED when they pass each other; when parallel,
    // ZK_INTER_IN_PLANE when they coincide (b.origin less than 1e-5 from
    // line a), else ZK_INTER_PARALLEL.
    static unsigned int inter_LineLine(ZKVec3f& out, float& ta, float& tb, const ZKLine3f& a,
                                       const ZKLine3f& b);
    static unsigned int inter_LineLine(ZKVec3d& out, double& ta, double& tb, const ZKLine3d& a,
                                       const ZKLine3d& b);

    // Segments: ZK_INTER_ONE when they meet (out the meeting point, ta and tb
    // the fractions, clamped to [0, 1] after a 1e-5 tolerance);
    // ZK_INTER_MISSED when they do not meet, or a segment has zero length;
    // when parallel, ZK_INTER_PARALLEL if their lines are apart, otherwise
    // (collinear) ZK_INTER_IN_PLANE if they overlap or touch and
    // ZK_INTER_MISSED if not, nothing written.
    static unsigned int inter_SegSeg(ZKVec3f& out, float& ta, float& tb, const ZKSegment3f& a,
                                     const ZKSegment3f& b);
    static unsigned int inter_SegSeg(ZKVec3d& out, double& ta, double& tb, const ZKSegment3d& a,
                                     const ZKSegment3d& b);

    // 2D lines origin + t·dir (any length): ZK_INTER_ONE with the crossing
    // point and both parameters; when parallel, ZK_INTER_IN_PLANE when they
    // coincide (within 1e-5), else ZK_INTER_PARALLEL. Computed in double.
    static unsigned int inter2d_LineLine(ZKVec2f& out, float& ta, float& tb, const ZKVec2f& originA,
                                         const ZKVec2f& dirA, const ZKVec2f& originB,
                                         const ZKVec2f& dirB);
    // 2D segments a0a1 and b0b1, with the codes of inter_SegSeg.
    static unsigned int inter2d_SegSeg(ZKVec2f& out, float& ta, float& tb, const ZKVec2f& a0,
                                       const ZKVec2f& a1, const ZKVec2f& b0, const ZKVec2f& b1);

    // Slab intersection of a line (any direction length) with the closed box:
    // ZK_INTER_ONE with the parameters where the line enters and leaves it
    // (tIn <= tOut, units of dir); ZK_INTER_MISSED when it misses, when the
    // box is empty or the direction is zero. A direction component of at
    // most 1e-5·|dir| counts as parallel to that pair of faces.
    static unsigned int inter_LineBox(float& tIn, float& tOut, const ZKLine3f& line,
                                      const ZKBBox3f& box);

    // The line where two planes meet: ZK_INTER_ONE with out.dir = na × nb
    // normalised and out.origin the point of the line nearest the world
    // origin; when parallel, ZK_INTER_IN_PLANE when they are the same plane
    // (within 1e-5 along the unit normal), else ZK_INTER_PARALLEL;
    // ZK_INTER_MISSED when a normal is zero.
    static unsigned int inter_PlanePlane(ZKLine3f& out, const ZKPlane3f& a, const ZKPlane3f& b);
    static unsigned int inter_PlanePlane(ZKLine3d& out, const ZKPlane3d& a, const ZKPlane3d& b);

    // Projections --------------------------------------------------------------

    // Orthogonal projection of p on the plane; false (out untouched) when the
    // normal is zero.
    static bool projectionOrthoOn_Plane(ZKVec3f& out, const ZKVec3f& p, const ZKPlane3f& plane);
    static bool projectionOrthoOn_Plane(ZKVec3d& out, const ZKVec3d& p, const ZKPlane3d& plane);
    // Orthogonal projection of p on the plane of the triangle abc; false (out
    // untouched) when the triangle is degenerate (its edges ab and ac parallel).
    static bool projectPointOn_TriPlane(ZKVec3f& out, const ZKVec3f& p, const ZKVec3f& a,
                                        const ZKVec3f& b, const ZKVec3f& c);
    static bool projectPointOn_TriPlane(ZKVec3d& out, const ZKVec3d& p, const ZKVec3d& a,
                                        const ZKVec3d& b, const ZKVec3d& c);

    // Points, polygons and triangles -----------------------------------------------

    // True when p is within eps of the segment (distance_PointSeg <= eps).
    static bool pointIsOn_Segment(const ZKVec3f& p, const ZKSegment3f& seg, float eps = 1e-5f);
    static bool pointIsOn_Segment(const ZKVec3d& p, const ZKSegment3d& seg, double eps = 1e-5);

    // Even-odd test of p against the polygon [first, last), in x and y: false
    // with fewer than two vertices. Walking the edges (prev, cur) from the
    // last vertex to the first and on around, an edge counts when
    // (prev.x >= p.x) differs from (cur.x > p.x) and the edge's y at p.x,
    // (p.x − prev.x)·(cur.y − prev.y)/(cur.x − prev.x) + prev.y, is >= p.y
    // (a vertical edge through p.x never counts); the result is the parity.
    // Kept as callers know it: for a point straight below a vertex (same x)
    // that vertex counts for both of its edges or for neither, which can
    // invert the answer (inside reported outside and outside inside).
    static bool pointIsIn_Polygon_2d(const ZKVec3f& p, const ZKVec3f* first, const ZKVec3f* last);
    static bool pointIsIn_Polygon_2d(const ZKVec2f& p, const ZKVec2f* first, const ZKVec2f* last);
    // The same over the vertices vertices[i] for the indices i in
    // [firstIndex, lastIndex).
    static bool pointIsIn_Polygon_2d(const ZKVec3f& p, const int* firstIndex, const int* lastIndex,
                                     const ZKVec3f* vertices);

    // True when p lies in the triangle abc or on its border, either
    // orientation, computed in double; false for a triangle of zero area.
    static bool pointIsIn_Triangle_2d(const ZKVec2f& p, const ZKVec2f& a, const ZKVec2f& b,
                                      const ZKVec2f& c);
    // The same on the x and y of ZKVec3f points.
    static bool pointIsIn_Triangle_2d(const ZKVec3f& p, const ZKVec3f& a, const ZKVec3f& b,
                                      const ZKVec3f& c);

    // The mean of the points, accumulated in double; false (out untouched)
    // when there is none.
    static bool getBarycenter(ZKVec3f& out, const ZKStaticArray<ZKVec3f>& points);
    static bool getBarycenter(ZKVec3d& out, const ZKStaticArray<ZKVec3d>& points);

    // Camera projection ------------------------------------------------------------

    // The projective transform of ZKMatrixRoutines::mult_Matrix_Point3f; when
    // the resulting z is greater than limit (the point is behind the camera)
    // x and y are negated.
    static void cameraProjPoint(ZKVec3f& out, const ZKVec3f& p, const ZKMatrix4f& m, float limit);
    // The same, keeping x and y. Not safe from several threads at once: it
    // projects into one function-local static buffer.
    static void cameraProjPoint(ZKVec2f& out, const ZKVec3f& p, const ZKMatrix4f& m, float limit);
};

// Crossing of the 2D segment pq with the vertical segment at x from yMin to
// yMax. When q.x − p.x is exactly 0: ZK_INTER_ON_AXIS_LINE when p.x equals x
// exactly, else ZK_INTER_MISSED, nothing written. When x lies between p.x and
// q.x (inclusive, either order): y = (x − p.x)·(q.y − p.y)/(q.x − p.x) + p.y
// is written, and the result is ZK_INTER_ONE when yMin <= y <= yMax, else
// ZK_INTER_MISSED. Otherwise ZK_INTER_MISSED.
ZKUTILS_EXPORT unsigned int inter2d_Seg_VSeg(const ZKVec2f& p, const ZKVec2f& q, float x,
                                             float yMin, float yMax, float& y);
// The same for the horizontal segment at y from xMin to xMax, x and y
// exchanged.
ZKUTILS_EXPORT unsigned int inter2d_Seg_HSeg(const ZKVec2f& p, const ZKVec2f& q, float y,
                                             float xMin, float xMax, float& x);

// Crossing of the line with the plane x = v (YZ), y = v (XZ) or z = v (XY).
// With o and d the line's origin and direction on that axis: when
// −eps < d < eps, ZK_INTER_IN_PLANE when −eps < o − v < eps, else
// ZK_INTER_PARALLEL (t untouched); otherwise t = (v − o)/d and ZK_INTER_ONE.
ZKUTILS_EXPORT unsigned int inter_LinePlaneYZ(float& t, const ZKLine3f& line, float v, float eps);
ZKUTILS_EXPORT unsigned int inter_LinePlaneXZ(float& t, const ZKLine3f& line, float v, float eps);
ZKUTILS_EXPORT unsigned int inter_LinePlaneXY(float& t, const ZKLine3f& line, float v, float eps);
ZKUTILS_EXPORT unsigned int inter_LinePlaneYZ(double& t, const ZKLine3d& line, double v,
                                              double eps);
ZKUTILS_EXPORT unsigned int inter_LinePlaneXZ(double& t, const ZKLine3d& line, double v,
                                              double eps);
ZKUTILS_EXPORT unsigned int inter_LinePlaneXY(double& t, const ZKLine3d& line, double v,
                                              double eps);
