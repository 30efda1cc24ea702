#include "resources/lightmap_occluders.h"

#include <algorithm>
#include <cmath>

#include "resources/location.h"
#include "resources/mesh.h"

static const int kLeafSize = 4;

// Largest absolute coordinate of everything a ray can touch: the pieces and the lights.
static double SceneScale(const Location& location) {
    double scale = 1.0;
    for (int i = 0; i < location.pieceCount; i++) {
        if (!location.pieces[i]) {
            continue;
        }
        const Model& model = location.pieces[i]->model;
        if (!model.frameVertices) {
            continue;
        }
        for (unsigned int v = 0; v < model.frameTriangles * 3; v++) {
            for (int a = 0; a < 3; a++) {
                double value = fabs(static_cast<double>(model.frameVertices[v].position[a]));
                if (std::isfinite(value) && value > scale) {
                    scale = value;
                }
            }
        }
    }
    const LightmapSet& set = location.lightmaps;
    for (unsigned int l = 0; l < set.lightCount; l++) {
        for (int a = 0; a < 3; a++) {
            double value = fabs(static_cast<double>(set.lights[l].position[a]));
            if (std::isfinite(value) && value > scale) {
                scale = value;
            }
        }
    }
    return scale;
}

// The prepared form of triangle a, b, c: exactly what the segment test computes from it.
static Occluder MakeOccluder(const LmVec& a, const LmVec& b, const LmVec& c, int piece) {
    Occluder o;
    o.normal = LmTriangleNormal(a, b, c);
    o.k = LmDot(o.normal, a);
    o.axis = LmDominantAxis(o.normal);
    LmProject(a, o.axis, &o.a2[0], &o.a2[1]);
    LmProject(b, o.axis, &o.b2[0], &o.b2[1]);
    LmProject(c, o.axis, &o.c2[0], &o.c2[1]);
    o.piece = piece;
    for (int a = 0; a < 3; a++) {
        o.boxMin[a] = -INFINITY;
        o.boxMax[a] = INFINITY;
    }
    return o;
}

void MakeShadowShaft(const LmVec corners[4], const float* light, double margin, ShadowShaft& shaft) {
    double points[5][3] = {{light[0], light[1], light[2]}};
    for (int k = 0; k < 4; k++) {
        points[k + 1][0] = corners[k].x;
        points[k + 1][1] = corners[k].y;
        points[k + 1][2] = corners[k].z;
    }
    for (int a = 0; a < 3; a++) {
        shaft.lo[a] = static_cast<float>(points[0][a] - margin);
        shaft.hi[a] = static_cast<float>(points[0][a] + margin);
        for (int k = 1; k < 5; k++) {
            shaft.lo[a] = std::min(shaft.lo[a], static_cast<float>(points[k][a] - margin));
            shaft.hi[a] = std::max(shaft.hi[a], static_cast<float>(points[k][a] + margin));
        }
    }
    // Candidate planes: through the light and each edge of the rectangle, and the
    // rectangle's own plane facing either way. Any direction is sound, because each
    // plane's limit is measured over every point; the choice only decides how tight.
    double candidates[6][3];
    const double* l = points[0];
    for (int k = 0; k < 4; k++) {
        const double* c0 = points[k + 1];
        const double* c1 = points[(k + 1) % 4 + 1];
        double e[3] = {c1[0] - c0[0], c1[1] - c0[1], c1[2] - c0[2]};
        double f[3] = {l[0] - c0[0], l[1] - c0[1], l[2] - c0[2]};
        candidates[k][0] = e[1] * f[2] - e[2] * f[1];
        candidates[k][1] = e[2] * f[0] - e[0] * f[2];
        candidates[k][2] = e[0] * f[1] - e[1] * f[0];
    }
    const double* c0 = points[1];
    double e[3] = {points[2][0] - c0[0], points[2][1] - c0[1], points[2][2] - c0[2]};
    double f[3] = {points[4][0] - c0[0], points[4][1] - c0[1], points[4][2] - c0[2]};
    candidates[4][0] = e[1] * f[2] - e[2] * f[1];
    candidates[4][1] = e[2] * f[0] - e[0] * f[2];
    candidates[4][2] = e[0] * f[1] - e[1] * f[0];
    for (int a = 0; a < 3; a++) {
        candidates[5][a] = -candidates[4][a];
    }
    shaft.planes = 0;
    shaft.margin = margin;
    for (int k = 0; k < 6; k++) {
        double* n = candidates[k];
        double length = sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
        if (!(length > 1e-12) || !std::isfinite(length)) {
            continue;
        }
        double* out = shaft.normal[shaft.planes];
        double limit = -INFINITY;
        for (int a = 0; a < 3; a++) {
            out[a] = n[a] / length;
        }
        for (int p = 0; p < 5; p++) {
            limit = std::max(limit, out[0] * points[p][0] + out[1] * points[p][1] + out[2] * points[p][2]);
        }
        if (!std::isfinite(limit)) {
            continue;
        }
        shaft.limit[shaft.planes++] = limit;
    }
}

