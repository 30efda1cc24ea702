// The game's side of the folders the platform layer finds (sys_folders.h): the
// program built in the tree changes nothing; the installed program moves into
// the player's folder, gives the resource manager the installed data to search
// after the player's own, logs both folders, and on its first start leaves a
// commented autoexec.vbt and an empty data/ there for the player to fill.
#pragma once

// Sets up the folders before config.vbt is read. 0 when the installed game finds no data:
// a message box (and stderr) has named every folder searched and nothing was written.
int EnterGameFolders();

// Writes config.vbt at shutdown. The installed game says why, on the console and stderr,
// when the player's folder does not take it (the older file stays as it was).
void SaveConfig();
