// The whole start-up in this process on a real display, with autoexec.vbt saying QUIT:
// a pad plugged in before start is captured by the window and announced in the log
// between the GL strings and the first separator; without one the line is absent.
// Either way the run ends through the quit message and writes config.vbt.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/main_loop.h"
#include "platform/sys_joystick.h"
#include "test_support.h"

namespace {

const char kSeparator[] =
    "===================================================================================";

// The log line just above the first separator after "Initialising OpenGL:", or "" when the
// heading is missing.
std::string LineBeforeFirstSeparator() {
    int heading = -1;
    for (int i = 255; i >= 0; i--) {
        if (strcmp(g_console.lines[i], "Initialising OpenGL:") == 0) {
            heading = i;
            break;
        }
    }
    if (heading < 0) {
        return "";
    }
    for (int i = heading - 1; i >= 0; i--) {
        if (strcmp(g_console.lines[i], kSeparator) == 0) {
            return g_console.lines[i + 1];
        }
    }
    return "";
}

class StartupJoystick : public ::testing::Test {
protected:
    void SetUp() override {
        saved = std::filesystem::current_path();
        std::string dir = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::current_path(dir);
        ASSERT_TRUE(test::WriteText("autoexec.vbt", "QUIT\n"));
    }
    void TearDown() override {
        if (g_window.window) {
            g_window.Destroy();
        }
        Sys_JoystickDetachVirtual();
        std::filesystem::current_path(saved);
    }
    std::filesystem::path saved;
};

TEST_F(StartupJoystick, APadPluggedInBeforeStartIsAnnounced) {
    ASSERT_EQ(Sys_JoystickAttachVirtual(), 1);
    ASSERT_EQ(VantleMain(), 0);
    EXPECT_EQ(g_window.joystickFound, 1);
    EXPECT_EQ(LineBeforeFirstSeparator(), "Joysticks found.");
    EXPECT_FALSE(test::ReadFile("config.vbt").empty());
}

TEST_F(StartupJoystick, NoPadNoLine) {
    if (Sys_JoystickCapture()) {
        Sys_JoystickRelease();
        GTEST_SKIP() << "a real joystick is plugged into this machine";
    }
    ASSERT_EQ(VantleMain(), 0);
    EXPECT_EQ(g_window.joystickFound, 0);
    std::string line = LineBeforeFirstSeparator();
    EXPECT_FALSE(line.empty());
    EXPECT_NE(line, "Joysticks found.");
    EXPECT_FALSE(test::ReadFile("config.vbt").empty());
}

}  // namespace
