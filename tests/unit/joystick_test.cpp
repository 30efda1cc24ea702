// The joystick, tick by tick, through virtual pads that the platform plugs in.
// A device without a mapping: captured on window creation, held buttons mirrored
// into the key table, the pause button pressed once per press, the axes rescaled
// to 0..65535. A game controller plugged in mid-level: picked up, its buttons in
// the engine's numbering, jumping; pulled out mid-jump, nothing stays held;
// plugged in again, it plays again.
#include <gtest/gtest.h>

#include <cstring>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/input.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/player.h"
#include "game_fixture.h"
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
        ASSERT_EQ(Sys_JoystickAttachVirtual(0), 1);
        // Window creation is where the pad is captured.
        WindowProc(nullptr, WM_CREATE, 0, 0);
        ASSERT_EQ(g_window.joystickFound, 1);
        ASSERT_EQ(Sys_JoystickIsMapped(), 0);
    }
    void TearDown() override {
        Sys_JoystickDetachVirtual();
        Sys_JoystickRelease();
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

TEST(PadMappings, GoodLinesCountBrokenOnesAreCountedAndOtherPlatformsSkipped) {
    const char text[] =
        "# comment\r\n\n"
        "0300000001f00000aaaa000001000000,Test Pad,a:b1,b:b2,leftx:a0,lefty:a1,start:b9,platform:Linux,\n"
        "0300000001f00000bbbb000001000000,Other Pad,a:b1,platform:Windows,\n"
        "not a mapping\n"
        "0300000001f00000cccc000001000000,Unfinished Pad";
    int rejected = -1;
    EXPECT_EQ(Sys_JoystickAddMappings(text, static_cast<int>(sizeof(text) - 1), &rejected), 1);
    EXPECT_EQ(rejected, 2);
}

// SDL's layout of a virtual game controller: buttons south, east, west, north, Back, Guide,
// Start, ..., then D-pad up, down, left, right at 11 to 14; axes left x, left y, right x.
enum { PadSouth = 0, PadNorth = 3, PadBack = 4, PadStart = 6, PadDpadRight = 14 };

class HotPlug : public test::GameFixture {
protected:
    void SetUp() override {
        GameFixture::SetUp();
        if (Sys_JoystickCapture()) {
            Sys_JoystickRelease();
            GTEST_SKIP() << "a real joystick is plugged into this machine";
        }
        g_readJoystick = Sys_JoystickGetPos;
        g_window.joystickFound = 0;
    }
    void TearDown() override {
        Sys_JoystickDetachVirtual();
        Sys_JoystickRelease();
        g_window.joystickFound = 0;
        GameFixture::TearDown();
    }
    // One tick as the main loop runs it: the pad poll, then the game.
    void Play(int ticks = 1) {
        for (int i = 0; i < ticks; i++) {
            PollJoystick();
            Tick();
        }
    }
    static void Press(int index, int down) { ASSERT_EQ(Sys_JoystickSetVirtualButton(index, down), 1); }
};

TEST_F(HotPlug, APadPluggedInMidLevelJumpsAndPulledOutMidJumpLeavesNothingHeld) {
    Floor();
    AddEntity("player", 0, 0, 0, 0);
    StartLevel();
    ASSERT_NE(player, nullptr);
    Play(3);
    ASSERT_EQ(Sys_JoystickAttachVirtual(1), 1);
    Play();
    EXPECT_STREQ(g_console.lines[0], "Joystick connected: Virtual Controller");
    EXPECT_EQ(g_window.joystickFound, 1);
    EXPECT_EQ(Sys_JoystickIsMapped(), 1);

    // Back, north and Start reach the keys of buttons 7, 8 and 12.
    const int keys[][2] = {{PadBack, 'Z'}, {PadNorth, 'X'}, {PadStart, 'P'}};
    for (const auto& k : keys) {
        Press(k[0], 1);
        PollJoystick();
        EXPECT_EQ(g_window.keys[k[1]], 1) << k[1];
        Press(k[0], 0);
        PollJoystick();
        g_window.keys[k[1]] = 0;
    }

    // Walking right on the D-pad, jump with the south button.
    Press(PadDpadRight, 1);
    Press(PadSouth, 1);
    Play();
    EXPECT_EQ(player->state, 2) << "the south button jumps";
    Play(5);
    ASSERT_EQ(onGround, 0);
    Sys_JoystickDetachVirtual();
    Play();
    EXPECT_STREQ(g_console.lines[0], "Joystick removed: Virtual Controller");
    EXPECT_EQ(g_window.keys[VK_SPACE], 0);
    EXPECT_EQ(g_window.keys[VK_UP], 0) << "the stick is centred";
    Play(80);
    ASSERT_EQ(onGround, 1) << "the jump carries on and lands";
    float x = player->position[0], z = player->position[2];
    Play(10);
    EXPECT_EQ(player->position[0], x) << "nothing walks the player any more";
    EXPECT_EQ(player->position[2], z);

    ASSERT_EQ(Sys_JoystickAttachVirtual(1), 1);
    Play();
    Press(PadSouth, 1);
    Play();
    EXPECT_EQ(player->state, 2) << "plugged in again, it jumps again";
}

}  // namespace
