// The game tick's order and its own rules: the pause, the flash fade, the
// debug keys, the follow camera, enemies on their routes, the emitters, and a
// level without a player.
#include "game/game_update.h"

#include <cmath>
#include <cstring>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/collision_world.h"
#include "game/enemy.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "game_fixture.h"
#include "resources/location.h"

namespace {

class GameUpdateTest : public test::GameFixture {
protected:
    // The unit vector the camera looks along.
    static void ViewDirection(float* d) {
        float w = g_camera.yaw * kDegToRad, p = g_camera.pitch * kDegToRad;
        d[0] = cosf(p) * sinf(w);
        d[1] = -sinf(p);
        d[2] = cosf(p) * cosf(w);
    }
    // 1 when the camera looks straight at the point.
    static void ExpectLooksAt(float x, float y, float z) {
        float d[3];
        ViewDirection(d);
        float t[3] = {x - g_camera.position.x, y - g_camera.position.y, z - g_camera.position.z};
        float length = sqrtf(t[0] * t[0] + t[1] * t[1] + t[2] * t[2]);
        for (int k = 0; k < 3; k++) {
            EXPECT_NEAR(d[k], t[k] / length, 1e-3) << "axis " << k;
        }
    }
};

TEST_F(GameUpdateTest, PausingTwiceResumesExactlyWhereItStoppedWhileTheCameraCircles) {
    Floor();
    AddEntity("player", 100, 0, 0, 90);
    StartLevel();
    Key(0x26, 1);
    Tick(5);
    float position[3];
    memcpy(position, player->position, sizeof(position));
    float airBefore = air;
    float clock = animClock;
    Key('P', 1);
    Tick();
    EXPECT_EQ(paused, 1);
    EXPECT_EQ(g_window.keys['P'], 0);
    EXPECT_FLOAT_EQ(g_camera.yaw, 0.0f);
    Tick();
    EXPECT_FLOAT_EQ(g_camera.yaw, 1.0f) << "one degree per tick";
    Tick(8);
    EXPECT_FLOAT_EQ(air, airBefore);
    EXPECT_FLOAT_EQ(animClock, clock);
    EXPECT_EQ(memcmp(position, player->position, sizeof(position)), 0);
    float dx = g_camera.position.x - player->position[0];
    float dz = g_camera.position.z - player->position[2];
    EXPECT_NEAR(sqrtf(dx * dx + dz * dz), 150.0f, 10.0f) << "it circles 150 out";
    Key('P', 1);
    Tick();
    EXPECT_EQ(paused, 0);
    EXPECT_NEAR(player->position[0], position[0] + 2.25f, 1e-3) << "the walk goes on from where it was";
    EXPECT_NEAR(air, airBefore - 0.0286f, 1e-4);
}

TEST_F(GameUpdateTest, TheFollowCameraStands505OutOnThePlayersBearing) {
    Floor();
    AddEntity("player", 300, 40, 0, 0);
    StartLevel();
    player->position[1] = 40;
    PlaceGameCamera();
    EXPECT_NEAR(g_camera.position.x, 505.0f, 0.01f);
    EXPECT_NEAR(g_camera.position.y, 115.0f, 1e-3);
    EXPECT_NEAR(g_camera.position.z, 1.68f, 0.01f);
    ExpectLooksAt(0, 5, 0);
    EXPECT_FLOAT_EQ(g_window.fov, 30.0f);
}

TEST_F(GameUpdateTest, EnemiesWalkTheirRouteFacingTheirWayAndSkipBeyondAMissingPoint) {
    Floor();
    AddEntity("player", 0, 0, 300);
    AddEntity("enemy01", -50, 10, -50);
    AddEntity("enemy01_route00", 0, 10, 0);
    AddEntity("enemy01_route01", 100, 10, 0);
    AddEntity("enemy01_route03", 50, 10, 50);  // 02 is missing: never reached
    StartLevel();
    GameObject* enemy = Find("enemy01");
    ASSERT_NE(enemy, nullptr);
    EXPECT_EQ(enemy->onRoute, 1);
    EXPECT_FLOAT_EQ(enemy->position[0], 0.0f) << "it starts on point 00";
    const CollisionBox& box = g_collision.slots[SlotOf(enemy)]->boxes[0];
    Tick();
    EXPECT_FLOAT_EQ(box.offset[0], -50.0f) << "the box stays at the entity while point 00 is reached";
    Tick();
    EXPECT_NEAR(enemy->position[0], 1.9f, 1e-4);
    EXPECT_FLOAT_EQ(enemy->rotation[1], 180.0f);
    EXPECT_FLOAT_EQ(box.offset[0], enemy->position[0]);
    int snapped = 0, back = 0;
    for (int t = 0; t < 300; t++) {
        Tick();
        EXPECT_FLOAT_EQ(enemy->position[2], 0.0f) << "never toward point 03";
        snapped += enemy->position[0] == 100.0f;
        if (snapped && enemy->position[0] < 100.0f && back == 0) {
            back = 1;
            EXPECT_FLOAT_EQ(enemy->rotation[1], 360.0f);
        }
    }
    EXPECT_GE(snapped, 1);
    EXPECT_EQ(back, 1);
    EXPECT_EQ(lives, 3);
}

TEST_F(GameUpdateTest, AnEnemyWithoutRouteStandsAnimatesAndKills) {
    Floor();
    AddEntity("player", 0, 0, 200);
    AddEntity("enemy01", 0, 0, 0);
    StartLevel();
    GameObject* enemy = Find("enemy01");
    Tick(4);
    EXPECT_FLOAT_EQ(enemy->position[0], 0.0f);
    EXPECT_FLOAT_EQ(enemy->animTime, 0.0f) << "a one-frame model wraps at frame 1";
    player->position[2] = 0;
    Tick();
    EXPECT_EQ(lives, 2);
}

TEST_F(GameUpdateTest, DebugKeysActOnlyInDebugMode) {
    Floor();
    AddEntity("player", 0, 0, 0);
    AddEntity("key01", 200, 0, 0);
    AddEntity("exit01", 0, 0, -300);
    StartLevel();
    Key('O', 1);
    Key('G', 1);
    Tick();
    EXPECT_NE(Find("key01"), nullptr);
    EXPECT_EQ(lives, 3);
    Key('G', 0);
    g_debug = 1;
    Tick();
    EXPECT_EQ(Find("key01"), nullptr);
    EXPECT_EQ(score, 0u) << "no points for keys taken by the debug key";
    EXPECT_EQ(Find("exit01")->link, 79);
    Key('G', 1);
    Tick();
    EXPECT_EQ(lives, 0);
    EXPECT_EQ(g_scene, SceneEnd);
}

TEST_F(GameUpdateTest, EmittersDropDustAndSparklesFromTheirHeightOnly) {
    Floor();
    AddEntity("player", 0, 0, 0);
    AddEntity("Particle_Dirt", 999, 150, 999);
    AddEntity("particle_sparkles", -999, 80, -999);
    StartLevel();
    int dust = 0, sparkles = 0;
    for (int t = 0; t < 400; t++) {
        Tick();
        for (const Particle& p : particles) {
            // Spawned after this tick's update: life still 0.
            if (p.active && p.life == 0.0f) {
                int isDust = strcmp(p.texture, "particle_fire.tga") == 0;
                (isDust ? dust : sparkles)++;
                EXPECT_FLOAT_EQ(p.position[1], isDust ? 150.0f : 80.0f);
                EXPECT_LE(fabsf(p.position[0]), isDust ? 200.0f : 150.0f);
            }
        }
    }
    // About one in ten ticks for dust and one in twenty for sparkles.
    EXPECT_GT(dust, 20);
    EXPECT_LT(dust, 70);
    EXPECT_GT(sparkles, 8);
    EXPECT_LT(sparkles, 40);
}

}  // namespace
