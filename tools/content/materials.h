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

// The frozen garden's ground: soft drifts shaded blue in their hollows, fine
// grain and a scatter of sparkling crystals.
Image MakeSnow(int size, uint32_t seed);
// Clear blue ice: clouded depths, pale streaks and bright cracks.
Image MakeIce(int size, uint32_t seed);
// Pine twigs over transparency: dark needles fanning from each twig, snow on their
// upper sides (alpha 0 between twigs).
Image MakePine(int size, uint32_t seed);
// Rime over any picture: frost gathers in white-blue patches where the noise is high
// and on the darker texels (joints, cracks), with a few glints; amount 0..1.
void AddFrost(Image* img, float amount, uint32_t seed);

// The colours of a sky picture (see MakeSky).
struct SkyLook {
    Colour zenith;       // the top row
    Colour horizon;      // the bottom row
    Colour cloudLit;     // cloud tops (or, with underglow, cloud bellies)
    Colour cloudDark;    // the shaded side of the clouds
    float cover;         // 0 clear .. 1 overcast
    float underglow;     // 0 clouds lit from above .. 1 lit from below (a storm over a fire)
    int stars;           // stars per 256 x 256 texels
    float moonX, moonY;  // the moon's centre as fractions of the picture's width and height
    float moonRadius;    // as a fraction of the width; 0 for no moon
};
// A sky for a backdrop around a level: top row the zenith, bottom row the horizon,
// clouds flattened toward the horizon. Tiles horizontally (not vertically: it is
// meant to be mapped once from the horizon up).
Image MakeSky(int size, const SkyLook& look, uint32_t seed);
// A band of distant hills for a backdrop: layers of ridges, the farther ones higher,
// paler and bluer with the haze, over transparency above the top ridge. With snow
// set, the ridges are snow-covered with dark pines on the nearest. Tiles horizontally;
// the bottom rows are solid ground.
Image MakeHills(int size, Colour near, Colour haze, bool snow, uint32_t seed);
// Water out to the horizon, for below a backdrop's hills: deep colour at the bottom
// row, the horizon colour at the top, with long glinting ripples. Tiles horizontally.
Image MakeFarWater(int size, Colour deep, Colour horizon, uint32_t seed);
