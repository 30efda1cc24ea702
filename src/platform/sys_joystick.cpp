#include "platform/sys_joystick.h"

#include <SDL.h>

static SDL_Joystick* s_joystick;

int Sys_JoystickCapture() {
    if (s_joystick) {
        return 1;
    }
    if (!SDL_WasInit(SDL_INIT_JOYSTICK) && SDL_InitSubSystem(SDL_INIT_JOYSTICK) != 0) {
        return 0;
    }
    if (SDL_NumJoysticks() < 1) {
        return 0;
    }
    s_joystick = SDL_JoystickOpen(0);
    return s_joystick != nullptr;
}

// SDL axes run -32768..32767; WinMM's run 0..65535.
static unsigned int Axis(int index) {
    if (index >= SDL_JoystickNumAxes(s_joystick)) {
        return 32767;
    }
    return static_cast<unsigned int>(SDL_JoystickGetAxis(s_joystick, index) + 32768);
}

int Sys_JoystickGetPos(SysJoystickState* out) {
    if (!s_joystick || !SDL_JoystickGetAttached(s_joystick)) {
        return 0;
    }
    SDL_JoystickUpdate();
    out->x = Axis(0);
    out->y = Axis(1);
    out->z = Axis(2);
    out->buttons = 0;
    int count = SDL_JoystickNumButtons(s_joystick);
    for (int i = 0; i < count && i < 32; i++) {
        if (SDL_JoystickGetButton(s_joystick, i)) {
            out->buttons |= 1u << i;
        }
    }
    return 1;
}

void Sys_JoystickRelease() {
    if (s_joystick) {
        SDL_JoystickClose(s_joystick);
        s_joystick = nullptr;
    }
}

static int s_virtualIndex = -1;

int Sys_JoystickAttachVirtual() {
    if (!SDL_WasInit(SDL_INIT_JOYSTICK) && SDL_InitSubSystem(SDL_INIT_JOYSTICK) != 0) {
        return 0;
    }
    if (s_virtualIndex < 0) {
        s_virtualIndex = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 3, 32, 0);
    }
    return s_virtualIndex >= 0;
}

static int IsVirtual() {
    return s_joystick && s_virtualIndex >= 0 && SDL_JoystickIsVirtual(s_virtualIndex);
}

int Sys_JoystickSetVirtualButton(int index, int down) {
    return IsVirtual() && SDL_JoystickSetVirtualButton(s_joystick, index, down ? 1 : 0) == 0;
}

int Sys_JoystickSetVirtualAxis(int index, int value) {
    if (value < -32768 || value > 32767) {
        return 0;
    }
    return IsVirtual() && SDL_JoystickSetVirtualAxis(s_joystick, index, static_cast<Sint16>(value)) == 0;
}

void Sys_JoystickDetachVirtual() {
    Sys_JoystickRelease();
    if (s_virtualIndex >= 0) {
        SDL_JoystickDetachVirtual(s_virtualIndex);
        s_virtualIndex = -1;
    }
}
