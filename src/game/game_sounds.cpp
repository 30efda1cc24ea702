#include "game/game_sounds.h"

#include "app/scene_camera.h"
#include "audio/sound_system.h"

void PlayGameSoundAt(int slot, const float* position, float pitch) {
    const float listener[3] = {g_camera.position.x, g_camera.position.y, g_camera.position.z};
    const float angles[3] = {g_camera.pitch, g_camera.yaw, g_camera.roll};
    g_sound.PlayAt(slot, 0, listener, angles, position, 1.0f, pitch, false);
}
