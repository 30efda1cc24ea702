// The configuration file config.vbt: a command script the program writes at
// exit (window mode, size, quality, camera, debug switches, high score) and
// runs at the next start-up before the window exists. Lines end with CR LF.
#pragma once

// Writes the configuration text into out (outSize bytes, terminated); returns its length.
int BuildConfigText(char* out, int outSize);
// Replaces path with the current configuration (atomically); 1, or 0 when nothing was written.
int WriteConfig(const char* path);
