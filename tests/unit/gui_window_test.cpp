// The dialog window operated through the input state as the ticks see it:
// placement, slots, focus, text fields typed through the console's key
// tables, check boxes, the callback's vetoes and reports, title-bar dragging,
// and the widget geometry cut from the controls image.
#include "ui/gui_window.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_camera.h"
#include "platform/sys_keys.h"
#include "ui/console_keys.h"

namespace {

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

int FakeClipboard(char* out, int outSize) {
    snprintf(out, static_cast<size_t>(outSize), "%s", g_clipboard.c_str());
    return !g_clipboard.empty();
}

class GuiWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        memset(g_window.keys, 0, sizeof(g_window.keys));
        g_window.mouseButtons = 0;
        g_window.active = 1;
        g_dragState = 0;
        g_dragMoved = 0;
        memset(&g_camera, 0, sizeof(g_camera));
        g_reports.clear();
        g_refuse = {~0u, ~0u, ~0u};
        g_readClipboard = FakeClipboard;
        g_clipboard.clear();
        gui.Centre();
        gui.visible = 1;
        Move(0, 0);
    }
    void TearDown() override {
        memset(g_window.keys, 0, sizeof(g_window.keys));
        g_window.mouseButtons = 0;
        g_dragState = 0;
    }

    // One tick's input steps around the dialog, as the main loop orders them.
    void Tick() {
        EndClick();
        gui.Update();
        MouseCamera();
    }
    void Move(float x, float y) {
        g_window.mouse2D[0] = x;
        g_window.mouse2D[1] = y;
        Tick();
    }
    void Press(int buttons) {
        g_window.mouseButtons = static_cast<uint8_t>(buttons);
        Tick();
    }
    // A left click at body coordinates (relative to the window's corner).
    void ClickAt(float bx, float by) {
        Move(gui.x + bx, gui.y + by);
        Press(1);
        Press(0);
    }
    void Key(int vk) {
        g_window.keys[vk] = 1;
        Tick();
    }

    GuiWindow gui;
};

TEST(GuiWindowPlacement, ConstructedHiddenAtFourHundredTwoEightyTwoThenCentred) {
    GuiWindow gui;
    EXPECT_EQ(gui.visible, 0);
    EXPECT_FLOAT_EQ(gui.width, 300);
    EXPECT_FLOAT_EQ(gui.height, 100);
    EXPECT_FLOAT_EQ(gui.x, 400);
    EXPECT_FLOAT_EQ(gui.y, 282);
    gui.Centre();
    EXPECT_FLOAT_EQ(gui.x, 250);
    EXPECT_FLOAT_EQ(gui.y, 232);
    gui.x = 10;
    gui.width = 50;
    gui.visible = 1;
    gui.AddTextItem(GuiLabel, "x", 0, 0, 10, 10);
    gui.Clear();  // sizes, not place
    EXPECT_FLOAT_EQ(gui.x, 10);
    EXPECT_FLOAT_EQ(gui.width, 300);
    EXPECT_EQ(gui.visible, 0);
    EXPECT_EQ(gui.items[0], nullptr);
    // Hidden, it ignores the mouse.
    g_window.mouse2D[0] = 20;
    g_window.mouse2D[1] = 290;
    g_window.mouseButtons = 1;
    gui.Update();
    EXPECT_EQ(g_window.mouseButtons, 1);
    g_window.mouseButtons = 0;
}

TEST(GuiWindowItems, SlotsSizesCaptionsAndTitles) {
    GuiWindow gui;
    EXPECT_EQ(gui.AddIntItem(GuiTextField, -42, 10, 10, 100, 50), 0u);
    EXPECT_EQ(gui.AddFloatItem(GuiLabel, 2.5f, 10, 30, 4, 50), 1u);
    EXPECT_EQ(gui.AddTextItem(GuiColourSwatch, "swatch.tga", 10, 50, 40, 30), 2u);
    EXPECT_STREQ(gui.items[0]->caption, "-42");
    EXPECT_EQ(gui.items[0]->intValue, -42);
    EXPECT_FLOAT_EQ(gui.items[0]->height, 18);  // forced for all but the swatch
    EXPECT_STREQ(gui.items[1]->caption, "2.50");
    EXPECT_FLOAT_EQ(gui.items[1]->width, 8);  // at least 8
    EXPECT_FLOAT_EQ(gui.items[2]->height, 30);
    EXPECT_FLOAT_EQ(gui.items[2]->colour[1], 1.0f);
    for (int i = 3; i < 32; i++) {
        EXPECT_EQ(gui.AddTextItem(GuiButton, "b", 0, 0, 20, 18), static_cast<uint32_t>(i));
    }
    EXPECT_EQ(gui.AddTextItem(GuiButton, "full", 0, 0, 20, 18), 32u);
    delete gui.items[5];
    gui.items[5] = nullptr;
    EXPECT_EQ(gui.AddTextItem(GuiButton, "again", 0, 0, 20, 18), 5u);  // the first free slot

    gui.SetCaption(0, std::string(255, 'c').c_str());
    EXPECT_EQ(strlen(gui.items[0]->caption), 255u);
    gui.SetCaption(0, std::string(256, 'd').c_str());
    EXPECT_EQ(gui.items[0]->caption[0], 'c');
    gui.SetTitle("Tool");
    gui.SetTitle(std::string(49, 't').c_str());
    EXPECT_STREQ(gui.title, "Tool");
}

