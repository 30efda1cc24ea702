// Renders a score to stereo samples. The buffer is exactly one loop long
// (length ticks x rate / 50 frames) and is treated as a circle: a note that
// rings past the end carries on at the start, and the room echo is run until it
// settles, so the piece loops without a seam.
#pragma once

#include <vector>

#include "music_score.h"

// Sample rate of the rendered music.
enum { kMusicRate = 44100 };

// Interleaved stereo samples of one loop of the score, peak-normalised to 0.9.
std::vector<float> RenderScore(const Score& score, int rate);
// Frames in one loop of a score of the given length in ticks.
int LoopFrames(int lengthTicks, int rate);
