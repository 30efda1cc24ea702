// The texture manager and the screen texture against a real GL context: what
// lands in GL (levels, filters, texels), the name table (case, missing names,
// undecodable files, a full table, Purge) and the screen texture's capture.
#include "resources/texture_manager.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "app/gl_window.h"
#include "resources/resource_manager.h"
#include "resources/screen_texture.h"
#include "resources/tga_image.h"
#include "test_support.h"

namespace {

typedef std::vector<unsigned char> Bytes;

// A w x h image of the given depth whose texels all differ (so a swapped channel or a
// flipped row shows), RGB or RGBA.
Bytes Pattern(unsigned int w, unsigned int h, unsigned int bits) {
    unsigned int channels = bits / 8;
    Bytes pixels(w * h * channels);
    for (unsigned int i = 0; i < w * h; i++) {
        pixels[i * channels + 0] = static_cast<unsigned char>(i * 7);
        pixels[i * channels + 1] = static_cast<unsigned char>(255 - i);
        pixels[i * channels + 2] = static_cast<unsigned char>(i * 13 + 5);
        if (channels == 4) {
            pixels[i * 4 + 3] = static_cast<unsigned char>(i * 3 + 1);
        }
    }
    return pixels;
}

Bytes Uniform(unsigned int w, unsigned int h, const unsigned char rgb[3]) {
    Bytes pixels(w * h * 3);
    for (unsigned int i = 0; i < w * h; i++) {
        memcpy(&pixels[i * 3], rgb, 3);
    }
    return pixels;
}

bool WriteTga(const std::string& path, const Bytes& pixels, unsigned int w, unsigned int h, unsigned int bits,
              int runLength) {
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), w, h, bits, runLength, &length);
    if (!file) {
        return false;
    }
    bool ok = test::WriteFile(path, file, length);
    free(file);
    return ok;
}

GLint BoundTexture() {
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    return bound;
}

GLint LevelWidth(int level) {
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_WIDTH, &width);
    return width;
}

GLint MinFilter() {
    GLint filter = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
    return filter;
}

Bytes TexLevel(int level, GLenum format, unsigned int w, unsigned int h) {
    Bytes out(w * h * (format == GL_RGBA ? 4 : 3));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, level, format, GL_UNSIGNED_BYTE, out.data());
    return out;
}

int UsedSlots(const TextureManager& manager) {
    int used = 0;
    for (int i = 0; i < TextureManager::kSlots; i++) {
        used += manager.names[i][0] != 0;
    }
    return used;
}

class TextureManagerTest : public ::testing::Test {
protected:
    std::string dir;
    ResourceManager resources;
    TextureManager* manager = nullptr;

    void SetUp() override {
        ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
        dir = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        ASSERT_EQ(system(("mkdir -p '" + dir + "/data/textures'").c_str()), 0);
        snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s/data", dir.c_str());
        manager = new TextureManager;
        manager->resources = &resources;
    }
    void TearDown() override {
        delete manager;  // purges while the context still lives
        if (g_window.window) {
            g_window.Destroy();
        }
    }
    std::string Data(const char* relative) const { return dir + "/data/" + relative; }
};

TEST_F(TextureManagerTest, OpaqueImagesGetAMipmapChainImagesWithAlphaOneLevel) {
    Bytes opaque = Pattern(16, 8, 24), alpha = Pattern(8, 4, 32);
    ASSERT_TRUE(WriteTga(Data("textures/opaque.tga"), opaque, 16, 8, 24, 0));
    ASSERT_TRUE(WriteTga(Data("textures/alpha.tga"), alpha, 8, 4, 32, 1));

    ASSERT_EQ(manager->Bind("textures\\opaque.tga"), 1);
    int slot = manager->FindSlot("textures\\opaque.tga");
    ASSERT_EQ(slot, 0);
    EXPECT_EQ(BoundTexture(), static_cast<GLint>(manager->glTextures[slot]));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(MinFilter(), GL_LINEAR_MIPMAP_NEAREST);
    // 16x8, 8x4, 4x2, 2x1, 1x1.
    EXPECT_EQ(LevelWidth(0), 16);
    EXPECT_EQ(LevelWidth(3), 2);
    EXPECT_EQ(LevelWidth(4), 1);
    EXPECT_EQ(TexLevel(0, GL_RGB, 16, 8), opaque);

    ASSERT_EQ(manager->Bind("textures\\alpha.tga"), 1);
    EXPECT_EQ(manager->FindSlot("textures\\alpha.tga"), 1);
    EXPECT_EQ(BoundTexture(), static_cast<GLint>(manager->glTextures[1]));
    EXPECT_EQ(MinFilter(), GL_LINEAR);
    EXPECT_EQ(LevelWidth(0), 8);
    EXPECT_EQ(LevelWidth(1), 0);
    EXPECT_EQ(TexLevel(0, GL_RGBA, 8, 4), alpha);
    GLint mag = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &mag);
    EXPECT_EQ(mag, GL_LINEAR);
}

TEST_F(TextureManagerTest, MipmapLevelsAverageTheImage) {
    const unsigned char grey[3] = {200, 100, 50};
    ASSERT_TRUE(WriteTga(Data("grey.tga"), Uniform(8, 8, grey), 8, 8, 24, 1));
    ASSERT_EQ(manager->Bind("grey.tga"), 1);
    Bytes smallest = TexLevel(3, GL_RGB, 1, 1);
    EXPECT_EQ(smallest, Bytes(grey, grey + 3));
}

