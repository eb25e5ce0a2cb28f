#include "ZKGeomMaths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

ZKVec3d randomVec(std::mt19937& rng, double range) {
    std::uniform_real_distribution<double> coord(-range, range);
    return ZKVec3d(coord(rng), coord(rng), coord(rng));
}

// Smallest |a(ta) − b(tb)| by a grid search over [−range, range]², refined
// five times around the best cell.
double gridLineLineDistance(const ZKLine3d& a, const ZKLine3d& b, double range) {
    double best = std::numeric_limits<double>::max();
    double ca = 0.0, cb = 0.0, half = range;
    for (int level = 0; level < 6; ++level) {
        const int steps = 60;
        const double step = 2.0 * half / steps;
        double nextA = ca, nextB = cb;
        for (int i = 0; i <= steps; ++i) {
            for (int j = 0; j <= steps; ++j) {
                const double ta = ca - half + i * step;
                const double tb = cb - half + j * step;
                const double d = (a.pointAt(ta) - b.pointAt(tb)).length();
                if (d < best) {
                    best = d;
                    nextA = ta;
                    nextB = tb;
                }
            }
        }
        ca = nextA;
        cb = nextB;
        half = 2.0 * step;
    }
    return best;
}

// Exact orientation of c against the line ab for integer-valued coordinates.
int orientation(const ZKVec2f& a, const ZKVec2f& b, const ZKVec2f& c) {
    const double v =
        (double(b.x) - a.x) * (double(c.y) - a.y) - (double(b.y) - a.y) * (double(c.x) - a.x);
    return v > 0 ? 1 : (v < 0 ? -1 : 0);
}

bool onBox(const ZKVec2f& a, const ZKVec2f& b, const ZKVec2f& c) {
    return std::min(a.x, b.x) <= c.x && c.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= c.y &&
           c.y <= std::max(a.y, b.y);
}

// The textbook closed-segment test.
bool segmentsTouch(const ZKVec2f& a0, const ZKVec2f& a1, const ZKVec2f& b0, const ZKVec2f& b1) {
    const int o1 = orientation(a0, a1, b0), o2 = orientation(a0, a1, b1);
    const int o3 = orientation(b0, b1, a0), o4 = orientation(b0, b1, a1);
    if (o1 != o2 && o3 != o4)
        return true;
    return (o1 == 0 && onBox(a0, a1, b0)) || (o2 == 0 && onBox(a0, a1, b1)) ||
           (o3 == 0 && onBox(b0, b1, a0)) || (o4 == 0 && onBox(b0, b1, a1));
}

} // namespace

TEST(ZKGeomMathsLines, NearestPointsMatchAFineGridSearch) {
    std::mt19937 rng(1234);
    int checked = 0;
    for (int trial = 0; trial < 40; ++trial) {
        const ZKLine3d a(randomVec(rng, 3), randomVec(rng, 1));
        const ZKLine3d b(randomVec(rng, 3), randomVec(rng, 1));
        ZKVec3d pa, pb;
        double ta, tb;
        bool parallel = true;
        ZKGeomMaths::calcNearestPoints_LineLine_Unnormalize_dDir(pa, pb, ta, tb, parallel, a, b);
        ASSERT_FALSE(parallel);
        const double sine = a.dir.cross(b.dir).length() / (a.dir.length() * b.dir.length());
        if (sine < 0.2 || std::max(std::fabs(ta), std::fabs(tb)) > 20)
            continue; // badly conditioned or outside the grid
        ++checked;
        const double grid = gridLineLineDistance(a, b, 25.0);
        const double dist = (pa - pb).length();
        EXPECT_LE(dist, grid + 1e-9) << trial;
        EXPECT_NEAR(dist, grid, 1e-4) << trial;
        // The gap between the nearest points is orthogonal to both lines.
        EXPECT_NEAR((pa - pb).dot(a.dir), 0.0, 1e-9) << trial;
        EXPECT_NEAR((pa - pb).dot(b.dir), 0.0, 1e-9) << trial;
        EXPECT_EQ(pa, a.pointAt(ta));
        EXPECT_EQ(pb, b.pointAt(tb));
        EXPECT_NEAR(ZKGeomMaths::distance_LineLine(a, b), dist, 1e-12);
    }
    EXPECT_GT(checked, 10);

    // Unit directions: the parameters are distances along the lines.
    const ZKLine3f x(ZKVec3f(0, 0, 0), ZKVec3f(1, 0, 0));
    const ZKLine3f y(ZKVec3f(3, 5, 2), ZKVec3f(0, -1, 0));
    ZKVec3f pa, pb;
    float ta, tb;
    bool parallel = true;
    ZKGeomMaths::calcNearestPoints_LineLine(pa, pb, ta, tb, parallel, x, y);
    EXPECT_FALSE(parallel);
    EXPECT_EQ(pa, ZKVec3f(3, 0, 0));
    EXPECT_EQ(pb, ZKVec3f(3, 0, 2));
    EXPECT_EQ(ta, 3.0f);
    EXPECT_EQ(tb, 5.0f);
    bool par = true;
    EXPECT_EQ(ZKGeomMaths::distance_LineLine(x, y, ta, tb, par), 2.0f);
    EXPECT_FALSE(par);
}

