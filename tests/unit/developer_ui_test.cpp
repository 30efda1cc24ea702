// The developer menu and the dialog window driven through the input state, tick by
// tick in the main loop's order (click bookkeeping, menu, dialog, mouse camera): where
// the menu opens, what it offers, hover bands, what its items run; the dialog's focus,
// text fields typed through the console's key tables, check boxes, the callback's
// vetoes and reports; and drags that move the dialog or turn the camera instead.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "platform/sys_clipboard.h"
#include "platform/sys_events.h"
#include "platform/sys_keys.h"
#include "text_shown.h"
#include "ui/console_keys.h"
#include "ui/debug_menu.h"
#include "ui/gui_window.h"

namespace {

using test::Shown;

// What the lightmap hooks saw: the quality in force at each bake.
float g_quality;
std::vector<float> g_bakes;

struct Report {
    uint32_t item, event, value;
    bool operator==(const Report& o) const { return item == o.item && event == o.event && value == o.value; }
};

std::vector<Report> g_reports;
// The callback refuses exactly this (item, event, value); value ~0 matches any value.
Report g_refuse = {~0u, ~0u, ~0u};

int Callback(uint32_t item, uint32_t event, uint32_t value) {
    g_reports.push_back({item, event, value});
    bool refused = item == g_refuse.item && event == g_refuse.event &&
                   (g_refuse.value == ~0u || value == g_refuse.value);
    return refused ? 0 : 1;
}

std::string g_clipboard;

class DebugMenuTest : public ::testing::Test {
protected:
    void SetUp() override {
        saved = g_hooks;
        g_hooks = EngineHooks();
        g_hooks.lightmapQuality = [] { return &g_quality; };
        g_hooks.lightmapBuild = [] { g_bakes.push_back(g_quality); };
        g_quality = -1;
        g_bakes.clear();
        g_reports.clear();
        g_readClipboard = [](char* out, int outSize) {
            snprintf(out, static_cast<size_t>(outSize), "%s", g_clipboard.c_str());
            return g_clipboard.empty() ? 0 : 1;
        };
        g_clipboard.clear();
        Clean();
        Sys_FlushMessages();
        Move(400, 300);
    }
    void TearDown() override {
        g_hooks = saved;
        g_readClipboard = Sys_GetClipboardText;
        Clean();
        Sys_FlushMessages();
    }
    static void Clean() {
        g_debugMenu.Reset();
        g_gui.Clear();
        g_debug = 0;
        g_debugMode = 0;
        g_dragState = 0;
        g_dragMoved = 0;
        g_window.mouseButtons = 0;
        g_window.active = 1;
        memset(g_window.keys, 0, sizeof(g_window.keys));
        memset(&g_camera, 0, sizeof(g_camera));
    }

    // One tick of the loop's input steps.
    static void Tick() {
        EndClick();
        UpdateDebugMenu();
        UpdateGuiWindow();
        MouseCamera();
    }
    static void Move(float x, float y) {
        g_window.mouse2D[0] = x;
        g_window.mouse2D[1] = y;
        Tick();
    }
    static void Press(int buttons) {
        g_window.mouseButtons = static_cast<uint8_t>(buttons);
        Tick();
    }
    static void Release() { Press(0); }
    static void RightClickAt(float x, float y) {
        Move(x, y);
        Press(2);
        Release();
    }
    static void LeftClickAt(float x, float y) {
        Move(x, y);
        Press(1);
        Release();
    }

    EngineHooks saved;
};

// The dialog shown in the middle of the screen, with nothing in it yet.
class GuiWindowTest : public DebugMenuTest {
protected:
    void SetUp() override {
        DebugMenuTest::SetUp();
        gui.Centre();
        gui.visible = 1;
        g_refuse = {~0u, ~0u, ~0u};
    }
    // A left click at body coordinates (relative to the window's corner).
    void ClickAt(float bx, float by) { LeftClickAt(gui.x + bx, gui.y + by); }
    static void Key(int vk) {
        g_window.keys[vk] = 1;
        Tick();
    }

