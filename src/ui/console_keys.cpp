#include "ui/console_keys.h"

#include <cstring>

#include "app/console.h"
#include "app/gl_window.h"
#include "platform/sys_clipboard.h"
#include "platform/sys_keys.h"

static constexpr void SetKey(ConsoleKeyTables& t, int vk, unsigned char lower, unsigned char upper) {
    t.lower[vk] = lower;
    t.upper[vk] = upper;
    t.printable[vk] = 1;
}

static constexpr ConsoleKeyTables BuildKeyTables() {
    ConsoleKeyTables t{};
    SetKey(t, VK_SPACE, ' ', ' ');
    // The shifted digit row of a United Kingdom board; 0xA3 is the pound sign.
    const char shiftedDigits[] = ")!\"\xA3$%^&*(";
    for (int i = 0; i < 10; i++) {
        SetKey(t, '0' + i, static_cast<unsigned char>('0' + i), static_cast<unsigned char>(shiftedDigits[i]));
    }
    for (int i = 0; i < 26; i++) {
        SetKey(t, 'A' + i, static_cast<unsigned char>('a' + i), static_cast<unsigned char>('A' + i));
    }
    SetKey(t, VK_OEM_1, ';', ':');
    SetKey(t, VK_OEM_PLUS, '=', '+');
    SetKey(t, VK_OEM_COMMA, ',', '<');
    SetKey(t, VK_OEM_MINUS, '-', '_');
    SetKey(t, VK_OEM_PERIOD, '.', '>');
    SetKey(t, VK_OEM_2, '/', '?');
    SetKey(t, VK_OEM_3, '\'', '@');
    SetKey(t, VK_OEM_4, '[', '{');
    SetKey(t, VK_OEM_5, '\\', '|');
    SetKey(t, VK_OEM_6, ']', '}');
    SetKey(t, VK_OEM_7, '#', '~');
    SetKey(t, VK_OEM_8, ' ', ' ');
    return t;
}

const ConsoleKeyTables g_consoleKeyTables = BuildKeyTables();

int (*g_readClipboard)(char* out, int outSize) = Sys_GetClipboardText;

static int Allowed(KeyLineFilter filter, void* context, int key) {
    return !filter || filter(key, context);
}

int KeyLine_Type(char* line, int maxBefore, KeyLineFilter filter, void* context) {
    uint8_t* keys = g_window.keys;
    const unsigned char* table = keys[VK_SHIFT] ? g_consoleKeyTables.upper : g_consoleKeyTables.lower;
    int added = 0;
    for (int vk = 0; vk < 256; vk++) {
        if (!keys[vk] || !g_consoleKeyTables.printable[vk]) {
            continue;
        }
        // A key that does not fit (or is refused) stays pending.
        int length = static_cast<int>(strlen(line));
        if (length > maxBefore || !Allowed(filter, context, vk)) {
            continue;
        }
        line[length] = static_cast<char>(table[vk]);
        line[length + 1] = 0;
        keys[vk] = 0;
        added++;
    }
    return added;
}

int KeyLine_Paste(char* line, int maxLength, int maxPaste, KeyLineFilter filter, void* context) {
    uint8_t* keys = g_window.keys;
    if (!((keys[VK_SHIFT] && keys[VK_INSERT]) || (keys[VK_CONTROL] && keys['V']))) {
        return 0;
    }
    keys[VK_SHIFT] = keys[VK_INSERT] = keys[VK_CONTROL] = keys['V'] = 0;
    char text[4096];
    if (!g_readClipboard || !g_readClipboard(text, sizeof(text))) {
        return 0;
    }
    text[strcspn(text, "\r\n")] = 0;
    int pasted = static_cast<int>(strlen(text));
    if (pasted >= maxPaste || !Allowed(filter, context, 0)) {
        return 0;
    }
    // What does not fit is cut off: the start of a long line is the useful part.
    int length = static_cast<int>(strlen(line));
    int room = maxLength - length;
    if (room <= 0) {
        return 0;
    }
    if (pasted > room) {
        pasted = room;
    }
    memcpy(line + length, text, static_cast<size_t>(pasted));
    line[length + pasted] = 0;
    return pasted;
}

// The key left of "1": it reports 0xDF on a United Kingdom board and 0xC0 elsewhere.
static void ToggleConsole() {
    uint8_t* keys = g_window.keys;
    int pressed = g_window.layoutIsNotUK ? keys[VK_OEM_3] : keys[VK_OEM_8];
    if (!pressed) {
        return;
    }
    keys[VK_OEM_3] = keys[VK_OEM_8] = 0;
    g_console.visible = !g_console.visible;
}

static void EnterLine() {
    memcpy(g_console.historyLine, g_console.inputLine, sizeof(g_console.historyLine));
    g_console.AddLine(g_console.inputLine);
    ExecuteCommand(g_console.inputLine);
    g_console.inputLine[0] = 0;
}

void ConsoleKeys() {
    ToggleConsole();
    if (g_console.visible != 1) {
        return;
    }
    uint8_t* keys = g_window.keys;
    char* input = g_console.inputLine;
    KeyLine_Paste(input, 255, 256, nullptr, nullptr);
    KeyLine_Type(input, 254, nullptr, nullptr);
    if (keys[VK_RETURN] && input[0]) {
        keys[VK_RETURN] = 0;
        EnterLine();
    }
    if (keys[VK_BACK] && input[0]) {
        keys[VK_BACK] = 0;
        input[strlen(input) - 1] = 0;
    }
    if (keys[VK_F3] || keys[VK_UP]) {
        keys[VK_F3] = keys[VK_UP] = 0;
        memcpy(input, g_console.historyLine, sizeof(g_console.inputLine));
    }
}
