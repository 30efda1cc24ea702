// The game view and the closing-scene view in real frames: the air bar split
// by the air left, the spare-life icons, the flash fading over ten game ticks,
// hidden and culled pieces, the glow post-effect's trails and the console kept
// out of them, the closing scene's frame, and particles facing the camera with
// their strip cells and additive blending.
#include "render/game_view.h"

#include <gtest/gtest.h>

#include "game/game_update.h"
#include "render/particle_draw.h"
#include "resources/screen_texture.h"
#include "scene_test_util.h"

using drawtest::Frame;
using scenetest::Near;

namespace {

class GameViewTest : public ::testing::Test {
protected:
    static void TearDownTestSuite() {
        scenetest::ResetGameState();
        g_screenTexture.Release();
        drawtest::CloseWindow();
    }
    void SetUp() override {
        ASSERT_TRUE(drawtest::OpenWindow(800, 600));
        g_window.Resize(800, 600);
        scenetest::ResetGameState();
        ASSERT_TRUE(scenetest::SolidTexture("gui\\air_bar_full.tga", 0, 255, 0));
        ASSERT_TRUE(scenetest::SolidTexture("gui\\air_bar_empty.tga", 255, 0, 0));
        ASSERT_TRUE(scenetest::SolidTexture("gui\\lives.tga", 0, 0, 255));
        ASSERT_TRUE(scenetest::SolidTexture("gui\\air.tga", 0, 0, 0, 0));  // see-through
        ASSERT_TRUE(scenetest::SolidTexture("white.tga", 255, 255, 255));
    }
    void TearDown() override {
        scenetest::ResetGameState();
        drawtest::PurgeTextures();
    }
    static Frame DrawFrame() {
        g_window.BeginFrame();
        DrawGameView();
        return drawtest::ReadFrame();
    }
    // The main loop's capture pass: the game view into the screen texture's viewport.
    static void Capture() {
        glViewport(0, 0, g_screenTexture.width, g_screenTexture.height);
        g_capturePass = 1;
        g_window.BeginFrame();
        DrawGameView();
        g_screenTexture.Capture();
        g_capturePass = 0;
        glViewport(0, 0, 800, 600);
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

TEST_F(GameViewTest, SpareLivesShowOneIconEachAndOnlyWithAPlayer) {
    player = &standIn;
    lives = 1;
    Frame one = DrawFrame();
    lives = 3;
    Frame three = DrawFrame();
    player = nullptr;
    Frame none = DrawFrame();
    // Icon 1 spans about x -3..63, icon 2 is 38 units further: 35..101.
    EXPECT_FALSE(IconAt(one, 20));
    EXPECT_TRUE(IconAt(three, 20));
    EXPECT_TRUE(IconAt(three, 90));
    EXPECT_FALSE(IconAt(three, 120));
    EXPECT_FALSE(IconAt(none, 20));
}

TEST_F(GameViewTest, TheLifeIconsBobWithTheClock) {
    player = &standIn;
    lives = 2;
    // With a = clock x 5 + 10, the icon's top moves by cos a: find two clocks a unit apart.
    animClock = (3.14159265f - 10.0f + 6.2831853f * 2) / 5.0f;  // cos a = -1: top at 517
    Frame high = DrawFrame();
    animClock = (0.0f - 10.0f + 6.2831853f * 2) / 5.0f;  // cos a = 1: top at 519
    Frame low = DrawFrame();
    EXPECT_TRUE(IconAt(high, 20));
    EXPECT_TRUE(Near(high.At(20, 517), 0, 0, 255));
    EXPECT_FALSE(Near(low.At(20, 517), 0, 0, 255));
    EXPECT_TRUE(Near(low.At(20, 519), 0, 0, 255));
}

TEST_F(GameViewTest, AWhiteFlashCoversTheViewAndFadesInTenTicks) {
    g_window.flashColour[0] = g_window.flashColour[1] = g_window.flashColour[2] = 1.0f;
    g_window.flashIntensity = 1.0f;
    Frame start = DrawFrame();
    EXPECT_TRUE(Near(start.At(5, 5), 255, 255, 255));
    EXPECT_TRUE(Near(start.At(400, 300), 255, 255, 255));
    EXPECT_TRUE(Near(start.At(795, 455), 255, 255, 255));
    int last = 255;
    for (int tick = 1; tick <= 10; tick++) {
        UpdateGame();
        Frame frame = DrawFrame();
        int level = frame.At(400, 300)[0];
        EXPECT_LT(level, last) << "tick " << tick;
        last = level;
    }
    EXPECT_LE(last, 1);
}

TEST_F(GameViewTest, HiddenAndOffScreenPiecesAreNotDrawn) {
    const float lo[3] = {-40, -40, -40}, hi[3] = {40, 40, 40};
    scenetest::AddBoxPiece(g_location, "seen", lo, hi);
    Frame shown = DrawFrame();
    EXPECT_TRUE(Near(shown.At(400, 300), 255, 255, 255));

    g_location.pieces[0]->model.modelFlag = 0x10;
    Frame hidden = DrawFrame();
    EXPECT_TRUE(Near(hidden.At(400, 300), 0, 0, 0));

    // Behind the camera: culled before anything is submitted.
    g_location.pieces[0]->model.modelFlag = 0;
    g_camera.yaw = 0.0f;
    g_window.polyCount = 0;
    DrawFrame();
    EXPECT_EQ(g_window.polyCount, 0u);
}

TEST_F(GameViewTest, ThePostEffectLeavesFadingTrails) {
    g_screenTexture.CreateForWindow(800, 600);
    ASSERT_NE(g_screenTexture.glTexture, 0u);
    const float lo[3] = {-40, -40, -40}, hi[3] = {40, 40, 40};
    scenetest::AddBoxPiece(g_location, "bright", lo, hi);
    for (int quality : {0, 2}) {
        SCOPED_TRACE(quality);
        g_window.videoQuality = quality;
        g_location.pieces[0]->model.modelFlag = 0;
        // Start from a dark texture, then let the box be seen for a few frames.
        g_location.pieces[0]->model.modelFlag = 0x10;
        for (int i = 0; i < 8; i++) {
            Capture();
        }
        g_location.pieces[0]->model.modelFlag = 0;
        for (int i = 0; i < 3; i++) {
            Capture();
            DrawFrame();
        }
        g_location.pieces[0]->model.modelFlag = 0x10;
        std::vector<int> trail;
        for (int i = 0; i < 4; i++) {
            Capture();
            trail.push_back(DrawFrame().At(400, 300)[0]);
        }
        if (quality == 0) {
            for (int level : trail) {
                EXPECT_EQ(level, 0);
            }
        } else {
            EXPECT_GT(trail[0], 20);
            for (size_t i = 1; i < trail.size(); i++) {
                EXPECT_LT(trail[i], trail[i - 1]);
            }
        }
    }
}

TEST_F(GameViewTest, TheCaptureNeverHoldsTheConsole) {
    g_screenTexture.CreateForWindow(800, 600);
    g_window.videoQuality = 2;
    g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 0.5f;
    g_console.AddLine("a line that must not glow");
    auto captureFrame = [&]() {
        glViewport(0, 0, g_screenTexture.width, g_screenTexture.height);
        g_capturePass = 1;
        g_window.BeginFrame();
        DrawGameView();
        Frame frame = drawtest::ReadFrame();
        g_capturePass = 0;
        glViewport(0, 0, 800, 600);
        return frame;
    };
    // A texture name's first miss leaves the last binding on: let every name be looked up once.
    captureFrame();
    Frame closed = captureFrame();
    g_console.visible = 1;
    g_console.slide = 0.0f;
    Frame open = captureFrame();
    EXPECT_EQ(drawtest::MaxDifference(closed, open), 0);
    // On screen the same console does show: the panel darkens the top rows.
    g_window.videoQuality = 0;
    Frame screen = DrawFrame();
    g_console.visible = 0;
    g_console.slide = -240.0f;
    Frame screenClosed = DrawFrame();
    EXPECT_LT(screen.At(400, 100)[0] + 40, screenClosed.At(400, 100)[0]);
}

TEST_F(GameViewTest, TheClosingSceneShowsAFullAirBarAndAWhiteFlash) {
    air = 0.0f;  // the closing scene ignores the air left
    g_window.flashColour[0] = 0.0f;
    g_window.flashColour[1] = 0.0f;
    g_window.flashColour[2] = 1.0f;
    g_window.flashIntensity = 0.0f;
    g_window.BeginFrame();
    DrawClosingScene();
    Frame frame = drawtest::ReadFrame();
    EXPECT_EQ(GreenRun(frame), 512);
    g_window.flashIntensity = 1.0f;
    g_window.BeginFrame();
    DrawClosingScene();
    Frame flash = drawtest::ReadFrame();
    // Always white, whatever colour the last level's flash had.
    EXPECT_TRUE(Near(flash.At(400, 300), 255, 255, 255));
}

TEST_F(GameViewTest, TheFillSavingsKeepThePicture) {
    // Opaque boxes (24-bit textures) behind and in front of one another, a card with holes
    // (32-bit), and ground running under the HUD bar.
    ASSERT_TRUE(scenetest::PatternTexture("stone.tga", 24, 16, [](int x, int y, unsigned char* p) {
        p[0] = static_cast<unsigned char>(60 + 10 * x);
        p[1] = static_cast<unsigned char>(80 + 8 * y);
        p[2] = 90;
    }));
    ASSERT_TRUE(scenetest::PatternTexture("holes.tga", 32, 16, [](int x, int y, unsigned char* p) {
        p[0] = 250;
        p[1] = 200;
        p[2] = 40;
        p[3] = ((x / 4 + y / 4) % 2) ? 255 : 0;
    }));
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
        g_window.polyCount = 0;
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
        unsigned int plainTriangles = g_window.polyCount;
        Frame saved = draw(1);
        EXPECT_EQ(drawtest::MaxDifference(plain, saved), 0);
        EXPECT_EQ(g_window.polyCount, plainTriangles);
        // The scene does reach the bar's edge: the savings had rows to keep.
        EXPECT_FALSE(Near(saved.At(size / 2, saved.height * 455 / 600), 0, 0, 0, 2));
    }
    g_window.Resize(800, 600);
}

TEST_F(GameViewTest, TheLightingViewShowsThePagesWithTheirTriangles) {
    const float lo[3] = {-40, -40, -40}, hi[3] = {40, 40, 40};
    int piece = scenetest::AddBoxPiece(g_location, "lit", lo, hi);
    unsigned char* page = g_location.lightmaps.EnsurePage(0);
    ASSERT_NE(page, nullptr);
    memset(page, 200, LightmapSet::kPageBytes);
    // One triangle of the piece on page 0: (0.1, 0.1), (0.5, 0.1), (0.1, 0.5); the rest on none.
    unsigned int count = g_location.pieces[piece]->model.frameTriangles * 3;
    LightmapVertex* coords = static_cast<LightmapVertex*>(calloc(count, sizeof(LightmapVertex)));
    for (unsigned int v = 0; v < count; v++) {
        coords[v].page = LightmapSet::kNoPage;
    }
    const float uv[3][2] = {{0.1f, 0.1f}, {0.5f, 0.1f}, {0.1f, 0.5f}};
    for (int v = 0; v < 3; v++) {
        coords[v] = LightmapVertex{0, uv[v][0], uv[v][1]};
    }
    g_location.lightmaps.coords[piece] = coords;
    g_location.lightmaps.coordCounts[piece] = count;
    g_location.lightmaps.Upload();
    g_camera.yaw = 0.0f;  // the box behind the camera: only the view's own drawing shows
    Frame normal = DrawFrame();
    EXPECT_TRUE(Near(normal.At(700, 200), 0, 0, 0));
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
    static Frame DrawParticleFrame() {
        g_window.BeginFrame();
        for (int i = 0; i < 6; i++) {
            g_window.renderCamera[i] = 0.0f;
        }
        g_window.renderCamera[2] = 300.0f;
        g_window.renderCamera[4] = 180.0f;
        g_window.SetCamera();
        DrawParticles();
        return drawtest::ReadFrame();
    }
    static ParticleSpawn Plain(const char* texture, float size) {
        ParticleSpawn s;
        memset(&s, 0, sizeof(s));
        s.texture = texture;
        for (int k = 0; k < 3; k++) {
            s.colourStart[k] = s.colourEnd[k] = 1.0f;
        }
        s.sizeStart[0] = s.sizeStart[1] = s.sizeEnd[0] = s.sizeEnd[1] = size;
        s.alphaStart = s.alphaEnd = 1.0f;
        s.frameCount = 1;
        s.lifeRate = 0.01f;
        return s;
    }
};

TEST_F(ParticleDrawTest, AStripShowsTheCellOfTheCurrentFrame) {
    // Four cells side by side: red, green, blue, white.
    std::vector<unsigned char> pixels(64 * 16 * 4);
    const unsigned char cells[4][3] = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};
    for (int y = 0; y < 16; y++) {
        for (int x = 0; x < 64; x++) {
            unsigned char* p = &pixels[(y * 64 + x) * 4];
            p[0] = cells[x / 16][0];
            p[1] = cells[x / 16][1];
            p[2] = cells[x / 16][2];
            p[3] = 255;
        }
    }
    unsigned int length = 0;
    unsigned char* file = TgaEncode(pixels.data(), 64, 16, 32, 0, &length);
    g_textures.resources = &g_resources;
    ASSERT_EQ(g_textures.LoadSlot("strip.tga", file, length, 200), 1);
    free(file);
    for (int f = 0; f < 4; f++) {
        SCOPED_TRACE(f);
        ResetParticles();
        ParticleSpawn s = Plain("strip.tga", 60.0f);
        s.frameCount = 4;
        s.frame = f + 0.7f;  // the whole part chooses the cell
        SpawnParticle(s);
        UpdateParticles();
        Frame frame = DrawParticleFrame();
        EXPECT_TRUE(Near(frame.At(400, 300), cells[f][0], cells[f][1], cells[f][2], 12));
    }
}

TEST_F(ParticleDrawTest, QuadsFaceTheCameraAndGrowWithLife) {
    ASSERT_TRUE(scenetest::SolidTexture("dot.tga", 255, 255, 255));
    ParticleSpawn s = Plain("dot.tga", 20.0f);
    s.sizeEnd[0] = s.sizeEnd[1] = 120.0f;
    s.life = 0.5f;
    SpawnParticle(s);
    UpdateParticles();  // life 0.51 in the list: about 71 units wide
    Frame straight = DrawParticleFrame();
    // fov 30 at 300 units: 600 pixels cover 2 x 300 x tan 15 = 160.8 units.
    int run = 0;
    for (int x = 0; x < 800; x++) {
        run += Near(straight.At(x, 300), 255, 255, 255) ? 1 : 0;
    }
    EXPECT_NEAR(run, 71.0 * 600 / 160.8, 6);
    // Seen from the side, the quad turns with the camera and keeps its width.
    g_camera.position = Vec3{300.0f, 0.0f, 0.0f};
    g_window.BeginFrame();
    const float side[6] = {300.0f, 0.0f, 0.0f, 0.0f, 270.0f, 0.0f};
    for (int i = 0; i < 6; i++) {
        g_window.renderCamera[i] = side[i];
    }
    g_window.SetCamera();
    DrawParticles();
    Frame turned = drawtest::ReadFrame();
    int turnedRun = 0;
    for (int x = 0; x < 800; x++) {
        turnedRun += Near(turned.At(x, 300), 255, 255, 255) ? 1 : 0;
    }
    EXPECT_NEAR(turnedRun, run, 2);
}

TEST_F(ParticleDrawTest, BehaviourOneAddsItsLight) {
    ASSERT_TRUE(scenetest::SolidTexture("half.tga", 100, 100, 100));
    for (int behaviour : {0, 1}) {
        SCOPED_TRACE(behaviour);
        ResetParticles();
        ParticleSpawn s = Plain("half.tga", 60.0f);
        s.behaviour = static_cast<unsigned char>(behaviour);
        s.position[1] = 50.0f;  // above the floor the bounce acts on
        SpawnParticle(s);
        SpawnParticle(s);  // two on one spot
        UpdateParticles();
        Frame frame = DrawParticleFrame();
        int level = frame.At(400, 300 - 187)[0];  // 50 units up: 50 x 600 / 160.8 pixels
        EXPECT_NEAR(level, behaviour ? 200 : 100, 6);
    }
}

}  // namespace
