#include "audio/music_stream.h"

#include <AL/al.h>
#include <AL/alc.h>

#include "resources/resource_manager.h"

// The one decode area every fill goes through.
static unsigned char s_fillScratch[MusicStream::kFillBytes];

MusicStream::MusicStream() : playing(0), alSource(0), format(AL_FORMAT_STEREO16) {
    alBuffers[0] = alBuffers[1] = 0;
    if (!alcGetCurrentContext()) {
        return;
    }
    alGenBuffers(2, alBuffers);
    alGenSources(1, &alSource);
    alSource3f(alSource, AL_POSITION, 0, 0, 0);
    alSource3f(alSource, AL_VELOCITY, 0, 0, 0);
    alSource3f(alSource, AL_DIRECTION, 0, 0, 0);
    alSourcef(alSource, AL_ROLLOFF_FACTOR, 0);
    alSourcei(alSource, AL_SOURCE_RELATIVE, AL_TRUE);
    alSourcef(alSource, AL_PITCH, 1.0f);
}

MusicStream::~MusicStream() {
    Close();
    if (alSource) {
        alSourceStop(alSource);
        alSourcei(alSource, AL_BUFFER, 0);
        alDeleteSources(1, &alSource);
    }
    if (alBuffers[0] || alBuffers[1]) {
        alDeleteBuffers(2, alBuffers);
    }
}

int MusicStream::Open(ResourceManager* resources, const char* name) {
    if (!resources || !name) {
        return 0;
    }
    Close();
    unsigned char* bytes = resources->Open(name);
    if (!bytes) {
        return 0;
    }
    int opened = decoder.Open(bytes, resources->bufferSize);
    resources->Release();  // the decoder keeps its own copy
    if (!opened) {
        return 0;
    }
    format = decoder.Channels() == 1 ? AL_FORMAT_MONO16 : AL_FORMAT_STEREO16;
    return 1;
}

void MusicStream::Close() {
    if (!decoder.data) {
        return;
    }
    Stop();
    decoder.Close();
}

void MusicStream::Stop() {
    playing = 0;
    if (!alSource) {
        return;
    }
    alSourceStop(alSource);
    ALint queued = 0;
    alGetSourcei(alSource, AL_BUFFERS_QUEUED, &queued);
    for (ALint i = 0; i < queued; i++) {
        ALuint buffer;
        alSourceUnqueueBuffers(alSource, 1, &buffer);
    }
}

int MusicStream::FillBuffer(unsigned int alBuffer) {
    if (!decoder.data || !decoder.Decode(s_fillScratch, kFillBytes)) {
        return 0;
    }
    alGetError();
    alBufferData(alBuffer, format, s_fillScratch, kFillBytes, static_cast<ALsizei>(decoder.Rate()));
    return alGetError() == AL_NO_ERROR;
}

int MusicStream::Play(double startSeconds) {
    if (!decoder.data || !alSource) {
        return 0;
    }
    if (startSeconds == -1.0) {
        alSourcePlay(alSource);
        return 1;
    }
    Stop();
    if (!decoder.SeekTime(startSeconds) || !FillBuffer(alBuffers[0]) || !FillBuffer(alBuffers[1])) {
        return 0;
    }
    alSourceQueueBuffers(alSource, 2, alBuffers);
    alSourcePlay(alSource);
    playing = 1;
    return 1;
}

int MusicStream::Refill() {
    if (!decoder.data || !alSource) {
        return 0;
    }
    ALint processed = 0;
    alGetSourcei(alSource, AL_BUFFERS_PROCESSED, &processed);
    if (processed <= 0) {
        return 0;
    }
    for (ALint i = 0; i < processed; i++) {
        ALuint buffer = 0;
        alSourceUnqueueBuffers(alSource, 1, &buffer);
        if (!FillBuffer(buffer)) {
            return 0;
        }
        alSourceQueueBuffers(alSource, 1, &buffer);
    }
    return 1;
}

bool MusicStream::SourcePlaying() const {
    if (!alSource) {
        return false;
    }
    ALint state = 0;
    alGetSourcei(alSource, AL_SOURCE_STATE, &state);
    return state == AL_PLAYING;
}

void MusicStream::SetGain(float gain) {
    if (alSource) {
        alSourcef(alSource, AL_GAIN, gain < 0 ? 0 : gain);
    }
}

void MusicStream::SetPitch(float pitch) {
    if (alSource) {
        alSourcef(alSource, AL_PITCH, pitch < 0.01f ? 0.01f : pitch);
    }
}
