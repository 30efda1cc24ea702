// The developer menu and the dialog window in real frames: the menu's box,
// title bar and frame where its corner says, the red band under the hovered
// item, and dialog widgets showing the right parts of the controls image.
#include "render/developer_widgets.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <vector>

#include "draw_test_util.h"
#include "ui/debug_menu.h"
#include "ui/gui_window.h"

using drawtest::Frame;

namespace {

// Uploads a size x size RGBA image under name into a free slot; paint(u, v, rgba) gets the
// texture coordinates of each texel's centre (v = 1 at the image's top).
bool LoadImage(const char* name, int slot, int size,
               const std::function<void(float, float, unsigned char*)>& paint) {
    std::vector<unsigned char> pixels(size * size * 4);
    for (int row = 0; row < size; row++) {  // from the top
        for (int column = 0; column < size; column++) {
            // TGA rows are stored bottom row first.
            unsigned char* out = &pixels[((size - 1 - row) * size + column) * 4];
            paint((column + 0.5f) / size, 1.0f - (row + 0.5f) / size, out);
        }
    }
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), size, size, 32, 0, &length);
    if (!file) {
        return false;
    }
    g_textures.resources = &g_resources;
    int loaded = g_textures.LoadSlot(name, file, length, slot);
    free(file);
    return loaded == 1;
}

void Set(unsigned char* rgba, int r, int g, int b, int a) {
    rgba[0] = static_cast<unsigned char>(r);
    rgba[1] = static_cast<unsigned char>(g);
    rgba[2] = static_cast<unsigned char>(b);
    rgba[3] = static_cast<unsigned char>(a);
}

// A font whose glyphs are all see-through, so text leaves the pixels under it alone.
bool LoadClearFont() {
    return drawtest::LoadTestFont([](int, int, int, unsigned char* rgba) { Set(rgba, 255, 255, 255, 0); });
}

// Widget pictures in flat colours where the dialog's texture coordinates expect them: the field
// bar blue, the button bar green, the check box red and its mark yellow; grey elsewhere.
bool LoadControls() {
    return LoadImage("gui_controls.tga", 1, 256, [](float u, float v, unsigned char* rgba) {
        Set(rgba, 60, 60, 60, 255);
        if (v > 1 - 0.1171875f - 0.140625f && v < 1 - 0.1171875f && u > 0.03125f && u < 0.96875f) {
            Set(rgba, 0, 0, 255, 255);
        } else if (v > 1 - 0.4375f - 0.140625f && v < 1 - 0.4375f && u > 0.03125f && u < 0.96875f) {
            Set(rgba, 0, 255, 0, 255);
        } else if (v > 0.2890625f && v < 0.4140625f && u > 0.03125f && u < 0.46875f) {
            Set(rgba, 255, 0, 0, 255);
        } else if (v > 0.2890625f && v < 0.4140625f && u > 0.5f) {
            Set(rgba, 255, 255, 0, 255);
        }
    });
}

bool Near(const unsigned char* rgb, int r, int g, int b, int tolerance = 6) {
    return abs(rgb[0] - r) <= tolerance && abs(rgb[1] - g) <= tolerance && abs(rgb[2] - b) <= tolerance;
}

class DeveloperWidgetsTest : public ::testing::Test {
protected:
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(800, 600));
        g_window.Resize(800, 600);
        ASSERT_TRUE(LoadClearFont());
        g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 0.0f;
        g_window.BeginFrame();
        g_window.Begin2D();
    }
    void TearDown() override { drawtest::PurgeTextures(); }
};

TEST_F(DeveloperWidgetsTest, TheHoveredItemOfTheOpenMenuIsTintedRed) {
    DebugMenu menu;
    menu.Reset();
    menu.width = 160;
    for (int i = 0; i < 6; i++) {
        menu.AddItem("item");
    }
    menu.x = 100;
    menu.y = 100;
    menu.open = 1;
    menu.hover = 3;
    DrawDebugMenu(menu);
    Frame frame = drawtest::ReadFrame();
    drawtest::SaveArtefact("debug_menu_hover", frame);
    // Item 3 is the band from 30 to 45 below the box's top: red at half strength over black.
    for (int y : {131, 137, 144}) {
        for (int x : {101, 180, 257}) {
            EXPECT_TRUE(Near(frame.At(x, y), 127, 0, 0)) << x << ", " << y;
        }
    }
    for (int y : {128, 146, 110, 185}) {
        EXPECT_TRUE(Near(frame.At(180, y), 0, 0, 0)) << y;  // the box is black at half strength
    }
    EXPECT_TRUE(Near(frame.At(261, 137), 0, 0, 0));  // right of the box
    // The title bar above the box: grey 0.4 at half strength.
    EXPECT_TRUE(Near(frame.At(180, 90), 51, 51, 51));
    EXPECT_TRUE(Near(frame.At(180, 80), 0, 0, 0));
    // The frame's lines: one unit left of the box and along its right edge (grey 0.7 at half
    // strength, on whichever pixel column the rasteriser puts an edge-aligned line).
    EXPECT_TRUE(Near(frame.At(98, 150), 89, 89, 89, 10) || Near(frame.At(99, 150), 89, 89, 89, 10));
    EXPECT_TRUE(Near(frame.At(259, 150), 89, 89, 89, 10) || Near(frame.At(260, 150), 89, 89, 89, 10));
    EXPECT_TRUE(Near(frame.At(96, 150), 0, 0, 0));
    EXPECT_TRUE(Near(frame.At(262, 150), 0, 0, 0));

    // No hover, no band.
    menu.hover = 0;
    g_window.BeginFrame();
    g_window.Begin2D();
    DrawDebugMenu(menu);
    Frame plain = drawtest::ReadFrame();
    EXPECT_TRUE(Near(plain.At(180, 137), 0, 0, 0));
}

TEST_F(DeveloperWidgetsTest, DialogWidgetsShowTheirPartsOfTheControlsImage) {
    ASSERT_TRUE(LoadControls());
    GuiWindow gui;
    gui.x = 200;
    gui.y = 200;
    gui.visible = 1;
    gui.AddTextItem(GuiTextField, "", 10, 10, 120, 18);
    gui.AddTextItem(GuiButton, "", 10, 40, 60, 18);
    uint32_t box = gui.AddIntItem(GuiCheckBox, 1, 150, 40, 60, 18);
    gui.SetCaption(box, "");
    gui.Build();
    DrawGuiWindow(gui);
    Frame frame = drawtest::ReadFrame();
    drawtest::SaveArtefact("gui_window_widgets", frame);
    EXPECT_TRUE(Near(frame.At(270, 219), 0, 0, 255)) << "text field";
    EXPECT_TRUE(Near(frame.At(211, 219), 0, 0, 255)) << "field's left cap";
    EXPECT_TRUE(Near(frame.At(240, 249), 0, 255, 0)) << "button";
    EXPECT_TRUE(Near(frame.At(351, 242), 255, 0, 0)) << "check box outside the mark";
    EXPECT_TRUE(Near(frame.At(358, 249), 255, 255, 0)) << "check mark";
    // The body is black at 0.6 over black; the title bar grey 0.4 at 0.6.
    EXPECT_TRUE(Near(frame.At(400, 280), 0, 0, 0));
    EXPECT_TRUE(Near(frame.At(400, 190), 61, 61, 61));
    EXPECT_TRUE(Near(frame.At(400, 170), 0, 0, 0));
}

}  // namespace
