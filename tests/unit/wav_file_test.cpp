// The WAV reader: which images it accepts and exactly what it finds in them.
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

TEST(WavFile, WriterOutputParsesInEveryFormat) {
    struct Case {
        int channels, bits, format;
    } cases[] = {{1, 8, AL_FORMAT_MONO8},
                 {1, 16, AL_FORMAT_MONO16},
                 {2, 8, AL_FORMAT_STEREO8},
                 {2, 16, AL_FORMAT_STEREO16}};
    std::vector<unsigned char> samples = Bytes(64);
    for (const Case& c : cases) {
        std::vector<unsigned char> image;
        ASSERT_TRUE(WriteWav(c.channels, c.bits, 22050, samples.data(), 64, image));
        ASSERT_EQ(image.size(), 44u + 64u);
        WavSound wav;
        ASSERT_TRUE(Parse(image, &wav)) << c.channels << "x" << c.bits;
        EXPECT_EQ(wav.format, c.format);
        EXPECT_EQ(wav.rate, 22050u);
        EXPECT_EQ(wav.length, 64u);
        EXPECT_EQ(wav.data, image.data() + 44);  // no copy: the samples inside the image
    }
    std::vector<unsigned char> image;
    EXPECT_FALSE(WriteWav(3, 16, 8000, samples.data(), 60, image));
    EXPECT_FALSE(WriteWav(1, 24, 8000, samples.data(), 60, image));
}

TEST(WavFile, WriterProducesTheCanonicalHeaderByteForByte) {
    short samples[2] = {0x1234, -2};
    std::vector<unsigned char> image;
    ASSERT_TRUE(WriteWav(2, 16, 44100, samples, 4, image));
    const unsigned char expected[48] = {'R',  'I',  'F', 'F', 40,   0,    0, 0, 'W',  'A',  'V',  'E',
                                        'f',  'm',  't', ' ', 16,   0,    0, 0, 1,    0,    2,    0,
                                        0x44, 0xAC, 0,   0,   0x10, 0xB1, 2, 0, 4,    0,    16,   0,
                                        'd',  'a',  't', 'a', 4,    0,    0, 0, 0x34, 0x12, 0xFE, 0xFF};
    ASSERT_EQ(image.size(), sizeof(expected));
    EXPECT_EQ(0, memcmp(image.data(), expected, sizeof(expected)));
}

TEST(WavFile, OnlyLittleEndianRiffWaveFormsAreAccepted) {
    auto fmt = Chunk("fmt ", FmtBody(1, 8000, 2, 16));
    auto data = Chunk("data", Bytes(10));
    WavSound wav;
    EXPECT_TRUE(Parse(Riff("RIFF", "WAVE", {fmt, data}), &wav));
    EXPECT_FALSE(Parse(Riff("RIFX", "WAVE", {fmt, data}), &wav));
    EXPECT_FALSE(Parse(Riff("RIFF", "AVI ", {fmt, data}), &wav));
    std::vector<unsigned char> shortImage = {'R', 'I', 'F', 'F', 0, 0, 0, 0, 'W', 'A', 'V'};
    EXPECT_FALSE(Parse(shortImage, &wav));
    EXPECT_FALSE(ParseWav(nullptr, 100, &wav));
    // The RIFF size field is not trusted for anything.
    auto image = Riff("RIFF", "WAVE", {fmt, data});
    image[4] = image[5] = image[6] = image[7] = 0xFF;
    EXPECT_TRUE(Parse(image, &wav));
}

TEST(WavFile, FmtChunkMustBeExactlySixteenBytes) {
    auto data = Chunk("data", Bytes(8));
    WavSound wav;
    for (size_t size : {18u, 40u, 14u}) {
        auto fmt = Chunk("fmt ", FmtBody(1, 8000, 2, 16, size));
        EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {fmt, data}), &wav)) << size;
    }
    // A 16-byte "fmt " cut short by the end of the file.
    auto truncated = Riff("RIFF", "WAVE", {data, Chunk("fmt ", FmtBody(1, 8000, 2, 16, 10), 16)});
    EXPECT_FALSE(Parse(truncated, &wav));
}

