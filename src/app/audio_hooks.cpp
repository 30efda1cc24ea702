#include "app/audio_hooks.h"

#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "audio/sound_startup.h"
#include "resources/resource_manager.h"

// Cut is the transition in force for the whole run: every change of piece
// happens behind a loading screen or a scene change, where a fade would only
// drag the old piece along.
static void PrepareMusic() {
    g_music.resources = &g_resources;
    g_music.transition = MusicPlayer::kCut;
}

static void UpdateMusic() {
    g_music.Update();
}

void InstallAudioHooks() {
    g_hooks.initSound = InitSoundAtStartup;
    g_hooks.prepareMusic = PrepareMusic;
    g_hooks.musicUpdate = UpdateMusic;
}
