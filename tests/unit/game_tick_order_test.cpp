// Where the game tick ends and what has run by then: the air step before the
// finish, the finish and a death before the camera, the animations and the
// object pass; a head bump under a solid ceiling; the bounds of the jump
// assist's search; and the headless runner playing the same replay twice in
// one process.
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/collision_world.h"
#include "game/demo.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/player.h"
#include "game/replay_runner.h"
#include "game_fixture.h"
#include "platform/sys_keys.h"
#include "resources/location.h"
#include "test_support.h"

namespace {

class GameTickOrderTest : public test::GameFixture {
protected:
    void Floor(const char* name = "floor") {
        AddPiece(name, "textures\\01\\rock.tga", -400, -100, -400, 400, 0, 400);
    }
};

TEST_F(GameTickOrderTest, AirRunningOutOnTheFinishKillsBeforeTheFinishIsSeen) {
    Floor("finish");
    AddEntity("player", 0, 0, 0);
    StartLevel();
    air = 0.02f;
    float clock = animClock;
    Tick();
    EXPECT_EQ(lives, 2) << "the air step runs before the contact passes";
    EXPECT_FLOAT_EQ(animClock, clock + 0.02f) << "the scene clock runs before the air step";
    EXPECT_EQ(levelComplete, 0);
    EXPECT_FLOAT_EQ(g_window.flashColour[2], 1.0f);
    EXPECT_FLOAT_EQ(g_window.flashColour[0], 1.0f) << "the restart's white flash, not the finish's blue";
    // With air left the same contact finishes the level.
    Tick();
    EXPECT_EQ(levelComplete, 1);
    EXPECT_FLOAT_EQ(g_window.flashColour[0], 0.0f);
}

TEST_F(GameTickOrderTest, TheFinishEndsTheTickBeforeTheCameraTheGroundAndTheAnimations) {
    Floor();
    AddPiece("FINISH", "textures\\01\\rock.tga", 100, -100, -50, 200, 0, 50);
    AddEntity("player", 88, 0, 0, 90);
    AddEntity("enemy01", -200, 0, -200);
    AddEntity("enemy01_route00", -200, 0, -200);
    AddEntity("enemy01_route01", -200, 0, 200);
    StartLevel();
    Key(VK_UP, 1);
    Tick(2);
    ASSERT_EQ(levelComplete, 0);
    GameObject* enemy = Find("enemy01");
    float enemyZ = enemy->position[2];
    float animTime = player->animTime;
    float ground[3];
    memcpy(ground, lastGround, sizeof(ground));
    g_camera.position = Vec3{1, 2, 3};
    Tick();  // the narrowed box reaches x 100 this tick
    ASSERT_EQ(levelComplete, 1);
    EXPECT_FLOAT_EQ(g_camera.position.x, 1.0f) << "no camera placement after the finish";
    EXPECT_FLOAT_EQ(g_camera.position.z, 3.0f);
    EXPECT_FLOAT_EQ(player->animTime, animTime) << "no animation";
    EXPECT_FLOAT_EQ(enemy->position[2], enemyZ) << "no object pass";
    EXPECT_EQ(memcmp(ground, lastGround, sizeof(ground)), 0) << "no ground update";
    EXPECT_EQ(player->state, 1) << "but the walk of this tick happened";
    // While the box still touches the finish every tick ends there; the tally runs meanwhile.
    Tick(3);
    EXPECT_FLOAT_EQ(enemy->position[2], enemyZ);
    EXPECT_EQ(score, 30u);
}

TEST_F(GameTickOrderTest, ADeathEndsTheTickWithTheRebuiltLevelUntouched) {
    Floor();
    AddEntity("player", 0, 0, 0);
    AddEntity("spikes", 100, 0, 0);
    AddEntity("enemy01", 300, 0, 300);
    AddEntity("enemy01_route00", -200, 0, -200);
    AddEntity("enemy01_route01", -200, 0, 200);
    StartLevel();
    Tick(20);
    ASSERT_GT(Find("enemy01")->position[2], -200.0f);
    player->position[0] = 100;
    g_camera.position = Vec3{1, 2, 3};
    Tick();
    ASSERT_EQ(lives, 2);
    GameObject* enemy = Find("enemy01");
    EXPECT_FLOAT_EQ(enemy->position[0], -200.0f) << "rebuilt on point 00";
    EXPECT_FLOAT_EQ(enemy->position[2], -200.0f);
    EXPECT_EQ(enemy->counter, 0u) << "and not yet moved on to point 01";
    EXPECT_FLOAT_EQ(g_collision.slots[SlotOf(enemy)]->boxes[0].offset[0], 300.0f)
        << "its box still at the entity";
    EXPECT_FLOAT_EQ(enemy->animTime, 0.0f);
    EXPECT_FLOAT_EQ(player->animTime, 0.0f);
    EXPECT_FLOAT_EQ(g_camera.position.x, 0.0f) << "only the restart's camera, 10 ahead of the player";
    EXPECT_FLOAT_EQ(g_camera.position.z, 10.0f);
    Tick();
    EXPECT_EQ(enemy->counter, 1u);
    EXPECT_FLOAT_EQ(g_camera.position.z, 500.0f) << "the follow camera near the axis";
}

TEST_F(GameTickOrderTest, ASolidCeilingStopsTheRiseAndPushesTheHeadBackUnderIt) {
    Floor();
    AddPiece("ceiling", "textures\\01\\rock.tga", -100, 50, -100, 100, 60, 100);
    AddEntity("player", 0, 0, 0);
    StartLevel();
    Tick();
    Key(VK_SPACE, 1);
    Tick(2);  // 0.1 + 4.75 + 4.55: the 40-high box reaches 49.4
    EXPECT_NEAR(player->position[1], 9.4f, 1e-4);
    EXPECT_LT(player->velocity[1], 0.0f);
    Tick();  // 4.35 more would put the head at 53.75: pushed down by 3.75, the rise stopped
    EXPECT_NEAR(player->position[1], 10.0f, 1e-4);
    EXPECT_FLOAT_EQ(player->velocity[1], 0.0f);
    Tick();
    EXPECT_NEAR(player->position[1], 10.0f, 1e-4) << "touching the ceiling from below, falling now";
    EXPECT_FLOAT_EQ(player->velocity[1], 0.2f);
    float highest = 0;
    for (int t = 0; t < 30; t++) {
        Tick();
        highest = fmaxf(highest, player->position[1]);
    }
    EXPECT_LE(highest, 10.0f + 1e-4);
    EXPECT_EQ(onGround, 1);
    EXPECT_NEAR(player->position[1], 0.0f, 1e-3);
    EXPECT_EQ(lives, 3);
}

// The 90-unit rule belongs to the solid pieces: objects catch a fall of any height.
TEST_F(GameTickOrderTest, AFallOfAnyHeightOntoPlatformObjectsLandsSafely) {
    const char* kinds[2] = {"platform01", "collapse01"};
    for (const char* kind : kinds) {
        g_location.Clear();
        AddEntity("player", 0, 300, 0);
        AddEntity(kind, 0, 0, 0);
        StartLevel();
        GameObject* platform = Find(kind);
        int ticks = 0;
        do {
            Tick();
            ticks++;
        } while (!onGround && ticks < 200);
        ASSERT_EQ(onGround, 1) << kind;
        EXPECT_GT(ticks, 50) << kind << ": a fall of 300";
        EXPECT_EQ(lives, 3) << kind;
        EXPECT_EQ(player->state, 0) << kind;
        EXPECT_FLOAT_EQ(player->velocity[1], 2.0f) << kind << ": an object's landing leaves 2, a piece's 0.1";
        EXPECT_LT(platform->position[1], 0.0f) << kind << " sinks under the landing";
    }
}

// A deep floor 85 below the take-off, one small safe block 117 out along a chosen yaw, and the
// last ground 15 below the take-off so that the probe lands on the deep floor (an unsafe drop).
class JumpAssistBoundsTest : public test::GameFixture {
protected:
    void Build(float blockYaw, float deepTop = -85) {
        AddPiece("deep", "textures\\01\\rock.tga", -600, -200, -600, 600, deepTop, 600);
        AddPiece("start", "textures\\01\\rock.tga", -8, -10, -8, 8, 0, 8);
        float bx = 117.0f * sinf(blockYaw * kDegToRad), bz = 117.0f * cosf(blockYaw * kDegToRad);
        AddPiece("block", "textures\\01\\rock.tga", bx - 2, -30, bz - 2, bx + 2, -20, bz + 2);
        AddEntity("player", 0, 0, 0, 0);
        StartLevel();
        Tick();
        lastGround[1] = -15.0f;
        onGround = 1;
        player->velocity[2] = 2.25f;
        Key(VK_UP, 1);
        Key(VK_SPACE, 1);
        ReadPlayerInput();
    }
};

TEST_F(JumpAssistBoundsTest, TheSearchStartsAtThirtyBelowTheHeading) {
    Build(-30);
    EXPECT_FLOAT_EQ(player->rotation[1], -30.0f);
    EXPECT_NEAR(player->velocity[0], -2.25f * 0.5f, 1e-4);
    EXPECT_EQ(player->state, 2);
}

TEST_F(JumpAssistBoundsTest, AStraightDropJustOver80IsAlreadySteered) {
    Build(10, -82);  // the probe meets the deep floor 83.6 below the take-off
    EXPECT_FLOAT_EQ(player->rotation[1], 10.0f);
}

TEST_F(JumpAssistBoundsTest, TheSearchStopsBelowThirtyAboveTheHeading) {
    Build(30);
    EXPECT_FLOAT_EQ(player->rotation[1], 0.0f) << "yaw + 30 is never tried: the jump goes straight";
    EXPECT_FLOAT_EQ(player->velocity[0], 0.0f);
    EXPECT_FLOAT_EQ(player->velocity[2], 2.25f);
    EXPECT_EQ(player->state, 2);
}

class RunnerTwiceTest : public GameTickOrderTest {
protected:
    static void Collect(const char* line, void* context) {
        static_cast<std::vector<std::string>*>(context)->push_back(line);
    }
};

// The runner is a whole program's game in one call: a second run in the same process must not
// see anything of the first (objects, pause, conveyor, particles), nor leak what the first left.
TEST_F(RunnerTwiceTest, TheSameReplayTwiceGivesTheSameLines) {
    Floor();
    AddPiece("belt", "textures\\01\\conveyer.tga", 100, -10, -400, 200, 5, 400);
    AddEntity("player", 0, 0, 0, 90);
    AddEntity("key01", 60, 0, 0);
    AddEntity("spikes", 175, 5, -200);
    AddEntity("particle_dirt", 0, 200, 0);
    AddEntity("particle_sparkles", 0, 100, 0);
    SaveLocation(g_location, "01.vlc");
    g_location.Clear();
    std::string file = dataDir + "/../twice.replay";
    ASSERT_TRUE(test::WriteText(file,
                                "vantle2-replay 1\nticks 400\n0 down UP\n30 down SPACE\n31 up SPACE\n"
                                "300 down P\n"));
    std::vector<std::string> first, second;
    ASSERT_GT(RunReplayFile(file.c_str(), Collect, &first, 1), 0);
    ASSERT_GT(RunReplayFile(file.c_str(), Collect, &second, 1), 0);
    ASSERT_GT(first.size(), 100u);
    int deaths = 0;
    for (const std::string& line : first) {
        deaths += line.find("died") != std::string::npos;
    }
    EXPECT_EQ(deaths, 1) << "the belt carries it to the spikes";
    ASSERT_EQ(first.size(), second.size());
    for (size_t i = 0; i < first.size(); i++) {
        ASSERT_EQ(first[i], second[i]) << "line " << i;
    }
    EXPECT_EQ(paused, 1) << "the first run ended paused";
}

}  // namespace
