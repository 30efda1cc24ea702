// The game view and the closing-scene view in real frames: the air bar split
// by the air left, the spare-life icons, the flash, hidden pieces, the glow
// post-effect's trails and the console kept out of them, the fill savings
// keeping the picture, the lighting view, and particles facing the camera
// with their strip cells and additive blending.
#include "render/game_view.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "render/particle_draw.h"
#include "resources/screen_texture.h"
#include "scene_test_util.h"

using drawtest::Frame;
using drawtest::Near;

namespace {

class GameViewTest : public scenetest::SceneTest {
protected:
    static void TearDownTestSuite() {
        g_screenTexture.Release();
        drawtest::CloseWindow();
    }
    void SetUp() override {
        SceneTest::SetUp();
        ASSERT_TRUE(drawtest::SolidTexture("gui\\air_bar_full.tga", 0, 255, 0));
        ASSERT_TRUE(drawtest::SolidTexture("gui\\air_bar_empty.tga", 255, 0, 0));
        ASSERT_TRUE(drawtest::SolidTexture("gui\\lives.tga", 0, 0, 255));
        ASSERT_TRUE(drawtest::SolidTexture("gui\\air.tga", 0, 0, 0, 0));  // see-through
        ASSERT_TRUE(drawtest::SolidTexture("white.tga", 255, 255, 255));
    }
    // The main loop's capture pass: the game view into the screen texture's viewport, copied
    // into it unless asked not to; the frame drawn there.
    static Frame Capture(bool copy = true) {
        glViewport(0, 0, g_screenTexture.width, g_screenTexture.height);
        g_capturePass = 1;
        g_window.BeginFrame();
        DrawGameView();
        Frame frame = drawtest::ReadFrame();
        if (copy) {
            g_screenTexture.Capture();
        }
        g_capturePass = 0;
        glViewport(0, 0, 800, 600);
        return frame;
    }
    GameObject standIn;
};

// Green pixels along the air bar's middle row, from its left end.
int GreenRun(const Frame& frame) {
    int run = 0;
    for (int x = 278; x < 790 && Near(frame.At(x, 564), 0, 255, 0); x++) {
        run++;
    }
    return run;
}

TEST_F(GameViewTest, TheAirBarSplitsAtTheAirLeft) {
    const struct {
        float air;
        int green;
    } cases[] = {{0.0f, 0}, {50.0f, 256}, {100.0f, 512}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.air);
        air = c.air;
        Frame frame = DrawFrame();
        int run = GreenRun(frame);
        EXPECT_NEAR(run, c.green, 1);
        if (c.green < 510) {
            // The empty part takes over where the full part ends and runs to 512 units.
            EXPECT_TRUE(Near(frame.At(278 + c.green + 2, 564), 255, 0, 0));
            EXPECT_TRUE(Near(frame.At(788, 564), 255, 0, 0));
        }
        EXPECT_FALSE(Near(frame.At(792, 564), 255, 0, 0));
    }
}

// Blue pixels of life icons on the row y = 550 at x.
bool IconAt(const Frame& frame, int x) {
    return Near(frame.At(x, 550), 0, 0, 255);
}

TEST_F(GameViewTest, SpareLivesShowOneIconEachBobbingWithTheClock) {
    player = &standIn;
    lives = 1;
    Frame one = DrawFrame();
    lives = 3;
    // With a = clock x 5 + 10, the icon's top moves by cos a: at cos a = -1 its top is on 517.
    animClock = (3.14159265f - 10.0f + 6.2831853f * 2) / 5.0f;
    Frame high = DrawFrame();
    animClock = (0.0f - 10.0f + 6.2831853f * 2) / 5.0f;  // cos a = 1: top at 519
    Frame low = DrawFrame();
    player = nullptr;
    Frame none = DrawFrame();
    // Icon 1 spans about x -3..63, icon 2 is 38 units further: 35..101.
    EXPECT_FALSE(IconAt(one, 20));
    EXPECT_TRUE(IconAt(high, 20));
    EXPECT_TRUE(IconAt(high, 90));
    EXPECT_FALSE(IconAt(high, 120));
    EXPECT_FALSE(IconAt(none, 20));
    EXPECT_TRUE(Near(high.At(20, 517), 0, 0, 255));
    EXPECT_FALSE(Near(low.At(20, 517), 0, 0, 255));
    EXPECT_TRUE(Near(low.At(20, 519), 0, 0, 255));
}

