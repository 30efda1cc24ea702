// The command table of the console. A command line is split the way the C
// library's strtok splits it (the reentrant form, so a command may run another
// command while it works): the first blank-separated word picks the command,
// the arguments follow with each command's own delimiters, and "rest of line"
// is the empty delimiter set, which takes everything left, blanks included.
#include <strings.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/key_bindings.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "game/replay.h"
#include "platform/sys_events.h"

static const char* const kWindowTitle = "Vantle2\x99";

// Kept here only while no location supplies its own lightmap quality.
static float s_lightmapQuality = 0.1f;

struct CommandLine {
    char buffer[256];
    char* save;

    // The next token up to one of delimiters; null when the line is used up.
    char* Next(const char* delimiters) { return strtok_r(nullptr, delimiters, &save); }
};

static int Flag(const char* text) {
    return atoi(text) != 0 ? 1 : 0;
}

static float* LightmapQuality() {
    float* quality = g_hooks.lightmapQuality ? g_hooks.lightmapQuality() : nullptr;
    return quality ? quality : &s_lightmapQuality;
}

static void Call(void (*hook)()) {
    if (hook) {
        hook();
    }
}

// Recreates the window and every GL object that died with the old context, in the
// order their owners depend on one another.
static void VidRestart() {
    Call(g_hooks.releaseScreenTexture);
    Call(g_hooks.purgeTextures);
    // A failed creation has shown its message; the program runs on without a window.
    g_window.Create(kWindowTitle, g_window.width, g_window.height, g_window.fullScreen);
    Call(g_hooks.rebindNetwork);
    Call(g_hooks.createScreenTexture);
    if (kPrecacheTextures) {
        Call(g_hooks.precacheLocationTextures);
    }
    Call(g_hooks.reuploadLightmaps);
    // The time the restart took must not come back as catch-up ticks the player never saw.
    g_timer.Elapsed(TimerUpdate);
}

static void LocationLoad(CommandLine& line) {
    const char* name = line.Next("");
    if (!name) {
        g_console.AddLine("LOCATION_LOAD <NAME>");
        return;
    }
    if (g_hooks.locationLoad) {
        g_hooks.locationLoad(name);
    }
}

static void LmapQuality(CommandLine& line) {
    const char* value = line.Next("");
    float* quality = LightmapQuality();
    if (!value) {
        g_console.Print("LMAP_QUALITY <VALUE> (%.2f)", *quality);
        return;
    }
    *quality = static_cast<float>(atof(value)) * 0.1f;
    g_console.Print("Lightmap quality set to %.2f", *quality);
}

static void VidSetting(CommandLine& line) {
    static const int kModes[6][2] = {{640, 480},  {800, 600},  {1024, 768},
                                     {1152, 864}, {1280, 960}, {1600, 1200}};
    const char* value = line.Next(" ");
    int n = value ? atoi(value) : 0;
    if (n < 1 || n > 6) {
        g_console.AddLine("VID_SETTING <1-6>");
        return;
    }
    g_window.width = kModes[n - 1][0];
    g_window.height = kModes[n - 1][1];
    g_window.fullScreen = 1;
    ExecuteCommand("VID_RESTART");
}

static void VidQuality(CommandLine& line) {
    const char* value = line.Next(" ");
    if (!value) {
        g_console.Print("VID_QUALITY <1/0> (%i)", g_window.videoQuality);
        return;
    }
    g_window.videoQuality = atoi(value);
    g_window.lightFactor = g_window.videoQuality ? 0.4f : 0.6f;
}

// A flag command: sets *field from the next word or prints usage with the current value.
static void FlagCommand(CommandLine& line, uint8_t* field, const char* usage) {
    const char* value = line.Next(" ");
    if (!value) {
        g_console.Print(usage, *field);
        return;
    }
    *field = static_cast<uint8_t>(Flag(value));
}

// 0 a window, 2 full screen on the desktop's own mode, any other number full screen in a mode.
static void VidFull(CommandLine& line) {
    const char* value = line.Next(" ");
    if (!value) {
        g_console.Print("VID_FULL <2/1/0> (%i)", g_window.fullScreen);
        return;
    }
    g_window.fullScreen = atoi(value) == 2 ? 2 : static_cast<uint8_t>(Flag(value));
}

