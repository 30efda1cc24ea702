// The debug panel's five modes line by line, the counters it resets, and the modes
// that change nothing.
#include "ui/debug_panel.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_hooks.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/player.h"
#include "resources/location.h"
#include "text_shown.h"
#include "ui/engine_texts.h"
#include "ui/text_batch.h"

namespace {

using test::Shown;

using Lines = std::vector<std::string>;

// The panel's title and its nine value lines.
Lines Panel() {
    Lines lines = {Shown(g_debugTitles, 0)};
    for (int i = 0; i < 9; i++) {
        lines.push_back(Shown(g_debugValues, i));
    }
    return lines;
}

class DebugPanelTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_debugValues.Reset();
        g_netDebugText.Reset();
        g_debugTitles.Reset();
        g_loadingText.Reset();
        FillEngineTextBatches();
        // What the last mode showed: each mode must empty the lines it does not use.
        for (int i = 0; i < 9; i++) {
            g_debugValues.SetText(i, "stale");
        }
        g_debugMode = 0;
        g_window.framesDrawn = 0;
        ticksRun = 0;
        g_joystickAngle = g_joystickX = g_joystickY = 0;
    }
    void TearDown() override {
        g_debugMode = 0;
        g_location.lightmaps.Clear();
    }
};

TEST_F(DebugPanelTest, GeneralCountsPerHundredMillisecondsTimesTenAndResetsTheCounters) {
    g_window.framesDrawn = 5;
    ticksRun = 4;
    g_window.polyCount = 1234;
    g_window.fov = 22.5f;
    animClock = 3.14159f;
    RefreshDebugPanel();
    EXPECT_EQ(Panel(), (Lines{"General", "FPS  : 50", "Polys: 1234", "Ticks: 40", "Time : 3.14", "FOV  : 22.50",
                              "", "", "", ""}));
    // The counters start again for the next 100 ms.
    EXPECT_EQ(g_window.framesDrawn, 0u);
    EXPECT_EQ(ticksRun, 0);
}

TEST_F(DebugPanelTest, CameraAndMouseShowTheirFiguresAndEmptyTheLinesBelow) {
    float camera[6] = {1.5f, -2.25f, 300.0f, 12.0f, 181.5f, 0.0f};
    memcpy(g_window.renderCamera, camera, sizeof(camera));
    float mouse[5] = {400, 250.5f, -1, 2, 3.25f};
    memcpy(g_window.mouse2D, mouse, sizeof(g_window.mouse2D));
    memcpy(g_window.mouse3D, mouse + 2, sizeof(g_window.mouse3D));
    g_dragState = 2;
    g_joystickAngle = 270;
    g_joystickX = -1;
    g_joystickY = 0.5f;
    g_debugMode = 2;
    RefreshDebugPanel();
    g_dragState = 0;
    EXPECT_EQ(Panel(), (Lines{"Mouse", "2D.x: 400.00", "2D.y: 250.50", "3D.x: -1.00", "3D.y: 2.00", "3D.z: 3.25",
                              "Down: 2", "Joy_Angle: 270.00", "Joy_X/Y  : -1.00, 0.50", ""}));
    g_debugMode = 1;
    RefreshDebugPanel();
    EXPECT_EQ(Panel(), (Lines{"Camera", "CamX : 1.50", "CamY : -2.25", "CamZ : 300.00", "CamYw: 181.50",
                              "CamPt: 12.00", "", "", "", ""}));
}

TEST_F(DebugPanelTest, PlayerWithoutAPlayerAndUnknownModesChangeNothing) {
    RefreshDebugPanel();
    Lines general = Panel();
    g_window.framesDrawn = 9;
    ticksRun = 3;
    player = nullptr;
    for (int mode : {3, 5, 200}) {
        g_debugMode = static_cast<uint8_t>(mode);
        RefreshDebugPanel();
        EXPECT_EQ(Panel(), general) << mode;
        EXPECT_EQ(g_window.framesDrawn, 9u) << mode;
    }
    GameObject hero;
    float motion[6] = {10, -20.5f, 30, 0, 4.75f, -2.25f};
    memcpy(hero.position, motion, sizeof(hero.position));
    memcpy(hero.velocity, motion + 3, sizeof(hero.velocity));
    player = &hero;
    g_debugMode = 3;
    RefreshDebugPanel();
    player = nullptr;
    EXPECT_EQ(Panel(), (Lines{"Player", "Pos : 10.00, -20.50, 30.00", "Vel : 0.00, 4.75, -2.25", "", "", "", "",
                              "", "", ""}));
    EXPECT_EQ(g_window.framesDrawn, 0u);
}

TEST_F(DebugPanelTest, LightingShowsTheLevelsLightsPagesAndSerialisedSize) {
    LightmapSet& set = g_location.lightmaps;
    set.Clear();
    set.AddLight(0, 0, 0, 1, 1, 1, 100, 0);
    set.AddLight(5, 5, 5, 1, 0, 0, 50, 1);
    set.AddLight(9, 9, 9, 0, 0, 1, 20, 0);
    ASSERT_NE(set.EnsurePage(0), nullptr);
    ASSERT_NE(set.EnsurePage(1), nullptr);
    unsigned int bytes = set.Size();
    ASSERT_GT(bytes, 2u * LightmapSet::kPageBytes);  // two pages of texels at least
    g_debugMode = 4;
    RefreshDebugPanel();
    std::string memory = "Memory: " + std::to_string(bytes / 1024) + "kb (" + std::to_string(bytes) + " bytes)";
    EXPECT_EQ(Panel(), (Lines{"Lighting", "Lights: 3", "Sheets: 2", memory, "", "", "", "", "", ""}));
}

}  // namespace
