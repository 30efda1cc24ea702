// The sound system's part in start-up: opening the device with its log lines,
// and loading the game's ten sound effects into their fixed slots. The slot
// numbers are what the game rules play (footsteps 1-4, jump 5, death 6, key 7,
// the closing scenes' foot 8 and splat 9, the air tally's blip 10).
#pragma once

class ResourceManager;

// Game sound slots.
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
    SoundBlip = 10
};

// Initialises g_sound and, when a device opened, writes its device lines to the console; 1 when open.
int InitSoundAtStartup();
// Loads the ten game sounds into slots 1 to 10 of g_sound through resources; returns how many loaded
// (a missing file is skipped).
int LoadGameSounds(ResourceManager* resources);
