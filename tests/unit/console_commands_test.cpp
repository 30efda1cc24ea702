// The console's commands: parsing, effects and usage lines as a user sees them in the
// log; and the scripts written in them, config.vbt byte for byte and its round trip.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "app/config_file.h"
#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/input.h"
#include "app/key_bindings.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "platform/sys_events.h"
#include "platform/sys_keys.h"
#include "platform/sys_message_box.h"
#include "test_clock.h"
#include "test_support.h"

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
        ResetKeyBindings();
        Sys_SetMessageBoxHook(nullptr);
        Sys_FlushMessages();
    }
    static std::string Line(int i) { return g_console.lines[i]; }
};

TEST_F(ConsoleCommands, UsageLinesShowCurrentValues) {
    const float camera[6] = {1.5f, -2.0f, 3.25f, 10.0f, 180.0f, 0.5f};
    memcpy(g_window.renderCamera, camera, sizeof(camera));
    g_camera.position = {9.0f, 9.0f, 9.0f};  // the usage shows the render camera, not this
    const char* const cases[][2] = {
        {"VID_FOV", "VID_FOV <FOV> (20.00)"},
        {"VID_SIZE", "VID_SIZE <WIDTH>,<HEIGHT> (640, 480)"},
        {"VID_SIZE 1024", "VID_SIZE <WIDTH>,<HEIGHT> (640, 480)"},
        {"VID_QUALITY", "VID_QUALITY <1/0> (0)"},
        {"VID_FULL", "VID_FULL <2/1/0> (0)"},
        {"VID_VSYNC", "VID_VSYNC <1/0> (0)"},
        {"VID_NORMALS", "VID_NORMALS <1/0> (0)"},
        {"DEBUG_FRUSTUM", "DEBUG_FRUSTUM <1/0> (1)"},
        {"DEBUG", "DEBUG <1/0>"},
        {"DEBUG_MODE", "DEBUG_MODE <1/0> (0)"},
        {"HIGHSCORE", "HIGHSCORE <score> (0)"},
        {"LOCATION_FOG_END", "LOCATION_FOG_END <END> (100.00)"},
        {"LOCATION_FOG_START", "LOCATION_FOG_START <START> (1.00)"},
        {"LOCATION_LOAD", "LOCATION_LOAD <NAME>"},
        {"VID_SETTING", "VID_SETTING <1-6>"},
        {"VID_SETTING abc", "VID_SETTING <1-6>"},
        {"VID_SETTING 7", "VID_SETTING <1-6>"},
        {"LMAP_QUALITY", "LMAP_QUALITY <VALUE> (0.10)"},
        {"CAMERA_POS", "CAMERA_POS <X,Y,Z> (1.50,-2.00,3.25)"},
        {"CAMERA_ROT", "CAMERA_ROT <X,Y,Z> (10.00,180.00,0.50)"},
        {"FOO bar baz", "Unknown Command \"FOO\""},
        {"   ", "Unknown Command \"   \""},
        {"CLS ", "Unknown Command \"CLS\""},  // CLS and QUIT compare the whole line
    };
    for (const auto& c : cases) {
        ExecuteCommand(c[0]);
        EXPECT_EQ(Line(0), c[1]);
    }
}

