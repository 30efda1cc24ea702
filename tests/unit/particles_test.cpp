// The particle pool: spawning into the lowest free record, the full pool, the
// frame strip with its loop, the bounce, the shatter, the drift box and the
// draw list that keeps a particle dying in this tick.
#include "game/particles.h"

#include <gtest/gtest.h>

#include <cstring>

#include "app/random.h"

namespace {

ParticleSpawn Plain(float y) {
    ParticleSpawn s;
    memset(&s, 0, sizeof(s));
    s.texture = "particle_fire.tga";
    s.position[1] = y;
    s.frameCount = 1;
    return s;
}

class ParticlesTest : public ::testing::Test {
protected:
    void SetUp() override { ResetParticles(); }
    void TearDown() override { ResetParticles(); }
};

}  // namespace

TEST_F(ParticlesTest, AFullPoolRefusesAndOverwritesNothing) {
    ParticleSpawn s = Plain(10);
    for (int i = 0; i < kParticleCount; i++) {
        ASSERT_EQ(SpawnParticle(s), i);
    }
    Particle before = particles[4999];
    s.position[1] = 77;
    EXPECT_EQ(SpawnParticle(s), -1);
    EXPECT_EQ(memcmp(&before, &particles[4999], sizeof(Particle)), 0);
}

TEST_F(ParticlesTest, FlameStripRunsToItsLastFrameThenRestsOnTheLoopFrame) {
    ParticleSpawn s = Plain(100);
    s.frameCount = 16;
    s.lastFrame = 15;
    s.loopFrame = 14;
    s.frameRate = 2.2f;
    SpawnParticle(s);
    float expected[] = {2.2f, 4.4f, 6.6f, 8.8f, 11.0f, 13.2f, 14.0f, 14.0f, 14.0f};
    for (float e : expected) {
        UpdateParticles();
        EXPECT_NEAR(particles[0].frame, e, 1e-4);
    }
}

TEST_F(ParticlesTest, MotionAddsAccelerationFirstAndLifeEndsAtOne) {
    ParticleSpawn s = Plain(100);
    s.velocity[1] = -2;
    s.acceleration[1] = -0.5f;
    s.lifeRate = 0.25f;
    SpawnParticle(s);
    UpdateParticles();
    EXPECT_FLOAT_EQ(particles[0].velocity[1], -2.5f);
    EXPECT_FLOAT_EQ(particles[0].position[1], 97.5f);
    UpdateParticles();
    UpdateParticles();
    EXPECT_EQ(particles[0].active, 1);
    UpdateParticles();  // life reaches 1.0 in this tick
    EXPECT_EQ(particles[0].active, 0);
    EXPECT_EQ(drawCount, 1);  // still drawn in the tick it dies
    UpdateParticles();
    EXPECT_EQ(drawCount, 0);
}

TEST_F(ParticlesTest, BehaviourOneBouncesAt5Point3WithSixTenthsOfTheSpeed) {
    ParticleSpawn s = Plain(20);
    s.velocity[1] = -2;
    s.behaviour = 1;
    SpawnParticle(s);
    for (int i = 0; i < 7; i++) {
        UpdateParticles();
    }
    EXPECT_FLOAT_EQ(particles[0].position[1], 6);
    UpdateParticles();  // 4.0: below the floor
    EXPECT_FLOAT_EQ(particles[0].position[1], 5.3f);
    EXPECT_FLOAT_EQ(particles[0].velocity[1], 1.2f);
}

TEST_F(ParticlesTest, BehaviourTwoShattersIntoAFloorSparkleAndDies) {
    ResetRand();
    ParticleSpawn s = Plain(3);
    s.behaviour = 2;
    SpawnParticle(s);
    UpdateParticles();
    EXPECT_EQ(particles[0].active, 0);
    ASSERT_EQ(particles[1].active, 1);
    EXPECT_STREQ(particles[1].texture, "particle_sparkle.tga");
    EXPECT_EQ(particles[1].behaviour, 1);
    EXPECT_FLOAT_EQ(particles[1].position[1], 5.3f);
    EXPECT_FLOAT_EQ(particles[1].alphaStart, 0.5f);
    EXPECT_GE(particles[1].lifeRate, 0.01f);
    EXPECT_LT(particles[1].lifeRate, 0.02f);
    EXPECT_GE(particles[0].rotation, 2.0f);  // spun by 2 + (random mod 200) / 100
    EXPECT_LT(particles[0].rotation, 4.0f);
}

TEST_F(ParticlesTest, BehaviourThreeDiesWhenItLeavesTheLevelBox) {
    struct {
        float x, y, z;
        int dies;
    } cases[] = {{0, 50, 0, 0},    {181, 50, 0, 1}, {-181, 50, 0, 1}, {0, 50, 201, 1},
                 {0, 50, -221, 1}, {0, -1, 0, 1},   {0, 50, 199, 0},  {179, 50, -219, 0}};
    for (auto& c : cases) {
        ResetParticles();
        ParticleSpawn s = Plain(c.y);
        s.position[0] = c.x;
        s.position[2] = c.z;
        s.behaviour = 3;
        s.lifeRate = 0.003f;
        SpawnParticle(s);
        UpdateParticles();
        EXPECT_EQ(particles[0].active, c.dies ? 0 : 1) << c.x << "," << c.y << "," << c.z;
        if (!c.dies) {
            EXPECT_LE(particles[0].velocity[0], 0.125f);
            EXPECT_GE(particles[0].velocity[0], -0.125f);
        }
    }
}

