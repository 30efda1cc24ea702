#include "app/key_bindings.h"

#include <cstdio>

#include "app/console.h"
#include "game/replay.h"
#include "platform/sys_keys.h"

static unsigned char s_target[256];
static unsigned char s_heldAs[256];  // what each held key set when it went down
static int s_ready;

void ResetKeyBindings() {
    for (int key = 0; key < 256; key++) {
        s_target[key] = static_cast<unsigned char>(key);
        s_heldAs[key] = 0;
    }
    s_ready = 1;
}

static void Ready() {
    if (!s_ready) {
        ResetKeyBindings();
    }
}

int KeyIsFixed(int key) {
    return key == VK_OEM_3 || key == VK_OEM_8 || key == VK_RETURN || key == VK_BACK || key == VK_MENU;
}

int BoundKey(int key) {
    Ready();
    return s_target[key & 0xFF];
}

int BindKey(int key, int gameKey) {
    Ready();
    if (key < 1 || key > 255 || gameKey < 1 || gameKey > 255 || KeyIsFixed(key)) {
        return 0;
    }
    s_target[key] = static_cast<unsigned char>(gameKey);
    return 1;
}

int UnbindKey(int key) {
    Ready();
    if (key < 1 || key > 255 || KeyIsFixed(key)) {
        return 0;
    }
    s_target[key] = 0;
    return 1;
}

// The console reads keys as the letters on them.
static int Target(int vk) {
    Ready();
    return g_console.visible ? vk : s_target[vk];
}

void KeyDown(unsigned char* keys, int vk) {
    vk &= 0xFF;
    int target = Target(vk);
    s_heldAs[vk] = static_cast<unsigned char>(target);
    if (target) {
        keys[target] = 1;
    }
}

void KeyUp(unsigned char* keys, int vk) {
    vk &= 0xFF;
    // The key lets go of what it set, even if the console opened or the binding changed since.
    int target = s_heldAs[vk] ? s_heldAs[vk] : Target(vk);
    s_heldAs[vk] = 0;
    if (target) {
        keys[target] = 0;
    }
}

void ForEachBinding(void (*line)(int key, int gameKey, void* context), void* context) {
    Ready();
    for (int key = 1; key < 256; key++) {
        if (s_target[key] != key) {
            line(key, s_target[key], context);
        }
    }
}

KeyLabelText KeyLabel(int key) {
    KeyLabelText name;
    const char* text = ReplayKeyName(key & 0xFF);
    if (text) {
        snprintf(name.text, sizeof(name.text), "%s", text);
    } else {
        snprintf(name.text, sizeof(name.text), "0x%02X", key & 0xFF);
    }
    return name;
}
