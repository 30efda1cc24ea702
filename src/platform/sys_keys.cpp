#include "platform/sys_keys.h"

#include <SDL.h>

// Keys whose code does not follow from a simple range. Letters, digits and function
// keys are handled by ranges below.
struct KeyPair {
    int scancode;
    int vk;
};

static const KeyPair kKeyTable[] = {
    {SDL_SCANCODE_RETURN, VK_RETURN},
    {SDL_SCANCODE_ESCAPE, VK_ESCAPE},
    {SDL_SCANCODE_BACKSPACE, VK_BACK},
    {SDL_SCANCODE_TAB, VK_TAB},
    {SDL_SCANCODE_SPACE, VK_SPACE},
    {SDL_SCANCODE_MINUS, VK_OEM_MINUS},
    {SDL_SCANCODE_EQUALS, VK_OEM_PLUS},
    {SDL_SCANCODE_LEFTBRACKET, VK_OEM_4},
    {SDL_SCANCODE_RIGHTBRACKET, VK_OEM_6},
    {SDL_SCANCODE_BACKSLASH, VK_OEM_5},
    {SDL_SCANCODE_NONUSHASH, VK_OEM_5},
    {SDL_SCANCODE_SEMICOLON, VK_OEM_1},
    {SDL_SCANCODE_APOSTROPHE, VK_OEM_7},
    {SDL_SCANCODE_GRAVE, VK_OEM_3},
    {SDL_SCANCODE_COMMA, VK_OEM_COMMA},
    {SDL_SCANCODE_PERIOD, VK_OEM_PERIOD},
    {SDL_SCANCODE_SLASH, VK_OEM_2},
    {SDL_SCANCODE_NONUSBACKSLASH, VK_OEM_102},
    {SDL_SCANCODE_CAPSLOCK, VK_CAPITAL},
    {SDL_SCANCODE_PRINTSCREEN, VK_SNAPSHOT},
    {SDL_SCANCODE_SCROLLLOCK, VK_SCROLL},
    {SDL_SCANCODE_PAUSE, VK_PAUSE},
    {SDL_SCANCODE_INSERT, VK_INSERT},
    {SDL_SCANCODE_HOME, VK_HOME},
    {SDL_SCANCODE_PAGEUP, VK_PRIOR},
    {SDL_SCANCODE_DELETE, VK_DELETE},
    {SDL_SCANCODE_END, VK_END},
    {SDL_SCANCODE_PAGEDOWN, VK_NEXT},
    {SDL_SCANCODE_RIGHT, VK_RIGHT},
    {SDL_SCANCODE_LEFT, VK_LEFT},
    {SDL_SCANCODE_DOWN, VK_DOWN},
    {SDL_SCANCODE_UP, VK_UP},
    {SDL_SCANCODE_NUMLOCKCLEAR, VK_NUMLOCK},
    {SDL_SCANCODE_KP_DIVIDE, VK_DIVIDE},
    {SDL_SCANCODE_KP_MULTIPLY, VK_MULTIPLY},
    {SDL_SCANCODE_KP_MINUS, VK_SUBTRACT},
    {SDL_SCANCODE_KP_PLUS, VK_ADD},
    {SDL_SCANCODE_KP_ENTER, VK_RETURN},
    {SDL_SCANCODE_KP_PERIOD, VK_DECIMAL},
    {SDL_SCANCODE_KP_0, VK_NUMPAD0},
    {SDL_SCANCODE_APPLICATION, VK_APPS},
    // Windows reports the generic modifier codes in key messages.
    {SDL_SCANCODE_LCTRL, VK_CONTROL},
    {SDL_SCANCODE_RCTRL, VK_CONTROL},
    {SDL_SCANCODE_LSHIFT, VK_SHIFT},
    {SDL_SCANCODE_RSHIFT, VK_SHIFT},
    {SDL_SCANCODE_LALT, VK_MENU},
    {SDL_SCANCODE_RALT, VK_MENU},
    {SDL_SCANCODE_LGUI, VK_LWIN},
    {SDL_SCANCODE_RGUI, VK_RWIN},
};

// A United Kingdom board moves the OEM codes of four keys.
static int UkOverride(int scancode) {
    switch (scancode) {
        case SDL_SCANCODE_GRAVE:
            return VK_OEM_8;
        case SDL_SCANCODE_APOSTROPHE:
            return VK_OEM_3;
        case SDL_SCANCODE_BACKSLASH:
        case SDL_SCANCODE_NONUSHASH:
            return VK_OEM_7;
        case SDL_SCANCODE_NONUSBACKSLASH:
            return VK_OEM_5;
    }
    return 0;
}

int Sys_VirtualKeyFromScancode(int scancode, int ukLayout) {
    if (scancode >= SDL_SCANCODE_A && scancode <= SDL_SCANCODE_Z) {
        return 'A' + (scancode - SDL_SCANCODE_A);
    }
    if (scancode >= SDL_SCANCODE_1 && scancode <= SDL_SCANCODE_9) {
        return '1' + (scancode - SDL_SCANCODE_1);
    }
    if (scancode == SDL_SCANCODE_0) {
        return '0';
    }
    if (scancode >= SDL_SCANCODE_F1 && scancode <= SDL_SCANCODE_F12) {
        return VK_F1 + (scancode - SDL_SCANCODE_F1);
    }
    if (scancode >= SDL_SCANCODE_KP_1 && scancode <= SDL_SCANCODE_KP_9) {
        return VK_NUMPAD1 + (scancode - SDL_SCANCODE_KP_1);
    }
    if (ukLayout) {
        int vk = UkOverride(scancode);
        if (vk) {
            return vk;
        }
    }
    for (const KeyPair& pair : kKeyTable) {
        if (pair.scancode == scancode) {
            return pair.vk;
        }
    }
    return 0;
}