TEST(WavFile, UnknownChunksAreSkippedAndChunkOrderIsFree) {
    auto fmt = Chunk("fmt ", FmtBody(2, 11025, 4, 16));
    auto list = Chunk("LIST", Bytes(26, 'a'));
    auto fact = Chunk("fact", Bytes(4));
    auto data = Chunk("data", Bytes(12, 0x40));
    WavSound wav;
    auto image = Riff("RIFF", "WAVE", {list, fmt, fact, data});
    ASSERT_TRUE(Parse(image, &wav));
    EXPECT_EQ(wav.format, AL_FORMAT_STEREO16);
    EXPECT_EQ(wav.rate, 11025u);
    EXPECT_EQ(wav.length, 12u);
    EXPECT_EQ(wav.data[0], 0x40);
    EXPECT_EQ(wav.data, image.data() + image.size() - 12);
    // "data" before "fmt " works as well.
    ASSERT_TRUE(Parse(Riff("RIFF", "WAVE", {data, fmt}), &wav));
    EXPECT_EQ(wav.length, 12u);
}

TEST(WavFile, ALaterDataChunkReplacesAnEarlierOne) {
    auto image =
        Riff("RIFF", "WAVE",
             {Chunk("fmt ", FmtBody(1, 8000, 1, 8)), Chunk("data", Bytes(6, 1)), Chunk("data", Bytes(3, 9))});
    WavSound wav;
    ASSERT_TRUE(Parse(image, &wav));
    EXPECT_EQ(wav.format, AL_FORMAT_MONO8);
    EXPECT_EQ(wav.length, 3u);
    EXPECT_EQ(wav.data[0], 9);
}

TEST(WavFile, UnsupportedSampleLayoutsAreRefused) {
    auto data = Chunk("data", Bytes(12));
    WavSound wav;
    EXPECT_FALSE(
        Parse(Riff("RIFF", "WAVE", {Chunk("fmt ", FmtBody(1, 8000, 3, 24)), data}), &wav));  // 24-bit
    EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {Chunk("fmt ", FmtBody(2, 8000, 6, 24)), data}), &wav));
    EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {Chunk("fmt ", FmtBody(1, 8000, 4, 32)), data}), &wav));  // float
    EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {Chunk("fmt ", FmtBody(6, 8000, 12, 16)), data}), &wav));
    EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {Chunk("fmt ", FmtBody(0, 8000, 0, 16)), data}), &wav));
}

TEST(WavFile, MissingOrOverlongChunksFail) {
    auto fmt = Chunk("fmt ", FmtBody(1, 8000, 2, 16));
    WavSound wav;
    EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {fmt}), &wav));                      // no data
    EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {Chunk("data", Bytes(4))}), &wav));  // no fmt
    EXPECT_FALSE(
        Parse(Riff("RIFF", "WAVE", {fmt, Chunk("data", Bytes(10), 11)}), &wav));  // data past the end
    EXPECT_FALSE(Parse(Riff("RIFF", "WAVE", {fmt, Chunk("data", Bytes(10), 0xFFFFFFF8u)}), &wav));
    // A huge chunk before "data" swallows it.
    EXPECT_FALSE(
        Parse(Riff("RIFF", "WAVE", {fmt, Chunk("LIST", Bytes(2), 0xFFFFFFFFu - 1), Chunk("data", Bytes(4))}),
              &wav));
    // Fewer than 8 bytes left where a chunk header should be (an odd pad byte, say).
    auto image = Riff("RIFF", "WAVE", {fmt, Chunk("data", Bytes(4))});
    image.push_back(0);
    EXPECT_FALSE(Parse(image, &wav));
    // Every truncation of a good image fails.
    auto good = Riff("RIFF", "WAVE", {Chunk("LIST", Bytes(5)), fmt, Chunk("data", Bytes(20))});
    ASSERT_TRUE(Parse(good, &wav));
    for (size_t cut = 0; cut < good.size(); cut++) {
        std::vector<unsigned char> part(good.begin(), good.begin() + cut);
        EXPECT_FALSE(Parse(part, &wav)) << cut;
    }
}
