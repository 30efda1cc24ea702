// Procedural surface materials: square pictures that tile, made from the noise
// functions. Each takes its size (a power of two) and a seed so that variants
// of one material can be made; the same arguments always give the same pixels.
#pragma once

#include <cstdint>

#include "image.h"

// Offset courses of bricks with mortar joints, per-brick tint and bevelled edges.
Image MakeBricks(int size, Colour brick, Colour mortar, uint32_t seed);
// Rounded cobbles or flagstones between dark joints.
Image MakeStone(int size, Colour base, int cells, uint32_t seed);
// Meadow grass: mottled ground covered in short blades.
Image MakeGrass(int size, uint32_t seed);
// Tree bark: vertical ridges and dark cracks.
Image MakeBark(int size, Colour base, uint32_t seed);
// Wooden planks with grain, knots and gaps; planks run horizontally.
Image MakeWood(int size, Colour base, int planks, uint32_t seed);
// Brushed metal panel with a border and rivets.
Image MakeMetal(int size, Colour base, uint32_t seed);
// Leaves scattered over transparency (alpha 0 between leaves).
Image MakeFoliage(int size, Colour light, Colour dark, int leaves, uint32_t seed);
// Earth with pebbles.
Image MakeDirt(int size, uint32_t seed);
// Blue sky with soft clouds; tiles horizontally.
Image MakeClouds(int size, uint32_t seed);
// Dark rubber belt with raised cross ribs (ribs run across the picture).
Image MakeBelt(int size, uint32_t seed);
// Rough rock face with strata.
Image MakeRock(int size, Colour base, uint32_t seed);
// Light fabric / canvas weave.
Image MakeCloth(int size, Colour base, uint32_t seed);
