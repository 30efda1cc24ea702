// The developer overlays inside a real game-view frame: the debug panel's
// lines where start-up placed them, the network figures beside them except
// in the lighting view, nothing while not debugging, the open menu's red
// band under the hovered item, and the dialog's widgets showing their parts
// of the controls image, drawn through the hooks the developer surface
// installs.
#include "render/developer_overlays.h"

#include <gtest/gtest.h>

#include "app/developer_hooks.h"
#include "render/game_view.h"
#include "scene_test_util.h"
#include "ui/debug_menu.h"
#include "ui/debug_panel.h"
#include "ui/engine_texts.h"
#include "ui/gui_window.h"
#include "ui/text_batch.h"

using drawtest::Frame;
using drawtest::Near;

namespace {

class DeveloperOverlaysTest : public scenetest::SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        // Solid white glyphs, the space see-through: text shows as blocks where its letters stand.
        int space = TextBatch::GlyphIndex(' ');
        ASSERT_TRUE(drawtest::LoadTestFont([space](int glyph, int, int, unsigned char* rgba) {
            rgba[0] = rgba[1] = rgba[2] = 255;
            rgba[3] = glyph == space ? 0 : 255;
        }));
        InstallDeveloperHooks();
        drawtest::ResetEngineTexts(true);
        g_debugMenu.Reset();
        g_gui.Clear();
    }
    void TearDown() override {
        g_developerDraws = saved;
        g_debugMenu.Reset();
        g_gui.Clear();
        SceneTest::TearDown();
    }
    DeveloperDraws saved = g_developerDraws;
};

TEST_F(DeveloperOverlaysTest, ThePanelAndTheNetworkFiguresStandWhereStartUpPutThem) {
    g_debug = 1;
    RefreshDebugPanel();  // "General": "FPS  : 0" from (12, 32), 12 units a glyph
    DrawFrame();          // a texture name's first miss leaves the last binding on
    Frame frame = DrawFrame();
    drawtest::SaveArtefact("developer_overlays_panel", frame);
    // "F" of the first value line, at 0.85 white; the blank after "FPS" stays dark.
    EXPECT_TRUE(Near(frame.At(17, 38), 216, 216, 216, 8));
    EXPECT_TRUE(Near(frame.At(12 + 3 * 9.6 + 5, 38), 0, 0, 0));
    // "Net debug" from (680, 32), size 10.
    EXPECT_TRUE(Near(frame.At(684, 36), 216, 216, 216, 8));
    // The panel title "General" at (8, 8), size 20, at half white.
    EXPECT_TRUE(Near(frame.At(14, 16), 127, 127, 127, 8));

    // The lighting view keeps the right side for its pages: no network figures.
    g_debugMode = 4;
    RefreshDebugPanel();
    frame = DrawFrame();
    EXPECT_TRUE(Near(frame.At(684, 36), 0, 0, 0));

    g_debug = 0;
    frame = DrawFrame();
    EXPECT_TRUE(Near(frame.At(17, 38), 0, 0, 0));
    EXPECT_TRUE(Near(frame.At(14, 16), 0, 0, 0));
}

TEST_F(DeveloperOverlaysTest, TheOpenMenuBandsTheHoveredItemRed) {
    g_debugMenu.SetTitle("Vantle 2");
    g_debugMenu.width = 160;
    for (int i = 0; i < 6; i++) {
        g_debugMenu.AddItem("Build  1x lightmaps");
    }
    g_debugMenu.x = 300;
    g_debugMenu.y = 200;
    g_debugMenu.hover = 3;
    DrawFrame();
    Frame closed = DrawFrame();
    g_debugMenu.open = 1;
    Frame open = DrawFrame();
    drawtest::SaveArtefact("developer_overlays_menu", open);
    EXPECT_TRUE(Near(closed.At(380, 231), 0, 0, 0));
    // The third item's band, above and below its text, red at half strength, to the box's edges.
    for (int x : {301, 380, 457}) {
        EXPECT_TRUE(Near(open.At(x, 231), 127, 0, 0)) << x;
        EXPECT_TRUE(Near(open.At(x, 243), 127, 0, 0)) << x;
    }
    EXPECT_TRUE(Near(open.At(380, 228), 0, 0, 0));
    EXPECT_TRUE(Near(open.At(461, 237), 0, 0, 0));  // right of the box
    for (int x : {298, 459}) {
        EXPECT_TRUE(Near(open.At(x, 260), 89, 89, 89, 2)) << "the frame's side in grey 0.7 at half strength";
    }
    // Item text in the menu's grey; the title bar above the box grey 0.4 at half strength.
    EXPECT_TRUE(Near(open.At(304, 207), 178, 178, 178, 8));
    EXPECT_TRUE(Near(open.At(440, 190), 51, 51, 51));
}

TEST_F(DeveloperOverlaysTest, TheShownDialogDrawsItsWidgetsFromTheControlsImage) {
    // Widget pictures in flat colours where the dialog's texture coordinates expect them: the
    // field bar blue, the button bar green, the check box red and its mark yellow; grey elsewhere.
    ASSERT_TRUE(drawtest::LoadTexture(
        "gui_controls.tga", drawtest::Tga(256, 256, 32, [](int x, int y, unsigned char* p) {
            float u = (x + 0.5f) / 256, v = (y + 0.5f) / 256;
            const unsigned char grey[3] = {60, 60, 60}, blue[3] = {0, 0, 255}, green[3] = {0, 255, 0};
            const unsigned char red[3] = {255, 0, 0}, yellow[3] = {255, 255, 0};
            const unsigned char* colour = grey;
            if (v > 0.7421875f && v < 0.8828125f && u > 0.03125f && u < 0.96875f) {
                colour = blue;
            } else if (v > 0.421875f && v < 0.5625f && u > 0.03125f && u < 0.96875f) {
                colour = green;
            } else if (v > 0.2890625f && v < 0.4140625f) {
                colour = u > 0.5f ? yellow : u > 0.03125f && u < 0.46875f ? red : grey;
            }
            memcpy(p, colour, 3);
        })));
    g_gui.x = 200;
    g_gui.y = 200;
    g_gui.SetTitle("Tool");
    g_gui.AddTextItem(GuiTextField, "", 10, 10, 120, 18);
    g_gui.AddTextItem(GuiButton, "", 10, 40, 60, 18);
    g_gui.SetCaption(g_gui.AddIntItem(GuiCheckBox, 1, 150, 40, 60, 18), "");
    g_gui.Build();
    DrawFrame();  // a texture name's first miss leaves the last binding on
    g_gui.visible = 1;
    Frame frame = DrawFrame();
    drawtest::SaveArtefact("gui_window_widgets", frame);
    EXPECT_TRUE(Near(frame.At(270, 219), 0, 0, 255)) << "text field";
    EXPECT_TRUE(Near(frame.At(211, 219), 0, 0, 255)) << "field's left cap";
    EXPECT_TRUE(Near(frame.At(240, 249), 0, 255, 0)) << "button";
    EXPECT_TRUE(Near(frame.At(351, 242), 255, 0, 0)) << "check box outside the mark";
    EXPECT_TRUE(Near(frame.At(358, 249), 255, 255, 0)) << "check mark";
    // The title "Tool" on the title bar, in the window's grey; the body black at 0.6 over black.
    EXPECT_TRUE(Near(frame.At(204, 190), 178, 178, 178, 8));
    EXPECT_TRUE(Near(frame.At(400, 280), 0, 0, 0));
}

}  // namespace
