#include "render/developer_overlays.h"

#include <GL/gl.h>

#include "app/console.h"
#include "app/scene_hooks.h"
#include "render/console_panel.h"
#include "render/hud_draw.h"
#include "resources/texture_manager.h"
#include "ui/text_batch.h"

DeveloperDraws g_developerDraws;

static void DrawDebugPanel() {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 0.85f);
    DrawTextAt(g_debugValues, "gui_font.tga", 0.0f, 0.0f);
    // The network figures stand in the top-right corner, except in the lighting view, whose
    // lightmap pages take that side.
    if (g_debugMode != 4) {
        DrawTextAt(g_netDebugText, "gui_font.tga", 0.0f, 0.0f);
    }
    glColor4f(1.0f, 1.0f, 1.0f, 0.5f);
    DrawTextAt(g_debugTitles, "gui_font.tga", 0.0f, 0.0f);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    g_textures.Bind("gui_logo.tga");
    DrawTexturedQuad(736.0f, 534.0f, 800.0f, 598.0f, 0.0f, 1.0f);
    glDisable(GL_BLEND);
}

void DrawDeveloperOverlays() {
    if (g_debug) {
        DrawDebugPanel();
    }
    glLineWidth(1.0f);
    g_textures.Bind(nullptr);
    if (g_console.visible || g_console.slide > -240.0f) {
        DrawConsole(g_console, 0.0f, g_console.slide, 0.0f, 0.0f, 0.0f, 0.0f);
    }
    if (g_developerDraws.guiWindow) {
        g_developerDraws.guiWindow();
    }
    if (g_developerDraws.debugMenu) {
        g_developerDraws.debugMenu();
    }
}
