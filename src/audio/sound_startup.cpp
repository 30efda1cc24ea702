#include "audio/sound_startup.h"

#include "app/console.h"
#include "audio/sound_system.h"

static const char* const kGameSoundFiles[10] = {
    "sound\\run01.wav", "sound\\run02.wav",     "sound\\run03.wav", "sound\\run04.wav", "sound\\jump01.wav",
    "sound\\die01.wav", "sound\\collect01.wav", "sound\\foot.wav",  "sound\\splat.wav", "sound\\blip.wav",
};

int InitSoundAtStartup() {
    // Start-up writes the failure line and the separator itself; only an open
    // device has anything to tell.
    if (!g_sound.Init()) {
        return 0;
    }
    g_console.Print("Initialising OpenAL:");
    g_console.Print("Device found: %s", g_sound.deviceName ? g_sound.deviceName : "");
    g_console.Print("%s, %s, %s", g_sound.VersionString(), g_sound.RendererString(), g_sound.VendorString());
    g_console.Print("Listing extensions: %s", g_sound.ExtensionsString());
    return 1;
}

int LoadGameSounds(ResourceManager* resources) {
    int loaded = 0;
    for (int i = 0; i < 10; i++) {
        loaded += g_sound.LoadSound(resources, kGameSoundFiles[i], SoundRun1 + i);
    }
    return loaded;
}
