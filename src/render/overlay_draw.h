// Small pieces the flat overlays share: a filled rectangle on the canvas and a
// built text batch drawn where its entries say.
#pragma once

class TextBatch;

// Fills the rectangle (x0, y0)-(x1, y1), top-left to bottom-right on the y-down canvas, in the
// current colour and texture state.
void DrawOverlayQuad(float x0, float y0, float x1, float y1);
// Draws a built batch at the origin through GlWindow::DrawMesh; the caller binds the font.
void DrawTextBatch(const TextBatch& batch);
