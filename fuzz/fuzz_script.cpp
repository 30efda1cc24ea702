// Fuzz target: the script runner and the console commands behind it, fed any
// bytes as a script file. Whatever a script did, the log keeps lines of at most
// 83 characters, and the configuration it leaves behind is a fixed point: run
// as a script and written again, config.vbt comes out byte for byte the same.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/config_file.h"
#include "app/console.h"
#include "app/gl_window.h"
#include "app/key_bindings.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "fuzz_seeds.h"
#include "game/game_state.h"
#include "platform/sys_events.h"
#include "platform/sys_files.h"
#include "platform/sys_message_box.h"

static char s_script[256];
static char s_config[256];

static void Silent(const char*, const char*, unsigned int) {}

static void Prepare() {
    static int done;
    if (done) {
        return;
    }
    done = 1;
    // "VID_RESTART" and "VID_SETTING" create windows: never on someone's desktop.
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    Sys_SetMessageBoxHook(Silent);
    snprintf(s_script, sizeof(s_script), "/tmp/vantle_fuzz_script_%d.vbt", static_cast<int>(getpid()));
    snprintf(s_config, sizeof(s_config), "/tmp/vantle_fuzz_config_%d.vbt", static_cast<int>(getpid()));
}

static void ResetState() {
    g_window.width = 640;
    g_window.height = 480;
    g_window.fullScreen = 0;
    g_window.vsync = 0;
    g_window.videoQuality = 0;
    memset(&g_camera, 0, sizeof(g_camera));
    g_debug = 0;
    g_debugMode = 0;
    highScore = 0;
    ResetKeyBindings();
    g_window.sizedByDesktop = 0;
    g_window.desktopFullScreen = 0;
    g_window.keepAspect = 0;
}

static int WriteBytes(const char* path, const void* data, size_t size) {
    FILE* file = fopen(path, "wb");
    if (!file) {
        return 0;
    }
    int ok = fwrite(data, 1, size, file) == size;
    return fclose(file) == 0 && ok;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Prepare();
    ResetState();
    if (!WriteBytes(s_script, data, size)) {
        return 0;
    }
    RunScript(s_script, size > 0 ? data[0] % 3 : 0);
    Sys_FlushMessages();  // a QUIT in the script
    for (int i = 0; i < 256; i++) {
        if (strnlen(g_console.lines[i], 256) > 83) {
            abort();
        }
    }
    static char first[8192];
    static char second[8192];
    int length = BuildConfigText(first, sizeof(first));
    if (!WriteBytes(s_config, first, static_cast<size_t>(length))) {
        return 0;
    }
    RunScript(s_config, 0);
    BuildConfigText(second, sizeof(second));
    if (strcmp(first, second) != 0) {
        abort();
    }
    unlink(s_script);
    unlink(s_config);
    return 0;
}

static void AddText(FuzzSeedList& seeds, const char* text) {
    AddSeed(seeds, text, strlen(text));
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    ResetState();
    g_window.width = 1024;
    g_window.height = 768;
    g_window.videoQuality = 1;
    g_camera.position.x = 1.5f;
    g_camera.yaw = 270.25f;
    g_debug = 1;
    g_debugMode = 3;
    highScore = 4321;
    char config[8192];
    int length = BuildConfigText(config, sizeof(config));
    AddSeed(seeds, config, static_cast<size_t>(length));
    ResetState();
    AddText(seeds,
            "VID_SIZE 800x600\nVID_FULL 2\nVID_FULL 1\nVID_ASPECT 1\nVID_QUALITY 2\n"
            "CAMERA_POS 1,2\nCAMERA_ROT 10,20,30\n");
    AddText(seeds, "  vid_fov 45\r\n// comment\r\nLMAP_QUALITY 7\r\nHIGHSCORE 99999\r\nDEBUG 300\r\n");
    AddText(seeds, "LOCATION_FOG_START 2.5\nLOCATION_FOG_END\nVID_SIZE 1024\nUNKNOWN thing\nCLS\nQUIT\n");
    AddText(seeds, "BIND w up\nBIND J SPACE\nUNBIND UP\nBIND 0xBA 0x20\nBIND RETURN X\nBIND Q\nBINDLIST\n");
    AddText(seeds, "CAMERA_POS 1e30,-1e30,nan\nCAMERA_ROT inf,-0.005,0.125\nVID_SIZE -5,-7\n");
}
