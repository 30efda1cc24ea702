// The title menu's draw in real frames: the lens flare's tests (hidden behind
// a wall, off screen, too far) and the placing of its elements along the axis
// through the centre, the red marks of held white keys; the shipped title
// drawn with the keyboard's depth first is the same picture as without. (The
// credits line drawn at its x is the text draw's own.)
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "app/main_loop.h"
#include "app/random.h"
#include "audio/music_player.h"
#include "app/scene_camera.h"
#include "render/game_view.h"
#include "render/menu_scene.h"
#include "resources/flare_list.h"
#include "resources/model.h"
#include "scene_test_util.h"

using drawtest::Frame;
using drawtest::Near;

namespace {

class MenuDrawTest : public scenetest::SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        memset(g_keyDown, 0, sizeof(g_keyDown));
        g_flares.Clear();
        ASSERT_TRUE(drawtest::SolidTexture("flare.tga", 255, 255, 255));
        ASSERT_TRUE(drawtest::SolidTexture("wall.tga", 40, 40, 40));
    }
    void TearDown() override {
        memset(g_keyDown, 0, sizeof(g_keyDown));
        g_flares.Clear();
        g_menuLocation.Clear();
        g_menuDepthFirst = 1;
        SceneTest::TearDown();
    }
    // What loading the title made, undone: the title is empty again for the tests after this one.
    static void ReleaseTitle() {
        ReleaseMenuScene();
        g_keyboardModel.Clear();
        g_logoTextModel.Clear();
        g_levelTitleText.Reset();
        g_menuLocation.lightmaps.Clear();
    }
    static void Look(float x, float y, float z, float yaw) {
        const float camera[6] = {x, y, z, 0.0f, yaw, 0.0f};
        memcpy(g_window.renderCamera, camera, sizeof(camera));
        g_window.SetCamera();
    }
    // One element: a white square of half-size h at axisPosition.
    static FlareList& OneElement(float axisPosition, float h) {
        FlareElement element = {};
        strcpy(element.name, "flare.tga");
        element.axisPosition = axisPosition;
        element.halfSize = h;
        element.alpha = 1.0f;
        element.grey = 1.0f;
        g_flares.Add(element);
        return g_flares;
    }
    static void SetOrigin(float x, float y, float z) {
        const float origin[3] = {x, y, z};
        memcpy(g_flares.origin, origin, sizeof(origin));
    }
    // Scenery (the location's pieces) from the camera, then the flare on the canvas.
    static Frame DrawWithFlare(const Location& scenery) {
        g_window.BeginFrame();
        Look(0, 0, 300, 180);
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_GREATER, 0.0f);
        DrawLocationPieces(scenery);
        glDisable(GL_ALPHA_TEST);
        g_window.Begin2D();
        DrawFlares(g_flares);
        return drawtest::ReadFrame();
    }
    static int BrightPixels(const Frame& frame) {
        int n = 0;
        for (int y = 0; y < frame.height; y += 2) {
            for (int x = 0; x < frame.width; x += 2) {
                n += frame.At(x, y)[0] > 128 ? 1 : 0;
            }
        }
        return n;
    }
};

TEST_F(MenuDrawTest, AFlareSitsOnItsSourceMirroredUnlessWalledOffScreenOrTooFar) {
    OneElement(1.0f, 10.0f);
    OneElement(-1.0f, 10.0f);
    // 40 units right of the axis at 300 units with fov 30: 40 / 160.8 x 600 = 149 pixels.
    SetOrigin(40, 0, 0);
    Location scenery;
    Frame frame = DrawWithFlare(scenery);
    EXPECT_TRUE(Near(frame.At(549, 300), 255, 255, 255));
    EXPECT_TRUE(Near(frame.At(251, 300), 255, 255, 255));
    EXPECT_TRUE(Near(frame.At(400, 300), 0, 0, 0));
    EXPECT_TRUE(Near(frame.At(549, 320), 0, 0, 0));
    SetOrigin(0, 0, 0);

    const float lo[3] = {-60, -60, 90}, hi[3] = {60, 60, 110};
    scenetest::AddBoxPiece(scenery, "wall", lo, hi, 0, "wall.tga");
    Frame walled = DrawWithFlare(scenery);
    EXPECT_EQ(BrightPixels(walled), 0);  // the wall hides the source: no element at all
    EXPECT_TRUE(Near(walled.At(400, 300), 40, 40, 40));
    scenery.Clear();

    SetOrigin(0, 0, 600);  // behind the camera
    EXPECT_EQ(BrightPixels(DrawWithFlare(scenery)), 0);
    SetOrigin(400, 0, 0);  // beside the view
    EXPECT_EQ(BrightPixels(DrawWithFlare(scenery)), 0);
    SetOrigin(0, 0, -699);  // 999 units away: still drawn
    EXPECT_GT(BrightPixels(DrawWithFlare(scenery)), 0);
    SetOrigin(0, 0, -701);  // 1001 units away
    EXPECT_EQ(BrightPixels(DrawWithFlare(scenery)), 0);
}

