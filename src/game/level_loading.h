// Level loading: the level number becomes a playable level. A new level
// number (or a game started from the title menu) reads "levels\NN.vlc",
// binds its textures behind the loading screen, starts the level music and
// writes the level's HUD lines; every load, including the restart after a
// death, rebuilds the objects from the location's entities. A missing level
// file ends the game won; no lives left ends it lost.
#pragma once

// Loads or restarts the level, or starts the closing scene it leads to.
void LoadLevel();
// Makes the objects of g_location's entities: players, foot, spikes, keys, doors, platforms,
// enemies (placed on route point 0) and collapsing platforms.
void BuildLevelObjects();
// Draws the loading screen and binds each piece's texture (nothing without a window).
void PrecacheLocationTextures(const class Location& location);
