#include "render/loading_screen.h"

#include <GL/gl.h>

#include "app/gl_window.h"
#include "render/overlay_draw.h"
#include "resources/texture_manager.h"
#include "ui/text_batch.h"

void DrawLoadingScreen(const char* texture, const char* caption, float progress) {
    (void)texture;  // every caller names one; the indicator has no picture of its own
    if (!g_window.renderContext) {
        return;
    }
    g_window.Begin2D();
    g_loadingText.SetText(0, caption);
    g_loadingText.Build();

    // The caption entry is laid out across the whole canvas at y 320; this moves
    // its centre to the top-right corner.
    glPushMatrix();
    glTranslatef(350.0f, -305.0f, 0.0f);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    g_textures.Bind(nullptr);
    glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
    DrawOverlayQuad(362.0f, 315.0f, 438.0f, 350.0f);

    g_textures.Bind("gui_font.tga");
    glColor4f(1.0f, 1.0f, 1.0f, 0.75f);
    DrawTextBatch(g_loadingText);

    glPushMatrix();
    glTranslatef(400.0f, 340.0f, 0.0f);
    g_textures.Bind(nullptr);
    glColor4f(1.0f, 0.0f, 0.0f, 0.25f);
    DrawOverlayQuad(-32.0f, -4.0f, 32.0f, 4.0f);
    DrawOverlayQuad(-32.0f, -4.0f, 64.0f * progress - 32.0f, 4.0f);
    glPopMatrix();

    glDisable(GL_BLEND);
    glPopMatrix();
}
