// The console input line: the toggle key that opens and closes the console,
// and, while it is open, typing into g_console.inputLine through three fixed
// 256-entry tables indexed by virtual-key code (the character unshifted, the
// character with Shift, and whether the key types at all), clipboard paste of
// the first line, Enter, Backspace and a one-line history.
//
// Input is the key table of g_window, not a queue of characters: a key entry
// is cleared only when it was used, so the keyboard's auto-repeat (which sets
// it again) types repeated characters, and a key that could not be typed
// stays pending. The dialog widgets' text fields type through the same tables
// (KeyLine_Type, KeyLine_Paste), with their own limits and a veto per key.
//
// The tables describe a United Kingdom board; the platform layer reports the
// codes that board would, and only the toggle key depends on the layout.
#pragma once

// The three typing tables, indexed by virtual-key code.
struct ConsoleKeyTables {
    unsigned char lower[256];      // the character typed without Shift
    unsigned char upper[256];      // the character typed with Shift
    unsigned char printable[256];  // 1 for the keys that type anything
};

extern const ConsoleKeyTables g_consoleKeyTables;

// Reads the clipboard's text (the platform's by default; tests may swap it).
extern int (*g_readClipboard)(char* out, int outSize);

// Asked before a character (the virtual key) or a paste (key 0) enters a line; 0 refuses it.
typedef int (*KeyLineFilter)(int key, void* context);

// Types every pending printable key into line while it has at most maxBefore characters;
// clears the keys it used. Returns the characters added.
int KeyLine_Type(char* line, int maxBefore, KeyLineFilter filter, void* context);
// Shift+Insert or Ctrl+V: clears those four keys and appends the clipboard's first line when it
// is shorter than maxPaste, cut to keep line within maxLength. Returns the characters added.
int KeyLine_Paste(char* line, int maxLength, int maxPaste, KeyLineFilter filter, void* context);

// Every frame step: the toggle key, and while the console is open its input line.
void ConsoleKeys();
