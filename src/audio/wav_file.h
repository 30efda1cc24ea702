// The WAV images the sound system plays: a RIFF "WAVE" form holding one
// 16-byte "fmt " chunk and a "data" chunk of 8- or 16-bit PCM, mono or stereo.
// The reader is deliberately narrow: it accepts exactly the plain files our
// content tools write and refuses extended headers, big-endian RIFX and sample
// sizes OpenAL 1.x cannot take, instead of guessing. Chunks it does not know
// (LIST, fact, ...) are skipped by their declared size. The writer beside it
// makes such files for the content tools, the tests and the fuzz seeds.
#pragma once

#include <vector>

// What ParseWav finds: the OpenAL sample format and the samples inside the image.
struct WavSound {
    int format;                 // AL_FORMAT_MONO8, _MONO16, _STEREO8 or _STEREO16
    const unsigned char* data;  // points into the parsed bytes, not a copy
    unsigned int length;        // bytes of sample data
    unsigned int rate;          // samples per second
};

// Parses a WAV image; 1 and *out filled on success, 0 on any malformed or unsupported input.
int ParseWav(const unsigned char* bytes, unsigned int length, WavSound* out);

// Writes a plain WAV image (44-byte header) of little-endian PCM samples; 0 for channel counts
// other than 1 or 2 or sample sizes other than 8 or 16 bits.
int WriteWav(int channels, int bitsPerSample, unsigned int rate, const void* samples,
             unsigned int sampleBytes, std::vector<unsigned char>& out);