TEST(ZKGeomMathsLines, ParallelLinesReportTheirGap) {
    const ZKLine3f a(ZKVec3f(1, 0, 0), ZKVec3f(0, 0, 2));
    const ZKLine3f b(ZKVec3f(4, 4, 6), ZKVec3f(0, 0, -1)); // parallel, 5 apart
    ZKVec3f pa, pb;
    float ta = -1, tb = -1;
    bool parallel = false;
    ZKGeomMaths::calcNearestPoints_LineLine_Unnormalize_dDir(pa, pb, ta, tb, parallel, a, b);
    EXPECT_TRUE(parallel);
    EXPECT_EQ(ta, 0.0f);
    EXPECT_EQ(pa, a.origin);
    EXPECT_EQ(tb, 6.0f);
    EXPECT_EQ(pb, ZKVec3f(4, 4, 0));
    EXPECT_EQ(ZKGeomMaths::distance_LineLine(a, b), 5.0f);
    // Directions within a sine of 1e-5 count as parallel; 1e-4 does not.
    const ZKLine3d u(ZKVec3d(0, 0, 0), ZKVec3d(1, 0, 0));
    double t1, t2;
    bool par = false;
    ZKGeomMaths::distance_LineLine(u, ZKLine3d(ZKVec3d(0, 1, 0), ZKVec3d(1, 5e-6, 0)), t1, t2, par);
    EXPECT_TRUE(par);
    ZKGeomMaths::distance_LineLine(u, ZKLine3d(ZKVec3d(0, 1, 0), ZKVec3d(1, 1e-4, 0)), t1, t2, par);
    EXPECT_FALSE(par);
    // A zero direction is parallel to everything.
    ZKGeomMaths::distance_LineLine(u, ZKLine3d(ZKVec3d(0, 1, 0), ZKVec3d()), t1, t2, par);
    EXPECT_TRUE(par);
    EXPECT_EQ(t2, 0.0);
}

TEST(ZKGeomMathsLines, LineSegmentDistanceAgreesWithSampling) {
    std::mt19937 rng(77);
    for (int trial = 0; trial < 100; ++trial) {
        const ZKVec3d dir = randomVec(rng, 1);
        const ZKLine3d line(randomVec(rng, 2), dir / dir.length());
        const ZKSegment3d seg(randomVec(rng, 3), randomVec(rng, 3));
        double sampled = std::numeric_limits<double>::max();
        for (int i = 0; i <= 4000; ++i)
            sampled =
                std::min(sampled, ZKGeomMaths::distance_PointLine(seg.pointAt(i / 4000.0), line));
        double tLine, tSeg;
        const double dist = ZKGeomMaths::distance_LineSeg(line, seg, tLine, tSeg);
        EXPECT_LE(dist, sampled + 1e-9) << trial;
        EXPECT_NEAR(dist, sampled, 2e-3) << trial;
        EXPECT_GE(tSeg, 0.0);
        EXPECT_LE(tSeg, 1.0);
        EXPECT_NEAR((line.pointAt(tLine) - seg.pointAt(tSeg)).length(), dist, 1e-9);
    }
    // Parallel segment: the first end; a point line: the distance to the segment.
    const ZKLine3f xAxis(ZKVec3f(0, 0, 0), ZKVec3f(1, 0, 0));
    float tLine = -1, tSeg = -1;
    EXPECT_EQ(ZKGeomMaths::distance_LineSeg(xAxis, ZKSegment3f(ZKVec3f(2, 3, 0), ZKVec3f(5, 3, 0)),
                                            tLine, tSeg),
              3.0f);
    EXPECT_EQ(tSeg, 0.0f);
    EXPECT_EQ(tLine, 2.0f);
    const ZKLine3f point(ZKVec3f(0, 4, 0), ZKVec3f());
    EXPECT_EQ(ZKGeomMaths::distance_LineSeg(point, ZKSegment3f(ZKVec3f(-1, 0, 0), ZKVec3f(1, 0, 0)),
                                            tLine, tSeg),
              4.0f);
    EXPECT_EQ(tLine, 0.0f);
    EXPECT_EQ(tSeg, 0.5f);
}

