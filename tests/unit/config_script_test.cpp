// config.vbt byte for byte, its round trip through the script runner, and scripts
// with hostile contents.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "app/config_file.h"
#include "app/console.h"
#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "platform/sys_events.h"
#include "platform/sys_message_box.h"
#include "test_support.h"

namespace {

const char* kRule = "//***********************************************************\r\n";

class ConfigScript : public ::testing::Test {
protected:
    void SetUp() override {
        g_console.Clear();
        g_window.width = 640;
        g_window.height = 480;
        g_window.fullScreen = 0;
        g_window.vsync = 0;
        g_window.videoQuality = 0;
        g_window.fov = 20.0f;
        memset(&g_camera, 0, sizeof(g_camera));
        g_debug = 0;
        g_debugMode = 0;
        highScore = 0;
        Sys_SetMessageBoxHook([](const char*, const char*, unsigned int) {});
        // ctest runs each case in its own process, side by side: one directory per case.
        std::string name =
            std::string("config_script_") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
        dir = test::ScratchDir(name.c_str());
        ASSERT_EQ(getcwd(previous, sizeof(previous)), previous);
        ASSERT_EQ(chdir(dir.c_str()), 0);
    }
    void TearDown() override {
        EXPECT_EQ(chdir(previous), 0);
        Sys_SetMessageBoxHook(nullptr);
        Sys_FlushMessages();
    }
    static std::string Written() {
        std::vector<unsigned char> bytes = test::ReadFile("config.vbt");
        return std::string(bytes.begin(), bytes.end());
    }
    std::string dir;
    char previous[4096];
};

TEST_F(ConfigScript, DefaultsAreWrittenExactly) {
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    std::string expected = std::string(kRule) +
                           "//Created by Vantle2. Do not modify as any changes may be lost\r\n" + kRule +
                           "VID_FULL 0\r\n"
                           "VID_VSYNC 0\r\n"
                           "VID_SIZE 640,480\r\n"
                           "VID_QUALITY 0\r\n"
                           "CAMERA_POS 0.00,0.00,0.00\r\n"
                           "CAMERA_ROT 0.00,0.00,0.00\r\n";
    EXPECT_EQ(Written(), expected);
}

TEST_F(ConfigScript, DebugAndHighScoreLinesOnlyWhenSet) {
    g_debug = 1;
    g_debugMode = 3;
    highScore = 4250;
    g_window.fullScreen = 1;
    g_window.vsync = 1;
    g_window.width = 1024;
    g_window.height = 768;
    g_window.videoQuality = 2;
    g_camera.position = {1.234f, -5.0f, 1000.5f};
    g_camera.pitch = 12.5f;
    g_camera.yaw = 359.999f;
    g_camera.roll = -0.004f;
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    std::string text = Written();
    std::string tail = text.substr(text.find("VID_FULL"));
    EXPECT_EQ(tail,
              "VID_FULL 1\r\nVID_VSYNC 1\r\nVID_SIZE 1024,768\r\nVID_QUALITY 2\r\n"
              "CAMERA_POS 1.23,-5.00,1000.50\r\nCAMERA_ROT 12.50,360.00,-0.00\r\n"
              "DEBUG 1\r\nDEBUG_MODE 3\r\nHIGHSCORE 4250\r\n");
}

TEST_F(ConfigScript, WrittenConfigReadsBackToTheSameBytes) {
    g_debug = 2;
    g_debugMode = 4;
    highScore = 99999;
    g_window.fullScreen = 1;
    g_window.width = 1152;
    g_window.height = 864;
    g_window.videoQuality = 1;
    g_camera.position = {10.25f, 20.5f, -30.75f};
    g_camera.pitch = 5.0f;
    g_camera.yaw = 90.0f;
    g_camera.roll = 1.0f;
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    std::string first = Written();

    g_debug = 0;
    g_debugMode = 0;
    highScore = 0;
    g_window.fullScreen = 0;
    g_window.width = 640;
    g_window.height = 480;
    g_window.videoQuality = 0;
    memset(&g_camera, 0, sizeof(g_camera));
    RunScript("config.vbt", 0);
    EXPECT_EQ(std::string(g_console.lines[0]), "Script 'config.vbt' completed successfully");
    EXPECT_EQ(std::string(g_console.lines[1]), "");  // the comment lines print nothing
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    EXPECT_EQ(Written(), first);
}

TEST_F(ConfigScript, MissingScriptIsSilent) {
    RunScript("autoexec.vbt", 0);
    EXPECT_EQ(std::string(g_console.lines[0]), "");
}

TEST_F(ConfigScript, LongLinesRunAsSeveralCommands) {
    // 400 characters: reads of 198, 198 and 4, each executed on its own.
    std::string line = "VID_FOV 33" + std::string(188, ' ') + "HIGHSCORE 7" + std::string(187, ' ') + "FOO ";
    ASSERT_EQ(line.size(), 400u);
    ASSERT_TRUE(test::WriteText("long.vbt", line + "\r\n"));
    RunScript("long.vbt", 0);
    EXPECT_FLOAT_EQ(g_window.fov, 33.0f);
    EXPECT_EQ(highScore, 7u);
    EXPECT_EQ(std::string(g_console.lines[1]), "Unknown Command \"FOO\"");
}

TEST_F(ConfigScript, FirstLinesCanBeSkipped) {
    ASSERT_TRUE(test::WriteText("skip.vbt", "VID_FOV 10\nVID_FOV 11\nHIGHSCORE 5"));
    RunScript("skip.vbt", 2);
    EXPECT_FLOAT_EQ(g_window.fov, 20.0f);
    EXPECT_EQ(highScore, 5u);  // no final newline needed
}

TEST_F(ConfigScript, GarbageScriptsNeverCrash) {
    std::string garbage;
    uint32_t state = 12345;
    for (int i = 0; i < 20000; i++) {
        state = state * 1103515245u + 12345u;
        garbage.push_back(static_cast<char>(state >> 16));
    }
    garbage += std::string("\0\0VID_SIZE\0 1,2\r\r\n", 18);
    garbage += "CAMERA_POS ,,,,,\nCAMERA_ROT 1e39,-1e39,nan\nVID_SIZE x\nVID_SIZE 99999999999999 -5\n";
    garbage += "LMAP_QUALITY\nVID_QUALITY 2 3 4\n" + std::string(5000, ',') + "\n" + std::string(3000, 'x');
    ASSERT_TRUE(test::WriteFile("autoexec.vbt", garbage.data(), garbage.size()));
    RunScript("autoexec.vbt", 0);
    EXPECT_EQ(std::string(g_console.lines[0]), "Script 'autoexec.vbt' completed successfully");
    // Whatever the script did, the configuration still writes and reads back.
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    std::string first = Written();
    RunScript("config.vbt", 0);
    ASSERT_EQ(WriteConfig("config.vbt"), 1);
    EXPECT_EQ(Written(), first);
}

TEST_F(ConfigScript, AWriteThatCannotFinishKeepsThePreviousFile) {
    ASSERT_TRUE(test::WriteText("config.vbt", "VID_SIZE 800,600\r\n"));
    // The new text goes to a temporary file beside the old one first; a directory
    // squatting on that name makes the write fail before anything is renamed.
    std::string temporary = "config.vbt.tmp" + std::to_string(static_cast<long>(getpid()));
    ASSERT_TRUE(std::filesystem::create_directory(temporary));
    EXPECT_EQ(WriteConfig("config.vbt"), 0);
    EXPECT_EQ(Written(), "VID_SIZE 800,600\r\n");
    EXPECT_EQ(std::string(g_console.lines[0]), "");  // silently
    std::filesystem::remove(temporary);
}

TEST_F(ConfigScript, NoPlaceToWriteWritesNothingAndLeavesNoDebris) {
    EXPECT_EQ(WriteConfig("missing/config.vbt"), 0);
    // A directory where the file should go: the rename fails and the temporary goes.
    ASSERT_TRUE(std::filesystem::create_directory("config.vbt"));
    ASSERT_TRUE(test::WriteText("config.vbt/keep", "kept"));
    EXPECT_EQ(WriteConfig("config.vbt"), 0);
    std::vector<unsigned char> kept = test::ReadFile("config.vbt/keep");
    EXPECT_EQ(std::string(kept.begin(), kept.end()), "kept");
    int entries = 0;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        entries++;
        EXPECT_EQ(entry.path().filename().string(), "config.vbt");
    }
    EXPECT_EQ(entries, 1);
    EXPECT_EQ(std::string(g_console.lines[0]), "");
}

}  // namespace
