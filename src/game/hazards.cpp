#include "game/hazards.h"

#include <cstring>

#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_sounds.h"
#include "game/game_state.h"
#include "game/level_loading.h"
#include "game/score.h"

const char* g_deathCause = "";

void KillPlayer() {
    if (player) {
        PlayGameSoundAt(SoundDie, player->position, 1.0f);
    }
    lives -= 1;
    LoadLevel();
}

void CompleteLevel() {
    if (kSoundEnabled) {
        g_music.StopMusic();
    }
    g_window.flashColour[0] = 0;
    g_window.flashColour[1] = 0;
    g_window.flashColour[2] = 1;
    g_window.flashIntensity = 0.4f;
    levelComplete = 1;
}

void OpenExits() {
    for (int i = 0; i < kMaxObjects; i++) {
        if (objects[i] && strcmp(objects[i]->type, "exit") == 0) {
            objects[i]->link = 80;
        }
    }
}

int AirStep() {
    if (!levelComplete) {
        air -= 0.0286f;
    } else {
        air -= 0.8f;
        TallyStep();
    }
    if (air > 0) {
        return 0;
    }
    if (!levelComplete) {
        g_deathCause = "air";
        KillPlayer();
    } else {
        level += 1;
        LoadLevel();
    }
    return 1;
}

void CollectKey(int slot) {
    PlayGameSoundAt(SoundCollect, player->position, 1.0f);
    g_collision.DeleteShape(slot);
    DestroyObject(slot);
    AddScore(100);
    if (CountObjectsOfType("key") == 0) {
        OpenExits();
    }
}

static void FollowBox(int slot) {
    if (slot < CollisionWorld::kSlotCount && g_collision.slots[slot]) {
        memcpy(g_collision.slots[slot]->boxes[0].offset, objects[slot]->position, 3 * sizeof(float));
    }
}

void CollapseUnderPlayer(int slot) {
    GameObject* platform = objects[slot];
    if (platform->position[1] <= -10.0f) {
        return;
    }
    platform->position[1] -= 0.5f;
    platform->animTime += 1.5f;
    if (platform->animTime >= 8.0f) {
        g_collision.DeleteShape(slot);
        DestroyObject(slot);
        return;
    }
    FollowBox(slot);
}

void AnimateCollapse(GameObject* object) {
    object->ShowAnimFrame();
}

void RaiseExit(int slot) {
    GameObject* door = objects[slot];
    door->position[1] += 1.0f;
    door->link -= 1;
    FollowBox(slot);
}
