#include "game/player_sight.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/model.h"

// Heights of the sight points as fractions of the player's model, from its feet.
static const float kBodyPoints[] = {0.15f, 0.5f, 0.9f};

// The objects that stand like scenery: big, solid and drawn with their faces culled.
static const char* const kBlockingObjects[] = {"platform", "collapse", "exit"};

void SightBlockers::AddTriangle(const Vec3& a, const Vec3& b, const Vec3& c, int twoSided) {
    Triangle t = {{a, b, c}, {0, 0, 0}, twoSided};
    TriangleNormal(t.normal, a, b, c);
    if (!std::isfinite(t.normal.x) || !std::isfinite(t.normal.y) || !std::isfinite(t.normal.z)) {
        return;  // no area, nothing drawn
    }
    triangles.push_back(t);
}

// Triangles per box: neighbours in a mesh lie close together, so small runs of them make tight
// boxes, and a sight line passes a whole sky dome or hillside after a few box tests.
static const int kGroupTriangles = 16;

void SightBlockers::CloseGroup(int first) {
    int end = static_cast<int>(triangles.size());
    for (int start = first; start < end; start += kGroupTriangles) {
        AddGroup(start, end - start < kGroupTriangles ? end - start : kGroupTriangles);
    }
}

void SightBlockers::AddGroup(int first, int count) {
    Group g = {{1e30f, 1e30f, 1e30f}, {-1e30f, -1e30f, -1e30f}, first, count};
    for (int i = first; i < first + count; i++) {
        for (const Vec3& v : triangles[i].corner) {
            const float p[3] = {v.x, v.y, v.z};
            for (int axis = 0; axis < 3; axis++) {
                g.lo[axis] = std::min(g.lo[axis], p[axis]);
                g.hi[axis] = std::max(g.hi[axis], p[axis]);
            }
        }
    }
    groups.push_back(g);
}

static Vec3 Corner(const FrameVertex& v) {
    return Vec3{v.position[0], v.position[1], v.position[2]};
}

void SightBlockers::Build(const Location& location) {
    triangles.clear();
    groups.clear();
    pieceTriangles = pieceGroups = 0;
    for (int i = 0; i < location.pieceCount && i < Location::kMaxPieces; i++) {
        const LocationPiece* piece = location.pieces[i];
        if (piece && piece->model.frameVertices && !(piece->model.modelFlag & kPieceHidden)) {
            AddPiece(piece->model.frameVertices, piece->model.frameTriangles,
                     (piece->model.modelFlag & kPieceNoCull) != 0);
        }
    }
}

void SightBlockers::AddPiece(const FrameVertex* vertices, unsigned int triangleCount, int twoSided) {
    triangles.resize(pieceTriangles);
    groups.resize(pieceGroups);
    int first = static_cast<int>(triangles.size());
    for (unsigned int t = 0; t < triangleCount; t++) {
        const FrameVertex* v = vertices + t * 3;
        AddTriangle(Corner(v[0]), Corner(v[1]), Corner(v[2]), twoSided);
    }
    CloseGroup(first);
    pieceTriangles = triangles.size();
    pieceGroups = groups.size();
}

// How the game view places an object's model: turned about z, then x, then y, then moved.
struct Placement {
    float sx, cx, sy, cy, sz, cz;
    const float* at;
};

static Placement PlacementOf(const GameObject& object) {
    const float* r = object.rotation;
    return Placement{sinf(r[0] * kDegToRad), cosf(r[0] * kDegToRad), sinf(r[1] * kDegToRad),
                     cosf(r[1] * kDegToRad), sinf(r[2] * kDegToRad), cosf(r[2] * kDegToRad), object.position};
}

static Vec3 Place(const Placement& p, const float* v) {
    float x = v[0] * p.cz - v[1] * p.sz;
    float y = v[0] * p.sz + v[1] * p.cz;
    float y2 = y * p.cx - v[2] * p.sx;
    float z2 = y * p.sx + v[2] * p.cx;
    return Vec3{x * p.cy + z2 * p.sy + p.at[0], y2 + p.at[1], -x * p.sy + z2 * p.cy + p.at[2]};
}

static bool BlocksSight(const GameObject& object) {
    for (const char* type : kBlockingObjects) {
        if (strcmp(object.type, type) == 0) {
            return object.model && object.model->frameVertices;
        }
    }
    return false;
}

void SightBlockers::PlaceObjects() {
    triangles.resize(pieceTriangles);
    groups.resize(pieceGroups);
    for (int i = 0; i < kMaxObjects; i++) {
        const GameObject* object = objects[i];
        if (!object || !BlocksSight(*object)) {
            continue;
        }
        const Model& model = *object->model;
        Placement placement = PlacementOf(*object);
        int first = static_cast<int>(triangles.size());
        for (unsigned int t = 0; t < model.frameTriangles; t++) {
            const FrameVertex* v = model.frameVertices + t * 3;
            AddTriangle(Place(placement, v[0].position), Place(placement, v[1].position),
                        Place(placement, v[2].position), 0);
        }
        CloseGroup(first);
    }
}

