// The flat overlays in real frames: the 800 x 600 canvas stretched over other
// window sizes, the loading indicator's box, caption and bar, the console
// panel with its log rows, gaps, cursor and slide, and bitmap-font glyphs
// landing on the screen from the right cells of the font.
#include "render/overlay_draw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "app/console.h"
#include "draw_test_util.h"
#include "render/console_panel.h"
#include "render/hud_draw.h"
#include "render/loading_screen.h"
#include "ui/engine_texts.h"
#include "ui/text_batch.h"

using drawtest::Frame;

namespace {

const int kBulletGlyph = 73;

// Opaque white glyphs, a green cursor bullet and see-through blanks (space and the rest of row 4).
bool LoadPlainFont() {
    return drawtest::LoadTestFont([](int glyph, int, int, unsigned char* rgba) {
        bool blank = glyph == 72 || (glyph >= 74 && glyph <= 79);
        rgba[0] = glyph == kBulletGlyph ? 0 : 255;
        rgba[1] = 255;
        rgba[2] = glyph == kBulletGlyph ? 0 : 255;
        rgba[3] = blank ? 0 : 255;
    });
}

class OverlayDrawTest : public ::testing::Test {
protected:
    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(1024, 768));
        g_window.Resize(800, 600);
        g_window.polyCount = 0;
    }
    void TearDown() override {
        g_console.Clear();
        drawtest::PurgeTextures();
    }
    static void Clear(float grey) {
        g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = grey;
        g_window.BeginFrame();
    }
};

bool IsGrey(const unsigned char* rgb, int level, int tolerance = 3) {
    return abs(rgb[0] - level) <= tolerance && abs(rgb[1] - level) <= tolerance &&
           abs(rgb[2] - level) <= tolerance;
}

TEST_F(OverlayDrawTest, TheCanvasFillsEveryWindowSizeAlike) {
    const int sizes[2][2] = {{800, 600}, {1024, 768}};
    for (const auto& size : sizes) {
        // The window is 1024 x 768; at 800 x 600 the frame fills its lower-left part.
        g_window.Resize(size[0], size[1]);
        Clear(0.0f);
        g_window.Begin2D();
        DrawOverlayQuad(100.0f, 50.0f, 300.0f, 150.0f);
        Frame frame = drawtest::ReadFrame();
        float sx = size[0] / 800.0f, sy = size[1] / 600.0f;
        int left = static_cast<int>(100 * sx), right = static_cast<int>(300 * sx);
        int top = static_cast<int>(50 * sy), bottom = static_cast<int>(150 * sy);
        SCOPED_TRACE(size[0]);
        EXPECT_TRUE(IsGrey(frame.At(left + 1, top + 1), 255));
        EXPECT_TRUE(IsGrey(frame.At(right - 2, bottom - 2), 255));
        EXPECT_TRUE(IsGrey(frame.At(left - 2, top + 5), 0));
        EXPECT_TRUE(IsGrey(frame.At(right + 1, top + 5), 0));
        EXPECT_TRUE(IsGrey(frame.At(left + 5, top - 2), 0));
        EXPECT_TRUE(IsGrey(frame.At(left + 5, bottom + 1), 0));
    }
}

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
    ASSERT_TRUE(LoadPlainFont());
    g_loadingText.Reset();
    FillEngineTextBatches();
    // One layer of 0.25 red over black, and two.
    const int faint = 64, full = 112;
    const float fractions[4] = {0.0f, 0.25f, 0.5f, 1.0f};
    for (float fraction : fractions) {
        Clear(0.5f);
        DrawLoadingScreen("gui_loading.tga", "LOADING", fraction);
        Frame frame = drawtest::ReadFrame();
        SCOPED_TRACE(fraction);
        int covered = static_cast<int>(64 * fraction);
        EXPECT_EQ(CountRow(frame, 35, 700, 800, full, 0, 0), covered);
        EXPECT_EQ(CountRow(frame, 35, 700, 800, faint, 0, 0), 64 - covered);
        // The bar is 8 units high, centred on y 35.
        EXPECT_EQ(CountRow(frame, 30, 700, 800, faint, 0, 0) + CountRow(frame, 30, 700, 800, full, 0, 0), 0);
        EXPECT_EQ(CountRow(frame, 32, 700, 800, faint, 0, 0) + CountRow(frame, 32, 700, 800, full, 0, 0), 64);
        if (fraction == 0.5f) {
            drawtest::SaveArtefact("loading_screen", frame);
        }
    }
    // Past the end the bar runs over the black box and out of it onto the frame.
    Clear(0.5f);
    DrawLoadingScreen("gui_loading.tga", "LOADING", 1.25f);
    Frame over = drawtest::ReadFrame();
    EXPECT_EQ(CountRow(over, 35, 700, 800, full, 0, 0), 64);
    EXPECT_EQ(CountRow(over, 35, 782, 788, faint, 0, 0), 6);
    EXPECT_GT(over.At(792, 35)[0], over.At(792, 35)[1] + 40);
    EXPECT_TRUE(IsGrey(over.At(799, 35), 128));
}