// 1 when the box lo..hi (grown by the tree's padding) certainly holds no point a ray of the
// shaft reaches. NaN anywhere keeps the box.
static int OutsideShaft(const float* lo, const float* hi, const ShadowShaft& shaft, float pad) {
    for (int a = 0; a < 3; a++) {
        if (lo[a] > shaft.hi[a] + pad || hi[a] < shaft.lo[a] - pad) {
            return 1;
        }
    }
    for (int p = 0; p < shaft.planes; p++) {
        const double* n = shaft.normal[p];
        double nearest = 0.0;
        for (int a = 0; a < 3; a++) {
            nearest += n[a] * (n[a] >= 0.0 ? lo[a] : hi[a]);
        }
        if (nearest > shaft.limit[p] + shaft.margin + pad) {
            return 1;
        }
    }
    return 0;
}

void OccluderTree::Build(const Location& source) {
    location = &source;
    occluders.clear();
    alwaysTested.clear();
    nodes.clear();
    // Rounding in the exact test moves a hit point by a few float steps of the scene's
    // largest coordinate; the boxes are padded by a thousand times that.
    double pad = SceneScale(source) * 1e-4 + 1e-3;
    this->pad = static_cast<float>(pad);
    pieceBoxes.assign(source.pieceCount, PieceBox());
    for (int i = 0; i < source.pieceCount; i++) {
        const LocationPiece* piece = source.pieces[i];
        if (!piece || !piece->model.frames[0]) {
            continue;
        }
        PieceBox& box = pieceBoxes[i];
        const Mesh* frame = piece->model.frames[0];
        LmVec triangles[12][3];
        PieceBoxTriangles(frame->boundsMin, frame->boundsMax, triangles);
        for (int a = 0; a < 3; a++) {
            box.boundsMin[a] = frame->boundsMin[a];
            box.boundsMax[a] = frame->boundsMax[a];
        }
        for (int t = 0; t < 12; t++) {
            box.faces[t] = MakeOccluder(triangles[t][0], triangles[t][1], triangles[t][2], i);
        }
    }
    std::vector<float> boxes;  // 6 per tree-held occluder
    std::vector<int> order;
    for (int i = 0; i < source.pieceCount; i++) {
        if (!source.pieces[i]) {
            continue;
        }
        const Model& model = source.pieces[i]->model;
        if ((model.modelFlag & 0x02) || !model.frames[0] || !model.frameVertices) {
            continue;
        }
        for (unsigned int t = 0; t < model.frameTriangles; t++) {
            const FrameVertex* v = model.frameVertices + t * 3;
            LmVec p[3] = {LmMake(v[0].position), LmMake(v[1].position), LmMake(v[2].position)};
            Occluder o = MakeOccluder(p[0], p[1], p[2], i);
            if (std::isnan(o.normal.x) || std::isnan(o.normal.y) || std::isnan(o.normal.z)) {
                continue;  // the exact test can never report a hit on it
            }
            // How far the corners sit off the plane the exact test uses: a sliver's normal
            // can tilt that plane away from the triangle, beyond what padding covers.
            double deviation = 0.0;
            int finite = 1;
            for (int k = 0; k < 3; k++) {
                double along = static_cast<double>(o.normal.x) * p[k].x +
                               static_cast<double>(o.normal.y) * p[k].y +
                               static_cast<double>(o.normal.z) * p[k].z;
                deviation = std::max(deviation, fabs(along - o.k));
                finite &= std::isfinite(p[k].x) && std::isfinite(p[k].y) && std::isfinite(p[k].z);
            }
            int index = static_cast<int>(occluders.size());
            occluders.push_back(o);
            if (!finite || !(deviation * 4.0 < pad)) {
                alwaysTested.push_back(index);
                continue;
            }
            for (int a = 0; a < 3; a++) {
                double lo = std::min({p[0].x, p[1].x, p[2].x});
                double hi = std::max({p[0].x, p[1].x, p[2].x});
                if (a == 1) {
                    lo = std::min({p[0].y, p[1].y, p[2].y});
                    hi = std::max({p[0].y, p[1].y, p[2].y});
                } else if (a == 2) {
                    lo = std::min({p[0].z, p[1].z, p[2].z});
                    hi = std::max({p[0].z, p[1].z, p[2].z});
                }
                boxes.push_back(static_cast<float>(lo - pad));
                boxes.push_back(static_cast<float>(hi + pad));
            }
            order.push_back(index);
        }
    }
    // Boxes are indexed by occluder; fill the ones of always-tested occluders with nothing.
    std::vector<float> byOccluder(occluders.size() * 6, 0.0f);
    for (size_t i = 0; i < order.size(); i++) {
        std::copy(boxes.begin() + i * 6, boxes.begin() + i * 6 + 6, byOccluder.begin() + order[i] * 6);
        Occluder& o = occluders[order[i]];
        for (int a = 0; a < 3; a++) {
            o.boxMin[a] = boxes[i * 6 + a * 2];
            o.boxMax[a] = boxes[i * 6 + a * 2 + 1];
        }
    }
    if (!order.empty()) {
        nodes.push_back(OccluderNode());
        BuildNode(order, byOccluder, 0, static_cast<int>(order.size()), 0);
        // Leaves refer to positions in order; store occluders in that order.
        std::vector<Occluder> sorted;
        sorted.reserve(occluders.size());
        for (int index : order) {
            sorted.push_back(occluders[index]);
        }
        for (int index : alwaysTested) {
            sorted.push_back(occluders[index]);
        }
        int treeCount = static_cast<int>(order.size());
        for (size_t i = 0; i < alwaysTested.size(); i++) {
            alwaysTested[i] = treeCount + static_cast<int>(i);
        }
        occluders.swap(sorted);
    } else {
        std::vector<Occluder> sorted;
        for (int index : alwaysTested) {
            sorted.push_back(occluders[index]);
        }
        for (size_t i = 0; i < alwaysTested.size(); i++) {
            alwaysTested[i] = static_cast<int>(i);
        }
        occluders.swap(sorted);
    }
}

