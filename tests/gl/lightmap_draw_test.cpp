// Lightmapped meshes in real frames: a textured grid over nine lightmap pages,
// drawn triangle by triangle (two texture units, or two blended passes) and as
// batched page runs, must give one picture. And the pages as GL textures: one
// linear level per page with the texels as baked, replaced by a second upload,
// deleted by Clear, and left alone when forgotten with a lost context. (A
// location's pages uploaded as it loads are checked through "LOCATION_LOAD".)
#include "render/lightmap_draw.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "draw_test_util.h"
#include "render/lightmap_batch.h"
#include "resources/lightmap_set.h"

using drawtest::Frame;

namespace {

const int kCells = 16;
const int kPages = 9;

struct GridMesh {
    std::vector<float> vertices;
    std::vector<LightmapVertex> coords;
    unsigned int triangles = 0;

    void AddVertex(float x, float y, float u, float v, unsigned int page, float lu, float lv) {
        const float vertex[8] = {x, y, 0.0f, 0.0f, 0.0f, 1.0f, u, v};
        vertices.insert(vertices.end(), vertex, vertex + 8);
        coords.push_back(LightmapVertex{page, lu, lv});
    }
};

// A 200 x 200 grid in the z = 0 plane facing +z; cell i gets page i % 9, except every
// seventh cell, which has no page and must stay empty.
GridMesh MakeGrid() {
    GridMesh mesh;
    const float step = 200.0f / kCells;
    for (int cy = 0; cy < kCells; cy++) {
        for (int cx = 0; cx < kCells; cx++) {
            int cell = cy * kCells + cx;
            unsigned int page = cell % 7 == 3 ? 130u : static_cast<unsigned int>(cell % kPages);
            float l0 = 0.1f + 0.05f * (cx % 4);
            // The cell's corners as two triangles, (0, 0) (1, 0) (1, 1) and (0, 0) (1, 1) (0, 1).
            for (int corner : {0, 1, 3, 0, 3, 2}) {
                int dx = corner & 1, dy = corner >> 1;
                mesh.AddVertex(-100.0f + (cx + dx) * step, -100.0f + (cy + dy) * step, (cx + dx) / 4.0f,
                               (cy + dy) / 4.0f, page, l0 + 0.4f * dx, l0 + 0.4f * dy);
            }
            mesh.triangles += 2;
        }
    }
    return mesh;
}

class LightmapDrawTest : public drawtest::GlTest {
protected:
    GLuint base = 0;
    GLuint pages[LightmapSet::kMaxPages] = {};
    GridMesh grid = MakeGrid();

    static void TearDownTestSuite() { drawtest::CloseWindow(); }
    // A 16 x 16 RGB texture of colour(x, y) through the texture manager; its GL name.
    static GLuint Upload(const char* name, const std::function<void(int, int, unsigned char*)>& colour) {
        EXPECT_TRUE(drawtest::LoadTexture(name, drawtest::Tga(16, 16, 24, colour)));
        return g_textures.glTextures[g_textures.FindSlot(name)];
    }

    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(320, 240));
        g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 0.0f;
        base = Upload("base.tga", [](int x, int y, unsigned char* rgb) {
            rgb[0] = static_cast<unsigned char>(128 + 8 * x);
            rgb[1] = static_cast<unsigned char>(255 - 8 * y);
            rgb[2] = 200;
        });
        for (int p = 0; p < kPages; p++) {
            std::string name = "page" + std::to_string(p) + ".tga";
            pages[p] = Upload(name.c_str(), [p](int x, int y, unsigned char* rgb) {
                rgb[0] = static_cast<unsigned char>(40 + 20 * p);
                rgb[1] = static_cast<unsigned char>(60 + 10 * x);
                rgb[2] = static_cast<unsigned char>(60 + 10 * y);
            });
        }
        g_lightmapBatches.Clear();
    }
    void TearDown() override {
        g_lightmapDrawMode = LightmapDrawBatched;
        g_lightmapForceBlend = 0;
        g_lightmapBatches.Clear();
        GlTest::TearDown();
    }

    Frame Draw(int mode, int forceBlend) {
        g_lightmapDrawMode = mode;
        g_lightmapForceBlend = forceBlend;
        g_window.BeginFrame();
        const float camera[6] = {0.0f, 0.0f, 220.0f, 0.0f, 180.0f, 0.0f};  // looking down -z
        memcpy(g_window.renderCamera, camera, sizeof(camera));
        g_window.fov = 60.0f;
        g_window.SetCamera();
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, base);
        g_window.DrawLightmappedMesh(grid.vertices.data(), grid.triangles, grid.coords.data(), pages, 0, 0, 0,
                                     0, 0, 0, 1, 1, 1);
        return drawtest::ReadFrame();
    }

    // The pixel of the middle of grid cell (cx, cy).
    static const unsigned char* Cell(const Frame& frame, int cx, int cy) {
        double wx, wy, wz;
        gluProject(-100.0 + (cx + 0.5) * 12.5, -100.0 + (cy + 0.5) * 12.5, 0.0, g_window.modelview,
                   g_window.projection, g_window.viewport, &wx, &wy, &wz);
        return frame.At(static_cast<int>(wx), g_window.height - 1 - static_cast<int>(wy));
    }
};

