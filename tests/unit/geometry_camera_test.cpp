// Vector, triangle and angle helpers, and the scene camera's directions.
#include <gtest/gtest.h>

#include "app/scene_camera.h"
#include "resources/geometry.h"

namespace {

void ExpectVec(const Vec3& v, float x, float y, float z, float tolerance = 1e-4f) {
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}

TEST(Geometry, TriangleNormalFollowsTheWinding) {
    Vec3 n;
    TriangleNormal(n, {0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    ExpectVec(n, 0, 0, 1);
    TriangleNormal(n, {0, 0, 0}, {0, 1, 0}, {1, 0, 0});
    ExpectVec(n, 0, 0, -1);
    TriangleNormal(n, {0, 0, 0}, {0, 0, 5}, {5, 0, 0});
    ExpectVec(n, 0, 1, 0);
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

TEST(Geometry, AngleDelta) {
    EXPECT_FLOAT_EQ(AngleDelta(10.0f, 350.0f), -160.0f);
    EXPECT_FLOAT_EQ(AngleDelta(350.0f, 10.0f), 160.0f);
    EXPECT_FLOAT_EQ(AngleDelta(90.0f, 90.0f), -180.0f);
}

TEST(Geometry, SideOfEdgeAndPointInTriangle) {
    Vec3 a = {0, 0, 0}, b = {4, 0, 0}, c = {0, 4, 0};
    EXPECT_EQ(SideOfEdge({1, 1, 9}, a, b), 1);
    EXPECT_EQ(SideOfEdge({1, -1, 0}, a, b), -1);
    EXPECT_EQ(SideOfEdge({2, 0, 0}, a, b), 0);
    EXPECT_EQ(PointInTriangle2D({1, 1, 0}, a, b, c), 1);
    EXPECT_EQ(PointInTriangle2D({1, 1, 0}, a, c, b), 1);  // either winding
    EXPECT_EQ(PointInTriangle2D({2, 0, 0}, a, b, c), 0);  // on an edge
    EXPECT_EQ(PointInTriangle2D({0, 0, 0}, a, b, c), 0);  // on a corner
    EXPECT_EQ(PointInTriangle2D({3, 3, 0}, a, b, c), 0);
}

TEST(Geometry, SegmentHitsTriangle) {
    // A floor triangle in the x-z plane at height 0.
    Vec3 a = {0, 0, 0}, b = {0, 0, 4}, c = {4, 0, 0};
    Vec3 hit;
    EXPECT_EQ(SegmentHitsTriangle(a, b, c, {1, 5, 1}, {1, -5, 1}, hit), 1);
    ExpectVec(hit, 1, 0, 1);
    // Ending exactly on the plane at an interior point is a hit.
    EXPECT_EQ(SegmentHitsTriangle(a, b, c, {1, 3, 1}, {1, 0, 1}, hit), 1);
    ExpectVec(hit, 1, 0, 1);
    // Stopping short of the plane is not.
    EXPECT_EQ(SegmentHitsTriangle(a, b, c, {1, 3, 1}, {1, 0.5f, 1}, hit), 0);
    // Passing exactly through an edge is not.
    EXPECT_EQ(SegmentHitsTriangle(a, b, c, {0, 3, 2}, {0, -3, 2}, hit), 0);
    // Passing outside the triangle is not.
    EXPECT_EQ(SegmentHitsTriangle(a, b, c, {3, 3, 3}, {3, -3, 3}, hit), 0);
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
