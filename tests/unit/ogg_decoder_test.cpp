// The in-memory Ogg Vorbis decoder: looping fills, the encoder beside it, and
// clean failures on empty, truncated or foreign bytes.
#include "audio/ogg_decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

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

// LSb-first bit access to a Vorbis packet, as the format packs it.
struct PacketBits {
    unsigned char* bytes;
    size_t length;
    size_t pos;  // in bits
    long Read(int n) {
        long v = 0;
        for (int i = 0; i < n; i++, pos++) {
            if (pos / 8 >= length) {
                return -1;
            }
            v |= static_cast<long>((bytes[pos / 8] >> (pos % 8)) & 1) << i;
        }
        return v;
    }
    void Write(int n, unsigned long v) {
        for (int i = 0; i < n; i++, pos++) {
            unsigned char bit = static_cast<unsigned char>(1u << (pos % 8));
            bytes[pos / 8] =
                static_cast<unsigned char>((v >> i) & 1 ? bytes[pos / 8] | bit : bytes[pos / 8] & ~bit);
        }
    }
};

// Walks one codebook of a setup header. With overpopulate set, an unordered book has every code length
// rewritten to 1, a code tree no decoder can build. Returns whether the book was rewritten; false at
// the end of the packet too (*ok cleared).
bool WalkCodebook(PacketBits& bits, bool overpopulate, bool* ok) {
    long sync = bits.Read(24), dim = bits.Read(16), entries = bits.Read(24);
    if (sync != 0x564342 || dim < 1 || entries < 0) {
        *ok = false;
        return false;
    }
    bool rewritten = false;
    if (bits.Read(1) == 0) {
        bool sparse = bits.Read(1) == 1;
        int lengths = 0;
        for (long i = 0; i < entries; i++) {
            if (sparse && bits.Read(1) == 0) {
                continue;
            }
            if (overpopulate) {
                bits.Write(5, 0);
            } else {
                bits.Read(5);
            }
            lengths++;
        }
        rewritten = overpopulate && lengths >= 3;
    } else {
        bits.Read(5);
        for (long done = 0; done < entries;) {
            int width = 0;
            for (long left = entries - done; left; left >>= 1) {
                width++;
            }
            done += bits.Read(width);
        }
    }
    long lookup = bits.Read(4);
    if (lookup == 1 || lookup == 2) {
        bits.Read(32);
        bits.Read(32);
        long valueBits = bits.Read(4) + 1;
        bits.Read(1);
        long values = entries * dim;
        if (lookup == 1) {
            values = 0;
            while (std::pow(values + 1.0, static_cast<double>(dim)) <= entries) {
                values++;
            }
        }
        bits.pos += static_cast<size_t>(values * valueBits);
    }
    *ok = bits.pos <= bits.length * 8;
    return rewritten;
}

// Rewrites codebook `book` of the file's setup header into a tree that cannot be built, and puts
// the page checksums right; false when that book cannot be rewritten.
bool BreakCodebook(std::vector<unsigned char>& ogg, long book, long* bookCount) {
    static const unsigned char kSetup[7] = {5, 'v', 'o', 'r', 'b', 'i', 's'};
    auto at = std::search(ogg.begin(), ogg.end(), kSetup, kSetup + 7);
    if (at == ogg.end()) {
        return false;
    }
    PacketBits bits{&*at + 7, static_cast<size_t>(ogg.end() - at - 7), 0};
    *bookCount = bits.Read(8) + 1;
    bool ok = true;
    for (long i = 0; i < book && ok; i++) {
        WalkCodebook(bits, false, &ok);
    }
    if (!ok || !WalkCodebook(bits, true, &ok)) {
        return false;
    }
    FixOggChecksums(ogg.data(), static_cast<unsigned int>(ogg.size()));
    return true;
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
    long books = 0;
    int broken = 0;
    for (long book = 0; book == 0 || book < books; book++) {
        std::vector<unsigned char> ogg = good;
        if (!BreakCodebook(ogg, book, &books)) {
            continue;
        }
        broken++;
        OggDecoder decoder;
        ASSERT_EQ(decoder.Open(ogg.data(), static_cast<unsigned int>(ogg.size())), 1) << "book " << book;
        std::vector<unsigned char> fill(65536);
        EXPECT_EQ(decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size())), 0) << "book " << book;
        EXPECT_EQ(decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size())), 0) << "book " << book;
        EXPECT_EQ(decoder.SeekTime(0.0), 0) << "book " << book;
        EXPECT_EQ(decoder.Decode(fill.data(), 4096), 0) << "book " << book;
        // Opening again starts afresh.
        ASSERT_EQ(decoder.Open(good.data(), static_cast<unsigned int>(good.size())), 1);
        EXPECT_EQ(decoder.Decode(fill.data(), static_cast<unsigned int>(fill.size())), 1);
    }
    EXPECT_GT(books, 10);
    EXPECT_GT(broken, books / 2) << "most of the encoder's books are unordered";
}
