#include "ZKGeomMaths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

// Winding number of the closed polygon around p (Sunday's algorithm), in double.
int windingNumber(const ZKVec2f& p, const std::vector<ZKVec2f>& poly) {
    int winding = 0;
    const size_t n = poly.size();
    for (size_t i = 0; i < n; ++i) {
        const ZKVec2f& a = poly[i];
        const ZKVec2f& b = poly[(i + 1) % n];
        const double side =
            (double(b.x) - a.x) * (double(p.y) - a.y) - (double(p.x) - a.x) * (double(b.y) - a.y);
        if (a.y <= p.y) {
            if (b.y > p.y && side > 0)
                ++winding;
        } else if (b.y <= p.y && side < 0) {
            --winding;
        }
    }
    return winding;
}

} // namespace

// The value types keep the layout callers store: their values and nothing else.
static_assert(sizeof(ZKLine3f) == 6 * sizeof(float) && sizeof(ZKLine3d) == 6 * sizeof(double));
static_assert(sizeof(ZKSegment3f) == 6 * sizeof(float) &&
              sizeof(ZKSegment3d) == 6 * sizeof(double));
static_assert(sizeof(ZKPlane3f) == 4 * sizeof(float) && sizeof(ZKPlane3d) == 4 * sizeof(double));

TEST(ZKGeomMaths, PointLineAndPointPlaneDistances) {
    const ZKLine3f line(ZKVec3f(1, 0, 0), ZKVec3f(0, 1, 0));
    ZKVec3f nearest;
    float t = 0;
    EXPECT_EQ(ZKGeomMaths::distance_PointLine(ZKVec3f(4, 5, 4), line, nearest, t), 5.0f);
    EXPECT_EQ(nearest, ZKVec3f(1, 5, 0));
    EXPECT_EQ(t, 5.0f);
    EXPECT_EQ(ZKGeomMaths::sqrDistance_PointLine(ZKVec3f(4, -2, 4), line), 25.0f);

    EXPECT_EQ(ZKGeomMaths::distance_PointPoint(ZKVec3f(1, 2, 3), ZKVec3f(4, 6, 3)), 5.0f);
    // The normal need not be unit: the plane 2z − 4 = 0 is z = 2.
    const ZKPlane3f plane(ZKVec3f(0, 0, 2), -4.0f);
    EXPECT_EQ(ZKGeomMaths::distance_PointPlane(ZKVec3f(9, 9, -1), plane), 3.0f);
}

TEST(ZKGeomMaths, PointSegmentDistanceByRegion) {
    const ZKSegment3f seg(ZKVec3f(0, 0, 0), ZKVec3f(4, 0, 0));
    ZKVec3f nearest;
    float t = -1;
    EXPECT_EQ(ZKGeomMaths::distance_PointSeg(ZKVec3f(-3, 4, 0), seg, nearest, t), 5.0f);
    EXPECT_EQ(nearest, seg.p0);
    EXPECT_EQ(t, 0.0f);
    EXPECT_EQ(ZKGeomMaths::distance_PointSeg(ZKVec3f(1, 2, 0), seg, nearest, t), 2.0f);
    EXPECT_EQ(nearest, ZKVec3f(1, 0, 0));
    EXPECT_EQ(t, 0.25f);
    EXPECT_EQ(ZKGeomMaths::distance_PointSeg(ZKVec3f(7, 0, 4), seg.p0, seg.p1), 5.0f);
    double tD = -1;
    EXPECT_EQ(ZKGeomMaths::distance_PointSeg(ZKVec3d(3, -1, 0), ZKSegment3d(seg), tD), 1.0);
    EXPECT_EQ(tD, 0.75);

    // A zero-length segment gives the distance to its point.
    const ZKSegment3f point(ZKVec3f(1, 1, 1), ZKVec3f(1, 1, 1));
    EXPECT_EQ(ZKGeomMaths::distance_PointSeg(ZKVec3f(1, 4, 5), point), 5.0f);
    // A segment shorter than 1e-14 takes the zero direction: the point
    // collapses onto the first end even between the ends.
    const ZKSegment3f tiny(ZKVec3f(0, 0, 0), ZKVec3f(1e-15f, 0, 0));
    EXPECT_EQ(ZKGeomMaths::distance_PointSeg(ZKVec3f(5e-16f, 1, 0), tiny, nearest, t), 1.0f);
    EXPECT_EQ(nearest, tiny.p0);
    EXPECT_EQ(t, 0.0f);

    // The plane forms use x and y only.
    EXPECT_EQ(ZKGeomMaths::sqrDistance_PointSeg(ZKVec2f(2, 3), ZKVec2f(0, 0), ZKVec2f(4, 0)), 9.0f);
    EXPECT_EQ(
        ZKGeomMaths::sqrDistance2d_PointSeg(ZKVec3f(6, 3, 50), ZKVec3f(0, 0, 0), ZKVec3f(4, 0, -9)),
        13.0f);

    EXPECT_TRUE(ZKGeomMaths::pointIsOn_Segment(ZKVec3f(2, 1e-6f, 0), seg));
    EXPECT_FALSE(ZKGeomMaths::pointIsOn_Segment(ZKVec3f(2, 1e-3f, 0), seg));
    EXPECT_TRUE(ZKGeomMaths::pointIsOn_Segment(ZKVec3f(2, 1e-3f, 0), seg, 2e-3f));
    EXPECT_FALSE(ZKGeomMaths::pointIsOn_Segment(ZKVec3d(4.1, 0, 0), ZKSegment3d(seg)));
}

