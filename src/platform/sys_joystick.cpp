#include "platform/sys_joystick.h"

#include <SDL.h>

#include <cstdio>
#include <cstring>

static SDL_Joystick* s_joystick;
static SDL_GameController* s_controller;  // set when s_joystick is read through a mapping
static char s_name[128];

static int StartPads() {
    return SDL_WasInit(SDL_INIT_GAMECONTROLLER) || SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
}

void Sys_JoystickRelease() {
    if (s_controller) {
        SDL_GameControllerClose(s_controller);
    } else if (s_joystick) {
        SDL_JoystickClose(s_joystick);
    }
    s_controller = nullptr;
    s_joystick = nullptr;
}

static int Held() {
    return s_joystick && SDL_JoystickGetAttached(s_joystick);
}

static void KeepName(const char* name) {
    snprintf(s_name, sizeof(s_name), "%s", name ? name : "Unnamed joystick");
}

// Device 0 as a game controller when a mapping names it, else as a raw joystick.
static int OpenFirst() {
    if (SDL_NumJoysticks() < 1) {
        return 0;
    }
    if (SDL_IsGameController(0)) {
        s_controller = SDL_GameControllerOpen(0);
        s_joystick = s_controller ? SDL_GameControllerGetJoystick(s_controller) : nullptr;
    }
    if (!s_joystick) {
        s_controller = nullptr;
        s_joystick = SDL_JoystickOpen(0);
    }
    if (!s_joystick) {
        return 0;
    }
    KeepName(s_controller ? SDL_GameControllerName(s_controller) : SDL_JoystickName(s_joystick));
    return 1;
}

int Sys_JoystickCapture() {
    if (!StartPads()) {
        return 0;
    }
    SDL_JoystickUpdate();
    if (Held()) {
        return 1;
    }
    Sys_JoystickRelease();
    return OpenFirst();
}

int Sys_JoystickRefresh() {
    if (!StartPads()) {
        return SysPadUnchanged;
    }
    // Also where SDL looks for devices plugged in or out since the last call.
    SDL_JoystickUpdate();
    if (s_joystick) {
        if (SDL_JoystickGetAttached(s_joystick)) {
            return SysPadUnchanged;
        }
        Sys_JoystickRelease();
        return SysPadLeft;
    }
    return OpenFirst() ? SysPadArrived : SysPadUnchanged;
}

const char* Sys_JoystickName() {
    return s_name;
}

int Sys_JoystickIsMapped() {
    return s_controller != nullptr;
}

// SDL axes run -32768..32767; WinMM's run 0..65535.
static unsigned int Scale(int value) {
    return static_cast<unsigned int>(value + 32768);
}

static unsigned int RawAxis(int index) {
    if (index >= SDL_JoystickNumAxes(s_joystick)) {
        return 32767;
    }
    return Scale(SDL_JoystickGetAxis(s_joystick, index));
}

static void ReadRaw(SysJoystickState* out) {
    out->x = RawAxis(0);
    out->y = RawAxis(1);
    out->z = RawAxis(2);
    out->buttons = 0;
    int count = SDL_JoystickNumButtons(s_joystick);
    for (int i = 0; i < count && i < 32; i++) {
        if (SDL_JoystickGetButton(s_joystick, i)) {
            out->buttons |= 1u << i;
        }
    }
}

// A held D-pad direction pushes its axis all the way, over whatever the stick says.
static unsigned int StickOrPad(SDL_GameControllerAxis axis, SDL_GameControllerButton low,
                               SDL_GameControllerButton high) {
    if (SDL_GameControllerGetButton(s_controller, low)) {
        return 0;
    }
    if (SDL_GameControllerGetButton(s_controller, high)) {
        return 65535;
    }
    return Scale(SDL_GameControllerGetAxis(s_controller, axis));
}

// The pad's buttons in the numbering of the engine's joystick (button n is bit n - 1).
struct PadButton {
    SDL_GameControllerButton button;
    int number;
};

static const PadButton kPadButtons[] = {
    {SDL_CONTROLLER_BUTTON_A, 1},       // jump
    {SDL_CONTROLLER_BUTTON_B, 2},
    {SDL_CONTROLLER_BUTTON_X, 3},
    {SDL_CONTROLLER_BUTTON_BACK, 7},    // "Z"
    {SDL_CONTROLLER_BUTTON_Y, 8},       // "X"
    {SDL_CONTROLLER_BUTTON_START, 12},  // pause
};

