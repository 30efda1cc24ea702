// The debug panel's five modes line by line, the counters it resets, the modes
// that change nothing, and the joystick figures the game publishes for it.
#include "ui/debug_panel.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_hooks.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/player.h"
#include "game_fixture.h"
#include "platform/sys_joystick.h"
#include "resources/location.h"
#include "ui/engine_texts.h"
#include "ui/text_batch.h"

namespace {

// The characters an entry shows, read back from its glyphs (characters the font lacks read "A").
std::string Shown(const TextBatch& batch, int index) {
    const TextEntry& entry = batch.entries[index];
    std::string text;
    for (int i = 0; i < entry.length; i++) {
        char c = '?';
        for (int b = 32; b < 256; b++) {
            if (TextBatch::GlyphIndex(static_cast<unsigned char>(b)) == entry.glyphs[i]) {
                c = static_cast<char>(b);
                break;
            }
        }
        text += c;
    }
    return text;
}

std::string Line(int index) {
    return Shown(g_debugValues, index);
}

class DebugPanelTest : public ::testing::Test {
protected:
    void SetUp() override {
        g_debugValues.Reset();
        g_netDebugText.Reset();
        g_debugTitles.Reset();
        g_loadingText.Reset();
        FillEngineTextBatches();
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
    EXPECT_EQ(Shown(g_debugTitles, 0), "General");
    EXPECT_EQ(Line(0), "FPS  : 50");
    EXPECT_EQ(Line(1), "Polys: 1234");
    EXPECT_EQ(Line(2), "Ticks: 40");
    EXPECT_EQ(Line(3), "Time : 3.14");
    EXPECT_EQ(Line(4), "FOV  : 22.50");
    for (int i = 5; i < 9; i++) {
        EXPECT_EQ(Line(i), "") << i;
    }
    EXPECT_EQ(g_window.framesDrawn, 0u);
    EXPECT_EQ(ticksRun, 0);
    EXPECT_GT(g_debugValues.triangleCount, 0u);  // rebuilt
    // The engine mark and the build line stay where start-up put them.
    EXPECT_EQ(Shown(g_debugTitles, 1), "Vantle");
    EXPECT_EQ(Shown(g_debugTitles, 3), "Build 1010");
}

TEST_F(DebugPanelTest, CameraAndMouseShowTheirFiguresAndEmptyTheLinesBelow) {
    // Mode 0 first fills five lines; Camera fills five; Mouse fills eight.
    float camera[6] = {1.5f, -2.25f, 300.0f, 12.0f, 181.5f, 0.0f};
    memcpy(g_window.renderCamera, camera, sizeof(camera));
    g_debugMode = 1;
    RefreshDebugPanel();
    EXPECT_EQ(Shown(g_debugTitles, 0), "Camera");
    EXPECT_EQ(Line(0), "CamX : 1.50");
    EXPECT_EQ(Line(1), "CamY : -2.25");
    EXPECT_EQ(Line(2), "CamZ : 300.00");
    EXPECT_EQ(Line(3), "CamYw: 181.50");
    EXPECT_EQ(Line(4), "CamPt: 12.00");

    g_window.mouse2D[0] = 400;
    g_window.mouse2D[1] = 250.5f;
    g_window.mouse3D[0] = -1;
    g_window.mouse3D[1] = 2;
    g_window.mouse3D[2] = 3.25f;
    g_dragState = 2;
    g_joystickAngle = 270;
    g_joystickX = -1;
    g_joystickY = 0.5f;
    g_debugMode = 2;
    RefreshDebugPanel();
    g_dragState = 0;
    EXPECT_EQ(Shown(g_debugTitles, 0), "Mouse");
    EXPECT_EQ(Line(0), "2D.x: 400.00");
    EXPECT_EQ(Line(1), "2D.y: 250.50");
    EXPECT_EQ(Line(2), "3D.x: -1.00");
    EXPECT_EQ(Line(3), "3D.y: 2.00");
    EXPECT_EQ(Line(4), "3D.z: 3.25");
    EXPECT_EQ(Line(5), "Down: 2");
    EXPECT_EQ(Line(6), "Joy_Angle: 270.00");
    EXPECT_EQ(Line(7), "Joy_X/Y  : -1.00, 0.50");
    EXPECT_EQ(Line(8), "");

    g_debugMode = 1;
    RefreshDebugPanel();
    EXPECT_EQ(Line(5), "");
    EXPECT_EQ(Line(7), "");
}

TEST_F(DebugPanelTest, PlayerWithoutAPlayerAndUnknownModesChangeNothing) {
    RefreshDebugPanel();
    g_window.framesDrawn = 9;
    ticksRun = 3;
    player = nullptr;
    for (int mode : {3, 5, 200}) {
        g_debugMode = static_cast<uint8_t>(mode);
        RefreshDebugPanel();
        EXPECT_EQ(Shown(g_debugTitles, 0), "General") << mode;
        EXPECT_EQ(Line(0), "FPS  : 0") << mode;
        EXPECT_EQ(g_window.framesDrawn, 9u) << mode;
        EXPECT_EQ(ticksRun, 3) << mode;
    }

    GameObject hero;
    float position[3] = {10, -20.5f, 30};
    float velocity[3] = {0, 4.75f, -2.25f};
    memcpy(hero.position, position, sizeof(position));
    memcpy(hero.velocity, velocity, sizeof(velocity));
    player = &hero;
    g_debugMode = 3;
    RefreshDebugPanel();
    player = nullptr;
    EXPECT_EQ(Shown(g_debugTitles, 0), "Player");
    EXPECT_EQ(Line(0), "Pos : 10.00, -20.50, 30.00");
    EXPECT_EQ(Line(1), "Vel : 0.00, 4.75, -2.25");
    EXPECT_EQ(Line(2), "");
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
    EXPECT_EQ(Shown(g_debugTitles, 0), "Lighting");
    EXPECT_EQ(Line(0), "Lights: 3");
    EXPECT_EQ(Line(1), "Sheets: 2");
    EXPECT_EQ(Line(2),
              "Memory: " + std::to_string(bytes / 1024) + "kb (" + std::to_string(bytes) + " bytes)");
    EXPECT_EQ(Line(3), "");
}

class JoystickFigures : public test::GameFixture {};

int g_stickX, g_stickY;

int FakeStick(SysJoystickState* out) {
    memset(out, 0, sizeof(*out));
    out->x = static_cast<unsigned int>(g_stickX);
    out->y = static_cast<unsigned int>(g_stickY);
    return 1;
}

TEST_F(JoystickFigures, TheGamePublishesTheStickItReadsForTheMousePanel) {
    AddPiece("floor", "textures\\01\\rock.tga", -400, -100, -400, 400, 0, 400);
    AddEntity("player", 0, 0, 0, 0);
    StartLevel();
    ASSERT_NE(player, nullptr);
    g_readJoystick = FakeStick;
    g_stickX = 65535;  // hard right
    g_stickY = 32768;
    Tick();
    EXPECT_NEAR(g_joystickAngle, 90.0f, 0.01f);
    EXPECT_NEAR(g_joystickX, 1.0f, 1e-4f);
    EXPECT_FLOAT_EQ(g_joystickY, 0.0f);  // inside the dead zone
    g_stickX = 0;                        // hard left and down
    g_stickY = 65535;
    Tick();
    EXPECT_NEAR(g_joystickX, -0.7071f, 1e-3f);
    EXPECT_NEAR(g_joystickY, 0.7071f, 1e-3f);
    EXPECT_NEAR(g_joystickAngle, 225.0f, 0.01f);
    g_readJoystick = nullptr;
    Tick();
    EXPECT_FLOAT_EQ(g_joystickAngle, 0.0f);
    EXPECT_FLOAT_EQ(g_joystickX, 0.0f);
}

}  // namespace
