// The sliding console panel: a half-transparent black sheet over the top 242
// rows of the 800 x 600 canvas with a grey rule under it, the input line with
// its bullet cursor on the bottom row and the log above it, newest first,
// upward until the rows run out (19 log lines). The scene draws call it with
// the console's slide offset as y, so the panel slides in from above.
#pragma once

class Console;
class TextBatch;

// Adds the input line and the visible log lines of console to an empty batch (not built).
void FillConsoleText(TextBatch& batch, const Console& console);
// Draws the panel at (x, y, z) turned by the angles (degrees) on the 2D canvas (Begin2D first).
void DrawConsole(const Console& console, float x, float y, float z, float rotX, float rotY, float rotZ);
