// Shared by the scene tests: solid-colour textures put under the names the
// scenes bind, a location piece made of a box, the game state emptied between
// tests, and a frame's pixel tests.
#pragma once

#include <cstdlib>
#include <cstring>
#include <functional>
#include <vector>

#include "app/console.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "draw_test_util.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "resources/location.h"
#include "resources/model_shapes.h"
#include "resources/tga_image.h"

namespace scenetest {

// Uploads a size x size texture under name from rgba(x, y, out) (bits 32, or 24 without alpha);
// true when it took a slot.
inline bool PatternTexture(const char* name, int bits, int size,
                           const std::function<void(int, int, unsigned char*)>& rgba) {
    int channels = bits / 8;
    std::vector<unsigned char> pixels(size * size * channels);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            unsigned char texel[4];
            rgba(x, y, texel);
            memcpy(&pixels[(y * size + x) * channels], texel, channels);
        }
    }
    g_textures.resources = &g_resources;
    int slot = 0;
    while (slot < TextureManager::kSlots && g_textures.names[slot][0]) {
        slot++;
    }
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), size, size, bits, 0, &length);
    if (!file || slot == TextureManager::kSlots) {
        free(file);
        return false;
    }
    int loaded = g_textures.LoadSlot(name, file, length, slot);
    free(file);
    return loaded == 1;
}

// Uploads a size x size texture of one RGBA colour under name; true when it took a slot.
inline bool SolidTexture(const char* name, unsigned char r, unsigned char g, unsigned char b,
                         unsigned char a = 255, int size = 8) {
    return PatternTexture(name, 32, size, [&](int, int, unsigned char* out) {
        out[0] = r;
        out[1] = g;
        out[2] = b;
        out[3] = a;
    });
}

// Appends a box piece to the location; its index.
inline int AddBoxPiece(Location& location, const char* name, const float* lo, const float* hi,
                       unsigned char flags = 0, const char* texture = "white.tga") {
    LocationPiece* piece = new LocationPiece();
    memset(piece->name, 0, sizeof(piece->name));
    strncpy(piece->name, name, sizeof(piece->name) - 1);
    memset(piece->textureName, 0, sizeof(piece->textureName));
    strncpy(piece->textureName, texture, sizeof(piece->textureName) - 1);
    MakeBoxModel(piece->model, lo, hi, 0.01f);
    piece->model.modelFlag = flags;
    int index = location.pieceCount;
    location.pieces[index] = piece;
    location.pieceCount++;
    return index;
}

// Empties the game state the scene draws read.
inline void ResetGameState() {
    g_location.Clear();
    g_location.lightmaps.Clear();
    closingLocation.Clear();
    closingLocation.lightmaps.Clear();
    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    lives = 3;
    air = 100.0f;
    levelComplete = 0;
    animClock = 0.0f;
    ResetParticles();
    g_window.flashIntensity = 0.0f;
    g_window.videoQuality = 0;
    g_debug = 0;
    g_debugMode = 0;
    g_console.visible = 0;
    g_console.slide = -240.0f;
    g_capturePass = 0;
    g_window.fov = 30.0f;
    g_window.frustumFlag = 1;
    g_camera.position = Vec3{0.0f, 0.0f, 300.0f};
    g_camera.pitch = 0.0f;
    g_camera.yaw = 180.0f;
    g_camera.roll = 0.0f;
    g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 0.0f;
}

// True when every channel is within tolerance of (r, g, b).
inline bool Near(const unsigned char* rgb, int r, int g, int b, int tolerance = 6) {
    return abs(rgb[0] - r) <= tolerance && abs(rgb[1] - g) <= tolerance && abs(rgb[2] - b) <= tolerance;
}

}  // namespace scenetest
