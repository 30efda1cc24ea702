// Sound effects through OpenAL. Init opens the output device and a context,
// WAV images are loaded into numbered buffer slots, and a slot is played on
// one of a fixed set of sources, either at the listener or at a world position
// with the listener placed at the scene camera. Nothing here queues or mixes:
// starting a source always stops what it was playing, so sounds that must cut
// each other off simply share a source.
//
// World positions are scaled by 0.002 on their way to OpenAL (500 world units
// are one OpenAL unit) so that OpenAL's default distance model fits our level
// sizes. Until Init has opened a device every load and play answers 0 and the
// game runs silent. Music (music_player.h) shares the context opened here.
#pragma once

class ResourceManager;

class SoundSystem {
public:
    static const int kSlotCount = 200;
    static const int kSourceCount = 14;
    static constexpr float kWorldScale = 0.002f;

    unsigned int buffers[kSlotCount];  // OpenAL buffer per slot, 0 = empty
    unsigned int sources[kSourceCount];
    void* context;             // ALCcontext*, null until Init
    void* device;              // ALCdevice*, null until Init succeeds
    const char* deviceName;    // device specifier, owned by OpenAL
    unsigned char nextSource;  // the source a source argument of -1 takes next

    SoundSystem();
    // Deletes sources and buffers, then the context and the device.
    ~SoundSystem();

    // Opens the "DirectSound3D" device, or the system's default one when no such device exists; 1 when open.
    int Init();
    // Loads the named WAV through resources into slot; 1 on success.
    int LoadSound(ResourceManager* resources, const char* name, int slot);
    // Makes slot's buffer from a WAV image in memory; 1 on success.
    int UploadWav(const unsigned char* bytes, unsigned int length, int slot);
    // Plays slot at the listener on source (0..13, or -1 for the next in turn); 1 when it started.
    int Play(int slot, int source);
    // Plays slot at a world position with the listener placed at the given camera; 1 when it started.
    int PlayAt(int slot, int source, const float listenerPosition[3], const float listenerAngles[3],
               const float sourcePosition[3], float gain, float pitch, bool loop);
    // Moves the listener to a world position, facing by the camera angles (pitch, yaw, roll).
    void PlaceListener(const float position[3], const float angles[3]);
    // Listener position in OpenAL units (no scaling).
    void SetListenerPosition(float x, float y, float z);
    // Listener orientation as OpenAL's at and up vectors.
    void SetListenerOrientation(float atX, float atY, float atZ, float upX, float upY, float upZ);

    // The five source controls take a source index (0..13) and do nothing for a source never generated.
    // Puts source back at the origin with no velocity.
    void ResetSource(int source);
    // Stops source; -1 stops the next source in turn and advances the turn.
    void StopSource(int source);
    // Moves source to a world position.
    void SetSourcePosition(int source, const float position[3]);
    // Sets source's pitch, raised to 0.05 when below.
    void SetSourcePitch(int source, float pitch);
    // Sets source's gain.
    void SetSourceGain(int source, float gain);

    // The device's specifier and the AL version, renderer, vendor and extension strings (empty when closed).
    const char* VersionString() const;
    const char* RendererString() const;
    const char* VendorString() const;
    const char* ExtensionsString() const;

private:
    // Index into sources for a source argument, resolving -1; -1 when out of range.
    int ResolveSource(int source);
    // Points the listener along the camera's yaw.
    void OrientListener(const float angles[3]);
};

extern SoundSystem g_sound;
