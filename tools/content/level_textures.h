// Surface pictures for level and scene pieces, all under textures\01\: ground,
// stone, bricks, wood, bark, leaves (with transparency), sky, rock, cloth and
// the like. Level sources name them; the level compiler refuses any other.
#pragma once

#include "asset_list.h"

// Adds every surface picture.
void GenerateLevelTextures(AssetList* list);
