#include "platform/sys_input.h"

#include <SDL.h>

#include <cstring>

#include "platform/sys_keys.h"

static int s_isUK;

int Sys_KeymapIsUK(SysKeymapLookup lookup) {
    int hashBesideEnter = lookup(SDL_SCANCODE_BACKSLASH) == '#' || lookup(SDL_SCANCODE_NONUSHASH) == '#';
    return hashBesideEnter && lookup(SDL_SCANCODE_Q) == 'q' && lookup(SDL_SCANCODE_Z) == 'z' &&
           lookup(SDL_SCANCODE_SEMICOLON) == ';' && lookup(SDL_SCANCODE_LEFTBRACKET) == '[' &&
           lookup(SDL_SCANCODE_APOSTROPHE) == '\'';
}

static int SdlKeymap(int scancode) {
    SDL_Keycode key = SDL_GetKeyFromScancode(static_cast<SDL_Scancode>(scancode));
    return key < 0x80 ? static_cast<int>(key) : 0;
}

void Sys_RefreshKeyboardLayout() {
    s_isUK = SDL_WasInit(SDL_INIT_VIDEO) ? Sys_KeymapIsUK(SdlKeymap) : 0;
}

int Sys_KeyboardIsUK() {
    return s_isUK;
}

void Sys_KeyboardLayoutName(char* out) {
    strcpy(out, s_isUK ? "00000809" : "00000409");
}

static int ScancodeHeld(const Uint8* state, int count, SDL_Scancode code) {
    return code < count && state[code];
}

short Sys_GetKeyState(int vk) {
    if (!SDL_WasInit(SDL_INIT_VIDEO)) {
        return 0;
    }
    int count = 0;
    const Uint8* state = SDL_GetKeyboardState(&count);
    int held = 0;
    switch (vk) {
        case VK_MENU:
            held = ScancodeHeld(state, count, SDL_SCANCODE_LALT) ||
                   ScancodeHeld(state, count, SDL_SCANCODE_RALT);
            break;
        case VK_CONTROL:
            held = ScancodeHeld(state, count, SDL_SCANCODE_LCTRL) ||
                   ScancodeHeld(state, count, SDL_SCANCODE_RCTRL);
            break;
        case VK_SHIFT:
            held = ScancodeHeld(state, count, SDL_SCANCODE_LSHIFT) ||
                   ScancodeHeld(state, count, SDL_SCANCODE_RSHIFT);
            break;
        default:
            for (int code = 0; code < count && !held; code++) {
                held = state[code] && Sys_VirtualKeyFromScancode(code, s_isUK) == vk;
            }
            break;
    }
    return held ? static_cast<short>(0x8000) : 0;
}
