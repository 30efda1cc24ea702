#include "atlas.h"

#include <algorithm>
#include <cmath>

#include "noise.h"

Image MakeAtlas(const AtlasCell* cells, int count, uint32_t seed) {
    Image img(kAtlasSize, kAtlasSize);
    img.Fill(Rgb(0, 0, 0));
    const int side = kAtlasSize / kAtlasCells;
    for (int c = 0; c < count && c < kAtlasCells * kAtlasCells; c++) {
        int x0 = (c % kAtlasCells) * side, y0 = (c / kAtlasCells) * side;
        for (int y = 0; y < side; y++) {
            for (int x = 0; x < side; x++) {
                float n = Fbm(x * 8.0f / side, y * 8.0f / side, 8, 3, seed + c * 17u);
                float stripe = 0.5f + 0.5f * std::sin(y * 6.2831853f / 8.0f);
                float k = 1.0f + cells[c].grain * (n - 0.5f) * 0.8f - cells[c].stripe * 0.25f * stripe;
                Colour col = cells[c].colour;
                img.Set(x0 + x, y0 + y, Colour{col.r * k, col.g * k, col.b * k, 1.0f});
            }
        }
    }
    return img;
}

void FitToCell(ShapeMesh* mesh, size_t firstTriangle, int cell) {
    if (firstTriangle >= mesh->triangles.size()) {
        return;
    }
    float lo[2] = {1e30f, 1e30f}, hi[2] = {-1e30f, -1e30f};
    for (size_t t = firstTriangle; t < mesh->triangles.size(); t++) {
        for (int k = 0; k < 3; k++) {
            for (int a = 0; a < 2; a++) {
                lo[a] = std::min(lo[a], mesh->triangles[t].uv[k][a]);
                hi[a] = std::max(hi[a], mesh->triangles[t].uv[k][a]);
            }
        }
    }
    // The cell in texture space; rows are counted from the top of the picture, and the
    // picture's top row is v = 1. A margin keeps filtering from reaching the neighbours.
    const float size = 1.0f / kAtlasCells, margin = size * 0.12f;
    float u0 = (cell % kAtlasCells) * size + margin;
    float v1 = 1.0f - (cell / kAtlasCells) * size - margin;
    float span = size - 2.0f * margin;
    for (size_t t = firstTriangle; t < mesh->triangles.size(); t++) {
        for (int k = 0; k < 3; k++) {
            float* uv = mesh->triangles[t].uv[k];
            float su = hi[0] > lo[0] ? (uv[0] - lo[0]) / (hi[0] - lo[0]) : 0.5f;
            float sv = hi[1] > lo[1] ? (uv[1] - lo[1]) / (hi[1] - lo[1]) : 0.5f;
            uv[0] = u0 + su * span;
            uv[1] = v1 - span + sv * span;
        }
    }
}
