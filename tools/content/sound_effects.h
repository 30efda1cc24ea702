// The game's sound effects, synthesised: footsteps, jump, death, key pickup,
// the giant foot's fall and splat, and the tally blip. Each is a short mono
// 22.05 kHz sound made from noise, sweeps and envelopes, written as 16-bit WAV.
#pragma once

#include <vector>

#include "asset_list.h"

// Sample rate of the effects.
enum { kEffectRate = 22050 };

// One effect's samples (mono, -1..1) by resource name; empty for an unknown name.
std::vector<float> SynthesiseEffect(const char* name);
// Adds every effect to the list as "sound\\....wav".
void GenerateSoundEffects(AssetList* list);
