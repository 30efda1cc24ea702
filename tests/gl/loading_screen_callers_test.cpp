// The long console commands show the loading box while they work, seen in the
// frames they present: "LOCATION_LOAD" one frame per level piece with the bar
// growing, "LMAP_BUILD" the "LIGHTING" caption over its bar, and
// "VID_RESTART" the box again in the new window while it binds the level's
// textures. Each command's last frame is read back from the back buffer, which
// Mesa's software swap copies out and keeps (its front buffer reads back empty
// under Xvfb); the back buffer is painted grey first, so a box found there
// was drawn by the command. The font paints every glyph cell in its own colour,
// so the caption's letters can be told apart by their pixels.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/resource_commands.h"
#include "app/scene_hooks.h"
#include "resources/location.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"
#include "resources/texture_manager.h"
#include "resources/tga_image.h"
#include "test_support.h"
#include "ui/engine_texts.h"
#include "ui/text_batch.h"

namespace {

// Glyph g's cell: red 16 * column + 8, green 16 * row + 8, opaque.
bool WriteCellFont(const std::string& path) {
    std::vector<unsigned char> pixels(512 * 256 * 4);
    for (int row = 0; row < 256; row++) {
        for (int column = 0; column < 512; column++) {
            int glyph = (row / 32) * 16 + column / 32;
            unsigned char* out = &pixels[((255 - row) * 512 + column) * 4];  // bottom row first
            out[0] = static_cast<unsigned char>(16 * (glyph % 16) + 8);
            out[1] = static_cast<unsigned char>(16 * (glyph / 16) + 8);
            out[2] = 0;
            out[3] = 255;
        }
    }
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), 512, 256, 32, 0, &length);
    bool ok = file && test::WriteFile(path, file, length);
    free(file);
    return ok;
}

bool WriteTexture(const std::string& path) {
    std::vector<unsigned char> pixels(16 * 16 * 3, 0x80);
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), 16, 16, 24, 0, &length);
    bool ok = file && test::WriteFile(path, file, length);
    free(file);
    return ok;
}

// The frame last drawn, RGB, row 0 at the top.
struct Shown {
    int width = 0, height = 0;
    std::vector<unsigned char> rgb;
    const unsigned char* At(int x, int y) const { return &rgb[((height - 1 - y) * width + x) * 3]; }
};

Shown ReadShown() {
    Shown shown;
    shown.width = g_window.width;
    shown.height = g_window.height;
    shown.rgb.resize(shown.width * shown.height * 3);
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, shown.width, shown.height, GL_RGB, GL_UNSIGNED_BYTE, shown.rgb.data());
    return shown;
}

// The glyph drawn at screen pixel (x, y) of the caption, from its colour at 75 % over black;
// -1 when the pixel is not a glyph's.
int GlyphAt(const Shown& shown, int x, int y) {
    const unsigned char* p = shown.At(x, y);
    double red = p[0] / 0.75, green = p[1] / 0.75;
    int column = static_cast<int>((red - 8.0) / 16.0 + 0.5);
    int row = static_cast<int>((green - 8.0) / 16.0 + 0.5);
    if (column < 0 || column > 15 || row < 0 || row > 7 || std::abs(red - (16 * column + 8)) > 4.0 ||
        std::abs(green - (16 * row + 8)) > 4.0) {
        return -1;
    }
    return row * 16 + column;
}

// The caption as glyph indices: glyph i of an n-glyph caption centred on x 750 starts at
// 750 - 4n + 8i and is 10 units wide; its pixel 4 in is its own (the next one starts at 8).
std::vector<int> Caption(const Shown& shown, int glyphs) {
    std::vector<int> out;
    for (int i = 0; i < glyphs; i++) {
        out.push_back(GlyphAt(shown, 750 - 4 * glyphs + 8 * i + 4, 20));
    }
    return out;
}

std::vector<int> Glyphs(const char* text) {
    std::vector<int> out;
    for (const char* c = text; *c; c++) {
        out.push_back(TextBatch::GlyphIndex(static_cast<unsigned char>(*c)));
    }
    return out;
}

// Red of the bar's middle row at canvas x: 0 off the bar, about 64 for the faint bar,
// about 112 where the progress bar lies over it.
int BarRed(const Shown& shown, int x) {
    return shown.At(x, 35)[0];
}

class LoadingScreenCallersTest : public ::testing::Test {
protected:
    EngineHooks savedHooks;
    char savedDataDirectory[260];
    std::string dir;