void OccluderTree::BuildNode(std::vector<int>& order, const std::vector<float>& boxes, int first, int count,
                             int nodeIndex) {
    OccluderNode node;
    float centreMin[3], centreMax[3];
    for (int a = 0; a < 3; a++) {
        node.boundsMin[a] = centreMin[a] = INFINITY;
        node.boundsMax[a] = centreMax[a] = -INFINITY;
    }
    for (int i = first; i < first + count; i++) {
        const float* box = &boxes[order[i] * 6];
        for (int a = 0; a < 3; a++) {
            node.boundsMin[a] = std::min(node.boundsMin[a], box[a * 2]);
            node.boundsMax[a] = std::max(node.boundsMax[a], box[a * 2 + 1]);
            float centre = (box[a * 2] + box[a * 2 + 1]) * 0.5f;
            centreMin[a] = std::min(centreMin[a], centre);
            centreMax[a] = std::max(centreMax[a], centre);
        }
    }
    if (count <= kLeafSize) {
        node.first = first;
        node.count = count;
        nodes[nodeIndex] = node;
        return;
    }
    int axis = 0;
    for (int a = 1; a < 3; a++) {
        if (centreMax[a] - centreMin[a] > centreMax[axis] - centreMin[axis]) {
            axis = a;
        }
    }
    int half = count / 2;
    std::nth_element(order.begin() + first, order.begin() + first + half, order.begin() + first + count,
                     [&](int l, int r) {
                         float cl = boxes[l * 6 + axis * 2] + boxes[l * 6 + axis * 2 + 1];
                         float cr = boxes[r * 6 + axis * 2] + boxes[r * 6 + axis * 2 + 1];
                         return cl < cr || (cl == cr && l < r);
                     });
    // The two children sit next to each other, so an inner node needs one index.
    int left = static_cast<int>(nodes.size());
    nodes.push_back(OccluderNode());
    nodes.push_back(OccluderNode());
    node.first = left;
    node.count = 0;
    nodes[nodeIndex] = node;
    BuildNode(order, boxes, first, half, left);
    BuildNode(order, boxes, first + half, count - half, left + 1);
}

