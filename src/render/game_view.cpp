#include "render/game_view.h"

#include <GL/gl.h>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "render/developer_overlays.h"
#include "render/hud_draw.h"
#include "render/particle_draw.h"
#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/texture_manager.h"

int g_sceneScissor = 1;
int g_piecesFrontToBack = 1;

const float* MeshVertices(const Model& model) {
    return reinterpret_cast<const float*>(model.frameVertices);
}

static bool LightingViewOn() {
    return g_debug && g_debugMode == 4;
}

static void SetCameraFromScene() {
    g_window.renderCamera[0] = g_camera.position.x;
    g_window.renderCamera[1] = g_camera.position.y;
    g_window.renderCamera[2] = g_camera.position.z;
    g_window.renderCamera[3] = g_camera.pitch;
    g_window.renderCamera[4] = g_camera.yaw;
    g_window.renderCamera[5] = g_camera.roll;
    g_window.SetCamera();
}

// The twelve edges of an axis-aligned box.
static void DrawBoxEdges(const float* lo, const float* hi) {
    glBegin(GL_LINES);
    for (int axis = 0; axis < 3; axis++) {
        int a = (axis + 1) % 3, b = (axis + 2) % 3;
        for (int corner = 0; corner < 4; corner++) {
            float p[3], q[3];
            p[a] = q[a] = (corner & 1) ? hi[a] : lo[a];
            p[b] = q[b] = (corner & 2) ? hi[b] : lo[b];
            p[axis] = lo[axis];
            q[axis] = hi[axis];
            glVertex3fv(p);
            glVertex3fv(q);
        }
    }
    glEnd();
}

void DrawObjects(const Location& location) {
    for (int i = 0; i < kMaxObjects; i++) {
        const GameObject* object = objects[i];
        if (!object) {
            continue;
        }
        g_textures.Bind(object->texture);
        g_window.SetLocationLights(&location.lightmaps, object->position);
        if (object->model) {
            g_window.DrawMesh(MeshVertices(*object->model), object->model->frameTriangles,
                              object->position[0], object->position[1], object->position[2],
                              object->rotation[0], object->rotation[1], object->rotation[2], 1, 1, 1);
        }
    }
}

// The piece's model when it is drawn this frame: built, not hidden, inside the frustum.
static const Model* VisiblePiece(const Location& location, int index) {
    const LocationPiece* piece = location.pieces[index];
    if (!piece) {
        return nullptr;
    }
    const Model& model = piece->model;
    const Mesh* frame = model.frames[0];
    if (!frame || !model.frameVertices || (model.modelFlag & kPieceHidden) ||
        !g_window.SphereInFrustum(frame->centre[0], frame->centre[1], frame->centre[2], frame->radius)) {
        return nullptr;
    }
    return &model;
}

static void BindPieceTexture(const LocationPiece& piece) {
    g_textures.Bind(LightingViewOn() ? nullptr : piece.textureName);
}

static void DrawPiece(const Location& location, int index) {
    const LocationPiece* piece = location.pieces[index];
    const Model& model = piece->model;
    const Mesh* frame = model.frames[0];
    BindPieceTexture(*piece);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    if (model.modelFlag & kPieceNoCull) {
        glDisable(GL_CULL_FACE);
    }
    glPushMatrix();
    const LightmapVertex* coords = location.lightmaps.coords[index];
    const float* vertices = MeshVertices(model);
    if (!coords || (model.modelFlag & kPieceGlLit)) {
        g_window.DrawMesh(vertices, model.frameTriangles, 0, 0, 0, 0, 0, 0, 1, 1, 1);
        glDisable(GL_BLEND);
    } else {
        glDisable(GL_LIGHTING);
        g_window.DrawLightmappedMesh(vertices, model.frameTriangles, coords, location.lightmaps.glTextures, 0,
                                     0, 0, 0, 0, 0, 1, 1, 1);
    }
    if (g_debug && (model.modelFlag & kPieceSolid)) {
        glDisable(GL_LIGHTING);
        glDisable(GL_TEXTURE_2D);
        glLineWidth(1.0f);
        glColor3f(1.0f, 0.0f, 0.0f);
        DrawBoxEdges(frame->boundsMin, frame->boundsMax);
    }
    glPopMatrix();
    glDisable(GL_BLEND);
    if (model.modelFlag & kPieceNoCull) {
        glEnable(GL_CULL_FACE);
    }
}

