// The debug panel: a title and up to nine value lines in the top-left corner,
// shown while g_debug is set. RefreshDebugPanel runs on the 100 ms channel
// and writes the panel chosen by g_debugMode into g_debugTitles (entry 0) and
// g_debugValues (lines 0 to 8), then zeroes the frame and tick counters, so
// "per second" figures are counts per 100 ms times ten.
//
// Modes: 0 General (frame rate, triangles, ticks, clock, field of view),
// 1 Camera, 2 Mouse (with the joystick figures the game publishes), 3 Player
// (only while there is one), 4 Lighting (the played location's lightmaps).
// Any other mode, and mode 3 without a player, leaves everything as it was,
// counters included.
#pragma once

// The 100 ms refresh of the panel chosen by g_debugMode.
void RefreshDebugPanel();
