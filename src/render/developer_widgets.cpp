#include "render/developer_widgets.h"

#include <GL/gl.h>

#include "app/gl_window.h"
#include "render/developer_overlays.h"
#include "render/overlay_draw.h"
#include "resources/texture_manager.h"
#include "ui/debug_menu.h"
#include "ui/gui_window.h"
#include "ui/text_batch.h"

static void DrawLine(float x0, float y0, float x1, float y1) {
    glVertex2f(x0, y0);
    glVertex2f(x1, y1);
}

void DrawDebugMenu(const DebugMenu& menu) {
    glPushMatrix();
    glTranslatef(menu.x, menu.y, menu.z);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    g_textures.Bind(nullptr);
    glColor4f(0.0f, 0.0f, 0.0f, 0.5f);
    DrawOverlayQuad(0.0f, 0.0f, menu.width, menu.height);
    glColor4f(0.4f, 0.4f, 0.4f, 0.5f);
    DrawOverlayQuad(0.0f, -19.0f, menu.width, 0.0f);
    glLineWidth(1.0f);
    glColor4f(0.7f, 0.7f, 0.7f, 0.5f);
    glBegin(GL_LINES);
    DrawLine(-1.0f, -18.0f, -1.0f, menu.height + 1.0f);
    DrawLine(menu.width, -18.0f, menu.width, menu.height + 1.0f);
    DrawLine(-1.0f, -18.0f, menu.width, -18.0f);
    DrawLine(-1.0f, menu.height + 1.0f, menu.width, menu.height + 1.0f);
    glEnd();
    g_textures.Bind("gui_font.tga");
    glColor4f(0.7f, 0.7f, 0.7f, 1.0f);
    DrawTextBatch(menu.text);
    if (menu.hover) {
        glTranslatef(0.0f, static_cast<float>((menu.hover - 1) * DebugMenu::kItemHeight), 0.0f);
        g_textures.Bind(nullptr);
        glColor4f(1.0f, 0.0f, 0.0f, 0.5f);
        DrawOverlayQuad(0.0f, 0.0f, menu.width, static_cast<float>(DebugMenu::kItemHeight));
    }
    glDisable(GL_BLEND);
    glPopMatrix();
}

static void DrawGuiItem(const GuiItem& item) {
    glPushMatrix();
    glTranslatef(item.x, item.y, item.z);
    // A swatch shows the texture its caption names.
    g_textures.Bind(item.kind == GuiColourSwatch ? item.caption : "gui_controls.tga");
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    if (item.vertices) {
        g_window.DrawMesh(item.vertices, item.triangleCount, 0, 0, 0, 0, 0, 0, 1, 1, 1);
    }
    g_textures.Bind("gui_font.tga");
    glColor3f(item.colour[0], item.colour[1], item.colour[2]);
    DrawTextBatch(item.text);
    glPopMatrix();
}

void DrawGuiWindow(const GuiWindow& window) {
    glPushMatrix();
    glTranslatef(window.x, window.y, window.z);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    g_textures.Bind(nullptr);
    glColor4f(0.0f, 0.0f, 0.0f, 0.6f);
    DrawOverlayQuad(0.0f, 0.0f, window.width, window.height);
    glColor4f(0.4f, 0.4f, 0.4f, 0.6f);
    DrawOverlayQuad(0.0f, -19.0f, window.width, 0.0f);
    glLineWidth(1.0f);
    glColor4f(0.7f, 0.7f, 0.7f, 0.5f);
    glBegin(GL_LINES);
    DrawLine(0.0f, -18.0f, 0.0f, window.height);
    DrawLine(window.width, -18.0f, window.width, window.height);
    DrawLine(0.0f, -18.0f, window.width, -18.0f);
    DrawLine(0.0f, window.height, window.width, window.height);
    glEnd();
    g_textures.Bind("gui_font.tga");
    glColor4f(0.7f, 0.7f, 0.7f, 1.0f);
    DrawTextBatch(window.titleText);
    for (const GuiItem* item : window.items) {
        if (item) {
            DrawGuiItem(*item);
        }
    }
    glDisable(GL_BLEND);
    glPopMatrix();
}

static void DrawDebugMenuWhenOpen() {
    if (g_debugMenu.open) {
        DrawDebugMenu(g_debugMenu);
    }
}

static void DrawGuiWindowWhenShown() {
    if (g_gui.visible) {
        DrawGuiWindow(g_gui);
    }
}

void InstallDeveloperDraws() {
    g_developerDraws.guiWindow = DrawGuiWindowWhenShown;
    g_developerDraws.debugMenu = DrawDebugMenuWhenOpen;
}
