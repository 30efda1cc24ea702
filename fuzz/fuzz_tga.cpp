// TGA decoding: any bytes decode cleanly or fail; what decodes re-encodes
// (both types) to files that decode to the same pixels.
#include <cstdlib>
#include <cstring>

#include "fuzz_seeds.h"
#include "resources/tga_image.h"

static void CheckReencode(const TgaImage& image, int runLength) {
    unsigned int length = 0;
    unsigned char* file = TgaEncode(image.pixels, image.width, image.height, image.bits, runLength, &length);
    if (!file) {
        abort();
    }
    TgaImage again;
    if (!TgaDecode(file, length, &again) ||
        memcmp(again.pixels, image.pixels, image.width * image.height * (image.bits / 8)) != 0) {
        abort();
    }
    TgaFree(&again);
    free(file);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    TgaImage image;
    if (!TgaDecode(data, static_cast<unsigned int>(size), &image)) {
        return 0;
    }
    if (static_cast<unsigned long long>(image.width) * image.height <= 4096) {
        CheckReencode(image, 0);
        CheckReencode(image, 1);
    }
    TgaFree(&image);
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    unsigned char pixels[8 * 4 * 4];
    for (unsigned int i = 0; i < sizeof(pixels); i++) {
        pixels[i] = (i / 12) % 3 ? 200 : static_cast<unsigned char>(i * 37);
    }
    for (unsigned int bits : {24u, 32u}) {
        for (int runLength = 0; runLength < 2; runLength++) {
            unsigned int length;
            unsigned char* file = TgaEncode(pixels, 8, 4, bits, runLength, &length);
            AddSeed(seeds, file, length);
            free(file);
        }
    }
}
