// The in-memory Ogg Vorbis decoder: looping fills, the encoder beside it, and
// clean failures on empty, truncated or foreign bytes.
#include "audio/ogg_decoder.h"

#include <gtest/gtest.h>

#include <algorithm>

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

// Rewrites the setup header's first codebook, when it lists its code lengths one by one, so
// that every length is 1: a code tree no decoder can build. Bits are packed LSb first. The page
// checksums are put right afterwards.
bool BreakFirstCodebook(std::vector<unsigned char>& ogg) {
    static const unsigned char kSetup[7] = {5, 'v', 'o', 'r', 'b', 'i', 's'};
    auto at = std::search(ogg.begin(), ogg.end(), kSetup, kSetup + 7);
    if (at == ogg.end()) {
        return false;
    }
    unsigned char* bits = &*at + 7;
    size_t pos = 8, end = static_cast<size_t>(ogg.end() - at - 7) * 8;  // past the book count
    auto read = [&](int n) {
        long v = 0;
        for (int i = 0; i < n && pos < end; i++, pos++) {
            v |= static_cast<long>((bits[pos / 8] >> (pos % 8)) & 1) << i;
        }
        return v;
    };
    if (read(24) != 0x564342 || read(16) < 1) {
        return false;
    }
    long entries = read(24), lengths = 0;
    if (read(1) != 0) {
        return false;  // lengths given in runs
    }
    bool sparse = read(1) == 1;
    for (long i = 0; i < entries && pos + 5 <= end; i++) {
        if (sparse && read(1) == 0) {
            continue;
        }
        for (int b = 0; b < 5; b++, pos++) {
            bits[pos / 8] = static_cast<unsigned char>(bits[pos / 8] & ~(1u << (pos % 8)));
        }
        lengths++;
    }
    FixOggChecksums(ogg.data(), static_cast<unsigned int>(ogg.size()));
    return lengths >= 3;
}

}  // namespace

TEST(OggDecoder, EncodedToneDecodesWithItsFormatAndLength) {
    auto ogg = EncodeTone(22050, 2, 44100, 440.0);
    ASSERT_GT(ogg.size(), 100u);
    EXPECT_EQ(ogg, EncodeTone(22050, 2, 44100, 440.0));  // the same samples always make the same file

    OggDecoder decoder;
    ASSERT_EQ(decoder.Open(ogg.data(), static_cast<unsigned int>(ogg.size())), 1);
    EXPECT_EQ(decoder.Channels(), 2);
    EXPECT_EQ(decoder.Rate(), 44100);
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
}

// A setup header whose code trees cannot be built opens (vorbisfile only reads the headers) and then
// fails its first fill. Asking again must keep failing: libvorbis keeps the books it built half-way
// and would decode with the rest zeroed, dividing by zero in its residue decoder or making noise.
TEST(OggDecoder, AStreamWhoseCodebooksCannotBeBuiltKeepsFailing) {
    const std::vector<unsigned char> good = EncodeTone(22050, 2, 22050, 440.0);
    std::vector<unsigned char> ogg = good;
    ASSERT_TRUE(BreakFirstCodebook(ogg));
    OggDecoder decoder;
    ASSERT_EQ(decoder.Open(ogg.data(), static_cast<unsigned int>(ogg.size())), 1);
    std::vector<unsigned char> fill(65536);
    EXPECT_EQ(decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size())), 0);
    EXPECT_EQ(decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size())), 0);
    EXPECT_EQ(decoder.SeekTime(0.0), 0);
    EXPECT_EQ(decoder.Decode(fill.data(), 4096), 0);
    // Opening again starts afresh.
    ASSERT_EQ(decoder.Open(good.data(), static_cast<unsigned int>(good.size())), 1);
    EXPECT_EQ(decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size())), 1);
}
