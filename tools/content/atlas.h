// Colour atlases for models: a 256 x 256 picture of 4 x 4 cells, each cell
// one material (a base colour with fine noise, so surfaces do not look flat),
// and the mapping that squeezes a part's texture coordinates into its cell.
// A model made of many small parts then needs only one texture.
#pragma once

#include <cstddef>
#include <cstdint>

#include "image.h"
#include "shape_mesh.h"

enum { kAtlasSize = 256, kAtlasCells = 4 };

struct AtlasCell {
    Colour colour;
    float grain;   // strength of the noise, 0..1
    float stripe;  // strength of horizontal stripes (cloth, scales), 0..1
};

// Paints an atlas from up to 16 cells (the rest stay black).
Image MakeAtlas(const AtlasCell* cells, int count, uint32_t seed);
// Maps the texture coordinates of triangles [firstTriangle, end) into atlas cell index
// (row-major from the top-left), keeping their proportions inside the cell.
void FitToCell(ShapeMesh* mesh, size_t firstTriangle, int cell);
