#include "resources/geometry.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>

#include "app/gl_window.h"

float Sqrt(float value) {
    return static_cast<float>(sqrt(static_cast<double>(value)));
}

float AbsF(float value) {
    return fabsf(value);
}

float SinF(float radians) {
    return static_cast<float>(sin(static_cast<double>(radians)));
}

float CosF(float radians) {
    return static_cast<float>(cos(static_cast<double>(radians)));
}

float Dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

float Distance(const Vec3& a, const Vec3& b) {
    float dx = a.x - b.x;
    float dy = a.y - b.y;
    float dz = a.z - b.z;
    return Sqrt(dx * dx + dy * dy + dz * dz);
}

void Normalise(Vec3& v) {
    float length = Sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    v.x /= length;
    v.y /= length;
    v.z /= length;
}

void TriangleNormal(Vec3& out, const Vec3& a, const Vec3& b, const Vec3& c) {
    Vec3 e1 = {b.x - a.x, b.y - a.y, b.z - a.z};
    Vec3 e2 = {c.x - a.x, c.y - a.y, c.z - a.z};
    out.x = e1.y * e2.z - e1.z * e2.y;
    out.y = e1.z * e2.x - e1.x * e2.z;
    out.z = e1.x * e2.y - e1.y * e2.x;
    Normalise(out);
}

Vec3& MovePoint(const Vec3& origin, Vec3& out, float yaw, float pitch, float distance) {
    float h = yaw * kDegToRad;
    float p = pitch * kDegToRad;
    Vec3 start = origin;  // out may alias origin
    out.x = start.x + distance * SinF(h) * CosF(p);
    out.y = start.y + distance * -SinF(p);
    out.z = start.z + distance * CosF(h) * CosF(p);
    return out;
}

float AngleDelta(float a, float b) {
    if (b > a) {
        b -= 360.0f;
    }
    return a - 180.0f - b;
}

int SideOfEdge(const Vec3& p, const Vec3& a, const Vec3& b) {
    Vec3 d = {p.x - a.x, p.y - a.y, 0.0f};
    Vec3 perpendicular = {-(b.y - a.y), b.x - a.x, 0.0f};
    float side = Dot(d, perpendicular);
    return side > 0.0f ? 1 : (side < 0.0f ? -1 : 0);
}

int PointInTriangle2D(const Vec3& p, const Vec3& a, const Vec3& b, const Vec3& c) {
    int sum = SideOfEdge(p, a, b) + SideOfEdge(p, b, c) + SideOfEdge(p, c, a);
    return sum == 3 || sum == -3;
}

// Keeps the two components that remain when the normal's dominant axis is dropped
// (x on ties, as the lightmap builder does).
static Vec3 Project(const Vec3& v, int dropped) {
    if (dropped == 0) {
        return {v.y, v.z, 0.0f};
    }
    if (dropped == 1) {
        return {v.x, v.z, 0.0f};
    }
    return {v.x, v.y, 0.0f};
}

static int DominantAxis(const Vec3& n) {
    float ax = AbsF(n.x), ay = AbsF(n.y), az = AbsF(n.z);
    if (ay > ax && ay > az) {
        return 1;
    }
    if (az > ax && az > ay) {
        return 2;
    }
    return 0;
}

int SegmentHitsTriangle(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& s0, const Vec3& s1,
                        Vec3& hit) {
    Vec3 n;
    TriangleNormal(n, a, b, c);
    float k = Dot(n, a);
    float k0 = Dot(n, s0);
    float k1 = Dot(n, s1);
    if (!((k0 <= k && k <= k1) || (k1 <= k && k <= k0))) {
        return 0;
    }
    float denominator = k1 - k0;
    if (denominator == 0.0f) {
        denominator = 0.00001f;
    }
    float t = (k - k0) / denominator;
    hit.x = s0.x + (s1.x - s0.x) * t;
    hit.y = s0.y + (s1.y - s0.y) * t;
    hit.z = s0.z + (s1.z - s0.z) * t;
    int dropped = DominantAxis(n);
    return PointInTriangle2D(Project(hit, dropped), Project(a, dropped), Project(b, dropped),
                             Project(c, dropped));
}

void ScreenToWorld(int x, int y, Vec3& out) {
    float depth = 0.0f;
    int flippedY = g_window.height - y;
    glReadPixels(x, flippedY, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    double wx = 0.0, wy = 0.0, wz = 0.0;
    gluUnProject(x, flippedY, depth, g_window.modelview, g_window.projection, g_window.viewport, &wx, &wy,
                 &wz);
    out.x = static_cast<float>(wx);
    out.y = static_cast<float>(wy);
    out.z = static_cast<float>(wz);
}