TEST_F(MenuDrawTest, DistanceAndCentreFadesDimTheElements) {
    FlareList& flares = OneElement(1.0f, 20.0f);
    flares.elements[0]->distanceFade = 1;
    SetOrigin(0, 0, -200);  // 500 units: half faded
    int level = DrawWithFlare(g_menuLocation).At(400, 300)[0];
    EXPECT_NEAR(level, 128, 4);
    flares.elements[0]->distanceFade = 0;
    flares.elements[0]->centreFade = 1;
    SetOrigin(0, 0, 0);  // on the centre: full
    EXPECT_NEAR(DrawWithFlare(g_menuLocation).At(400, 300)[0], 255, 2);
}

TEST_F(MenuDrawTest, HeldWhiteKeysAreMarkedRed) {
    g_keyDown[0] = 1;
    g_keyDown[18] = 1;
    g_keyDown[20] = 1;  // a black key: no mark
    g_window.BeginFrame();
    DrawMenu();
    Frame frame = drawtest::ReadFrame();
    for (int i = 0; i < kPianoWhiteKeys; i++) {
        SCOPED_TRACE(i);
        const unsigned char* p = frame.At(164 + 32 * i + 14, 430);
        bool marked = g_keyDown[i] != 0;
        EXPECT_EQ(p[0] > 60 && p[1] < 10 && p[2] < 10, marked);
    }
    EXPECT_TRUE(Near(frame.At(164 + 14, 430), 77, 0, 0, 4));
    // Between two keys nothing is marked.
    EXPECT_TRUE(Near(frame.At(164 + 30, 430), 0, 0, 0, 4));
}

TEST_F(MenuDrawTest, TheKeyboardDepthFirstLeavesTheShippedTitleUnchanged) {
    drawtest::UseShippedData();
    LoadMenuScene();
    ASSERT_GT(g_menuLocation.pieceCount, 0) << "no title garden under " << VANTLE_RUN_DIR << "/data";
    ASSERT_GT(g_keyboardModel.frameTriangles, 0u);
    g_camera.position = Vec3{5.9f, 48.0f, 660.5f};
    g_camera.pitch = 4.6f;
    g_window.fov = 20.0f;
    auto draw = [](int depthFirst, int capture) {
        g_menuDepthFirst = depthFirst;
        g_capturePass = static_cast<uint8_t>(capture);
        g_window.BeginFrame();
        DrawMenu();
        g_capturePass = 0;
        return drawtest::ReadFrame();
    };
    draw(0, 0);  // every texture looked up once
    Frame plain = draw(0, 0);
    Frame first = draw(1, 0);
    EXPECT_EQ(drawtest::MaxDifference(plain, first), 0);
    // The glow capture stops before the foreground: no keyboard depth may punch holes in it.
    Frame capture = draw(1, 1);
    Frame captureNoKeyboard = draw(0, 1);
    EXPECT_EQ(drawtest::MaxDifference(capture, captureNoKeyboard), 0);
    EXPECT_GT(drawtest::MaxDifference(capture, first), 0);
    ReleaseTitle();
}

}  // namespace

// The shipped title five seconds in (garden swaying, smoke, leaves and sparkles, the roll
// pressing keys, the dancer, the credits moving) against its picture as taken. When the title
// is changed on purpose, run this test with VANTLE_WRITE_SIGNATURE=1 to take its picture again,
// and look at build/test-artefacts/title_five_seconds.tga before committing it.
TEST_F(MenuDrawTest, TheTitleFiveSecondsInLooksAsItsPictureWasTaken) {
    drawtest::UseShippedData();
    ResetRand();
    LoadMenuScene();
    ASSERT_GT(g_menuLocation.pieceCount, 0) << "no title garden under " << VANTLE_RUN_DIR << "/data";
    g_creditsX = 800.0f;
    g_pianoTick = 0;
    g_menuMusicStarted = 0;
    for (int tick = 0; tick < 250; tick++) {
        UpdateMenu();
    }
    g_window.BeginFrame();
    DrawMenu();
    Frame frame = drawtest::ReadFrame();
    drawtest::SaveArtefact("title_five_seconds", frame);
    EXPECT_EQ(drawtest::BlocksUnlike("title_signature.txt", drawtest::BlockMeans(frame)), 0)
        << "blocks of the title unlike its picture (see title_five_seconds.tga)";
    g_music.StopMusic();
    ReleaseTitle();
    g_menuMusicStarted = 0;
    g_creditsX = 800.0f;
    ResetRand();
}
