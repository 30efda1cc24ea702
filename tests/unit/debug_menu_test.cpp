// The developer menu driven through the mouse state, tick by tick in the main
// loop's order (click bookkeeping, menu, dialog, mouse camera): where it
// opens, what it offers, hover bands, what its items run, and right drags
// that turn the camera instead.
#include "ui/debug_menu.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "app/developer_hooks.h"
#include "app/gl_window.h"
#include "app/input.h"
#include "app/main_loop.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "platform/sys_events.h"
#include "ui/gui_window.h"

namespace {

std::string Shown(const TextBatch& batch, int index) {
    const TextEntry& entry = batch.entries[index];
    std::string text;
    for (int i = 0; i < entry.length; i++) {
        for (int b = 32; b < 256; b++) {
            if (TextBatch::GlyphIndex(static_cast<unsigned char>(b)) == entry.glyphs[i]) {
                text += static_cast<char>(b);
                break;
            }
        }
    }
    return text;
}

// What the lightmap hooks saw: the quality in force at each bake.
float g_quality;
std::vector<float> g_bakes;

float* Quality() {
    return &g_quality;
}
void Bake() {
    g_bakes.push_back(g_quality);
}

class DebugMenuTest : public ::testing::Test {
protected:
    void SetUp() override {
        saved = g_hooks;
        g_hooks = EngineHooks();
        g_hooks.lightmapQuality = Quality;
        g_hooks.lightmapBuild = Bake;
        g_quality = -1;
        g_bakes.clear();
        g_debugMenu.Reset();
        g_debug = 0;
        g_debugMode = 0;
        g_dragState = 0;
        g_dragMoved = 0;
        g_window.mouseButtons = 0;
        memset(&g_camera, 0, sizeof(g_camera));
        Sys_FlushMessages();
        Move(400, 300);
    }
    void TearDown() override {
        g_hooks = saved;
        g_debugMenu.Reset();
        g_debug = 0;
        g_debugMode = 0;
        g_window.mouseButtons = 0;
        g_dragState = 0;
        Sys_FlushMessages();
    }

    // One tick of the loop's input steps.
    static void Tick() {
        EndClick();
        UpdateDebugMenu();
        UpdateGuiWindow();
        MouseCamera();
    }
    static void Move(float x, float y) {
        g_window.mouse2D[0] = x;
        g_window.mouse2D[1] = y;
        Tick();
    }
    static void Press(int buttons) {
        g_window.mouseButtons = static_cast<uint8_t>(buttons);
        Tick();
    }
    static void Release() { Press(0); }
    static void RightClickAt(float x, float y) {
        Move(x, y);
        Press(2);
        Release();
    }
    static void LeftClickAt(float x, float y) {
        Move(x, y);
        Press(1);
        Release();
    }

