// Music as the program wires it: every change of piece cuts, from the global
// resource manager. That the cut closes the old piece at once and a stopped piece
// goes at the next tick is the music player's test; that the main loop feeds the
// music once a tick is the main loop's.
#include "app/audio_hooks.h"

#include <gtest/gtest.h>

#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "resources/resource_manager.h"

TEST(AudioHooks, TheProgramsMusicCutsAndComesFromTheGlobalResources) {
    EngineHooks savedHooks = g_hooks;
    unsigned int savedTransition = g_music.transition;
    ResourceManager* savedResources = g_music.resources;
    g_music.transition = MusicPlayer::kFade;
    InstallAudioHooks();
    g_hooks.prepareMusic();
    EXPECT_EQ(g_music.transition, MusicPlayer::kCut);
    EXPECT_EQ(g_music.resources, &g_resources);
    g_hooks = savedHooks;
    g_music.transition = savedTransition;
    g_music.resources = savedResources;
}
