// The level objects other than characters: the giant foot of the closing
// scene, nettles (spikes), the key, the exit door, the moving platform and the
// collapsing platform (which crumbles over its frames), with their textures,
// plus the conveyor belt's texture. Sizes are in the game's units: the player
// is about 42 tall; the door is lower than the 80 units it rises when opened.
#pragma once

#include <string>

#include "asset_list.h"
#include "shape_mesh.h"

enum { kCollapseFrames = 10 };

ShapeMesh MakeFootMesh();
ShapeMesh MakeNettleMesh();
ShapeMesh MakeKeyMesh();
ShapeMesh MakeDoorMesh();
// The platform: a slab whose top is at y = 0, 64 wide and deep.
ShapeMesh MakePlatformMesh();
// The same slab in sixteen tiles that loosen, drop and tumble over kCollapseFrames frames.
ShapeMesh MakeCollapseMesh();

// Adds foot.vmd, spikes.vmd, keys.vmd, door.vmd, platform.vmd, platform_collapse.vmd
// and foot.tga, nettle.tga, key_czone.tga, door.tga, textures\01\platform.tga,
// textures\01\conveyer.tga.
bool GenerateProps(AssetList* list, std::string* error);
