// The developer overlays inside a real game-view frame: the debug panel's
// lines where start-up placed them, the network figures beside them except
// in the lighting view, nothing while not debugging, and the open menu's red
// band and the shown dialog drawn through the hooks the developer surface
// installs.
#include "render/developer_overlays.h"

#include <gtest/gtest.h>

#include "app/developer_hooks.h"
#include "app/scene_hooks.h"
#include "render/game_view.h"
#include "scene_test_util.h"
#include "ui/debug_menu.h"
#include "ui/debug_panel.h"
#include "ui/engine_texts.h"
#include "ui/gui_window.h"
#include "ui/text_batch.h"

using drawtest::Frame;
using scenetest::Near;

namespace {

// Solid white glyphs, the space see-through: text shows as blocks where its letters stand.
bool LoadBlockFont() {
    int space = TextBatch::GlyphIndex(' ');
    return drawtest::LoadTestFont([space](int glyph, int, int, unsigned char* rgba) {
        rgba[0] = rgba[1] = rgba[2] = 255;
        rgba[3] = glyph == space ? 0 : 255;
    });
}

class DeveloperOverlaysTest : public ::testing::Test {
protected:
    static void TearDownTestSuite() {
        scenetest::ResetGameState();
        drawtest::CloseWindow();
    }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(800, 600));
        g_window.Resize(800, 600);
        ASSERT_TRUE(LoadBlockFont());
        scenetest::ResetGameState();
        saved = g_developerDraws;
        InstallDeveloperHooks();
        g_debugValues.Reset();
        g_netDebugText.Reset();
        g_debugTitles.Reset();
        g_loadingText.Reset();
        FillEngineTextBatches();
        g_debugMenu.Reset();
        g_gui.Clear();
    }
    void TearDown() override {
        g_developerDraws = saved;
        g_debugMenu.Reset();
        g_gui.Clear();
        scenetest::ResetGameState();
        drawtest::PurgeTextures();
    }
    static Frame DrawFrame() {
        g_window.BeginFrame();
        DrawGameView();
        return drawtest::ReadFrame();
    }
    DeveloperDraws saved;
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
    EXPECT_TRUE(Near(frame.At(17, 38), 216, 216, 216, 8));  // "Lights: 0"

    g_debug = 0;
    frame = DrawFrame();
    EXPECT_TRUE(Near(frame.At(17, 38), 0, 0, 0));
    EXPECT_TRUE(Near(frame.At(14, 16), 0, 0, 0));
}

TEST_F(DeveloperOverlaysTest, TheOpenMenuAndTheShownDialogAreDrawnOnTop) {
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
    // The third item's band, above and below its text, red at half strength.
    EXPECT_TRUE(Near(open.At(380, 231), 127, 0, 0)) << int(open.At(380, 231)[0]);
    EXPECT_TRUE(Near(open.At(380, 243), 127, 0, 0));
    EXPECT_TRUE(Near(open.At(380, 228), 0, 0, 0));
    // Item text in the menu's grey.
    EXPECT_TRUE(Near(open.At(304, 207), 178, 178, 178, 8));

    g_debugMenu.open = 0;
    g_gui.x = 100;
    g_gui.y = 300;
    g_gui.SetTitle("Tool");
    g_gui.Build();
    Frame hidden = DrawFrame();
    g_gui.visible = 1;
    Frame shown = DrawFrame();
    EXPECT_TRUE(Near(hidden.At(104, 290), 0, 0, 0));
    // The title "Tool" on the title bar, in the window's grey.
    EXPECT_TRUE(Near(shown.At(104, 290), 178, 178, 178, 8));
}

}  // namespace