    GuiWindow& gui = g_gui;
};

TEST_F(DebugMenuTest, ARightClickOpensTheEngineMenuTenUnitsBelowThePointer) {
    RightClickAt(300, 200);
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_EQ(g_menuKind, MenuKindEngine);
    EXPECT_FLOAT_EQ(g_debugMenu.x, 300);
    EXPECT_FLOAT_EQ(g_debugMenu.y, 210);
    EXPECT_EQ(Shown(g_debugMenu.text, 0), "Vantle 2");
    const char* items[] = {"Preview   lightmaps", "Build  1x lightmaps", "Build  4x lightmaps",
                           "Build  8x lightmaps", "Build 16x lightmaps", "Quit to desktop"};
    ASSERT_EQ(g_debugMenu.itemCount, 6u);
    for (int k = 0; k < 6; k++) {
        EXPECT_EQ(Shown(g_debugMenu.text, k + 1), items[k]);
    }
    // A right click elsewhere: the press closes it, the release opens it there.
    Move(500, 300);
    Press(2);
    EXPECT_EQ(g_debugMenu.open, 0);
    Release();
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_FLOAT_EQ(g_debugMenu.x, 500);
    EXPECT_FLOAT_EQ(g_debugMenu.y, 310);
}

TEST_F(DebugMenuTest, TheMenuStaysOnScreenAtTheEdges) {
    RightClickAt(799, 599);
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_FLOAT_EQ(g_debugMenu.y + g_debugMenu.height, 590);
    EXPECT_FLOAT_EQ(g_debugMenu.x + g_debugMenu.width, 790);
    // Just clear of both edges it opens where asked.
    RightClickAt(629, 489);
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_FLOAT_EQ(g_debugMenu.x, 629);
    EXPECT_FLOAT_EQ(g_debugMenu.y, 499);
}

TEST_F(DebugMenuTest, HoverBandsAreFifteenUnitsTall) {
    RightClickAt(100, 90);  // box from (100, 100), 160 x 90
    struct {
        float x, y;
        uint32_t hover;
    } cases[] = {{100, 100, 1},    {259.9f, 114.9f, 1}, {150, 115, 2}, {150, 144.9f, 3}, {150, 145, 4},
                 {150, 189.9f, 6}, {150, 190, 0},       {260, 120, 0}, {99.9f, 120, 0},  {150, 99.9f, 0}};
    for (const auto& c : cases) {
        Move(c.x, c.y);
        EXPECT_EQ(g_debugMenu.hover, c.hover) << c.x << ", " << c.y;
        EXPECT_EQ(g_debugMenu.open, 1);
    }
}

TEST_F(DebugMenuTest, ItemsRunTheirCommandsAndCloseTheMenu) {
    const float qualities[] = {0.0f, 0.1f, 0.4f, 0.8f, 1.6f};
    for (int item = 0; item < 5; item++) {
        RightClickAt(100, 90);
        Move(150, 100 + 15.0f * item + 7);
        Press(1);
        EXPECT_EQ(g_debugMenu.open, 0);
        EXPECT_EQ(g_window.mouseButtons, 0);  // the click is used up
        Release();
        ASSERT_EQ(g_bakes.size(), static_cast<size_t>(item + 1));
        EXPECT_FLOAT_EQ(g_bakes.back(), qualities[item]) << item;
    }
    SysMessage message;
    RightClickAt(100, 90);
    LeftClickAt(150, 100 + 15 * 5 + 1);
    ASSERT_EQ(Sys_PeekMessage(&message), 1);
    EXPECT_EQ(message.message, static_cast<unsigned int>(WM_QUIT));
}

TEST_F(DebugMenuTest, DragsAndPressesOutsideTheBoxRunNothing) {
    // A right drag turns the camera and opens nothing; neither does a left click.
    Move(200, 200);
    Press(2);
    g_window.mouse2D[0] = 250;
    Tick();
    Release();
    EXPECT_EQ(g_debugMenu.open, 0);
    EXPECT_FLOAT_EQ(g_camera.yaw, 350);  // 50 units left turn 10 degrees
    LeftClickAt(300, 300);
    EXPECT_EQ(g_debugMenu.open, 0);
    // With the menu open, a press outside the box or of the middle button only closes it.
    RightClickAt(100, 90);
    LeftClickAt(400, 400);
    EXPECT_EQ(g_debugMenu.open, 0);
    RightClickAt(100, 90);
    Move(150, 120);
    Press(4);
    EXPECT_EQ(g_debugMenu.open, 0);
    Release();
    EXPECT_TRUE(g_bakes.empty());
    EXPECT_EQ(g_quality, -1);
}

TEST_F(DebugMenuTest, ThePanelCornerOffersTheDebugStatsWhileDebugging) {
    RightClickAt(50, 20);
    EXPECT_EQ(g_menuKind, MenuKindEngine);  // not debugging: the engine menu
    Press(2);
    Release();
    Press(2);  // closed again
    g_debug = 1;
    Release();
    ASSERT_EQ(g_debugMenu.open, 1);
    EXPECT_EQ(g_menuKind, MenuKindDebugStats);
    EXPECT_EQ(Shown(g_debugMenu.text, 0), "Debug stats");
    EXPECT_EQ(g_debugMenu.itemCount, 5u);
    EXPECT_EQ(Shown(g_debugMenu.text, 5), "Lighting");
    LeftClickAt(60, 30 + 15 * 4 + 3);
    EXPECT_EQ(g_debugMode, 4);
    EXPECT_EQ(g_debugMenu.open, 0);
    EXPECT_TRUE(g_bakes.empty());
    // Outside the corner it is the engine menu again.
    RightClickAt(140, 20);
    EXPECT_EQ(g_menuKind, MenuKindEngine);
}

TEST_F(GuiWindowTest, AClickFocusesAFieldThatThenTakesTypingAndPaste) {
    uint32_t field = gui.AddTextItem(GuiTextField, "ab", 10, 10, 120, 18);
    ClickAt(20, 20);
    EXPECT_EQ(gui.focus, field + 1);
    EXPECT_EQ(g_window.mouseButtons, 0);
    // The cursor shows in the built text, not in the caption.
    EXPECT_EQ(gui.items[field]->text.entries[0].glyphs[2], TextBatch::GlyphIndex(0x95));
    g_window.keys[VK_SHIFT] = 1;
    Key('3');
    g_window.keys[VK_SHIFT] = 0;
    Key('C');
    g_clipboard = "12\n34";
    g_window.keys[VK_CONTROL] = 1;
    Key('V');
    Key(VK_BACK);
    EXPECT_STREQ(gui.items[field]->caption, "ab\xA3" "c1");
    // Enter ends the editing and stays set for others.
    Key(VK_RETURN);
    EXPECT_EQ(gui.focus, 0u);
    EXPECT_EQ(g_window.keys[VK_RETURN], 1);
    EXPECT_EQ(gui.items[field]->text.triangleCount, 2u * 5);
}

TEST_F(GuiWindowTest, TheCallbackCanRefuseClicksKeysAndPastes) {
    uint32_t field = gui.AddTextItem(GuiTextField, "", 10, 10, 120, 18);
    uint32_t button = gui.AddTextItem(GuiButton, "OK", 10, 40, 60, 18);
    gui.callback = Callback;
    g_refuse = {button, GuiEventActivate, ~0u};
    ClickAt(20, 50);
    EXPECT_EQ(gui.focus, 0u);  // a button whose activation is refused does not act
    g_refuse = {field, GuiEventClick, ~0u};
    Move(gui.x + 20, gui.y + 20);
    Press(1);
    EXPECT_EQ(g_window.mouseButtons, 0);  // a refused click is used up all the same
    EXPECT_EQ(gui.focus, 0u);
    Press(0);
    g_refuse = {field, GuiEventType, 'B'};
    ClickAt(20, 20);
    ASSERT_EQ(gui.focus, field + 1);
    g_window.keys['A'] = 1;
    g_window.keys['B'] = 1;
    Tick();
    EXPECT_STREQ(gui.items[field]->caption, "a");
    EXPECT_EQ(g_window.keys['B'], 1);  // refused keys stay pending
    EXPECT_EQ(g_reports.back(), (Report{field, GuiEventType, 'B'}));
    g_window.keys['B'] = 0;
    g_refuse = {field, GuiEventType, 0};
    g_clipboard = "pasted";
    g_window.keys[VK_SHIFT] = 1;
    Key(VK_INSERT);
    EXPECT_STREQ(gui.items[field]->caption, "a");
    EXPECT_EQ(g_window.keys[VK_INSERT], 0);
}

TEST_F(GuiWindowTest, CheckBoxesToggleAndKeepTheFocus) {
    uint32_t field = gui.AddTextItem(GuiTextField, "", 10, 10, 120, 18);
    uint32_t box = gui.AddIntItem(GuiCheckBox, 0, 10, 40, 120, 18);
    gui.callback = Callback;
    ClickAt(20, 20);
    g_reports.clear();
    ClickAt(15, 50);
    EXPECT_EQ(gui.items[box]->intValue, 1);
    EXPECT_EQ(gui.focus, field + 1);
    std::vector<Report> expected = {{box, GuiEventClick, 0}, {box, GuiEventActivate, 0}, {box, GuiEventToggled, 0}};
    EXPECT_EQ(g_reports, expected);
    ClickAt(15, 50);
    EXPECT_EQ(gui.items[box]->intValue, 0);
    // Refusing the activation leaves it alone.
    g_refuse = {box, GuiEventActivate, ~0u};
    ClickAt(15, 50);
    EXPECT_EQ(gui.items[box]->intValue, 0);
    // The item's edges: left and top excluded, right and bottom included.
    g_refuse = {~0u, ~0u, ~0u};
    ClickAt(10, 50);
    EXPECT_EQ(gui.items[box]->intValue, 0);
    ClickAt(130, 58);
    EXPECT_EQ(gui.items[box]->intValue, 1);
}

TEST_F(GuiWindowTest, AClickOutsideDropsTheFocusAndEnterWithoutFocusIsReported) {
    gui.AddTextItem(GuiTextField, "", 10, 10, 120, 18);
    gui.callback = Callback;
    ClickAt(20, 20);
    ASSERT_EQ(gui.focus, 1u);
    // The title bar is inside the window.
    ClickAt(150, -30);
    EXPECT_EQ(gui.focus, 0u);
    ClickAt(20, 20);
    ClickAt(150, -10);
    EXPECT_EQ(gui.focus, 1u);
    ClickAt(150, 101);
    EXPECT_EQ(gui.focus, 0u);
    g_reports.clear();
    Key(VK_RETURN);
    EXPECT_EQ(g_window.keys[VK_RETURN], 0);
    ASSERT_EQ(g_reports.size(), 1u);
    EXPECT_EQ(g_reports[0], (Report{kGuiNoItem, GuiEventType, 13}));
    // Without focus nothing is typed.
    Key('A');
    EXPECT_EQ(g_window.keys['A'], 1);
}

TEST_F(GuiWindowTest, DraggingTheTitleBarMovesTheWindowNotTheCamera) {
    float x0 = gui.x, y0 = gui.y;
    Move(x0 + 100, y0 - 9);
    Press(1);
    g_window.mouse2D[0] += 40;
    g_window.mouse2D[1] += 25;
    Tick();
    g_window.mouse2D[0] += 10;
    Tick();
    EXPECT_FLOAT_EQ(gui.x, x0 + 50);
    EXPECT_FLOAT_EQ(gui.y, y0 + 25);
    EXPECT_FLOAT_EQ(g_camera.position.z, 0);
    Press(0);
    // Released: the pointer moves on alone, and a drag outside the window flies the camera.
    Move(100, 560);
    Press(1);
    g_window.mouse2D[1] += 20;
    Tick();
    Press(0);
    EXPECT_FLOAT_EQ(gui.y, y0 + 25);
    EXPECT_NE(g_camera.position.z, 0);
}

}  // namespace
