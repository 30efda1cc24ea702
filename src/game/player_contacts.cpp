// The two contact passes of the player's tick. The player's box was moved to
// its new position before them; pushes change the player's position but not
// its box, so every piece and object of a pass is tested against where the
// player was at the start of the pass.
#include <strings.h>

#include <cstring>

#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/hazards.h"
#include "game/player.h"
#include "game/score.h"
#include "resources/location.h"

static void LandOnPiece(const LocationPiece* piece, const float* push) {
    onGround = 1;
    player->position[1] += push[1];
    player->velocity[1] = 0.1f;
    if (player->state == 2) {
        player->state = 0;
    }
    if (strcmp(piece->textureName, kConveyorTexture) == 0) {
        onConveyor = 1;
        player->rotation[1] = 180.0f;
        player->velocity[2] = -2.0f;
        player->velocity[0] = 0;
    }
}

// One touched piece; 1 when the touch ends the tick (the finish, a deadly fall).
static int TouchPiece(const LocationPiece* piece) {
    if (strcasecmp(piece->name, "finish") == 0) {
        CompleteLevel();
        return 1;
    }
    int side = g_collision.side;
    const float* push = g_collision.push;
    int platform = strcmp(piece->textureName, kPlatformTexture) == 0;
    float drop = lastGround[1] - player->position[1];
    if ((side == 1 || side == 2) && !platform) {
        player->position[0] += push[0];
    } else if ((side == 3 || side == 4) && !platform) {
        player->position[2] += push[2];
    } else if (side == 6 && player->velocity[1] < 0 && !platform) {
        player->velocity[1] = 0;
        player->position[1] += push[1];
    } else if (side == 5 && player->velocity[1] > 0 && drop < 80.0f) {
        LandOnPiece(piece, push);
    } else if (side == 5 && drop > 90.0f) {
        g_deathCause = "fall";
        KillPlayer();
        return 1;
    }
    return 0;
}

int CollidePlayerWithPieces() {
    for (int i = 0; i < g_location.pieceCount && player; i++) {
        const LocationPiece* piece = g_location.pieces[i];
        const float *min, *max;
        if (!SolidPieceBox(piece, &min, &max)) {
            continue;
        }
        if (g_collision.TestShapeAgainstBox(playerIndex, min, max, nullptr) && TouchPiece(piece)) {
            return 1;
        }
    }
    return 0;
}

// The object's box follows its position.
static void MoveBox(int slot) {
    CollisionShape* shape = g_collision.slots[slot];
    GameObject* object = objects[slot];
    if (shape && object) {
        memcpy(shape->boxes[0].offset, object->position, sizeof(object->position));
    }
}

// Standing on a platform object: lands with a velocity of 2, so the player sinks into it a
// little each tick and is pushed back out by the next contact.
static void LandOnObject(const float* push) {
    onGround = 1;
    player->velocity[1] = 2.0f;
    if (player->state == 2) {
        player->state = 0;
    }
    player->position[1] += push[1];
}

static void TouchPlatform(int slot) {
    GameObject* platform = objects[slot];
    int side = g_collision.side;
    const float* push = g_collision.push;
    player->position[0] += push[0];
    player->position[2] += push[2];
    if (side == 6 && player->velocity[1] < 0) {
        platform->position[1] -= push[1];
        MoveBox(slot);
    }
    if (side == 5 && player->velocity[1] > 0) {
        LandOnObject(push);
        if (platform->position[1] > -10.0f) {
            platform->position[1] -= 1.0f;
            MoveBox(slot);
        }
    }
}

static void TouchDoor(void) {
    int side = g_collision.side;
    for (int k = 0; k < 3; k++) {
        player->position[k] += g_collision.push[k];
    }
    if (side == 1 || side == 2) {
        player->velocity[0] = 0;
    } else if (side == 3 || side == 4) {
        player->velocity[2] = 0;
    }
}

int CollidePlayerWithObjects() {
    if (!player) {
        return 0;
    }
    for (int i = 0; i < CollisionWorld::kSlotCount; i++) {
        if (i == playerIndex || !objects[i] || !g_collision.slots[i]) {
            continue;
        }
        if (!g_collision.TestShapes(playerIndex, i)) {
            continue;
        }
        const char* type = objects[i]->type;
        if (strcmp(type, "platform") == 0) {
            TouchPlatform(i);
        } else if (strcmp(type, "collapse") == 0) {
            if (g_collision.side == 5 && player->velocity[1] > 0) {
                LandOnObject(g_collision.push);
                CollapseUnderPlayer(i);
            }
        } else if (strcmp(type, "exit") == 0) {
            TouchDoor();
        } else if (strcmp(type, "spikes") == 0 || strcmp(type, "enemy") == 0) {
            g_deathCause = strcmp(type, "spikes") == 0 ? "spikes" : "enemy";
            KillPlayer();
            return 1;
        } else if (strcmp(type, "key") == 0) {
            CollectKey(i);
        }
    }
    return 0;
}
