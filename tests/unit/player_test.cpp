// The player's physics tick by tick in small levels built in code: the jump's
// rise and peak, one jump per press, walking, walking off a ledge, the 80/90
// fall rule, conveyors, platform objects that sink and lift, the jump probe
// and the assist, the joystick, and the animation's frame ranges.
#include "game/player.h"

#include <cmath>
#include <cstdio>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "game_fixture.h"
#include "platform/sys_joystick.h"
#include "platform/sys_keys.h"
#include "resources/location.h"

namespace {

class PlayerTest : public test::GameFixture {
protected:
    // A wide floor whose top is at height 0 and a player standing on it.
    void FloorLevel(float x, float z, float yaw) {
        Floor();
        AddEntity("player", x, 0, z, yaw);
        StartLevel();
        ASSERT_NE(player, nullptr);
    }
};

TEST_F(PlayerTest, JumpRisesFor24TicksToPeakAt58Point9AndJumpsOncePerPress) {
    FloorLevel(0, 0, 0);
    Tick(3);
    EXPECT_NEAR(player->position[1], 0.0f, 1e-4);
    EXPECT_EQ(onGround, 1);
    Key(VK_SPACE, 1);
    float last = player->position[1];
    int rising = 0;
    float peak = 0;
    for (int t = 0; t < 30; t++) {
        Tick();
        if (t == 0) {
            EXPECT_EQ(player->state, 2);
            EXPECT_EQ(g_window.keys[VK_SPACE], 0) << "a jump takes the key's flag";
        }
        if (t < 2) {
            int flames = 0;
            for (const Particle& p : particles) {
                flames += p.active;
            }
            EXPECT_EQ(flames, 2 * (t + 1)) << "a fast rise leaves two flames a tick";
        }
        rising += player->position[1] > last;
        last = player->position[1];
        peak = fmaxf(peak, last);
    }
    EXPECT_EQ(rising, 24);
    EXPECT_NEAR(peak, 58.9f, 1e-3);
    Tick(70);
    EXPECT_NEAR(player->position[1], 0.0f, 1e-3) << "down again, and no second jump without a new press";
    EXPECT_EQ(player->state, 0) << "the landing animation ends the jump state";
}

TEST_F(PlayerTest, WalkingMovesTwoAndAQuarterAlongTheYawAndTurningIsFourAndAHalf) {
    FloorLevel(0, 0, 90);
    Tick();
    Key(VK_UP, 1);
    float x0 = player->position[0];
    Tick(10);
    EXPECT_NEAR(player->position[0] - x0, 22.5f, 1e-3);
    EXPECT_NEAR(player->position[2], 0.0f, 1e-3);
    EXPECT_EQ(player->state, 1);
    Key(VK_UP, 0);
    Tick();
    EXPECT_EQ(player->state, 0) << "running lasts only while a key is held";
    Key(VK_LEFT, 1);
    Tick(2);
    EXPECT_FLOAT_EQ(player->rotation[1], 99.0f);
    Key(VK_RIGHT, 1);
    Tick(2);
    EXPECT_FLOAT_EQ(player->rotation[1], 99.0f) << "both keys cancel";
    Key(VK_LEFT, 0);
    Key(VK_RIGHT, 0);
    Key(VK_DOWN, 1);
    float x1 = player->position[0], z1 = player->position[2];
    Tick(4);
    EXPECT_NEAR(player->position[0] - x1, -4.0f * sinf(99 * kDegToRad), 1e-3) << "one unit back per tick";
    EXPECT_NEAR(player->position[2] - z1, -4.0f * cosf(99 * kDegToRad), 1e-3);
}

TEST_F(PlayerTest, WalkingOffALedgeDropsStraightDown) {
    AddPiece("ledge", "textures\\01\\rock.tga", -400, -100, -400, 50, 0, 400);
    AddEntity("player", 30, 0, 0, 90);
    StartLevel();
    Key(VK_UP, 1);
    float airborneX = 0;
    int airborneTicks = 0;
    for (int t = 0; t < 40; t++) {
        Tick();
        if (!onGround) {
            if (airborneTicks == 0) {
                airborneX = player->position[0];
            }
            airborneTicks++;
            EXPECT_FLOAT_EQ(player->position[0], airborneX) << "tick " << t;
        }
    }
    EXPECT_GT(airborneTicks, 10);
    EXPECT_LT(player->position[1], -20.0f);
    EXPECT_GT(airborneX, 50.0f + 7.0f - 2.25f) << "off the ledge only once the narrowed box has left it";
}

TEST_F(PlayerTest, AFallBelow80LandsAFallOf81NeitherLandsNorKillsAndTheNextContactPast90Kills) {
    // From 75 the floor is met after a drop of 75.6: a landing.
    FloorLevel(0, 0, 0);
    player->position[1] = lastGround[1] = 75;
    Tick(28);
    EXPECT_EQ(onGround, 1);
    EXPECT_NEAR(player->position[1], 0.0f, 1e-3);
    g_location.entities[0]->position[1] = 80;
    StartLevel();
    // Heights after n ticks are 80 - 0.1 n (n - 1): tick 29 meets the floor 81.2 below the start.
    Tick(29);
    EXPECT_EQ(onGround, 0);
    EXPECT_NEAR(player->position[1], 80.0f - 81.2f, 1e-3);
    Tick();  // 87 below: still neither
    EXPECT_EQ(onGround, 0);
    EXPECT_EQ(lives, 3);
    Tick();  // 93 below: dead, and the level restarts
    EXPECT_EQ(lives, 2);
    ASSERT_NE(player, nullptr);
    EXPECT_FLOAT_EQ(player->position[1], 80.0f);
    EXPECT_FLOAT_EQ(air, 100.0f);
    EXPECT_FLOAT_EQ(g_window.flashIntensity, 1.0f);
}

TEST_F(PlayerTest, AConveyorCarriesAlongMinusZFacing180AndOnlyTheBackStepWorks) {
    AddPiece("belt", "textures\\01\\conveyer.tga", -100, -10, -400, 100, 0, 400);
    AddEntity("player", 0, 0, 0, 45);
    StartLevel();
    Tick(2);
    EXPECT_EQ(onConveyor, 1);
    EXPECT_FLOAT_EQ(player->rotation[1], 180.0f);
    float z0 = player->position[2];
    Key(VK_UP, 1);
    Key(VK_LEFT, 1);
    Tick(5);
    EXPECT_NEAR(player->position[2] - z0, -10.0f, 1e-3);
    EXPECT_FLOAT_EQ(player->rotation[1], 180.0f);
    EXPECT_NEAR(player->position[0], 0.0f, 1e-3);
    Key(VK_UP, 0);
    Key(VK_LEFT, 0);
    Key(VK_DOWN, 1);
    float z1 = player->position[2];
    Tick(5);
    EXPECT_NEAR(player->position[2] - z1, 5.0f, 1e-3) << "back-stepping against the belt";
}

TEST_F(PlayerTest, WallsPushOutAndPlatformTexturedPiecesArePassedThroughFromBelow) {
    Floor();
    AddPiece("wall", "textures\\01\\rock.tga", 30, 0, -100, 60, 100, 100);
    AddPiece("shelf", "textures\\01\\platform.tga", -100, 30, 100, 100, 35, 300);
    AddEntity("player", 0, 0, 0, 90);
    StartLevel();
    Key(VK_UP, 1);
    Tick(30);
    EXPECT_LE(player->position[0], 30.0f - 7.0f + 1e-3) << "the wall stops the narrowed box";
    Key(VK_UP, 0);
    // Under the shelf, jump: the platform texture lets the head through and holds the landing.
    player->position[0] = 0;
    player->position[2] = 200;
    Tick(2);
    Key(VK_SPACE, 1);
    Tick(60);
    EXPECT_EQ(onGround, 1);
    EXPECT_NEAR(player->position[1], 35.0f, 1e-3);
}

TEST_F(PlayerTest, StandingOnAPlatformObjectSinksItToMinusTenAndABumpLiftsIt) {
    AddEntity("player", 0, 50, 0);
    AddEntity("platform01", 0, 50, 0);
    StartLevel();
    GameObject* platform = Find("platform01");
    ASSERT_NE(platform, nullptr);
    Tick();
    EXPECT_FLOAT_EQ(platform->position[1], 49.0f);
    EXPECT_EQ(onGround, 1);
    Tick(80);
    EXPECT_FLOAT_EQ(platform->position[1], -10.0f);
    EXPECT_NEAR(player->position[1], -10.0f, 2.5f) << "the player rides it down";
    EXPECT_EQ(lives, 3) << "a long ride on a platform object is no fall";
}

TEST_F(PlayerTest, BumpingAPlatformObjectFromBelowLiftsItByTheOverlap) {
    Floor();
    AddEntity("player", 0, 0, 0);
    AddEntity("platform01", 0, 50, 0);  // its box spans 45 to 50; the head reaches 98.9
    StartLevel();
    GameObject* platform = Find("platform01");
    Tick();
    Key(VK_SPACE, 1);
    float before = platform->position[1];
    int lifted = 0;
    for (int t = 0; t < 10; t++) {
        Tick();
        lifted += platform->position[1] > before;
    }
    EXPECT_GT(lifted, 0);
    EXPECT_GT(platform->position[1], 50.0f);
}

// The probe lands on a piece no more than 80 below the last ground, else returns the start.
TEST_F(PlayerTest, JumpProbeLandsOnAPieceOrReturnsTheStartWhenItNeverLands) {
    AddPiece("start", "textures\\01\\rock.tga", -20, -10, -20, 20, 0, 20);
    AddPiece("far", "textures\\01\\rock.tga", -50, -30, 90, 50, -20, 120);
    AddEntity("player", 0, 0, 0, 0);
    StartLevel();
    float landing[3];
    JumpProbe(player->position, 0, landing);
    const float met = landing[1], metZ = landing[2];
    EXPECT_LE(met, -20.0f);
    EXPECT_GT(met, -20.0f - 8.0f) << "within one tick's fall of the top";
    EXPECT_GT(metZ, 90.0f - 7.0f);
    const struct {
        float drop, yaw;
        bool lands;
    } cases[] = {{79.9f, 0, true}, {80.1f, 0, false}, {0, 180, false}};  // 180: into the void
    for (const auto& c : cases) {
        SCOPED_TRACE(c.drop);
        lastGround[1] = met + c.drop;
        JumpProbe(player->position, c.yaw, landing);
        EXPECT_FLOAT_EQ(landing[1], c.lands ? met : player->position[1]);
        EXPECT_FLOAT_EQ(landing[2], c.lands ? metZ : player->position[2]);
    }
    const CollisionBox& box = g_collision.slots[playerIndex]->boxes[0];
    EXPECT_FLOAT_EQ(box.offset[2], player->position[2]) << "the probe puts the box back";
}

// A wall in the way stops the probe along the wall's axis, so the jump comes down at its foot.
TEST_F(PlayerTest, JumpProbeComesDownAtTheFootOfAWallAlongEitherAxis) {
    Floor();
    AddPiece("north", "textures\\01\\rock.tga", -60, 0, 40, 60, 300, 50);
    AddPiece("south", "textures\\01\\rock.tga", -60, 0, -50, 60, 300, -40);
    AddPiece("east", "textures\\01\\rock.tga", 40, 0, -60, 50, 300, 60);
    AddPiece("west", "textures\\01\\rock.tga", -50, 0, -60, -40, 300, 60);
    AddEntity("player", 0, 0, 0, 0);
    StartLevel();
    for (float yaw : {0.0f, 90.0f, 180.0f, 270.0f}) {
        float landing[3];
        JumpProbe(player->position, yaw, landing);
        EXPECT_LT(fabsf(landing[0]), 40.0f) << yaw;
        EXPECT_LT(fabsf(landing[2]), 40.0f) << yaw;
        EXPECT_GT(fabsf(landing[0]) + fabsf(landing[2]), 20.0f) << yaw << ": it set off";
        EXPECT_NEAR(landing[1], 0.0f, 8.0f) << yaw;
    }
}

// A deep floor 85 (or 82) below the take-off, one small block 117 out along a chosen yaw, and
// the last ground 15 below the take-off, so that the probe lands on the deep floor: an unsafe
// drop for the assist, which tries yaws from 30 below the heading to just under 30 above.
TEST_F(PlayerTest, TheJumpAssistTurnsToTheFirstYawWithASafeLanding) {
    const struct {
        float blockYaw, deepTop, turnedTo;
    } cases[] = {{10, -85, 10}, {-30, -85, -30}, {30, -85, 0}, {10, -82, 10}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.blockYaw);
        g_location.Clear();
        AddPiece("deep", "textures\\01\\rock.tga", -600, -200, -600, 600, c.deepTop, 600);
        AddPiece("start", "textures\\01\\rock.tga", -8, -10, -8, 8, 0, 8);
        float bx = 117.0f * sinf(c.blockYaw * kDegToRad), bz = 117.0f * cosf(c.blockYaw * kDegToRad);
        AddPiece("block", "textures\\01\\rock.tga", bx - 2, -30, bz - 2, bx + 2, -20, bz + 2);
        AddEntity("player", 0, 0, 0, 0);
        StartLevel();
        Tick();
        lastGround[1] = -15.0f;
        onGround = 1;
        player->velocity[2] = 2.25f;  // running
        Key(VK_UP, 1);
        Key(VK_SPACE, 1);
        ReadPlayerInput();
        EXPECT_FLOAT_EQ(player->rotation[1], c.turnedTo);
        EXPECT_NEAR(player->velocity[0], 2.25f * sinf(c.turnedTo * kDegToRad), 1e-4);
        EXPECT_NEAR(player->velocity[2], 2.25f * cosf(c.turnedTo * kDegToRad), 1e-4);
        EXPECT_EQ(player->state, 2);
    }
}

