#include "game/game_sounds.h"

#include "app/scene_camera.h"
#include "audio/sound_system.h"
#include "resources/resource_manager.h"

static const char* const kSoundFiles[10] = {
    "sound\\run01.wav", "sound\\run02.wav",     "sound\\run03.wav", "sound\\run04.wav", "sound\\jump01.wav",
    "sound\\die01.wav", "sound\\collect01.wav", "sound\\foot.wav",  "sound\\splat.wav", "sound\\blip.wav",
};

void LoadGameSounds() {
    for (int i = 0; i < 10; i++) {
        g_sound.LoadSound(&g_resources, kSoundFiles[i], i + 1);
    }
}

void PlayGameSoundAt(int slot, const float* position, float pitch) {
    const float listener[3] = {g_camera.position.x, g_camera.position.y, g_camera.position.z};
    const float angles[3] = {g_camera.pitch, g_camera.yaw, g_camera.roll};
    g_sound.PlayAt(slot, 0, listener, angles, position, 1.0f, pitch, false);
}