TEST(ZKGeomMathsLines, LineLineAndSegmentSegmentOutcomes) {
    ZKVec3f out(9, 9, 9);
    float ta = -1, tb = -1;
    const ZKLine3f a(ZKVec3f(0, 0, 0), ZKVec3f(2, 0, 0));
    EXPECT_EQ(
        ZKGeomMaths::inter_LineLine(out, ta, tb, a, ZKLine3f(ZKVec3f(3, -1, 0), ZKVec3f(0, 4, 0))),
        1u);
    EXPECT_EQ(out, ZKVec3f(3, 0, 0));
    EXPECT_EQ(ta, 1.5f);
    EXPECT_EQ(tb, 0.25f);
    out = ZKVec3f(9, 9, 9);
    // Skew, parallel, collinear and a point line; none of them writes the point.
    const struct {
        ZKVec3f origin, dir;
        unsigned int result;
    } lines[] = {{{3, -1, 1}, {0, 4, 0}, 2u},
                 {{0, 1, 0}, {-1, 0, 0}, 3u},
                 {{5, 0, 0}, {-3, 0, 0}, 5u},
                 {{5, 0, 0}, {0, 0, 0}, 2u}};
    for (const auto& c : lines)
        EXPECT_EQ(ZKGeomMaths::inter_LineLine(out, ta, tb, a, ZKLine3f(c.origin, c.dir)), c.result);
    EXPECT_EQ(out, ZKVec3f(9, 9, 9));

    const ZKSegment3f s(ZKVec3f(0, 0, 0), ZKVec3f(4, 0, 0));
    EXPECT_EQ(
        ZKGeomMaths::inter_SegSeg(out, ta, tb, s, ZKSegment3f(ZKVec3f(1, -1, 0), ZKVec3f(1, 3, 0))),
        1u);
    EXPECT_EQ(out, ZKVec3f(1, 0, 0));
    EXPECT_EQ(ta, 0.25f);
    EXPECT_EQ(tb, 0.25f);
    // Touching at an end point counts, with the fraction clamped to it.
    EXPECT_EQ(
        ZKGeomMaths::inter_SegSeg(out, ta, tb, s, ZKSegment3f(ZKVec3f(4, 0, 0), ZKVec3f(4, 3, 0))),
        1u);
    EXPECT_EQ(ta, 1.0f);
    EXPECT_EQ(tb, 0.0f);
    // Lines crossing beyond an end, skew, parallel, collinear and degenerate.
    const struct {
        ZKVec3f p0, p1;
        unsigned int result;
    } segments[] = {{{5, -1, 0}, {5, 3, 0}, 2u}, {{1, -1, 1}, {1, 3, 1}, 2u},
                    {{0, 1, 0}, {4, 1, 0}, 3u},  {{6, 0, 0}, {3, 0, 0}, 5u},
                    {{4, 0, 0}, {6, 0, 0}, 5u},  {{5, 0, 0}, {6, 0, 0}, 2u},
                    {{1, 0, 0}, {1, 0, 0}, 2u}};
    for (const auto& c : segments)
        EXPECT_EQ(ZKGeomMaths::inter_SegSeg(out, ta, tb, s, ZKSegment3f(c.p0, c.p1)), c.result)
            << c.p0.x << " " << c.p1.x;
    EXPECT_EQ(ta, 1.0f); // unchanged since the last hit
}

