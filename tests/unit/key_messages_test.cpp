// Key events through the platform's translation into the window procedure's
// messages: key down and up with the virtual-key code, auto-repeat, and the
// system keys that the key table never sees.
#include <gtest/gtest.h>

#include <cstring>

#include "app/gl_window.h"
#include "app/input.h"
#include "platform/sys_events.h"
#include "platform/sys_keys.h"

namespace {

// Physical keys by their USB usage numbers (the platform's scancodes).
enum { kA = 4, kReturn = 40, kF10 = 67, kLAlt = 226 };

class KeyMessages : public ::testing::Test {
protected:
    void SetUp() override {
        Sys_FlushMessages();
        saved = g_activeWindow;
        g_activeWindow = &g_window;
        memset(g_window.keys, 0, sizeof(g_window.keys));
        Sys_SetWindowProc(WindowProc);
    }
    void TearDown() override {
        g_activeWindow = saved;
        memset(g_window.keys, 0, sizeof(g_window.keys));
        Sys_FlushMessages();
    }
    // Injects one key event and takes the one message it becomes, then dispatches it.
    static SysMessage Key(int scancode, int down, int repeat, int modifiers) {
        EXPECT_EQ(Sys_InjectKey(scancode, down, repeat, modifiers), 1);
        SysMessage message;
        memset(&message, 0, sizeof(message));
        EXPECT_EQ(Sys_PeekMessage(&message), 1);
        Sys_DispatchMessage(&message);
        SysMessage none;
        EXPECT_EQ(Sys_PeekMessage(&none), 0) << "one key event must make exactly one message";
        return message;
    }
    GlWindow* saved;
};

TEST_F(KeyMessages, PressRepeatAndReleaseSetAndClearTheKey) {
    EXPECT_EQ(Key(kA, 1, 0, 0).wParam, static_cast<uintptr_t>('A'));
    EXPECT_EQ(g_window.keys['A'], 1);
    // A consumer cleared the key; auto-repeat sets it again.
    g_window.keys['A'] = 0;
    Key(kA, 1, 1, 0);
    EXPECT_EQ(g_window.keys['A'], 1);
    Key(kA, 0, 0, 0);
    EXPECT_EQ(g_window.keys['A'], 0);
}

// System keys (F10, Alt alone or with a key) never reach the key table; AltGr arrives as
// Ctrl+Alt and types characters, so it and shifted keys are ordinary keys.
TEST_F(KeyMessages, SystemKeysNeverReachTheKeyTable) {
    struct Case {
        int scancode;
        int modifiers;
        int vk;
        unsigned down, up;
    } const kCases[] = {
        {kF10, 0, VK_F10, WM_SYSKEYDOWN, WM_SYSKEYUP},
        {kLAlt, SysModAlt, VK_MENU, WM_SYSKEYDOWN, WM_SYSKEYUP},
        {kA, SysModAlt, 'A', WM_SYSKEYDOWN, WM_SYSKEYUP},
        {kReturn, SysModAlt, VK_RETURN, WM_SYSKEYDOWN, WM_SYSKEYUP},
        {kA, SysModAlt | SysModShift, 'A', WM_SYSKEYDOWN, WM_SYSKEYUP},
        {kA, SysModAlt | SysModCtrl, 'A', WM_KEYDOWN, WM_KEYUP},
        {kA, SysModShift, 'A', WM_KEYDOWN, WM_KEYUP},
    };
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.vk);
        SCOPED_TRACE(c.modifiers);
        SysMessage down = Key(c.scancode, 1, 0, c.modifiers);
        EXPECT_EQ(down.message, c.down);
        EXPECT_EQ(down.wParam, static_cast<uintptr_t>(c.vk));
        EXPECT_EQ(g_window.keys[c.vk], c.down == WM_KEYDOWN);
        SysMessage up = Key(c.scancode, 0, 0, c.modifiers);
        EXPECT_EQ(up.message, c.up);
        EXPECT_EQ(g_window.keys[c.vk], 0);
    }
}

}  // namespace
