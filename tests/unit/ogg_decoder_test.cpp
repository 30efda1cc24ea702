// The in-memory Ogg Vorbis decoder: looping fills, the encoder beside it, and
// clean failures on empty, truncated or foreign bytes.
#include "audio/ogg_decoder.h"

#include <gtest/gtest.h>

#include "audio/ogg_encoder.h"
#include "audio_test_support.h"

namespace {

std::vector<unsigned char> EncodeTone(unsigned int frames, int channels, long rate, double frequency) {
    std::vector<short> pcm = test::SineSamples(frames, channels, rate, frequency);
    std::vector<unsigned char> ogg;
    EXPECT_TRUE(EncodeOggVorbis(pcm.data(), frames, channels, rate, 0.4f, ogg));
    return ogg;
}

// Decodes a whole stream once, without looping, through vorbisfile directly.
std::vector<unsigned char> DecodeOnce(OggDecoder& decoder) {
    std::vector<unsigned char> all;
    char chunk[4096];
    int bitstream = 0;
    long got;
    while ((got = ov_read(&decoder.vorbisFile, chunk, sizeof(chunk), 0, 2, 1, &bitstream)) > 0) {
        all.insert(all.end(), chunk, chunk + got);
    }
    EXPECT_EQ(got, 0);
    return all;
}

}  // namespace

TEST(OggDecoder, EncodedToneDecodesWithItsFormatAndLength) {
    auto ogg = EncodeTone(22050, 2, 44100, 440.0);
    ASSERT_GT(ogg.size(), 100u);
    EXPECT_EQ(0, memcmp(ogg.data(), "OggS", 4));
    std::vector<unsigned char> again = EncodeTone(22050, 2, 44100, 440.0);
    EXPECT_EQ(ogg, again);  // the same samples always make the same file

    OggDecoder decoder;
    ASSERT_EQ(decoder.Open(ogg.data(), static_cast<unsigned int>(ogg.size())), 1);
    EXPECT_EQ(decoder.Channels(), 2);
    EXPECT_EQ(decoder.Rate(), 44100);
    EXPECT_NE(decoder.data, ogg.data());  // a private copy
    std::vector<unsigned char> pcm = DecodeOnce(decoder);
    EXPECT_EQ(pcm.size(), 22050u * 4u);
    // The tone survives the round trip: count sign changes of the left channel.
    int crossings = 0;
    for (size_t i = 4; i < pcm.size(); i += 4) {
        short a = static_cast<short>(pcm[i - 4] | pcm[i - 3] << 8),
              b = static_cast<short>(pcm[i] | pcm[i + 1] << 8);
        crossings += (a < 0) != (b < 0);
    }
    EXPECT_NEAR(crossings, 440, 6);  // 220 periods in half a second
}

TEST(OggDecoder, APieceShorterThanAFillLoopsInsideIt) {
    auto ogg = EncodeTone(1000, 1, 8000, 300.0);  // 2,000 bytes of samples
    OggDecoder decoder;
    ASSERT_EQ(decoder.Open(ogg.data(), static_cast<unsigned int>(ogg.size())), 1);
    std::vector<unsigned char> once = DecodeOnce(decoder);
    ASSERT_EQ(once.size(), 2000u);
    ASSERT_TRUE(decoder.SeekTime(0.0));
    std::vector<unsigned char> fill(262144);
    ASSERT_EQ(decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size())), 1);
    // The fill is the piece over and over with no gap and no stray bytes.
    for (size_t i = 0; i < fill.size(); i++) {
        ASSERT_EQ(fill[i], once[i % once.size()]) << "byte " << i;
    }
    // And the next fill goes on exactly where this one stopped.
    std::vector<unsigned char> next(1000);
    ASSERT_EQ(decoder.Decode(next.data(), 1000), 1);
    for (size_t i = 0; i < next.size(); i++) {
        ASSERT_EQ(next[i], once[(fill.size() + i) % once.size()]) << "byte " << i;
    }
}

TEST(OggDecoder, AStreamWithoutSamplesFailsTheFillInsteadOfSpinning) {
    std::vector<unsigned char> ogg;
    ASSERT_TRUE(EncodeOggVorbis(nullptr, 0, 1, 8000, 0.4f, ogg));
    OggDecoder decoder;
    ASSERT_EQ(decoder.Open(ogg.data(), static_cast<unsigned int>(ogg.size())), 1);
    unsigned char out[4096];
    EXPECT_EQ(decoder.Decode(out, sizeof(out)), 0);
}

TEST(OggDecoder, ForeignAndBrokenBytesFailCleanly) {
    OggDecoder decoder;
    std::vector<unsigned char> wav(200, 'x');
    EXPECT_EQ(decoder.Open(wav.data(), static_cast<unsigned int>(wav.size())), 0);
    EXPECT_EQ(decoder.data, nullptr);
    EXPECT_EQ(decoder.Open(nullptr, 10), 0);
    EXPECT_EQ(decoder.Open(wav.data(), 0), 0);
    unsigned char out[64];
    EXPECT_EQ(decoder.Decode(out, sizeof(out)), 0);  // closed

    auto ogg = EncodeTone(8000, 1, 8000, 500.0);
    // Cut inside the headers: refused at open.
    EXPECT_EQ(decoder.Open(ogg.data(), 60), 0);
    // Cut inside the audio: opens, and every fill either succeeds or fails, but ends.
    unsigned int cut = static_cast<unsigned int>(ogg.size() * 2 / 3);
    if (decoder.Open(ogg.data(), cut)) {
        std::vector<unsigned char> fill(65536);
        for (int i = 0; i < 4; i++) {
            decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size()));
        }
    }
    // Garbage in the middle of the audio pages.
    std::vector<unsigned char> damaged = ogg;
    for (size_t i = damaged.size() / 2; i < damaged.size() / 2 + 200; i++) {
        damaged[i] ^= 0x5A;
    }
    if (decoder.Open(damaged.data(), static_cast<unsigned int>(damaged.size()))) {
        std::vector<unsigned char> fill(65536);
        decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size()));
    }
    decoder.Close();
    EXPECT_EQ(decoder.data, nullptr);
}

TEST(OggDecoder, EncoderRefusesWhatItCannotWrite) {
    std::vector<short> pcm(600);
    std::vector<unsigned char> ogg;
    EXPECT_FALSE(EncodeOggVorbis(pcm.data(), 100, 6, 44100, 0.4f, ogg));
    EXPECT_FALSE(EncodeOggVorbis(nullptr, 100, 1, 44100, 0.4f, ogg));
    EXPECT_TRUE(ogg.empty());
}
