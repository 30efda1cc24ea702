// The title menu's tick, headless: which keys start a game and when, the
// piano roll (its file, its loop starting at tick 9, the keys it moves), the
// credits line scrolling and wrapping, and the swaying garden.
#include "render/menu_scene.h"

#include <cmath>
#include <cstring>
#include <vector>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "game_fixture.h"
#include "platform/sys_keys.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"
#include "test_support.h"
#include "ui/text_batch.h"

namespace {

class MenuSceneTest : public test::GameFixture {
protected:
    void SetUp() override {
        GameFixture::SetUp();
        g_scene = SceneMenu;
        g_menuMusicStarted = 0;
        g_pianoEventCount = 0;
        g_pianoTick = 0;
        memset(g_keyDown, 0, sizeof(g_keyDown));
        g_creditsX = 800.0f;
        g_menuLocation.Clear();
        g_keyboardModel.Clear();
    }
    void TearDown() override {
        g_menuLocation.Clear();
        g_keyboardModel.Clear();
        ReleaseMenuScene();
        GameFixture::TearDown();
    }
    // A level 01 with a player, so that starting a game lands in the game scene. The fixture
    // leaves the lightmaps of an earlier test's level in place; they are not this level's.
    void SaveLevelOne() {
        g_location.lightmaps.Clear();
        AddEntity("player", 0, 0, 0);
        SaveLocation(g_location, "01.vlc");
        g_location.Clear();
    }
    void WriteRoll(const std::vector<PianoEvent>& events) {
        std::vector<unsigned char> bytes(PianoRollSize(events.size()));
        SerialisePianoRoll(events.data(), events.size(), bytes.data());
        test::WriteFile(dataDir + "/piano.vpr", bytes.data(), bytes.size());
    }
    // A keyboard model with room for the body and all 32 keys, every key at rest.
    static void MakeKeyboard() {
        ASSERT_EQ(MakeGridModel(g_keyboardModel, 0, 0, 0, 1, 13, 1), 1);  // 1014 vertices
        for (int i = 0; i < kPianoKeyCount; i++) {
            SetKey(kPianoKeys[i].keyNumber, kPianoKeys[i].restZ);
        }
    }
    static void SetKey(int keyNumber, float z) {
        for (int v = 0; v < kKeyboardKeyVertices; v++) {
            KeyVertex(keyNumber, v)[2] = z;
        }
    }
    static float* KeyVertex(int keyNumber, int v) {
        return g_keyboardModel.frameVertices[kKeyboardBodyVertices + kKeyboardKeyVertices * keyNumber + v]
            .position;
    }
    // Every vertex of the key has depth z.
    static bool KeyAt(int keyNumber, float z) {
        for (int v = 0; v < kKeyboardKeyVertices; v++) {
            if (fabsf(KeyVertex(keyNumber, v)[2] - z) > 1e-5f) {
                return false;
            }
        }
        return true;
    }
};

TEST_F(MenuSceneTest, NoKeyStartsAGameInTheFirstSecondThenThreeLivesAtLevelOne) {
    SaveLevelOne();
    lives = 0;
    level = 7;
    g_keyDown[4] = 1;
    int ticks = 0;
    while (animClock + 0.02f <= 1.0f) {
        Key(VK_RETURN, 1);
        UpdateMenu();
        ticks++;
        ASSERT_EQ(g_scene, SceneMenu) << "tick " << ticks;
    }
    EXPECT_GE(ticks, 49);
    // The key is still held once the second is over: it starts the game.
    for (int i = 0; i < 3 && g_scene == SceneMenu; i++) {
        UpdateMenu();
    }
    EXPECT_EQ(g_scene, SceneGame);
    EXPECT_EQ(g_window.keys[VK_RETURN], 0);
    EXPECT_EQ(lives, 3);
    EXPECT_EQ(level, 1);
    EXPECT_NE(player, nullptr);
    EXPECT_EQ(g_keyDown[4], 0);
}

TEST_F(MenuSceneTest, OnlyPrintableNavigationAndFunctionKeysStartAGame) {
    animClock = 1.5f;
    const int starters[] = {VK_RETURN, VK_SPACE, 'A', 'Z', '1', VK_LEFT, VK_DOWN, VK_F1, 149};
    for (int key : starters) {
        memset(g_window.keys, 0, sizeof(g_window.keys));
        Key(key, 1);
        EXPECT_EQ(MenuStartKey(), key);
    }
    // Modifiers, Escape and keys past the table's end never do, and are left as they were.
    memset(g_window.keys, 0, sizeof(g_window.keys));
    const int never[] = {VK_SHIFT, VK_CONTROL, VK_MENU, VK_PAUSE, VK_CAPITAL, VK_ESCAPE, 14, 29, 150};
    for (int key : never) {
        Key(key, 1);
    }
    UpdateMenu();
    EXPECT_EQ(g_scene, SceneMenu);
    for (int key : never) {
        EXPECT_EQ(g_window.keys[key], 1) << key;
    }
}

TEST_F(MenuSceneTest, WithoutLevelOneTheGameEndsWonAtOnce) {
    animClock = 1.5f;
    Key('X', 1);
    UpdateMenu();
    EXPECT_EQ(g_scene, SceneEnd);
    EXPECT_STREQ(endScenePath, "levels\\done.vlc");
}

TEST_F(MenuSceneTest, APianoEventAtTickFiveFiresOnlyFromTheSecondPass) {
    WriteRoll({{3, 1, {0, 0}, 5}, {3, 0, {0, 0}, 20}, {7, 1, {0, 0}, 9}});
    UpdateMenu();
    ASSERT_EQ(g_pianoEventCount, 3u);
    EXPECT_EQ(g_pianoTick, 10u);
    EXPECT_EQ(g_keyDown[7], 1);  // tick 9 is the first one played
    // The rest of the first pass: 1983 is the last tick, then 0 again.
    int calls = 1;
    while (g_pianoTick != 5) {
        UpdateMenu();
        calls++;
        ASSERT_EQ(g_keyDown[3], 0) << "call " << calls;
    }
    EXPECT_EQ(calls, 1 + (1984 - 10) + 5);
    UpdateMenu();
    EXPECT_EQ(g_keyDown[3], 1);
    for (int i = 0; i < 15; i++) {
        UpdateMenu();
    }
    EXPECT_EQ(g_keyDown[3], 0);  // released at tick 20
    EXPECT_EQ(g_menuMusicStarted, 1);
}

TEST_F(MenuSceneTest, HeldKeysTravelInTwoTicksAndOnlyTheirOwnVertices) {
    MakeKeyboard();
    // State index 22 is key number 1, a black key; 0 is key 0, a white one.
    g_keyDown[22] = 1;
    g_keyDown[0] = 1;
    g_pianoTick = 100;  // clear of the roll's start
    g_menuMusicStarted = 1;
    float body = g_keyboardModel.frameVertices[kKeyboardBodyVertices - 1].position[2];
    UpdateMenu();
    EXPECT_TRUE(KeyAt(1, 0.698f));
    EXPECT_TRUE(KeyAt(0, 0.397f));
    UpdateMenu();
    EXPECT_TRUE(KeyAt(1, 0.598f));
    EXPECT_TRUE(KeyAt(0, 0.297f));
    UpdateMenu();
    EXPECT_TRUE(KeyAt(1, 0.598f));
    EXPECT_TRUE(KeyAt(2, 0.497f));
    EXPECT_TRUE(KeyAt(17, 0.498f));
    // The body is never moved.
    EXPECT_FLOAT_EQ(g_keyboardModel.frameVertices[kKeyboardBodyVertices - 1].position[2], body);
    g_keyDown[22] = 0;
    UpdateMenu();
    UpdateMenu();
    EXPECT_TRUE(KeyAt(1, 0.798f));
}

TEST_F(MenuSceneTest, AMissingGardenIsReportedAndTheMenuRunsOnWithItsCredits) {
    g_console.Clear();
    LoadMenuScene();
    EXPECT_STREQ(g_console.lines[0], "Error loading logo file!");
    EXPECT_FLOAT_EQ(g_window.flashIntensity, 1.0f);
    for (int i = 0; i < 50; i++) {
        UpdateMenu();
    }
    EXPECT_EQ(g_scene, SceneMenu);
    EXPECT_LE(g_window.flashIntensity, 0.0f);
    EXPECT_FLOAT_EQ(g_creditsX, 550.0f);  // 250 units a second
    g_creditsX = -11995.0f;
    UpdateMenu();
    EXPECT_FLOAT_EQ(g_creditsX, -12000.0f);
    UpdateMenu();
    EXPECT_FLOAT_EQ(g_creditsX, 800.0f);
}

TEST_F(MenuSceneTest, PlantsSwayAboutTheirPivotAndCloudsDrift) {
    const char* names[] = {"plant1", "clouds", "rock"};
    for (int i = 0; i < 3; i++) {
        LocationPiece* piece = new LocationPiece();
        strcpy(piece->name, names[i]);
        ASSERT_EQ(MakeGridModel(piece->model, 0, 160, 0, 10, 1, 1), 1);
        g_menuLocation.pieces[g_menuLocation.pieceCount++] = piece;
    }
    g_menuMusicStarted = 1;
    float x0 = g_menuLocation.pieces[0]->model.frameVertices[0].position[0];
    float u0 = g_menuLocation.pieces[1]->model.frameVertices[0].texCoord[0];
    float rock = g_menuLocation.pieces[2]->model.frameVertices[0].position[0];
    UpdateMenu();
    float t = 0.02f;
    EXPECT_NEAR(g_menuLocation.pieces[0]->model.frameVertices[0].position[0],
                x0 + 100 * 0.002f * sinf(6.1f * t), 1e-6f);
    EXPECT_NEAR(g_menuLocation.pieces[1]->model.frameVertices[0].texCoord[0], u0 - 0.00025f, 1e-7f);
    EXPECT_FLOAT_EQ(g_menuLocation.pieces[2]->model.frameVertices[0].position[0], rock);
}

TEST_F(MenuSceneTest, SmokeDrawsItsSizeBeforeItsRotation) {
    LocationEntity* smoke = new LocationEntity();
    strcpy(smoke->name, "Smoke");
    smoke->position[1] = 7.0f;
    g_menuLocation.entities[g_menuLocation.entityCount++] = smoke;
    g_menuMusicStarted = 1;
    // A point of the sequence where the tick spawns no sparkle (r mod 10 not 0) and one smoke
    // puff (r mod 10 below 5), and the two draws after that tell size from rotation.
    unsigned int state = 1;
    int size = 0, rotation = 0;
    for (;; state++) {
        SetRandState(state);
        int sparkle = Rand(), puff = Rand();
        size = Rand();
        rotation = Rand();
        if (sparkle % 10 != 0 && puff % 10 < 5 && size % 10 != rotation % 10 && size % 360 != rotation % 360) {
            break;
        }
    }
    SetRandState(state);
    UpdateMenu();
    ASSERT_EQ(particles[0].active, 1);
    EXPECT_FLOAT_EQ(particles[0].position[1], 7.0f);
    EXPECT_FLOAT_EQ(particles[0].sizeEnd[0], 16.0f + size % 10);
    EXPECT_FLOAT_EQ(particles[0].rotation, static_cast<float>(rotation % 360));
}

TEST(PianoRollFile, RoundTripsAndRefusesBadFiles) {
    std::vector<PianoEvent> events = {{0, 1, {0, 0}, 9}, {31, 0, {0, 0}, 1983}, {12, 1, {0, 0}, 70000}};
    std::vector<unsigned char> bytes(PianoRollSize(events.size()));
    ASSERT_EQ(SerialisePianoRoll(events.data(), events.size(), bytes.data()), 28u);
    const unsigned char expected[12] = {3, 0, 0, 0, 0, 1, 0, 0, 9, 0, 0, 0};
    EXPECT_EQ(memcmp(bytes.data(), expected, 12), 0);
    std::vector<PianoEvent> read(kPianoMaxEvents);
    unsigned int count = 0;
    EXPECT_EQ(ParsePianoRoll(bytes.data(), bytes.size(), read.data(), &count), 28u);
    ASSERT_EQ(count, 3u);
    EXPECT_EQ(read[2].tick, 70000u);
    EXPECT_EQ(read[1].key, 31);
    // Truncated, a key off the keyboard, too many events.
    EXPECT_EQ(ParsePianoRoll(bytes.data(), 27, read.data(), &count), 0u);
    EXPECT_EQ(count, 0u);
    bytes[4 + 8] = 32;
    EXPECT_EQ(ParsePianoRoll(bytes.data(), bytes.size(), read.data(), &count), 0u);
    const unsigned char many[4] = {0x01, 0x08, 0, 0};  // 2049
    EXPECT_EQ(ParsePianoRoll(many, 4, read.data(), &count), 0u);
}

}  // namespace