    EngineHooks saved;
};

TEST_F(DebugMenuTest, ARightClickOpensTheEngineMenuTenUnitsBelowThePointer) {
    RightClickAt(300, 200);
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_EQ(g_menuKind, MenuKindEngine);
    EXPECT_FLOAT_EQ(g_debugMenu.x, 300);
    EXPECT_FLOAT_EQ(g_debugMenu.y, 210);
    EXPECT_FLOAT_EQ(g_debugMenu.width, 160);
    EXPECT_FLOAT_EQ(g_debugMenu.height, 90);
    EXPECT_EQ(g_debugMenu.itemCount, 6u);
    EXPECT_STREQ(g_debugMenu.title, "Vantle 2");
    EXPECT_EQ(Shown(g_debugMenu.text, 0), "Vantle 2");
    EXPECT_FLOAT_EQ(g_debugMenu.text.entries[0].y, -17);
    EXPECT_FLOAT_EQ(g_debugMenu.text.entries[0].size, 14);
    const char* items[] = {"Preview   lightmaps", "Build  1x lightmaps", "Build  4x lightmaps",
                           "Build  8x lightmaps", "Build 16x lightmaps", "Quit to desktop"};
    for (int k = 0; k < 6; k++) {
        EXPECT_EQ(Shown(g_debugMenu.text, k + 1), items[k]);
        EXPECT_FLOAT_EQ(g_debugMenu.text.entries[k + 1].y, 15.0f * k + 2);
        EXPECT_FLOAT_EQ(g_debugMenu.text.entries[k + 1].width, 160);
        EXPECT_FLOAT_EQ(g_debugMenu.text.entries[k + 1].size, 10);
    }
    EXPECT_GT(g_debugMenu.text.triangleCount, 0u);
    // A second right click closes it.
    Press(2);
    EXPECT_EQ(g_debugMenu.open, 0);
}

TEST_F(DebugMenuTest, TheMenuStaysOnScreenAtTheEdges) {
    RightClickAt(799, 599);
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_FLOAT_EQ(g_debugMenu.y + g_debugMenu.height, 590);
    EXPECT_FLOAT_EQ(g_debugMenu.x + g_debugMenu.width, 790);
    // A click outside the box closes it; just clear of both edges it opens where asked.
    LeftClickAt(629, 489);
    EXPECT_EQ(g_debugMenu.open, 0);
    RightClickAt(629, 489);
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_FLOAT_EQ(g_debugMenu.x, 629);
    EXPECT_FLOAT_EQ(g_debugMenu.y, 499);
}

TEST_F(DebugMenuTest, RightClickingElsewhereMovesTheOpenMenu) {
    RightClickAt(100, 100);
    ASSERT_EQ(g_debugMenu.open, 1);
    Move(500, 300);
    Press(2);
    EXPECT_EQ(g_debugMenu.open, 0);  // the press closes it
    Release();
    ASSERT_EQ(g_debugMenu.open, 1);  // the release opens it here
    EXPECT_FLOAT_EQ(g_debugMenu.x, 500);
    EXPECT_FLOAT_EQ(g_debugMenu.y, 310);
}

TEST_F(DebugMenuTest, ARightDragTurnsTheCameraAndOpensNothing) {
    Move(200, 200);
    Press(2);
    g_window.mouse2D[0] = 250;
    Tick();
    Release();
    EXPECT_EQ(g_debugMenu.open, 0);
    EXPECT_FLOAT_EQ(g_camera.yaw, 350);  // 50 units left turn 10 degrees
    // A left click opens nothing either.
    LeftClickAt(300, 300);
    EXPECT_EQ(g_debugMenu.open, 0);
}

TEST_F(DebugMenuTest, HoverBandsAreFifteenUnitsTall) {
    RightClickAt(100, 90);  // box from (100, 100), 160 x 90
    struct {
        float x, y;
        uint32_t hover;
    } cases[] = {{100, 100, 1},    {259.9f, 114.9f, 1}, {150, 115, 2}, {150, 144.9f, 3}, {150, 145, 4},
                 {150, 189.9f, 6}, {150, 190, 0},       {260, 120, 0}, {99.9f, 120, 0},  {150, 99.9f, 0}};
    for (const auto& c : cases) {
        Move(c.x, c.y);
        EXPECT_EQ(g_debugMenu.hover, c.hover) << c.x << ", " << c.y;
        EXPECT_EQ(g_debugMenu.open, 1);
    }
}

TEST_F(DebugMenuTest, ItemsRunTheirCommandsAndCloseTheMenu) {
    const float qualities[] = {0.0f, 0.1f, 0.4f, 0.8f, 1.6f};
    for (int item = 0; item < 5; item++) {
        RightClickAt(100, 90);
        Move(150, 100 + 15.0f * item + 7);
        g_window.mouseButtons = 1;
        Tick();
        EXPECT_EQ(g_debugMenu.open, 0);
        EXPECT_EQ(g_window.mouseButtons, 0);  // the click is used up
        ASSERT_EQ(g_bakes.size(), static_cast<size_t>(item + 1));
        EXPECT_FLOAT_EQ(g_bakes.back(), qualities[item]) << item;
        Release();
    }
    SysMessage message;
    EXPECT_EQ(Sys_PeekMessage(&message), 0);
    RightClickAt(100, 90);
    LeftClickAt(150, 100 + 15 * 5 + 1);
    ASSERT_EQ(Sys_PeekMessage(&message), 1);
    EXPECT_EQ(message.message, static_cast<unsigned int>(WM_QUIT));
    EXPECT_EQ(g_bakes.size(), 5u);
}

TEST_F(DebugMenuTest, PressesOutsideTheBoxOnlyClose) {
    RightClickAt(100, 90);
    LeftClickAt(400, 400);
    EXPECT_EQ(g_debugMenu.open, 0);
    RightClickAt(100, 90);
    Move(150, 120);
    Press(4);  // middle button inside
    EXPECT_EQ(g_debugMenu.open, 0);
    Release();
    EXPECT_TRUE(g_bakes.empty());
    EXPECT_EQ(g_quality, -1);
}

TEST_F(DebugMenuTest, ThePanelCornerOffersTheDebugStatsWhileDebugging) {
    RightClickAt(50, 20);
    EXPECT_EQ(g_menuKind, MenuKindEngine);  // not debugging: the engine menu
    Press(2);
    Release();
    Press(2);  // closed again
    g_debug = 1;
    Release();
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_EQ(g_menuKind, MenuKindDebugStats);
    EXPECT_STREQ(g_debugMenu.title, "Debug stats");
    EXPECT_FLOAT_EQ(g_debugMenu.width, 140);
    EXPECT_EQ(g_debugMenu.itemCount, 5u);
    EXPECT_EQ(Shown(g_debugMenu.text, 5), "Lighting");
    EXPECT_FLOAT_EQ(g_debugMenu.text.entries[5].width, 140);
    LeftClickAt(60, 30 + 15 * 4 + 3);
    EXPECT_EQ(g_debugMode, 4);
    EXPECT_EQ(g_debugMenu.open, 0);
    EXPECT_TRUE(g_bakes.empty());
    // Outside the corner it is the engine menu again.
    RightClickAt(140, 20);
    EXPECT_EQ(g_menuKind, MenuKindEngine);
}

TEST_F(DebugMenuTest, TitlesOfFortyNineCharactersAreIgnored) {
    g_debugMenu.SetTitle("Short");
    EXPECT_STREQ(g_debugMenu.title, "Short");
    g_debugMenu.SetTitle(std::string(49, 'x').c_str());
    EXPECT_STREQ(g_debugMenu.title, "Short");
    g_debugMenu.SetTitle(std::string(48, 'y').c_str());
    EXPECT_EQ(strlen(g_debugMenu.title), 48u);
}

TEST_F(DebugMenuTest, TheMainLoopTicksRunTheMenuOnceInstalled) {
    InstallDeveloperHooks();
    EXPECT_NE(g_hooks.consoleKeys, nullptr);
    EXPECT_NE(g_hooks.refreshDebugPanel, nullptr);
    EXPECT_NE(g_hooks.guiUpdate, nullptr);
    g_window.mouse2D[0] = 321;
    g_window.mouse2D[1] = 123;
    RunTick();
    g_window.mouseButtons = 2;
    RunTick();
    g_window.mouseButtons = 0;
    RunTick();
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_FLOAT_EQ(g_debugMenu.x, 321);
    EXPECT_FLOAT_EQ(g_debugMenu.y, 133);
}

}  // namespace
