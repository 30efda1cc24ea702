// The main loop's state and the places where the subsystems plug into it.
//
// The loop only reads g_scene; the scenes switch themselves. Everything the
// loop, the start-up sequence, the shutdown and the console commands call in
// other subsystems goes through g_hooks: main() sets the entries once through
// the Install*Hooks functions (app/net_hooks.cpp, app/audio_hooks.cpp, ...)
// before VantleMain, and an entry left null is simply skipped, so the program
// runs with whatever subsystems exist.
#pragma once

#include <cstdint>

enum { SceneMenu = 0, SceneGame = 1, SceneEnd = 2 };

// Build switches: sound, the post-effect pass and texture pre-caching are all on.
const bool kSoundEnabled = true;
const bool kPostEffect = true;
const bool kPrecacheTextures = true;

extern uint8_t g_scene;        // SceneMenu, SceneGame or SceneEnd
extern int32_t g_quit;         // 1 once the quit message arrived
extern int32_t ticksRun;       // ticks since the debug panel last reset it
extern uint8_t g_capturePass;  // 1 while the game view is drawn into the screen texture
extern uint8_t g_debug;        // console "DEBUG"
extern uint8_t g_debugMode;    // console "DEBUG_MODE": the debug panel shown

struct EngineHooks {
    // Scene updates, one 20 ms tick each, chosen by g_scene.
    void (*updateMenu)();
    void (*updateGame)();
    void (*updateClosingScene)();
    // The title-menu draw, installed as g_window.sceneDraw at start-up.
    void (*drawMenu)();
    // The game view, drawn into the screen texture by the post-effect pass (video quality 2).
    void (*drawGameView)();

    // Per pass, before the ticks: console toggle and input line.
    void (*consoleKeys)();
    // Every 100 ms: the debug panel refresh (resets framesDrawn and ticksRun).
    void (*refreshDebugPanel)();
    // Every 100 ms, after it: the network panel's figures.
    void (*refreshNetPanel)();
    // Per tick, in loop order: music refill, debug menu, GUI window.
    void (*musicUpdate)();
    void (*debugMenuUpdate)();
    void (*guiUpdate)();

    // Start-up, in order. The two init hooks return 1 when their service came up; initSound
    // prints its own device lines on success.
    int (*netStartup)();
    int (*initSound)();
    void (*fillTextBatches)();
    void (*attachTextureManager)();
    void (*resetParticles)();
    void (*prepareMusic)();
    void (*loadGameSounds)();
    void (*loadLogoScene)();
    void (*resetClosingScene)();
    // Shutdown: release every game object.
    void (*releaseGameObjects)();

    // The screen texture of the post-effect pass.
    void (*createScreenTexture)();
    void (*releaseScreenTexture)();
    void (*captureScreenTexture)();
    void (*screenTextureSize)(int* width, int* height);

    // Texture manager purge ("VID_PURGE", "VID_RESTART").
    void (*purgeTextures)();
    // Binds every texture of g_location behind the loading screen ("VID_RESTART").
    void (*precacheLocationTextures)();
    // Forgets and uploads again the lightmap pages of g_location and the menu location.
    void (*reuploadLightmaps)();
    // Points the network endpoints' notification at the new window.
    void (*rebindNetwork)();

    // Console commands served by later subsystems.
    void (*locationLoad)(const char* name);  // "LOCATION_LOAD": load, precache, time, print
    void (*lightmapBuild)();                 // "LMAP_BUILD": clear, bake, print
    float* (*lightmapQuality)();             // the played location's lightmap quality field
    void (*highScoreChanged)();              // sets the HUD's "High-score:%05i" line
    // Commands of the game itself ("DEMO_RECORD", ...): word and the rest of the line; 1 when known.
    int (*gameCommand)(const char* word, const char* arguments);
};

extern EngineHooks g_hooks;
