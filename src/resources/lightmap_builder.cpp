// The fast lightmap builder. It computes every lumel with exactly the plain
// loop's arithmetic (the shared steps in lightmap_builder_local.h), so pages and
// coordinates come out the same byte for byte; what changes is how the shadow
// question is answered and who does the work:
//
// - per triangle and light, lights that cannot reach the rectangle at all are
//   dropped, and the occluder triangles a ray could possibly meet are gathered
//   once from the tree (boxes padded well beyond rounding);
// - per ray, the occluder that blocked the previous lumel is tried first, then
//   the gathered candidates, each with the exact segment test followed by its
//   piece's box pre-test, as the plain loop would;
// - triangles are baked on several threads in batches and placed on the pages
//   by the calling thread in piece and triangle order, because the allocator,
//   the shared black rectangle and the area count depend on that order.
#include "resources/lightmap_builder.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>
#include <vector>

#include "resources/lightmap_builder_local.h"
#include "resources/lightmap_occluders.h"
#include "resources/location.h"

namespace {

struct TriangleJob {
    int piece;
    unsigned int triangle;
};

struct BakedTriangle {
    LumelPlan plan;
    std::vector<unsigned char> lumels;  // 4w x 4h, column-major, RGB
    int lit;
};

// What one thread keeps between triangles.
struct BakeScratch {
    OccluderQuery query;
    std::vector<int> candidates[LightmapSet::kMaxLights];
    int hints[LightmapSet::kMaxLights];
};

struct BakeShared {
    const Location* location;
    const OccluderTree* tree;
    const std::vector<TriangleJob>* jobs;
    std::vector<BakedTriangle>* baked;
    size_t first;  // first job of the batch
    size_t count;
    std::atomic<size_t> next;
};

}  // namespace

static float MaxAbs(float a, float b) {
    float fa = fabsf(a), fb = fabsf(b);
    return fa > fb ? fa : fb;
}

// The rectangle's four corners on the plane, in cyclic order; every lumel lies between them.
static void RectangleCorners(const LumelPlan& plan, LmVec corners[4]) {
    const LmVec& o = plan.origin;
    const LmVec& s = plan.edgeS;
    const LmVec& t = plan.edgeT;
    corners[0] = o;
    corners[1] = {o.x + s.x, o.y + s.y, o.z + s.z};
    corners[2] = {o.x + s.x + t.x, o.y + s.y + t.y, o.z + s.z + t.z};
    corners[3] = {o.x + t.x, o.y + t.y, o.z + t.z};
}

// How far a computed lumel, or a point on a ray to it, may stray from where exact
// arithmetic would put it: far more than float rounding of these magnitudes.
static float RoundingMargin(const LmVec corners[4], const float* light) {
    float scale = 1.0f;
    for (int k = 0; k < 4; k++) {
        scale = MaxAbs(scale, MaxAbs(corners[k].x, MaxAbs(corners[k].y, corners[k].z)));
    }
    if (light) {
        scale = MaxAbs(scale, MaxAbs(light[0], MaxAbs(light[1], light[2])));
    }
    return scale * 2e-4f;
}

// Box around the rectangle, grown by the rounding margin.
static void RectangleBox(const LmVec corners[4], float* lo, float* hi) {
    float margin = RoundingMargin(corners, nullptr);
    for (int a = 0; a < 3; a++) {
        lo[a] = INFINITY;
        hi[a] = -INFINITY;
    }
    for (int k = 0; k < 4; k++) {
        const float p[3] = {corners[k].x, corners[k].y, corners[k].z};
        for (int a = 0; a < 3; a++) {
            // NaN spreads into the box on purpose: no light is then ruled out.
            lo[a] = (p[a] < lo[a] || p[a] != p[a]) ? p[a] : lo[a];
            hi[a] = (p[a] > hi[a] || p[a] != p[a]) ? p[a] : hi[a];
        }
    }
    for (int a = 0; a < 3; a++) {
        lo[a] -= margin;
        hi[a] += margin;
    }
}

// 1 when no lumel of the rectangle can be within the light's range: the distance from the
// light to the rectangle's box exceeds the range by more than rounding could explain.
static int OutOfReach(const float* lo, const float* hi, const Light& light) {
    double squared = 0.0;
    for (int a = 0; a < 3; a++) {
        double p = light.position[a];
        double gap = p < lo[a] ? lo[a] - p : (p > hi[a] ? p - hi[a] : 0.0);
        squared += gap * gap;
    }
    double range = light.range;
    return sqrt(squared) > range * (1.0 + 1e-5) + 1e-5;  // false for NaN
}

