// The texture manager against a real GL context: what lands in GL (levels,
// filters, texels) and the name table (case, missing names, empty names,
// undecodable files, Purge). (The screen texture's capture shows in the glow's
// trails, its fresh black after "VID_RESTART".)
#include "resources/texture_manager.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "draw_test_util.h"

using drawtest::Bytes;

namespace {

// A w x h image whose texels all differ (so a swapped channel or a flipped row shows).
void Pattern(int x, int y, unsigned char* p) {
    int i = y * 16 + x;
    p[0] = static_cast<unsigned char>(i * 7);
    p[1] = static_cast<unsigned char>(255 - i);
    p[2] = static_cast<unsigned char>(i * 13 + 5);
    p[3] = static_cast<unsigned char>(i * 3 + 1);
}

GLint Bound() {
    GLint bound = 0;
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
    return bound;
}

GLint TexInt(GLenum name, int level = -1) {
    GLint value = 0;
    if (level < 0) {
        glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
    } else {
        glGetTexLevelParameteriv(GL_TEXTURE_2D, level, name, &value);
    }
    return value;
}

class TextureManagerTest : public drawtest::GlTest {
protected:
    std::string data;
    TextureManager manager;

    void SetUp() override {
        ASSERT_EQ(g_window.Create("Vantle2\x99", 320, 240, 0), 1);
        data = drawtest::UseScratchData();
        manager.resources = &g_resources;
    }
    void TearDown() override {
        manager.Purge();  // while the context still lives
        g_window.Destroy();
        GlTest::TearDown();
    }
    void Write(const char* name, int w, int h, int bits) {
        Bytes file = drawtest::Tga(w, h, bits, Pattern);
        ASSERT_TRUE(test::WriteFile(data + "/" + name, file.data(), file.size()));
    }
};

TEST_F(TextureManagerTest, OpaqueImagesGetAMipmapChainImagesWithAlphaOneLevel) {
    Write("textures/opaque.tga", 16, 8, 24);
    Write("textures/alpha.tga", 8, 4, 32);
    ASSERT_EQ(manager.Bind("textures\\opaque.tga"), 1);
    EXPECT_EQ(Bound(), static_cast<GLint>(manager.glTextures[manager.FindSlot("textures\\opaque.tga")]));
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(TexInt(GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_NEAREST);
    EXPECT_EQ(TexInt(GL_TEXTURE_WIDTH, 4), 1);  // 16x8, 8x4, 4x2, 2x1, 1x1
    EXPECT_EQ(drawtest::TextureTexels(Bound(), GL_RGB, 16, 8), drawtest::Pixels(16, 8, 3, Pattern));

    ASSERT_EQ(manager.Bind("textures\\alpha.tga"), 1);
    EXPECT_EQ(TexInt(GL_TEXTURE_MIN_FILTER), GL_LINEAR);
    EXPECT_EQ(TexInt(GL_TEXTURE_WIDTH, 1), 0);
    EXPECT_EQ(drawtest::TextureTexels(Bound(), GL_RGBA, 8, 4), drawtest::Pixels(8, 4, 4, Pattern));
}

TEST_F(TextureManagerTest, ANameInAnyCaseIsOneSlotAndAMissingOneIsRememberedUntilPurge) {
    Write("present.tga", 4, 4, 24);
    ASSERT_EQ(manager.Bind("present.tga"), 1);
    GLint present = Bound();
    glBindTexture(GL_TEXTURE_2D, 0);
    ASSERT_EQ(manager.Bind("PRESENT.TGA"), 1);
    EXPECT_EQ(Bound(), present);
    EXPECT_EQ(manager.names[1][0], 0);  // no second upload into a slot of its own

    EXPECT_EQ(manager.Bind("nowhere.tga"), 0);
    // The first miss leaves texturing on with the previous binding.
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_EQ(Bound(), present);
    EXPECT_EQ(manager.Bind("nowhere.tga"), 1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));

    // Appearing later changes nothing: the name is not looked for again until Purge.
    Write("nowhere.tga", 2, 2, 24);
    EXPECT_EQ(manager.Bind("NOWHERE.TGA"), 1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    manager.Purge();
    EXPECT_FALSE(glIsTexture(present));
    ASSERT_EQ(manager.Bind("nowhere.tga"), 1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_NE(Bound(), 0);
}

// A piece textured ".\" has an empty name: it is drawn untextured, never with the texture the
// piece before it bound.
TEST_F(TextureManagerTest, AnEmptyNullOrDetachedBindSwitchesTexturingOff) {
    Write("a.tga", 2, 2, 24);
    TextureManager detached;
    for (int way = 0; way < 3; way++) {
        SCOPED_TRACE(way);
        ASSERT_EQ(manager.Bind("a.tga"), 1);
        if (way == 0) {
            EXPECT_EQ(manager.Bind(""), 1);
            EXPECT_EQ(manager.Bind(""), 1);
        } else {
            EXPECT_EQ(way == 1 ? manager.Bind(nullptr) : detached.Bind("a.tga"), 1);
        }
        EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    }
}

TEST_F(TextureManagerTest, AFileThatDoesNotDecodeIsTriedAgainEveryTime) {
    Bytes file = drawtest::Tga(4, 4, 24, Pattern);
    // One byte short of its last pixel.
    ASSERT_TRUE(test::WriteFile(data + "/broken.tga", file.data(), file.size() - 1));
    EXPECT_EQ(manager.Bind("broken.tga"), 0);
    EXPECT_EQ(manager.Bind("broken.tga"), 0);
    ASSERT_TRUE(test::WriteFile(data + "/broken.tga", file.data(), file.size()));
    EXPECT_EQ(manager.Bind("broken.tga"), 1);
    EXPECT_EQ(drawtest::TextureTexels(Bound(), GL_RGB, 4, 4), drawtest::Pixels(4, 4, 3, Pattern));
}

}  // namespace