TEST_F(ConsoleCommands, SettingsReadTheirWords) {
    ExecuteCommand("vid_fov 45");  // command words in any case
    EXPECT_FLOAT_EQ(g_window.fov, 45.0f);
    ExecuteCommand("  VID_FULL 7");  // flags store one for any non-zero
    EXPECT_EQ(g_window.fullScreen, 1);
    ExecuteCommand("// VID_FULL 0");  // a comment does nothing and prints nothing
    EXPECT_EQ(g_window.fullScreen, 1);
    EXPECT_EQ(Line(0), "");
    ExecuteCommand("VID_VSYNC -1");
    EXPECT_EQ(g_window.vsync, 1);
    ExecuteCommand("DEBUG_FRUSTUM 0");
    EXPECT_EQ(g_window.frustumFlag, 0);
    ExecuteCommand("VID_QUALITY 2");
    EXPECT_EQ(g_window.videoQuality, 2);
    EXPECT_FLOAT_EQ(g_window.lightFactor, 0.4f);
    ExecuteCommand("VID_QUALITY 0");
    EXPECT_FLOAT_EQ(g_window.lightFactor, 0.6f);
    ExecuteCommand("DEBUG_MODE 3");
    EXPECT_EQ(g_debugMode, 3);
    ExecuteCommand("DEBUG 257");  // the low byte is kept
    EXPECT_EQ(g_debug, 1);
    ExecuteCommand("VID_FOV abc");
    EXPECT_FLOAT_EQ(g_window.fov, 0.0f);
    // Camera coordinates are set as far as they are given.
    g_camera.position = {7.0f, 7.0f, 7.0f};
    ExecuteCommand("CAMERA_POS 1,2");
    EXPECT_FLOAT_EQ(g_camera.position.x, 1.0f);
    EXPECT_FLOAT_EQ(g_camera.position.y, 2.0f);
    EXPECT_FLOAT_EQ(g_camera.position.z, 7.0f);
    ExecuteCommand("CAMERA_ROT 10.5,-20,30");
    EXPECT_FLOAT_EQ(g_camera.pitch, 10.5f);
    EXPECT_FLOAT_EQ(g_camera.yaw, -20.0f);
    EXPECT_FLOAT_EQ(g_camera.roll, 30.0f);
    for (const char* form : {"VID_SIZE 800x600", "VID_SIZE 800,600", "VID_SIZE 800.600", "VID_SIZE 800 600"}) {
        g_window.width = g_window.height = 1;
        ExecuteCommand(form);
        EXPECT_EQ(g_window.width, 800) << form;
        EXPECT_EQ(g_window.height, 600) << form;
    }
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
}

TEST_F(ConsoleCommands, HighScoreIsAnnouncedAndLmapQualityIsATenthOfTheValue) {
    static int announced;
    static float quality;
    announced = 0;
    g_hooks.highScoreChanged = [] { announced++; };
    g_hooks.lightmapQuality = [] { return &quality; };
    ExecuteCommand("HIGHSCORE 1234");
    ExecuteCommand("LMAP_QUALITY 16");
    g_hooks = EngineHooks();
    EXPECT_EQ(highScore, 1234u);
    EXPECT_EQ(announced, 1);
    EXPECT_EQ(Line(0), "Lightmap quality set to 1.60");
    EXPECT_FLOAT_EQ(quality, 1.6f);
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
    ExecuteCommand("VID_SETTING 1");
    g_hooks.purgeTextures = nullptr;
    EXPECT_EQ(g_window.width, 640);
    EXPECT_EQ(g_window.height, 480);
    EXPECT_EQ(g_window.fullScreen, 1);
    EXPECT_EQ(purged, 1);
    // No display in unit tests: the restart's window creation fails with its message box.
    EXPECT_EQ(g_boxes, 1);
    EXPECT_EQ(g_lastBox, "halix_Renderer : Failed To Register The Window Class.");
    EXPECT_EQ(g_window.window, nullptr);
    ExecuteCommand("VID_SETTING 6");
    EXPECT_EQ(g_window.height, 1200);
}

