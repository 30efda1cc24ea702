// "LMAP_BUILD" in a real window: the lighting screen is drawn again as the bake
// reports its progress, so its bar moves during a long bake, and the timing
// line is the same as ever.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "app/console.h"
#include "app/resource_commands.h"
#include "app/scene_hooks.h"
#include "draw_test_util.h"
#include "render/loading_screen.h"
#include "resources/location.h"
#include "resources/model_shapes.h"

namespace {

class LightmapProgressTest : public ::testing::Test {
protected:
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(800, 600));
        g_window.Resize(800, 600);
        saved = g_hooks;
        InstallResourceHooks();
        g_console.Clear();
    }
    void TearDown() override {
        g_hooks = saved;
        g_location.lightmaps.Clear();
        drawtest::PurgeTextures();
    }
    EngineHooks saved;
};

// A floor of many triangles under one light, so the bake reports progress many times.
void MakeLitFloor(Location& location) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    strcpy(piece->name, "floor");
    strcpy(piece->textureName, "textures\\wood.tga");
    MakeGridModel(piece->model, -200, 0, -200, 25, 16, 0.01f);
    location.pieces[location.pieceCount++] = piece;
    LocationEntity* light = new LocationEntity;
    strcpy(light->name, "light01");
    light->params = strdup("color=1,1,1\r\ndist=400\r\nshadows=0");
    light->position[1] = 100;
    location.entities[location.entityCount++] = light;
}

TEST_F(LightmapProgressTest, TheLightingScreenIsDrawnAgainAsTheBakeGoesOn) {
    // What one drawing of the lighting screen counts: its caption's triangles.
    g_window.BeginFrame();
    DrawLoadingScreen("gui_lighting.tga", "LIGHTING", 0.5f);
    unsigned int perScreen = g_window.polyCount;
    ASSERT_GT(perScreen, 0u);

    g_location.Clear();
    MakeLitFloor(g_location);
    g_location.lightmaps.quality = 0.2f;
    g_window.BeginFrame();
    ExecuteCommand("LMAP_BUILD");
    ASSERT_GE(g_location.lightmaps.pageCount, 1u);
    EXPECT_TRUE(std::regex_match(g_console.lines[0], std::regex("Lightmaps processed \\([0-9]+ms\\)")))
        << g_console.lines[0];
    // The screen at the start, then again as the bake reports: at least half-way and at the
    // end, at most once per hundredth.
    unsigned int screens = g_window.polyCount / perScreen;
    EXPECT_EQ(g_window.polyCount % perScreen, 0u);
    EXPECT_GE(screens, 3u);
    EXPECT_LE(screens, 102u);
}

}  // namespace