TEST(ZKGeomMaths, LinePlaneFloatAndDoubleParametersHaveOppositeSigns) {
    const ZKPlane3f plane(ZKVec3f(0, 0, 1), -2.0f); // z = 2
    const ZKLine3f line(ZKVec3f(1, 1, 0), ZKVec3f(0, 0, 0.5f));
    ZKVec3f pf;
    float tf = 0;
    ASSERT_EQ(ZKGeomMaths::inter_LinePlane(pf, tf, line, plane), 1u);
    ZKVec3d pd;
    double td = 0;
    ASSERT_EQ(ZKGeomMaths::inter_LinePlane(pd, td, ZKLine3d(line), ZKPlane3d(plane)), 1u);
    // Kept: same point, parameters of opposite sign.
    EXPECT_EQ(pf, ZKVec3f(1, 1, 2));
    EXPECT_EQ(pd, ZKVec3d(1, 1, 2));
    EXPECT_EQ(tf, -4.0f);
    EXPECT_EQ(td, 4.0);

    // Parallel: in the plane gives 5, apart gives 3, and nothing is written.
    ZKVec3f untouched(7, 7, 7);
    float tUntouched = 42;
    const ZKLine3f inPlane(ZKVec3f(0, 0, 2), ZKVec3f(1, 0, 0));
    const ZKLine3f above(ZKVec3f(0, 0, 3), ZKVec3f(1, 0, 0));
    EXPECT_EQ(ZKGeomMaths::inter_LinePlane(untouched, tUntouched, inPlane, plane), 5u);
    EXPECT_EQ(ZKGeomMaths::inter_LinePlane(untouched, tUntouched, above, plane), 3u);
    EXPECT_EQ(untouched, ZKVec3f(7, 7, 7));
    EXPECT_EQ(tUntouched, 42.0f);
    // The 1e-5 threshold applies to n·dir as it stands (the normal is not unit).
    const ZKLine3f grazing(ZKVec3f(0, 0, 0), ZKVec3f(1, 0, 2e-5f));
    EXPECT_EQ(ZKGeomMaths::inter_LinePlane(pf, tf, grazing, plane), 1u);
    const ZKPlane3f smallNormal(ZKVec3f(0, 0, 0.1f), -0.2f);
    EXPECT_EQ(ZKGeomMaths::inter_LinePlane(pf, tf, grazing, smallNormal), 3u);
}

