// Deterministic noise for procedural pictures: an integer hash, value noise
// and fractal sums of it, and cellular (Worley) distances. Every function takes
// a period in lattice cells and wraps at it, so pictures made from them tile
// seamlessly when the picture size is a whole multiple of the period.
#pragma once

#include <cstdint>

// A well-mixed 32-bit hash of two lattice coordinates and a seed.
uint32_t Hash2(int x, int y, uint32_t seed);
// Hash2 mapped to [0, 1).
float Hash01(int x, int y, uint32_t seed);
// Smoothly interpolated lattice noise in [0, 1); the lattice wraps every period cells.
float ValueNoise(float x, float y, int period, uint32_t seed);
// Sum of octaves of ValueNoise, each at twice the frequency and half the weight, in [0, 1).
float Fbm(float x, float y, int period, int octaves, uint32_t seed);
// Distances to the nearest (f1) and second nearest (f2) feature point of a jittered
// grid wrapping every period cells; id receives the nearest cell's hash.
void Cellular(float x, float y, int period, uint32_t seed, float* f1, float* f2, uint32_t* id);