// Slab test: 1 when the segment s0 -> s1 passes through the box (edges included).
static int SegmentMeetsBox(const float* lo, const float* hi, const Vec3& s0, const Vec3& s1) {
    const float a[3] = {s0.x, s0.y, s0.z}, b[3] = {s1.x, s1.y, s1.z};
    float enter = 0.0f, leave = 1.0f;
    for (int axis = 0; axis < 3; axis++) {
        float d = b[axis] - a[axis];
        if (d == 0.0f) {
            if (a[axis] < lo[axis] || a[axis] > hi[axis]) {
                return 0;
            }
            continue;
        }
        float t0 = (lo[axis] - a[axis]) / d, t1 = (hi[axis] - a[axis]) / d;
        if (t0 > t1) {
            float swap = t0;
            t0 = t1;
            t1 = swap;
        }
        enter = std::max(enter, t0);
        leave = std::min(leave, t1);
        if (enter > leave) {
            return 0;
        }
    }
    return 1;
}

int SightBlockers::Blocks(const Vec3& eye, const Vec3& point) const {
    // Boxes are padded a little: the slab test must not lose a triangle the exact test would hit.
    const float pad = 0.01f;
    for (const Group& g : groups) {
        const float lo[3] = {g.lo[0] - pad, g.lo[1] - pad, g.lo[2] - pad};
        const float hi[3] = {g.hi[0] + pad, g.hi[1] + pad, g.hi[2] + pad};
        if (!SegmentMeetsBox(lo, hi, eye, point)) {
            continue;
        }
        for (int i = g.first; i < g.first + g.count; i++) {
            const Triangle& t = triangles[i];
            Vec3 toEye = {eye.x - t.corner[0].x, eye.y - t.corner[0].y, eye.z - t.corner[0].z};
            if (!t.twoSided && Dot(t.normal, toEye) <= 0.0f) {
                continue;  // culled: the camera sees its back
            }
            Vec3 hit;
            if (SegmentHitsTriangle(t.corner[0], t.corner[1], t.corner[2], eye, point, hit)) {
                return 1;
            }
        }
    }
    return 0;
}

int SightBlockers::PlayerHidden() const {
    if (!player || !player->model || !player->model->frames[0]) {
        return 0;
    }
    const Mesh& body = *player->model->frames[0];
    for (float f : kBodyPoints) {
        float height = body.boundsMin[1] + (body.boundsMax[1] - body.boundsMin[1]) * f;
        Vec3 point = {player->position[0], player->position[1] + height, player->position[2]};
        if (!Blocks(g_camera.position, point)) {
            return 0;
        }
    }
    return 1;
}

// What the check carries from tick to tick.
struct SightWatch {
    std::vector<HiddenRun>* levels;
    SightBlockers blockers;
    int level;
    int lives;
    unsigned int run;        // hidden ticks in a row up to now
    unsigned int runStart;   // the tick the current run began
    float runAt[3];
    bool left;  // the game left the last level entered (a finish, the closing scene)
};

static void WatchTick(unsigned int tick, void* context) {
    SightWatch& watch = *static_cast<SightWatch*>(context);
    if (g_scene != SceneGame) {
        watch.left = true;
        return;
    }
    if (level != watch.level) {
        watch.left = false;
        watch.blockers.Build(g_location);
        watch.levels->push_back(HiddenRun{level, 0, 0, 0, {0, 0, 0}});
    }
    // A tick that loaded a level (a new one, or the same one after a death) did not place the camera.
    bool loaded = level != watch.level || lives != watch.lives;
    watch.level = level;
    watch.lives = lives;
    if (loaded || !player || levelComplete) {
        watch.run = 0;
        return;
    }
    HiddenRun& figures = watch.levels->back();
    figures.ticks++;
    watch.blockers.PlaceObjects();
    if (!watch.blockers.PlayerHidden()) {
        watch.run = 0;
        return;
    }
    if (watch.run++ == 0) {
        watch.runStart = tick;
        memcpy(watch.runAt, player->position, sizeof(watch.runAt));
    }
    if (watch.run > figures.longest) {
        figures.longest = watch.run;
        figures.from = watch.runStart;
        memcpy(figures.at, watch.runAt, sizeof(figures.at));
    }
}

int CheckReplaySight(const char* path, std::vector<HiddenRun>& levels, ReplayReport report, void* context) {
    static SightWatch watch;  // the blockers' tables are kept from one replay to the next
    watch.levels = &levels;
    watch.level = -1;
    watch.lives = -1;
    watch.run = 0;
    watch.left = false;
    size_t first = levels.size();
    int ticks = RunReplayFile(path, report, context, 0, WatchTick, &watch);
    // A solution runs on for a few ticks into the next level: a level entered after the first
    // that the replay ends in is not one it plays.
    if (ticks < 0) {
        levels.resize(first);
    } else if (levels.size() > first + 1 && !watch.left) {
        levels.pop_back();
    }
    return ticks;
}

void FormatHiddenRun(const HiddenRun& run, char* line, int size) {
    if (run.longest == 0) {
        snprintf(line, size, "level %02i: longest hidden 0 ticks", run.level);
        return;
    }
    // Rounded to whole units, without a "-0" for what only misses zero.
    float at[3];
    for (int i = 0; i < 3; i++) {
        at[i] = std::fabs(run.at[i]) < 0.5f ? 0.0f : run.at[i];
    }
    snprintf(line, size, "level %02i: longest hidden %u ticks (from tick %u at %.0f %.0f %.0f)", run.level,
             run.longest, run.from, at[0], at[1], at[2]);
}
