#include "audio/sound_system.h"

#include <AL/al.h>
#include <AL/alc.h>

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "audio/wav_file.h"
#include "platform/sys_stderr.h"
#include "resources/resource_manager.h"

SoundSystem::SoundSystem() : context(nullptr), device(nullptr), deviceName(nullptr), nextSource(0) {
    memset(buffers, 0, sizeof(buffers));
    memset(sources, 0, sizeof(sources));
}

SoundSystem::~SoundSystem() {
    if (!device) {
        return;
    }
    for (int i = 0; i < kSourceCount; i++) {
        if (sources[i]) {
            alDeleteSources(1, &sources[i]);
        }
    }
    for (int i = 0; i < kSlotCount; i++) {
        if (buffers[i]) {
            alDeleteBuffers(1, &buffers[i]);
        }
    }
    alcMakeContextCurrent(nullptr);
    if (context) {
        alcDestroyContext(static_cast<ALCcontext*>(context));
    }
    alcCloseDevice(static_cast<ALCdevice*>(device));
}

int SoundSystem::Init() {
    // The device name the game always asked for first; on systems that have no
    // such device the default output is just as good.
    if (device) {
        return 1;
    }
    // Without a sound card the attempts fill stderr with library errors; the
    // game says "Could not initialise OpenAL" itself. ALSOFT_LOGLEVEL set
    // means someone wants OpenAL's side of the story.
    int saved = getenv("ALSOFT_LOGLEVEL") ? -1 : Sys_MuteStderr();
    ALCdevice* dev = alcOpenDevice("DirectSound3D");
    if (!dev) {
        dev = alcOpenDevice(nullptr);
    }
    Sys_RestoreStderr(saved);
    if (!dev) {
        return 0;
    }
    alGetError();
    ALCcontext* ctx = alcCreateContext(dev, nullptr);
    if (!ctx || !alcMakeContextCurrent(ctx)) {
        if (ctx) {
            alcDestroyContext(ctx);
        }
        alcCloseDevice(dev);
        return 0;
    }
    device = dev;
    context = ctx;
    deviceName = alcGetString(dev, ALC_DEVICE_SPECIFIER);
    SetListenerPosition(0, 0, 0);
    SetListenerOrientation(0, 0, -1, 0, 1, 0);
    alGetError();
    memset(buffers, 0, sizeof(buffers));
    memset(sources, 0, sizeof(sources));
    for (int i = 0; i < kSourceCount; i++) {
        alGenSources(1, &sources[i]);
    }
    nextSource = 0;
    return 1;
}

int SoundSystem::LoadSound(ResourceManager* resources, const char* name, int slot) {
    if (!resources || !name) {
        return 0;
    }
    unsigned char* bytes = resources->Open(name);
    if (!bytes) {
        return 0;
    }
    int result = UploadWav(bytes, resources->bufferSize, slot);
    resources->Release();
    return result;
}

int SoundSystem::UploadWav(const unsigned char* bytes, unsigned int length, int slot) {
    if (!device || slot < 0 || slot >= kSlotCount) {
        return 0;
    }
    if (buffers[slot]) {
        alDeleteBuffers(1, &buffers[slot]);
        buffers[slot] = 0;
    }
    alGetError();
    alGenBuffers(1, &buffers[slot]);
    if (alGetError() != AL_NO_ERROR) {
        buffers[slot] = 0;
        return 0;
    }
    WavSound wav;
    if (!ParseWav(bytes, length, &wav)) {
        return 0;
    }
    alBufferData(buffers[slot], wav.format, wav.data, wav.length, wav.rate);
    return alGetError() == AL_NO_ERROR;
}

int SoundSystem::ResolveSource(int source) {
    if (source == -1) {
        source = nextSource;
        nextSource = (nextSource + 1) % kSourceCount;
    }
    if (source < 0 || source >= kSourceCount) {
        return -1;
    }
    return source;
}

int SoundSystem::Play(int slot, int source) {
    int index = ResolveSource(source);
    if (index < 0 || !sources[index] || !device || slot < 0 || slot >= kSlotCount) {
        return 0;
    }
    SetListenerPosition(0, 0, 0);
    SetListenerOrientation(0, 0, 1, 0, 1, 0);
    unsigned int name = sources[index];
    alSourceStop(name);
    alSource3f(name, AL_POSITION, 0, 0, 0);
    alSourcei(name, AL_BUFFER, buffers[slot]);
    alSourcef(name, AL_PITCH, 1.0f);
    alSourcef(name, AL_GAIN, 1.0f);
    alSourcei(name, AL_LOOPING, AL_FALSE);
    if (alGetError() != AL_NO_ERROR) {
        return 0;
    }
    alSourcePlay(name);
    return 1;
}

