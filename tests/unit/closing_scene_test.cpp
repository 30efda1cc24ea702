// The closing scenes: entering from the last life or the last level, the
// foot's 66-step descent that crushes the prop, and leaving only on Enter or
// keys 30 to 149 once about a second has passed.
#include "game/closing_scene.h"

#include <cmath>
#include <cstring>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "game_fixture.h"
#include "platform/sys_keys.h"
#include "resources/location.h"

namespace {

class ClosingSceneTest : public test::GameFixture {};

TEST_F(ClosingSceneTest, TheFootFallsFor66TicksAndCrushesThePropInThe61stWhileTheDancerLoops) {
    SaveEndScene({"player_prop", "foot", "player_dance"});
    WriteBoxModel("logo\\delver.vmd", -10, 0, -10, 10, 40, 10);
    EnterGameOver();
    GameObject* dancer = Find("player_dance");
    ASSERT_NE(dancer, nullptr);
    float highest = 0;
    EXPECT_TRUE(EntryReads(g_levelTitleText, 0, "The End"));
    GameObject* foot = Find("foot");
    ASSERT_NE(foot, nullptr);
    ASSERT_NE(Find("player_prop"), nullptr);
    EXPECT_FLOAT_EQ(foot->position[1], 400.0f);
    int gore = 0;
    for (int t = 1; t <= 70; t++) {
        UpdateClosingScene();
        EXPECT_EQ(Find("player_prop") != nullptr, t < 61) << "tick " << t;
        EXPECT_LT(dancer->animTime, 9.0f) << "frames 0 to 9 loop";
        highest = fmaxf(highest, dancer->animTime);
        int live = 0;
        for (const Particle& p : particles) {
            live += p.active && strcmp(p.texture, "particle_gibs.tga") == 0;
        }
        if (t <= 56) {
            EXPECT_EQ(live, 0) << "no gore before the last ten steps, tick " << t;
        }
        gore = live > gore ? live : gore;
    }
    EXPECT_FLOAT_EQ(foot->position[1], 4.0f);
    EXPECT_GT(gore, 3);
    EXPECT_GT(highest, 8.0f);
    EXPECT_FLOAT_EQ(g_camera.position.z, 1080.9f);
    EXPECT_FLOAT_EQ(g_window.fov, 20.0f);
}

TEST_F(ClosingSceneTest, AKeyHeldFromTheGameLeavesAtOnceAfterTheFirstSecond) {
    SaveEndScene({"player_prop"});
    Key(VK_SPACE, 1);
    EnterGameOver();
    int ticks = 0;
    while (g_scene == SceneEnd && ticks < 100) {
        UpdateClosingScene();
        ticks++;
    }
    EXPECT_EQ(g_scene, SceneMenu);
    EXPECT_GE(ticks, 50);
    EXPECT_LE(ticks, 51);
}

TEST_F(ClosingSceneTest, OnlyEnterAndKeys30To149Leave) {
    SaveEndScene({"player_prop"});
    EnterGameOver();
    animClock = 2.0f;
    for (int k = 14; k <= 29; k++) {
        Key(k, 1);
    }
    Key(150, 1);
    Key(255, 1);
    UpdateClosingScene();
    EXPECT_EQ(g_scene, SceneEnd) << "Escape, Shift, Ctrl, Alt, Pause and keys past 149 stay";
    const int leaving[] = {13, 30, 149};
    for (int k : leaving) {
        memset(g_window.keys, 0, sizeof(g_window.keys));
        g_scene = SceneEnd;
        animClock = 2.0f;
        Key(k, 1);
        UpdateClosingScene();
        EXPECT_EQ(g_scene, SceneMenu) << "key " << k;
        EXPECT_EQ(g_window.keys[k], 0);
        EXPECT_FLOAT_EQ(animClock, 0.0f);
    }
}

TEST_F(ClosingSceneTest, TheGameFootDescendsWithoutTheClosingSceneRunning) {
    Floor();
    AddEntity("player", 300, 0, 0);
    AddEntity("foot", 0, 0, 0);
    StartLevel();
    GameObject* foot = Find("foot");
    Tick(65);
    EXPECT_GT(foot->position[1], 4.0f);
    Tick();
    EXPECT_FLOAT_EQ(foot->position[1], 4.0f);
    Tick(5);
    EXPECT_FLOAT_EQ(foot->position[1], 4.0f);
}

}  // namespace