static void HighScore(CommandLine& line) {
    const char* value = line.Next(" ");
    if (!value) {
        g_console.Print("HIGHSCORE <score> (%i)", static_cast<int>(highScore));
        return;
    }
    highScore = static_cast<uint32_t>(atoi(value));
    Call(g_hooks.highScoreChanged);
}

// Three comma-separated numbers; each is stored as soon as it is read, so a short list
// sets the leading ones and leaves the rest.
static void Triple(CommandLine& line, float* first, float* second, float* third, const char* usage,
                   const float* current) {
    const char* x = line.Next(",");
    if (!x) {
        g_console.Print(usage, current[0], current[1], current[2]);
        return;
    }
    *first = static_cast<float>(atof(x));
    const char* y = line.Next(",");
    if (!y) {
        return;
    }
    *second = static_cast<float>(atof(y));
    const char* z = line.Next("");
    if (!z) {
        return;
    }
    *third = static_cast<float>(atof(z));
}

static void FloatCommand(CommandLine& line, const char* delimiters, float* field, const char* usage) {
    const char* value = line.Next(delimiters);
    if (!value) {
        g_console.Print(usage, *field);
        return;
    }
    *field = static_cast<float>(atof(value));
}

static void VidSize(CommandLine& line) {
    const char* width = line.Next(" ,.x");
    const char* height = width ? line.Next(", .x") : nullptr;
    if (!width || !height) {
        g_console.Print("VID_SIZE <WIDTH>,<HEIGHT> (%i, %i)", g_window.width, g_window.height);
        return;
    }
    g_window.width = atoi(width);
    g_window.height = atoi(height);
    // A size given while full screen on the desktop is the window's to come back to.
    g_window.sizedByDesktop = 0;
}

static void ByteCommand(CommandLine& line, uint8_t* field, const char* usage, int showValue) {
    const char* value = line.Next(" ");
    if (!value) {
        if (showValue) {
            g_console.Print(usage, *field);
        } else {
            g_console.AddLine(usage);
        }
        return;
    }
    *field = static_cast<uint8_t>(atoi(value) & 0xFF);
}

// A key named as a replay file names it, in any case: 1..255, or -1.
static int KeyCode(const char* word) {
    if (!word) {
        return -1;
    }
    char upper[16];
    int i = 0;
    for (; word[i] && i < static_cast<int>(sizeof(upper)) - 1; i++) {
        upper[i] = static_cast<char>(word[i] >= 'a' && word[i] <= 'z' ? word[i] - 32 : word[i]);
    }
    upper[i] = 0;
    int code = word[i] ? -1 : ReplayKeyCode(upper);
    return code >= 1 && code <= 255 ? code : -1;
}

static void Bind(CommandLine& line) {
    int key = KeyCode(line.Next(" "));
    int gameKey = KeyCode(line.Next(" "));
    if (key < 0 || gameKey < 0) {
        g_console.AddLine("BIND <KEY> <GAME KEY>");
        return;
    }
    if (!BindKey(key, gameKey)) {
        g_console.Print("%s cannot be rebound", KeyLabel(key).text);
    }
}

static void Unbind(CommandLine& line) {
    int key = KeyCode(line.Next(" "));
    if (key < 0) {
        g_console.AddLine("UNBIND <KEY>");
        return;
    }
    if (!UnbindKey(key)) {
        g_console.Print("%s cannot be rebound", KeyLabel(key).text);
    }
}

static void ListBinding(int key, int gameKey, void* count) {
    g_console.Print("%s -> %s", KeyLabel(key).text, gameKey ? KeyLabel(gameKey).text : "(nothing)");
    ++*static_cast<int*>(count);
}

static void BindList() {
    int count = 0;
    ForEachBinding(ListBinding, &count);
    if (count == 0) {
        g_console.AddLine("Every key is its own");
    }
}