TEST_F(GuiWindowTest, AClickFocusesAFieldThatThenTakesTypingAndPaste) {
    uint32_t field = gui.AddTextItem(GuiTextField, "ab", 10, 10, 120, 18);
    gui.Build();
    unsigned int plain = gui.items[field]->text.triangleCount;
    ClickAt(20, 20);
    EXPECT_EQ(gui.focus, field + 1);
    EXPECT_EQ(g_window.mouseButtons, 0);
    // The cursor shows in the built text, not in the caption.
    EXPECT_STREQ(gui.items[field]->caption, "ab");
    EXPECT_EQ(gui.items[field]->text.triangleCount, plain + 2);
    EXPECT_EQ(gui.items[field]->text.entries[0].glyphs[2], TextBatch::GlyphIndex(0x95));

    g_window.keys[VK_SHIFT] = 1;
    Key('3');
    g_window.keys[VK_SHIFT] = 0;
    Key('C');
    g_clipboard = "12\n34";
    g_window.keys[VK_CONTROL] = 1;
    Key('V');
    EXPECT_STREQ(gui.items[field]->caption,
                 "ab\xA3"
                 "c12");
    Key(VK_BACK);
    EXPECT_STREQ(gui.items[field]->caption,
                 "ab\xA3"
                 "c1");
    // Enter ends the editing and stays set for others.
    Key(VK_RETURN);
    EXPECT_EQ(gui.focus, 0u);
    EXPECT_EQ(g_window.keys[VK_RETURN], 1);
    EXPECT_EQ(gui.items[field]->text.triangleCount, 2u * 5);
}

TEST_F(GuiWindowTest, TheCallbackCanRefuseKeysAndPastes) {
    uint32_t field = gui.AddTextItem(GuiTextField, "", 10, 10, 120, 18);
    gui.callback = Callback;
    ClickAt(20, 20);
    EXPECT_EQ(g_reports.front(), (Report{field, GuiEventClick, 0}));
    g_refuse = {field, GuiEventType, 'B'};
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
    // A field holds 254 characters.
    gui.SetCaption(field, std::string(253, 'x').c_str());
    g_refuse = {~0u, ~0u, ~0u};
    g_window.keys['Y'] = 1;
    g_window.keys['Z'] = 1;
    Tick();
    EXPECT_EQ(strlen(gui.items[field]->caption), 254u);
    EXPECT_EQ(g_window.keys['Z'], 1);
}

