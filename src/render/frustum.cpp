#include "render/frustum.h"

#include <cmath>

static void CombinePlane(const float clip[16], int column, float sign, float plane[4]) {
    for (int i = 0; i < 4; i++) {
        plane[i] = clip[i * 4 + 3] + sign * clip[i * 4 + column];
    }
    float length = sqrtf(plane[0] * plane[0] + plane[1] * plane[1] + plane[2] * plane[2]);
    if (length <= 0.0f) {
        return;
    }
    for (int i = 0; i < 4; i++) {
        plane[i] /= length;
    }
}

void Frustum_FromMatrices(const float modelview[16], const float projection[16], float planes[6][4]) {
    float clip[16];
    for (int i = 0; i < 4; i++) {
        for (int j = 0; j < 4; j++) {
            clip[i * 4 + j] =
                modelview[i * 4 + 0] * projection[0 * 4 + j] + modelview[i * 4 + 1] * projection[1 * 4 + j] +
                modelview[i * 4 + 2] * projection[2 * 4 + j] + modelview[i * 4 + 3] * projection[3 * 4 + j];
        }
    }
    CombinePlane(clip, 0, -1.0f, planes[FrustumRight]);
    CombinePlane(clip, 0, 1.0f, planes[FrustumLeft]);
    CombinePlane(clip, 1, 1.0f, planes[FrustumBottom]);
    CombinePlane(clip, 1, -1.0f, planes[FrustumTop]);
    CombinePlane(clip, 2, -1.0f, planes[FrustumFar]);
    CombinePlane(clip, 2, 1.0f, planes[FrustumNear]);
}

bool Frustum_SphereInside(const float planes[6][4], float x, float y, float z, float radius) {
    for (int p = 0; p < 6; p++) {
        float d = planes[p][0] * x + planes[p][1] * y + planes[p][2] * z + planes[p][3];
        if (d <= -radius) {
            return false;
        }
    }
    return true;
}
