// The level compiler: turns a parsed level source into a location file. Each
// piece's shapes become one model (texture coordinates in world units over the
// piece's scale, flags in the model's flag byte), entities keep their order,
// and the lighting is baked with the engine's own lightmap builder, so a level
// arrives with its lightmaps. Every texture a piece names must be one the
// content build makes; a typo is an error on the piece's line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "asset_list.h"
#include "level_source.h"
#include "shape_mesh.h"

class Location;

// The geometry of one piece.
ShapeMesh PieceMesh(const LevelPiece& piece);
// Fills location (cleared first) from the source; bakes the lightmaps when bake is set.
// Textures are checked against known unless it is null. False with "file:line: message".
bool BuildLocation(const LevelSource& source, const AssetList* known, bool bake, Location* location,
                   std::string* error);
// BuildLocation then the .vlc file image.
bool CompileLevel(const LevelSource& source, const AssetList* known, bool bake, std::vector<uint8_t>* bytes,
                  std::string* error);
// Compiles every content/levels/*.lvl into levels\NAME.vlc and content/logo/*.lvl into
// logo\NAME.vlc, in name order, into the levels package.
bool GenerateLevels(AssetList* list, const std::string& contentDirectory, bool bake, std::string* error);