TEST(ZKGeomMaths, SegmentPlaneRangeTestRunsOnTheNegatedFraction) {
    const ZKPlane3f plane(ZKVec3f(0, 0, 1), 0.0f); // z = 0
    ZKVec3f out;
    float t = 0;
    // Kept: a crossing half-way along gives t = −0.5, outside the range.
    const ZKSegment3f through(ZKVec3f(0, 0, -1), ZKVec3f(0, 0, 1));
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, through, plane, 0.1f), 2u);
    EXPECT_EQ(t, -0.5f);
    EXPECT_EQ(out, ZKVec3f(0, 0, 0));
    // A crossing just after the first end: t in (−eps, 0) clamps to the first end.
    const ZKSegment3f nearStart(ZKVec3f(0, 0, -0.25f), ZKVec3f(0, 0, 0.75f));
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, nearStart, plane, 0.5f), 1u);
    EXPECT_EQ(t, 0.0f);
    EXPECT_EQ(out, nearStart.p0);
    // The line crossing before the first end at fraction −1.25: t = 1.25 in
    // (1, 1 + eps] clamps to the second end.
    const ZKSegment3f before(ZKVec3f(0, 0, 1), ZKVec3f(0, 0, 1.8f));
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, before, plane, 0.5f), 1u);
    EXPECT_EQ(t, 1.0f);
    EXPECT_EQ(out, before.p1);
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, before, plane, 0.1f), 2u);
    // Fractions in [−1, 0] pass as they are, the point being on the line.
    const ZKSegment3f ahead(ZKVec3f(0, 0, 1), ZKVec3f(0, 0, 5));
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, ahead, plane, 0.0f), 1u);
    EXPECT_EQ(t, 0.25f);
    EXPECT_EQ(out, ZKVec3f(0, 0, 0));

    // Equal end points miss; parallel segments divide the incoming t by
    // their length (kept) and report 5 or 3.
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, ZKSegment3f(), plane, 0.1f), 2u);
    t = 6;
    const ZKSegment3f flat(ZKVec3f(0, 0, 0), ZKVec3f(2, 0, 0));
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, flat, plane, 0.1f), 5u);
    EXPECT_EQ(t, 3.0f);
    const ZKSegment3f lifted(ZKVec3f(0, 0, 1), ZKVec3f(0, 4, 1));
    EXPECT_EQ(ZKGeomMaths::inter_SegPlane(out, t, lifted, plane, 0.1f), 3u);
    EXPECT_EQ(t, 0.75f);
}

TEST(ZKGeomMaths, AxisPlaneAndAxisSegmentCrossings) {
    const ZKLine3f line(ZKVec3f(1, 2, 3), ZKVec3f(2, -1, 0));
    float t = 99;
    EXPECT_EQ(inter_LinePlaneYZ(t, line, 5.0f, 1e-5f), 1u);
    EXPECT_EQ(t, 2.0f);
    EXPECT_EQ(inter_LinePlaneXZ(t, line, 5.0f, 1e-5f), 1u);
    EXPECT_EQ(t, -3.0f);
    t = 99;
    EXPECT_EQ(inter_LinePlaneXY(t, line, 3.05f, 0.1f), 5u);
    EXPECT_EQ(inter_LinePlaneXY(t, line, 4.0f, 0.1f), 3u);
    EXPECT_EQ(t, 99.0f);

    float y = 99;
    // A vertical input segment on the line x: 4, nothing written.
    EXPECT_EQ(inter2d_Seg_VSeg(ZKVec2f(2, 0), ZKVec2f(2, 5), 2.0f, 0.0f, 1.0f, y), 4u);
    EXPECT_EQ(inter2d_Seg_VSeg(ZKVec2f(2, 0), ZKVec2f(2, 5), 3.0f, 0.0f, 1.0f, y), 2u);
    EXPECT_EQ(y, 99.0f);
    EXPECT_EQ(inter2d_Seg_VSeg(ZKVec2f(4, 4), ZKVec2f(0, 0), 1.0f, 0.0f, 2.0f, y), 1u);
    EXPECT_EQ(y, 1.0f);
    // Crossing the line outside [yMin, yMax]: 2, but y is written.
    EXPECT_EQ(inter2d_Seg_VSeg(ZKVec2f(0, 0), ZKVec2f(4, 4), 3.0f, 0.0f, 2.0f, y), 2u);
    EXPECT_EQ(y, 3.0f);
    EXPECT_EQ(inter2d_Seg_VSeg(ZKVec2f(0, 0), ZKVec2f(4, 4), 5.0f, 0.0f, 9.0f, y), 2u);

    float x = 99;
    EXPECT_EQ(inter2d_Seg_HSeg(ZKVec2f(0, 1), ZKVec2f(5, 1), 1.0f, 0.0f, 1.0f, x), 4u);
    EXPECT_EQ(x, 99.0f);
    EXPECT_EQ(inter2d_Seg_HSeg(ZKVec2f(0, 0), ZKVec2f(2, 4), 4.0f, 0.0f, 2.0f, x), 1u);
    EXPECT_EQ(x, 2.0f);
    EXPECT_EQ(inter2d_Seg_HSeg(ZKVec2f(0, 0), ZKVec2f(2, 4), 1.0f, 1.0f, 2.0f, x), 2u);
    EXPECT_EQ(x, 0.5f);
}

