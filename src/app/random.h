// The game's one random sequence: the classic linear congruential generator
// (state * 214013 + 2531011, result bits 16 to 30), seeded with 1 and never
// reseeded, so every run and every replay draws the same numbers.
#pragma once

// Returns the next number of the sequence, 0 to 32767.
int Rand();

// Puts the sequence back to its first number (tests and replays only; the game never calls it).
void ResetRand();

// The generator's state, so a replay can note where the sequence stood when it started.
unsigned int RandState();

// Puts the sequence back where a replay noted it (replay playback and recording only).
void SetRandState(unsigned int state);
