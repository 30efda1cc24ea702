// Start-up and shutdown. The global services already exist (globals.cpp); this
// brings them up in dependency order: the configuration script first, so the
// video commands shape the window before it opens, then the window, the
// start-up log, render defaults, the loading screen, the timer and the
// subsystems, and finally autoexec.vbt and the command line's console lines.
// Before all of it the folders are settled (game_folders.h), so the installed
// game reads and writes only the player's folder. Shutdown writes config.vbt;
// the global destructors release the rest in reverse order.
#include <GL/gl.h>

#include <cstdio>
#include <cstring>

#include "app/command_line.h"
#include "app/console.h"
#include "app/frame_timer.h"
#include "app/game_folders.h"
#include "app/gl_window.h"
#include "app/input.h"
#include "app/main_loop.h"
#include "app/scene_hooks.h"
#include "platform/sys_joystick.h"
#include "platform/sys_message_box.h"
#include "render/loading_screen.h"

static const char* const kSeparator =
    "===================================================================================";

static void EchoLine(const char* line) {
    fputs(line, stdout);
    fputc('\n', stdout);
    fflush(stdout);
}

static const char* GlString(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text ? reinterpret_cast<const char*>(text) : "";
}

static void LogGraphics() {
    g_console.AddLine("Initialising OpenGL:");
    g_console.Print("%s, %s, %s", GlString(GL_VERSION), GlString(GL_RENDERER), GlString(GL_VENDOR));
    if (g_window.joystickFound) {
        g_console.Print("Joysticks found: %s", Sys_JoystickName());
    }
    g_console.AddLine(kSeparator);
    g_console.AddLine("Initialising Shader system:");
    g_console.AddLine(g_window.shaders.supported ? "GLSL shader system initialised succesfully"
                                                 : "Could not initialise GLSL shaders");
    g_console.AddLine(kSeparator);
}

static void LogNetworkAndSound() {
    g_console.AddLine("Initialising Winsock 2.2:");
    int network = g_hooks.netStartup ? g_hooks.netStartup() : 0;
    g_console.AddLine(network ? "Winsock 2.2 initialised successfully" : "Could not initialise Winsock 2.2");
    g_console.AddLine(kSeparator);
    if (kSoundEnabled) {
        // The sound system prints its own device lines when it opens one.
        int sound = g_hooks.initSound ? g_hooks.initSound() : 0;
        if (!sound) {
            g_console.AddLine("Could not initialise OpenAL");
        }
        g_console.AddLine(kSeparator);
    }
    if (!g_glActiveTextureARB || !g_glMultiTexCoord2fARB) {
        g_glActiveTextureARB = nullptr;
        g_glMultiTexCoord2fARB = nullptr;
        g_console.AddLine(
            "Your current setup does not support multitexturing. Blending will be used instead");
    }
}

static void SetRenderDefaults() {
    g_window.lightFactor = 1.0f;
    g_window.clearColour[0] = g_window.clearColour[1] = g_window.clearColour[2] = 0.0025f;
    g_window.renderCamera[1] = 0.0f;
    g_window.renderCamera[2] = 0.0f;
    g_window.renderCamera[3] = 0.0f;
    g_window.renderCamera[4] = 180.0f;
}

static void Call(void (*hook)()) {
    if (hook) {
        hook();
    }
}

// Steps after the window is up, through the discarded loading time.
static void StartServices() {
    SetRenderDefaults();
    Call(g_hooks.fillTextBatches);
    Call(g_hooks.attachTextureManager);
    DrawLoadingScreen("gui_loading.tga", "LOADING", 0.0f);
    g_window.SwapBuffers();
    g_window.sceneDraw = g_hooks.drawMenu;
    g_timer.Init(0);
    g_timer.SetPeriod(TimerUpdate, 20);
    g_timer.SetPeriod(TimerStats, 100);
    Call(g_hooks.resetParticles);
    Call(g_hooks.prepareMusic);
    RunScript("autoexec.vbt", 0);
    for (int i = 0; i < g_startCommands.count; i++) {
        ExecuteCommand(g_startCommands.lines[i]);
    }
    Call(g_hooks.createScreenTexture);
    Call(g_hooks.loadGameSounds);
    Call(g_hooks.loadLogoScene);
    Call(g_hooks.resetClosingScene);
    // The loading time must not turn into catch-up ticks.
    g_timer.Elapsed(TimerUpdate);
}

int VantleMain() {
    Console_SetEcho(EchoLine);
    if (!EnterGameFolders()) {
        return 1;
    }
    g_window.width = 640;
    g_window.height = 480;
    g_window.fov = 20.0f;
    // A new player's picture keeps its shape; one who has played before keeps the picture
    // their config.vbt describes (stretched unless it says VID_ASPECT 1).
    FILE* existing = fopen("config.vbt", "rb");
    g_window.keepAspect = existing ? 0 : 1;
    if (existing) {
        fclose(existing);
    }
    RunScript("config.vbt", 0);
    // Before the window captures the first pad, so that pad is read through its mapping.
    LoadPadMappings("gamecontrollerdb.txt");
    if (!g_window.Create("Vantle2\x99", g_window.width, g_window.height, g_window.fullScreen)) {
        Sys_MessageBox("WinMain : Could not create OpenGL Rendering device", "Error", MB_OK);
        return 0;
    }
    LogGraphics();
    LogNetworkAndSound();
    StartServices();
    g_quit = 0;
    while (!g_quit) {
        MainLoopPass();
    }
    Call(g_hooks.releaseGameObjects);
    SaveConfig();
    return 0;
}
