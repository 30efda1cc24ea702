// The console commands that act on textures and locations, run the way a
// player types them, against a real window: "LOCATION_LOAD" pre-caches the
// level's textures behind the loading box, its bar growing piece by piece;
// "VID_PURGE" forgets them; "VID_RESTART" replaces the window and brings back
// every texture, the screen texture and the lightmap pages of the level and
// the title scene, showing the box again in the new window; "LMAP_BUILD"
// bakes at the set quality under the "LIGHTING" caption, drawn again as the
// bake goes on. Each command's last frame is read back from the back buffer,
// which Mesa's software swap keeps (its front buffer reads back empty under
// Xvfb); the back buffer is painted grey first, so a box found there was drawn
// by the command. The font paints every glyph cell in its own colour, so the
// caption's letters can be told apart by their pixels.
#include "app/resource_commands.h"

#include <gtest/gtest.h>

#include <memory>

#include "render/loading_screen.h"
#include "resources/screen_texture.h"
#include "scene_test_util.h"
#include "ui/engine_texts.h"

using drawtest::Bytes;
using drawtest::Frame;

namespace {

// Texels that tell the level's two files apart, and every texel of each from the others.
void Wood(int x, int y, unsigned char* p) {
    for (int k = 0; k < 4; k++) {
        p[k] = static_cast<unsigned char>((y * 16 + x) * 11 + k * 3);
    }
}
void Glass(int x, int y, unsigned char* p) {
    Wood(x, y, p);
    p[0] ^= 0x55;
}

void FillPage(LightmapSet& set, int page, unsigned int seed) {
    unsigned char* texels = set.EnsurePage(page);
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        texels[i] = static_cast<unsigned char>(i * 5 + seed);
    }
}

Bytes PageBytes(const LightmapSet& set, int page) {
    return Bytes(set.pages[page], set.pages[page] + LightmapSet::kPageBytes);
}

// Whether the last frame's caption, inside the box from (714, 12) to (786, 28), is the one the
// loading screen draws for text (every glyph its own colour in the test font).
bool CaptionIs(const char* text) {
    Frame shown = drawtest::ReadFrame();
    DrawLoadingScreen("gui_loading.tga", text, 0.0f);
    Frame expected = drawtest::ReadFrame();
    for (int y = 12; y < 28; y++) {
        if (memcmp(shown.At(714, y), expected.At(714, y), 72 * 3) != 0) {
            return false;
        }
    }
    return true;
}

class ResourceCommandsTest : public drawtest::GlTest {
protected:
    std::string data;

    void SetUp() override {
        InstallResourceHooks();
        data = drawtest::UseScratchData();
        Bytes font = drawtest::FontTga([](int glyph, int, int, unsigned char* rgba) {
            rgba[0] = static_cast<unsigned char>(16 * (glyph % 16) + 8);
            rgba[1] = static_cast<unsigned char>(16 * (glyph / 16) + 8);
            rgba[2] = 0;
        });
        ASSERT_TRUE(test::WriteFile(data + "/gui_font.tga", font.data(), font.size()));
        Bytes wood = drawtest::Tga(16, 16, 24, Wood);
        Bytes glass = drawtest::Tga(8, 8, 32, Glass);
        ASSERT_TRUE(test::WriteFile(data + "/textures/wood.tga", wood.data(), wood.size()));
        ASSERT_TRUE(test::WriteFile(data + "/textures/glass.tga", glass.data(), glass.size()));
        drawtest::ResetEngineTexts(true);  // the loading caption, as start-up fills it
        ASSERT_EQ(g_window.Create("Vantle2\x99", 800, 600, 0), 1);

        // Four pieces: the last frame before the fourth piece's texture shows the bar 3/4 full.
        std::unique_ptr<Location> level(new Location);
        strcpy(level->name, "Test level");
        const float lo[3] = {0, 0, 0}, hi[3] = {10, 10, 10};
        scenetest::AddBoxPiece(*level, "crate", lo, hi, 0, "textures\\wood.tga");
        scenetest::AddBoxPiece(*level, "window", lo, hi, 0, ".\\textures\\glass.tga");
        scenetest::AddBoxPiece(*level, "ghost", lo, hi, 0, "textures\\absent.tga");
        scenetest::AddBoxPiece(*level, "crate2", lo, hi, 0, "textures\\wood.tga");
        FillPage(level->lightmaps, 0, 1);
        FillPage(level->lightmaps, 1, 2);
        ASSERT_EQ(level->Save((data + "/levels/test.vlc").c_str()), 1);
    }
    void TearDown() override {
        g_screenTexture.Release();
        g_textures.Purge();
        g_location.Clear();
        g_location.lightmaps.Clear();
        g_menuLocation.Clear();
        g_menuLocation.lightmaps.Clear();
        g_window.Destroy();
        GlTest::TearDown();
    }

