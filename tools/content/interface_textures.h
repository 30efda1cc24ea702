// Pictures of the interface and effects: the three fonts, the HUD pieces, the
// widget sheet, loading icons, title lettering, particle strips and the lens
// flare's elements. Each is added to the list under the name the game binds.
#pragma once

#include <string>

#include "asset_list.h"
#include "image.h"

// Adds the three bitmap fonts; false with a message when a font face is missing.
bool GenerateFonts(AssetList* list, const std::string& fontDirectory, std::string* error);
// Adds the HUD, widget, loading and title pictures; false with a message on a font error.
bool GenerateInterfaceTextures(AssetList* list, const std::string& fontDirectory, std::string* error);
// Draws the engine's badge, a "V2" in a ring, as a size x size picture: gui_logo.tga at 64,
// the desktop's icon at the sizes it asks for. False with a message on a font error.
bool DrawBadge(const std::string& fontDirectory, int size, Image* img, std::string* error);
// Adds the particle strips and the flare element pictures.
void GenerateEffectTextures(AssetList* list);
// Adds test.vfl, the title's lens flare made of the flare pictures.
void GenerateFlareList(AssetList* list);
// Texture names of the lens flare's elements, in the order the flare list uses them.
extern const char* const kFlareTextures[4];
