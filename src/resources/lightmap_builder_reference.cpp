// The lightmap builder as a plain loop: lumels x lights x pieces, with the
// 12-triangle box test as the only shortcut. It is slow and obviously right,
// which is what the fast builder (lightmap_builder.cpp) is measured against:
// both must produce the same pages and coordinates byte for byte.
#include "resources/lightmap_builder.h"
#include "resources/lightmap_builder_local.h"
#include "resources/location.h"
#include "resources/mesh.h"

// 1 when another piece blocks the segment from the light to p.
static int Shadowed(const Location& location, int ownPiece, const LmVec& light, const LmVec& p) {
    for (int q = 0; q < location.pieceCount; q++) {
        const LocationPiece* piece = location.pieces[q];
        if (q == ownPiece || !piece || (piece->model.modelFlag & 0x02) || !piece->model.frames[0] ||
            !piece->model.frameVertices) {
            continue;
        }
        const Mesh* frame = piece->model.frames[0];
        if (!SegmentHitsPieceBox(frame->boundsMin, frame->boundsMax, light, p)) {
            continue;
        }
        const FrameVertex* v = piece->model.frameVertices;
        for (unsigned int t = 0; t < piece->model.frameTriangles; t++) {
            if (LmSegmentHitsTriangle(LmMake(v[t * 3].position), LmMake(v[t * 3 + 1].position),
                                      LmMake(v[t * 3 + 2].position), light, p)) {
                return 1;
            }
        }
    }
    return 0;
}

void LightmapSet::BuildTriangle(const FrameVertex* triangle, LightmapVertex* out, int piece, int firstVertex,
                                const Location* location) {
    (void)firstVertex;
    LumelPlan plan;
    PlanLumels(triangle, quality, plan);
    int page, column, row;
    if (!AllocateArea(plan.w, plan.h, &page, &column, &row)) {
        return;
    }
    int x = column * 4, y = row * 4;
    unsigned char* texels = EnsurePage(page);
    CornerCoords(plan, page, x, y, out);

    int receivesShadows = !(location->pieces[piece]->model.modelFlag & 0x01);
    int lit = 0;
    for (int i = 0; i < plan.w * 4; i++) {
        for (int j = 0; j < plan.h * 4; j++) {
            LmVec p = LumelPosition(plan, i, j);
            float colour[3] = {0.0f, 0.0f, 0.0f};
            for (unsigned int l = 0; l < lightCount; l++) {
                const Light& light = lights[l];
                if (!LightFacesPlane(plan, light)) {
                    continue;
                }
                LmVec position = LmMake(light.position);
                float dist = LmDistance(p, position);
                if (!(dist <= light.range)) {
                    continue;
                }
                if (receivesShadows && (light.flags & 1) && Shadowed(*location, piece, position, p)) {
                    continue;
                }
                AddFalloff(colour, light, dist);
            }
            lit |= StoreLumel(colour, texels + ((y + j) * kPageSize + x + i) * 3);
        }
    }

    if (!lit) {
        if (sharedBlackSet) {
            out[0] = out[1] = out[2] = sharedBlack;
            FreeArea(plan.w, plan.h, page, column, row);
            return;
        }
        sharedBlackSet = 1;
        sharedBlack = out[0];
    }
    areaCount++;
}

void BuildLightmapsReference(Location& location) {
    PrepareLightmapCoords(location);
    LightmapSet& set = location.lightmaps;
    for (int i = 0; i < location.pieceCount; i++) {
        if (!PieceIsLightmapped(location, i)) {
            continue;
        }
        const Model& model = location.pieces[i]->model;
        for (unsigned int t = 0; t < model.frameTriangles; t++) {
            set.BuildTriangle(model.frameVertices + t * 3, set.coords[i] + t * 3, i, t * 3, &location);
        }
    }
}
