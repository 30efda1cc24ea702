// Sound and music in the program: start-up opens the OpenAL device (and logs
// it) through g_hooks.initSound and hands the music player the resource
// manager with the cut transition through g_hooks.prepareMusic; every 20 ms
// tick the main loop keeps the music fed through g_hooks.musicUpdate. The
// game's own start-up loads the ten effects (LoadGameSounds), and the scenes
// play and stop music and effects themselves.
#pragma once

// Sets g_hooks.initSound, g_hooks.prepareMusic and g_hooks.musicUpdate.
void InstallAudioHooks();