TEST_F(OverlayDrawTest, TheLoadingBoxAndCaptionSitInTheTopRightCorner) {
    ASSERT_TRUE(LoadPlainFont());
    g_loadingText.Reset();
    FillEngineTextBatches();
    Clear(0.5f);
    DrawLoadingScreen("gui_loading.tga", "LOADING", 0.0f);
    Frame frame = drawtest::ReadFrame();
    // The black box spans (712, 10)-(788, 45).
    EXPECT_TRUE(IsGrey(frame.At(714, 12), 0));
    EXPECT_TRUE(IsGrey(frame.At(786, 43), 0));
    EXPECT_TRUE(IsGrey(frame.At(710, 12), 128));
    EXPECT_TRUE(IsGrey(frame.At(790, 43), 128));
    EXPECT_TRUE(IsGrey(frame.At(714, 47), 128));
    // Seven glyphs of size 10 advancing 8, centred on x 750: from 722 to 778, rows 15 to 25,
    // white at three quarters over black.
    EXPECT_GT(CountRow(frame, 20, 722, 778, 191, 191, 191), 30);
    EXPECT_EQ(CountRow(frame, 20, 712, 720, 191, 191, 191), 0);
    EXPECT_EQ(CountRow(frame, 20, 780, 788, 191, 191, 191), 0);
    EXPECT_EQ(CountRow(frame, 13, 712, 788, 191, 191, 191), 0);
    EXPECT_EQ(CountRow(frame, 27, 712, 788, 191, 191, 191), 0);
    // The caption is the one given.
    EXPECT_EQ(g_loadingText.entries[0].length, 7);
    DrawLoadingScreen("gui_loading.tga", "LIGHTMAPS", 0.0f);
    EXPECT_EQ(g_loadingText.entries[0].length, 9);
}

// Rows of the console panel (12 units each) whose glyph area shows text at x 4.
std::vector<int> LitRows(const Frame& frame, int offset) {
    std::vector<int> rows;
    for (int top = -12 + offset % 12; top < 600; top += 12) {
        if (top + 6 < 0) {
            continue;
        }
        const unsigned char* p = frame.At(4, top + 6);
        if (p[1] > 150) {
            rows.push_back(top);
        }
    }
    return rows;
}

TEST_F(OverlayDrawTest, TheConsoleShowsNineteenLogLinesAndTheCursor) {
    ASSERT_TRUE(LoadPlainFont());
    g_console.Clear();
    for (int i = 0; i < 40; i++) {
        g_console.Print("LINE %02d", i);
    }
    // Drawn 100 units low, a twentieth line would still be on the canvas if it were drawn.
    Clear(0.0f);
    g_window.Begin2D();
    DrawConsole(g_console, 0.0f, 100.0f, 0.0f, 0.0f, 0.0f, 0.0f);
    Frame frame = drawtest::ReadFrame();
    std::vector<int> rows = LitRows(frame, 100);
    ASSERT_EQ(rows.size(), 20u);  // 19 log lines and the input line
    EXPECT_EQ(rows.front(), 100);
    EXPECT_EQ(rows.back(), 100 + 228);
    // The input line is empty: only the cursor bullet, green at 0.7.
    const unsigned char* cursor = frame.At(4, 334);
    EXPECT_NEAR(cursor[0], 0, 3);
    EXPECT_NEAR(cursor[1], 178, 3);
    EXPECT_TRUE(IsGrey(frame.At(4, 322), 178));            // the newest log line, grey text
    EXPECT_TRUE(IsGrey(frame.At(4, 106), 178));            // the nineteenth
    EXPECT_EQ(g_window.polyCount, 2u * (19 * 7 + 1) * 2);  // counted once more by DrawMesh

    // An empty stored line leaves its row blank.
    g_console.lines[2][0] = 0;
    Clear(0.0f);
    g_window.Begin2D();
    DrawConsole(g_console, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f);
    rows = LitRows(drawtest::ReadFrame(), 0);
    EXPECT_EQ(rows.size(), 19u);
    EXPECT_EQ(std::count(rows.begin(), rows.end(), 228 - 3 * 12), 0);
    EXPECT_EQ(std::count(rows.begin(), rows.end(), 228 - 2 * 12), 1);
}

