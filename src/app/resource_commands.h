// The console commands and restart steps that act on textures, locations and
// lightmaps: "LOCATION_LOAD" with its texture pre-caching, "LMAP_BUILD",
// "LMAP_QUALITY", and the part of "VID_RESTART" that makes the level's
// textures and the lightmap pages of the level and the title scene again
// after the GL context was replaced.
//
// The command table lives with the console; these functions are what its
// hooks call, and InstallResourceHooks plugs them in (with the texture
// manager's and the screen texture's start-up and restart steps) before the
// program starts.
#pragma once

// Binds every piece texture of the level being played behind the loading screen ("VID_RESTART").
void PrecacheLevelTextures();
// "LOCATION_LOAD": loads name into g_location, pre-caches its textures and prints the time taken.
void LoadLocationCommand(const char* name);
// "LMAP_BUILD": clears and bakes the level's lightmaps behind the lighting screen, whose bar
// follows the bake, and prints the time.
void BuildLightmapsCommand();
// The level's lightmap quality, which "LMAP_QUALITY" reads and sets.
float* LevelLightmapQuality();
// Forgets the lightmap pages' dead GL names and uploads the pages of the level and the title scene.
void ReuploadLightmaps();
// Sets the g_hooks entries of the texture manager, the screen texture, locations and lightmaps.
void InstallResourceHooks();