TEST_F(ConsoleCommands, VidRestartRunsItsStepsInOrderAndDiscardsTheTimeTheyTook) {
    test::ManualClock clock;
    FrameTimer saved = g_timer;
    memset(&g_timer, 0, sizeof(g_timer));
    g_timer.Init(0);
    g_timer.SetPeriod(TimerUpdate, 20);
    clock.AdvanceMs(30);  // a tick and a half were due before the restart
    static std::string order;
    static test::ManualClock* slow;
    order.clear();
    slow = &clock;
    g_hooks.releaseScreenTexture = [] { order += "release,"; };
    g_hooks.purgeTextures = [] { order += "purge,"; };
    g_hooks.rebindNetwork = [] { order += "net,"; };
    g_hooks.createScreenTexture = [] { order += "create,"; };
    g_hooks.precacheLocationTextures = [] { order += "precache,"; };
    g_hooks.reuploadLightmaps = [] {
        order += "lightmaps";
        slow->AdvanceMs(2000);
    };
    ExecuteCommand("VID_RESTART");
    g_hooks = EngineHooks();
    EXPECT_EQ(order, "release,purge,net,create,precache,lightmaps");
    // The two seconds of the restart come back as no catch-up ticks: only the time after it counts.
    clock.AdvanceMs(10);
    EXPECT_EQ(g_timer.Elapsed(TimerUpdate), 0u);
    clock.AdvanceMs(10);
    EXPECT_EQ(g_timer.Elapsed(TimerUpdate), 1u);
    g_timer = saved;
}

const char* kRule = "//***********************************************************\r\n";

// The configuration file and scripts, written and run in a scratch directory of their own.
class ConfigScript : public ConsoleCommands {
protected:
    void SetUp() override {
        ConsoleCommands::SetUp();
        // ctest runs each case in its own process, side by side: one directory per case.
        std::string name =
            std::string("config_script_") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
        dir = test::ScratchDir(name.c_str());
        ASSERT_EQ(getcwd(previous, sizeof(previous)), previous);
        ASSERT_EQ(chdir(dir.c_str()), 0);
    }
    void TearDown() override {
        EXPECT_EQ(chdir(previous), 0);
        ConsoleCommands::TearDown();
    }
    static std::string Written() {
        std::vector<unsigned char> bytes = test::ReadFile("config.vbt");
        return std::string(bytes.begin(), bytes.end());
    }
    std::string dir;
    char previous[4096];
};

TEST_F(ConfigScript, WrittenExactlyAndReadBackToTheSameBytes) {
    const std::string header =
        std::string(kRule) + "//Created by Vantle2. Do not modify as any changes may be lost\r\n" + kRule;
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    EXPECT_EQ(Written(), header +
                             "VID_FULL 0\r\nVID_VSYNC 0\r\nVID_SIZE 640,480\r\nVID_QUALITY 0\r\n"
                             "CAMERA_POS 0.00,0.00,0.00\r\nCAMERA_ROT 0.00,0.00,0.00\r\n");
    // DEBUG, DEBUG_MODE and HIGHSCORE are written only when set.
    const std::string set = header +
                            "VID_FULL 1\r\nVID_VSYNC 1\r\nVID_SIZE 1024,768\r\nVID_QUALITY 2\r\n"
                            "CAMERA_POS 1.23,-5.00,1000.50\r\nCAMERA_ROT 12.50,360.00,-0.50\r\n"
                            "DEBUG 1\r\nDEBUG_MODE 3\r\nHIGHSCORE 4250\r\n";
    ASSERT_TRUE(test::WriteText("config.vbt", set));
    RunScript("config.vbt", 0);
    EXPECT_EQ(Line(0), "Script 'config.vbt' completed successfully");
    EXPECT_EQ(Line(1), "");  // the comment lines print nothing
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    EXPECT_EQ(Written(), set);
}

// A key message as the window procedure gets it; what the key table holds after it.
static void Press(int vk, int down) {
    GlWindow* saved = g_activeWindow;
    g_activeWindow = &g_window;
    WindowProc(nullptr, down ? WM_KEYDOWN : WM_KEYUP, static_cast<uintptr_t>(vk), 0);
    g_activeWindow = saved;
}

