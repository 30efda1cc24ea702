// The console commands that act on textures and locations, run the way a
// player types them, against a real window: "LOCATION_LOAD" pre-caches the
// level's textures and reports its time, "VID_PURGE" forgets them, and
// "VID_RESTART" replaces the GL context and brings back every texture, the
// screen texture and the lightmap pages of the level and the title scene.
#include "app/resource_commands.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <regex>
#include <string>
#include <vector>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "resources/location.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"
#include "resources/screen_texture.h"
#include "resources/texture_manager.h"
#include "resources/tga_image.h"
#include "test_support.h"

namespace {

typedef std::vector<unsigned char> Bytes;

Bytes Pattern(unsigned int w, unsigned int h, unsigned int bits, unsigned int seed) {
    unsigned int channels = bits / 8;
    Bytes pixels(w * h * channels);
    for (unsigned int i = 0; i < pixels.size(); i++) {
        pixels[i] = static_cast<unsigned char>(i * 11 + seed * 29 + 3);
    }
    return pixels;
}

bool WriteTga(const std::string& path, const Bytes& pixels, unsigned int w, unsigned int h,
              unsigned int bits) {
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), w, h, bits, 0, &length);
    bool ok = file && test::WriteFile(path, file, length);
    free(file);
    return ok;
}

LocationPiece* AddBox(Location& location, const char* name, const char* texture, float size) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    strcpy(piece->name, name);
    strcpy(piece->textureName, texture);
    float lo[3] = {0, 0, 0}, hi[3] = {size, size, size};
    MakeBoxModel(piece->model, lo, hi, 0.1f);
    location.pieces[location.pieceCount++] = piece;
    return piece;
}

// Fills a lightmap page with texels that tell pages apart.
void FillPage(LightmapSet& set, int page, unsigned int seed) {
    unsigned char* texels = set.EnsurePage(page);
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        texels[i] = static_cast<unsigned char>(i * 5 + seed);
    }
}

Bytes TextureTexels(unsigned int texture, GLenum format, unsigned int w, unsigned int h) {
    Bytes out(w * h * (format == GL_RGBA ? 4 : 3), 0xEE);
    if (!glIsTexture(texture)) {
        return Bytes();
    }
    glBindTexture(GL_TEXTURE_2D, texture);
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    if (width != static_cast<GLint>(w)) {
        return Bytes();
    }
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, format, GL_UNSIGNED_BYTE, out.data());
    return out;
}

Bytes PageBytes(const LightmapSet& set, int page) {
    return Bytes(set.pages[page], set.pages[page] + LightmapSet::kPageBytes);
}

// Every log line that matches pattern.
int LinesMatching(const char* pattern) {
    std::regex re(pattern);
    int found = 0;
    for (int i = 0; i < Console::kLineCount; i++) {
        found += std::regex_match(g_console.lines[i], re);
    }
    return found;
}

class ResourceCommandsTest : public ::testing::Test {
protected:
    EngineHooks savedHooks;
    char savedDataDirectory[260];
    std::string dir;
    Bytes wood, glass;

