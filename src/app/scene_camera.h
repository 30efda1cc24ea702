// The scene camera: the one camera every scene positions each tick and draws
// from (the draw copies it into g_window.renderCamera). Angles in degrees; the
// direction of yaw w and pitch p is D(w, p) = (cos p sin w, -sin p, cos p cos w),
// so yaw 0 looks along +z, yaw 90 along +x and a positive pitch looks down.
// One global instance, g_camera, all zero, with no destructor.
#pragma once

#include "resources/geometry.h"

class SceneCamera {
public:
    Vec3 position;
    float pitch;
    float yaw;
    float roll;

    // Turns the camera toward a point; position and roll stay.
    void LookAt(float x, float y, float z);
    // Moves along the view direction D(yaw, pitch).
    void MoveForward(float distance);
    // Moves sideways along D(yaw + 90, 0).
    void Strafe(float distance);
    // Moves along D(yaw, pitch + 90): toward -y when level.
    void MoveUp(float distance);
};

extern SceneCamera g_camera;
