#include "app/main_loop.h"

#include <GL/gl.h>

#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_hooks.h"
#include "platform/sys_clock.h"
#include "platform/sys_events.h"
#include "platform/sys_input.h"
#include "platform/sys_keys.h"
#include "platform/sys_window.h"

uint8_t g_scene = SceneMenu;
int32_t g_quit;
int32_t ticksRun;
uint8_t g_capturePass;
uint8_t g_debug;
uint8_t g_debugMode;
EngineHooks g_hooks;

int PumpMessage() {
    SysMessage message;
    if (!Sys_PeekMessage(&message)) {
        return 0;
    }
    if (message.message == WM_QUIT) {
        g_quit = 1;
        return 1;
    }
    // Messages for an old window (before a restart) or for no window are dropped.
    if (message.window && message.window == g_window.window) {
        Sys_DispatchMessage(&message);
    }
    return 1;
}

static void Call(void (*hook)()) {
    if (hook) {
        hook();
    }
}

// The console panel slides 48 units a tick, so it opens or closes in 5 ticks.
static void SlideConsole() {
    if (!g_console.visible && g_console.slide > -240.0f) {
        g_console.slide -= 48.0f;
    } else if (g_console.visible && g_console.slide < 0.0f) {
        g_console.slide += 48.0f;
    }
}

void RunTick() {
    ticksRun++;
    SlideConsole();
    if (kSoundEnabled) {
        Call(g_hooks.musicUpdate);
    }
    PollJoystick();
    EndClick();
    Call(g_hooks.debugMenuUpdate);
    Call(g_hooks.guiUpdate);
    MouseCamera();
    switch (g_scene) {
        case SceneGame:
            Call(g_hooks.updateGame);
            break;
        case SceneEnd:
            Call(g_hooks.updateClosingScene);
            break;
        default:
            Call(g_hooks.updateMenu);
            break;
    }
}

void SnapWindowSize(int* width, int* height) {
    static const int kModes[][2] = {{640, 480}, {800, 600}, {1024, 768}, {1152, 864}};
    int w = *width;
    if (w == 320) {
        return;
    }
    if (w < 320) {
        *width = 320;
        *height = 240;
        return;
    }
    for (const auto& mode : kModes) {
        if (w <= mode[0]) {
            *width = mode[0];
            *height = mode[1];
            return;
        }
    }
    *width = 1280;
    *height = 960;
}

void ToggleFullScreen() {
    if (g_window.fullScreen) {
        Sys_RestoreDisplayMode(g_window.window);
    }
    if (g_window.fullScreen == 2) {
        g_window.fullScreen = 0;  // back to the window size kept aside
    } else if (!g_window.fullScreen && g_window.desktopFullScreen) {
        g_window.fullScreen = 2;
    } else {
        SnapWindowSize(&g_window.width, &g_window.height);
        g_window.fullScreen = !g_window.fullScreen;
    }
    ExecuteCommand("VID_RESTART");
}

// Video quality 2: the game view is drawn a second time into the screen texture, which
// the glow effect samples.
static void CapturePass() {
    if (!g_window.renderContext) {
        return;
    }
    GLint saved[4];
    glGetIntegerv(GL_VIEWPORT, saved);
    g_capturePass = 1;
    int textureWidth = 0, textureHeight = 0;
    if (g_hooks.screenTextureSize) {
        g_hooks.screenTextureSize(&textureWidth, &textureHeight);
    }
    glViewport(0, 0, textureWidth, textureHeight);
    g_window.BeginFrame();
    Call(g_hooks.drawGameView);
    Call(g_hooks.captureScreenTexture);
    glViewport(saved[0], saved[1], saved[2], saved[3]);
    g_capturePass = 0;
}

void MainLoopPass() {
    // Every pending message is handled, one per pass, before any frame work.
    if (PumpMessage()) {
        return;
    }
    Call(g_hooks.consoleKeys);
    // Read as held, not as pressed: the toggle repeats while both keys stay down.
    if (Sys_GetKeyState(VK_MENU) < 0 && Sys_GetKeyState(VK_RETURN) < 0) {
        ToggleFullScreen();
    }
    if (g_timer.Elapsed(TimerStats) > 0) {
        Call(g_hooks.refreshDebugPanel);
        Call(g_hooks.refreshNetPanel);
    }
    uint32_t ticks = g_timer.Elapsed(TimerUpdate);
    if (ticks > 100) {
        ticks = 100;
    }
    for (uint32_t i = 0; i < ticks; i++) {
        RunTick();
    }
    // A pass with no tick has nothing to draw either: the next tick is at most 20 ms away,
    // so give the processor back instead of spinning (a title left running costs little).
    if (!g_window.active || ticks == 0) {
        Sys_Sleep(1);
    }
    // The glow's capture is a frame too: drawn only when a tick ran, like the visible one,
    // so that video quality 2 costs one extra frame per tick rather than one per pass.
    if (kPostEffect && g_window.videoQuality == 2 && ticks > 0) {
        CapturePass();
    }
    if (ticks > 0) {
        g_window.BeginFrame();
        g_window.Present();
    }
}