TEST_F(GameViewTest, TheFlashCoversTheViewInItsColourAndTheClosingScenesInWhite) {
    const float blue[3] = {0.0f, 0.0f, 1.0f};
    memcpy(g_window.flashColour, blue, sizeof(blue));
    for (float intensity : {1.0f, 0.5f}) {
        g_window.flashIntensity = intensity;
        Frame frame = DrawFrame();
        int level = static_cast<int>(255 * intensity);
        EXPECT_TRUE(Near(frame.At(5, 5), 0, 0, level, 2));
        EXPECT_TRUE(Near(frame.At(400, 300), 0, 0, level, 2));
        EXPECT_TRUE(Near(frame.At(795, 455), 0, 0, level, 2));
    }
    // The closing scene shows a full air bar whatever the air left, and flashes white whatever
    // colour the last level's flash had.
    air = 0.0f;
    g_window.flashIntensity = 0.0f;
    g_window.BeginFrame();
    DrawClosingScene();
    EXPECT_EQ(GreenRun(drawtest::ReadFrame()), 512);
    g_window.flashIntensity = 1.0f;
    g_window.BeginFrame();
    DrawClosingScene();
    EXPECT_TRUE(Near(drawtest::ReadFrame().At(400, 300), 255, 255, 255));
}

// With debugging on, each active box of each collision shape is outlined in green where its offset
// puts it: here a 40-unit cube moved 30 right, 10 up and 20 back, its near and far faces' sides.
TEST_F(GameViewTest, DebuggingOutlinesTheCollisionBoxesInGreen) {
    const float lo[3] = {-20, -20, -20}, hi[3] = {20, 20, 20}, offset[3] = {30, 10, -20};
    ASSERT_TRUE(g_collision.CreateShape(5));
    g_collision.slots[5]->SetBox(1, lo, hi, offset);
    g_debug = 1;
    Frame frame = DrawFrame();
    std::vector<int> row, column;  // across the middle, and down through the box above the HUD
    for (int i = 0; i < 800; i++) {
        if (Near(frame.At(i, 300), 0, 255, 0)) {
            row.push_back(i);
        }
        if (i < 460 && Near(frame.At(520, i), 0, 255, 0)) {
            column.push_back(i);
        }
    }
    EXPECT_EQ(row, std::vector<int>({432, 437, 564, 586}));
    EXPECT_EQ(column, std::vector<int>({188, 201, 332, 337}));
    g_collision.Clear();
}

// A hidden piece (flag 0x10) is not drawn; with the glow on, a bright piece just hidden leaves a
// fading trail.
TEST_F(GameViewTest, HiddenPiecesAreNotDrawnButTheGlowLeavesFadingTrails) {
    g_screenTexture.CreateForWindow(800, 600);
    ASSERT_NE(g_screenTexture.glTexture, 0u);
    const float lo[3] = {-40, -40, -40}, hi[3] = {40, 40, 40};
    scenetest::AddBoxPiece(g_location, "bright", lo, hi);
    for (int quality : {0, 2}) {
        SCOPED_TRACE(quality);
        g_window.videoQuality = quality;
        // Start from a dark texture, then let the box be seen for a few frames.
        g_location.pieces[0]->model.modelFlag = 0x10;
        for (int i = 0; i < 8; i++) {
            Capture();
        }
        g_location.pieces[0]->model.modelFlag = 0;
        for (int i = 0; i < 3; i++) {
            Capture();
            EXPECT_TRUE(Near(DrawFrame().At(400, 300), 255, 255, 255));
        }
        g_location.pieces[0]->model.modelFlag = 0x10;
        std::vector<int> trail;
        for (int i = 0; i < 4; i++) {
            Capture();
            trail.push_back(DrawFrame().At(400, 300)[0]);
        }
        EXPECT_EQ(trail[0] > 20, quality == 2);
        for (size_t i = 1; i < trail.size(); i++) {
            EXPECT_TRUE(quality ? trail[i] < trail[i - 1] : trail[i] == 0) << i;
        }
    }
}

TEST_F(GameViewTest, TheCaptureNeverHoldsTheConsole) {
    g_screenTexture.CreateForWindow(800, 600);
    g_window.videoQuality = 2;
    g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 0.5f;
    g_console.AddLine("a line that must not glow");
    // A texture name's first miss leaves the last binding on: let every name be looked up once.
    Capture(false);
    Frame closed = Capture(false);
    g_console.visible = 1;
    g_console.slide = 0.0f;
    Frame open = Capture(false);
    EXPECT_EQ(drawtest::MaxDifference(closed, open), 0);
    // On screen the same console does show: half black over the frame, the grey rule (0.7 at
    // half) under it on row 243.
    g_window.videoQuality = 0;
    Frame screen = DrawFrame();
    g_console.visible = 0;
    g_console.slide = -240.0f;
    Frame screenClosed = DrawFrame();
    EXPECT_NEAR(screen.At(400, 100)[0], screenClosed.At(400, 100)[0] / 2, 3);
    EXPECT_NEAR(screen.At(400, 243)[0], (178 + screenClosed.At(400, 243)[0]) / 2, 4);
}

