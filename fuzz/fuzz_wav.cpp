// Fuzz target: the WAV reader. Whatever it accepts must describe samples that
// lie wholly inside the input, in one of the four formats it knows.
#include <AL/al.h>

#include <cstdlib>
#include <vector>

#include "audio/wav_file.h"
#include "fuzz_seeds.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    WavSound wav;
    if (!ParseWav(data, static_cast<unsigned int>(size), &wav)) {
        return 0;
    }
    if (wav.data < data || wav.data + wav.length > data + size ||
        (wav.format != AL_FORMAT_MONO8 && wav.format != AL_FORMAT_MONO16 && wav.format != AL_FORMAT_STEREO8 &&
         wav.format != AL_FORMAT_STEREO16)) {
        abort();
    }
    volatile unsigned int sum = 0;
    for (unsigned int i = 0; i < wav.length; i++) {
        sum += wav.data[i];  // touches every byte, so the sanitizer sees a bad range
    }
    return 0;
}

// Appends a little-endian chunk to image.
static void AddChunk(std::vector<unsigned char>& image, const char* id,
                     const std::vector<unsigned char>& body) {
    image.insert(image.end(), id, id + 4);
    unsigned int n = static_cast<unsigned int>(body.size());
    for (int i = 0; i < 4; i++) {
        image.push_back((n >> (8 * i)) & 0xFF);
    }
    image.insert(image.end(), body.begin(), body.end());
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    unsigned char samples[96];
    for (int i = 0; i < 96; i++) {
        samples[i] = static_cast<unsigned char>(i * 37);
    }
    for (int channels = 1; channels <= 2; channels++) {
        for (int bits = 8; bits <= 16; bits += 8) {
            std::vector<unsigned char> image;
            WriteWav(channels, bits, 8000 * channels, samples, sizeof(samples), image);
            AddSeed(seeds, image.data(), image.size());
        }
    }
    // A file with extra chunks around the fmt and data chunks.
    std::vector<unsigned char> plain;
    WriteWav(1, 16, 22050, samples, 32, plain);
    std::vector<unsigned char> image(plain.begin(), plain.begin() + 12);
    AddChunk(image, "LIST", std::vector<unsigned char>(10, 'i'));
    image.insert(image.end(), plain.begin() + 12, plain.end());
    AddChunk(image, "fact", std::vector<unsigned char>(4, 0));
    AddSeed(seeds, image.data(), image.size());
}
