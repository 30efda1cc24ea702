// Where the game plugs into the main loop, start-up, shutdown and the
// console: the game and closing-scene ticks, the one-time set-up, the release
// of the objects at exit, the high-score line and the demo commands
// "DEMO_RECORD <file> [level]", "DEMO_STOP" and "DEMO_PLAY <file>".
#pragma once

// Sets the game's entries of g_hooks; called once before the main loop starts.
void InstallGameHooks();
// The game's console commands; 1 when word names one of them.
int GameCommand(const char* word, const char* arguments);
