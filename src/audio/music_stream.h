// One piece of streamed music: an Ogg Vorbis file decoded a quarter of a
// mebibyte at a time into two OpenAL buffers that take turns on one source.
// Refill, called every tick, decodes into whichever buffer the source has
// finished with and queues it again, so at most two fills are ever waiting.
// All streams decode through one fixed scratch area: there is one thread and
// a fill is finished before the next begins.
//
// The source plays relative to the listener with no roll-off: music is not
// positional. It uses the OpenAL context the sound system opened.
#pragma once

#include "audio/ogg_decoder.h"

class ResourceManager;

class MusicStream {
public:
    static const unsigned int kFillBytes = 262144;  // per buffer fill

    OggDecoder decoder;    // the file's bytes and the vorbisfile state
    unsigned int playing;  // 1 from Play until Stop
    unsigned int alBuffers[2];
    unsigned int alSource;
    unsigned int format;  // AL_FORMAT_MONO16 or AL_FORMAT_STEREO16

    // Generates the two buffers and the source (names stay 0 without an OpenAL context).
    MusicStream();
    // Closes the stream and deletes the source and buffers.
    ~MusicStream();

    // Loads the named Ogg file through resources; 1 on success.
    int Open(ResourceManager* resources, const char* name);
    // Forgets the file, stopping playback.
    void Close();
    // Stops the source and takes back every queued buffer.
    void Stop();
    // Starts playing from startSeconds with two fresh fills; -1.0 resumes the source as it is. 1 on success.
    int Play(double startSeconds);
    // Refills and requeues every buffer the source has finished; 1 when at least one was refilled.
    int Refill();
    // Decodes one fill into alBuffer; 1 on success.
    int FillBuffer(unsigned int alBuffer);
    // 1 between Play and Stop.
    unsigned int IsPlaying() const { return playing; }
    // Whether OpenAL reports the source as playing right now.
    bool SourcePlaying() const;
    // Source gain, raised to 0 when negative.
    void SetGain(float gain);
    // Source pitch, raised to 0.01 when below.
    void SetPitch(float pitch);
};
