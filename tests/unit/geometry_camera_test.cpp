// Moving a point by yaw and pitch, and the scene camera's directions.
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
