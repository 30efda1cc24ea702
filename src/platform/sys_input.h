// Keyboard state outside the message queue: whether a key is held right now
// (GetKeyState) and which keyboard layout is in use.
#pragma once

// The state of a virtual key: bit 15 (value 0x8000 as a short, so negative) set while held.
short Sys_GetKeyState(int vk);
// Writes the layout name into out (9 bytes): "00000809" for a United Kingdom keymap,
// "00000409" for any other (or when no keymap can be read).
void Sys_KeyboardLayoutName(char* out);
// 1 when the current keymap is the United Kingdom one.
int Sys_KeyboardIsUK();
// Reads the keymap again (after the video system started or the keymap changed).
void Sys_RefreshKeyboardLayout();

// A keymap lookup: the character a physical key (scancode) types unshifted, or 0.
typedef int (*SysKeymapLookup)(int scancode);
// Decides "United Kingdom or not" from a keymap: the UK board types '#' on the key beside
// Enter while keeping the QWERTY letters and the US punctuation of ';' and '['.
int Sys_KeymapIsUK(SysKeymapLookup lookup);
