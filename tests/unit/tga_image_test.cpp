// TGA decoding: both image types and depths against hand-laid files, the
// header templates, and the bounds of run-length data.
#include "resources/tga_image.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

typedef std::vector<unsigned char> Bytes;

Bytes Header(unsigned char type, unsigned int width, unsigned int height, unsigned char bits) {
    Bytes h(18, 0);
    h[2] = type;
    h[12] = width & 0xFF;
    h[13] = width >> 8;
    h[14] = height & 0xFF;
    h[15] = height >> 8;
    h[16] = bits;
    return h;
}

Bytes Decoded(const Bytes& file, unsigned int* bits = nullptr) {
    TgaImage image;
    if (!TgaDecode(file.data(), file.size(), &image)) {
        return Bytes();
    }
    Bytes pixels(image.pixels, image.pixels + image.width * image.height * image.bits / 8);
    if (bits) {
        *bits = image.bits;
    }
    TgaFree(&image);
    return pixels;
}

bool Decodes(const Bytes& file) {
    TgaImage image;
    int ok = TgaDecode(file.data(), file.size(), &image);
    TgaFree(&image);
    return ok == 1;
}

}  // namespace

TEST(TgaDecode, UncompressedPixelsSwapToRgbInFileOrder) {
    Bytes file = Header(2, 2, 1, 24);
    file.insert(file.end(), {1, 2, 3, 4, 5, 6});  // BGR BGR
    EXPECT_EQ(Decoded(file), Bytes({3, 2, 1, 6, 5, 4}));

    Bytes alpha = Header(2, 1, 2, 32);
    alpha[17] = 0x28;  // descriptor (top-left origin, 8 alpha bits) is not consulted
    alpha.insert(alpha.end(), {10, 20, 30, 40, 50, 60, 70, 80});
    unsigned int bits = 0;
    EXPECT_EQ(Decoded(alpha, &bits), Bytes({30, 20, 10, 40, 70, 60, 50, 80}));
    EXPECT_EQ(bits, 32u);

    // One byte short of the pixel data.
    file.pop_back();
    EXPECT_FALSE(Decodes(file));
}

TEST(TgaDecode, RunLengthPacketsRawAndRepeated) {
    Bytes file = Header(10, 5, 1, 24);
    file.insert(file.end(), {0x82, 1, 2, 3,             // run of 3
                             0x01, 4, 5, 6, 7, 8, 9});  // 2 raw
    EXPECT_EQ(Decoded(file), Bytes({3, 2, 1, 3, 2, 1, 3, 2, 1, 6, 5, 4, 9, 8, 7}));
}

// Run-length data is checked against the image's size and the bytes there are: a run or raw
// packet one pixel too long, data ending inside a pixel, before a packet header or inside a raw
// packet, and a huge image promised by a few bytes (refused before anything is allocated).
TEST(TgaDecode, RunLengthBoundsAreChecked) {
    struct Case {
        unsigned int width, height, bits;
        Bytes data;
        bool good;
    } cases[] = {{4, 1, 32, {0x83, 1, 2, 3, 4}, true},          {3, 1, 32, {0x83, 1, 2, 3, 4}, false},
                 {1, 1, 24, {0x01, 1, 2, 3, 4, 5, 6}, false},    {4, 1, 32, {0x83, 1, 2, 3}, false},
                 {2, 1, 24, {0x80, 1, 2, 3}, false},             {2, 2, 24, {0x83, 1, 2, 3}, true},             {3, 1, 24, {0x02, 1, 2, 3, 4, 5, 6, 7, 8}, false},
                 {65535, 65535, 32, {0xFF, 1, 2, 3, 4}, false}};
    for (const Case& c : cases) {
        Bytes file = Header(10, c.width, c.height, static_cast<unsigned char>(c.bits));
        file.insert(file.end(), c.data.begin(), c.data.end());
        EXPECT_EQ(Decodes(file), c.good) << c.width << "x" << c.height << ", " << c.data.size() << " bytes";
    }
}

TEST(TgaDecode, OnlyTheTwoHeaderTemplatesAndUsableSizesPass) {
    Bytes good = Header(2, 1, 1, 24);
    good.insert(good.end(), {1, 2, 3});
    ASSERT_TRUE(Decodes(good));
    for (int at = 0; at < 12; at++) {
        Bytes bad = good;
        bad[at] ^= 1;  // image ID length, colour map, type, colour-map spec, origin
        EXPECT_FALSE(Decodes(bad)) << "byte " << at;
    }
    Bytes eightBit = Header(2, 1, 1, 8);
    eightBit.insert(eightBit.end(), {1, 2, 3, 4});
    EXPECT_FALSE(Decodes(eightBit));
    Bytes zeroWidth = Header(2, 0, 1, 24);
    EXPECT_FALSE(Decodes(zeroWidth));
    EXPECT_FALSE(Decodes(Bytes(good.begin(), good.begin() + 11)));
    EXPECT_FALSE(Decodes(Bytes(good.begin(), good.begin() + 17)));
}