static void BakeOne(const BakeShared& shared, const TriangleJob& job, BakedTriangle& out,
                    BakeScratch& scratch) {
    const Location& location = *shared.location;
    const LightmapSet& set = location.lightmaps;
    const Model& model = location.pieces[job.piece]->model;
    LumelPlan& plan = out.plan;
    PlanLumels(model.frameVertices + job.triangle * 3, set.quality, plan);
    int width = plan.w * 4, height = plan.h * 4;
    out.lumels.assign(static_cast<size_t>(width) * height * 3, 0);

    int receivesShadows = !(model.modelFlag & 0x01);
    LmVec corners[4];
    RectangleCorners(plan, corners);
    float lo[3], hi[3];
    RectangleBox(corners, lo, hi);
    // The lights that can light some lumel, and for those that cast shadows the
    // occluders their rays could meet.
    int active[LightmapSet::kMaxLights];
    int shadowed[LightmapSet::kMaxLights];
    int activeCount = 0;
    for (unsigned int l = 0; l < set.lightCount; l++) {
        const Light& light = set.lights[l];
        if (!LightFacesPlane(plan, light) || OutOfReach(lo, hi, light)) {
            continue;
        }
        shadowed[activeCount] = receivesShadows && (light.flags & 1);
        if (shadowed[activeCount]) {
            ShadowShaft shaft;
            MakeShadowShaft(corners, light.position, RoundingMargin(corners, light.position), shaft);
            shared.tree->Gather(shaft, job.piece, scratch.candidates[l]);
            scratch.hints[l] = -1;
        }
        active[activeCount++] = static_cast<int>(l);
    }

    int lit = 0;
    unsigned char* texel = out.lumels.data();
    for (int i = 0; i < width; i++) {
        for (int j = 0; j < height; j++, texel += 3) {
            LmVec p = LumelPosition(plan, i, j);
            float colour[3] = {0.0f, 0.0f, 0.0f};
            for (int a = 0; a < activeCount; a++) {
                int l = active[a];
                const Light& light = set.lights[l];
                LmVec position = LmMake(light.position);
                float dist = LmDistance(p, position);
                if (!(dist <= light.range)) {
                    continue;
                }
                if (shadowed[a] && shared.tree->BlocksAmong(scratch.candidates[l], position, p, job.piece,
                                                            scratch.query, scratch.hints[l])) {
                    continue;
                }
                AddFalloff(colour, light, dist);
            }
            lit |= StoreLumel(colour, texel);
        }
    }
    out.lit = lit;
}

static void BakeWorker(BakeShared* shared) {
    BakeScratch* scratch = new BakeScratch();
    for (;;) {
        size_t k = shared->next.fetch_add(1);
        if (k >= shared->count) {
            break;
        }
        BakeOne(*shared, (*shared->jobs)[shared->first + k], (*shared->baked)[k], *scratch);
    }
    delete scratch;
}

static std::vector<TriangleJob> CollectJobs(const Location& location) {
    std::vector<TriangleJob> jobs;
    for (int i = 0; i < location.pieceCount; i++) {
        if (!PieceIsLightmapped(location, i)) {
            continue;
        }
        for (unsigned int t = 0; t < location.pieces[i]->model.frameTriangles; t++) {
            jobs.push_back({i, t});
        }
    }
    return jobs;
}

void BuildLightmaps(Location& location, int threads, LightmapProgress progress, void* context) {
    PrepareLightmapCoords(location);
    std::vector<TriangleJob> jobs = CollectJobs(location);
    OccluderTree tree;
    tree.Build(location);
    if (threads <= 0) {
        threads = static_cast<int>(std::thread::hardware_concurrency());
        threads = threads < 1 ? 1 : threads;
    }
    threads = threads > 64 ? 64 : threads;

    // Batches bound the memory held by baked rectangles that wait for their turn.
    const size_t kBatch = 256;
    std::vector<BakedTriangle> baked(kBatch);
    LightmapSet& set = location.lightmaps;
    for (size_t first = 0; first < jobs.size(); first += kBatch) {
        BakeShared shared;
        shared.location = &location;
        shared.tree = &tree;
        shared.jobs = &jobs;
        shared.baked = &baked;
        shared.first = first;
        shared.count = std::min(kBatch, jobs.size() - first);
        shared.next = 0;
        std::vector<std::thread> helpers;
        for (int t = 1; t < threads && static_cast<size_t>(t) < shared.count; t++) {
            helpers.emplace_back(BakeWorker, &shared);
        }
        BakeWorker(&shared);
        for (std::thread& helper : helpers) {
            helper.join();
        }
        for (size_t k = 0; k < shared.count; k++) {
            const TriangleJob& job = jobs[first + k];
            CommitLumels(set, baked[k].plan, baked[k].lumels.data(), baked[k].lit,
                         set.coords[job.piece] + job.triangle * 3);
        }
        if (progress) {
            progress(static_cast<float>(first + shared.count) / static_cast<float>(jobs.size()), context);
        }
    }
}
