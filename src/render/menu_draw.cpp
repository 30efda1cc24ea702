// The title menu's draw: the garden, its particles and lens flare, the HUD
// frame with the scrolling credits, the fade-in flash, the developer overlays,
// then in front of all that the studio-lit keyboard, dancer and spinning 3D
// title (depth-tested against the garden), the red marks of the held white
// keys and the title images.
#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "render/developer_overlays.h"
#include "render/game_view.h"
#include "render/hud_draw.h"
#include "render/menu_scene.h"
#include "render/overlay_draw.h"
#include "render/particle_draw.h"
#include "resources/flare_list.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/texture_manager.h"
#include "ui/text_batch.h"

static const float kFlareOrigin[3] = {-80.0f, 50.0f, -288.0f};

// The flare's place on the canvas; 0 when the source is hidden or off screen.
static int FlareOnCanvas(const FlareList& flares, float* sx, float* sy) {
    double wx, wy, wz;
    if (gluProject(flares.origin[0], flares.origin[1], flares.origin[2], g_window.modelview,
                   g_window.projection, g_window.viewport, &wx, &wy, &wz) != GL_TRUE) {
        return 0;
    }
    // Whatever stands in front of the source has left a nearer depth at its pixel.
    float depth = 1.0f;
    glReadPixels(static_cast<int>(wx), static_cast<int>(wy), 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    if (depth < wz) {
        return 0;
    }
    int32_t view[4];
    g_window.ViewRect(view);
    *sx = static_cast<float>((wx - view[0]) / view[2] * 800.0);
    *sy = static_cast<float>(600.0 - (wy - view[1]) / view[3] * 600.0);
    return *sx >= 0.0f && *sx <= 800.0f && *sy >= 0.0f && *sy <= 600.0f;
}

static void DrawFlareElement(const FlareElement& element, float sx, float sy, float centre, float fade) {
    float a = element.alpha;
    if (element.centreFade) {
        a = 1.0f - centre;
    }
    if (a < 0.0f) {
        a = 0.0f;
    }
    if (element.distanceFade) {
        a *= fade;
    }
    glColor4f(element.grey, element.grey, element.grey, a);
    float px = (sx - 400.0f) * element.axisPosition + 400.0f;
    float py = (sy - 300.0f) * element.axisPosition + 300.0f;
    float h = element.halfSize;
    glPushMatrix();
    g_textures.Bind(element.name);
    glTranslatef(px, py, 0.0f);
    if (element.spins) {
        glRotatef(px * 0.25f, 0.0f, 0.0f, 1.0f);
    }
    glBegin(GL_QUADS);
    glTexCoord2f(1.0f, 0.0f);
    glVertex2f(h, -h);
    glTexCoord2f(0.0f, 0.0f);
    glVertex2f(-h, -h);
    glTexCoord2f(0.0f, 1.0f);
    glVertex2f(-h, h);
    glTexCoord2f(1.0f, 1.0f);
    glVertex2f(h, h);
    glEnd();
    glPopMatrix();
}

void DrawFlares(const FlareList& flares) {
    float sx, sy;
    if (!FlareOnCanvas(flares, &sx, &sy)) {
        return;
    }
    float cx = (sx - 400.0f) / 400.0f, cy = (sy - 300.0f) / 300.0f;
    float centre = sqrtf(cx * cx + cy * cy);
    float dx = flares.origin[0] - g_window.renderCamera[0];
    float dy = flares.origin[1] - g_window.renderCamera[1];
    float dz = flares.origin[2] - g_window.renderCamera[2];
    float fade = 1.0f - sqrtf(dx * dx + dy * dy + dz * dz) / 1000.0f;
    if (!(fade > 0.0f)) {
        return;
    }
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    for (unsigned int i = 0; i < flares.count; i++) {
        if (flares.elements[i]) {
            DrawFlareElement(*flares.elements[i], sx, sy, centre, fade);
        }
    }
    glDisable(GL_BLEND);
}

int g_menuDepthFirst = 1;

// The keyboard's depth alone, before the garden: the keyboard stands nearer than any of the
// garden, so the garden's pixels behind it are then rejected by the depth test instead of being
// textured and lit only to be covered. Lighting and texturing stay off (no colour is written);
// the keyboard's own draw later lands on exactly these depths and passes the test.
static void DrawKeyboardDepth() {
    // The glow's capture stops before the foreground: there the keyboard never covers the holes.
    if (!g_menuDepthFirst || g_capturePass == 1) {
        return;
    }
    g_window.SetPerspective();
    g_textures.Bind(nullptr);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    g_window.DrawMesh(MeshVertices(g_keyboardModel), g_keyboardModel.frameTriangles, -0.1f, -1.6f, -19.0f, 0,
                      0, 0, 1, 1, 1);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

static void DrawGarden() {
    g_window.renderCamera[0] = g_camera.position.x;
    g_window.renderCamera[1] = g_camera.position.y;
    g_window.renderCamera[2] = g_camera.position.z;
    g_window.renderCamera[3] = g_camera.pitch;
    g_window.renderCamera[4] = g_camera.yaw;
    g_window.renderCamera[5] = g_camera.roll;
    g_window.SetCamera();
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.0f);
    glEnable(GL_COLOR_MATERIAL);
    if (g_glActiveTextureARB) {
        g_glActiveTextureARB(GL_TEXTURE0_ARB);
    }
    glDisable(GL_TEXTURE_2D);
    DrawLocationPieces(g_menuLocation);
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_LIGHTING);
    DrawParticles();
}

