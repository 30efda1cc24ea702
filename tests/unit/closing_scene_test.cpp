// The closing scenes: entering from the last life or the last level, the
// foot's 66-step descent that crushes the prop, and leaving only on Enter or
// keys 30 to 149 once about a second has passed.
#include "game/closing_scene.h"

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

class ClosingSceneTest : public test::GameFixture {
protected:
    void SaveEndScene(const char* file, const char* first, const char* second) {
        Location scene;
        strcpy(scene.name, "The End");
        const char* names[2] = {first, second};
        for (const char* name : names) {
            if (!name) {
                continue;
            }
            LocationEntity* entity = new LocationEntity;
            strcpy(entity->name, name);
            entity->params = strdup("");
            scene.entities[scene.entityCount++] = entity;
        }
        SaveLocation(scene, file);
    }
    void EnterGameOver() {
        AddEntity("player", 0, 0, 0);
        StartLevel();
        lives = 0;
        StartLevel();
        ASSERT_EQ(g_scene, SceneEnd);
    }
};

TEST_F(ClosingSceneTest, TheFootFallsFor66TicksAndCrushesThePropInThe61st) {
    SaveEndScene("end.vlc", "player_prop", "foot");
    EnterGameOver();
    EXPECT_TRUE(EntryReads(g_levelTitleText, 0, "The End"));
    GameObject* foot = Find("foot");
    ASSERT_NE(foot, nullptr);
    ASSERT_NE(Find("player_prop"), nullptr);
    EXPECT_FLOAT_EQ(foot->position[1], 400.0f);
    int gore = 0;
    for (int t = 1; t <= 70; t++) {
        UpdateClosingScene();
        EXPECT_EQ(Find("player_prop") != nullptr, t < 61) << "tick " << t;
        int live = 0;
        for (const Particle& p : particles) {
            live += p.active && strcmp(p.texture, "particle_gibs.tga") == 0;
        }
        if (t <= 56) {
            EXPECT_EQ(live, 0) << "no gore before the last ten steps, tick " << t;
        }
        gore = live > gore ? live : gore;
    }
    EXPECT_EQ(foot->counter, 0u);
    EXPECT_FLOAT_EQ(foot->position[1], 4.0f);
    EXPECT_GT(gore, 3);
    EXPECT_FLOAT_EQ(g_camera.position.z, 1080.9f);
    EXPECT_FLOAT_EQ(g_window.fov, 20.0f);
}

TEST_F(ClosingSceneTest, AKeyHeldFromTheGameLeavesAtOnceAfterTheFirstSecond) {
    SaveEndScene("end.vlc", "player_prop", nullptr);
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
    SaveEndScene("end.vlc", "player_prop", nullptr);
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

TEST_F(ClosingSceneTest, AMissingSceneFileStillLeavesOnAKey) {
    EnterGameOver();
    for (GameObject* object : objects) {
        EXPECT_EQ(object, nullptr);
    }
    for (int t = 0; t < 60; t++) {
        UpdateClosingScene();
    }
    Key(VK_RETURN, 1);
    UpdateClosingScene();
    EXPECT_EQ(g_scene, SceneMenu);
}

TEST_F(ClosingSceneTest, TheDancerLoopsFramesZeroToNine) {
    SaveEndScene("done.vlc", "player_dance", nullptr);
    WriteBoxModel("logo\\delver.vmd", -10, 0, -10, 10, 40, 10);
    memset(endScenePath, 0, sizeof(endScenePath));
    strcpy(endScenePath, "levels\\done.vlc");
    StartClosingScene();
    GameObject* dancer = Find("player_dance");
    ASSERT_NE(dancer, nullptr);
    EXPECT_STREQ(dancer->type, "player");
    float highest = 0;
    for (int t = 0; t < 60; t++) {
        UpdateClosingScene();
        EXPECT_LT(dancer->animTime, 9.0f);
        highest = dancer->animTime > highest ? dancer->animTime : highest;
    }
    EXPECT_GT(highest, 8.0f);
}

TEST_F(ClosingSceneTest, TheGameFootDescendsWithoutTheClosingSceneRunning) {
    AddPiece("floor", "textures\\01\\rock.tga", -400, -100, -400, 400, 0, 400);
    AddEntity("player", 300, 0, 0);
    AddEntity("foot", 0, 0, 0);
    StartLevel();
    GameObject* foot = Find("foot");
    Tick(66);
    EXPECT_EQ(foot->counter, 0u);
    EXPECT_FLOAT_EQ(foot->position[1], 4.0f);
    Tick(5);
    EXPECT_FLOAT_EQ(foot->position[1], 4.0f);
}

}  // namespace
