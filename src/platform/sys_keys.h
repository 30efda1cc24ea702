// Windows virtual-key codes, the vocabulary of the engine's key table
// (g_window.keys[vk]), and the translation from the platform's physical key
// codes. The engine was built around these numbers: the console key, the
// pause key and the jump key are all named by them.
#pragma once

enum {
    VK_LBUTTON = 0x01,
    VK_RBUTTON = 0x02,
    VK_MBUTTON = 0x04,
    VK_BACK = 0x08,
    VK_TAB = 0x09,
    VK_CLEAR = 0x0C,
    VK_RETURN = 0x0D,
    VK_SHIFT = 0x10,
    VK_CONTROL = 0x11,
    VK_MENU = 0x12,
    VK_PAUSE = 0x13,
    VK_CAPITAL = 0x14,
    VK_ESCAPE = 0x1B,
    VK_SPACE = 0x20,
    VK_PRIOR = 0x21,
    VK_NEXT = 0x22,
    VK_END = 0x23,
    VK_HOME = 0x24,
    VK_LEFT = 0x25,
    VK_UP = 0x26,
    VK_RIGHT = 0x27,
    VK_DOWN = 0x28,
    VK_SNAPSHOT = 0x2C,
    VK_INSERT = 0x2D,
    VK_DELETE = 0x2E,
    // '0'..'9' are 0x30..0x39 and 'A'..'Z' are 0x41..0x5A, as their ASCII codes.
    VK_LWIN = 0x5B,
    VK_RWIN = 0x5C,
    VK_APPS = 0x5D,
    VK_NUMPAD0 = 0x60,
    VK_NUMPAD1 = 0x61,
    VK_NUMPAD2 = 0x62,
    VK_NUMPAD3 = 0x63,
    VK_NUMPAD4 = 0x64,
    VK_NUMPAD5 = 0x65,
    VK_NUMPAD6 = 0x66,
    VK_NUMPAD7 = 0x67,
    VK_NUMPAD8 = 0x68,
    VK_NUMPAD9 = 0x69,
    VK_MULTIPLY = 0x6A,
    VK_ADD = 0x6B,
    VK_SUBTRACT = 0x6D,
    VK_DECIMAL = 0x6E,
    VK_DIVIDE = 0x6F,
    VK_F1 = 0x70,
    VK_F2 = 0x71,
    VK_F3 = 0x72,
    VK_F4 = 0x73,
    VK_F5 = 0x74,
    VK_F6 = 0x75,
    VK_F7 = 0x76,
    VK_F8 = 0x77,
    VK_F9 = 0x78,
    VK_F10 = 0x79,
    VK_F11 = 0x7A,
    VK_F12 = 0x7B,
    VK_NUMLOCK = 0x90,
    VK_SCROLL = 0x91,
    VK_LSHIFT = 0xA0,
    VK_RSHIFT = 0xA1,
    VK_LCONTROL = 0xA2,
    VK_RCONTROL = 0xA3,
    VK_LMENU = 0xA4,
    VK_RMENU = 0xA5,
    VK_OEM_1 = 0xBA,       // ;: on US and UK boards
    VK_OEM_PLUS = 0xBB,    // =+
    VK_OEM_COMMA = 0xBC,   // ,<
    VK_OEM_MINUS = 0xBD,   // -_
    VK_OEM_PERIOD = 0xBE,  // .>
    VK_OEM_2 = 0xBF,       // /?
    VK_OEM_3 = 0xC0,       // `~ on US boards, '@ on UK boards
    VK_OEM_4 = 0xDB,       // [{
    VK_OEM_5 = 0xDC,       // \| (the UK board has it beside left Shift)
    VK_OEM_6 = 0xDD,       // ]}
    VK_OEM_7 = 0xDE,       // '" on US boards, #~ on UK boards
    VK_OEM_8 = 0xDF,       // `¬ on UK boards: the key left of "1"
    VK_OEM_102 = 0xE2,     // the extra key beside left Shift on non-UK ISO boards
};

// The virtual-key code of a physical key (a USB HID usage, the platform's scancode), or 0
// for keys without one. ukLayout selects the United Kingdom assignment of the OEM keys.
int Sys_VirtualKeyFromScancode(int scancode, int ukLayout);