int OccluderTree::PieceBoxHit(int piece, const LmVec& light, const LmVec& point, OccluderQuery& query) const {
    if (query.stamp[piece] != query.generation) {
        // SegmentHitsPieceBox with the box's triangles prepared beforehand.
        const PieceBox& box = pieceBoxes[piece];
        int hit = PointInBox(box.boundsMin, box.boundsMax, light) ||
                  PointInBox(box.boundsMin, box.boundsMax, point);
        for (int t = 0; t < 12 && !hit; t++) {
            const Occluder& f = box.faces[t];
            hit = LmSegmentHitsPlaneTriangle(f.normal, f.k, f.axis, f.a2, f.b2, f.c2, light, point);
        }
        query.stamp[piece] = query.generation;
        query.boxHit[piece] = static_cast<unsigned char>(hit);
    }
    return query.boxHit[piece];
}

int OccluderTree::Test(int index, const LmVec& light, const LmVec& point, int ownPiece,
                       OccluderQuery& query) const {
    const Occluder& o = occluders[index];
    if (o.piece == ownPiece) {
        return 0;
    }
    if (query.stamp[o.piece] == query.generation && !query.boxHit[o.piece]) {
        return 0;  // the plain loop never looks inside a piece whose box the ray misses
    }
    if (!LmSegmentHitsPlaneTriangle(o.normal, o.k, o.axis, o.a2, o.b2, o.c2, light, point)) {
        return 0;
    }
    return PieceBoxHit(o.piece, light, point, query);
}

// Segment against a padded box, in double precision.
static int SegmentTouchesBox(const OccluderNode& node, const double* origin, const double* direction) {
    double tMin = 0.0, tMax = 1.0;
    for (int a = 0; a < 3; a++) {
        double lo = node.boundsMin[a], hi = node.boundsMax[a];
        if (direction[a] == 0.0) {
            if (origin[a] < lo || origin[a] > hi) {
                return 0;
            }
            continue;
        }
        double t1 = (lo - origin[a]) / direction[a];
        double t2 = (hi - origin[a]) / direction[a];
        if (t1 > t2) {
            std::swap(t1, t2);
        }
        tMin = std::max(tMin, t1);
        tMax = std::min(tMax, t2);
        if (tMin > tMax) {
            return 0;
        }
    }
    return 1;
}

