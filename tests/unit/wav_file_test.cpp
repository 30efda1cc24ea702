// The WAV reader: which images it accepts and exactly what it finds in them. (The
// formats it maps to OpenAL's are seen through real buffers in the sound system's tests.)
#include "audio/wav_file.h"

#include <AL/al.h>
#include <gtest/gtest.h>

#include "audio_test_support.h"

using test::Chunk;
using test::FmtBody;
using test::Riff;

namespace {

std::vector<unsigned char> Bytes(size_t count, unsigned char first = 1) {
    std::vector<unsigned char> b(count);
    for (size_t i = 0; i < count; i++) {
        b[i] = static_cast<unsigned char>(first + i);
    }
    return b;
}

int Parse(const std::vector<unsigned char>& image, WavSound* out) {
    return ParseWav(image.data(), static_cast<unsigned int>(image.size()), out);
}

}  // namespace

TEST(WavFile, UnknownChunksAreSkippedAndChunkOrderIsFree) {
    auto fmt = Chunk("fmt ", FmtBody(2, 11025, 4, 16));
    auto data = Chunk("data", Bytes(12, 0x40));
    WavSound wav;
    // The RIFF size field is not trusted for anything.
    auto image = Riff("RIFF", "WAVE", {Chunk("LIST", Bytes(26, 'a')), fmt, Chunk("fact", Bytes(4)), data});
    image[4] = image[5] = image[6] = image[7] = 0xFF;
    ASSERT_TRUE(Parse(image, &wav));
    EXPECT_EQ(wav.format, AL_FORMAT_STEREO16);
    EXPECT_EQ(wav.rate, 11025u);
    EXPECT_EQ(wav.length, 12u);
    EXPECT_EQ(wav.data, image.data() + image.size() - 12);
    // "data" before "fmt " works as well, and a later "data" replaces an earlier one.
    auto reordered = Riff("RIFF", "WAVE", {data, fmt, Chunk("data", Bytes(3, 9))});
    ASSERT_TRUE(Parse(reordered, &wav));
    EXPECT_EQ(wav.length, 3u);
    EXPECT_EQ(wav.data[0], 9);
}

TEST(WavFile, WhatTheSoundSystemCannotPlayIsRefused) {
    auto fmt = Chunk("fmt ", FmtBody(1, 8000, 2, 16));
    auto data = Chunk("data", Bytes(12));
    auto withFmt = [&](int channels, int align, int bits, size_t length = 16) {
        return Riff("RIFF", "WAVE", {Chunk("fmt ", FmtBody(channels, 8000, align, bits, length)), data});
    };
    auto odd = Riff("RIFF", "WAVE", {fmt, Chunk("data", Bytes(4))});
    odd.push_back(0);  // fewer than 8 bytes left where a chunk header should be
    const std::pair<std::vector<unsigned char>, const char*> cases[] = {
        {Riff("RIFX", "WAVE", {fmt, data}), "big-endian"},
        {Riff("RIFF", "AVI ", {fmt, data}), "not a wave"},
        {{'R', 'I', 'F', 'F', 0, 0, 0, 0, 'W', 'A', 'V'}, "short"},
        {withFmt(1, 2, 16, 18), "fmt of 18 bytes"},
        {withFmt(1, 2, 16, 14), "fmt of 14 bytes"},
        {Riff("RIFF", "WAVE", {data, Chunk("fmt ", FmtBody(1, 8000, 2, 16, 10), 16)}), "fmt cut short"},
        {withFmt(1, 3, 24), "24-bit"},
        {withFmt(1, 4, 32), "32-bit float"},
        {withFmt(6, 12, 16), "six channels"},
        {withFmt(0, 0, 16), "no channels"},
        {Riff("RIFF", "WAVE", {fmt}), "no data"},
        {Riff("RIFF", "WAVE", {data}), "no fmt"},
        {Riff("RIFF", "WAVE", {fmt, Chunk("data", Bytes(10), 11)}), "data past the end"},
        {Riff("RIFF", "WAVE", {fmt, Chunk("data", Bytes(10), 0xFFFFFFF8u)}), "data size wraps"},
        {Riff("RIFF", "WAVE", {fmt, Chunk("LIST", Bytes(2), 0xFFFFFFFEu), data}), "chunk swallows data"},
        {odd, "odd pad byte"},
    };
    WavSound wav;
    for (const auto& c : cases) {
        EXPECT_FALSE(Parse(c.first, &wav)) << c.second;
    }
    EXPECT_FALSE(ParseWav(nullptr, 100, &wav));
    auto good = Riff("RIFF", "WAVE", {Chunk("LIST", Bytes(5)), fmt, Chunk("data", Bytes(20))});
    ASSERT_TRUE(Parse(good, &wav));
    for (size_t cut = 0; cut < good.size(); cut++) {
        EXPECT_FALSE(Parse(std::vector<unsigned char>(good.begin(), good.begin() + cut), &wav)) << cut;
    }
}
