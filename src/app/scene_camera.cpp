#include "app/scene_camera.h"

#include <cmath>

void SceneCamera::MoveForward(float distance) {
    MovePoint(position, position, yaw, pitch, distance);
}

void SceneCamera::Strafe(float distance) {
    MovePoint(position, position, yaw + 90.0f, 0.0f, distance);
}

void SceneCamera::MoveUp(float distance) {
    MovePoint(position, position, yaw, pitch + 90.0f, distance);
}

void SceneCamera::LookAt(float x, float y, float z) {
    const double pi = 3.141592654;
    const double toDegrees = 0.017453292522222223;
    double dx = x - position.x;
    double dy = y - position.y;
    double dz = z - position.z;
    double h = sqrt(dx * dx + dz * dz);
    double a = dx / h;
    double b = dz / h;
    double length = sqrt(h * h + dy * dy);
    double k = h / length;
    double e = dy / length;
    double angleA = b > 0.0 ? pi - asin(a) : asin(a);
    double angleB = k > 0.0 ? pi - asin(e) : asin(e);
    yaw = static_cast<float>(180.0 - angleA / toDegrees);
    pitch = static_cast<float>(angleB / toDegrees - 180.0);
}
