#include "render/hud_draw.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "app/gl_window.h"
#include "game/game_state.h"
#include "render/overlay_draw.h"
#include "resources/screen_texture.h"
#include "resources/texture_manager.h"
#include "ui/text_batch.h"

static const float kAirBarX = 278.0f;
static const float kAirBarY = 532.0f;
static const float kAirBarWidth = 512.0f;
static const float kAirBarHeight = 64.0f;

void DrawTexturedQuad(float x0, float y0, float x1, float y1, float u0, float u1) {
    // Down the left side first, as DrawOverlayQuad, so culling keeps it on the y-down canvas.
    glBegin(GL_QUADS);
    glTexCoord2f(u0, 1.0f);
    glVertex2f(x0, y0);
    glTexCoord2f(u0, 0.0f);
    glVertex2f(x0, y1);
    glTexCoord2f(u1, 0.0f);
    glVertex2f(x1, y1);
    glTexCoord2f(u1, 1.0f);
    glVertex2f(x1, y0);
    glEnd();
}

int g_skipOffCanvasGlyphs = 1;

static const int kGlyphFloats = 6 * TextBatch::kVertexFloats;  // two triangles

// Whether a glyph's quad, moved right by x, reaches into the canvas's 800 columns.
static bool GlyphOnCanvas(const float* glyph, float x) {
    float left = glyph[0], right = glyph[0];
    for (int v = 1; v < 6; v++) {
        left = std::min(left, glyph[v * TextBatch::kVertexFloats]);
        right = std::max(right, glyph[v * TextBatch::kVertexFloats]);
    }
    return !g_skipOffCanvasGlyphs || (right + x > 0.0f && left + x < 800.0f);
}

void DrawTextAt(const TextBatch& batch, const char* font, float x, float y) {
    glPushMatrix();
    glTranslatef(x, y, 0.0f);
    g_textures.Bind(font);
    // Glyphs wholly left or right of the canvas are left out: the title's credits line is
    // hundreds of glyphs long with a few dozen on screen, and every glyph sent costs its
    // vertices and two triangle set-ups. The rest go in the batch's own order, each run of
    // neighbours in one call, so the picture is the same.
    // The triangle count still takes every glyph: the debug panel's "Polys:" counts what the
    // batch holds, sent or not.
    unsigned int glyphs = batch.vertices ? batch.triangleCount / 2 : 0;
    unsigned int g = 0;
    while (g < glyphs) {
        if (!GlyphOnCanvas(batch.vertices + g * kGlyphFloats, x)) {
            g_window.polyCount += 2;
            g++;
            continue;
        }
        unsigned int first = g;
        while (g < glyphs && GlyphOnCanvas(batch.vertices + g * kGlyphFloats, x)) {
            g++;
        }
        g_window.DrawMesh(batch.vertices + first * kGlyphFloats, (g - first) * 2, 0.0f, 0.0f, 0.0f, 0.0f,
                          0.0f, 0.0f, 1.0f, 1.0f, 1.0f);
    }
    glPopMatrix();
}

void DrawGlowStrips(int capturePass) {
    glEnable(GL_BLEND);
    if (capturePass) {
        // Each capture adds the last one at 0.4: bright parts leave fading trails.
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
        glColor4f(1.0f, 1.0f, 1.0f, 0.4f);
    } else {
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glColor4f(1.0f, 1.0f, 1.0f, 0.5f);
    }
    g_screenTexture.Bind();
    for (int i = 0; i < 40; i++) {
        DrawTexturedQuad(20.0f * i, 0.0f, 20.0f * i + 20.0f, 600.0f, i / 40.0f, (i + 1) / 40.0f);
    }
    glDisable(GL_BLEND);
}

void DrawScreenFlash(const float* colour, float intensity) {
    if (intensity <= 0.0f) {
        return;
    }
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(colour[0], colour[1], colour[2], intensity);
    g_textures.Bind(nullptr);
    DrawOverlayQuad(0.0f, 0.0f, 800.0f, 600.0f);
    glDisable(GL_BLEND);
}

void DrawAirBar(float air) {
    float split = air / 100.0f;
    float w = air * 5.12f;
    g_textures.Bind("gui\\air_bar_full.tga");
    DrawTexturedQuad(kAirBarX, kAirBarY, kAirBarX + w, kAirBarY + kAirBarHeight, 0.0f, split);
    g_textures.Bind("gui\\air_bar_empty.tga");
    DrawTexturedQuad(kAirBarX + w, kAirBarY, kAirBarX + kAirBarWidth, kAirBarY + kAirBarHeight, split, 1.0f);
}

void DrawLifeIcons(int lives, float clock) {
    g_textures.Bind("gui\\lives.tga");
    float penX = -2.0f, penY = 518.0f;
    // The life in play has no icon.
    for (int i = 1; i < lives; i++) {
        float a = clock * 5.0f + i * 10.0f;
        float x = penX + sinf(a), y = penY + cosf(a);
        DrawTexturedQuad(x, y, x + 64.0f, y + 64.0f, 0.0f, 1.0f);
        penX += 38.0f;
    }
}

// Level bar and the black strip under it.
static void DrawBars() {
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    g_textures.Bind("gui\\level_bar.tga");
    DrawTexturedQuad(0.0f, 460.0f, 800.0f, 500.0f, 0.0f, 1.0f);
    glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
    g_textures.Bind(nullptr);
    DrawOverlayQuad(0.0f, 500.0f, 800.0f, 600.0f);
}

static void DrawLevelTitle() {
    glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
    DrawTextAt(g_levelTitleText, "gui_font2.tga", 0.0f, 470.0f);
}

void DrawGameHud() {
    DrawBars();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    DrawAirBar(air);
    g_textures.Bind("gui\\air.tga");
    DrawTexturedQuad(170.0f, 500.0f, 298.0f, 628.0f, 0.0f, 1.0f);
    if (player) {
        DrawLifeIcons(lives, animClock);
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        DrawTextAt(g_scoreText, "gui_font2.tga", 0.0f, 510.0f);
    }
    if (levelComplete) {
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        DrawTextAt(g_completedText, "gui_font2.tga", 0.0f, 210.0f);
    }
    DrawLevelTitle();
    glDisable(GL_BLEND);
}

void DrawHudFrame() {
    DrawBars();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    g_textures.Bind("gui\\air_bar_full.tga");
    DrawTexturedQuad(kAirBarX, kAirBarY, kAirBarX + kAirBarWidth, kAirBarY + kAirBarHeight, 0.0f, 1.0f);
    g_textures.Bind("gui\\air.tga");
    DrawTexturedQuad(170.0f, 500.0f, 298.0f, 628.0f, 0.0f, 1.0f);
    DrawLevelTitle();
    glDisable(GL_BLEND);
}
