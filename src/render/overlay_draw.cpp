#include "render/overlay_draw.h"

#include <GL/gl.h>

#include "app/gl_window.h"
#include "ui/text_batch.h"

void DrawOverlayQuad(float x0, float y0, float x1, float y1) {
    // Down the left side first: counter-clockwise on the screen once y runs down, so
    // back-face culling keeps it.
    glBegin(GL_QUADS);
    glVertex2f(x0, y0);
    glVertex2f(x0, y1);
    glVertex2f(x1, y1);
    glVertex2f(x1, y0);
    glEnd();
}

void DrawTextBatch(const TextBatch& batch) {
    g_window.DrawMesh(batch.vertices, batch.triangleCount, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f, 1.0f,
                      1.0f);
}