int SoundSystem::PlayAt(int slot, int source, const float listenerPosition[3], const float listenerAngles[3],
                        const float sourcePosition[3], float gain, float pitch, bool loop) {
    int index = ResolveSource(source);
    if (index < 0 || !sources[index] || !device || slot < 0 || slot >= kSlotCount || !listenerPosition ||
        !listenerAngles || !sourcePosition) {
        return 0;
    }
    PlaceListener(listenerPosition, listenerAngles);
    unsigned int name = sources[index];
    alSourceStop(name);
    alSource3f(name, AL_POSITION, sourcePosition[0] * kWorldScale, sourcePosition[1] * kWorldScale,
               sourcePosition[2] * kWorldScale);
    alSourcei(name, AL_BUFFER, buffers[slot]);
    alSourcef(name, AL_PITCH, pitch < 0.05f ? 0.05f : pitch);
    alSourcef(name, AL_GAIN, gain);
    alSourcei(name, AL_LOOPING, loop ? AL_TRUE : AL_FALSE);
    if (alGetError() != AL_NO_ERROR) {
        return 0;
    }
    alSourcePlay(name);
    return 1;
}

void SoundSystem::OrientListener(const float angles[3]) {
    // Only the yaw turns the listener: the camera's pitch and roll would tip
    // the stereo image in ways that sound wrong for a platform game.
    float yaw = angles[1] * 3.14159265358979f / 180.0f;
    float atX = sinf(yaw);
    float atZ = cosf(yaw);
    float len = sqrtf(atX * atX + atZ * atZ);
    SetListenerOrientation(atX / len, 0, atZ / len, 0, 1, 0);
}

void SoundSystem::PlaceListener(const float position[3], const float angles[3]) {
    if (!device || !position || !angles) {
        return;
    }
    SetListenerPosition(position[0] * kWorldScale, position[1] * kWorldScale, position[2] * kWorldScale);
    OrientListener(angles);
}

void SoundSystem::SetListenerPosition(float x, float y, float z) {
    if (device) {
        alListener3f(AL_POSITION, x, y, z);
    }
}

void SoundSystem::SetListenerOrientation(float atX, float atY, float atZ, float upX, float upY, float upZ) {
    if (device) {
        float orientation[6] = {atX, atY, atZ, upX, upY, upZ};
        alListenerfv(AL_ORIENTATION, orientation);
    }
}

void SoundSystem::ResetSource(int source) {
    if (device && source >= 0 && source < kSourceCount && sources[source]) {
        alSource3f(sources[source], AL_POSITION, 0, 0, 0);
        alSource3f(sources[source], AL_VELOCITY, 0, 0, 0);
    }
}

void SoundSystem::StopSource(int source) {
    int index = ResolveSource(source);
    if (device && index >= 0 && sources[index]) {
        alSourceStop(sources[index]);
    }
}

void SoundSystem::SetSourcePosition(int source, const float position[3]) {
    if (device && position && source >= 0 && source < kSourceCount && sources[source]) {
        alSource3f(sources[source], AL_POSITION, position[0] * kWorldScale, position[1] * kWorldScale,
                   position[2] * kWorldScale);
    }
}

void SoundSystem::SetSourcePitch(int source, float pitch) {
    if (device && source >= 0 && source < kSourceCount && sources[source]) {
        alSourcef(sources[source], AL_PITCH, pitch < 0.05f ? 0.05f : pitch);
    }
}

void SoundSystem::SetSourceGain(int source, float gain) {
    if (device && source >= 0 && source < kSourceCount && sources[source]) {
        alSourcef(sources[source], AL_GAIN, gain);
    }
}

static const char* AlString(const void* device, ALenum which) {
    const char* text = device ? alGetString(which) : nullptr;
    return text ? text : "";
}

const char* SoundSystem::VersionString() const {
    return AlString(device, AL_VERSION);
}

const char* SoundSystem::RendererString() const {
    return AlString(device, AL_RENDERER);
}

const char* SoundSystem::VendorString() const {
    return AlString(device, AL_VENDOR);
}

const char* SoundSystem::ExtensionsString() const {
    return AlString(device, AL_EXTENSIONS);
}