TEST_F(ConfigScript, BindingsComeBackFromConfigAndDriveTheKeyTable) {
    memset(g_window.keys, 0, sizeof(g_window.keys));
    ExecuteCommand("bind j space");
    ExecuteCommand("UNBIND UP");
    const char* refused[] = {"BIND J", "BIND NOPE SPACE", "BIND J SPACEBAR", "UNBIND", "BIND RETURN X"};
    for (const char* line : refused) {
        ExecuteCommand(line);
    }
    EXPECT_EQ(Line(4), "BIND <KEY> <GAME KEY>");
    EXPECT_EQ(Line(1), "UNBIND <KEY>");
    EXPECT_EQ(Line(0), "RETURN cannot be rebound");
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    EXPECT_NE(Written().find("\r\nUNBIND UP\r\nBIND J SPACE\r\n"), std::string::npos) << Written();
    ResetKeyBindings();
    RunScript("config.vbt", 0);
    g_console.Clear();
    ExecuteCommand("BINDLIST");
    EXPECT_EQ(Line(1), "UP -> (nothing)");
    EXPECT_EQ(Line(0), "J -> SPACE");
    Press('J', 1);
    Press(VK_UP, 1);
    Press(VK_SPACE, 1);
    EXPECT_EQ(g_window.keys[VK_SPACE], 1);
    EXPECT_EQ(g_window.keys['J'], 0);
    EXPECT_EQ(g_window.keys[VK_UP], 0) << "unbound";
    Press(VK_SPACE, 0);
    Press('J', 0);
    EXPECT_EQ(g_window.keys[VK_SPACE], 0);
}

TEST_F(ConfigScript, LongLinesRunAsSeveralCommands) {
    // 400 characters: reads of 198, 198 and 4, each executed on its own.
    std::string line = "VID_FOV 33" + std::string(188, ' ') + "HIGHSCORE 7" + std::string(187, ' ') + "FOO ";
    ASSERT_EQ(line.size(), 400u);
    ASSERT_TRUE(test::WriteText("long.vbt", line + "\r\n"));
    RunScript("long.vbt", 0);
    EXPECT_FLOAT_EQ(g_window.fov, 33.0f);
    EXPECT_EQ(highScore, 7u);
    EXPECT_EQ(Line(1), "Unknown Command \"FOO\"");
}

TEST_F(ConfigScript, FirstLinesCanBeSkippedAndAMissingScriptIsSilent) {
    ASSERT_TRUE(test::WriteText("skip.vbt", "VID_FOV 10\nVID_FOV 11\nHIGHSCORE 5"));
    RunScript("skip.vbt", 2);
    EXPECT_FLOAT_EQ(g_window.fov, 20.0f);
    EXPECT_EQ(highScore, 5u);  // no final newline needed
    g_console.Clear();
    RunScript("autoexec.vbt", 0);
    EXPECT_EQ(Line(0), "");
}

TEST_F(ConfigScript, AWriteThatCannotFinishKeepsThePreviousFileAndLeavesNoDebris) {
    ASSERT_TRUE(test::WriteText("config.vbt", "VID_SIZE 800,600\r\n"));
    // The new text goes to a temporary file beside the old one first; a directory
    // squatting on that name makes the write fail before anything is renamed.
    std::string temporary = "config.vbt.tmp" + std::to_string(static_cast<long>(getpid()));
    ASSERT_TRUE(std::filesystem::create_directory(temporary));
    EXPECT_EQ(WriteConfig("config.vbt"), 0);
    EXPECT_EQ(Written(), "VID_SIZE 800,600\r\n");
    std::filesystem::remove(temporary);
    // A directory where the file should go: the rename fails and the temporary goes.
    ASSERT_TRUE(std::filesystem::create_directory("dir.vbt"));
    EXPECT_EQ(WriteConfig("dir.vbt"), 0);
    EXPECT_EQ(WriteConfig("missing/config.vbt"), 0);
    auto entries = std::distance(std::filesystem::directory_iterator("."), std::filesystem::directory_iterator());
    EXPECT_EQ(entries, 2);  // config.vbt and dir.vbt, no temporary left
    EXPECT_EQ(Line(0), "");  // silently
}

}  // namespace