static void DrawCreditsAndFlash() {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    DrawTextAt(g_logoText, "gui_font3.tga", g_creditsX, 510.0f);
    static const float kWhite[3] = {1.0f, 1.0f, 1.0f};
    DrawScreenFlash(kWhite, g_window.flashIntensity);
    glDisable(GL_BLEND);
}

static void DrawForeground() {
    g_window.SetPerspective();
    g_window.SetStudioLights(1.0f);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    g_textures.Bind("logo\\keyboard.tga");
    g_window.DrawMesh(MeshVertices(g_keyboardModel), g_keyboardModel.frameTriangles, -0.1f, -1.6f, -19.0f, 0,
                      0, 0, 1, 1, 1);
    if (g_dancerModel) {
        g_textures.Bind("delver.tga");
        g_window.DrawMesh(MeshVertices(*g_dancerModel), g_dancerModel->frameTriangles, 6.1f, -0.6f, -10.0f, 0,
                          -40.0f, 0, 0.03f, 0.035f, 0.03f);
    }
    g_textures.Bind("logo\\logotext_3d.tga");
    g_window.DrawMesh(MeshVertices(g_logoTextModel), g_logoTextModel.frameTriangles, 0.7f, 0.1f, -10.0f, 0,
                      animClock * 150.0f, 0, 1, 1, 1);
}

static void DrawKeyMarksAndTitles() {
    g_window.Begin2D();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    g_textures.Bind(nullptr);
    glColor4f(1.0f, 0.0f, 0.0f, 0.3f);
    for (int i = 0; i < kPianoWhiteKeys; i++) {
        if (g_keyDown[i]) {
            DrawOverlayQuad(164.0f + 32.0f * i, 395.0f, 192.0f + 32.0f * i, 460.0f);
        }
    }
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    g_textures.Bind("logo\\logotext_main.tga");
    DrawTexturedQuad(20.0f, 270.0f, 404.0f, 318.0f, 0.0f, 1.0f);
    g_textures.Bind("logo\\logotext_starring.tga");
    DrawTexturedQuad(480.0f, 270.0f, 672.0f, 318.0f, 0.0f, 1.0f);
    g_textures.Bind("logo\\logotext_start.tga");
    DrawTexturedQuad(200.0f, 320.0f, 584.0f, 368.0f, 0.0f, 1.0f);
    glDisable(GL_BLEND);
}

void DrawMenu() {
    // The flare's depth test reads the garden's depth at the source, which stands above the
    // HUD bar; below the bar nothing is drawn in 3D.
    DrawKeyboardDepth();
    BeginSceneScissor();
    DrawGarden();
    EndSceneScissor();
    g_window.Begin2D();
    g_flares.origin[0] = kFlareOrigin[0];
    g_flares.origin[1] = kFlareOrigin[1];
    g_flares.origin[2] = kFlareOrigin[2];
    DrawFlares(g_flares);
    DrawLightingView(g_location);
    DrawHudFrame();
    DrawCreditsAndFlash();
    if (g_capturePass == 1) {
        return;
    }
    DrawDeveloperOverlays();
    DrawForeground();
    DrawKeyMarksAndTitles();
}
