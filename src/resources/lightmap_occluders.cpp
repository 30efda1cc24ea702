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

void OccluderTree::Build(const Location& source) {
    location = &source;
    occluders.clear();
    alwaysTested.clear();
    nodes.clear();
    // Rounding in the exact test moves a hit point by a few float steps of the scene's
    // largest coordinate; the boxes are padded by a thousand times that.
    double pad = SceneScale(source) * 1e-4 + 1e-3;
    this->pad = static_cast<float>(pad);
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
            Occluder o;
            o.normal = LmTriangleNormal(p[0], p[1], p[2]);
            if (std::isnan(o.normal.x) || std::isnan(o.normal.y) || std::isnan(o.normal.z)) {
                continue;  // the exact test can never report a hit on it
            }
            o.k = LmDot(o.normal, p[0]);
            o.axis = LmDominantAxis(o.normal);
            LmProject(p[0], o.axis, &o.a2[0], &o.a2[1]);
            LmProject(p[1], o.axis, &o.b2[0], &o.b2[1]);
            LmProject(p[2], o.axis, &o.c2[0], &o.c2[1]);
            o.piece = i;
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
        const Mesh* frame = location->pieces[piece]->model.frames[0];
        query.stamp[piece] = query.generation;
        query.boxHit[piece] =
            static_cast<unsigned char>(SegmentHitsPieceBox(frame->boundsMin, frame->boundsMax, light, point));
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

void OccluderTree::Gather(const float* lo, const float* hi, int ownPiece, std::vector<int>& out) const {
    out.clear();
    if (nodes.empty()) {
        return;
    }
    float grownLo[3], grownHi[3];
    for (int a = 0; a < 3; a++) {
        grownLo[a] = lo[a] - pad;
        grownHi[a] = hi[a] + pad;
    }
    int stack[128];
    int depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
        const OccluderNode& node = nodes[stack[--depth]];
        int overlaps = 1;
        for (int a = 0; a < 3; a++) {
            // Written so that a NaN anywhere keeps the node.
            if (node.boundsMin[a] > grownHi[a] || node.boundsMax[a] < grownLo[a]) {
                overlaps = 0;
            }
        }
        if (!overlaps) {
            continue;
        }
        if (node.count == 0) {
            stack[depth++] = node.first + 1;
            stack[depth++] = node.first;
            continue;
        }
        for (int i = node.first; i < node.first + node.count; i++) {
            if (occluders[i].piece != ownPiece) {
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
    for (int index : candidates) {
        if (Test(index, light, point, ownPiece, query)) {
            hint = index;
            return 1;
        }
    }
    return 0;
}