TEST_F(OverlayDrawTest, TheConsoleSlidesOverTheFrame) {
    ASSERT_TRUE(LoadPlainFont());
    g_console.Clear();
    g_console.AddLine("hello");
    snprintf(g_console.inputLine, sizeof(g_console.inputLine), "VID_FOV");
    const float slides[3] = {-240.0f, -120.0f, 0.0f};
    for (float slide : slides) {
        Clear(0.8f);
        g_window.Begin2D();
        DrawConsole(g_console, 0.0f, slide, 0.0f, 0.0f, 0.0f, 0.0f);
        Frame frame = drawtest::ReadFrame();
        SCOPED_TRACE(slide);
        int bottom = static_cast<int>(242 + slide);  // the sheet's lower edge on the screen
        if (bottom > 2) {
            EXPECT_TRUE(IsGrey(frame.At(400, bottom - 2), 102));  // half black over 204
        }
        EXPECT_TRUE(IsGrey(frame.At(400, bottom + 4), 204));
        if (slide == 0.0f) {
            EXPECT_TRUE(IsGrey(frame.At(4, 234), 178, 40));  // "V" of the input line
        }
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
    g_window.Begin2D();
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
    // Row 6 of the font starts with q, row 2 with 1.
    EXPECT_EQ(TextBatch::GlyphIndex('z'), 105);
    EXPECT_EQ(TextBatch::GlyphIndex('9'), 40);
}

// A line running off both sides of the canvas, as the title's scrolling credits do: the glyphs
// outside it are not sent, and the frame is the same as with every glyph sent.
TEST_F(OverlayDrawTest, GlyphsOffTheCanvasAreNotSent) {
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
        g_window.Begin2D();
        g_window.polyCount = 0;
        DrawTextAt(batch, "gui_font.tga", x, 300.0f);
        g_skipOffCanvasGlyphs = 1;
        return drawtest::ReadFrame();
    };
    // Glyphs are 20 units wide and advance 16; at x -1000 glyphs 62 to 112 touch the 800 columns
    // (glyph 62 by its last twelve, glyph 112 by its first eight).
    for (float x : {-1000.0f, -1004.5f, 0.0f, 790.0f}) {
        SCOPED_TRACE(x);
        Frame every = draw(0, x);
        EXPECT_EQ(g_window.polyCount, 400u);
        Frame sent = draw(1, x);
        EXPECT_EQ(drawtest::MaxDifference(every, sent), 0);
        int first = std::max(0, static_cast<int>(std::floor((-x - 20.0f) / 16.0f)) + 1);
        int last = std::min(199, static_cast<int>(std::ceil((800.0f - x) / 16.0f)) - 1);
        EXPECT_EQ(g_window.polyCount, static_cast<unsigned int>(2 * (last - first + 1)));
    }
    // Wholly off the canvas: nothing at all.
    draw(1, 900.0f);
    EXPECT_EQ(g_window.polyCount, 0u);
}

// Lit pixels of a box and their bounding box.
struct Ink {
    int count = 0, left = 9999, right = -1, top = 9999, bottom = -1;
};