    void SetUp() override {
        savedHooks = g_hooks;
        memcpy(savedDataDirectory, g_resources.dataDirectory, sizeof(savedDataDirectory));
        InstallResourceHooks();
        g_hooks.attachTextureManager();
        dir = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_EQ(system(("mkdir -p '" + dir + "/data/textures' '" + dir + "/data/levels'").c_str()), 0);
        snprintf(g_resources.dataDirectory, sizeof(g_resources.dataDirectory), "%s/data", dir.c_str());
        ASSERT_TRUE(WriteCellFont(dir + "/data/gui_font.tga"));
        ASSERT_TRUE(WriteTexture(dir + "/data/textures/wood.tga"));
        // The start-up text, filled once here as start-up fills it.
        g_loadingText.Reset();
        g_debugValues.Reset();
        g_netDebugText.Reset();
        g_debugTitles.Reset();
        FillEngineTextBatches();
        g_window.fullScreen = 0;
        ASSERT_EQ(g_window.Create("Vantle2\x99", 800, 600, 0), 1);
        g_console.Clear();

        // Four pieces: the last presented frame shows the bar three quarters full.
        std::unique_ptr<Location> level(new Location);
        strcpy(level->name, "Test level");
        for (int i = 0; i < 4; i++) {
            LocationPiece* piece = new LocationPiece;
            memset(piece->name, 0, sizeof(piece->name));
            memset(piece->textureName, 0, sizeof(piece->textureName));
            snprintf(piece->name, sizeof(piece->name), "box%d", i);
            strcpy(piece->textureName, "textures\\wood.tga");
            float lo[3] = {0, 0, 0}, hi[3] = {10, 10, 10};
            MakeBoxModel(piece->model, lo, hi, 0.1f);
            level->pieces[level->pieceCount++] = piece;
        }
        ASSERT_EQ(level->Save((dir + "/data/levels/test.vlc").c_str()), 1);
    }
    void TearDown() override {
        g_textures.Purge();
        g_location.Clear();
        g_location.lightmaps.Clear();
        g_menuLocation.Clear();
        g_menuLocation.lightmaps.Clear();
        if (g_window.window) {
            g_window.Destroy();
        }
        g_textures.resources = nullptr;
        memcpy(g_resources.dataDirectory, savedDataDirectory, sizeof(savedDataDirectory));
        g_hooks = savedHooks;
    }

    // Paints the back buffer grey, so that only the command can put the box there.
    static void PaintGrey() {
        glClearColor(0.5f, 0.5f, 0.5f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }

    // The black box in the top-right corner, (712, 10)-(788, 45), over the grey.
    static void ExpectBoxOverGrey(const Shown& shown) {
        const unsigned char* edge = shown.At(714, 12);
        EXPECT_LE(edge[0] + edge[1] + edge[2], 6);
        EXPECT_LE(shown.At(786, 43)[1], 2);
        EXPECT_NEAR(shown.At(709, 12)[1], 128, 2);
        EXPECT_NEAR(shown.At(791, 43)[1], 128, 2);
        EXPECT_NEAR(shown.At(750, 48)[1], 128, 2);
    }
};

TEST_F(LoadingScreenCallersTest, LocationLoadShowsTheBoxWithTheBarGrowingPieceByPiece) {
    PaintGrey();
    ExecuteCommand("LOCATION_LOAD levels\\test.vlc");
    ASSERT_EQ(g_location.pieceCount, 4);
    Shown shown = ReadShown();
    ExpectBoxOverGrey(shown);
    EXPECT_EQ(Caption(shown, 7), Glyphs("LOADING"));
    // The last frame before the fourth piece's texture: 3/4 of 64 units from x 718, to 766.
    EXPECT_NEAR(BarRed(shown, 764), 112, 6);
    EXPECT_NEAR(BarRed(shown, 768), 64, 4);
    EXPECT_NEAR(BarRed(shown, 780), 64, 4);
}

TEST_F(LoadingScreenCallersTest, LightmapBuildShowsItsOwnCaption) {
    ExecuteCommand("LOCATION_LOAD levels\\test.vlc");
    PaintGrey();
    ExecuteCommand("LMAP_BUILD");
    Shown shown = ReadShown();
    ExpectBoxOverGrey(shown);
    EXPECT_EQ(Caption(shown, 8), Glyphs("LIGHTING"));
    // The bar is there, faint or filled (a bake may move it on as it goes), and ends at 782.
    for (int x = 719; x < 782; x += 6) {
        int red = BarRed(shown, x);
        EXPECT_TRUE(std::abs(red - 64) <= 4 || std::abs(red - 112) <= 6) << x << ": " << red;
    }
    EXPECT_LE(BarRed(shown, 785), 2);
}

TEST_F(LoadingScreenCallersTest, VideoRestartShowsTheBoxInTheNewWindow) {
    ExecuteCommand("LOCATION_LOAD levels\\test.vlc");
    PaintGrey();
    ExecuteCommand("VID_RESTART");
    ASSERT_NE(g_window.renderContext, nullptr);
    ASSERT_NE(g_window.window, nullptr);
    // The grey belonged to the old window: what the new one holds was drawn after it was made.
    Shown shown = ReadShown();
    EXPECT_NE(shown.At(709, 12)[1], 128);
    EXPECT_EQ(Caption(shown, 7), Glyphs("LOADING"));
    EXPECT_NEAR(BarRed(shown, 764), 112, 6);
    EXPECT_NEAR(BarRed(shown, 768), 64, 4);
}

}  // namespace
