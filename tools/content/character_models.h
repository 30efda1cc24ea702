// The animated characters: the delver (the player, 33 frames: standing loop
// 0-12, running loop 12-23, jump and landing 23-32), the glow of its lamp
// posed with it frame for frame, the title dance, and the enemies with their
// walk loops. Each is modelled in a rest pose on a small skeleton and posed
// per frame; textures are atlases of small material cells, one per colour of
// the character (skin, cloth, boots, metal and so on).
#pragma once

#include <string>

#include "asset_list.h"
#include "shape_mesh.h"

// Frame counts of the animated characters.
enum { kDelverFrames = 33, kDanceFrames = 10, kEnemyWalkFrames = 8, kEnemyModels = 6 };

// The delver in all its frames (feet at y = 0, facing +z, about 42 units tall).
ShapeMesh MakeDelverMesh();
// The lamp's glow: crossed quads around the lamp, following it through the same frames.
ShapeMesh MakeLampGlowMesh();
// The title dance, kDanceFrames frames.
ShapeMesh MakeDanceMesh();
// Enemy number n (1..kEnemyModels) with its walk loop, facing -x.
ShapeMesh MakeEnemyMesh(int n);

// Adds delver.vmd, light.vmd, logo\delver.vmd and enemyNN.vmd, and their textures.
bool GenerateCharacters(AssetList* list, std::string* error);