// True when the piece's fragments all have alpha 1: no texture, or one without an alpha channel.
static bool PieceIsOpaque(const LocationPiece& piece) {
    BindPieceTexture(piece);
    if (!glIsEnabled(GL_TEXTURE_2D)) {
        return true;
    }
    GLint alphaBits = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_ALPHA_SIZE, &alphaBits);
    return alphaBits == 0;
}

static float CameraDistance2(const Model& model) {
    const float* c = model.frames[0]->centre;
    float dx = c[0] - g_window.renderCamera[0];
    float dy = c[1] - g_window.renderCamera[1];
    float dz = c[2] - g_window.renderCamera[2];
    return dx * dx + dy * dy + dz * dz;
}

// Opaque pieces nearest first with the alpha test off, then the others in file order.
static void DrawPiecesFrontToBack(const Location& location) {
    static int order[Location::kMaxPieces];
    static float distance[Location::kMaxPieces];
    static int rest[Location::kMaxPieces];
    int opaque = 0, others = 0;
    for (int i = 0; i < location.pieceCount && i < Location::kMaxPieces; i++) {
        const Model* model = VisiblePiece(location, i);
        if (!model) {
            continue;
        }
        if (!PieceIsOpaque(*location.pieces[i])) {
            rest[others++] = i;
            continue;
        }
        // Insertion by distance keeps equal distances in file order.
        float d = CameraDistance2(*model);
        int at = opaque++;
        while (at > 0 && distance[at - 1] > d) {
            order[at] = order[at - 1];
            distance[at] = distance[at - 1];
            at--;
        }
        order[at] = i;
        distance[at] = d;
    }
    GLboolean alphaTest = glIsEnabled(GL_ALPHA_TEST);
    glDisable(GL_ALPHA_TEST);
    for (int k = 0; k < opaque; k++) {
        DrawPiece(location, order[k]);
    }
    if (alphaTest) {
        glEnable(GL_ALPHA_TEST);
    }
    for (int k = 0; k < others; k++) {
        DrawPiece(location, rest[k]);
    }
}

void DrawLocationPieces(const Location& location) {
    if (g_piecesFrontToBack) {
        DrawPiecesFrontToBack(location);
        return;
    }
    for (int i = 0; i < location.pieceCount; i++) {
        if (VisiblePiece(location, i)) {
            DrawPiece(location, i);
        }
    }
}

void BeginSceneScissor() {
    if (!g_sceneScissor) {
        return;
    }
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    // The bar covers canvas rows 460 to 600, the lowest 140/600 of the viewport; one row
    // more is kept so that rounding never leaves a visible row undrawn.
    int covered = viewport[3] * 140 / 600 - 1;
    if (covered < 0) {
        covered = 0;
    }
    glEnable(GL_SCISSOR_TEST);
    glScissor(viewport[0], viewport[1] + covered, viewport[2], viewport[3] - covered);
}

void EndSceneScissor() {
    glDisable(GL_SCISSOR_TEST);
}

static void DrawPageTriangles(const Location& location, unsigned int page) {
    glBegin(GL_LINES);
    for (int i = 0; i < location.pieceCount; i++) {
        const LightmapVertex* coords = location.lightmaps.coords[i];
        if (!coords || !location.pieces[i]) {
            continue;
        }
        unsigned int vertices = location.pieces[i]->model.frameTriangles * 3;
        if (location.lightmaps.coordCounts[i] < vertices) {
            vertices = location.lightmaps.coordCounts[i] / 3 * 3;
        }
        for (unsigned int v = 0; v < vertices; v += 3) {
            if (coords[v].page != page) {
                continue;
            }
            for (int e = 0; e < 3; e++) {
                const LightmapVertex& a = coords[v + e];
                const LightmapVertex& b = coords[v + (e + 1) % 3];
                glVertex2f(a.u * 256.0f, a.v * 256.0f);
                glVertex2f(b.u * 256.0f, b.v * 256.0f);
            }
        }
    }
    glEnd();
}

