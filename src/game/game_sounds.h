// How the rules play the game's sounds (the slots are loaded at start-up by
// the sound system, audio/sound_startup.h). Positional sounds all share
// source 0, so a new one cuts off the one still playing (a death right after
// a key silences the collect sound); the closing scene's foot and splat play
// at the listener on sources 0 and 1.
#pragma once

#include "audio/sound_startup.h"

// Plays a slot on source 0 at a world position, the listener at the scene camera.
void PlayGameSoundAt(int slot, const float* position, float pitch);
