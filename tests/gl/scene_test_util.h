// Shared by the scene tests: a location piece made of a box, and the game state
// emptied between tests.
#pragma once

#include <cstring>

#include "app/console.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "draw_test_util.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "render/game_view.h"
#include "resources/location.h"
#include "resources/model_shapes.h"

namespace scenetest {

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

// A suite drawing scenes in one 800 x 600 window, each test from an emptied game state.
class SceneTest : public drawtest::GlTest {
protected:
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(800, 600));
        ResetGameState();
    }
    void TearDown() override {
        ResetGameState();
        GlTest::TearDown();
    }
    // One game-view frame as the game draws it.
    static drawtest::Frame DrawFrame() {
        g_window.BeginFrame();
        DrawGameView();
        return drawtest::ReadFrame();
    }
};

}  // namespace scenetest
