// The game's ten sound slots and how the rules play them. Positional sounds
// all share source 0, so a new one cuts off the one still playing (a death
// right after a key silences the collect sound); the closing scene's foot and
// splat play at the listener on sources 0 and 1.
#pragma once

enum GameSound {
    SoundRun1 = 1,
    SoundRun2 = 2,
    SoundRun3 = 3,
    SoundRun4 = 4,
    SoundJump = 5,
    SoundDie = 6,
    SoundCollect = 7,
    SoundFoot = 8,
    SoundSplat = 9,
    SoundBlip = 10,
};

// Loads the ten game sounds into their slots through the resource manager.
void LoadGameSounds();
// Plays a slot on source 0 at a world position, the listener at the scene camera.
void PlayGameSoundAt(int slot, const float* position, float pitch);
