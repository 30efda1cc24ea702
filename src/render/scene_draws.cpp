#include "render/scene_draws.h"

#include "app/scene_hooks.h"
#include "game/closing_scene.h"
#include "render/game_view.h"
#include "render/menu_scene.h"

static void (*s_releaseGame)();

// Shutdown: the game's objects, then the menu's dancer.
static void ReleaseScenes() {
    if (s_releaseGame) {
        s_releaseGame();
    }
    ReleaseMenuScene();
}

void InstallSceneDraws() {
    g_hooks.loadLogoScene = LoadMenuScene;
    g_hooks.updateMenu = UpdateMenu;
    g_hooks.drawMenu = DrawMenu;
    g_hooks.drawGameView = DrawGameView;
    g_drawClosingScene = DrawClosingScene;
    if (g_hooks.releaseGameObjects != ReleaseScenes) {
        s_releaseGame = g_hooks.releaseGameObjects;
        g_hooks.releaseGameObjects = ReleaseScenes;
    }
}