TEST(ZKGeomMaths, PolygonEvenOddTest) {
    const ZKVec3f square[] = {ZKVec3f(0, 0, 0), ZKVec3f(1, 0, 0), ZKVec3f(1, 1, 0),
                              ZKVec3f(0, 1, 0)};
    EXPECT_TRUE(ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec3f(0.5f, 0.5f, 9), square, square + 4));
    EXPECT_FALSE(ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec3f(1.5f, 0.5f, 0), square, square + 4));
    // Kept: the edge test compares prev.x with >= and cur.x with >, so for a
    // point straight below a vertex that vertex counts twice or not at all:
    // inside comes out outside and outside inside.
    const ZKVec2f peak[] = {ZKVec2f(0, 0), ZKVec2f(2, 0), ZKVec2f(1, 2)};
    const ZKVec2f peakReversed[] = {ZKVec2f(1, 2), ZKVec2f(2, 0), ZKVec2f(0, 0)};
    EXPECT_FALSE(ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec2f(1, 1), peak, peak + 3));
    EXPECT_FALSE(ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec2f(1, 1), peakReversed, peakReversed + 3));
    EXPECT_TRUE(ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec2f(1.25f, 1), peak, peak + 3));
    EXPECT_TRUE(ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec2f(1, -1), peak, peak + 3));
    // One vertex (or none) is never a polygon.
    EXPECT_FALSE(ZKGeomMaths::pointIsIn_Polygon_2d(square[0], square, square + 1));
    EXPECT_FALSE(ZKGeomMaths::pointIsIn_Polygon_2d(square[0], square, square));
    // The index form walks the vertices through the index list.
    const int reversed[] = {3, 2, 1, 0};
    EXPECT_TRUE(
        ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec3f(0.5f, 0.5f, 0), reversed, reversed + 4, square));
    EXPECT_FALSE(
        ZKGeomMaths::pointIsIn_Polygon_2d(ZKVec3f(0.5f, 2, 0), reversed, reversed + 4, square));

    // Random simple (star-shaped) polygons against a winding-number reference.
    std::mt19937 rng(4242);
    std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    std::uniform_int_distribution<int> count(3, 12);
    int inside = 0;
    for (int trial = 0; trial < 200; ++trial) {
        const int n = count(rng);
        std::vector<float> angles;
        for (int i = 0; i < n; ++i)
            angles.push_back(unit(rng) * 6.2831853f);
        std::sort(angles.begin(), angles.end());
        const ZKVec2f centre(unit(rng) * 4 - 2, unit(rng) * 4 - 2);
        std::vector<ZKVec2f> poly;
        std::vector<ZKVec3f> poly3;
        std::vector<int> indices;
        for (int i = 0; i < n; ++i) {
            const float r = 0.5f + 2.0f * unit(rng);
            poly.push_back(centre + ZKVec2f(std::cos(angles[i]), std::sin(angles[i])) * r);
            poly3.push_back(ZKVec3f(poly.back().x, poly.back().y, 0));
            indices.push_back(i);
        }
        for (int k = 0; k < 20; ++k) {
            const ZKVec2f p(centre.x + unit(rng) * 6 - 3, centre.y + unit(rng) * 6 - 3);
            bool nearEdge = false;
            for (int i = 0; i < n; ++i)
                nearEdge |=
                    ZKGeomMaths::sqrDistance_PointSeg(p, poly[i], poly[(i + 1) % n]) < 1e-6f;
            if (nearEdge)
                continue;
            const bool expected = windingNumber(p, poly) != 0;
            inside += expected;
            EXPECT_EQ(ZKGeomMaths::pointIsIn_Polygon_2d(p, poly.data(), poly.data() + n), expected)
                << trial << " " << p.x << " " << p.y;
            const ZKVec3f p3(p.x, p.y, 0);
            EXPECT_EQ(ZKGeomMaths::pointIsIn_Polygon_2d(p3, poly3.data(), poly3.data() + n),
                      expected);
            EXPECT_EQ(ZKGeomMaths::pointIsIn_Polygon_2d(p3, indices.data(), indices.data() + n,
                                                        poly3.data()),
                      expected);
        }
    }
    EXPECT_GT(inside, 200);
}

