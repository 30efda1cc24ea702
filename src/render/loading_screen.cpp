#include "render/loading_screen.h"

#include <GL/gl.h>

#include "app/gl_window.h"

// For now the indicator is a cleared frame in the window's clear colour; the caption
// and the progress bar come with the text batches.
void DrawLoadingScreen(const char* texture, const char* caption, float progress) {
    (void)texture;
    (void)caption;
    (void)progress;
    if (!g_window.renderContext) {
        return;
    }
    glClearColor(g_window.clearColour[0], g_window.clearColour[1], g_window.clearColour[2], 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}
