// Frustum planes from GL-style matrices and the sphere test at its edges.
#include "render/frustum.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

void Identity(float m[16]) {
    for (int i = 0; i < 16; i++) {
        m[i] = (i % 5 == 0) ? 1.0f : 0.0f;
    }
}

// glOrtho's matrix, column-major.
void Ortho(float m[16], float l, float r, float b, float t, float n, float f) {
    Identity(m);
    m[0] = 2.0f / (r - l);
    m[5] = 2.0f / (t - b);
    m[10] = -2.0f / (f - n);
    m[12] = -(r + l) / (r - l);
    m[13] = -(t + b) / (t - b);
    m[14] = -(f + n) / (f - n);
}

// gluPerspective's matrix, column-major.
void Perspective(float m[16], float fovY, float aspect, float n, float f) {
    for (int i = 0; i < 16; i++) {
        m[i] = 0.0f;
    }
    float cot = 1.0f / tanf(fovY * 3.14159265f / 360.0f);
    m[0] = cot / aspect;
    m[5] = cot;
    m[10] = -(f + n) / (f - n);
    m[11] = -1.0f;
    m[14] = -2.0f * f * n / (f - n);
}

float PlaneAt(const float p[4], float x, float y, float z) {
    return p[0] * x + p[1] * y + p[2] * z + p[3];
}

}  // namespace

// An orthographic box x in [-2, 2], y in [-4, 4], looking down -z from 0 to 8, seen from a
// camera moved to x = 10: every plane is exact in floats, so the edges can be tested exactly.
TEST(Frustum, SphereTouchingAPlaneFromOutsideIsRejected) {
    float modelview[16], projection[16], planes[6][4];
    Identity(modelview);
    modelview[12] = -10.0f;
    Ortho(projection, -2, 2, -4, 4, 0, 8);
    Frustum_FromMatrices(modelview, projection, planes);

    // Right plane at x = 12: a sphere of radius 1 centred at 13 touches it from outside.
    EXPECT_FALSE(Frustum_SphereInside(planes, 13.0f, 0, -4, 1.0f));
    EXPECT_TRUE(Frustum_SphereInside(planes, 12.75f, 0, -4, 1.0f));
    // Each side in turn, just out and just in.
    EXPECT_FALSE(Frustum_SphereInside(planes, 7.0f, 0, -4, 1.0f));
    EXPECT_TRUE(Frustum_SphereInside(planes, 7.25f, 0, -4, 1.0f));
    EXPECT_FALSE(Frustum_SphereInside(planes, 10, -6.0f, -4, 2.0f));
    EXPECT_TRUE(Frustum_SphereInside(planes, 10, -5.5f, -4, 2.0f));
    EXPECT_FALSE(Frustum_SphereInside(planes, 10, 6.0f, -4, 2.0f));
    EXPECT_TRUE(Frustum_SphereInside(planes, 10, 5.5f, -4, 2.0f));
    EXPECT_FALSE(Frustum_SphereInside(planes, 10, 0, -8.5f, 0.5f));
    EXPECT_TRUE(Frustum_SphereInside(planes, 10, 0, -8.25f, 0.5f));
    EXPECT_FALSE(Frustum_SphereInside(planes, 10, 0, 0.5f, 0.5f));
    EXPECT_TRUE(Frustum_SphereInside(planes, 10, 0, 0.25f, 0.5f));
    // A point (radius 0) on a plane is out; inside is in.
    EXPECT_FALSE(Frustum_SphereInside(planes, 12.0f, 0, -4, 0.0f));
    EXPECT_TRUE(Frustum_SphereInside(planes, 11.5f, 0, -4, 0.0f));
}

TEST(Frustum, PerspectivePlanesFollowTheTurnedCamera) {
    // 90 degrees wide and high, near 1, far 100, camera turned 90 degrees to face -x
    // (the model-view turns the world -90 degrees about y, so -x comes to -z).
    float modelview[16], projection[16], planes[6][4];
    Identity(modelview);
    modelview[0] = 0.0f;
    modelview[2] = 1.0f;
    modelview[8] = -1.0f;
    modelview[10] = 0.0f;
    Perspective(projection, 90.0f, 1.0f, 1.0f, 100.0f);
    Frustum_FromMatrices(modelview, projection, planes);

    for (int p = 0; p < 6; p++) {
        float length =
            sqrtf(planes[p][0] * planes[p][0] + planes[p][1] * planes[p][1] + planes[p][2] * planes[p][2]);
        EXPECT_NEAR(length, 1.0f, 1e-5f);
    }
    EXPECT_NEAR(PlaneAt(planes[FrustumNear], -1, 0, 0), 0.0f, 1e-4f);
    EXPECT_NEAR(PlaneAt(planes[FrustumNear], -2, 0, 0), 1.0f, 1e-4f);
    EXPECT_NEAR(PlaneAt(planes[FrustumFar], -100, 0, 0), 0.0f, 1e-3f);
    EXPECT_NEAR(PlaneAt(planes[FrustumFar], -90, 0, 0), 10.0f, 1e-3f);
    // Facing -x, the view's right is -z: the 45-degree right edge runs through (-5, 0, -5).
    EXPECT_NEAR(PlaneAt(planes[FrustumRight], -5, 0, -5), 0.0f, 1e-4f);
    EXPECT_NEAR(PlaneAt(planes[FrustumLeft], -5, 0, 5), 0.0f, 1e-4f);
    EXPECT_NEAR(PlaneAt(planes[FrustumTop], -5, 5, 0), 0.0f, 1e-4f);
    EXPECT_NEAR(PlaneAt(planes[FrustumBottom], -5, -5, 0), 0.0f, 1e-4f);

    EXPECT_TRUE(Frustum_SphereInside(planes, -50, 0, 0, 1.0f));
    EXPECT_FALSE(Frustum_SphereInside(planes, 50, 0, 0, 1.0f));     // behind
    EXPECT_FALSE(Frustum_SphereInside(planes, -20, 0, -30, 1.0f));  // off to the right
    EXPECT_TRUE(Frustum_SphereInside(planes, -20, 0, -20.5f, 1.0f));
}
