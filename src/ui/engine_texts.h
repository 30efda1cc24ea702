// The engine's own fixed text: the loading caption, the debug panel's value
// lines, the network panel and the titles (start-up caption, engine mark,
// build line, edition). Filled once at start-up, before the loading screen.
#pragma once

// The edition line under the build number.
extern const char kEditionLabel[];

// Fills and builds g_loadingText, g_debugValues, g_netDebugText and g_debugTitles.
void FillEngineTextBatches();
