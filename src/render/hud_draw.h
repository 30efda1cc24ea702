// The flat layers drawn over a scene on the 800 x 600 canvas (after Begin2D):
// the glow strips of the post-effect, the screen flash, the game's HUD (level
// bar with the level title, air bar split by the air left, the spare lives
// bobbing, score and high score, "Completed!") and the HUD frame the closing
// scenes and the title menu share (bar, black strip, full air bar, no play
// figures). Textured quads carry v = 1 along their top edge.
#pragma once

class TextBatch;

// (x0, y0)-(x1, y1), top-left to bottom-right, u from u0 at the left to u1 at the right.
void DrawTexturedQuad(float x0, float y0, float x1, float y1, float u0, float u1);
// A built text batch translated to (x, y) in the named font and the current colour. With
// g_skipOffCanvasGlyphs set (the default) glyphs wholly outside the canvas's columns are not
// sent; clearing it sends every glyph, for comparison.
void DrawTextAt(const TextBatch& batch, const char* font, float x, float y);
extern int g_skipOffCanvasGlyphs;
// The screen texture laid over the frame in 40 strips: additive at 0.4 in the capture pass,
// blended at 0.5 on screen.
void DrawGlowStrips(int capturePass);
// A full-canvas quad of the colour at opacity intensity; nothing when intensity is 0 or less.
void DrawScreenFlash(const float* colour, float intensity);
// The air bar at (278, 532): full over the first air x 5.12 units, empty over the rest of 512.
void DrawAirBar(float air);
// One 64 x 64 icon per spare life (lives - 1), bobbing with clock, 38 units apart from x -2.
void DrawLifeIcons(int lives, float clock);
// The game's HUD: bar, strip, air, lives and scores (with a player), "Completed!", title.
void DrawGameHud();
// The HUD frame of the closing scenes and the title menu: bar, strip, full air bar, air icon, title.
void DrawHudFrame();
