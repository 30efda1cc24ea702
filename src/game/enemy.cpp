#include "game/enemy.h"

#include <cmath>
#include <cstring>

#include "game/collision_world.h"
#include "game/game_object.h"
#include "resources/geometry.h"
#include "resources/location.h"
#include "resources/model.h"

static const float kEnemyStep = 1.9f;

float Heading(const float* p, const float* t) {
    float dx = t[0] - p[0];
    float dy = t[1] - p[1];
    float r = sqrtf(dx * dx + dy * dy);
    if (r == 0) {
        r = 0.01f;
    }
    float nx = dx / r;
    float ny = dy / r;
    float s = nx > 1.0f ? 1.0f : (nx < -1.0f ? -1.0f : nx);
    float a = ny <= 0 ? asinf(s) : 3.14159265f - asinf(s);
    return 180.0f - a / kDegToRad;
}

// Reached: snap to the point and take the next one, or point 0 after the last.
static void NextRoutePoint(GameObject* enemy, const float* target) {
    memcpy(enemy->position, target, 3 * sizeof(float));
    enemy->counter += 1;
    if (!FindRoutePoint(enemy->name, static_cast<int>(enemy->counter), &enemy->link)) {
        enemy->counter = 0;
        FindRoutePoint(enemy->name, 0, &enemy->link);
    }
}

static void StepTowards(int slot, const float* target) {
    GameObject* enemy = objects[slot];
    for (int k = 0; k < 3; k++) {
        if (target[k] < enemy->position[k]) {
            enemy->position[k] -= kEnemyStep;
        }
        if (enemy->position[k] < target[k]) {
            enemy->position[k] += kEnemyStep;
        }
    }
    enemy->rotation[1] = Heading(enemy->position, target) + 90.0f;
    if (slot < CollisionWorld::kSlotCount && g_collision.slots[slot]) {
        memcpy(g_collision.slots[slot]->boxes[0].offset, enemy->position, 3 * sizeof(float));
    }
}

void UpdateEnemy(int slot) {
    GameObject* enemy = objects[slot];
    if (enemy->onRoute && enemy->link >= 0 && enemy->link < g_location.entityCount &&
        g_location.entities[enemy->link]) {
        float target[3];
        memcpy(target, g_location.entities[enemy->link]->position, sizeof(target));
        Vec3 a = {enemy->position[0], enemy->position[1], enemy->position[2]};
        Vec3 b = {target[0], target[1], target[2]};
        if (Distance(a, b) < 5.0f) {
            NextRoutePoint(enemy, target);
        } else {
            StepTowards(slot, target);
        }
    }
    enemy->animTime += 0.3f;
    int f = static_cast<int>(enemy->animTime);
    if (f < 0 || f >= Model::kMaxFrames || !enemy->model->frames[f]) {
        enemy->animTime = 0;
    }
    enemy->ShowAnimFrame();
}
