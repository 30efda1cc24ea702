#include "game/particles.h"

#include <cstring>

#include "app/random.h"

Particle particles[kParticleCount];
Particle* drawList[kParticleCount];
int drawCount = 0;

void ResetParticles() {
    memset(particles, 0, sizeof(particles));
    memset(drawList, 0, sizeof(drawList));
    drawCount = 0;
}

int SpawnParticle(const ParticleSpawn& spawn) {
    int index = -1;
    for (int i = 0; i < kParticleCount; i++) {
        if (!particles[i].active) {
            index = i;
            break;
        }
    }
    if (index < 0) {
        return -1;
    }
    Particle& p = particles[index];
    memset(&p, 0, sizeof(p));
    memcpy(p.position, spawn.position, sizeof(p.position));
    memcpy(p.velocity, spawn.velocity, sizeof(p.velocity));
    memcpy(p.acceleration, spawn.acceleration, sizeof(p.acceleration));
    if (spawn.texture) {
        strncpy(p.texture, spawn.texture, sizeof(p.texture) - 1);
    }
    p.rotation = spawn.rotation;
    memcpy(p.colourStart, spawn.colourStart, sizeof(p.colourStart));
    memcpy(p.colourEnd, spawn.colourEnd, sizeof(p.colourEnd));
    p.sizeStart[0] = spawn.sizeStart[0];
    p.sizeStart[1] = spawn.sizeStart[1];
    p.sizeEnd[0] = spawn.sizeEnd[0];
    p.sizeEnd[1] = spawn.sizeEnd[1];
    p.alphaStart = spawn.alphaStart;
    p.alphaEnd = spawn.alphaEnd;
    p.frameCount = spawn.frameCount;
    p.firstFrame = spawn.firstFrame;
    p.lastFrame = spawn.lastFrame;
    p.loopFrame = spawn.loopFrame;
    p.frame = spawn.frame;
    p.frameRate = spawn.frameRate;
    p.life = spawn.life;
    p.lifeRate = spawn.lifeRate;
    p.behaviour = spawn.behaviour;
    p.active = 1;
    return index;
}

// Bounce off the floor at height 5.2, losing 40% of the speed.
static void Bounce(Particle& p) {
    if (p.position[1] <= 5.2f) {
        p.position[1] = 5.3f;
        p.velocity[1] *= -0.6f;
    }
}

// Wind wander of at most 0.125 a tick on x and z; dies outside the level's box.
static void Drift(Particle& p) {
    p.velocity[0] += (250 - Rand() % 500) * 0.0005f;
    p.velocity[2] += (250 - Rand() % 500) * 0.0005f;
    if (p.position[1] < 0.0f || p.position[0] < -180.0f || p.position[0] > 180.0f ||
        p.position[2] < -220.0f || p.position[2] > 200.0f) {
        p.life = 1.0f;
    }
}

static void UpdateOne(Particle& p) {
    for (int k = 0; k < 3; k++) {
        p.velocity[k] += p.acceleration[k];
        p.position[k] += p.velocity[k];
    }
    if (p.behaviour == 1) {
        Bounce(p);
    } else if (p.behaviour == 2) {
        Bounce(p);
        SpawnFloorSparkle(p.position);
        p.life = 1.0f;
    } else if (p.behaviour == 3) {
        Drift(p);
    }
    if (p.behaviour == 2) {
        p.rotation += 2.0f + (Rand() % 200) / 100.0f;
    }
    p.frame += p.frameRate;
    if (p.frameRate != 0.0f && (p.frame >= p.lastFrame || p.frame < p.firstFrame)) {
        p.frame = p.loopFrame;
    }
    p.life += p.lifeRate;
    if (p.life >= 1.0f) {
        p.active = 0;
    }
}

void UpdateParticles() {
    drawCount = 0;
    for (int i = 0; i < kParticleCount; i++) {
        Particle& p = particles[i];
        if (!p.active) {
            continue;
        }
        drawList[drawCount++] = &p;
        UpdateOne(p);
    }
}