TEST_F(TextureManagerTest, ANameInAnyCaseBindsTheSameTextureWithoutASecondUpload) {
    ASSERT_TRUE(WriteTga(Data("gui_font.tga"), Pattern(4, 4, 24), 4, 4, 24, 0));
    ASSERT_EQ(manager->Bind("gui_font.tga"), 1);
    GLint first = BoundTexture();
    glBindTexture(GL_TEXTURE_2D, 0);
    // Were the upper-case name loaded again it would take a second slot and a new object.
    ASSERT_EQ(manager->Bind("GUI_FONT.TGA"), 1);
    EXPECT_EQ(BoundTexture(), first);
    EXPECT_EQ(UsedSlots(*manager), 1);
    EXPECT_STREQ(manager->names[0], "gui_font.tga");
    ASSERT_EQ(manager->Bind("Textures\\Mixed.TGA"), 0);
    EXPECT_STREQ(manager->names[1], "textures\\mixed.tga");
}

TEST_F(TextureManagerTest, AMissingNameIsRememberedUntilPurge) {
    ASSERT_TRUE(WriteTga(Data("present.tga"), Pattern(4, 4, 24), 4, 4, 24, 0));
    ASSERT_EQ(manager->Bind("present.tga"), 1);
    GLint present = BoundTexture();

    EXPECT_EQ(manager->Bind("nowhere.tga"), 0);
    // The first miss leaves texturing on with the previous binding.
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(BoundTexture(), present);
    EXPECT_EQ(manager->Bind("nowhere.tga"), 1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));

    // Appearing later changes nothing: the name is not looked for again.
    ASSERT_TRUE(WriteTga(Data("nowhere.tga"), Pattern(2, 2, 24), 2, 2, 24, 0));
    EXPECT_EQ(manager->Bind("NOWHERE.TGA"), 1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(manager->glTextures[manager->FindSlot("nowhere.tga")], 0u);

    manager->Purge();
    EXPECT_EQ(UsedSlots(*manager), 0);
    EXPECT_FALSE(glIsTexture(present));
    ASSERT_EQ(manager->Bind("nowhere.tga"), 1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_NE(manager->glTextures[manager->FindSlot("nowhere.tga")], 0u);
}

TEST_F(TextureManagerTest, AFileThatDoesNotDecodeIsTriedAgainEveryTime) {
    Bytes pixels = Pattern(4, 4, 24);
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), 4, 4, 24, 1, &length);
    ASSERT_NE(file, nullptr);
    // One byte short of its last pixel: the run-length data ends too soon.
    ASSERT_TRUE(test::WriteFile(Data("broken.tga"), file, length - 1));
    EXPECT_EQ(manager->Bind("broken.tga"), 0);
    EXPECT_EQ(manager->Bind("broken.tga"), 0);
    EXPECT_EQ(UsedSlots(*manager), 0);
    ASSERT_TRUE(test::WriteFile(Data("broken.tga"), file, length));
    free(file);
    EXPECT_EQ(manager->Bind("broken.tga"), 1);
    EXPECT_EQ(TexLevel(0, GL_RGB, 4, 4), pixels);
}

TEST_F(TextureManagerTest, AFullTableLoadsNothingNew) {
    ASSERT_TRUE(WriteTga(Data("last.tga"), Pattern(2, 2, 24), 2, 2, 24, 0));
    ASSERT_TRUE(WriteTga(Data("first.tga"), Pattern(2, 2, 24), 2, 2, 24, 0));
    ASSERT_EQ(manager->Bind("first.tga"), 1);
    for (int i = 1; i < TextureManager::kSlots; i++) {
        char name[32];
        snprintf(name, sizeof(name), "missing%03d.tga", i);
        ASSERT_EQ(manager->Bind(name), 0) << name;
    }
    ASSERT_EQ(manager->Bind("first.tga"), 1);
    GLint first = BoundTexture();
    EXPECT_EQ(manager->Bind("last.tga"), 0);
    EXPECT_EQ(manager->Bind("last.tga"), 0);  // not remembered either
    EXPECT_EQ(manager->FindSlot("last.tga"), -1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(BoundTexture(), first);
}

TEST_F(TextureManagerTest, ANullNameOrNoResourcesSwitchesTexturingOff) {
    glEnable(GL_TEXTURE_2D);
    EXPECT_EQ(manager->Bind(nullptr), 1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    ASSERT_TRUE(WriteTga(Data("a.tga"), Pattern(2, 2, 24), 2, 2, 24, 0));
    TextureManager detached;
    glEnable(GL_TEXTURE_2D);
    EXPECT_EQ(detached.Bind("a.tga"), 1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(UsedSlots(detached), 0);
}

TEST_F(TextureManagerTest, TheScreenTextureHoldsTheCapturedFrame) {
    ScreenTexture screen;
    screen.CreateForWindow(g_window.width, g_window.height);
    ASSERT_NE(screen.glTexture, 0u);
    EXPECT_EQ(screen.width, 256u);
    EXPECT_EQ(screen.height, 128u);
    screen.Bind();
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(LevelWidth(0), 256);
    // Created black.
    Bytes black = TexLevel(0, GL_RGB, 256, 128);
    EXPECT_EQ(black, Bytes(black.size(), 0));

    glDisable(GL_SCISSOR_TEST);
    glClearColor(1.0f, 0.0f, 1.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glReadBuffer(GL_BACK);
    screen.Capture();
    screen.Bind();
    Bytes captured = TexLevel(0, GL_RGB, 256, 128);
    const unsigned char magenta[3] = {255, 0, 255};
    EXPECT_EQ(captured, Uniform(256, 128, magenta));

    unsigned int texture = screen.glTexture;
    screen.Release();
    EXPECT_EQ(screen.glTexture, 0u);
    EXPECT_FALSE(glIsTexture(texture));
    screen.Bind();
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
}

}  // namespace
