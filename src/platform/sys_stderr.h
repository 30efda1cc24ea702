// Muting stderr around a library call. Opening a sound device on a machine
// without one makes the system's audio libraries print a screenful of errors
// (ALSA's configuration walk, OpenAL Soft's own log) for what is an ordinary
// situation the game reports itself in one console line.
#pragma once

// Points stderr at /dev/null; returns what Sys_RestoreStderr needs (-1 when nothing was changed).
int Sys_MuteStderr();
// Undoes Sys_MuteStderr; does nothing for -1.
void Sys_RestoreStderr(int saved);
