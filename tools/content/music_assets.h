// The three pieces of music and the menu's piano roll, made from the score
// files in content/music/. The menu piece must last exactly one loop of the
// menu's piano clock, and its roll voices become piano.vpr.
#pragma once

#include <string>

#include "asset_list.h"

// Loop length of the title music in ticks (the menu's piano clock).
enum { kMenuLoopTicks = 1984, kPianoRollStartTick = 9 };

// Reads a text file whole; false when it cannot be read.
bool ReadTextFile(const std::string& path, std::string* text);
// Adds sound\music_menu.ogg, sound\music_level.ogg, sound\music_win.ogg and piano.vpr.
// False with a message naming the file and line on a score error.
bool GenerateMusic(AssetList* list, const std::string& contentDirectory, std::string* error);