// The stick walks the player toward the stick's direction relative to the camera, on the
// ground and off the belt only; centred, it does nothing and lets go of the up key it held.
TEST_F(PlayerTest, TheStickTurnsThePlayerRelativeToTheCameraOnlyOnPlainGround) {
    static SysJoystickState stick;
    g_readJoystick = [](SysJoystickState* out) {
        *out = stick;
        return 1;
    };
    const unsigned kLow = 0, kMid = 32767, kHigh = 65535;
    const struct {
        unsigned x, y;
        float turn;  // how far the player ends up left of the camera's yaw
    } cases[] = {{kHigh, kMid, 90},   {kMid, kHigh, 180}, {kLow, kMid, 270}, {kMid, kLow, 0},
                 {kHigh, kHigh, 135}, {kLow, kHigh, 225}, {kLow, kLow, 315}, {kHigh, kLow, 45}};
    FloorLevel(0, 0, 0);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.turn);
        stick.x = kMid;  // (32767 / 65535 - 0.5) * 2 is within the dead zone
        stick.y = kMid;
        player->rotation[1] = 7;
        Tick();
        EXPECT_EQ(g_window.keys[VK_UP], 0);
        EXPECT_FLOAT_EQ(player->rotation[1], 7.0f);
        stick.x = c.x;
        stick.y = c.y;
        float cameraYaw = g_camera.yaw;
        Tick();
        EXPECT_EQ(g_window.keys[VK_UP], 1);
        // Facings a whole turn apart are the same facing.
        EXPECT_NEAR(remainderf(player->rotation[1] - (cameraYaw - c.turn), 360.0f), 0.0f, 1e-3);
        EXPECT_EQ(player->state, 1);
    }
    // In the air the stick does not turn the player.
    stick.x = kMid;
    stick.y = kMid;
    Tick();
    player->rotation[1] = 7;
    Key(VK_SPACE, 1);
    Tick(2);
    ASSERT_EQ(onGround, 0);
    stick.x = kHigh;
    Tick(3);
    EXPECT_FLOAT_EQ(player->rotation[1], 7.0f);
    // Nor on a conveyor: the belt turns the player back along it at every landing, but a
    // jump leaves the belt with the facing the take-off had.
    g_location.Clear();
    AddPiece("belt", "textures\\01\\conveyer.tga", -100, -10, -400, 100, 0, 400);
    AddEntity("player", 0, 0, 0, 0);
    StartLevel();
    Tick(2);
    ASSERT_EQ(onConveyor, 1);
    Key(VK_SPACE, 1);
    Tick();
    ASSERT_EQ(onGround, 0);
    EXPECT_FLOAT_EQ(player->rotation[1], 180.0f);
    g_readJoystick = nullptr;
}

TEST_F(PlayerTest, AnimationLoopsStandingRunningAndHoldsTheJumpUntilTheGround) {
    FloorLevel(0, 0, 0);
    Tick();
    for (int key : {0, int(VK_UP)}) {
        Key(key, 1);
        float low = key ? 12.0f : 0.0f, high = key ? 23.0f : 12.0f, highest = 0;
        for (int i = 0; i < 100; i++) {
            Tick();
            EXPECT_GE(player->animTime, low);
            EXPECT_LT(player->animTime, high);
            highest = fmaxf(highest, player->animTime);
        }
        EXPECT_GT(highest, high - 1.0f) << "the whole stretch plays";
    }
    Key(VK_UP, 0);
    Key(VK_SPACE, 1);
    Tick();
    EXPECT_NEAR(player->animTime, 23.35f, 1e-4);
    Tick(22);
    EXPECT_FLOAT_EQ(player->animTime, 30.0f) << "held at 30 while in the air";
    EXPECT_EQ(player->currentFrame, 30);
}

}  // namespace