TEST_F(GameViewTest, TheFillSavingsKeepThePicture) {
    // Opaque boxes (24-bit textures) behind and in front of one another, a card with holes
    // (32-bit), and ground running under the HUD bar.
    ASSERT_TRUE(
        drawtest::LoadTexture("stone.tga", drawtest::Tga(16, 16, 24, [](int x, int y, unsigned char* p) {
                                  p[0] = static_cast<unsigned char>(60 + 10 * x);
                                  p[1] = static_cast<unsigned char>(80 + 8 * y);
                                  p[2] = 90;
                              })));
    ASSERT_TRUE(
        drawtest::LoadTexture("holes.tga", drawtest::Tga(16, 16, 32, [](int x, int y, unsigned char* p) {
                                  p[0] = 250;
                                  p[1] = 200;
                                  p[2] = 40;
                                  p[3] = ((x / 4 + y / 4) % 2) ? 255 : 0;
                              })));
    const float far0[3] = {-150, -60, -250}, far1[3] = {150, 90, -200};
    const float mid0[3] = {-30, -20, -40}, mid1[3] = {50, 40, 20};
    const float card0[3] = {-60, -30, 100}, card1[3] = {10, 30, 102};
    const float ground0[3] = {-400, -120, -300}, ground1[3] = {400, -60, 250};
    scenetest::AddBoxPiece(g_location, "card", card0, card1, 0x08, "holes.tga");
    scenetest::AddBoxPiece(g_location, "far", far0, far1, 0, "stone.tga");
    scenetest::AddBoxPiece(g_location, "ground", ground0, ground1, 0, "stone.tga");
    scenetest::AddBoxPiece(g_location, "mid", mid0, mid1, 0, "stone.tga");
    g_camera.position = Vec3{20.0f, 40.0f, 300.0f};
    g_camera.pitch = 8.0f;
    auto draw = [](int savings) {
        g_sceneScissor = savings;
        g_piecesFrontToBack = savings;
        Frame frame = DrawFrame();
        g_sceneScissor = 1;
        g_piecesFrontToBack = 1;
        return frame;
    };
    for (int size : {800, 640, 333}) {
        SCOPED_TRACE(size);
        g_window.Resize(size, size * 3 / 4);
        draw(0);  // every texture name looked up once
        Frame plain = draw(0);
        Frame saved = draw(1);
        EXPECT_EQ(drawtest::MaxDifference(plain, saved), 0);
        // The scene does reach the bar's edge: the savings had rows to keep.
        EXPECT_FALSE(Near(saved.At(size / 2, saved.height * 455 / 600), 0, 0, 0, 2));
    }
}

TEST_F(GameViewTest, TheLightingViewShowsThePagesWithTheirTriangles) {
    const float lo[3] = {-40, -40, -40}, hi[3] = {40, 40, 40};
    int piece = scenetest::AddBoxPiece(g_location, "lit", lo, hi);
    memset(g_location.lightmaps.EnsurePage(0), 200, LightmapSet::kPageBytes);
    // One triangle of the piece on page 0: (0.1, 0.1), (0.5, 0.1), (0.1, 0.5); the rest on none.
    unsigned int count = g_location.pieces[piece]->model.frameTriangles * 3;
    LightmapVertex* coords = static_cast<LightmapVertex*>(calloc(count, sizeof(LightmapVertex)));
    for (unsigned int v = 0; v < count; v++) {
        coords[v] =
            LightmapVertex{v < 3 ? 0u : LightmapSet::kNoPage, v == 1 ? 0.5f : 0.1f, v == 2 ? 0.5f : 0.1f};
    }
    g_location.lightmaps.coords[piece] = coords;
    g_location.lightmaps.coordCounts[piece] = count;
    g_location.lightmaps.Upload();
    g_camera.yaw = 0.0f;  // the box behind the camera: only the view's own drawing shows
    EXPECT_TRUE(Near(DrawFrame().At(700, 200), 0, 0, 0));
    g_debug = 1;
    g_debugMode = 4;
    Frame view = DrawFrame();
    // The page fills (536, 8)-(792, 264); the triangle's top edge runs along y = 8 + 25.6.
    EXPECT_TRUE(Near(view.At(700, 200), 200, 200, 200));
    EXPECT_TRUE(Near(view.At(600, 33), 0, 0, 0));
    EXPECT_TRUE(Near(view.At(600, 40), 200, 200, 200));
    EXPECT_TRUE(Near(view.At(700, 33), 200, 200, 200));  // past the edge's end at x 664
    EXPECT_TRUE(Near(view.At(530, 200), 0, 0, 0));
}

