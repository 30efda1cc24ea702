#include "game/player.h"

#include <cmath>
#include <cstring>

#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_camera.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_sounds.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "platform/sys_joystick.h"
#include "platform/sys_keys.h"
#include "resources/location.h"
#include "resources/mesh.h"
#include "resources/model.h"

int (*g_readJoystick)(SysJoystickState* out) = Sys_JoystickGetPos;
float g_joystickAngle;
float g_joystickX;
float g_joystickY;

const char kPlatformTexture[] = "textures\\01\\platform.tga";
const char kConveyorTexture[] = "textures\\01\\conveyer.tga";

static const float kWalkSpeed = 2.25f;
static const float kBackStep = -1.0f;
static const float kTurnSpeed = 4.5f;
static const float kJumpVelocity = -4.75f;
static const float kGravity = 0.2f;

// Adds distance along yaw (pitch 0) to a three-float vector.
static void MoveAlongYaw(float* v, float yaw, float distance) {
    Vec3 p = {v[0], v[1], v[2]};
    MovePoint(p, p, yaw, 0.0f, distance);
    v[0] = p.x;
    v[1] = p.y;
    v[2] = p.z;
}

CollisionShape* PlayerShape() {
    if (playerIndex < 0 || playerIndex >= CollisionWorld::kSlotCount) {
        return nullptr;
    }
    return g_collision.slots[playerIndex];
}

// A deflected stick walks the player in the stick's direction relative to the camera; the stick
// holds the up key for that and lets go of it again in the next tick.
static void ReadJoystick() {
    SysJoystickState stick;
    if (!g_readJoystick || !g_readJoystick(&stick)) {
        g_joystickAngle = g_joystickX = g_joystickY = 0.0f;
        return;
    }
    float jx = (stick.x / 65535.0f - 0.5f) * 2.0f;
    float jy = (stick.y / 65535.0f - 0.5f) * 2.0f;
    float m = sqrtf(jx * jx + jy * jy);
    if (jx > -0.01f && jx < 0.01f) {
        jx = 0;
    }
    if (jy > -0.01f && jy < 0.01f) {
        jy = 0;
    }
    if (jx != 0) {
        jx /= m;
    }
    if (jy != 0) {
        jy /= m;
    }
    float s = jx > 1.0f ? 1.0f : (jx < -1.0f ? -1.0f : jx);
    float a = asinf(s) / kDegToRad;
    if (jy > 0) {
        a = 180.0f - a;
    } else if (jx < 0) {
        a += 360.0f;
    }
    g_joystickAngle = a;
    g_joystickX = jx;
    g_joystickY = jy;
    if (g_window.joystickFlags[JoyLatchUp]) {
        g_window.joystickFlags[JoyLatchUp] = 0;
        g_window.keys[VK_UP] = 0;
    }
    if (player && (jx != 0 || jy != 0)) {
        if (onGround && !onConveyor) {
            player->rotation[1] = g_camera.yaw - a;
        }
        g_window.keys[VK_UP] = 1;
        g_window.joystickFlags[JoyLatchUp] = 1;
    }
}

static void Walk() {
    if (levelComplete || !player || !onGround) {
        return;
    }
    float step = 0;
    if (g_window.keys[VK_UP] && !onConveyor) {
        step = kWalkSpeed;
    } else if (g_window.keys[VK_DOWN]) {
        step = kBackStep;
    } else {
        return;
    }
    player->state = 1;
    player->velocity[0] = 0;
    player->velocity[2] = 0;
    MoveAlongYaw(player->velocity, player->rotation[1], step);
}

// Tries yaws from 30 below to 30 above the heading for a jump that lands within 80 of the take-off.
static void JumpAssist() {
    float landing[3];
    float yaw = player->rotation[1];
    JumpProbe(player->position, yaw, landing);
    if (player->position[1] - landing[1] <= 80.0f) {
        return;
    }
    for (float tried = yaw - 30.0f; tried < yaw + 30.0f; tried += 5.0f) {
        JumpProbe(player->position, tried, landing);
        if (player->position[1] - landing[1] < 80.0f) {
            player->rotation[1] = tried;
            player->velocity[0] = 0;
            player->velocity[2] = 0;
            MoveAlongYaw(player->velocity, tried, kWalkSpeed);
            return;
        }
    }
}

static void Jump() {
    if (levelComplete || !player || !g_window.keys[VK_SPACE] || !onGround) {
        return;
    }
    if (!onConveyor && g_window.keys[VK_UP] && (player->velocity[0] != 0 || player->velocity[2] != 0)) {
        JumpAssist();
    }
    PlayGameSoundAt(SoundJump, player->position, 1.0f);
    g_window.keys[VK_SPACE] = 0;
    player->animTime = 23.0f;
    player->velocity[1] = kJumpVelocity;
    player->position[1] += 0.1f;
    player->state = 2;
    onGround = 0;
}