void DrawLightingView(const Location& location) {
    if (!LightingViewOn()) {
        return;
    }
    glPushMatrix();
    glTranslatef(536.0f, 8.0f, 0.0f);
    for (unsigned int p = 0; p < location.lightmaps.pageCount && p < LightmapSet::kMaxPages; p++) {
        glEnable(GL_TEXTURE_2D);
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        glBindTexture(GL_TEXTURE_2D, location.lightmaps.glTextures[p]);
        glBegin(GL_QUADS);
        glTexCoord2f(0.0f, 0.0f);
        glVertex2f(0.0f, 0.0f);
        glTexCoord2f(0.0f, 1.0f);
        glVertex2f(0.0f, 256.0f);
        glTexCoord2f(1.0f, 1.0f);
        glVertex2f(256.0f, 256.0f);
        glTexCoord2f(1.0f, 0.0f);
        glVertex2f(256.0f, 0.0f);
        glEnd();
        glDisable(GL_TEXTURE_2D);
        glLineWidth(1.0f);
        glColor4f(0.0f, 0.0f, 0.0f, 1.0f);
        DrawPageTriangles(location, p);
        glTranslatef(0.0f, 260.0f, 0.0f);
    }
    glPopMatrix();
}

// Objects and pieces of a location (steps shared by the game and the closing scenes).
static void DrawScenery(const Location& location) {
    SetCameraFromScene();
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.0f);
    DrawObjects(location);
    glEnable(GL_COLOR_MATERIAL);
    if (g_glActiveTextureARB) {
        g_glActiveTextureARB(GL_TEXTURE0_ARB);
    }
    glDisable(GL_TEXTURE_2D);
    DrawLocationPieces(location);
}

static void DrawLampGlow() {
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_LIGHTING);
    glColor4f(1.0f, 1.0f, 1.0f, 0.2f);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    glDisable(GL_CULL_FACE);
    glDepthMask(GL_FALSE);
    g_textures.Bind("delver_light.tga");
    if (player && lampModel.frameVertices) {
        g_window.DrawMesh(MeshVertices(lampModel), lampModel.frameTriangles, player->position[0],
                          player->position[1], player->position[2], player->rotation[0], player->rotation[1],
                          player->rotation[2], 1, 1, 1);
    }
    glDisable(GL_BLEND);
    glEnable(GL_CULL_FACE);
    glDepthMask(GL_TRUE);
}

static void DrawCollisionDebug() {
    g_textures.Bind(nullptr);
    if (player) {
        glColor3f(1.0f, 1.0f, 0.0f);
        glBegin(GL_LINES);
        glVertex3fv(lastGround);
        glVertex3fv(player->position);
        glEnd();
    }
    glColor3f(0.0f, 1.0f, 0.0f);
    for (int s = 0; s < CollisionWorld::kSlotCount; s++) {
        const CollisionShape* shape = g_collision.slots[s];
        if (!shape) {
            continue;
        }
        for (const CollisionBox& box : shape->boxes) {
            if (!box.active) {
                continue;
            }
            glPushMatrix();
            glTranslatef(box.offset[0], box.offset[1], box.offset[2]);
            DrawBoxEdges(box.min, box.max);
            glPopMatrix();
        }
    }
}

void DrawGameView() {
    BeginSceneScissor();
    DrawScenery(g_location);
    DrawLampGlow();
    if (g_debug) {
        DrawCollisionDebug();
    }
    DrawParticles();
    EndSceneScissor();
    g_window.Begin2D();
    DrawLightingView(g_location);
    if (g_window.videoQuality == 2) {
        DrawGlowStrips(g_capturePass);
    }
    DrawScreenFlash(g_window.flashColour, g_window.flashIntensity);
    DrawGameHud();
    if (g_capturePass == 1) {
        return;
    }
    DrawDeveloperOverlays();
}

void DrawClosingScene() {
    BeginSceneScissor();
    DrawScenery(closingLocation);
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_LIGHTING);
    DrawParticles();
    EndSceneScissor();
    g_window.Begin2D();
    DrawLightingView(closingLocation);
    DrawHudFrame();
    static const float kWhite[3] = {1.0f, 1.0f, 1.0f};
    DrawScreenFlash(kWhite, g_window.flashIntensity);
    if (g_capturePass != 1) {
        DrawDeveloperOverlays();
    }
}