static void ReadMapped(SysJoystickState* out) {
    out->x = StickOrPad(SDL_CONTROLLER_AXIS_LEFTX, SDL_CONTROLLER_BUTTON_DPAD_LEFT,
                        SDL_CONTROLLER_BUTTON_DPAD_RIGHT);
    out->y = StickOrPad(SDL_CONTROLLER_AXIS_LEFTY, SDL_CONTROLLER_BUTTON_DPAD_UP,
                        SDL_CONTROLLER_BUTTON_DPAD_DOWN);
    out->z = Scale(SDL_GameControllerGetAxis(s_controller, SDL_CONTROLLER_AXIS_RIGHTX));
    out->buttons = 0;
    for (const PadButton& pad : kPadButtons) {
        if (SDL_GameControllerGetButton(s_controller, pad.button)) {
            out->buttons |= 1u << (pad.number - 1);
        }
    }
}

int Sys_JoystickGetPos(SysJoystickState* out) {
    if (!s_joystick) {
        return 0;
    }
    SDL_JoystickUpdate();
    if (!SDL_JoystickGetAttached(s_joystick)) {
        return 0;
    }
    if (s_controller) {
        ReadMapped(out);
    } else {
        ReadRaw(out);
    }
    return 1;
}

// One line of a mapping file: 1 taken, 0 skipped (comment, blank, another platform), -1 broken.
static int AddMappingLine(char* line) {
    while (*line == ' ' || *line == '\t') {
        line++;
    }
    if (*line == 0 || *line == '#') {
        return 0;
    }
    const char* platform = strstr(line, "platform:");
    if (platform) {
        const char* own = SDL_GetPlatform();
        size_t length = strlen(own);
        const char* name = platform + strlen("platform:");
        if (SDL_strncasecmp(name, own, length) != 0 || (name[length] != ',' && name[length] != 0)) {
            return 0;
        }
    }
    return SDL_GameControllerAddMapping(line) >= 0 ? 1 : -1;
}

int Sys_JoystickAddMappings(const char* text, int length, int* rejected) {
    int taken = 0, broken = 0;
    if (text && length > 0 && StartPads()) {
        // A real mapping line is a few hundred bytes; a longer one is broken, not cut.
        char line[1024];
        int used = 0, overlong = 0;
        for (int i = 0; i <= length; i++) {
            char c = i < length ? text[i] : '\n';
            if (c != '\n' && c != '\r') {
                if (used < static_cast<int>(sizeof(line)) - 1 && c != 0) {
                    line[used++] = c;
                } else {
                    overlong = 1;
                }
                continue;
            }
            line[used] = 0;
            int result = overlong ? -1 : AddMappingLine(line);
            taken += result > 0;
            broken += result < 0;
            used = 0;
            overlong = 0;
        }
    }
    if (rejected) {
        *rejected = broken;
    }
    return taken;
}

static SDL_JoystickID s_virtualId = -1;
static SDL_Joystick* s_virtual;  // our own handle on it, whether or not it is the captured pad

int Sys_JoystickAttachVirtual(int gamepad) {
    if (s_virtual || !StartPads()) {
        return s_virtual != nullptr;
    }
    SDL_JoystickType type = gamepad ? SDL_JOYSTICK_TYPE_GAMECONTROLLER : SDL_JOYSTICK_TYPE_UNKNOWN;
    int index = SDL_JoystickAttachVirtual(type, 3, 32, 0);
    if (index < 0) {
        return 0;
    }
    s_virtual = SDL_JoystickOpen(index);
    if (!s_virtual) {
        SDL_JoystickDetachVirtual(index);
        return 0;
    }
    s_virtualId = SDL_JoystickInstanceID(s_virtual);
    return 1;
}

int Sys_JoystickSetVirtualButton(int index, int down) {
    return s_virtual && SDL_JoystickSetVirtualButton(s_virtual, index, down ? 1 : 0) == 0;
}

int Sys_JoystickSetVirtualAxis(int index, int value) {
    if (value < -32768 || value > 32767) {
        return 0;
    }
    return s_virtual && SDL_JoystickSetVirtualAxis(s_virtual, index, static_cast<Sint16>(value)) == 0;
}

void Sys_JoystickDetachVirtual() {
    if (!s_virtual) {
        return;
    }
    SDL_JoystickClose(s_virtual);
    s_virtual = nullptr;
    for (int i = 0; i < SDL_NumJoysticks(); i++) {
        if (SDL_JoystickGetDeviceInstanceID(i) == s_virtualId) {
            SDL_JoystickDetachVirtual(i);
            break;
        }
    }
    s_virtualId = -1;
}
