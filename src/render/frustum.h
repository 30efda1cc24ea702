// View-frustum planes and bounding-sphere tests. The planes come straight out
// of the product of the model-view and projection matrices (both column-major,
// as GL hands them out), one per side of the clip cube, each normalised so
// that a plane's value at a point is its signed distance in world units. The
// scene draws reject whole meshes with one sphere test each before submitting
// any geometry.
#pragma once

// Plane order inside a frustum table.
enum FrustumPlane { FrustumRight, FrustumLeft, FrustumBottom, FrustumTop, FrustumFar, FrustumNear };

// Fills planes (a, b, c, d) for right, left, bottom, top, far and near from the two matrices.
void Frustum_FromMatrices(const float modelview[16], const float projection[16], float planes[6][4]);
// True when the sphere may be visible: no plane has it at -radius or further behind.
bool Frustum_SphereInside(const float planes[6][4], float x, float y, float z, float radius);
