// Fuzz target: opening and decoding Ogg Vorbis from memory, the way music is
// streamed. Fills loop at the end of the stream, so a few of them also cover
// the seek back to the start.
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "audio/ogg_decoder.h"
#include "audio/ogg_encoder.h"
#include "fuzz_seeds.h"

// Every Ogg page carries a CRC, so almost any mutation only shows that bad
// pages are dropped. Each input therefore also runs a second time with its
// checksums put right, so that mutated bytes reach the Vorbis decoder itself.
static void Exercise(const std::vector<unsigned char>& bytes) {
    static unsigned char fill[65536];
    OggDecoder decoder;
    if (!decoder.Open(bytes.data(), static_cast<unsigned int>(bytes.size()))) {
        return;
    }
    for (int i = 0; i < 3; i++) {
        if (!decoder.Decode(fill, sizeof(fill))) {
            break;
        }
    }
    decoder.SeekTime(0.25);
    decoder.Decode(fill, 4096);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<unsigned char> bytes(data, data + size);
    Exercise(bytes);
    std::vector<unsigned char> fixed(bytes);
    FixOggChecksums(fixed.data(), static_cast<unsigned int>(fixed.size()));
    if (fixed != bytes) {
        Exercise(fixed);
    }
    return 0;
}

// A short tone, so that mutations stay cheap to decode.
static void AddTone(FuzzSeedList& seeds, unsigned int frames, int channels, long rate) {
    std::vector<short> pcm(frames * channels);
    for (unsigned int i = 0; i < frames; i++) {
        for (int c = 0; c < channels; c++) {
            pcm[i * channels + c] = static_cast<short>(9000 * sin(i * (0.05 + 0.03 * c)));
        }
    }
    std::vector<unsigned char> ogg;
    if (EncodeOggVorbis(pcm.data(), frames, channels, rate, 0.1f, ogg)) {
        AddSeed(seeds, ogg.data(), ogg.size());
    }
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    AddTone(seeds, 24000, 1, 8000);
    AddTone(seeds, 22050, 2, 22050);
    AddTone(seeds, 0, 1, 11025);  // headers and no samples
}
