// The console's commands: parsing, effects and usage lines as a user sees them in the log.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "platform/sys_events.h"
#include "platform/sys_message_box.h"

namespace {

std::string g_lastBox;
int g_boxes;

void CatchBox(const char* text, const char*, unsigned int) {
    g_lastBox = text;
    g_boxes++;
}

class ConsoleCommands : public ::testing::Test {
protected:
    void SetUp() override {
        g_console.Clear();
        g_window.width = 640;
        g_window.height = 480;
        g_window.fov = 20.0f;
        g_window.fullScreen = 0;
        g_window.vsync = 0;
        g_window.videoQuality = 0;
        g_window.frustumFlag = 1;
        g_window.fogStart = 1.0f;
        g_window.fogEnd = 100.0f;
        memset(g_window.renderCamera, 0, sizeof(g_window.renderCamera));
        memset(&g_camera, 0, sizeof(g_camera));
        g_debug = 0;
        g_debugMode = 0;
        highScore = 0;
        Sys_SetMessageBoxHook(CatchBox);
        g_boxes = 0;
        Sys_FlushMessages();
    }
    void TearDown() override {
        Sys_SetMessageBoxHook(nullptr);
        Sys_FlushMessages();
    }
    static std::string Line(int i) { return g_console.lines[i]; }
};

TEST_F(ConsoleCommands, CommandWordsAreCaseInsensitive) {
    ExecuteCommand("vid_fov 45");
    EXPECT_FLOAT_EQ(g_window.fov, 45.0f);
    ExecuteCommand("Vid_Fov 30.5");
    EXPECT_FLOAT_EQ(g_window.fov, 30.5f);
}

TEST_F(ConsoleCommands, UsageLinesShowCurrentValues) {
    ExecuteCommand("VID_FOV");
    EXPECT_EQ(Line(0), "VID_FOV <FOV> (20.00)");
    ExecuteCommand("VID_SIZE");
    EXPECT_EQ(Line(0), "VID_SIZE <WIDTH>,<HEIGHT> (640, 480)");
    ExecuteCommand("VID_QUALITY");
    EXPECT_EQ(Line(0), "VID_QUALITY <1/0> (0)");
    ExecuteCommand("VID_FULL");
    EXPECT_EQ(Line(0), "VID_FULL <1/0> (0)");
    ExecuteCommand("VID_VSYNC");
    EXPECT_EQ(Line(0), "VID_VSYNC <1/0> (0)");
    ExecuteCommand("VID_NORMALS");
    EXPECT_EQ(Line(0), "VID_NORMALS <1/0> (0)");
    ExecuteCommand("DEBUG_FRUSTUM");
    EXPECT_EQ(Line(0), "DEBUG_FRUSTUM <1/0> (1)");
    ExecuteCommand("DEBUG");
    EXPECT_EQ(Line(0), "DEBUG <1/0>");
    ExecuteCommand("DEBUG_MODE");
    EXPECT_EQ(Line(0), "DEBUG_MODE <1/0> (0)");
    ExecuteCommand("HIGHSCORE");
    EXPECT_EQ(Line(0), "HIGHSCORE <score> (0)");
    ExecuteCommand("LOCATION_FOG_END");
    EXPECT_EQ(Line(0), "LOCATION_FOG_END <END> (100.00)");
    ExecuteCommand("LOCATION_FOG_START");
    EXPECT_EQ(Line(0), "LOCATION_FOG_START <START> (1.00)");
    ExecuteCommand("LOCATION_LOAD");
    EXPECT_EQ(Line(0), "LOCATION_LOAD <NAME>");
    ExecuteCommand("VID_SETTING");
    EXPECT_EQ(Line(0), "VID_SETTING <1-6>");
    ExecuteCommand("LMAP_QUALITY");
    EXPECT_EQ(Line(0), "LMAP_QUALITY <VALUE> (0.10)");
}

TEST_F(ConsoleCommands, CameraUsageShowsTheRenderCamera) {
    g_window.renderCamera[0] = 1.5f;
    g_window.renderCamera[1] = -2.0f;
    g_window.renderCamera[2] = 3.25f;
    g_window.renderCamera[3] = 10.0f;
    g_window.renderCamera[4] = 180.0f;
    g_window.renderCamera[5] = 0.5f;
    g_camera.position = {9.0f, 9.0f, 9.0f};
    ExecuteCommand("CAMERA_POS");
    EXPECT_EQ(Line(0), "CAMERA_POS <X,Y,Z> (1.50,-2.00,3.25)");
    ExecuteCommand("CAMERA_ROT");
    EXPECT_EQ(Line(0), "CAMERA_ROT <X,Y,Z> (10.00,180.00,0.50)");
}

TEST_F(ConsoleCommands, CameraCoordinatesAreSetAsTheyAreRead) {
    g_camera.position = {7.0f, 7.0f, 7.0f};
    ExecuteCommand("CAMERA_POS 1,2");
    EXPECT_FLOAT_EQ(g_camera.position.x, 1.0f);
    EXPECT_FLOAT_EQ(g_camera.position.y, 2.0f);
    EXPECT_FLOAT_EQ(g_camera.position.z, 7.0f);
    EXPECT_EQ(Line(0), "");  // nothing printed
    ExecuteCommand("CAMERA_ROT 10.5,-20,30");
    EXPECT_FLOAT_EQ(g_camera.pitch, 10.5f);
    EXPECT_FLOAT_EQ(g_camera.yaw, -20.0f);
    EXPECT_FLOAT_EQ(g_camera.roll, 30.0f);
}

TEST_F(ConsoleCommands, VidSizeNeedsBothNumbersAndAcceptsFourSeparators) {
    ExecuteCommand("VID_SIZE 1024");
    EXPECT_EQ(g_window.width, 640);
    EXPECT_EQ(g_window.height, 480);
    EXPECT_EQ(Line(0), "VID_SIZE <WIDTH>,<HEIGHT> (640, 480)");
    const char* forms[] = {"VID_SIZE 800x600", "VID_SIZE 800,600", "VID_SIZE 800.600", "VID_SIZE 800 600"};
    for (const char* form : forms) {
        g_window.width = 1;
        g_window.height = 1;
        ExecuteCommand(form);
        EXPECT_EQ(g_window.width, 800) << form;
        EXPECT_EQ(g_window.height, 600) << form;
    }
}

TEST_F(ConsoleCommands, FlagsStoreOneForAnyNonZero) {
    ExecuteCommand("VID_FULL 7");
    EXPECT_EQ(g_window.fullScreen, 1);
    ExecuteCommand("VID_VSYNC -1");
    EXPECT_EQ(g_window.vsync, 1);
    ExecuteCommand("DEBUG_FRUSTUM 0");
    EXPECT_EQ(g_window.frustumFlag, 0);
    ExecuteCommand("VID_NORMALS abc");
    EXPECT_EQ(g_window.showNormals, 0);
}

TEST_F(ConsoleCommands, QualitySetsTheLightFactor) {
    ExecuteCommand("VID_QUALITY 2");
    EXPECT_EQ(g_window.videoQuality, 2);
    EXPECT_FLOAT_EQ(g_window.lightFactor, 0.4f);
    ExecuteCommand("VID_QUALITY 0");
    EXPECT_FLOAT_EQ(g_window.lightFactor, 0.6f);
}

TEST_F(ConsoleCommands, DebugValuesKeepTheirLowByte) {
    ExecuteCommand("DEBUG_MODE 3");
    EXPECT_EQ(g_debugMode, 3);
    ExecuteCommand("DEBUG 257");
    EXPECT_EQ(g_debug, 1);
}

TEST_F(ConsoleCommands, BadNumbersReadAsZero) {
    ExecuteCommand("VID_FOV abc");
    EXPECT_FLOAT_EQ(g_window.fov, 0.0f);
    ExecuteCommand("VID_SETTING abc");
    EXPECT_EQ(Line(0), "VID_SETTING <1-6>");
    ExecuteCommand("VID_SETTING 7");
    EXPECT_EQ(Line(0), "VID_SETTING <1-6>");
    EXPECT_EQ(g_window.width, 640);
}

TEST_F(ConsoleCommands, CommentsAndLeadingBlanks) {
    ExecuteCommand("// VID_FULL 1");
    EXPECT_EQ(g_window.fullScreen, 0);
    EXPECT_EQ(Line(0), "");
    ExecuteCommand("  VID_FULL 1");
    EXPECT_EQ(g_window.fullScreen, 1);
}

TEST_F(ConsoleCommands, UnknownCommandsNameTheirFirstWord) {
    ExecuteCommand("FOO bar baz");
    EXPECT_EQ(Line(0), "Unknown Command \"FOO\"");
    ExecuteCommand("   ");
    EXPECT_EQ(Line(0), "Unknown Command \"   \"");
    g_console.AddLine("kept");
    ExecuteCommand("CLS ");
    EXPECT_EQ(Line(0), "Unknown Command \"CLS\"");
    EXPECT_EQ(Line(1), "kept");
}

TEST_F(ConsoleCommands, ClsAndQuitCompareTheWholeLine) {
    g_console.AddLine("something");
    strcpy(g_console.inputLine, "typed");
    ExecuteCommand("cls");
    EXPECT_EQ(Line(0), "");
    EXPECT_STREQ(g_console.inputLine, "");
    ExecuteCommand("QUIT");
    SysMessage message;
    ASSERT_EQ(Sys_PeekMessage(&message), 1);
    EXPECT_EQ(message.message, static_cast<unsigned>(WM_QUIT));
    EXPECT_EQ(message.window, nullptr);
}

TEST_F(ConsoleCommands, HighScoreIsStoredAndAnnounced) {
    static int announced;
    announced = 0;
    g_hooks.highScoreChanged = [] { announced++; };
    ExecuteCommand("HIGHSCORE 1234");
    g_hooks.highScoreChanged = nullptr;
    EXPECT_EQ(highScore, 1234u);
    EXPECT_EQ(announced, 1);
    ExecuteCommand("HIGHSCORE");
    EXPECT_EQ(Line(0), "HIGHSCORE <score> (1234)");
}

TEST_F(ConsoleCommands, LmapQualityIsATenthOfTheValue) {
    ExecuteCommand("LMAP_QUALITY 4");
    EXPECT_EQ(Line(0), "Lightmap quality set to 0.40");
    ExecuteCommand("LMAP_QUALITY");
    EXPECT_EQ(Line(0), "LMAP_QUALITY <VALUE> (0.40)");
    static float quality = 0.1f;
    g_hooks.lightmapQuality = [] { return &quality; };
    ExecuteCommand("LMAP_QUALITY 16");
    g_hooks.lightmapQuality = nullptr;
    EXPECT_FLOAT_EQ(quality, 1.6f);
    ExecuteCommand("LMAP_QUALITY 1");  // restore the fallback for other tests
}

TEST_F(ConsoleCommands, LocationLoadHandsOverTheRestOfTheLine) {
    static std::string name;
    g_hooks.locationLoad = [](const char* n) { name = n; };
    ExecuteCommand("LOCATION_LOAD levels\\01.vlc with  blanks");
    g_hooks.locationLoad = nullptr;
    EXPECT_EQ(name, "levels\\01.vlc with  blanks");
}

TEST_F(ConsoleCommands, VidSettingPicksAModeAndRestarts) {
    static int purged;
    purged = 0;
    g_hooks.purgeTextures = [] { purged++; };
    ExecuteCommand("VID_SETTING 3");
    g_hooks.purgeTextures = nullptr;
    EXPECT_EQ(g_window.width, 1024);
    EXPECT_EQ(g_window.height, 768);
    EXPECT_EQ(g_window.fullScreen, 1);
    EXPECT_EQ(purged, 1);
    // No display in unit tests: the restart's window creation fails with its message box.
    EXPECT_EQ(g_boxes, 1);
    EXPECT_EQ(g_lastBox, "halix_Renderer : Failed To Register The Window Class.");
    EXPECT_EQ(g_window.window, nullptr);
}

TEST_F(ConsoleCommands, VidRestartRunsItsStepsInOrder) {
    static std::string order;
    order.clear();
    g_hooks.releaseScreenTexture = [] { order += "release,"; };
    g_hooks.purgeTextures = [] { order += "purge,"; };
    g_hooks.rebindNetwork = [] { order += "net,"; };
    g_hooks.createScreenTexture = [] { order += "create,"; };
    g_hooks.precacheLocationTextures = [] { order += "precache,"; };
    g_hooks.reuploadLightmaps = [] { order += "lightmaps"; };
    ExecuteCommand("VID_RESTART");
    g_hooks = EngineHooks();
    EXPECT_EQ(order, "release,purge,net,create,precache,lightmaps");
}

TEST_F(ConsoleCommands, OverlongLinesAreCutAt255Characters) {
    std::string line = "VID_FOV " + std::string(300, '7');
    ExecuteCommand(line.c_str());
    EXPECT_GT(g_window.fov, 1e30f);
    std::string unknown(400, 'Q');
    ExecuteCommand(unknown.c_str());
    // 255 characters plus the quotes and the text: cut into 83-character pieces by the log.
    std::string shown = Line(3) + Line(2) + Line(1) + Line(0);
    EXPECT_EQ(shown, "Unknown Command \"" + std::string(255, 'Q') + "\"");
}

}  // namespace
