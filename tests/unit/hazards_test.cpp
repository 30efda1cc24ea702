// Keys, doors, deaths, the finish with its tally, collapsing platforms, the
// air supply and the score lines, tick by tick.
#include "game/hazards.h"

#include <cstring>

#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/score.h"
#include "game_fixture.h"
#include "resources/location.h"
#include "ui/text_batch.h"

namespace {

class HazardsTest : public test::GameFixture {};

TEST_F(HazardsTest, KeysScoreAndTheLastOneRaisesEveryDoorOver80Ticks) {
    Floor();
    AddEntity("player", 0, 0, 0);
    AddEntity("key01", 0, 0, 0);    // under the player: taken at once
    AddEntity("key02", 200, 0, 0);  // taken later
    AddEntity("exit01", 0, 0, -300);
    AddEntity("exit02", 0, 0, 300);
    StartLevel();
    Tick();
    EXPECT_EQ(Find("key01"), nullptr);
    EXPECT_EQ(score, 100u);
    EXPECT_TRUE(EntryReads(g_scoreText, 1, "score:00100"));
    EXPECT_EQ(Find("exit01")->link, 0) << "a key is left";
    player->position[0] = 200;
    Tick();
    EXPECT_EQ(score, 200u);
    GameObject* doors[2] = {Find("exit01"), Find("exit02")};
    for (GameObject* door : doors) {
        EXPECT_EQ(door->link, 79) << "it rises in the tick the last key goes";
        EXPECT_FLOAT_EQ(door->position[1], 1.0f);
    }
    Tick(79);
    for (GameObject* door : doors) {
        EXPECT_EQ(door->link, 0);
        EXPECT_FLOAT_EQ(door->position[1], 80.0f);
        EXPECT_FLOAT_EQ(g_collision.slots[SlotOf(door)]->boxes[0].offset[1], 80.0f);
    }
}

// A raised door (its box from 80 to 160) meets the head of a running jump: the push stops the
// jump's way along the push's axis, so the player drops in front of the door rather than
// sailing on under it once the head is below the door's edge.
TEST_F(HazardsTest, ADoorStopsAJumpAlongItsPushAxis) {
    const struct {
        float yaw, doorX, doorZ;
        int axis;
    } cases[] = {{0, 0, 100, 2}, {90, 115, 0, 0}};  // the face met is at 95 either way
    for (const auto& c : cases) {
        SCOPED_TRACE(c.axis);
        g_location.Clear();
        Floor();
        float start[3] = {0, 0, 0};
        start[c.axis] = 48;
        AddEntity("player", start[0], 0, start[2], c.yaw);
        AddEntity("key01", start[0], 0, start[2]);
        AddEntity("exit01", c.doorX, 0, c.doorZ);
        StartLevel();
        Tick(81);
        ASSERT_FLOAT_EQ(Find("exit01")->position[1], 80.0f);
        Key(0x26, 1);
        Key(0x20, 1);
        Tick();
        Key(0x26, 0);
        for (int t = 0; t < 100 && !onGround; t++) {
            Tick();
        }
        ASSERT_EQ(onGround, 1);
        EXPECT_NEAR(player->position[c.axis], 95.0f - 7.0f, 1e-3);
        EXPECT_NEAR(player->position[2 - c.axis], 0.0f, 1e-3);
    }
}

// A door's top holds the player up but is no ground: no jump from it. With no key in the level
// the door never rises.
TEST_F(HazardsTest, ADoorsTopIsNoGround) {
    AddEntity("player", 0, 80, 0);
    AddEntity("exit01", 0, 0, 0);
    StartLevel();
    Tick();
    Key(0x20, 1);
    for (int t = 0; t < 10; t++) {
        Tick();
        EXPECT_EQ(onGround, 0) << "tick " << t;
        EXPECT_LE(player->position[1], 80.0f + 1e-3) << "tick " << t;
    }
    EXPECT_FLOAT_EQ(Find("exit01")->position[1], 0.0f);
}

TEST_F(HazardsTest, AirRunsOutAfter3497TicksAndKills) {
    Floor();
    AddEntity("player", 0, 0, 0);
    StartLevel();
    Tick(3496);
    EXPECT_EQ(lives, 3);
    EXPECT_GT(air, 0.0f);
    Tick();
    EXPECT_EQ(lives, 2);
    EXPECT_FLOAT_EQ(air, 100.0f);
}

TEST_F(HazardsTest, TheFinishFlashesBlueAndTheTallyCountsAirIntoPointsThenTheNextLevelLoads) {
    Floor("Finish");
    AddEntity("player", 0, 0, 0);
    StartLevel();
    g_window.flashIntensity = 0;
    Tick();
    EXPECT_EQ(levelComplete, 1);
    EXPECT_FLOAT_EQ(g_window.flashIntensity, 0.4f);
    EXPECT_FLOAT_EQ(g_window.flashColour[2], 1.0f);
    EXPECT_FLOAT_EQ(g_window.flashColour[0], 0.0f);
    air = 40.0f;
    int expectedCountdown[8] = {3, 2, 1, 0, 3, 2, 1, 0};
    int ticks = 0;
    while (g_scene == SceneGame && ticks < 100) {
        uint32_t before = score;
        Tick();
        ticks++;
        if (g_scene != SceneGame) {
            break;
        }
        EXPECT_EQ(score, before + 10) << "tick " << ticks;
        if (ticks <= 8) {
            EXPECT_EQ(tallyCountdown, expectedCountdown[ticks - 1]) << "tick " << ticks;
        }
        Key(0x26, 1);  // walking is off during the tally
    }
    EXPECT_GE(ticks, 50);
    EXPECT_LE(ticks, 51);
    EXPECT_EQ(level, 2);
    // levels\02.vlc does not exist: the game is won.
    EXPECT_EQ(g_scene, SceneEnd);
    EXPECT_STREQ(endScenePath, "levels\\done.vlc");
    EXPECT_FLOAT_EQ(g_window.flashColour[2], 1.0f) << "the won scene keeps the blue flash";
    EXPECT_FLOAT_EQ(g_window.flashIntensity, 1.0f);
}

TEST_F(HazardsTest, TouchingSpikesDuringTheTallyStillKills) {
    Floor("finish");
    AddEntity("player", 0, 0, 0);
    AddEntity("spikes", 0, 0, 200);
    StartLevel();
    Tick(2);
    ASSERT_EQ(levelComplete, 1);
    player->position[2] = 200;
    player->position[1] = 10;  // off the finish, onto the spikes
    Tick();
    EXPECT_EQ(lives, 2);
    EXPECT_EQ(levelComplete, 0);
}

TEST_F(HazardsTest, ACollapsingPlatformCarriesSixTicksAndIsGoneOnTheSixth) {
    AddEntity("player", 0, 50, 0);
    AddEntity("collapse01", 0, 50, 0);
    StartLevel();
    GameObject* platform = Find("collapse01");
    int slot = SlotOf(platform);
    for (int t = 1; t <= 5; t++) {
        Tick();
        ASSERT_EQ(objects[slot], platform) << "tick " << t;
        EXPECT_FLOAT_EQ(platform->position[1], 50.0f - 0.5f * t);
        EXPECT_FLOAT_EQ(platform->animTime, 1.5f * t);
        EXPECT_EQ(platform->currentFrame, static_cast<int>(1.5f * t)) << "it plays its frames";
    }
    Tick();
    EXPECT_EQ(objects[slot], nullptr);
    EXPECT_EQ(g_collision.slots[slot], nullptr);
    float y = player->position[1];
    Tick(3);
    EXPECT_LT(player->position[1], y) << "the player falls";
}

TEST_F(HazardsTest, ACollapsingPlatformAtMinusTenNeverGivesWay) {
    AddEntity("player", 0, -10, 0);
    AddEntity("collapse01", 0, -10, 0);
    StartLevel();
    GameObject* platform = Find("collapse01");
    Tick(20);
    EXPECT_EQ(Find("collapse01"), platform);
    EXPECT_FLOAT_EQ(platform->position[1], -10.0f);
    EXPECT_FLOAT_EQ(platform->animTime, 0.0f);
    EXPECT_EQ(onGround, 1);
}

TEST_F(HazardsTest, ScoresPrintAtLeastFiveDigitsAndTheLevelStartSpellsScoreWithACapital) {
    Floor();
    AddEntity("player", 0, 0, 0);
    score = 123456;
    highScore = 200000;
    StartLevel();
    ShowLevelStartScores();
    EXPECT_TRUE(EntryReads(g_scoreText, 1, "Score:123456"));
    AddScore(100);
    EXPECT_TRUE(EntryReads(g_scoreText, 1, "score:123556"));
    EXPECT_TRUE(EntryReads(g_scoreText, 0, "High-score:200000"));
    EXPECT_EQ(highScore, 200000u);
    AddScore(100000);
    EXPECT_EQ(highScore, 223556u);
}

// Spikes kill; the restart puts the player back, raises no door, returns the keys and keeps
// the points.
TEST_F(HazardsTest, ARaisedDoorAndTakenKeysComeBackAfterADeathAndThePointsStay) {
    Floor();
    AddEntity("player", 0, 0, 0);
    AddEntity("key01", 0, 0, 0);
    AddEntity("exit01", 0, 0, -300);
    AddEntity("spikes", 200, 0, 0);
    StartLevel();
    Tick(10);
    ASSERT_FLOAT_EQ(Find("exit01")->position[1], 10.0f);
    player->position[0] = 200;
    Tick();
    EXPECT_EQ(lives, 2);
    EXPECT_FLOAT_EQ(Find("exit01")->position[1], 0.0f);
    EXPECT_EQ(Find("exit01")->link, 0);
    EXPECT_NE(Find("key01"), nullptr);
    EXPECT_FLOAT_EQ(player->position[0], 0.0f);
    EXPECT_EQ(score, 100u);
}

}  // namespace