// Runs the command named word; 0 when no command has that name.
static int RunCommand(const char* word, CommandLine& line) {
    GlWindow& w = g_window;
    if (!strcasecmp(word, "LOCATION_LOAD")) {
        LocationLoad(line);
    } else if (!strcasecmp(word, "LMAP_BUILD")) {
        Call(g_hooks.lightmapBuild);
    } else if (!strcasecmp(word, "LMAP_QUALITY")) {
        LmapQuality(line);
    } else if (!strcasecmp(word, "VID_SETTING")) {
        VidSetting(line);
    } else if (!strcasecmp(word, "VID_QUALITY")) {
        VidQuality(line);
    } else if (!strcasecmp(word, "VID_NORMALS")) {
        FlagCommand(line, &w.showNormals, "VID_NORMALS <1/0> (%i)");
    } else if (!strcasecmp(word, "VID_ASPECT")) {
        FlagCommand(line, &w.keepAspect, "VID_ASPECT <1/0> (%i)");
        w.ApplyViewport();
    } else if (!strcasecmp(word, "VID_FULL")) {
        VidFull(line);
    } else if (!strcasecmp(word, "HIGHSCORE")) {
        HighScore(line);
    } else if (!strcasecmp(word, "CAMERA_POS")) {
        Triple(line, &g_camera.position.x, &g_camera.position.y, &g_camera.position.z,
               "CAMERA_POS <X,Y,Z> (%.2f,%.2f,%.2f)", &w.renderCamera[0]);
    } else if (!strcasecmp(word, "CAMERA_ROT")) {
        Triple(line, &g_camera.pitch, &g_camera.yaw, &g_camera.roll, "CAMERA_ROT <X,Y,Z> (%.2f,%.2f,%.2f)",
               &w.renderCamera[3]);
    } else if (!strcasecmp(word, "LOCATION_FOG_END")) {
        FloatCommand(line, "", &w.fogEnd, "LOCATION_FOG_END <END> (%.2f)");
    } else if (!strcasecmp(word, "LOCATION_FOG_START")) {
        FloatCommand(line, "", &w.fogStart, "LOCATION_FOG_START <START> (%.2f)");
    } else if (!strcasecmp(word, "VID_FOV")) {
        FloatCommand(line, " ", &w.fov, "VID_FOV <FOV> (%.2f)");
    } else if (!strcasecmp(word, "VID_PURGE")) {
        Call(g_hooks.purgeTextures);
    } else if (!strcasecmp(word, "VID_VSYNC")) {
        FlagCommand(line, &w.vsync, "VID_VSYNC <1/0> (%i)");
    } else if (!strcasecmp(word, "VID_SIZE")) {
        VidSize(line);
    } else if (!strcasecmp(word, "VID_RESTART")) {
        VidRestart();
    } else if (!strcasecmp(word, "DEBUG")) {
        ByteCommand(line, &g_debug, "DEBUG <1/0>", 0);
    } else if (!strcasecmp(word, "DEBUG_MODE")) {
        ByteCommand(line, &g_debugMode, "DEBUG_MODE <1/0> (%i)", 1);
    } else if (!strcasecmp(word, "BIND")) {
        Bind(line);
    } else if (!strcasecmp(word, "UNBIND")) {
        Unbind(line);
    } else if (!strcasecmp(word, "BINDLIST")) {
        BindList();
    } else if (!strcasecmp(word, "DEBUG_FRUSTUM")) {
        FlagCommand(line, &w.frustumFlag, "DEBUG_FRUSTUM <1/0> (%i)");
    } else {
        const char* rest = line.Next("");
        return g_hooks.gameCommand ? g_hooks.gameCommand(word, rest ? rest : "") : 0;
    }
    return 1;
}

void ExecuteCommand(const char* text) {
    if (!text || !text[0]) {
        return;
    }
    CommandLine line;
    memset(line.buffer, 0, sizeof(line.buffer));
    strncpy(line.buffer, text, sizeof(line.buffer) - 1);
    line.save = nullptr;
    if (line.buffer[0] == '/' && line.buffer[1] == '/') {
        return;
    }
    // Compared before any splitting: "CLS " with a blank is not "CLS".
    if (!strcasecmp(line.buffer, "CLS")) {
        g_console.Clear();
        return;
    }
    if (!strcasecmp(line.buffer, "QUIT")) {
        Sys_PostQuitMessage(0);
        return;
    }
    char untouched[256];
    memcpy(untouched, line.buffer, sizeof(untouched));
    const char* word = strtok_r(line.buffer, " ", &line.save);
    if (!word) {
        g_console.Print("Unknown Command \"%s\"", untouched);
        return;
    }
    if (!RunCommand(word, line)) {
        g_console.Print("Unknown Command \"%s\"", word);
    }
}