TEST(ZKGeomMathsLines, PlaneSegmentsAgainstAnExactOrientationTest) {
    ZKVec2f out;
    float ta, tb;
    EXPECT_EQ(ZKGeomMaths::inter2d_LineLine(out, ta, tb, ZKVec2f(0, 0), ZKVec2f(1, 1),
                                            ZKVec2f(4, 0), ZKVec2f(0, 2)),
              1u);
    EXPECT_EQ(out, ZKVec2f(4, 4));
    EXPECT_EQ(ta, 4.0f);
    EXPECT_EQ(tb, 2.0f);
    const struct {
        ZKVec2f o0, d0, o1, d1;
        unsigned int result;
    } lines[] = {{{0, 0}, {1, 1}, {1, 0}, {-2, -2}, 3u},
                 {{0, 0}, {1, 1}, {3, 3}, {-2, -2}, 5u},
                 {{0, 0}, {0, 0}, {3, 3}, {-2, -2}, 2u}};
    for (const auto& c : lines)
        EXPECT_EQ(ZKGeomMaths::inter2d_LineLine(out, ta, tb, c.o0, c.d0, c.o1, c.d1), c.result);

    // Random integer segments: exact reference, no rounding ambiguity.
    std::mt19937 rng(31337);
    std::uniform_int_distribution<int> coord(-6, 6);
    int touching = 0;
    for (int trial = 0; trial < 3000; ++trial) {
        const ZKVec2f a0(coord(rng), coord(rng)), a1(coord(rng), coord(rng));
        const ZKVec2f b0(coord(rng), coord(rng)), b1(coord(rng), coord(rng));
        if (a0 == a1 || b0 == b1) {
            EXPECT_EQ(ZKGeomMaths::inter2d_SegSeg(out, ta, tb, a0, a1, b0, b1), 2u);
            continue;
        }
        const bool expected = segmentsTouch(a0, a1, b0, b1);
        touching += expected;
        const unsigned int result = ZKGeomMaths::inter2d_SegSeg(out, ta, tb, a0, a1, b0, b1);
        EXPECT_EQ(result == 1u || result == 5u, expected) << trial;
        if (result == 1u) {
            EXPECT_LE(ZKGeomMaths::sqrDistance_PointSeg(out, a0, a1), 1e-10f);
            EXPECT_LE(ZKGeomMaths::sqrDistance_PointSeg(out, b0, b1), 1e-10f);
        }
        // The 3D form in the plane z = 0 decides alike.
        ZKVec3f out3;
        const unsigned int result3 = ZKGeomMaths::inter_SegSeg(
            out3, ta, tb, ZKSegment3f(ZKVec3f(a0.x, a0.y, 0), ZKVec3f(a1.x, a1.y, 0)),
            ZKSegment3f(ZKVec3f(b0.x, b0.y, 0), ZKVec3f(b1.x, b1.y, 0)));
        EXPECT_EQ(result3, result) << trial;
    }
    EXPECT_GT(touching, 300);
}

