// Internals shared by the two lightmap builders (the plain reference loop and
// the accelerated one). Every step whose floating-point result ends up in a
// page or a coordinate lives here once, so both builders do exactly the same
// arithmetic in the same order and their output can be compared byte for byte.
// Only the question "does anything block this light?" is answered differently.
#pragma once

#include <cmath>

#include "resources/lightmap_set.h"
#include "resources/model.h"

class Location;

struct LmVec {
    float x, y, z;
};

inline LmVec LmMake(const float* v) {
    return {v[0], v[1], v[2]};
}

inline float LmSqrt(float value) {
    return static_cast<float>(sqrt(static_cast<double>(value)));
}

inline float LmDot(const LmVec& a, const LmVec& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline float LmDistance(const LmVec& a, const LmVec& b) {
    float dx = a.x - b.x;
    float dy = a.y - b.y;
    float dz = a.z - b.z;
    return LmSqrt(dx * dx + dy * dy + dz * dz);
}

// The unit normal of a, b, c (no guard: a degenerate triangle gives NaN).
inline LmVec LmTriangleNormal(const LmVec& a, const LmVec& b, const LmVec& c) {
    LmVec e1 = {b.x - a.x, b.y - a.y, b.z - a.z};
    LmVec e2 = {c.x - a.x, c.y - a.y, c.z - a.z};
    LmVec n = {e1.y * e2.z - e1.z * e2.y, e1.z * e2.x - e1.x * e2.z, e1.x * e2.y - e1.y * e2.x};
    float length = LmSqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    n.x /= length;
    n.y /= length;
    n.z /= length;
    return n;
}

// 0 for x, 1 for y, 2 for z: the axis whose normal component is strictly largest, x on ties.
inline int LmDominantAxis(const LmVec& n) {
    float ax = fabsf(n.x), ay = fabsf(n.y), az = fabsf(n.z);
    if (ax > ay && ax > az) {
        return 0;
    }
    if (ay > ax && ay > az) {
        return 1;
    }
    if (az > ax && az > ay) {
        return 2;
    }
    return 0;
}

// The two coordinates left when the dominant axis is dropped, in their order.
inline void LmProject(const LmVec& v, int axis, float* s, float* t) {
    if (axis == 0) {
        *s = v.y;
        *t = v.z;
    } else if (axis == 1) {
        *s = v.x;
        *t = v.z;
    } else {
        *s = v.x;
        *t = v.y;
    }
}

inline int LmSideOfEdge(float px, float py, float ax, float ay, float bx, float by) {
    float dx = px - ax, dy = py - ay;
    float side = dx * -(by - ay) + dy * (bx - ax) + 0.0f * 0.0f;
    return side > 0.0f ? 1 : (side < 0.0f ? -1 : 0);
}

// Strictly inside, either winding.
inline int LmPointInTriangle2D(const float* p, const float* a, const float* b, const float* c) {
    int sum = LmSideOfEdge(p[0], p[1], a[0], a[1], b[0], b[1]) +
              LmSideOfEdge(p[0], p[1], b[0], b[1], c[0], c[1]) +
              LmSideOfEdge(p[0], p[1], c[0], c[1], a[0], a[1]);
    return sum == 3 || sum == -3;
}

// The segment test of the shadow rays, given the triangle's normal, plane constant and
// dominant axis (as LmSegmentHitsTriangle computes them) and its projected corners.
inline int LmSegmentHitsPlaneTriangle(const LmVec& n, float k, int axis, const float* a2, const float* b2,
                                      const float* c2, const LmVec& s0, const LmVec& s1) {
    float k0 = LmDot(n, s0);
    float k1 = LmDot(n, s1);
    if (!((k0 <= k && k <= k1) || (k1 <= k && k <= k0))) {
        return 0;
    }
    float denominator = k1 - k0;
    if (denominator == 0.0f) {
        denominator = 0.00001f;
    }
    float t = (k - k0) / denominator;
    LmVec hit = {s0.x + (s1.x - s0.x) * t, s0.y + (s1.y - s0.y) * t, s0.z + (s1.z - s0.z) * t};
    float p[2];
    LmProject(hit, axis, &p[0], &p[1]);
    return LmPointInTriangle2D(p, a2, b2, c2);
}

// 1 when the segment s0 -> s1 meets triangle a, b, c.
inline int LmSegmentHitsTriangle(const LmVec& a, const LmVec& b, const LmVec& c, const LmVec& s0,
                                 const LmVec& s1) {
    LmVec n = LmTriangleNormal(a, b, c);
    float k = LmDot(n, a);
    int axis = LmDominantAxis(n);
    float a2[2], b2[2], c2[2];
    LmProject(a, axis, &a2[0], &a2[1]);
    LmProject(b, axis, &b2[0], &b2[1]);
    LmProject(c, axis, &c2[0], &c2[1]);
    return LmSegmentHitsPlaneTriangle(n, k, axis, a2, b2, c2, s0, s1);
}

// Everything about one triangle's rectangle that does not depend on where it lands.
struct LumelPlan {
    LmVec normal;
    float d;
    int axis;
    float s[3], t[3];  // projected corners
    float sMin, tMin, es, et;
    int w, h;  // rectangle size in cells
    LmVec origin, edgeS, edgeT;
};

// Plane, dominant axis, projection, size and the rectangle's corners on the plane.
void PlanLumels(const FrameVertex* triangle, float quality, LumelPlan& plan);
// The three corner entries for a rectangle at texel (x, y) of page.
void CornerCoords(const LumelPlan& plan, int page, int x, int y, LightmapVertex* out);
// World position of lumel (i, j).
inline LmVec LumelPosition(const LumelPlan& plan, int i, int j) {
    float fi = static_cast<float>(i) / static_cast<float>(4 * plan.w - 1);
    float fj = static_cast<float>(j) / static_cast<float>(4 * plan.h - 1);
    return {plan.origin.x + plan.edgeS.x * fi + plan.edgeT.x * fj,
            plan.origin.y + plan.edgeS.y * fi + plan.edgeT.y * fj,
            plan.origin.z + plan.edgeS.z * fi + plan.edgeT.z * fj};
}
// 1 when the light is on the front side of the triangle's plane (or on it).
inline int LightFacesPlane(const LumelPlan& plan, const Light& light) {
    return LmDot(plan.normal, LmMake(light.position)) + plan.d >= 0.0f;
}
// Adds the light's fall-off at distance dist to colour.
inline void AddFalloff(float* colour, const Light& light, float dist) {
    for (int c = 0; c < 3; c++) {
        colour[c] += light.colour[c] * (light.range - dist) / light.range;
    }
}
// The stored byte of a clamped channel: truncated towards zero; NaN and absurd values give 0.
inline unsigned char ChannelByte(float value) {
    if (!(value >= -8000000.0f)) {
        return 0;
    }
    return static_cast<unsigned char>(static_cast<int>(value * 255.0f) & 0xFF);
}
// Clamps the colour, writes the three bytes; returns 1 when any channel is not 0.
inline int StoreLumel(float* colour, unsigned char* texel) {
    int lit = 0;
    for (int c = 0; c < 3; c++) {
        if (colour[c] > 1.0f) {
            colour[c] = 1.0f;
        }
        if (colour[c] != 0.0f) {
            lit = 1;
        }
        texel[c] = ChannelByte(colour[c]);
    }
    return lit;
}

// The bounding-box pre-test of one occluder piece: the segment crosses one of the box's
// 12 triangles, or either end lies inside the box (faces included).
int SegmentHitsPieceBox(const float* boundsMin, const float* boundsMax, const LmVec& s0, const LmVec& s1);
// The box's 12 triangles, two per face, in the order the pre-test tries them.
void PieceBoxTriangles(const float* boundsMin, const float* boundsMax, LmVec triangles[12][3]);
// 1 when p lies inside the box or on its faces.
int PointInBox(const float* boundsMin, const float* boundsMax, const LmVec& p);

// Gives every lit piece its coordinate array, pre-filled with "no lightmap" entries.
// Returns the total number of triangles to bake.
unsigned int PrepareLightmapCoords(Location& location);
// 1 when the piece gets lightmaps at all.
int PieceIsLightmapped(const Location& location, int piece);
// Places a baked rectangle: allocation, page creation, texels, the shared black
// rectangle and the area count, exactly as the reference does it step by step.
// lumels holds 4w x 4h RGB texels, column-major (i outer, j inner). Returns 0 when no
// page had room (out is then untouched).
int CommitLumels(LightmapSet& set, const LumelPlan& plan, const unsigned char* lumels, int lit,
                 LightmapVertex* out);