    // The level's textures hold their files' texels in the current context; the absent one is
    // remembered as missing.
    static void ExpectLevelTextures() {
        int slot = g_textures.FindSlot("textures\\wood.tga");
        ASSERT_GE(slot, 0);
        EXPECT_EQ(drawtest::TextureTexels(g_textures.glTextures[slot], GL_RGB, 16, 16),
                  drawtest::Pixels(16, 16, 3, Wood));
        slot = g_textures.FindSlot("textures\\glass.tga");
        ASSERT_GE(slot, 0);
        EXPECT_EQ(drawtest::TextureTexels(g_textures.glTextures[slot], GL_RGBA, 8, 8),
                  drawtest::Pixels(8, 8, 4, Glass));
        slot = g_textures.FindSlot("textures\\absent.tga");
        ASSERT_GE(slot, 0);
        EXPECT_EQ(g_textures.glTextures[slot], 0u);
    }
    // The black box in the top-right corner, (712, 10)-(788, 45), over the grey; the bar's red
    // on its middle row 3/4 full: about 112 where the progress lies over the faint 64.
    static void ExpectBoxWithBarThreeQuarters(bool overGrey) {
        Frame frame = drawtest::ReadFrame();
        EXPECT_TRUE(drawtest::Near(frame.At(714, 12), 0, 0, 0, 2));
        EXPECT_TRUE(drawtest::Near(frame.At(786, 43), 0, 0, 0, 2));
        EXPECT_EQ(drawtest::Near(frame.At(709, 12), 128, 128, 128, 2), overGrey);
        EXPECT_NEAR(frame.At(764, 35)[0], 112, 6);
        EXPECT_NEAR(frame.At(768, 35)[0], 64, 4);
        EXPECT_NEAR(frame.At(780, 35)[0], 64, 4);
    }
    static void PaintGrey() {
        glClearColor(0.5f, 0.5f, 0.5f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

TEST_F(ResourceCommandsTest, LocationLoadCachesEveryTextureBehindTheLoadingBox) {
    PaintGrey();
    ExecuteCommand("location_load levels\\test.vlc");
    ASSERT_EQ(g_location.pieceCount, 4);
    EXPECT_STREQ(g_location.name, "Test level");
    drawtest::SaveArtefact("loading_screen", drawtest::ReadFrame());
    ExpectBoxWithBarThreeQuarters(true);
    EXPECT_TRUE(CaptionIs("LOADING"));
    EXPECT_EQ(drawtest::ConsoleLines("Texture set cached ("), 1);
    ExpectLevelTextures();
    // The pages came up with the level.
    ASSERT_EQ(g_location.lightmaps.pageCount, 2u);
    EXPECT_EQ(drawtest::TextureTexels(g_location.lightmaps.glTextures[1], GL_RGB, 256, 256),
              PageBytes(g_location.lightmaps, 1));
}

TEST_F(ResourceCommandsTest, VidPurgeForgetsEveryTexture) {
    ExecuteCommand("LOCATION_LOAD levels\\test.vlc");
    unsigned int wood = g_textures.glTextures[g_textures.FindSlot("textures\\wood.tga")];
    ASSERT_TRUE(glIsTexture(wood));
    ExecuteCommand("VID_PURGE");
    EXPECT_FALSE(glIsTexture(wood));
    EXPECT_EQ(g_textures.FindSlot("textures\\wood.tga"), -1);
    EXPECT_EQ(g_textures.FindSlot("textures\\absent.tga"), -1);
}

TEST_F(ResourceCommandsTest, VidRestartBringsBackTexturesScreenTextureAndLightmapPages) {
    ExecuteCommand("LOCATION_LOAD levels\\test.vlc");
    Bytes other = drawtest::Tga(4, 4, 24, Wood);
    ASSERT_TRUE(test::WriteFile(data + "/textures/other.tga", other.data(), other.size()));
    ASSERT_EQ(g_textures.Bind("textures\\other.tga"), 1);
    FillPage(g_menuLocation.lightmaps, 0, 9);
    g_menuLocation.lightmaps.Upload();
    g_hooks.createScreenTexture();
    PaintGrey();

    ExecuteCommand("VID_RESTART");
    ASSERT_NE(g_window.renderContext, nullptr);
    // The grey belonged to the old window: the box in the new one was drawn after it was made.
    ExpectBoxWithBarThreeQuarters(false);
    EXPECT_TRUE(CaptionIs("LOADING"));
    ExpectLevelTextures();
    // Only the level's names were bound again: a texture used elsewhere waits for its next use.
    EXPECT_EQ(g_textures.FindSlot("textures\\other.tga"), -1);
    // The screen texture is made again, black, in the new context.
    EXPECT_EQ(drawtest::TextureTexels(g_screenTexture.glTexture, GL_RGB, 512, 512), Bytes(512 * 512 * 3, 0));
    // The pages of the level and of the title scene.
    for (int page = 0; page < 2; page++) {
        EXPECT_EQ(drawtest::TextureTexels(g_location.lightmaps.glTextures[page], GL_RGB, 256, 256),
                  PageBytes(g_location.lightmaps, page))
            << page;
    }
    EXPECT_EQ(drawtest::TextureTexels(g_menuLocation.lightmaps.glTextures[0], GL_RGB, 256, 256),
              PageBytes(g_menuLocation.lightmaps, 0));
    // The restart prints no timing line of its own.
    EXPECT_EQ(drawtest::ConsoleLines("Texture set cached ("), 1);
}

TEST_F(ResourceCommandsTest, LmapBuildBakesAtTheSetQualityRedrawingTheLightingScreen) {
    // A floor of many triangles under one light, so the bake reports progress many times; the
    // stored file has no lightmaps at all.
    std::unique_ptr<Location> lit(new Location);
    const float lo[3] = {0, 0, 0}, hi[3] = {1, 1, 1};
    int floor = scenetest::AddBoxPiece(*lit, "floor", lo, hi, 0, "textures\\wood.tga");
    MakeGridModel(lit->pieces[floor]->model, -200, 0, -200, 25, 16, 0.01f);
    LocationEntity* light = new LocationEntity;
    strcpy(light->name, "light01");
    light->params = strdup("color=1,0.5,0.25\r\ndist=400\r\nshadows=1");
    light->position[1] = 100;
    lit->entities[lit->entityCount++] = light;
    ASSERT_EQ(lit->Save((data + "/levels/lit.vlc").c_str()), 1);
    ExecuteCommand("LOCATION_LOAD levels\\lit.vlc");
    ASSERT_EQ(g_location.lightmaps.pageCount, 0u);

    // What one drawing of the lighting screen counts: its caption's triangles.
    g_window.BeginFrame();
    DrawLoadingScreen("gui_lighting.tga", "LIGHTING", 0.5f);
    unsigned int perScreen = g_window.polyCount;
    ASSERT_GT(perScreen, 0u);
    g_window.BeginFrame();
    ExecuteCommand("LMAP_QUALITY 2");
    ExecuteCommand("LMAP_BUILD");
    EXPECT_EQ(drawtest::ConsoleLines("Lightmaps processed ("), 1);
    // The screen at the start, then again as the bake reports: at least half-way and at the
    // end, at most once per hundredth.
    EXPECT_EQ(g_window.polyCount % perScreen, 0u);
    EXPECT_GE(g_window.polyCount / perScreen, 3u);
    EXPECT_LE(g_window.polyCount / perScreen, 102u);
    EXPECT_TRUE(CaptionIs("LIGHTING"));

    const LightmapSet& built = g_location.lightmaps;
    EXPECT_FLOAT_EQ(built.quality, 0.2f);
    ASSERT_GE(built.pageCount, 1u);
    bool litTexel = false;
    for (unsigned int page = 0; page < built.pageCount; page++) {
        Bytes bytes = PageBytes(built, page);
        EXPECT_EQ(drawtest::TextureTexels(built.glTextures[page], GL_RGB, 256, 256), bytes) << page;
        for (unsigned char b : bytes) {
            litTexel = litTexel || b != 0;
        }
    }
    EXPECT_TRUE(litTexel);
}

}  // namespace