// A fresh query: forgets the box tests of the last ray, then tries the remembered
// occluder and the ones no box bounds. 1 when one of them blocks.
int OccluderTree::StartQuery(const LmVec& light, const LmVec& point, int ownPiece, OccluderQuery& query,
                             int& hint) const {
    query.generation++;
    if (query.generation == 0) {  // wrapped: forget every stamp
        for (int i = 0; i < 512; i++) {
            query.stamp[i] = 0;
        }
        query.generation = 1;
    }
    if (hint >= 0 && hint < static_cast<int>(occluders.size()) && Test(hint, light, point, ownPiece, query)) {
        return 1;
    }
    for (int index : alwaysTested) {
        if (Test(index, light, point, ownPiece, query)) {
            hint = index;
            return 1;
        }
    }
    return 0;
}

int OccluderTree::Blocks(const LmVec& light, const LmVec& point, int ownPiece, OccluderQuery& query,
                         int& hint) const {
    if (StartQuery(light, point, ownPiece, query, hint)) {
        return 1;
    }
    if (nodes.empty()) {
        return 0;
    }
    double origin[3] = {light.x, light.y, light.z};
    double direction[3] = {static_cast<double>(point.x) - light.x, static_cast<double>(point.y) - light.y,
                           static_cast<double>(point.z) - light.z};
    int stack[128];
    int depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
        const OccluderNode& node = nodes[stack[--depth]];
        if (!SegmentTouchesBox(node, origin, direction)) {
            continue;
        }
        if (node.count == 0) {
            stack[depth++] = node.first + 1;
            stack[depth++] = node.first;
            continue;
        }
        for (int i = node.first; i < node.first + node.count; i++) {
            if (Test(i, light, point, ownPiece, query)) {
                hint = i;
                return 1;
            }
        }
    }
    return 0;
}

void OccluderTree::Gather(const ShadowShaft& shaft, int ownPiece, std::vector<int>& out) const {
    out.clear();
    if (nodes.empty()) {
        return;
    }
    int stack[128];
    int depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
        const OccluderNode& node = nodes[stack[--depth]];
        if (OutsideShaft(node.boundsMin, node.boundsMax, shaft, pad)) {
            continue;
        }
        if (node.count == 0) {
            stack[depth++] = node.first + 1;
            stack[depth++] = node.first;
            continue;
        }
        for (int i = node.first; i < node.first + node.count; i++) {
            const Occluder& o = occluders[i];
            if (o.piece != ownPiece && !OutsideShaft(o.boxMin, o.boxMax, shaft, pad)) {
                out.push_back(i);
            }
        }
    }
}

int OccluderTree::BlocksAmong(const std::vector<int>& candidates, const LmVec& light, const LmVec& point,
                              int ownPiece, OccluderQuery& query, int& hint) const {
    if (StartQuery(light, point, ownPiece, query, hint)) {
        return 1;
    }
    // The segment's own box, grown like the occluders' boxes: a triangle the exact test
    // reports a hit on has its box overlap this one.
    float lo[3] = {std::min(light.x, point.x) - pad, std::min(light.y, point.y) - pad,
                   std::min(light.z, point.z) - pad};
    float hi[3] = {std::max(light.x, point.x) + pad, std::max(light.y, point.y) + pad,
                   std::max(light.z, point.z) + pad};
    for (int index : candidates) {
        const Occluder& o = occluders[index];
        if (o.boxMin[0] > hi[0] || o.boxMax[0] < lo[0] || o.boxMin[1] > hi[1] || o.boxMax[1] < lo[1] ||
            o.boxMin[2] > hi[2] || o.boxMax[2] < lo[2]) {
            continue;
        }
        if (Test(index, light, point, ownPiece, query)) {
            hint = index;
            return 1;
        }
    }
    return 0;
}
