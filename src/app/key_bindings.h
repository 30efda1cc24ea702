// Key rebinding: each physical key sets one game key in the key table, itself
// unless the player said otherwise (BIND, UNBIND). The table is consulted as
// key messages arrive, so every consumer of g_window.keys sees the game key.
// While the console is open keys mean themselves, so a rebound letter still
// types; the console's own keys and Alt+Enter cannot be rebound away.
#pragma once

// Every key back to setting itself.
void ResetKeyBindings();
// The game key a physical key sets (itself by default), 0 when unbound.
int BoundKey(int key);
// Makes key set gameKey (1..255) instead; 0 when key is one that cannot be rebound.
int BindKey(int key, int gameKey);
// Makes key set nothing; 0 when key is one that cannot be rebound.
int UnbindKey(int key);
// 1 for keys that keep their meaning: the console toggles, Return, Backspace and Alt.
int KeyIsFixed(int key);

// A key message for physical key vk: sets or clears the game key it stands for in keys.
void KeyDown(unsigned char* keys, int vk);
void KeyUp(unsigned char* keys, int vk);

// Calls line once for every key that does not set itself, in key order, with the game key
// it sets (0 for unbound): what BINDLIST shows and config.vbt keeps.
void ForEachBinding(void (*line)(int key, int gameKey, void* context), void* context);

// The name of a key as replay files and config.vbt write it ("SPACE", "W", "0xBA").
struct KeyLabelText {
    char text[8];
};
KeyLabelText KeyLabel(int key);
