// Key translation, the window procedure's input state, joystick-free hooks and the mouse camera.
#include "app/input.h"

#include <gtest/gtest.h>

#include <cstring>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "platform/sys_events.h"
#include "platform/sys_input.h"
#include "platform/sys_keys.h"

namespace {

// Physical keys by their USB usage numbers (the platform's scancodes).
enum {
    kA = 4,
    kZ = 29,
    k1 = 30,
    k0 = 39,
    kReturn = 40,
    kEscape = 41,
    kSpace = 44,
    kBackslash = 49,
    kApostrophe = 52,
    kGrave = 53,
    kF1 = 58,
    kF10 = 67,
    kRight = 79,
    kLeft = 80,
    kUp = 82,
    kKeypadEnter = 88,
    kLAlt = 226,
    kRCtrl = 228
};

TEST(KeyTranslation, ScancodesGiveTheGamesKeysAndTheConsoleKeyDependsOnTheLayout) {
    const struct {
        int scancode, uk, vk;
    } cases[] = {{kA, 0, 'A'},          {kZ, 0, 'Z'},         {k1, 0, '1'},          {k0, 0, '0'},
                 {kSpace, 0, VK_SPACE}, {kReturn, 0, VK_RETURN}, {kKeypadEnter, 0, VK_RETURN},
                 {kEscape, 0, VK_ESCAPE}, {kLeft, 0, VK_LEFT}, {kRight, 0, VK_RIGHT}, {kUp, 0, VK_UP},
                 {kF1, 0, VK_F1},       {kF10, 0, VK_F10},    {kLAlt, 0, VK_MENU},   {kRCtrl, 0, VK_CONTROL},
                 {0, 0, 0},             {kGrave, 0, VK_OEM_3}, {kGrave, 1, VK_OEM_8}, {kApostrophe, 0, VK_OEM_7},
                 {kApostrophe, 1, VK_OEM_3}, {kBackslash, 1, VK_OEM_7}};
    for (const auto& c : cases) {
        EXPECT_EQ(Sys_VirtualKeyFromScancode(c.scancode, c.uk), c.vk) << c.scancode << " uk " << c.uk;
    }
}

class WindowInput : public ::testing::Test {
protected:
    void SetUp() override {
        saved = g_activeWindow;
        g_activeWindow = &g_window;
        memset(g_window.keys, 0, sizeof(g_window.keys));
        g_window.width = 400;
        g_window.height = 300;
        g_window.fullScreen = 0;
        g_window.fov = 20.0f;
        g_window.mouseButtons = 0;
        g_window.sceneDraw = nullptr;
        Sys_FlushMessages();
    }
    void TearDown() override {
        g_activeWindow = saved;
        g_window.width = 640;
        g_window.height = 480;
        Sys_FlushMessages();
    }
    static void Send(unsigned int message, uintptr_t wParam, intptr_t lParam) {
        WindowProc(nullptr, message, wParam, lParam);
    }
    GlWindow* saved;
};

TEST_F(WindowInput, MouseIsScaledToTheVirtualScreen) {
    Send(WM_MOUSEMOVE, 0, Sys_MakeLParam(100, 150));
    EXPECT_FLOAT_EQ(g_window.mouse2D[0], 200.0f);
    EXPECT_FLOAT_EQ(g_window.mouse2D[1], 300.0f);
    const unsigned int downs[] = {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN};
    const unsigned int ups[] = {WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONUP};
    for (int i = 0; i < 3; i++) {
        Send(downs[i], 0, Sys_MakeLParam(400 - i, 0));
        EXPECT_EQ(g_window.mouseButtons, 1 << i);
        EXPECT_FLOAT_EQ(g_window.mouse2D[0], 800.0f - 2 * i);
        Send(ups[i], 0, Sys_MakeLParam(400, 0));
        EXPECT_EQ(g_window.mouseButtons, 0);
    }
}

TEST_F(WindowInput, MoveButtonCodeComparesTheWholeFlagWord) {
    const uintptr_t flags[] = {MK_LBUTTON, MK_MBUTTON, MK_RBUTTON, MK_LBUTTON | MK_SHIFT, MK_LBUTTON | MK_RBUTTON,
                               MK_RBUTTON | MK_CONTROL};
    const int buttons[] = {1, 4, 2, 0, 0, 0};
    for (int i = 0; i < 6; i++) {
        Send(WM_MOUSEMOVE, flags[i], 0);
        EXPECT_EQ(g_window.mouseButtons, buttons[i]) << flags[i];
    }
}

TEST_F(WindowInput, WheelChangesTheFieldOfView) {
    uintptr_t towardUser = static_cast<uint32_t>(-WHEEL_DELTA) << 16;
    uintptr_t away = static_cast<uint32_t>(WHEEL_DELTA) << 16;
    Send(WM_MOUSEWHEEL, towardUser, 0);
    EXPECT_FLOAT_EQ(g_window.fov, 25.0f);
    Send(WM_MOUSEWHEEL, away, 0);
    Send(WM_MOUSEWHEEL, away, 0);
    EXPECT_FLOAT_EQ(g_window.fov, 15.0f);
}

TEST_F(WindowInput, SizeResizesOnlyWindowed) {
    Send(WM_SIZE, SIZE_RESTORED, Sys_MakeLParam(1000, 700));
    EXPECT_EQ(g_window.width, 1000);
    EXPECT_EQ(g_window.height, 700);
    Send(WM_SIZE, SIZE_RESTORED, Sys_MakeLParam(640, 0));
    EXPECT_EQ(g_window.height, 1);
    g_window.fullScreen = 1;
    Send(WM_SIZE, SIZE_RESTORED, Sys_MakeLParam(320, 200));
    EXPECT_EQ(g_window.width, 640);
}

TEST_F(WindowInput, ActivateMessages) {
    Send(WM_ACTIVATE, WA_INACTIVE, 0);
    EXPECT_EQ(g_window.active, 0);
    Send(WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(g_window.active, 1);
}

class MouseDrag : public ::testing::Test {
protected:
    void SetUp() override {
        memset(&g_camera, 0, sizeof(g_camera));
        g_dragState = 0;
        g_dragMoved = 0;
        g_lastMouse[0] = 400.0f;
        g_lastMouse[1] = 300.0f;
        g_window.mouse2D[0] = 400.0f;
        g_window.mouse2D[1] = 300.0f;
        g_window.mouseButtons = 0;
    }
    void TearDown() override { g_window.mouseButtons = 0; }
};

TEST_F(MouseDrag, RightDragLooksAroundAndWrapsYaw) {
    g_window.mouseButtons = 2;
    g_camera.yaw = 350.0f;
    g_window.mouse2D[0] = 300.0f;  // 100 units to the left
    g_window.mouse2D[1] = 310.0f;
    MouseCamera();
    EXPECT_FLOAT_EQ(g_camera.yaw, 10.0f);  // 350 + 20, wrapped
    EXPECT_FLOAT_EQ(g_camera.pitch, 2.0f);
    MouseCamera();
    EXPECT_FLOAT_EQ(g_camera.yaw, 10.0f) << "the mouse has not moved since";
}

TEST_F(MouseDrag, HugeYawDoesNotStallTheTick) {
    g_window.mouseButtons = 2;
    g_camera.yaw = 3.0e38f;
    MouseCamera();
    EXPECT_GE(g_camera.yaw, 0.0f);
    EXPECT_LT(g_camera.yaw, 360.0f);
}

TEST_F(MouseDrag, LeftDragFliesAndMiddleDragRises) {
    g_window.mouseButtons = 1;
    g_window.mouse2D[1] = 280.0f;  // 20 up: forward by 10
    MouseCamera();
    EXPECT_NEAR(g_camera.position.z, 10.0f, 1e-4f);
    g_window.mouseButtons = 4;
    g_window.mouse2D[1] = 320.0f;  // 40 down: MoveUp(10) sinks toward -y
    MouseCamera();
    EXPECT_NEAR(g_camera.position.y, -10.0f, 1e-4f);
}

}  // namespace
