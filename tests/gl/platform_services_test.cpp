// Services that need a display, each with the engine's globals: the whole start-up in this
// process with autoexec.vbt saying QUIT, where a pad plugged in before start is captured by
// the window and announced by name in the log between the GL strings and the first separator (and
// without one the line is absent), the run ending through the quit message and writing
// config.vbt (a first one with VID_ASPECT 1); the clipboard round trip through the X server
// in Windows-1252 bytes; and "VID_RESTART" pointing the arrival notification of a notified endpoint at the new window
// while a polled endpoint stays polled and both sockets keep working on 127.0.0.1.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "app/main_loop.h"
#include "app/net_hooks.h"
#include "draw_test_util.h"
#include "net/net_endpoint.h"
#include "platform/sys_clipboard.h"
#include "platform/sys_joystick.h"
#include "platform/sys_window.h"

namespace {

// The log line just above the first separator after the oldest "Initialising OpenGL:".
std::string LineBeforeFirstSeparator() {
    int i = Console::kLineCount - 1;
    while (i > 0 && strcmp(g_console.lines[i], "Initialising OpenGL:") != 0) {
        i--;
    }
    while (--i >= 0 && strncmp(g_console.lines[i], "=====", 5) != 0) {
    }
    return i >= 0 ? g_console.lines[i + 1] : "";
}

// Runs in a scratch working directory from an empty log, and puts back what start-up changed.
class PlatformServices : public drawtest::GlTest {
protected:
    void TearDown() override {
        g_window.Destroy();
        Sys_JoystickDetachVirtual();
        Console_SetEcho(nullptr);
        g_quit = 0;
        std::filesystem::current_path(workingDirectory);
        GlTest::TearDown();
    }
    std::filesystem::path workingDirectory = std::filesystem::current_path();
};

TEST_F(PlatformServices, APadPluggedInBeforeStartIsAnnouncedAndNoPadNoLine) {
    if (Sys_JoystickCapture()) {
        Sys_JoystickRelease();
        GTEST_SKIP() << "a real joystick is plugged into this machine";
    }
    for (int pad = 1; pad >= 0; pad--) {
        SCOPED_TRACE(pad);
        std::filesystem::current_path(test::ScratchDir(pad ? "startup_pad" : "startup_no_pad"));
        ASSERT_TRUE(test::WriteText("autoexec.vbt", "QUIT\n"));
        g_console.Clear();
        if (pad) {
            ASSERT_EQ(Sys_JoystickAttachVirtual(1), 1);
        }
        ASSERT_EQ(VantleMain(), 0);
        Sys_JoystickDetachVirtual();
        EXPECT_EQ(g_window.joystickFound, pad);
        std::string line = LineBeforeFirstSeparator();
        EXPECT_EQ(line == "Joysticks found: Virtual Controller", pad == 1) << line;
        EXPECT_FALSE(line.empty());
        std::vector<unsigned char> config = test::ReadFile("config.vbt");
        // A first run's picture keeps its shape.
        EXPECT_NE(std::string(config.begin(), config.end()).find("\r\nVID_ASPECT 1\r\n"), std::string::npos);
        g_window.Destroy();
        g_window.joystickFound = 0;  // nothing in the engine clears it: a run finds a pad once
    }
}

TEST_F(PlatformServices, ClipboardTextRoundTripsAsWindows1252) {
    ASSERT_EQ(Sys_InitVideo(), 1);
    const char* text =
        "LOCATION_LOAD \xA3"
        "5 \x95 Vantle2\x99";
    ASSERT_EQ(Sys_SetClipboardText(text), 1);
    char out[64], small[6];
    ASSERT_EQ(Sys_GetClipboardText(out, sizeof(out)), 1);
    EXPECT_STREQ(out, text);
    ASSERT_EQ(Sys_GetClipboardText(small, sizeof(small)), 1);
    EXPECT_STREQ(small, "LOCAT");
    ASSERT_EQ(Sys_SetClipboardText("second"), 1);
    ASSERT_EQ(Sys_GetClipboardText(out, sizeof(out)), 1);
    EXPECT_STREQ(out, "second");
    Sys_ShutdownVideo();
}

TEST_F(PlatformServices, NotifiedEndpointsFollowTheNewWindowAndKeepTheirSockets) {
    InstallNetHooks();
    EXPECT_EQ(g_hooks.netStartup(), 1);
    ASSERT_EQ(g_window.Create("Restart test", 64, 64, 0), 1);
    int stale = 0;
    g_netHost.udp.notifyWindow = &stale;  // stands for a window that is gone
    ASSERT_EQ(g_netHost.Open(0), 1);
    NetEndpoint polled(NetEndpoint::kHost);
    ASSERT_EQ(polled.Open(0), 1);

    ExecuteCommand("VID_RESTART");
    ASSERT_NE(g_window.window, nullptr);
    EXPECT_EQ(g_netHost.udp.notifyWindow, g_window.window);
    EXPECT_EQ(polled.udp.notifyWindow, nullptr);

    NetPacket packet, got;
    packet.WriteUInt32(0xC0FFEE);
    packet.address = Sys_NetAddress(127, 0, 0, 1, g_netHost.udp.LocalPort());
    polled.Send(packet);
    ASSERT_EQ(g_netHost.udp.Pending(2000), 1);
    ASSERT_EQ(g_netHost.Receive(got), 1);
    uint32_t value = 0;
    EXPECT_EQ(got.ReadUInt32(&value), 1);
    EXPECT_EQ(value, 0xC0FFEEu);
    g_netHost.Close();
    g_netHost.udp.notifyWindow = nullptr;
}

}  // namespace
