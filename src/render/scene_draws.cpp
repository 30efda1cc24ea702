#include "render/scene_draws.h"

#include "app/console.h"
#include "app/scene_hooks.h"
#include "game/closing_scene.h"
#include "game/game_state.h"
#include "render/game_view.h"
#include "render/menu_scene.h"
#include "resources/location.h"

static void (*s_releaseGame)();
static void (*s_updateGame)();
static void (*s_updateClosingScene)();
static int s_shownScene = -1;
static int s_shownLevel = -1;

// One console line whenever the program moves to another scene or level, so that a run
// can be followed from its log.
static void ReportScene() {
    if (g_scene == s_shownScene && (g_scene != SceneGame || loadedLevel == s_shownLevel)) {
        return;
    }
    s_shownScene = g_scene;
    s_shownLevel = loadedLevel;
    if (g_scene == SceneGame) {
        g_console.Print("Level %02i: %s", static_cast<int>(loadedLevel), g_location.name);
    } else if (g_scene == SceneEnd) {
        g_console.Print("Closing scene %s", endScenePath);
    } else {
        g_console.Print("Title menu");
    }
}

static void MenuTick() {
    UpdateMenu();
    ReportScene();
}

static void GameTick() {
    if (s_updateGame) {
        s_updateGame();
    }
    ReportScene();
}

static void ClosingTick() {
    if (s_updateClosingScene) {
        s_updateClosingScene();
    }
    ReportScene();
}

// Shutdown: the game's objects, then the menu's dancer.
static void ReleaseScenes() {
    if (s_releaseGame) {
        s_releaseGame();
    }
    ReleaseMenuScene();
}

void InstallSceneDraws() {
    g_hooks.loadLogoScene = LoadMenuScene;
    g_hooks.updateMenu = MenuTick;
    g_hooks.drawMenu = DrawMenu;
    g_hooks.drawGameView = DrawGameView;
    g_drawClosingScene = DrawClosingScene;
    if (g_hooks.releaseGameObjects != ReleaseScenes) {
        s_releaseGame = g_hooks.releaseGameObjects;
        g_hooks.releaseGameObjects = ReleaseScenes;
    }
    if (g_hooks.updateGame != GameTick) {
        s_updateGame = g_hooks.updateGame;
        g_hooks.updateGame = GameTick;
    }
    if (g_hooks.updateClosingScene != ClosingTick) {
        s_updateClosingScene = g_hooks.updateClosingScene;
        g_hooks.updateClosingScene = ClosingTick;
    }
}
