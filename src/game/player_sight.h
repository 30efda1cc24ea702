// Whether the game camera can see the player. The camera stands 505 units out
// on the player's bearing and looks back at the vertical axis, so whatever is
// built between it and the player hides the player; a level is laid out so
// that its solution's path never leaves the player out of sight for longer
// than a moment. This is the designers' check of that, played over a replay.
//
// In a tick the player is hidden when the segments from the camera, where the
// game placed it that tick, to three points of the player's body (just above
// the feet, the middle, the head) all meet something drawn: a triangle of a
// piece that is not hidden and faces the camera (any triangle of a piece drawn
// two-sided), or a triangle of a platform, a collapsing slab or an exit door as
// it stands that tick. Enemies, keys and spikes are small and pass. A texture
// with clear texels (leaves, hedges, pines) hides like any other: its clear
// texels are speckle inside the shape, and a figure behind a hedge does not read.
#pragma once

#include <cstddef>
#include <vector>

#include "game/replay_runner.h"
#include "resources/geometry.h"
#include "resources/model.h"

class Location;

// The longest a shipped solution may leave the player out of sight: half a second.
const unsigned int kMostHiddenTicks = 25;

// Every triangle that can stand between the camera and the player, in small
// groups of one piece or object, each group with its bounding box.
class SightBlockers {
public:
    // Takes the drawn triangles of the location's pieces (kept until the next Build).
    void Build(const Location& location);
    // Adds one drawn piece: triangleCount triangles of three vertices, culled unless twoSided.
    void AddPiece(const FrameVertex* vertices, unsigned int triangleCount, int twoSided);
    // Takes the triangles of the level's solid objects where they stand now (after the pieces').
    void PlaceObjects();
    // 1 when a triangle facing the eye (or two-sided) meets the segment from the eye to the point.
    int Blocks(const Vec3& eye, const Vec3& point) const;
    // 1 when the player stands and every sight line from the game camera to the player is blocked.
    int PlayerHidden() const;

private:
    struct Triangle {
        Vec3 corner[3];
        Vec3 normal;
        int twoSided;
    };
    struct Group {
        float lo[3], hi[3];
        int first, count;
    };
    std::vector<Triangle> triangles;  // the pieces' first, then the objects'
    std::vector<Group> groups;
    size_t pieceTriangles = 0, pieceGroups = 0;

    void AddTriangle(const Vec3& a, const Vec3& b, const Vec3& c, int twoSided);
    // Boxes the triangles from first to the end of the list, a few at a time.
    void CloseGroup(int first);
    void AddGroup(int first, int count);
};

// One level's figures from a replay: how long the player was out of sight at most, and where.
struct HiddenRun {
    int level;
    unsigned int ticks;    // ticks the player was watched in
    unsigned int longest;  // the longest run of consecutive hidden ticks
    unsigned int from;     // the replay tick that run began
    float at[3];           // where the player stood then
};

// Plays a replay headless (the runner's own lines go to report) and appends one entry per level
// played; the ticks run, or -1 when the replay cannot be read.
int CheckReplaySight(const char* path, std::vector<HiddenRun>& levels, ReplayReport report, void* context);
// "level 08: longest hidden 12 ticks (from tick 530 at -120 40 88)".
void FormatHiddenRun(const HiddenRun& run, char* line, int size);