class ParticleDrawTest : public GameViewTest {
protected:
    // The particles seen from (x, 0, z) at yaw.
    static Frame DrawParticleFrame(float x = 0.0f, float z = 300.0f, float yaw = 180.0f) {
        g_window.BeginFrame();
        const float camera[6] = {x, 0.0f, z, 0.0f, yaw, 0.0f};
        memcpy(g_window.renderCamera, camera, sizeof(camera));
        g_window.SetCamera();
        DrawParticles();
        return drawtest::ReadFrame();
    }
    static int WhiteRun(const Frame& frame) {
        int run = 0;
        for (int x = 0; x < 800; x++) {
            run += Near(frame.At(x, 300), 255, 255, 255) ? 1 : 0;
        }
        return run;
    }
    // A white, opaque particle of one size and one frame that lives 100 ticks.
    static ParticleSpawn Plain(const char* texture, float size) {
        ParticleSpawn s;
        memset(&s, 0, sizeof(s));
        s.texture = texture;
        std::fill_n(s.colourStart, 3, 1.0f);
        std::fill_n(s.colourEnd, 3, 1.0f);
        s.sizeStart[0] = s.sizeStart[1] = s.sizeEnd[0] = s.sizeEnd[1] = size;
        s.alphaStart = s.alphaEnd = 1.0f;
        s.frameCount = 1;
        s.lifeRate = 0.01f;
        return s;
    }
};

TEST_F(ParticleDrawTest, AStripShowsTheCellOfTheCurrentFrame) {
    // Four cells side by side: red, green, blue, white.
    const unsigned char cells[4][3] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
    ASSERT_TRUE(drawtest::LoadTexture(
        "strip.tga",
        drawtest::Tga(64, 16, 32, [&](int x, int, unsigned char* p) { memcpy(p, cells[x / 16], 3); })));
    for (int f = 0; f < 4; f++) {
        SCOPED_TRACE(f);
        ResetParticles();
        ParticleSpawn s = Plain("strip.tga", 60.0f);
        s.frameCount = 4;
        s.frame = f + 0.7f;  // the whole part chooses the cell
        SpawnParticle(s);
        UpdateParticles();
        EXPECT_TRUE(Near(DrawParticleFrame().At(400, 300), cells[f][0], cells[f][1], cells[f][2], 12));
    }
}

TEST_F(ParticleDrawTest, QuadsFaceTheCameraAndGrowWithLife) {
    ASSERT_TRUE(drawtest::SolidTexture("dot.tga", 255, 255, 255));
    ParticleSpawn s = Plain("dot.tga", 20.0f);
    s.sizeEnd[0] = s.sizeEnd[1] = 120.0f;
    s.life = 0.5f;
    SpawnParticle(s);
    UpdateParticles();  // life 0.51 in the list: about 71 units wide
    // fov 30 at 300 units: 600 pixels cover 2 x 300 x tan 15 = 160.8 units.
    int run = WhiteRun(DrawParticleFrame());
    EXPECT_NEAR(run, 71.0 * 600 / 160.8, 6);
    // Seen from the side, the quad turns with the camera and keeps its width.
    g_camera.position = Vec3{300.0f, 0.0f, 0.0f};
    EXPECT_NEAR(WhiteRun(DrawParticleFrame(300.0f, 0.0f, 270.0f)), run, 2);
}

TEST_F(ParticleDrawTest, BehaviourOneAddsItsLight) {
    ASSERT_TRUE(drawtest::SolidTexture("half.tga", 100, 100, 100));
    for (int behaviour : {0, 1}) {
        SCOPED_TRACE(behaviour);
        ResetParticles();
        ParticleSpawn s = Plain("half.tga", 60.0f);
        s.behaviour = static_cast<unsigned char>(behaviour);
        s.position[1] = 50.0f;  // above the floor the bounce acts on
        SpawnParticle(s);
        SpawnParticle(s);  // two on one spot
        UpdateParticles();
        // 50 units up: 50 x 600 / 160.8 pixels.
        EXPECT_NEAR(DrawParticleFrame().At(400, 300 - 187)[0], behaviour ? 200 : 100, 6);
    }
}

}  // namespace
