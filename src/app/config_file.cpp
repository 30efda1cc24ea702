#include "app/config_file.h"

#include <cstdarg>
#include <cstdio>

#include "app/gl_window.h"
#include "app/key_bindings.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "platform/sys_files.h"

struct TextWriter {
    char* out;
    int size;
    int length;

    // Appends one formatted line and its CR LF; text past the end is dropped.
    void Line(const char* format, ...) __attribute__((format(printf, 2, 3))) {
        if (length >= size - 1) {
            return;
        }
        va_list args;
        va_start(args, format);
        int written = vsnprintf(out + length, size - length, format, args);
        va_end(args);
        length += written < size - length ? written : size - 1 - length;
        written = snprintf(out + length, size - length, "\r\n");
        length += written < size - length ? written : size - 1 - length;
    }
};

static void WriteBinding(int key, int gameKey, void* context) {
    TextWriter* writer = static_cast<TextWriter*>(context);
    if (gameKey) {
        writer->Line("BIND %s %s", KeyLabel(key).text, KeyLabel(gameKey).text);
    } else {
        writer->Line("UNBIND %s", KeyLabel(key).text);
    }
}

int BuildConfigText(char* out, int outSize) {
    if (outSize <= 0) {
        return 0;
    }
    out[0] = 0;
    TextWriter writer = {out, outSize, 0};
    const char* rule = "//***********************************************************";
    writer.Line("%s", rule);
    writer.Line("//Created by Vantle2. Do not modify as any changes may be lost");
    writer.Line("%s", rule);
    writer.Line("VID_FULL %i", g_window.fullScreen);
    writer.Line("VID_VSYNC %i", g_window.vsync);
    // Full screen on the desktop's mode keeps the window size the player chose.
    if (g_window.sizedByDesktop) {
        writer.Line("VID_SIZE %i,%i", g_window.windowedSize[0], g_window.windowedSize[1]);
    } else {
        writer.Line("VID_SIZE %i,%i", g_window.width, g_window.height);
    }
    writer.Line("VID_QUALITY %i", g_window.videoQuality);
    writer.Line("CAMERA_POS %.2f,%.2f,%.2f", g_camera.position.x, g_camera.position.y, g_camera.position.z);
    writer.Line("CAMERA_ROT %.2f,%.2f,%.2f", g_camera.pitch, g_camera.yaw, g_camera.roll);
    if (g_debug) {
        writer.Line("DEBUG %i", g_debug);
        writer.Line("DEBUG_MODE %i", g_debugMode);
    }
    if (highScore) {
        writer.Line("HIGHSCORE %i", static_cast<int>(highScore));
    }
    if (g_window.keepAspect) {
        writer.Line("VID_ASPECT %i", g_window.keepAspect);
    }
    ForEachBinding(WriteBinding, &writer);
    return writer.length;
}

int WriteConfig(const char* path) {
    // Camera values can be as large as a float goes; 8 KiB holds any of them.
    static char text[8192];
    int length = BuildConfigText(text, sizeof(text));
    return Sys_WriteFileAtomic(path, text, static_cast<unsigned int>(length));
}
