// The steps of baking one triangle that both builders share.
#include <cstdlib>
#include <cstring>

#include "resources/lightmap_builder_local.h"
#include "resources/location.h"
#include "resources/mesh.h"

// Lumels per side: extent x quality, truncated, kept between 8 and 128.
static int LumelsAlong(float extent, float quality) {
    float texels = extent * quality;
    if (!(texels >= 8.0f)) {
        return 8;  // also NaN from a degenerate triangle
    }
    if (texels >= 128.0f) {
        return 128;
    }
    return static_cast<int>(texels);
}

// The point of the plane above (s, t) of the projection.
static LmVec PlanePoint(const LumelPlan& plan, float s, float t) {
    const LmVec& n = plan.normal;
    if (plan.axis == 0) {
        return {-(n.y * s + n.z * t + plan.d) / n.x, s, t};
    }
    if (plan.axis == 1) {
        return {s, -(n.x * s + n.z * t + plan.d) / n.y, t};
    }
    return {s, t, -(n.x * s + n.y * t + plan.d) / n.z};
}

void PlanLumels(const FrameVertex* triangle, float quality, LumelPlan& plan) {
    LmVec p[3];
    for (int k = 0; k < 3; k++) {
        p[k] = LmMake(triangle[k].position);
    }
    plan.normal = LmTriangleNormal(p[0], p[1], p[2]);
    plan.d = -LmDot(plan.normal, p[0]);
    plan.axis = LmDominantAxis(plan.normal);
    for (int k = 0; k < 3; k++) {
        LmProject(p[k], plan.axis, &plan.s[k], &plan.t[k]);
    }
    float sMin = plan.s[0], sMax = plan.s[0], tMin = plan.t[0], tMax = plan.t[0];
    for (int k = 1; k < 3; k++) {
        sMin = plan.s[k] < sMin ? plan.s[k] : sMin;
        sMax = plan.s[k] > sMax ? plan.s[k] : sMax;
        tMin = plan.t[k] < tMin ? plan.t[k] : tMin;
        tMax = plan.t[k] > tMax ? plan.t[k] : tMax;
    }
    plan.sMin = sMin;
    plan.tMin = tMin;
    plan.es = sMax - sMin;
    plan.et = tMax - tMin;
    plan.w = LumelsAlong(plan.es, quality) / 4;
    plan.h = LumelsAlong(plan.et, quality) / 4;
    plan.origin = PlanePoint(plan, sMin, tMin);
    LmVec a = PlanePoint(plan, sMax, tMin);
    LmVec b = PlanePoint(plan, sMin, tMax);
    plan.edgeS = {a.x - plan.origin.x, a.y - plan.origin.y, a.z - plan.origin.z};
    plan.edgeT = {b.x - plan.origin.x, b.y - plan.origin.y, b.z - plan.origin.z};
}

void CornerCoords(const LumelPlan& plan, int page, int x, int y, LightmapVertex* out) {
    for (int k = 0; k < 3; k++) {
        float sN = (plan.s[k] - plan.sMin) / plan.es;
        float tN = (plan.t[k] - plan.tMin) / plan.et;
        out[k].page = static_cast<unsigned int>(page);
        out[k].u = (static_cast<float>(4 * plan.w - 2) * sN + static_cast<float>(x) + 1.0f) / 256.0f;
        out[k].v = (static_cast<float>(4 * plan.h - 2) * tN + static_cast<float>(y) + 1.0f) / 256.0f;
    }
}

void PieceBoxTriangles(const float* lo, const float* hi, LmVec triangles[12][3]) {
    // Corner c has x from bit 0, y from bit 1, z from bit 2 (0 = low, 1 = high).
    LmVec corner[8];
    for (int c = 0; c < 8; c++) {
        corner[c] = {(c & 1) ? hi[0] : lo[0], (c & 2) ? hi[1] : lo[1], (c & 4) ? hi[2] : lo[2]};
    }
    static const int kFaces[6][4] = {{0, 2, 6, 4}, {1, 5, 7, 3}, {0, 4, 5, 1},
                                     {2, 3, 7, 6}, {0, 1, 3, 2}, {4, 6, 7, 5}};
    for (int f = 0; f < 6; f++) {
        const int* q = kFaces[f];
        LmVec* first = triangles[f * 2];
        LmVec* second = triangles[f * 2 + 1];
        first[0] = second[0] = corner[q[0]];
        first[1] = corner[q[1]];
        first[2] = second[1] = corner[q[2]];
        second[2] = corner[q[3]];
    }
}

int PointInBox(const float* lo, const float* hi, const LmVec& p) {
    return p.x >= lo[0] && p.x <= hi[0] && p.y >= lo[1] && p.y <= hi[1] && p.z >= lo[2] && p.z <= hi[2];
}

int SegmentHitsPieceBox(const float* lo, const float* hi, const LmVec& s0, const LmVec& s1) {
    if (PointInBox(lo, hi, s0) || PointInBox(lo, hi, s1)) {
        return 1;
    }
    LmVec triangles[12][3];
    PieceBoxTriangles(lo, hi, triangles);
    for (int t = 0; t < 12; t++) {
        if (LmSegmentHitsTriangle(triangles[t][0], triangles[t][1], triangles[t][2], s0, s1)) {
            return 1;
        }
    }
    return 0;
}

int PieceIsLightmapped(const Location& location, int piece) {
    const LocationPiece* p = location.pieces[piece];
    return p && !(p->model.modelFlag & 0x10) && p->model.frameVertices;
}

unsigned int PrepareLightmapCoords(Location& location) {
    LightmapSet& set = location.lightmaps;
    unsigned int triangles = 0;
    for (int i = 0; i < location.pieceCount; i++) {
        if (!PieceIsLightmapped(location, i)) {
            continue;
        }
        unsigned int count = location.pieces[i]->model.frameTriangles * 3;
        free(set.coords[i]);
        set.coords[i] = static_cast<LightmapVertex*>(malloc((count ? count : 1) * sizeof(LightmapVertex)));
        set.coordCounts[i] = count;
        // Triangles that find no room keep this entry, which the lightmapped draw skips.
        for (unsigned int k = 0; k < count; k++) {
            set.coords[i][k] = {LightmapSet::kNoPage, 0.0f, 0.0f};
        }
        triangles += count / 3;
    }
    return triangles;
}

int CommitLumels(LightmapSet& set, const LumelPlan& plan, const unsigned char* lumels, int lit,
                 LightmapVertex* out) {
    int page, column, row;
    if (!set.AllocateArea(plan.w, plan.h, &page, &column, &row)) {
        return 0;
    }
    int x = column * 4, y = row * 4;
    unsigned char* texels = set.EnsurePage(page);
    CornerCoords(plan, page, x, y, out);
    int width = plan.w * 4, height = plan.h * 4;
    for (int i = 0; i < width; i++) {
        for (int j = 0; j < height; j++) {
            memcpy(texels + ((y + j) * LightmapSet::kPageSize + x + i) * 3, lumels + (i * height + j) * 3, 3);
        }
    }
    if (!lit) {
        if (set.sharedBlackSet) {
            out[0] = out[1] = out[2] = set.sharedBlack;
            set.FreeArea(plan.w, plan.h, page, column, row);
            return 1;
        }
        set.sharedBlackSet = 1;
        set.sharedBlack = out[0];
    }
    set.areaCount++;
    return 1;
}