TEST(ZKGeomMathsLines, LineBoxIntersectionAgreesWithDenseSampling) {
    std::mt19937 rng(555);
    std::uniform_real_distribution<float> coord(-2.0f, 2.0f);
    std::uniform_real_distribution<float> extent(0.2f, 2.0f);
    int hits = 0;
    for (int trial = 0; trial < 300; ++trial) {
        const ZKVec3f lo(coord(rng), coord(rng), coord(rng));
        const ZKBBox3f box(lo, lo + ZKVec3f(extent(rng), extent(rng), extent(rng)));
        // Origins around the box, so that about half of the lines hit it.
        const ZKLine3f line(lo + ZKVec3f(coord(rng), coord(rng), coord(rng)) * 0.75f +
                                ZKVec3f(0.5f, 0.5f, 0.5f),
                            ZKVec3f(coord(rng), coord(rng), coord(rng)));
        // Sample t in [−20, 20]: far enough to leave every box drawn here.
        float first = 100.0f, last = -100.0f;
        for (int i = 0; i <= 8000; ++i) {
            const float t = -20.0f + i * (40.0f / 8000);
            if (box.containsPoint(line.pointAt(t))) {
                first = std::min(first, t);
                last = std::max(last, t);
            }
        }
        float tIn = 0, tOut = 0;
        const unsigned int result = ZKGeomMaths::inter_LineBox(tIn, tOut, line, box);
        if (last >= first) {
            ASSERT_EQ(result, 1u) << trial;
            EXPECT_LE(tIn, first + 1e-4f);
            EXPECT_GE(tOut, last - 1e-4f);
        }
        if (result == 1u) {
            ++hits;
            EXPECT_LE(tIn, tOut);
            EXPECT_TRUE(box.containsPoint(line.pointAt(tIn), 1e-4f)) << trial;
            EXPECT_TRUE(box.containsPoint(line.pointAt(tOut), 1e-4f)) << trial;
            // Sampling misses only short crossings, or those beyond its range.
            if (last < first && tIn > -20.0f && tOut < 20.0f) {
                EXPECT_LT(tOut - tIn, 2 * 40.0f / 8000) << trial;
            }
        } else {
            EXPECT_EQ(result, 2u);
        }
    }
    EXPECT_GT(hits, 50);

    float tIn, tOut;
    const ZKBBox3f unit(ZKVec3f(0, 0, 0), ZKVec3f(1, 1, 1));
    EXPECT_EQ(ZKGeomMaths::inter_LineBox(tIn, tOut,
                                         ZKLine3f(ZKVec3f(0.5f, 0.5f, 5), ZKVec3f(0, 0, -2)), unit),
              1u);
    EXPECT_EQ(tIn, 2.0f);
    EXPECT_EQ(tOut, 2.5f);
    EXPECT_EQ(
        ZKGeomMaths::inter_LineBox(tIn, tOut, ZKLine3f(ZKVec3f(0.5f, 0.5f, 5), ZKVec3f()), unit),
        2u);
    EXPECT_EQ(
        ZKGeomMaths::inter_LineBox(tIn, tOut, ZKLine3f(ZKVec3f(), ZKVec3f(1, 0, 0)), ZKBBox3f()),
        2u);
}

TEST(ZKGeomMathsLines, PlanePlaneLine) {
    const ZKPlane3f a(ZKVec3f(0, 0, 2), -2.0f); // z = 1
    const ZKPlane3f b(ZKVec3f(3, 0, 0), -6.0f); // x = 2
    ZKLine3f line;
    ASSERT_EQ(ZKGeomMaths::inter_PlanePlane(line, a, b), 1u);
    EXPECT_EQ(line.origin, ZKVec3f(2, 0, 1));
    EXPECT_EQ(line.dir, ZKVec3f(0, 1, 0));

    std::mt19937 rng(8);
    for (int trial = 0; trial < 50; ++trial) {
        std::uniform_real_distribution<double> off(-5, 5);
        const ZKPlane3d p(randomVec(rng, 2), off(rng));
        const ZKPlane3d q(randomVec(rng, 2), off(rng));
        ZKLine3d l;
        ASSERT_EQ(ZKGeomMaths::inter_PlanePlane(l, p, q), 1u);
        for (double t : {0.0, 3.0, -7.0}) {
            EXPECT_NEAR(p.evaluate(l.pointAt(t)), 0.0, 1e-9);
            EXPECT_NEAR(q.evaluate(l.pointAt(t)), 0.0, 1e-9);
        }
        EXPECT_NEAR(l.dir.length(), 1.0, 1e-12);
        EXPECT_NEAR(l.origin.dot(l.dir), 0.0, 1e-9); // nearest the world origin
    }

    const ZKLine3f before = line;
    EXPECT_EQ(ZKGeomMaths::inter_PlanePlane(line, a, ZKPlane3f(ZKVec3f(0, 0, 1), 5.0f)), 3u);
    // The same plane, normal flipped and scaled.
    EXPECT_EQ(ZKGeomMaths::inter_PlanePlane(line, a, ZKPlane3f(ZKVec3f(0, 0, -3), 3.0f)), 5u);
    EXPECT_EQ(ZKGeomMaths::inter_PlanePlane(line, a, ZKPlane3f()), 2u);
    EXPECT_EQ(line.origin, before.origin);
    EXPECT_EQ(line.dir, before.dir);
}
