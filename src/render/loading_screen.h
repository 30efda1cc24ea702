// The loading indicator long operations draw between buffer swaps. It draws
// over whatever the back buffer holds; the caller swaps. With no window (tests,
// tools, a failed restart) it does nothing, so loaders may call it anywhere.
#pragma once

// Draws the indicator with caption and fraction done (0..1); the texture name is accepted, not used.
void DrawLoadingScreen(const char* texture, const char* caption, float progress);