TEST_F(GuiWindowTest, CheckBoxesToggleAndKeepTheFocus) {
    uint32_t field = gui.AddTextItem(GuiTextField, "", 10, 10, 120, 18);
    uint32_t box = gui.AddIntItem(GuiCheckBox, 0, 10, 40, 120, 18);
    gui.callback = Callback;
    ClickAt(20, 20);
    ASSERT_EQ(gui.focus, field + 1);
    EXPECT_EQ(gui.items[box]->triangleCount, 2);
    g_reports.clear();
    ClickAt(15, 50);
    EXPECT_EQ(gui.items[box]->intValue, 1);
    EXPECT_EQ(gui.focus, field + 1);
    EXPECT_EQ(gui.items[box]->triangleCount, 4);  // box and mark
    ASSERT_EQ(g_reports.size(), 3u);
    EXPECT_EQ(g_reports[0], (Report{box, GuiEventClick, 0}));
    EXPECT_EQ(g_reports[1], (Report{box, GuiEventActivate, 0}));
    EXPECT_EQ(g_reports[2], (Report{box, GuiEventToggled, 0}));
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

TEST_F(GuiWindowTest, ARefusedClickDoesNothingButIsUsedUp) {
    uint32_t button = gui.AddTextItem(GuiButton, "OK", 10, 10, 60, 18);
    gui.callback = Callback;
    g_refuse = {button, GuiEventClick, ~0u};
    Move(gui.x + 20, gui.y + 20);
    g_window.mouseButtons = 1;
    gui.Update();
    EXPECT_EQ(gui.focus, 0u);
    EXPECT_EQ(g_window.mouseButtons, 0);
    ASSERT_EQ(g_reports.size(), 1u);  // the activation is not asked
    g_refuse = {button, GuiEventActivate, ~0u};
    g_window.mouseButtons = 1;
    gui.Update();
    EXPECT_EQ(gui.focus, 0u);
    g_refuse = {~0u, ~0u, ~0u};
    g_window.mouseButtons = 1;
    gui.Update();
    EXPECT_EQ(gui.focus, button + 1);
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
    EXPECT_FLOAT_EQ(g_camera.position.x, 0);
    EXPECT_FLOAT_EQ(g_camera.position.z, 0);
    Press(0);
    // Released: the pointer moves on alone.
    Move(700, 500);
    EXPECT_FLOAT_EQ(gui.x, x0 + 50);
    // A press on the body is used up as a click; the same drag outside the window flies the
    // camera and leaves the window alone.
    Move(gui.x + 100, gui.y + 50);
    Press(1);
    EXPECT_EQ(g_window.mouseButtons, 0);
    Move(100, 560);
    Press(1);
    g_window.mouse2D[1] += 20;
    Tick();
    Press(0);
    EXPECT_FLOAT_EQ(gui.y, y0 + 25);
    EXPECT_NE(g_camera.position.z, 0);
}

// Corner k (0..5) of triangle pair q of an item's background: x, y, u, v.
void Corner(const GuiItem& item, int vertex, float* out) {
    const float* v = item.vertices + vertex * TextBatch::kVertexFloats;
    out[0] = v[0];
    out[1] = v[1];
    out[2] = v[6];
    out[3] = v[7];
}

TEST(GuiItemGeometry, BarsBoxesAndSwatchesComeFromTheControlsImage) {
    GuiItem field(GuiTextField, 0, 0, 100, 18);
    field.Build();
    ASSERT_EQ(field.triangleCount, 6);
    float c[4];
    Corner(field, 0, c);  // left cap, top-left
    EXPECT_FLOAT_EQ(c[0], 0);
    EXPECT_FLOAT_EQ(c[1], 0);
    EXPECT_FLOAT_EQ(c[2], 0.03125f);
    EXPECT_FLOAT_EQ(c[3], 1 - 0.1171875f);
    Corner(field, 2, c);  // left cap, bottom-right
    EXPECT_FLOAT_EQ(c[0], 4);
    EXPECT_FLOAT_EQ(c[1], 18);
    EXPECT_FLOAT_EQ(c[2], 0.15625f);
    EXPECT_FLOAT_EQ(c[3], 1 - 0.1171875f - 0.140625f);
    Corner(field, 8, c);  // middle, bottom-right
    EXPECT_FLOAT_EQ(c[0], 96);
    EXPECT_FLOAT_EQ(c[2], 0.84375f);
    Corner(field, 14, c);  // right cap, bottom-right
    EXPECT_FLOAT_EQ(c[0], 100);
    EXPECT_FLOAT_EQ(c[2], 0.96875f);

    GuiItem button(GuiButton, 0, 0, 60, 40);
    strcpy(button.caption, "OK");
    button.Build();
    Corner(button, 0, c);
    EXPECT_FLOAT_EQ(c[3], 1 - 0.4375f);
    EXPECT_EQ(button.text.entries[0].align, 1u);  // centred
    EXPECT_FLOAT_EQ(button.text.entries[0].width, 52);

    GuiItem box(GuiCheckBox, 0, 0, 80, 18);
    box.intValue = 1;
    box.Build();
    ASSERT_EQ(box.triangleCount, 4);
    Corner(box, 8, c);  // the mark's bottom-right
    EXPECT_FLOAT_EQ(c[0], 14);
    EXPECT_FLOAT_EQ(c[1], 14);
    EXPECT_FLOAT_EQ(c[2], 1.0f);
    EXPECT_FLOAT_EQ(c[3], 0.2890625f);
    EXPECT_FLOAT_EQ(box.text.entries[0].x, 16);

    GuiItem swatch(GuiColourSwatch, 0, 0, 40, 30);
    swatch.Build();
    ASSERT_EQ(swatch.triangleCount, 2);
    Corner(swatch, 2, c);
    EXPECT_FLOAT_EQ(c[0], 40);
    EXPECT_FLOAT_EQ(c[1], 30);

    GuiItem label(GuiLabel, 0, 0, 40, 30);
    label.Build();
    EXPECT_EQ(label.vertices, nullptr);
    EXPECT_EQ(label.triangleCount, 0);
}

}  // namespace
