#include "game/game_update.h"

#include <strings.h>

#include <cmath>
#include <cstring>

#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "audio/sound_system.h"
#include "game/closing_scene.h"
#include "game/enemy.h"
#include "game/game_object.h"
#include "game/game_sounds.h"
#include "game/game_state.h"
#include "game/hazards.h"
#include "game/level_loading.h"
#include "game/particles.h"
#include "game/player.h"
#include "platform/sys_keys.h"
#include "resources/location.h"
#include "resources/resource_manager.h"
#include "ui/text_batch.h"

// A debug key acts only in debug mode, and only then is its flag taken.
static int TakeDebugKey(int key) {
    if (!g_debug || !g_window.keys[key]) {
        return 0;
    }
    g_window.keys[key] = 0;
    return 1;
}

// O: every key vanishes without points; doors open when no key is left.
static void RemoveKeys() {
    for (int i = 0; i < kMaxObjects; i++) {
        if (objects[i] && strcasecmp(objects[i]->type, "key") == 0) {
            DestroyObject(i);
        }
    }
    if (CountObjectsOfType("key") == 0) {
        OpenExits();
    }
}

// 1 when the tick ends here (G, or the pause).
static int DebugKeysAndPause() {
    if (TakeDebugKey('G')) {
        lives = 0;
        LoadLevel();
        return 1;
    }
    if (TakeDebugKey('O')) {
        RemoveKeys();
    }
    if (TakeDebugKey('L') && g_window.renderContext) {
        g_location.lightmaps.Upload();
    }
    if (g_window.keys['P']) {
        g_window.keys['P'] = 0;
        paused = !paused;
        pauseAngle = 0;
    }
    if (g_window.flashIntensity > 0) {
        g_window.flashIntensity -= 0.1f;
    }
    if (!paused) {
        return 0;
    }
    if (player) {
        g_camera.position = Vec3{player->position[0], player->position[1], player->position[2]};
        g_camera.yaw = pauseAngle * 20.0f;
        g_camera.pitch = sinf(pauseAngle * 0.5f) * 25.0f;
        g_camera.MoveUp(-5.0f);
        g_camera.MoveForward(-150.0f);
        pauseAngle += 0.05f;
    }
    return 1;
}

void PlaceGameCamera() {
    if (!player) {
        g_camera.position = Vec3{5.6f, 206.2f, 1080.9f};
        return;
    }
    const float* p = player->position;
    if (sqrtf(p[0] * p[0] + p[2] * p[2]) > 30.0f) {
        Vec3 d = {p[0], 0, p[2]};
        MovePoint(d, d, player->rotation[1], 0.0f, 1.0f);
        if (d.z == 0) {
            d.z = 0.1f;
        }
        Normalise(d);
        g_camera.position = Vec3{d.x * 505.0f, p[1] + 75.0f, d.z * 505.0f};
        g_camera.LookAt(0, p[1] - 35.0f, 0);
        g_window.fov = 30;
    } else {
        g_camera.position = Vec3{0, p[1] + 50.0f, 500.0f};
        g_camera.LookAt(p[0], p[1], p[2]);
    }
}

void RunParticleEmitters() {
    for (int e = 0; e < g_location.entityCount; e++) {
        const LocationEntity* entity = g_location.entities[e];
        if (!entity) {
            continue;
        }
        if (strcasecmp(entity->name, "particle_dirt") == 0 && Rand() % 50 < 5) {
            float x = static_cast<float>(200 - Rand() % 400);
            float z = static_cast<float>(200 - Rand() % 400);
            SpawnDust(x, entity->position[1], z);
        }
        if (strcasecmp(entity->name, "particle_sparkles") == 0 && Rand() % 100 < 5) {
            float x = static_cast<float>(150 - Rand() % 300);
            float z = static_cast<float>(150 - Rand() % 300);
            SpawnSparkle(x, entity->position[1], z);
        }
    }
}

static void ObjectPass() {
    for (int i = 0; i < kMaxObjects; i++) {
        GameObject* object = objects[i];
        if (!object) {
            continue;
        }
        const char* type = object->type;
        if (strcmp(type, "player") == 0 && object->model) {
            AnimatePlayer(object);
        } else if (strcmp(type, "foot") == 0 && object->model && object->counter != 0) {
            FootStep(object, 0);
        } else if (strcmp(type, "enemy") == 0 && object->model) {
            UpdateEnemy(i);
        } else if (strcmp(type, "collapse") == 0 && object->model && object->animTime > 0) {
            AnimateCollapse(object);
        } else if (strcmp(type, "exit") == 0 && object->link != 0) {
            RaiseExit(i);
        }
    }
}

void UpdateGame() {
    if (DebugKeysAndPause()) {
        return;
    }
    animClock += 0.02f;
    if (player && AirStep()) {
        return;
    }
    UpdateParticles();
    ReadPlayerInput();
    MovePlayer();
    if (CollidePlayerWithPieces() || CollidePlayerWithObjects()) {
        return;
    }
    PlaceGameCamera();
    if (onGround && player) {
        memcpy(lastGround, player->position, sizeof(lastGround));
    }
    RunParticleEmitters();
    ObjectPass();
    if (kSoundEnabled) {
        const float at[3] = {g_camera.position.x, g_camera.position.y, g_camera.position.z};
        const float angles[3] = {g_camera.pitch, g_camera.yaw, g_camera.roll};
        g_sound.PlaceListener(at, angles);
    }
}

void InitGame() {
    LoadGameSounds(&g_resources);
    g_levelTitleText.AddEntry("", 0, 0, 800, 25, 1.0f, 1);
    g_scoreText.AddEntry("", 190, 0, 800, 26, 1.0f, 0);
    g_scoreText.AddEntry("", 550, 0, 800, 26, 1.0f, 0);
    g_completedText.AddEntry("Completed!", 0, 0, 800, 64, 1.0f, 1);
    g_completedText.Build();
    // Freed, not forgotten: the replay runner starts one game after another in a single run.
    DeleteAllObjects();
}