TEST_F(LightmapDrawTest, EveryPathGivesTheMultitexturePictureAndPagelessTrianglesStayEmpty) {
    ASSERT_NE(g_glActiveTextureARB, nullptr);  // Mesa has multitexture, so both paths can run
    Frame multitexture = Draw(LightmapDrawLiteral, 0);
    drawtest::SaveArtefact("lightmapped_grid", multitexture);
    // Drawn, and darker than the base alone: cell (5, 5) is page 4, whose red is 120.
    EXPECT_GT(Cell(multitexture, 5, 5)[0], 40);
    EXPECT_LT(Cell(multitexture, 5, 5)[0], 120);
    for (int mode : {LightmapDrawLiteral, LightmapDrawBatched}) {
        for (int blend = 0; blend < 2; blend++) {
            SCOPED_TRACE(testing::Message() << "mode " << mode << " blend " << blend);
            Frame frame = Draw(mode, blend);
            EXPECT_LE(drawtest::MaxDifference(multitexture, frame), 2);
            // Cell 3 (x 3, y 0) has no page; cell 4 next to it has page 4.
            const unsigned char* empty = Cell(frame, 3, 0);
            EXPECT_EQ(empty[0] + empty[1] + empty[2], 0);
            const unsigned char* lit = Cell(frame, 4, 0);
            EXPECT_GT(lit[0] + lit[1] + lit[2], 100);
        }
    }
}

TEST_F(LightmapDrawTest, PixelsAreBaseTimesLightmap) {
    // Replace every page by one flat colour and the base by another: every lit cell reads back
    // as their product.
    GLuint flat = Upload("flat.tga", [](int, int, unsigned char* rgb) {
        rgb[0] = 255;
        rgb[1] = 128;
        rgb[2] = 64;
    });
    base = Upload("white.tga", [](int, int, unsigned char* rgb) {
        rgb[0] = 200;
        rgb[1] = 200;
        rgb[2] = 255;
    });
    for (int p = 0; p < kPages; p++) {
        pages[p] = flat;
    }
    for (int blend = 0; blend < 2; blend++) {
        Frame frame = Draw(LightmapDrawBatched, blend);
        const unsigned char* pixel = Cell(frame, 4, 0);
        EXPECT_NEAR(pixel[0], 200, 2);
        EXPECT_NEAR(pixel[1], 200 * 128 / 255, 2);
        EXPECT_NEAR(pixel[2], 64, 2);
    }
}

TEST_F(LightmapDrawTest, ABatchFollowsLightmapsChangedInPlace) {
    Frame before = Draw(LightmapDrawBatched, 0);
    // Bake "again": every triangle moves to page 0, in the same arrays.
    for (LightmapVertex& coord : grid.coords) {
        if (coord.page < LightmapSet::kNoPage) {
            coord.page = 0;
        }
    }
    Frame batched = Draw(LightmapDrawBatched, 0);
    Frame literal = Draw(LightmapDrawLiteral, 0);
    EXPECT_GT(drawtest::MaxDifference(before, batched), 20);
    EXPECT_LE(drawtest::MaxDifference(literal, batched), 1);
}

drawtest::Bytes FillPage(unsigned char* page, int seed) {
    for (int i = 0; i < LightmapSet::kPageBytes; i++) {
        page[i] = static_cast<unsigned char>(i * 31 + seed * 7 + (i >> 9));
    }
    return drawtest::Bytes(page, page + LightmapSet::kPageBytes);
}

TEST_F(LightmapDrawTest, PagesUploadAsOneLinearLevelReplacedByTheNextUploadAndDeletedByClear) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    FillPage(set->EnsurePage(0), 3);
    drawtest::Bytes second = FillPage(set->EnsurePage(1), 4);
    set->Upload();
    unsigned int before[2] = {set->glTextures[0], set->glTextures[1]};
    EXPECT_EQ(drawtest::TextureTexels(before[1], GL_RGB, 256, 256), second);
    GLint filter = 0, level1 = -1;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH, &level1);
    EXPECT_EQ(filter, GL_LINEAR);
    EXPECT_EQ(level1, 0);  // no mipmaps

    // One page fewer and new texels: the old textures go, the new one holds the new texels.
    free(set->pages[1]);
    set->pages[1] = nullptr;
    set->pageCount = 1;
    drawtest::Bytes first = FillPage(set->pages[0], 5);
    set->Upload();
    EXPECT_EQ(set->glTextures[1], 0u);
    EXPECT_LE((glIsTexture(before[0]) == GL_TRUE) + (glIsTexture(before[1]) == GL_TRUE), 1);
    EXPECT_EQ(drawtest::TextureTexels(set->glTextures[0], GL_RGB, 256, 256), first);
    unsigned int name = set->glTextures[0];
    set->Clear();
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

}  // namespace
