#include "game/level_loading.h"

#include <cstdio>
#include <cstring>

#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "game/closing_scene.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/particles.h"
#include "game/score.h"
#include "render/loading_screen.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/resource_manager.h"
#include "resources/texture_manager.h"
#include "ui/text_batch.h"

// Tested in this order for every entity; one entity may match more than one row.
static const EntityKind kLevelKinds[] = {
    {"player", 0, "player", "delver.vmd", "delver.tga", 1, 1},
    {"player_prop", 0, "player", "delver.vmd", "delver.tga", 1, 1},
    {"foot", 0, "foot", "foot.vmd", "foot.tga", 1, 1},
    {"spike", 1, "spikes", "spikes.vmd", "nettle.tga", 1, 0},
    {"key", 1, "key", "keys.vmd", "key_czone.tga", 0, 0},
    {"exit", 1, "exit", "door.vmd", "door.tga", 0, 0},
    {"platform", 1, "platform", "platform.vmd", "textures\\01\\platform.tga", 0, 0},
    {"enemy", 1, "enemy", nullptr, nullptr, 1, 0},
    {"collapse", 1, "collapse", "platform_collapse.vmd", "textures\\01\\platform.tga", 1, 0},
};
static const int kLevelKindCount = sizeof(kLevelKinds) / sizeof(kLevelKinds[0]);

void PrecacheLocationTextures(const Location& location) {
    for (int i = 0; i < location.pieceCount; i++) {
        if (!g_window.renderContext) {
            return;
        }
        DrawLoadingScreen("gui_loading.tga", "LOADING", static_cast<float>(i) / location.pieceCount);
        g_window.SwapBuffers();
        if (location.pieces[i]) {
            g_textures.Bind(location.pieces[i]->textureName);
        }
    }
}

// Reads the level's location; 0 when the file is missing and the won scene started.
static int ReadLevelLocation() {
    g_scene = SceneGame;
    g_window.sceneDraw = g_hooks.drawGameView;
    char path[32];
    snprintf(path, sizeof(path), "levels\\%02i.vlc", static_cast<int>(level));
    if (g_window.renderContext) {
        g_textures.Purge();
    }
    loadedLevel = level;
    if (!g_location.Load(&g_resources, path)) {
        memset(endScenePath, 0, sizeof(endScenePath));
        strcpy(endScenePath, "levels\\done.vlc");
        StartClosingScene();
        return 0;
    }
    g_location.SetupLighting(1);
    PrecacheLocationTextures(g_location);
    g_levelTitleText.SetTextF(0, "%s", g_location.name);
    g_levelTitleText.Build();
    ShowLevelStartScores();
    ResetParticles();
    g_timer.Elapsed(TimerUpdate);
    if (kSoundEnabled) {
        g_music.PlayMusic("sound\\music_level.ogg");
    }
    return 1;
}

// The player's lamp is loaded before the player's own model; a player whose model is missing
// is no player at all (the level then runs like one without a player entity).
static void MakeKindObject(int entityIndex, const EntityKind& kind) {
    const LocationEntity& entity = *g_location.entities[entityIndex];
    int isPlayer = strcmp(kind.match, "player") == 0;
    if (isPlayer) {
        lampModel.Load(&g_resources, "light.vmd");
    }
    int slot = CreateEntityObject(entity, kind);
    if (slot < 0) {
        return;
    }
    GameObject* object = objects[slot];
    if (isPlayer && object->type[0] && slot < CollisionWorld::kSlotCount) {
        player = object;
        playerIndex = slot;
    }
    if (!kind.model && FindRoutePoint(object->name, 0, &object->link)) {
        object->onRoute = 1;
        memcpy(object->position, g_location.entities[object->link]->position, sizeof(object->position));
    }
}

void BuildLevelObjects() {
    for (int e = 0; e < g_location.entityCount; e++) {
        if (!g_location.entities[e]) {
            continue;
        }
        for (int k = 0; k < kLevelKindCount; k++) {
            if (EntityKindMatches(kLevelKinds[k], g_location.entities[e]->name)) {
                MakeKindObject(e, kLevelKinds[k]);
            }
        }
    }
}

void LoadLevel() {
    if (g_scene == SceneMenu || level != loadedLevel) {
        if (!ReadLevelLocation()) {
            return;
        }
    }
    if (lives <= 0) {
        memset(endScenePath, 0, sizeof(endScenePath));
        strcpy(endScenePath, "levels\\end.vlc");
        StartClosingScene();
        return;
    }
    g_window.flashColour[0] = 1;
    g_window.flashColour[1] = 1;
    g_window.flashColour[2] = 1;
    g_window.flashIntensity = 1.0f;
    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    BuildLevelObjects();
    air = 100.0f;
    onGround = 1;
    levelComplete = 0;
    tallyCountdown = 0;
    if (player) {
        memcpy(lastGround, player->position, sizeof(lastGround));
    }
}