Ink InkIn(const Frame& frame, int x0, int y0, int size) {
    Ink ink;
    for (int y = y0; y < y0 + size; y++) {
        for (int x = x0; x < x0 + size; x++) {
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

// Loads the font the content build made, found through the resource lookup like the game does.
bool LoadGeneratedFont() {
    char saved[sizeof(g_resources.dataDirectory)];
    memcpy(saved, g_resources.dataDirectory, sizeof(saved));
    snprintf(g_resources.dataDirectory, sizeof(g_resources.dataDirectory), "%s/data", VANTLE_RUN_DIR);
    g_textures.resources = &g_resources;
    int loaded = g_textures.Bind("gui_font.tga");
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    memcpy(g_resources.dataDirectory, saved, sizeof(saved));
    if (loaded != 1 || bound == 0) {
        ADD_FAILURE() << "no gui_font.tga under " << VANTLE_RUN_DIR << "/data";
        return false;
    }
    return true;
}

TEST_F(OverlayDrawTest, TheGeneratedFontDrawsEachCharacterFromItsCell) {
    ASSERT_TRUE(LoadGeneratedFont());

    TextBatch batch;
    const char* samples[5] = {"I", "-", " ", "_", "\x95"};
    for (int i = 0; i < 5; i++) {
        batch.AddEntry(samples[i], 50.0f + 120.0f * i, 100.0f, 0.0f, 64.0f, 1.0f, 0);
    }
    batch.Build();
    Clear(0.0f);
    g_window.Begin2D();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    g_textures.Bind("gui_font.tga");
    DrawTextBatch(batch);
    glDisable(GL_BLEND);
    Frame frame = drawtest::ReadFrame();
    drawtest::SaveArtefact("generated_font", frame);

    Ink bar = InkIn(frame, 50, 100, 64);
    Ink dash = InkIn(frame, 170, 100, 64);
    Ink space = InkIn(frame, 290, 100, 64);
    Ink underscore = InkIn(frame, 410, 100, 64);
    Ink bullet = InkIn(frame, 530, 100, 64);
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
    // The cursor bullet is a small blob, neither tall nor wide.
    ASSERT_GT(bullet.count, 10);
    EXPECT_LT(bullet.right - bullet.left, 40);
    EXPECT_LT(bullet.bottom - bullet.top, 40);
}

// Columns of row band [top, top + 12) where text shows over the sheet, leftmost and rightmost.
Ink TextInRow(const Frame& frame, int top) {
    Ink ink;
    for (int y = top; y < top + 12; y++) {
        for (int x = 0; x < 800; x++) {
            if (frame.At(x, y)[1] > 120) {
                ink.count++;
                ink.left = std::min(ink.left, x);
                ink.right = std::max(ink.right, x);
            }
        }
    }
    return ink;
}

TEST_F(OverlayDrawTest, TheOpenConsoleInTheGeneratedFont) {
    ASSERT_TRUE(LoadGeneratedFont());
    g_console.Clear();
    for (int i = 0; i < 30; i++) {
        g_console.Print("Line %02d: texture set cached (%dms)", i, 10 * i);
    }
    snprintf(g_console.inputLine, sizeof(g_console.inputLine), "VID_FOV 30");
    Clear(0.4f);
    g_window.Begin2D();
    DrawConsole(g_console, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f);
    Frame frame = drawtest::ReadFrame();
    drawtest::SaveArtefact("console_open", frame);

    // Half black over the grey down to row 241, the grey rule on 243, the frame below.
    EXPECT_TRUE(IsGrey(frame.At(790, 100), 51));
    EXPECT_TRUE(IsGrey(frame.At(790, 241), 51));
    EXPECT_TRUE(IsGrey(frame.At(790, 243), 140, 4));
    EXPECT_TRUE(IsGrey(frame.At(790, 245), 102));
    EXPECT_EQ(TextInRow(frame, 244).count + TextInRow(frame, 256).count, 0);
    // The input line: ten characters and the bullet, the bullet ending the run of text at
    // 10 x 9.6 to 10 x 9.6 + 12.
    Ink input = TextInRow(frame, 228);
    ASSERT_GT(input.count, 40);
    EXPECT_LE(input.left, 6);
    EXPECT_GT(input.right, 96);
    EXPECT_LE(input.right, 108);
    // Nineteen log lines of 35 characters, newest lowest, the last on the canvas's top row, each row ending
    // in its last glyph's cell.
    for (int k = 1; k <= 19; k++) {
        SCOPED_TRACE(k);
        Ink row = TextInRow(frame, 228 - 12 * k);
        ASSERT_GT(row.count, 80);
        EXPECT_LE(row.left, 6);
        EXPECT_GT(row.right, 34 * 9.6);
        EXPECT_LE(row.right, 34 * 9.6 + 12);
    }
}

}  // namespace
