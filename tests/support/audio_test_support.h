// Inputs for the audio tests, made in code: sine tones as PCM, WAV images
// built chunk by chunk, and resource directories to load them from; and the
// guards that hand the OpenAL state a test found back to the next one.
#pragma once

#include <AL/alc.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <new>
#include <string>
#include <vector>

#include "audio/sound_system.h"
#include "test_support.h"

namespace test {

// Makes the OpenAL context that was current when it was made current again when it goes: a
// sound system of the test's own clears the current context as it closes, which would leave
// an open g_sound unable to play.
class KeepCurrentContext {
public:
    KeepCurrentContext() : context(alcGetCurrentContext()) {}
    ~KeepCurrentContext() { alcMakeContextCurrent(context); }

private:
    ALCcontext* context;
};

// Gives the test a closed g_sound of its own and puts back the one it found when it goes,
// with that one's device, context and loaded slots.
class FreshGlobalSound {
public:
    FreshGlobalSound() {
        memcpy(saved, static_cast<void*>(&g_sound), sizeof(saved));
        new (&g_sound) SoundSystem();
    }
    ~FreshGlobalSound() {
        g_sound.~SoundSystem();
        memcpy(static_cast<void*>(&g_sound), saved, sizeof(saved));
    }

private:
    KeepCurrentContext context;  // restored after the fresh g_sound has closed
    alignas(SoundSystem) unsigned char saved[sizeof(SoundSystem)];
};

// Interleaved 16-bit samples of a sine tone, the same in every channel.
inline std::vector<short> SineSamples(unsigned int frames, int channels, double rate, double frequency,
                                      double amplitude = 12000.0) {
    std::vector<short> samples(frames * channels);
    for (unsigned int i = 0; i < frames; i++) {
        short v = static_cast<short>(lround(amplitude * sin(2.0 * M_PI * frequency * i / rate)));
        for (int c = 0; c < channels; c++) {
            samples[i * channels + c] = v;
        }
    }
    return samples;
}

// One RIFF chunk: id, 32-bit little-endian size and body (no padding).
inline std::vector<unsigned char> Chunk(const char* id, const std::vector<unsigned char>& body,
                                        unsigned int declaredSize = 0xFFFFFFFFu) {
    unsigned int size = declaredSize == 0xFFFFFFFFu ? static_cast<unsigned int>(body.size()) : declaredSize;
    std::vector<unsigned char> out(id, id + 4);
    for (int i = 0; i < 4; i++) {
        out.push_back((size >> (8 * i)) & 0xFF);
    }
    out.insert(out.end(), body.begin(), body.end());
    return out;
}

// A "fmt " body of the given length: PCM tag, channels, rate, block align, bits; extra bytes zero.
inline std::vector<unsigned char> FmtBody(int channels, unsigned int rate, int blockAlign, int bits,
                                          size_t length = 16) {
    std::vector<unsigned char> b(16 + length, 0);
    const unsigned int fields[6][2] = {{1, 2}, {static_cast<unsigned>(channels), 2}, {rate, 4},
                                       {rate * blockAlign, 4}, {static_cast<unsigned>(blockAlign), 2},
                                       {static_cast<unsigned>(bits), 2}};
    size_t at = 0;
    for (const auto& f : fields) {
        for (unsigned int i = 0; i < f[1]; i++, at++) {
            b[at] = static_cast<unsigned char>(f[0] >> (8 * i));
        }
    }
    b.resize(length);
    return b;
}

// A RIFF image: "RIFF", size, form type, then the chunks as given.
inline std::vector<unsigned char> Riff(const char* magic, const char* form,
                                       const std::vector<std::vector<unsigned char>>& chunks) {
    std::vector<unsigned char> body(form, form + 4);
    for (const auto& c : chunks) {
        body.insert(body.end(), c.begin(), c.end());
    }
    std::vector<unsigned char> out = Chunk(magic, body);
    return out;
}

// Writes bytes as the loose file of a resource name (backslashes become folders) under dataDir.
inline bool WriteResource(const std::string& dataDir, const std::string& name,
                          const std::vector<unsigned char>& bytes) {
    std::string relative = name;
    for (char& c : relative) {
        if (c == '\\') {
            c = '/';
        }
    }
    std::filesystem::path path = std::filesystem::path(dataDir) / relative;
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    return WriteFile(path.string(), bytes.data(), bytes.size());
}

}  // namespace test
