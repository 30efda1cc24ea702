// Lightmap pages as GL textures under a real X display: one linear-filtered
// 256 x 256 RGB level per page, the texels exactly as baked, textures replaced
// on a second upload and deleted by Clear, a location's pages uploaded as it
// is read and left alone by the keep mode, and a baked page drawn and read
// back as pixels.
#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

#include "app/gl_window.h"
#include "resources/lightmap_builder.h"
#include "resources/lightmap_set.h"
#include "resources/location.h"
#include "resources/model_shapes.h"

namespace {

class LightmapUpload : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(g_window.Create(nullptr, 320, 240, 0), 1); }
    void TearDown() override {
        if (g_window.window) {
            g_window.Destroy();
        }
    }
};

void FillPage(unsigned char* page, int seed) {
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        page[i] = static_cast<unsigned char>(i * 31 + seed * 7 + (i >> 9));
    }
}

std::vector<unsigned char> TextureTexels(unsigned int name) {
    std::vector<unsigned char> texels(LightmapSet::kPageBytes);
    glBindTexture(GL_TEXTURE_2D, name);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, texels.data());
    return texels;
}

TEST_F(LightmapUpload, EachPageBecomesOneLinearLevelWithItsTexels) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    FillPage(set->EnsurePage(0), 1);
    FillPage(set->EnsurePage(1), 2);
    set->Upload();
    ASSERT_NE(set->glTextures[0], 0u);
    ASSERT_NE(set->glTextures[1], 0u);
    EXPECT_NE(set->glTextures[0], set->glTextures[1]);
    EXPECT_EQ(set->glTextures[2], 0u);
    for (int p = 0; p < 2; p++) {
        unsigned int name = set->glTextures[p];
        EXPECT_EQ(glIsTexture(name), GL_TRUE);
        glBindTexture(GL_TEXTURE_2D, name);
        GLint value = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &value);
        EXPECT_EQ(value, GL_LINEAR);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &value);
        EXPECT_EQ(value, GL_LINEAR);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &value);
        EXPECT_EQ(value, GL_REPEAT);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &value);
        EXPECT_EQ(value, 256);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &value);
        EXPECT_EQ(value, 256);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH, &value);
        EXPECT_EQ(value, 0);  // no mipmaps
        EXPECT_TRUE(TextureTexels(name) ==
                    std::vector<unsigned char>(set->pages[p], set->pages[p] + LightmapSet::kPageBytes))
            << "page " << p;
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(LightmapUpload, UploadReplacesAndClearDeletes) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    FillPage(set->EnsurePage(0), 3);
    FillPage(set->EnsurePage(1), 4);
    set->Upload();
    unsigned int before[2] = {set->glTextures[0], set->glTextures[1]};
    // One page fewer and new texels: the old textures go, the new one holds the new texels.
    free(set->pages[1]);
    set->pages[1] = nullptr;
    set->pageCount = 1;
    FillPage(set->pages[0], 5);
    set->Upload();
    EXPECT_EQ(set->glTextures[1], 0u);
    EXPECT_LE((glIsTexture(before[0]) == GL_TRUE) + (glIsTexture(before[1]) == GL_TRUE), 1);
    EXPECT_TRUE(TextureTexels(set->glTextures[0]) ==
                std::vector<unsigned char>(set->pages[0], set->pages[0] + LightmapSet::kPageBytes));
    unsigned int name = set->glTextures[0];
    set->Clear();
    EXPECT_EQ(set->glTextures[0], 0u);
    EXPECT_EQ(glIsTexture(name), GL_FALSE);

    // Names forgotten with a lost context are not deleted: the texture stays.
    FillPage(set->EnsurePage(0), 6);
    set->Upload();
    name = set->glTextures[0];
    set->ForgetTextures();
    set->Clear();
    EXPECT_EQ(glIsTexture(name), GL_TRUE);
    glDeleteTextures(1, &name);
}

TEST_F(LightmapUpload, ABakedLocationIsUploadedWhenReadAndDrawsItsLight) {
    std::unique_ptr<Location> location(new Location);
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    location->pieces[location->pieceCount++] = piece;
    MakeGridModel(piece->model, -8, 0, -8, 16, 1, 0.1f);
    // A light high above, far larger in range: every lumel gets nearly the same colour.
    location->lightmaps.quality = 0.5f;
    location->lightmaps.AddLight(0, 1000, 0, 0.8f, 0.4f, 0.2f, 1e6f, 0);
    BuildLightmaps(*location, 2, nullptr, nullptr);
    std::vector<unsigned char> file(location->Size());
    location->Serialise(file.data());

    std::unique_ptr<Location> loaded(new Location);
    ASSERT_NE(loaded->Parse(file.data(), static_cast<unsigned int>(file.size())), 0u);
    ASSERT_EQ(loaded->lightmaps.pageCount, 1u);
    unsigned int name = loaded->lightmaps.glTextures[0];
    ASSERT_NE(name, 0u);
    EXPECT_TRUE(TextureTexels(name) ==
                std::vector<unsigned char>(loaded->lightmaps.pages[0],
                                           loaded->lightmaps.pages[0] + LightmapSet::kPageBytes));

    // Keep mode, as after loading a level: textures, pages and coordinates stay as they were.
    std::vector<unsigned char> coords(reinterpret_cast<unsigned char*>(loaded->lightmaps.coords[0]),
                                      reinterpret_cast<unsigned char*>(loaded->lightmaps.coords[0] + 6));
    loaded->SetupLighting(1);
    EXPECT_EQ(loaded->lightmaps.glTextures[0], name);
    EXPECT_EQ(glIsTexture(name), GL_TRUE);
    EXPECT_EQ(loaded->lightmaps.pageCount, 1u);
    EXPECT_EQ(memcmp(coords.data(), loaded->lightmaps.coords[0], coords.size()), 0);
    EXPECT_EQ(loaded->lightmaps.lightCount, 0u);  // the location has no light entities

    // Draw the first triangle's rectangle over the whole window and read its centre.
    const LightmapVertex* c = loaded->lightmaps.coords[0];
    float u0 = c[0].u, v0 = c[0].v, u1 = c[2].u, v1 = c[1].v;
    g_window.BeginFrame();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glBegin(GL_QUADS);
    glTexCoord2f(u0, v0);
    glVertex2f(-1, -1);
    glTexCoord2f(u1, v0);
    glVertex2f(1, -1);
    glTexCoord2f(u1, v1);
    glVertex2f(1, 1);
    glTexCoord2f(u0, v1);
    glVertex2f(-1, 1);
    glEnd();
    glDisable(GL_TEXTURE_2D);
    unsigned char rgb[3];
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(160, 120, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
    // 0.8, 0.4 and 0.2 of full, less the fall-off over 1000 units of a million.
    EXPECT_NEAR(rgb[0], 203, 2);
    EXPECT_NEAR(rgb[1], 101, 2);
    EXPECT_NEAR(rgb[2], 50, 2);
}

}  // namespace
