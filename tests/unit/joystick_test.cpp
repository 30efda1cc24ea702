// The joystick, tick by tick, through a virtual pad that the platform plugs in:
// capture on window creation, held buttons mirrored into the key table, the pause
// button pressed once per press, and the axes rescaled to 0..65535.
#include <gtest/gtest.h>

#include <cstring>

#include "app/gl_window.h"
#include "app/input.h"
#include "platform/sys_events.h"
#include "platform/sys_joystick.h"
#include "platform/sys_keys.h"

namespace {

class Joystick : public ::testing::Test {
protected:
    void SetUp() override {
        saved = g_activeWindow;
        g_activeWindow = &g_window;
        memset(g_window.keys, 0, sizeof(g_window.keys));
        memset(g_window.joystickFlags, 0, sizeof(g_window.joystickFlags));
        g_window.joystickFound = 0;
        ASSERT_EQ(Sys_JoystickAttachVirtual(), 1);
        // Window creation is where the pad is captured.
        WindowProc(nullptr, WM_CREATE, 0, 0);
        ASSERT_EQ(g_window.joystickFound, 1);
    }
    void TearDown() override {
        Sys_JoystickDetachVirtual();
        g_activeWindow = saved;
        g_window.joystickFound = 0;
        memset(g_window.keys, 0, sizeof(g_window.keys));
        memset(g_window.joystickFlags, 0, sizeof(g_window.joystickFlags));
    }
    static void Button(int number, int down) { ASSERT_EQ(Sys_JoystickSetVirtualButton(number - 1, down), 1); }
    GlWindow* saved;
};

TEST_F(Joystick, HeldButtonsActAsHeldKeys) {
    const struct {
        int button;
        int vk;
    } mapped[] = {{1, VK_SPACE}, {7, 'Z'}, {8, 'X'}};
    for (const auto& m : mapped) {
        Button(m.button, 1);
        for (int tick = 0; tick < 5; tick++) {
            PollJoystick();
            EXPECT_EQ(g_window.keys[m.vk], 1) << "button " << m.button << " tick " << tick;
            // A consumer that clears the key sees it again on the next tick while held.
            g_window.keys[m.vk] = 0;
        }
        Button(m.button, 0);
        g_window.keys[m.vk] = 1;
        PollJoystick();
        EXPECT_EQ(g_window.keys[m.vk], 0) << "button " << m.button << " released";
        // Once released the pad leaves the key alone: the keyboard may hold it.
        g_window.keys[m.vk] = 1;
        PollJoystick();
        EXPECT_EQ(g_window.keys[m.vk], 1) << "button " << m.button;
        g_window.keys[m.vk] = 0;
    }
}

TEST_F(Joystick, PauseButtonPressesItsKeyOncePerPress) {
    Button(12, 1);
    PollJoystick();
    EXPECT_EQ(g_window.keys['P'], 1);
    g_window.keys['P'] = 0;  // the game consumes the press
    for (int tick = 0; tick < 20; tick++) {
        PollJoystick();
        EXPECT_EQ(g_window.keys['P'], 0) << "held, tick " << tick;
    }
    Button(12, 0);
    PollJoystick();
    EXPECT_EQ(g_window.keys['P'], 0);
    Button(12, 1);
    PollJoystick();
    EXPECT_EQ(g_window.keys['P'], 1) << "a second press";
}

TEST_F(Joystick, AxesAndButtonMaskReadAsWinMMDoes) {
    ASSERT_EQ(Sys_JoystickSetVirtualAxis(0, -32768), 1);
    ASSERT_EQ(Sys_JoystickSetVirtualAxis(1, 32767), 1);
    ASSERT_EQ(Sys_JoystickSetVirtualAxis(2, 0), 1);
    EXPECT_EQ(Sys_JoystickSetVirtualAxis(0, 40000), 0);
    Button(1, 1);
    Button(32, 1);
    SysJoystickState state;
    ASSERT_EQ(Sys_JoystickGetPos(&state), 1);
    EXPECT_EQ(state.x, 0u);
    EXPECT_EQ(state.y, 65535u);
    EXPECT_EQ(state.z, 32768u);
    EXPECT_EQ(state.buttons, 0x80000001u);
}

}  // namespace