static void JumpFlame() {
    if (!player || player->velocity[1] >= -3.0f) {
        return;
    }
    float yaw = player->rotation[1];
    float point[3] = {player->position[0], player->position[1], player->position[2]};
    MoveAlongYaw(point, yaw, -10.0f);
    MoveAlongYaw(point, yaw + 90.0f, -3.0f);
    SpawnJumpFlame(point);
    MoveAlongYaw(point, yaw + 90.0f, 6.0f);
    SpawnJumpFlame(point);
}

static void Footsteps() {
    if (!player) {
        return;
    }
    float t = player->animTime;
    if ((t >= 16.0f && t <= 16.5f) || (t >= 22.0f && t <= 22.5f)) {
        PlayGameSoundAt(Rand() % 4 + SoundRun1, player->position, 1.0f);
    }
}

static void Turn() {
    if (levelComplete || !player || !onGround || onConveyor) {
        return;
    }
    if (g_window.keys[VK_LEFT]) {
        player->rotation[1] += kTurnSpeed;
    }
    if (g_window.keys[VK_RIGHT]) {
        player->rotation[1] -= kTurnSpeed;
    }
}

void ReadPlayerInput() {
    if (player && player->state == 1) {
        player->state = 0;
    }
    ReadJoystick();
    Walk();
    Jump();
    JumpFlame();
    Footsteps();
    Turn();
}

void MovePlayer() {
    if (player) {
        player->position[1] -= player->velocity[1];
        player->velocity[1] += kGravity;
        player->position[0] += player->velocity[0];
        player->position[2] += player->velocity[2];
        if (onGround) {
            player->velocity[0] = 0;
            player->velocity[2] = 0;
        }
        CollisionShape* shape = PlayerShape();
        if (shape) {
            memcpy(shape->boxes[0].offset, player->position, sizeof(player->position));
        }
    }
    onGround = 0;
    onConveyor = 0;
}

// A solid piece and its box; 0 for pieces that are not solid or have no geometry.
int SolidPieceBox(const LocationPiece* piece, const float** min, const float** max) {
    if (!piece || !(piece->model.modelFlag & 0x40) || !piece->model.frames[0]) {
        return 0;
    }
    *min = piece->model.frames[0]->boundsMin;
    *max = piece->model.frames[0]->boundsMax;
    return 1;
}

void JumpProbe(const float* start, float yaw, float* landing) {
    CollisionShape* shape = PlayerShape();
    if (!shape) {
        memcpy(landing, start, 3 * sizeof(float));
        return;
    }
    float saved[3];
    memcpy(saved, shape->boxes[0].offset, sizeof(saved));
    float q[3] = {start[0], start[1] + 0.1f, start[2]};
    float v[3] = {0, 0, 0};
    MoveAlongYaw(v, yaw, kWalkSpeed);
    v[1] = kJumpVelocity;
    int landed = 0;
    for (int step = 0; step < 1000 && !landed; step++) {
        q[1] -= v[1];
        v[1] += kGravity;
        q[0] += v[0];
        q[2] += v[2];
        for (int i = 0; i < g_location.pieceCount && player && !landed; i++) {
            const LocationPiece* piece = g_location.pieces[i];
            const float *min, *max;
            if (!SolidPieceBox(piece, &min, &max)) {
                continue;
            }
            memcpy(shape->boxes[0].offset, q, sizeof(q));
            if (!g_collision.TestShapeAgainstBox(playerIndex, min, max, nullptr)) {
                continue;
            }
            int platform = strcmp(piece->textureName, kPlatformTexture) == 0;
            int side = g_collision.side;
            if ((side == 1 || side == 2) && !platform) {
                v[0] = 0;
            } else if ((side == 3 || side == 4) && !platform) {
                v[2] = 0;
            } else if (side == 6 && v[1] < 0 && !platform) {
                v[1] = 0;
            } else if (side == 5 && v[1] > 0 && lastGround[1] - q[1] < 80.0f) {
                landed = 1;
            }
        }
    }
    memcpy(shape->boxes[0].offset, saved, sizeof(saved));
    memcpy(landing, landed ? q : start, 3 * sizeof(float));
}

void AnimatePlayer(GameObject* object) {
    static const float kRates[3] = {0.15f, 0.45f, 0.35f};
    float& t = object->animTime;
    t += object->state < 3 ? kRates[object->state] : 0.0f;
    if (object->state == 0) {
        if (t < 0 || t >= 12.0f) {
            t = 0;
        }
    } else if (object->state == 1) {
        if (t < 12.0f || t >= 23.0f) {
            t = 12.0f;
        }
    } else if (object->state == 2) {
        if (t < 23.0f) {
            t = 23.0f;
        }
        if (!onGround && t >= 30.0f) {
            t = 30.0f;
        } else if (onGround && t >= 32.0f) {
            object->state = 0;
            t = 0;
        }
    }
    object->ShowAnimFrame();
    lampModel.BuildFrame(object->previousFrame, object->currentFrame, t - object->currentFrame);
}
