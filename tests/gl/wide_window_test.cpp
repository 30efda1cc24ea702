// A 16:9 window (1280 x 720) in real frames: with VID_ASPECT 1 the HUD's air
// bubble comes out round where the stretched picture makes it an oval, and a
// right click opens the developer menu under the pointer, the mouse mapped
// through the 4:3 picture in the middle of the window.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "app/console.h"
#include "app/developer_hooks.h"
#include "app/input.h"
#include "platform/sys_events.h"
#include "render/developer_overlays.h"
#include "scene_test_util.h"
#include "ui/debug_menu.h"

using drawtest::Frame;
using drawtest::Near;

namespace {

class WideWindow : public drawtest::GlTest {
protected:
    // Other suites keep one window between them; this one needs a real window of its own size.
    static void SetUpTestSuite() { drawtest::CloseWindow(); }
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(1280, 720));
        scenetest::ResetGameState();
        for (const char* name : {"gui\\level_bar.tga", "gui\\air_bar_full.tga", "gui\\air_bar_empty.tga",
                                 "gui\\lives.tga", "gui_font.tga", "gui_font2.tga"}) {
            ASSERT_TRUE(drawtest::SolidTexture(name, 0, 0, 0));
        }
        // A magenta disc filling its square, see-through around it.
        auto disc = [](int x, int y, unsigned char* p) {
            float dx = x + 0.5f - 32.0f, dy = y + 0.5f - 32.0f;
            p[0] = 255, p[1] = 0, p[2] = 255;
            p[3] = dx * dx + dy * dy <= 32.0f * 32.0f ? 255 : 0;
        };
        ASSERT_TRUE(drawtest::LoadTexture("gui\\air.tga", drawtest::Tga(64, 64, 32, disc)));
    }
    void TearDown() override {
        g_debugMenu.Reset();
        g_developerDraws = savedDraws;
        scenetest::ResetGameState();
        GlTest::TearDown();
        g_window.ApplyViewport();
    }
    static void Aspect(int keep) {
        g_window.keepAspect = static_cast<uint8_t>(keep);
        g_window.ApplyViewport();
    }
    static Frame DrawFrame() {
        g_window.BeginFrame();
        DrawGameView();
        return drawtest::ReadFrame();
    }
    // The window procedure of the window the suite made (its creation made it the active one).
    static void Mouse(unsigned int message, int x, int y) {
        WindowProc(g_window.window, message, 0, Sys_MakeLParam(x, y));
    }
    DeveloperDraws savedDraws = g_developerDraws;
};

// The disc's tallest column over its widest row. The bubble is 128 units across and its lowest
// 28 lie below the canvas, so a round one shows 100 / 128 of its width in height.
float DiscShape(const Frame& frame) {
    std::vector<int> rows(frame.height, 0), columns(frame.width, 0);
    for (int y = 0; y < frame.height; y++) {
        for (int x = 0; x < frame.width; x++) {
            bool disc = Near(frame.At(x, y), 255, 0, 255, 40);
            rows[y] += disc;
            columns[x] += disc;
        }
    }
    int width = *std::max_element(rows.begin(), rows.end());
    return width ? static_cast<float>(*std::max_element(columns.begin(), columns.end())) / width : 0.0f;
}

TEST_F(WideWindow, TheAirBubbleIsRoundWithVidAspectAndAnOvalStretched) {
    // Stretched, a unit is 1.6 pixels across and 1.2 down.
    const float shapes[2] = {100.0f / 128.0f * 1.2f / 1.6f, 100.0f / 128.0f};
    for (int keep : {1, 0}) {
        Aspect(keep);
        EXPECT_NEAR(DiscShape(DrawFrame()), shapes[keep], 0.02f) << keep;
    }
}

TEST_F(WideWindow, ARightClickOpensTheDeveloperMenuUnderThePointer) {
    InstallDeveloperHooks();
    Aspect(1);
    // Pixel (700, 300) is canvas (450, 250): the picture is 960 wide from x = 160, 1.2 a unit.
    Mouse(WM_MOUSEMOVE, 700, 300);
    MouseCamera();
    Mouse(WM_RBUTTONDOWN, 700, 300);
    MouseCamera();
    Mouse(WM_RBUTTONUP, 700, 300);
    UpdateDebugMenu();
    ASSERT_EQ(g_debugMenu.open, 1);
    Frame frame = DrawFrame();
    // The title bar runs from the pointer 160 units right, grey 0.4 at half strength.
    EXPECT_TRUE(Near(frame.At(700 + 150 * 6 / 5, 300), 51, 51, 51));
    EXPECT_TRUE(Near(frame.At(700 - 6, 300), 0, 0, 0));
    MouseCamera();  // the drag state back to rest
}

}  // namespace
