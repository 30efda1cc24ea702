// The flat overlays in real frames: the loading bar, and bitmap-font glyphs
// landing on the screen from the right cells of the font, the generated
// font's included. (The canvas stretched over the window and the console's
// sheet are seen in the real program's screenshots.)
#include "render/overlay_draw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "draw_test_util.h"
#include "render/hud_draw.h"
#include "render/loading_screen.h"
#include "ui/engine_texts.h"
#include "ui/text_batch.h"

using drawtest::Frame;

namespace {

const int kBulletGlyph = 73;

class OverlayDrawTest : public drawtest::GlTest {
protected:
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override { ASSERT_TRUE(drawtest::OpenWindow(800, 600)); }
    static void Clear(float grey) {
        g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = grey;
        g_window.BeginFrame();
        g_window.Begin2D();
    }
};

// Pixels of row y between x0 and x1 (exclusive) that match a colour within 3.
int CountRow(const Frame& frame, int y, int x0, int x1, int r, int g, int b) {
    int count = 0;
    for (int x = x0; x < x1; x++) {
        const unsigned char* p = frame.At(x, y);
        if (abs(p[0] - r) <= 3 && abs(p[1] - g) <= 3 && abs(p[2] - b) <= 3) {
            count++;
        }
    }
    return count;
}

TEST_F(OverlayDrawTest, TheLoadingBarCoversSixtyFourUnitsTimesTheFraction) {
    ASSERT_TRUE(drawtest::LoadTestFont([](int, int, int, unsigned char* rgba) { memset(rgba, 255, 4); }));
    drawtest::ResetEngineTexts(true);
    // One layer of 0.25 red over black, and two.
    const int faint = 64, full = 112;
    for (float fraction : {0.0f, 0.25f, 0.5f, 1.0f}) {
        SCOPED_TRACE(fraction);
        Clear(0.5f);
        DrawLoadingScreen("gui_loading.tga", "LOADING", fraction);
        Frame frame = drawtest::ReadFrame();
        int covered = static_cast<int>(64 * fraction);
        EXPECT_EQ(CountRow(frame, 35, 700, 800, full, 0, 0), covered);
        EXPECT_EQ(CountRow(frame, 35, 700, 800, faint, 0, 0), 64 - covered);
        // The bar is 8 units high, centred on y 35.
        EXPECT_EQ(CountRow(frame, 30, 700, 800, faint, 0, 0) + CountRow(frame, 30, 700, 800, full, 0, 0), 0);
        EXPECT_EQ(CountRow(frame, 32, 700, 800, faint, 0, 0) + CountRow(frame, 32, 700, 800, full, 0, 0), 64);
        // The caption's black box, x 712 to 788 at the top right, over the grey.
        EXPECT_EQ(CountRow(frame, 11, 700, 800, 0, 0, 0), 76);
    }
}

TEST_F(OverlayDrawTest, GlyphsComeFromTheirCells) {
    // Each cell tells its column and row by red and green, and its upper half from its lower by blue.
    ASSERT_TRUE(drawtest::LoadTestFont([](int glyph, int, int y, unsigned char* rgba) {
        rgba[0] = static_cast<unsigned char>(16 * (glyph % 16) + 8);
        rgba[1] = static_cast<unsigned char>(16 * (glyph / 16) + 8);
        rgba[2] = y < 16 ? 60 : 200;
        rgba[3] = 255;
    }));
    TextBatch batch;
    const char text[] = "Az9\x95\xa3\xe9";
    batch.AddEntry(text, 100.0f, 100.0f, 0.0f, 32.0f, 1.0f, 0);
    batch.Build();
    Clear(0.0f);
    g_textures.Bind("gui_font.tga");
    DrawTextBatch(batch);
    Frame frame = drawtest::ReadFrame();
    const int expected[6] = {
        0, TextBatch::GlyphIndex('z'), TextBatch::GlyphIndex('9'), kBulletGlyph, TextBatch::GlyphIndex(0xA3),
        0};
    for (int i = 0; i < 6; i++) {
        SCOPED_TRACE(i);
        int x = static_cast<int>(100 + i * 25.6f + 12);
        const unsigned char* upper = frame.At(x, 108);
        const unsigned char* lower = frame.At(x, 124);
        EXPECT_EQ(upper[0], 16 * (expected[i] % 16) + 8);
        EXPECT_EQ(upper[1], 16 * (expected[i] / 16) + 8);
        EXPECT_EQ(upper[2], 60);
        EXPECT_EQ(lower[2], 200);
    }
}

// A line running off both sides of the canvas, as the title's scrolling credits do: the glyphs
// outside it are not sent, yet the frame is the same as with every glyph sent, and the
// triangle count the debug panel shows ("Polys:") is still the whole batch's.
TEST_F(OverlayDrawTest, GlyphsOffTheCanvasAreNotSentButCounted) {
    ASSERT_TRUE(drawtest::LoadTestFont([](int glyph, int x, int, unsigned char* rgba) {
        rgba[0] = static_cast<unsigned char>(16 * (glyph % 16) + x);
        rgba[1] = static_cast<unsigned char>(16 * (glyph / 16));
        rgba[2] = 120;
        rgba[3] = 255;
    }));
    char text[201];
    for (int i = 0; i < 200; i++) {
        text[i] = static_cast<char>('A' + i % 26);
    }
    text[200] = 0;
    TextBatch batch;
    batch.AddEntry(text, 0.0f, 0.0f, 10000.0f, 20.0f, 1.0f, 0);
    batch.Build();
    auto draw = [&](int skip, float x) {
        g_skipOffCanvasGlyphs = skip;
        Clear(0.0f);
        DrawTextAt(batch, "gui_font.tga", x, 300.0f);
        g_skipOffCanvasGlyphs = 1;
        EXPECT_EQ(g_window.polyCount, 400u);
        return drawtest::ReadFrame();
    };
    // Glyphs are 20 units wide and advance 16; at x -1000 glyphs 62 to 112 touch the 800 columns
    // (glyph 62 by its last twelve, glyph 112 by its first eight); at 900 none does.
    for (float x : {-1000.0f, -1004.5f, 0.0f, 790.0f, 900.0f}) {
        SCOPED_TRACE(x);
        EXPECT_EQ(drawtest::MaxDifference(draw(0, x), draw(1, x)), 0);
    }
}

// Lit pixels of a box and their bounding box.
struct Ink {
    int count = 0, left = 9999, right = -1, top = 9999, bottom = -1;
};

// In the 64 x 64 box from (x0, 100).
Ink InkIn(const Frame& frame, int x0) {
    Ink ink;
    for (int y = 100; y < 164; y++) {
        for (int x = x0; x < x0 + 64; x++) {
            if (frame.At(x, y)[0] > 128) {
                ink.count++;
                ink.left = std::min(ink.left, x);
                ink.right = std::max(ink.right, x);
                ink.top = std::min(ink.top, y);
                ink.bottom = std::max(ink.bottom, y);
            }
        }
    }
    return ink;
}

TEST_F(OverlayDrawTest, TheGeneratedFontDrawsEachCharacterFromItsCell) {
    // The font the content build made, found through the resource lookup as the game finds it.
    drawtest::UseShippedData();
    TextBatch batch;
    const char* samples[4] = {"I", "-", " ", "_"};
    for (int i = 0; i < 4; i++) {
        batch.AddEntry(samples[i], 50.0f + 120.0f * i, 100.0f, 0.0f, 64.0f, 1.0f, 0);
    }
    batch.Build();
    Clear(0.0f);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    ASSERT_EQ(g_textures.Bind("gui_font.tga"), 1) << "no gui_font.tga under " << VANTLE_RUN_DIR;
    DrawTextBatch(batch);
    glDisable(GL_BLEND);
    Frame frame = drawtest::ReadFrame();
    drawtest::SaveArtefact("generated_font", frame);

    Ink bar = InkIn(frame, 50), dash = InkIn(frame, 170), space = InkIn(frame, 290);
    Ink underscore = InkIn(frame, 410);
    // "I" is tall and narrow, "-" wide and flat, the space empty.
    ASSERT_GT(bar.count, 20);
    EXPECT_GT(bar.bottom - bar.top, 2 * (bar.right - bar.left));
    ASSERT_GT(dash.count, 10);
    EXPECT_GT(dash.right - dash.left, 2 * (dash.bottom - dash.top));
    EXPECT_EQ(space.count, 0);
    // "_" sits below the middle of its cell and "-" near it: the rows are not upside down.
    ASSERT_GT(underscore.count, 10);
    EXPECT_GT(underscore.top, dash.bottom);
    EXPECT_GT(underscore.top, 100 + 40);
}

}  // namespace
