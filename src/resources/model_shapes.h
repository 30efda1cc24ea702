// Simple shapes built directly into a model's frame 0: boxes and flat grids.
// The content tools, the tests and the benchmarks make geometry with these
// instead of shipping binary model files. Every triangle is counter-clockwise
// seen from outside, with flat corner normals (|x| + |y| + |z| = 1, as the
// loader leaves them) and texture coordinates in world units times texScale.
#pragma once

class Model;

// Replaces the model with an axis-aligned box of 12 triangles facing outwards; 1 or 0.
int MakeBoxModel(Model& model, const float boundsMin[3], const float boundsMax[3], float texScale);
// Replaces the model with a horizontal square grid at height y facing up, cells x cells
// squares of cellSize from (x, z), two triangles each; 1, or 0 when it would not fit.
int MakeGridModel(Model& model, float x, float y, float z, float cellSize, int cells, float texScale);
