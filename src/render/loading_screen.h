// The loading indicator long operations draw between buffer swaps: a small
// black box in the top-right corner of the 800 x 600 canvas with the caption
// (g_loadingText, entry 0) and a faint red bar that fills from the left as the
// work goes on. It draws over whatever the back buffer holds and the caller
// swaps. With no window (tests, tools, a failed restart) it does nothing, so
// loaders may call it anywhere.
#pragma once

// Draws the indicator with caption and fraction done (0..1); the texture name is accepted, not used.
void DrawLoadingScreen(const char* texture, const char* caption, float progress);
