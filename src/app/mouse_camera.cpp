#include <cmath>
#include <cstdlib>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/input.h"
#include "app/scene_camera.h"
#include "platform/sys_files.h"
#include "platform/sys_joystick.h"
#include "platform/sys_keys.h"

uint8_t g_dragState;
uint8_t g_dragMoved;
float g_lastMouse[2];

// Buttons 1, 7 and 8 act as held keys: set while held, cleared on the first tick
// after release.
static void MirrorHeld(GlWindow* w, unsigned int buttons, unsigned int mask, int latch, int vk) {
    if (buttons & mask) {
        w->joystickFlags[latch] = 1;
        w->keys[vk] = 1;
    } else if (w->joystickFlags[latch]) {
        w->joystickFlags[latch] = 0;
        w->keys[vk] = 0;
    }
}

// Button 12 (pause) presses its key once per press; the consumer clears the key.
static void MirrorPress(GlWindow* w, unsigned int buttons, unsigned int mask, int latch, int vk) {
    if (buttons & mask) {
        if (!w->joystickFlags[latch]) {
            w->joystickFlags[latch] = 1;
            w->keys[vk] = 1;
        }
    } else {
        w->joystickFlags[latch] = 0;
    }
}

// A pad pulled out mid-game lets go of everything it held: the mirrored buttons and the
// "up" the stick was walking with.
static void ReleasePad(GlWindow* w) {
    MirrorHeld(w, 0, 0, JoyLatchButton1, VK_SPACE);
    MirrorHeld(w, 0, 0, JoyLatchButton7, 'Z');
    MirrorHeld(w, 0, 0, JoyLatchButton8, 'X');
    MirrorHeld(w, 0, 0, JoyLatchUp, VK_UP);
    w->joystickFlags[JoyLatchButton12] = 0;
}

static void FollowHotPlug() {
    switch (Sys_JoystickRefresh()) {
        case SysPadArrived:
            g_window.joystickFound = 1;
            g_console.Print("Joystick connected: %s%s", Sys_JoystickName(),
                            Sys_JoystickIsMapped() ? "" : " (no mapping, raw buttons)");
            break;
        case SysPadLeft:
            ReleasePad(&g_window);
            g_console.Print("Joystick removed: %s", Sys_JoystickName());
            break;
    }
}

void PollJoystick() {
    FollowHotPlug();
    SysJoystickState state;
    if (!Sys_JoystickGetPos(&state)) {
        return;
    }
    MirrorHeld(&g_window, state.buttons, 1u << 0, JoyLatchButton1, VK_SPACE);
    MirrorHeld(&g_window, state.buttons, 1u << 6, JoyLatchButton7, 'Z');
    MirrorHeld(&g_window, state.buttons, 1u << 7, JoyLatchButton8, 'X');
    MirrorPress(&g_window, state.buttons, 1u << 11, JoyLatchButton12, 'P');
}

void LoadPadMappings(const char* path) {
    unsigned int length = 0;
    unsigned char* text = Sys_ReadWholeFile(path, &length);
    if (!text) {
        return;
    }
    int rejected = 0;
    int taken = Sys_JoystickAddMappings(reinterpret_cast<const char*>(text), static_cast<int>(length), &rejected);
    free(text);
    g_console.Print("%s: %i pad mappings", path, taken);
    if (rejected > 0) {
        g_console.Print("%s: %i broken lines ignored", path, rejected);
    }
}

void EndClick() {
    if (g_dragState == 1 && g_dragMoved == 0 && g_window.mouseButtons == 0) {
        g_dragState = 0;
        g_dragMoved = 0;
    }
}

// Brings yaw into [0, 360); a remainder rather than repeated steps, so a huge yaw
// set from the console cannot stall the tick.
static void WrapYaw() {
    g_camera.yaw = fmodf(g_camera.yaw, 360.0f);
    if (g_camera.yaw < 0.0f) {
        g_camera.yaw += 360.0f;
    }
    if (g_camera.yaw >= 360.0f) {
        g_camera.yaw -= 360.0f;
    }
}

void MouseCamera() {
    float dx = g_window.mouse2D[0] - g_lastMouse[0];
    float dy = g_window.mouse2D[1] - g_lastMouse[1];
    if (g_window.mouseButtons == 2) {
        g_camera.yaw -= dx / 5.0f;
        g_dragState = 2;
        if (dx != 0.0f || dy != 0.0f) {
            g_dragMoved = 1;
        }
        WrapYaw();
        g_camera.pitch += dy / 5.0f;
    } else if (g_window.mouseButtons == 1) {
        dx *= 0.5f;
        dy *= 0.5f;
        g_camera.MoveForward(-dy);
        g_camera.Strafe(-dx);
        g_dragState = 1;
        if (dx != 0.0f || dy != 0.0f) {
            g_dragMoved = 1;
        }
    } else if (g_window.mouseButtons == 4) {
        g_camera.MoveUp(dy / 4.0f);
        g_dragState = 4;
        if (dx != 0.0f || dy != 0.0f) {
            g_dragMoved = 1;
        }
    }
    g_lastMouse[0] = g_window.mouse2D[0];
    g_lastMouse[1] = g_window.mouse2D[1];
    if (g_dragState != 0 && g_window.mouseButtons == 0) {
        g_dragState = 0;
        g_dragMoved = 0;
    }
}