TEST(ZKGeomMaths, TrianglesProjectionsAndBarycenter) {
    const ZKVec2f a(0, 0), b(4, 0), c(0, 4);
    EXPECT_TRUE(ZKGeomMaths::pointIsIn_Triangle_2d(ZKVec2f(1, 1), a, b, c));
    EXPECT_TRUE(ZKGeomMaths::pointIsIn_Triangle_2d(ZKVec2f(1, 1), a, c, b)); // either orientation
    EXPECT_TRUE(ZKGeomMaths::pointIsIn_Triangle_2d(ZKVec2f(2, 2), a, b, c)); // on the border
    EXPECT_FALSE(ZKGeomMaths::pointIsIn_Triangle_2d(ZKVec2f(2.5f, 2), a, b, c));
    EXPECT_FALSE(ZKGeomMaths::pointIsIn_Triangle_2d(ZKVec2f(-0.1f, 1), a, b, c));
    EXPECT_FALSE(
        ZKGeomMaths::pointIsIn_Triangle_2d(ZKVec2f(1, 1), a, ZKVec2f(2, 2), ZKVec2f(3, 3)));
    EXPECT_TRUE(ZKGeomMaths::pointIsIn_Triangle_2d(ZKVec3f(1, 1, 7), ZKVec3f(0, 0, 0),
                                                   ZKVec3f(4, 0, 1), ZKVec3f(0, 4, 2)));

    ZKVec3f out(9, 9, 9);
    const ZKPlane3f plane(ZKVec3f(0, 2, 0), -2.0f); // y = 1
    ASSERT_TRUE(ZKGeomMaths::projectionOrthoOn_Plane(out, ZKVec3f(3, 5, -1), plane));
    EXPECT_EQ(out, ZKVec3f(3, 1, -1));
    out = ZKVec3f(9, 9, 9);
    EXPECT_FALSE(ZKGeomMaths::projectionOrthoOn_Plane(out, ZKVec3f(3, 5, -1), ZKPlane3f()));
    EXPECT_EQ(out, ZKVec3f(9, 9, 9));

    ASSERT_TRUE(ZKGeomMaths::projectPointOn_TriPlane(out, ZKVec3f(1, 2, 3), ZKVec3f(0, 0, 1),
                                                     ZKVec3f(1, 0, 1), ZKVec3f(0, 1, 1)));
    EXPECT_EQ(out, ZKVec3f(1, 2, 1));
    out = ZKVec3f(9, 9, 9);
    EXPECT_FALSE(ZKGeomMaths::projectPointOn_TriPlane(out, ZKVec3f(1, 2, 3), ZKVec3f(0, 0, 0),
                                                      ZKVec3f(1, 1, 1), ZKVec3f(3, 3, 3)));
    EXPECT_EQ(out, ZKVec3f(9, 9, 9));

    ASSERT_TRUE(ZKGeomMaths::getBarycenter(
        out, ZKArray<ZKVec3f>{ZKVec3f(0, 0, 0), ZKVec3f(4, 0, 2), ZKVec3f(2, 6, 1)}));
    EXPECT_EQ(out, ZKVec3f(2, 2, 1));
    EXPECT_FALSE(ZKGeomMaths::getBarycenter(out, ZKArray<ZKVec3f>()));
    EXPECT_EQ(out, ZKVec3f(2, 2, 1));
}