    void SetUp() override {
        savedHooks = g_hooks;
        memcpy(savedDataDirectory, g_resources.dataDirectory, sizeof(savedDataDirectory));
        InstallResourceHooks();
        g_hooks.attachTextureManager();
        dir = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_EQ(system(("mkdir -p '" + dir + "/data/textures' '" + dir + "/data/levels'").c_str()), 0);
        snprintf(g_resources.dataDirectory, sizeof(g_resources.dataDirectory), "%s/data", dir.c_str());
        g_window.width = 320;
        g_window.height = 240;
        g_window.fullScreen = 0;
        ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
        g_console.Clear();

        wood = Pattern(16, 16, 24, 1);
        glass = Pattern(8, 8, 32, 2);
        ASSERT_TRUE(WriteTga(dir + "/data/textures/wood.tga", wood, 16, 16, 24));
        ASSERT_TRUE(WriteTga(dir + "/data/textures/glass.tga", glass, 8, 8, 32));
        std::unique_ptr<Location> level(new Location);
        strcpy(level->name, "Test level");
        AddBox(*level, "crate", "textures\\wood.tga", 10);
        AddBox(*level, "window", ".\\textures\\glass.tga", 5);
        AddBox(*level, "ghost", "textures\\absent.tga", 2);
        FillPage(level->lightmaps, 0, 1);
        FillPage(level->lightmaps, 1, 2);
        ASSERT_EQ(level->Save((dir + "/data/levels/test.vlc").c_str()), 1);
    }
    void TearDown() override {
        g_screenTexture.Release();
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

    // The level's two textures hold their files' texels in the current context.
    void ExpectLevelTextures() {
        int woodSlot = g_textures.FindSlot("textures\\wood.tga");
        int glassSlot = g_textures.FindSlot("textures\\glass.tga");
        ASSERT_GE(woodSlot, 0);
        ASSERT_GE(glassSlot, 0);
        EXPECT_EQ(TextureTexels(g_textures.glTextures[woodSlot], GL_RGB, 16, 16), wood);
        EXPECT_EQ(TextureTexels(g_textures.glTextures[glassSlot], GL_RGBA, 8, 8), glass);
        int absent = g_textures.FindSlot("textures\\absent.tga");
        ASSERT_GE(absent, 0);
        EXPECT_EQ(g_textures.glTextures[absent], 0u);
    }
};

TEST_F(ResourceCommandsTest, LocationLoadCachesEveryPieceTextureAndReportsTheTime) {
    ExecuteCommand("LOCATION_LOAD");
    EXPECT_STREQ(g_console.lines[0], "LOCATION_LOAD <NAME>");
    ExecuteCommand("location_load levels\\test.vlc");
    ASSERT_EQ(g_location.pieceCount, 3);
    EXPECT_STREQ(g_location.name, "Test level");
    EXPECT_EQ(LinesMatching("Texture set cached \\([0-9]+ms\\)"), 1);
    // Bound in piece order (the loading screen may take slots of its own in between).
    int wood = g_textures.FindSlot("textures\\wood.tga");
    int glass = g_textures.FindSlot("TEXTURES\\GLASS.TGA");
    int absent = g_textures.FindSlot("textures\\absent.tga");
    ASSERT_GE(wood, 0);
    EXPECT_LT(wood, glass);
    EXPECT_LT(glass, absent);
    ExpectLevelTextures();
    // The pages came up with the level.
    ASSERT_EQ(g_location.lightmaps.pageCount, 2u);
    EXPECT_EQ(TextureTexels(g_location.lightmaps.glTextures[1], GL_RGB, 256, 256),
              PageBytes(g_location.lightmaps, 1));
}

TEST_F(ResourceCommandsTest, VidPurgeForgetsEveryTexture) {
    ExecuteCommand("LOCATION_LOAD levels\\test.vlc");
    unsigned int woodTexture = g_textures.glTextures[g_textures.FindSlot("textures\\wood.tga")];
    ASSERT_TRUE(glIsTexture(woodTexture));
    ExecuteCommand("VID_PURGE");
    EXPECT_FALSE(glIsTexture(woodTexture));
    for (int i = 0; i < TextureManager::kSlots; i++) {
        EXPECT_EQ(g_textures.names[i][0], 0) << i;
        EXPECT_EQ(g_textures.glTextures[i], 0u) << i;
    }
    // The next use loads the file again, edited or not.
    ASSERT_EQ(g_textures.Bind("textures\\wood.tga"), 1);
    EXPECT_EQ(TextureTexels(g_textures.glTextures[g_textures.FindSlot("textures\\wood.tga")], GL_RGB, 16, 16),
              wood);
}

TEST_F(ResourceCommandsTest, VidRestartBringsBackTexturesScreenTextureAndLightmapPages) {
    ExecuteCommand("LOCATION_LOAD levels\\test.vlc");
    ASSERT_TRUE(WriteTga(dir + "/data/textures/other.tga", wood, 16, 16, 24));
    ASSERT_EQ(g_textures.Bind("textures\\other.tga"), 1);
    FillPage(g_menuLocation.lightmaps, 0, 9);
    g_menuLocation.lightmaps.Upload();
    g_hooks.createScreenTexture();
    ASSERT_NE(g_screenTexture.glTexture, 0u);
    SysGlContext* before = g_window.renderContext;

    g_window.width = 640;
    g_window.height = 480;
    ExecuteCommand("VID_RESTART");
    ASSERT_NE(g_window.renderContext, nullptr);
    EXPECT_NE(g_window.renderContext, before);
    EXPECT_EQ(g_window.width, 640);

    ExpectLevelTextures();
    // Only the level's names were bound again: a texture used elsewhere waits for its next use.
    EXPECT_EQ(g_textures.FindSlot("textures\\other.tga"), -1);
    // The screen texture is made again at the new window's size.
    ASSERT_NE(g_screenTexture.glTexture, 0u);
    EXPECT_EQ(g_screenTexture.width, 512u);
    EXPECT_EQ(g_screenTexture.height, 256u);
    Bytes black = TextureTexels(g_screenTexture.glTexture, GL_RGB, 512, 256);
    EXPECT_EQ(black, Bytes(512 * 256 * 3, 0));
    // The pages of the level and of the title scene.
    for (int page = 0; page < 2; page++) {
        EXPECT_EQ(TextureTexels(g_location.lightmaps.glTextures[page], GL_RGB, 256, 256),
                  PageBytes(g_location.lightmaps, page))
            << page;
    }
    EXPECT_EQ(TextureTexels(g_menuLocation.lightmaps.glTextures[0], GL_RGB, 256, 256),
              PageBytes(g_menuLocation.lightmaps, 0));
    // The restart prints no timing line of its own.
    EXPECT_EQ(LinesMatching("Texture set cached \\([0-9]+ms\\)"), 1);
}

TEST_F(ResourceCommandsTest, LmapQualitySetsTheLevelsQuality) {
    g_location.lightmaps.quality = 0.5f;
    ExecuteCommand("LMAP_QUALITY");
    EXPECT_STREQ(g_console.lines[0], "LMAP_QUALITY <VALUE> (0.50)");
    ExecuteCommand("LMAP_QUALITY 16");
    EXPECT_FLOAT_EQ(g_location.lightmaps.quality, 1.6f);
    EXPECT_STREQ(g_console.lines[0], "Lightmap quality set to 1.60");
    ExecuteCommand("lmap_quality 2.5 and the rest");
    EXPECT_FLOAT_EQ(g_location.lightmaps.quality, 0.25f);
}

TEST_F(ResourceCommandsTest, LmapBuildBakesTheLevelAtItsQualityAndUploadsThePages) {
    // A lit floor under a crate; the stored file has no lightmaps at all.
    std::unique_ptr<Location> lit(new Location);
    strcpy(lit->name, "Lit");
    LocationPiece* floor = AddBox(*lit, "floor", "textures\\wood.tga", 1);
    MakeGridModel(floor->model, -100, 0, -100, 50, 4, 0.01f);
    AddBox(*lit, "crate", "textures\\wood.tga", 30);
    LocationEntity* light = new LocationEntity;
    strcpy(light->name, "light01");
    light->params = strdup("color=1,0.5,0.25\r\ndist=400\r\nshadows=1");
    light->position[1] = 120;
    lit->entities[lit->entityCount++] = light;
    ASSERT_EQ(lit->Save((dir + "/data/levels/lit.vlc").c_str()), 1);

    ExecuteCommand("LOCATION_LOAD levels\\lit.vlc");
    ASSERT_EQ(g_location.lightmaps.pageCount, 0u);
    ExecuteCommand("LMAP_QUALITY 2");
    ExecuteCommand("LMAP_BUILD");
    EXPECT_EQ(LinesMatching("Lightmaps processed \\([0-9]+ms\\)"), 1);
    const LightmapSet& built = g_location.lightmaps;
    EXPECT_FLOAT_EQ(built.quality, 0.2f);
    ASSERT_GE(built.pageCount, 1u);
    EXPECT_EQ(built.lightCount, 1u);
    EXPECT_EQ(built.coordCounts[0], g_location.pieces[0]->model.frameTriangles * 3);

    // The same bake done directly, at the same quality, gives the same pages; and the
    // pages in GL are those bytes.
    std::unique_ptr<Location> reference(new Location);
    ASSERT_EQ(reference->Load(&g_resources, "levels\\lit.vlc"), 1);
    reference->lightmaps.quality = 0.2f;
    reference->SetupLighting(0);
    ASSERT_EQ(reference->lightmaps.pageCount, built.pageCount);
    bool litTexel = false;
    for (unsigned int page = 0; page < built.pageCount; page++) {
        Bytes bytes = PageBytes(built, page);
        EXPECT_EQ(bytes, PageBytes(reference->lightmaps, page)) << page;
        EXPECT_EQ(TextureTexels(built.glTextures[page], GL_RGB, 256, 256), bytes) << page;
        for (unsigned char b : bytes) {
            litTexel = litTexel || b != 0;
        }
    }
    EXPECT_TRUE(litTexel);
}

}  // namespace
