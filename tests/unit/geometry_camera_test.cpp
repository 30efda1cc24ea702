// The geometry helpers (normals, angles, edge sides, segments through triangles) and the scene
// camera's directions.
#include <gtest/gtest.h>

#include "app/scene_camera.h"
#include "resources/geometry.h"

namespace {

void ExpectVec(const Vec3& v, float x, float y, float z, float tolerance = 1e-4f) {
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}

TEST(Geometry, MovePointUsesYawAndPitchInDegrees) {
    Vec3 out;
    MovePoint({0, 0, 0}, out, 90.0f, 0.0f, 10.0f);
    ExpectVec(out, 10, 0, 0);
    MovePoint({0, 0, 0}, out, 0.0f, 90.0f, 10.0f);
    ExpectVec(out, 0, -10, 0);
    MovePoint({1, 2, 3}, out, 0.0f, 0.0f, 4.0f);
    ExpectVec(out, 1, 2, 7);
    Vec3 same = {1, 1, 1};
    MovePoint(same, same, 180.0f, 0.0f, 2.0f);  // out may be the origin
    ExpectVec(same, 1, 1, -1);
}

TEST(Geometry, TriangleNormalIsUnitAndFacesWhereTheCornersTurnCounterClockwise) {
    Vec3 n;
    TriangleNormal(n, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    ExpectVec(n, 0, 0, 1);
    TriangleNormal(n, {0, 0, 0}, {0, 0, 3}, {0, 4, 0});
    ExpectVec(n, -1, 0, 0);
    TriangleNormal(n, {5, 2, 5}, {5, 2, 9}, {9, 2, 5});
    ExpectVec(n, 0, 1, 0);
}

TEST(Geometry, AngleDeltaIsTheTurnFromTheOppositeBearing) {
    EXPECT_FLOAT_EQ(AngleDelta(10, 350), -160);
    EXPECT_FLOAT_EQ(AngleDelta(350, 10), 160);
    EXPECT_FLOAT_EQ(AngleDelta(90, 90), -180);
}

TEST(Geometry, SideOfEdgeAndPointInTriangleInEitherWinding) {
    const Vec3 a = {0, 0, 7}, b = {4, 0, -7}, c = {0, 4, 0};
    EXPECT_EQ(SideOfEdge({1, 1, 0}, a, b), 1);
    EXPECT_EQ(SideOfEdge({1, -1, 0}, a, b), -1);
    EXPECT_EQ(SideOfEdge({2, 0, 5}, a, b), 0);
    const struct {
        Vec3 p;
        int inside;
    } points[] = {{{1, 1, 0}, 1}, {{2, 0, 0}, 0}, {{0, 0, 0}, 0}, {{3, 3, 0}, 0}, {{-1, 1, 0}, 0}, {{1, -1, 0}, 0}};
    for (const auto& point : points) {
        EXPECT_EQ(PointInTriangle2D(point.p, a, b, c), point.inside) << point.p.x << "," << point.p.y;
        EXPECT_EQ(PointInTriangle2D(point.p, a, c, b), point.inside) << point.p.x << "," << point.p.y;
    }
}

// Segments against a triangle lying in each axis plane: the hit point is written where the
// segment meets the plane, an end on the plane counts, an edge or a miss does not.
TEST(Geometry, SegmentHitsTriangle) {
    const struct {
        Vec3 a, b, c, s0, s1;
        int hits;
        Vec3 at;
    } cases[] = {
        {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {2, 3, -5}, {2, 3, 15}, 1, {2, 3, 0}},
        {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {2, 3, 15}, {2, 3, 0}, 1, {2, 3, 0}},
        {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {2, 3, 1}, {2, 3, 15}, 0, {0, 0, 0}},
        {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {5, 5, -1}, {5, 5, 1}, 0, {5, 5, 0}},
        {{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {8, 8, -1}, {8, 8, 1}, 0, {8, 8, 0}},
        {{0, 0, 0}, {0, 0, 10}, {0, 10, 0}, {-4, 2, 6}, {4, 2, 2}, 1, {0, 2, 4}},
        {{0, 5, 0}, {0, 5, 10}, {10, 5, 0}, {1, 0, 2}, {3, 10, 4}, 1, {2, 5, 3}},
        {{0, 5, 0}, {0, 5, 10}, {10, 5, 0}, {9, 0, 9}, {9, 10, 9}, 0, {9, 5, 9}},
    };
    for (const auto& c : cases) {
        Vec3 hit = {0, 0, 0};
        EXPECT_EQ(SegmentHitsTriangle(c.a, c.b, c.c, c.s0, c.s1, hit), c.hits) << c.s0.x << "," << c.s0.y;
        if (c.at.x || c.at.y || c.at.z) {
            ExpectVec(hit, c.at.x, c.at.y, c.at.z);
        }
    }
}

TEST(SceneCamera, MoveForwardAfterLookAtReachesTheTarget) {
    const Vec3 targets[] = {{3, -4, 12}, {-7, 2, -1}, {0.5f, 9, -3}, {-2, -2, 5}};
    for (const Vec3& t : targets) {
        SceneCamera camera = {};
        camera.position = {1, 1, 1};
        camera.roll = 7.0f;
        camera.LookAt(t.x, t.y, t.z);
        camera.MoveForward(Distance({1, 1, 1}, t));
        ExpectVec(camera.position, t.x, t.y, t.z, 1e-3f);
        EXPECT_FLOAT_EQ(camera.roll, 7.0f);
    }
}

TEST(SceneCamera, Directions) {
    SceneCamera camera = {};
    camera.MoveForward(10);
    ExpectVec(camera.position, 0, 0, 10);
    camera = {};
    camera.pitch = 30.0f;
    camera.MoveForward(10);
    EXPECT_LT(camera.position.y, 0.0f);  // a positive pitch descends
    camera = {};
    camera.Strafe(10);
    ExpectVec(camera.position, 10, 0, 0);
    camera = {};
    camera.MoveUp(10);
    ExpectVec(camera.position, 0, -10, 0);
    camera = {};
    camera.yaw = 90.0f;
    camera.pitch = 45.0f;  // sideways ignores pitch
    camera.Strafe(10);
    ExpectVec(camera.position, 0, 0, -10);
}

}  // namespace
