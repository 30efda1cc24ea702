// Simple painting on pictures: soft discs, rounded bars, stars and lines, used
// for the interface images, particles and flares.
#pragma once

#include "image.h"

// Composites a disc of radius r centred on (cx, cy); its edge fades over soft pixels
// and its alpha is scaled by falloff^(distance/r) when glow is set.
void PaintDisc(Image* img, float cx, float cy, float r, Colour c, float soft);
// Composites a radial glow: alpha c.a * (1 - d/r)^power.
void PaintGlow(Image* img, float cx, float cy, float r, Colour c, float power);
// Composites a rounded rectangle [x0, x1) x [y0, y1) with corner radius r, its colour
// running from top to bottom.
void PaintRoundRect(Image* img, float x0, float y0, float x1, float y1, float r, Colour top, Colour bottom);
// Composites a line of width w from (x0, y0) to (x1, y1).
void PaintLine(Image* img, float x0, float y0, float x1, float y1, float w, Colour c);
// Composites an n-pointed star of outer radius r and inner radius ri.
void PaintStar(Image* img, float cx, float cy, float r, float ri, int points, float turn, Colour c);
