// The game's particle presets. Random numbers are drawn in a fixed order per
// preset (direction, sizes, start frame, life rate, rotation) so that a replay
// spawns exactly the same particles.
#include <cmath>
#include <cstring>

#include "app/random.h"
#include "game/particles.h"
#include "resources/geometry.h"

static const float kDegreesToRadians = 0.017453292f;

// A preset starts white, fully opaque at birth and gone at death, with life 0.
static ParticleSpawn BasePreset(const char* texture, float x, float y, float z) {
    ParticleSpawn s;
    memset(&s, 0, sizeof(s));
    s.texture = texture;
    s.position[0] = x;
    s.position[1] = y;
    s.position[2] = z;
    for (int k = 0; k < 3; k++) {
        s.colourStart[k] = 1.0f;
        s.colourEnd[k] = 1.0f;
    }
    s.alphaStart = 1.0f;
    s.alphaEnd = 0.0f;
    s.frameCount = 1;
    return s;
}

static void SetFrames(ParticleSpawn& s, int count, int first, int last, int loop, float frame, float rate) {
    s.frameCount = static_cast<unsigned char>(count);
    s.firstFrame = static_cast<unsigned char>(first);
    s.lastFrame = static_cast<unsigned char>(last);
    s.loopFrame = static_cast<unsigned char>(loop);
    s.frame = frame;
    s.frameRate = rate;
}

// u of the preset table: a fraction in hundredths.
static float RandFraction() {
    return (Rand() % 100) / 100.0f;
}

static int SpawnWithRotation(ParticleSpawn& s) {
    s.rotation = static_cast<float>(Rand() % 360);
    return SpawnParticle(s);
}

int SpawnJumpFlame(const float* position) {
    ParticleSpawn s = BasePreset("particle_fire.tga", position[0], position[1], position[2]);
    s.acceleration[1] = -0.02f;
    s.sizeStart[0] = 8.0f + Rand() % 4;
    s.sizeStart[1] = 8.0f + Rand() % 4;
    s.sizeEnd[0] = 4.0f + Rand() % 4;
    s.sizeEnd[1] = 4.0f + Rand() % 4;
    SetFrames(s, 16, 0, 15, 14, 0.0f, 2.2f);
    s.lifeRate = 0.005f + 0.2f * RandFraction();
    return SpawnWithRotation(s);
}

int SpawnDust(float x, float y, float z) {
    ParticleSpawn s = BasePreset("particle_fire.tga", x, y, z);
    s.velocity[1] = -1.5f;
    s.acceleration[1] = 0.001f;
    float r = static_cast<float>(Rand() % 10);
    s.sizeStart[0] = s.sizeStart[1] = 124.0f + r;
    s.sizeEnd[0] = s.sizeEnd[1] = 196.0f + r;
    s.alphaStart = 0.5f;
    SetFrames(s, 16, 14, 15, 14, 14.0f, 0.0f);
    s.lifeRate = 0.0015f + 0.002f * RandFraction();
    return SpawnWithRotation(s);
}

int SpawnSparkle(float x, float y, float z) {
    ParticleSpawn s = BasePreset("particle_star.tga", x, y, z);
    float yaw = static_cast<float>(15 - Rand() % 30);
    float pitch = static_cast<float>(100 - Rand() % 20);
    Vec3 velocity = {0.0f, 0.0f, 0.0f};
    MovePoint(velocity, velocity, yaw, pitch, 1.5f);
    s.velocity[0] = velocity.x;
    s.velocity[1] = velocity.y;
    s.velocity[2] = velocity.z;
    s.sizeStart[0] = s.sizeStart[1] = 4.0f;
    s.sizeEnd[0] = s.sizeEnd[1] = 2.0f;
    s.lifeRate = 0.003f;
    s.behaviour = 3;
    return SpawnWithRotation(s);
}

// Gore flies out on a random bearing a, drawn anew for every particle.
static void SetBurst(ParticleSpawn& s, float up) {
    float a = (Rand() % 360) * kDegreesToRadians;
    s.velocity[0] = 0.8f * sinf(a);
    s.velocity[1] = up;
    s.velocity[2] = 0.8f * cosf(a);
    s.acceleration[1] = -0.02f;
}

int SpawnGibs(const float* position) {
    ParticleSpawn s = BasePreset("particle_gibs.tga", position[0], position[1], position[2]);
    SetBurst(s, 0.8f);
    s.sizeStart[0] = 8.0f + Rand() % 24;
    s.sizeStart[1] = 8.0f + Rand() % 24;
    s.sizeEnd[0] = 8.0f + Rand() % 24;
    s.sizeEnd[1] = 8.0f + Rand() % 24;
    SetFrames(s, 4, 0, 4, 0, static_cast<float>(Rand() % 4), 0.0f);
    s.lifeRate = 0.005f + 0.02f * RandFraction();
    return SpawnWithRotation(s);
}

int SpawnBlood(const float* position) {
    ParticleSpawn s = BasePreset("particle_blood.tga", position[0], position[1], position[2]);
    SetBurst(s, -0.8f);
    s.sizeStart[0] = 8.0f + Rand() % 24;
    s.sizeStart[1] = 8.0f + Rand() % 24;
    s.sizeEnd[0] = 18.0f + Rand() % 24;
    s.sizeEnd[1] = 18.0f + Rand() % 24;
    SetFrames(s, 1, 0, 1, 0, 0.0f, 0.0f);
    s.lifeRate = 0.005f + 0.02f * RandFraction();
    return SpawnWithRotation(s);
}

int SpawnRedSmoke(const float* position) {
    ParticleSpawn s = BasePreset("particle_smoke.tga", position[0], position[1], position[2]);
    SetBurst(s, -0.2f);
    s.acceleration[1] = -0.04f;
    s.sizeStart[0] = 28.0f + Rand() % 24;
    s.sizeStart[1] = 28.0f + Rand() % 24;
    s.sizeEnd[0] = 18.0f + Rand() % 24;
    s.sizeEnd[1] = 18.0f + Rand() % 24;
    s.alphaStart = 0.6f;
    s.colourStart[0] = s.colourEnd[0] = 0.8f;
    s.colourStart[1] = s.colourEnd[1] = 0.0f;
    s.colourStart[2] = s.colourEnd[2] = 0.0f;
    SetFrames(s, 1, 0, 1, 0, 0.0f, 0.0f);
    s.lifeRate = 0.005f + 0.02f * RandFraction();
    return SpawnWithRotation(s);
}

int SpawnFloorSparkle(const float* position) {
    ParticleSpawn s = BasePreset("particle_sparkle.tga", position[0], position[1], position[2]);
    s.sizeStart[0] = s.sizeStart[1] = 1.0f;
    s.sizeEnd[0] = s.sizeEnd[1] = 1.0f;
    s.alphaStart = 0.5f;
    s.lifeRate = 0.01f + 0.01f * RandFraction();
    s.behaviour = 1;
    return SpawnWithRotation(s);
}
