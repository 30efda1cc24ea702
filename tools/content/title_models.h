// The title menu's foreground models: the piano keyboard and the 3D title.
//
// The keyboard is drawn in eye space (60 degree field of view, 4:3) at
// (-0.1, -1.6, -19). Its white keys are placed so that each lies under the
// 2D highlight the menu draws for it (canvas x 164 + 32i to 192 + 32i, y 395
// to 460), so its geometry is worked out from those canvas rectangles. The
// model's triangles come in a fixed order because the menu moves keys by
// vertex number: 39 body triangles (117 drawn vertices), then 8 triangles (24
// vertices) per key in key-number order, each key flat at its rest height.
#pragma once

#include <string>

#include "asset_list.h"
#include "shape_mesh.h"

enum { kKeyboardBodyTriangles = 39, kKeyboardKeyTriangles = 8 };

// The keyboard mesh (one frame).
ShapeMesh MakeKeyboardMesh();
// The title in 3D letters, rasterised from the font in fontDirectory and extruded,
// centred on the origin; false with a message when the font cannot be opened.
bool MakeTitleTextMesh(const std::string& fontDirectory, ShapeMesh* mesh, std::string* error);
// Model x and y at which a canvas point (800 x 600) appears at model depth z.
void KeyboardCanvasToModel(float canvasX, float canvasY, float modelZ, float* x, float* y);

// Adds logo\keyboard.vmd, logo\keyboard.tga and logo\3d.vmd.
bool GenerateTitleModels(AssetList* list, const std::string& fontDirectory, std::string* error);
