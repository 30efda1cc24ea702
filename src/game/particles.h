// The particle pool: every small effect of the game, the closing scenes and the
// title menu (jump flame, dust, sparkles, gore, leaves) is a camera-facing quad
// from one global pool of 5000. A particle is spawned with its whole life
// described up front (motion, colour, size and opacity at birth and at death, a
// texture strip to animate through, a lifetime rate and a behaviour), so the
// per-tick update needs no callbacks. The update never touches GL; it collects
// the live particles into the draw list that the scene draw functions draw.
//
// Behaviours: 0 plain, 1 additive and bouncing off the floor at height 5.2,
// 2 bouncing and shattering into a floor sparkle, 3 drifting in the wind until
// it leaves the level's box.
#pragma once

struct Particle {
    unsigned char active;
    char texture[51];
    float position[3];
    float velocity[3];        // added to position every tick
    float rotation;           // degrees about the view axis
    float acceleration[3];    // added to velocity every tick
    unsigned char behaviour;  // 0 plain, 1 additive bouncing, 2 shattering, 3 drifting
    float life;               // 0 at birth to 1 at death; the blend factor of the start/end values
    float lifeRate;
    float colourStart[3];
    float colourEnd[3];
    float sizeStart[3];  // width, height, and an unused 0
    float sizeEnd[3];
    float alphaStart;
    float alphaEnd;
    unsigned char frameCount;  // cells side by side in the texture strip
    unsigned char firstFrame;
    unsigned char lastFrame;
    unsigned char loopFrame;
    float frame;
    float frameRate;  // 0 keeps the frame fixed
};

// Everything SpawnParticle needs, in one record so call sites name what they set.
struct ParticleSpawn {
    float position[3];
    float velocity[3];
    float acceleration[3];
    const char* texture;
    float rotation;
    float colourStart[3];
    float colourEnd[3];
    float sizeStart[2];
    float sizeEnd[2];
    float alphaStart;
    float alphaEnd;
    unsigned char frameCount;
    unsigned char firstFrame;
    unsigned char lastFrame;
    unsigned char loopFrame;
    float frame;
    float frameRate;
    float life;
    float lifeRate;
    unsigned char behaviour;
};

const int kParticleCount = 5000;

extern Particle particles[kParticleCount];
extern Particle* drawList[kParticleCount];
extern int drawCount;

// Deactivates and zeroes every particle and empties the draw list.
void ResetParticles();
// Takes the lowest free particle and fills it; its index, or -1 when the pool is full.
int SpawnParticle(const ParticleSpawn& spawn);
// One tick of every live particle; rebuilds the draw list (a particle dying now is still in it).
void UpdateParticles();

// The game's presets (random sizes, rates and rotation drawn from Rand()).
// Two flame puffs are spawned per tick of a fast rise, at the given point.
int SpawnJumpFlame(const float* position);
// A large slow dust cloud falling from (x, y, z).
int SpawnDust(float x, float y, float z);
// A drifting star that dies when it leaves the level's box.
int SpawnSparkle(float x, float y, float z);
// The foot's gore: one of each per tick of the impact.
int SpawnGibs(const float* position);
int SpawnBlood(const float* position);
int SpawnRedSmoke(const float* position);
// The additive spark a shattering particle leaves on the floor.
int SpawnFloorSparkle(const float* position);
