#include "game/closing_scene.h"

#include <strings.h>

#include <cstring>

#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "audio/sound_system.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_sounds.h"
#include "game/game_state.h"
#include "game/level_loading.h"
#include "game/particles.h"
#include "resources/location.h"
#include "resources/resource_manager.h"
#include "resources/texture_manager.h"
#include "ui/text_batch.h"

void (*g_drawClosingScene)();

static const EntityKind kClosingKinds[] = {
    {"player_prop", 0, "player", "delver.vmd", "delver.tga", 1, 1},
    {"player_dance", 0, "player", "logo\\delver.vmd", "delver.tga", 1, 1},
    {"foot", 0, "foot", "foot.vmd", "foot.tga", 1, 1},
};

void InitClosingScene() {
    memset(endScenePath, 0, sizeof(endScenePath));
    strcpy(endScenePath, "levels\\end.vlc");
}

static void EnterScene() {
    g_scene = SceneEnd;
    g_window.sceneDraw = g_drawClosingScene;
    animClock = 0;
    closingLocation.Load(&g_resources, endScenePath);
    closingLocation.SetupLighting(1);
    g_levelTitleText.SetTextF(0, "%s", closingLocation.name);
    g_levelTitleText.Build();
    g_scoreText.Build();
    ResetParticles();
    PrecacheLocationTextures(closingLocation);
    g_timer.Elapsed(TimerUpdate);
    if (kSoundEnabled) {
        g_music.StopMusic();
    }
}

void StartClosingScene() {
    if (g_scene != SceneEnd) {
        EnterScene();
    }
    g_window.flashIntensity = 1.0f;
    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    for (int e = 0; e < closingLocation.entityCount; e++) {
        const LocationEntity* entity = closingLocation.entities[e];
        if (!entity) {
            continue;
        }
        for (const EntityKind& kind : kClosingKinds) {
            if (!EntityKindMatches(kind, entity->name)) {
                continue;
            }
            CreateEntityObject(*entity, kind);
            if (strcmp(kind.match, "player_dance") == 0 && kSoundEnabled) {
                g_music.PlayMusic("sound\\music_win.ogg");
            } else if (strcmp(kind.match, "foot") == 0) {
                g_sound.Play(SoundFoot, 0);
            }
        }
    }
}

void FootStep(GameObject* foot, int withSound) {
    foot->counter -= 1;
    foot->position[1] -= 6.0f;
    if (foot->counter == 5) {
        for (int i = 0; i < kMaxObjects; i++) {
            if (objects[i] && strcasecmp(objects[i]->name, "player_prop") == 0) {
                DestroyObject(i);
            }
        }
    }
    if (foot->counter < 10 && Rand() % 100 < 75) {
        if (withSound) {
            g_sound.Play(SoundSplat, 1);
        }
        SpawnGibs(foot->position);
        SpawnBlood(foot->position);
        SpawnRedSmoke(foot->position);
    }
}

static void ReturnToMenu(int key) {
    g_window.keys[key] = 0;
    g_scene = SceneMenu;
    g_window.sceneDraw = g_hooks.drawMenu;
    closingLocation.Clear();
    if (g_window.renderContext) {
        g_textures.Purge();
    }
    PrecacheLocationTextures(g_menuLocation);
    memset(g_window.keys, 0, sizeof(g_window.keys));
    g_timer.Elapsed(TimerUpdate);
    g_levelTitleText.SetTextF(0, "%s", g_menuLocation.name);
    g_levelTitleText.Build();
    animClock = 0;
}

static void AnimateProp(GameObject* object) {
    object->animTime += 0.48f;
    if (object->animTime < 0 || object->animTime >= 9.0f) {
        object->animTime = 0;
    }
    object->ShowAnimFrame();
}

void UpdateClosingScene() {
    animClock += 0.02f;
    g_camera.position = Vec3{5.6f, 206.2f, 1080.9f};
    g_camera.LookAt(0, 120, 0);
    if (g_window.flashIntensity > 0) {
        g_window.flashIntensity -= 0.1f;
    }
    g_window.fov = 20;
    for (int k = 13; k <= 149; k++) {
        if (animClock > 1.0f && g_window.keys[k] && (k == 13 || k >= 30)) {
            ReturnToMenu(k);
            return;
        }
    }
    UpdateParticles();
    for (int i = 0; i < kMaxObjects; i++) {
        GameObject* object = objects[i];
        if (!object || !object->model) {
            continue;
        }
        if (strcmp(object->type, "player") == 0) {
            AnimateProp(object);
        } else if (strcmp(object->type, "foot") == 0 && object->counter != 0) {
            FootStep(object, 1);
        }
    }
}
