// Geometry helpers shared by the lightmap builder, movement and placement code,
// sound positioning and the 2D panels: free functions on three-float vectors
// (y up in memory) and on angles in degrees. Single precision throughout;
// degrees become radians through the factor 0.017453292 and back by dividing by
// it. Nothing here allocates: results go into caller-supplied vectors.
#pragma once

struct Vec3 {
    float x, y, z;
};

const float kDegToRad = 0.017453292f;

// Square root computed in double precision and rounded to float.
float Sqrt(float value);
// Absolute value.
float AbsF(float value);
// Sine of an angle in radians.
float SinF(float radians);
// Cosine of an angle in radians.
float CosF(float radians);

// a.x b.x + a.y b.y + a.z b.z.
float Dot(const Vec3& a, const Vec3& b);
// Euclidean distance between two points.
float Distance(const Vec3& a, const Vec3& b);
// Divides a vector by its length (no guard against a zero vector).
void Normalise(Vec3& v);
// The unit normal of triangle a, b, c: counter-clockwise corners seen from the front face the viewer.
void TriangleNormal(Vec3& out, const Vec3& a, const Vec3& b, const Vec3& c);
// out = origin + distance * (sin yaw cos pitch, -sin pitch, cos yaw cos pitch), angles in degrees;
// out may be origin itself. Returns out.
Vec3& MovePoint(const Vec3& origin, Vec3& out, float yaw, float pitch, float distance);
// a - 180 - b, where b is first taken down by 360 when it is greater than a.
float AngleDelta(float a, float b);
// Which side of the edge a -> b the point p lies on (x and y only): 1, 0 or -1.
int SideOfEdge(const Vec3& p, const Vec3& a, const Vec3& b);
// 1 when p lies strictly inside triangle a, b, c (x and y only, either winding), else 0.
int PointInTriangle2D(const Vec3& p, const Vec3& a, const Vec3& b, const Vec3& c);
// 1 when the segment s0 -> s1 meets triangle a, b, c (the meeting point goes to hit), else 0.
int SegmentHitsTriangle(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& s0, const Vec3& s1,
                        Vec3& hit);
// The world point under window pixel (x, y from the top), read from the depth buffer and unprojected
// with the matrices the last camera setup saved in g_window. Needs a GL context.
void ScreenToWorld(int x, int y, Vec3& out);
