// Turns tool geometry into the engine's models and model files. Frame 0 gets
// the triangles, one texture coordinate per distinct (u, v) and the corner
// normals of ShapeMesh::CornerNormals, scaled so their absolute components sum
// to 1 (the form the model loader leaves them in, so a saved model reads back
// exactly as it was built). Later frames are the mesh's extra position sets.
#pragma once

#include <cstdint>
#include <vector>

#include "shape_mesh.h"

class Model;

// Fills model (cleared first) from mesh with the given flag; false when the mesh is too
// large for 16-bit counts, has more than 512 frames or a frame of another vertex count.
bool ExportModel(const ShapeMesh& mesh, unsigned char modelFlag, Model* model);
// The .vmd file image of a model.
std::vector<uint8_t> ModelFileBytes(const Model& model);
// ExportModel then ModelFileBytes; an empty vector when the mesh cannot be exported.
std::vector<uint8_t> ShapeMeshFile(const ShapeMesh& mesh, unsigned char modelFlag);
