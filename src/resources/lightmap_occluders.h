// The shadow-ray accelerator of the fast lightmap builder: every triangle that
// can cast a shadow, with its plane precomputed, in a bounding-volume tree.
//
// The question it answers is the plain builder's, with the same arithmetic:
// "does any piece other than the receiver, whose box the ray touches, have a
// triangle the ray hits?" The tree only decides which triangles are worth the
// exact test. Its boxes are padded well beyond floating-point rounding, and
// triangles whose plane is too ill-conditioned to bound that way are tested for
// every ray, so no hit the plain loop would find can be skipped.
//
// Per triangle and light the builder describes where all its rays run (a shadow
// shaft: a box and the planes of the light-to-rectangle pyramid) and gathers the
// occluders that reach into it once; each ray then tests only those, after a box
// check of its own. The piece boxes of the pre-test are prepared once, too.
#pragma once

#include <vector>

#include "resources/lightmap_builder_local.h"

class Location;

struct Occluder {
    LmVec normal;
    float k;  // normal . corner 0
    int axis;
    float a2[2], b2[2], c2[2];  // corners without the dominant axis
    int piece;
    float boxMin[3], boxMax[3];  // padded bounds; infinite for the always-tested ones
};

// A piece's bounding box as the pre-test sees it, its 12 triangles prepared once.
struct PieceBox {
    float boundsMin[3];
    float boundsMax[3];
    Occluder faces[12];
};

// Where every shadow ray of one lumel rectangle and one light runs: a box around
// the light and the rectangle, and planes each with the largest distance of the
// light or a rectangle corner (in double precision), so that anything wholly
// beyond one of them by more than margin is out of every ray's way.
struct ShadowShaft {
    float lo[3], hi[3];
    double normal[6][3];
    double limit[6];
    int planes;
    double margin;
};

// The shaft of the light at light and the rectangle with corners in cyclic order.
void MakeShadowShaft(const LmVec corners[4], const float* light, double margin, ShadowShaft& shaft);

struct OccluderNode {
    float boundsMin[3];
    float boundsMax[3];
    int first;  // leaf: first occluder; inner: index of the left child (the right follows it)
    int count;  // occluders in a leaf, 0 for an inner node
};

// Per-thread memory of one ray query: which pieces' boxes were already tested.
struct OccluderQuery {
    unsigned int stamp[512];
    unsigned char boxHit[512];
    unsigned int generation;

    OccluderQuery() : generation(0) {
        for (int i = 0; i < 512; i++) {
            stamp[i] = 0;
            boxHit[i] = 0;
        }
    }
};

class OccluderTree {
public:
    // Collects the triangles of every piece that casts shadows and builds the tree.
    void Build(const Location& location);
    // 1 when the segment from light to point is blocked for a lumel of ownPiece.
    // hint remembers the occluder that blocked last time (per light and thread).
    int Blocks(const LmVec& light, const LmVec& point, int ownPiece, OccluderQuery& query, int& hint) const;
    // Collects the tree-held occluders of pieces other than ownPiece whose padded box
    // reaches into the shaft: every triangle one of its rays could hit.
    void Gather(const ShadowShaft& shaft, int ownPiece, std::vector<int>& out) const;
    // As Blocks, for a segment inside the shaft the candidates were gathered for.
    int BlocksAmong(const std::vector<int>& candidates, const LmVec& light, const LmVec& point, int ownPiece,
                    OccluderQuery& query, int& hint) const;
    // How far every occluder's box was grown beyond its triangle.
    float Padding() const { return pad; }

private:
    std::vector<Occluder> occluders;
    std::vector<int> alwaysTested;  // ill-conditioned triangles, tested for every ray
    std::vector<OccluderNode> nodes;
    std::vector<PieceBox> pieceBoxes;  // by piece index
    const Location* location = nullptr;
    float pad = 0.0f;

    void BuildNode(std::vector<int>& order, const std::vector<float>& boxes, int first, int count,
                   int nodeIndex);
    int PieceBoxHit(int piece, const LmVec& light, const LmVec& point, OccluderQuery& query) const;
    int Test(int index, const LmVec& light, const LmVec& point, int ownPiece, OccluderQuery& query) const;
    int StartQuery(const LmVec& light, const LmVec& point, int ownPiece, OccluderQuery& query,
                   int& hint) const;
};
