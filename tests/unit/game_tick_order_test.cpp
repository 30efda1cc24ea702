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

class GameTickOrderTest : public test::GameFixture {};

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
    Tick(30);
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
        EXPECT_FLOAT_EQ(player->velocity[1], 2.0f) << kind << ": an object's landing leaves 2, a piece's 0.1";
        EXPECT_LT(platform->position[1], 0.0f) << kind << " sinks under the landing";
    }
}

}  // namespace
