// The content generators' pictures, fonts, sounds and music, checked through
// the engine's own readers and byte for byte where the format is ours.
#include <AL/al.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "asset_list.h"
#include "audio/wav_file.h"
#include "content_build.h"
#include "font_raster.h"
#include "image.h"
#include "interface_textures.h"
#include "keyboard_layout.h"
#include "music_assets.h"
#include "music_render.h"
#include "music_score.h"
#include "piano_roll.h"
#include "resources/tga_image.h"
#include "sound_effects.h"
#include "ui/text_batch.h"

static const std::string kContentDir = std::string(VANTLE_SOURCE_DIR) + "/content";

static Image DecodeAsset(const AssetList& list, const char* name) {
    Image img;
    const Asset* a = list.Find(name);
    EXPECT_NE(a, nullptr) << name;
    if (a) {
        EXPECT_TRUE(DecodeTga(a->bytes.data(), a->bytes.size(), &img)) << name;
    }
    return img;
}

// Pixels with alpha above the threshold in the size x size cell at (x0, y0).
static int Ink(const Image& img, int x0, int y0, int size, int threshold) {
    int ink = 0;
    for (int y = y0; y < y0 + size; y++) {
        for (int x = x0; x < x0 + size; x++) {
            ink += img.rgba[(y * img.width + x) * 4 + 3] > threshold;
        }
    }
    return ink;
}

// The engine reads pictures in file order, bottom row first, as GL takes them: the writer must
// store the picture's bottom row first, in 24 bits, or 32 when there is alpha.
TEST(ContentPictures, TgaIsStoredBottomRowFirstForTheEngine) {
    Image img(2, 2);
    img.Fill(Rgb(0, 0, 0));
    img.Set(0, 0, Rgb(255, 0, 0));  // top left
    for (int alpha = 0; alpha < 2; alpha++) {
        if (alpha) {
            img.Set(1, 1, Colour{1, 1, 1, 0.5f});  // bottom right
        }
        std::vector<uint8_t> tga = EncodeTga(img);
        TgaImage engine;
        ASSERT_EQ(TgaDecode(tga.data(), static_cast<unsigned int>(tga.size()), &engine), 1);
        unsigned int bytes = engine.bits / 8;
        EXPECT_EQ(bytes, alpha ? 4u : 3u);
        const unsigned char* topLeft = engine.pixels + 2 * bytes;
        EXPECT_EQ(topLeft[0], 255);
        EXPECT_EQ(topLeft[2], 0);
        if (alpha) {
            EXPECT_NEAR(engine.pixels[2 * bytes - 1], 128, 1);
        }
        TgaFree(&engine);
    }
}

TEST(ContentPictures, EveryPictureIsAPowerOfTwoAndParticleStripsHoldTheirFrames) {
    AssetList list;
    std::string error;
    ASSERT_TRUE(GenerateInterfaceTextures(&list, CONTENT_DEFAULT_FONT_DIRECTORY, &error)) << error;
    GenerateEffectTextures(&list);
    for (const Asset& a : list.assets) {
        Image img;
        ASSERT_TRUE(DecodeTga(a.bytes.data(), a.bytes.size(), &img)) << a.name;
        EXPECT_EQ(img.width & (img.width - 1), 0) << a.name;
        EXPECT_EQ(img.height & (img.height - 1), 0) << a.name;
    }
    // A strip of n frames: every frame cell has something drawn in it.
    struct Strip {
        const char* name;
        int frames;
    } strips[] = {{"particle_fire.tga", 16}, {"particle_sparkle.tga", 16}, {"particle_gibs.tga", 4}};
    for (const Strip& s : strips) {
        Image img = DecodeAsset(list, s.name);
        ASSERT_GT(img.width, 0);
        // Frames are square cells filling the picture row by row.
        int cell = 1;
        while ((img.width / cell) * (img.height / cell) > s.frames) {
            cell *= 2;
        }
        ASSERT_EQ((img.width / cell) * (img.height / cell), s.frames) << s.name;
        for (int f = 0; f < s.frames; f++) {
            int columns = img.width / cell;
            EXPECT_GT(Ink(img, (f % columns) * cell, (f / columns) * cell, cell, 32), 0) << s.name << " frame " << f;
        }
    }
}

TEST(ContentFonts, EveryGlyphCellHasInkAndBlankCellsStayClear) {
    AssetList list;
    std::string error;
    ASSERT_TRUE(GenerateFonts(&list, CONTENT_DEFAULT_FONT_DIRECTORY, &error)) << error;
    const char* names[] = {"gui_font.tga", "gui_font2.tga", "gui_font3.tga"};
    for (const char* name : names) {
        Image img = DecodeAsset(list, name);
        ASSERT_EQ(img.width, 512);
        ASSERT_EQ(img.height, 256);
        for (int g = 0; g < kFontCells; g++) {
            int ink = Ink(img, (g % 16) * 32, (g / 16) * 32, 32, 128);
            unsigned char byte = g < kFontGlyphs ? FontGlyphByte(g) : 0;
            if (byte != 0 && byte != ' ') {
                EXPECT_GT(ink, 2) << name << " glyph " << g << " '" << byte << "'";
                // The text batch draws this byte from this very cell.
                EXPECT_EQ(TextBatch::GlyphIndex(byte), g);
            } else {
                EXPECT_EQ(ink, 0) << name << " blank cell " << g;
            }
        }
    }
}

TEST(ContentSounds, EveryEffectIsSixteenBitPcmTheSoundSystemAccepts) {
    AssetList list;
    GenerateSoundEffects(&list);
    ASSERT_EQ(list.assets.size(), 10u);
    for (const Asset& a : list.assets) {
        const char* name = a.name.c_str();
        WavSound wav;
        ASSERT_EQ(ParseWav(a.bytes.data(), static_cast<unsigned int>(a.bytes.size()), &wav), 1) << name;
        EXPECT_EQ(wav.format, AL_FORMAT_MONO16) << name;
        // Audible but not clipped flat: the peak is well inside full scale.
        int peak = 0;
        for (unsigned int i = 0; i + 1 < wav.length; i += 2) {
            int s = static_cast<int16_t>(wav.data[i] | (wav.data[i + 1] << 8));
            peak = std::max(peak, std::abs(s));
        }
        EXPECT_GT(peak, 3000) << name;
        EXPECT_LT(peak, 32767) << name;
    }
}

TEST(ContentMusic, ScoreErrorsNameTheFileAndLine) {
    Score score;
    std::string error;
    EXPECT_FALSE(ParseScore("length 100\nstep 2\nvoice a piano\n  C4 D4 X9\n", "bad.txt", &score, &error));
    EXPECT_EQ(error.rfind("bad.txt:4:", 0), 0u) << error;
    ASSERT_TRUE(ParseScore("length 100\nstep 2\nvoice a piano roll\n  C4:2 r E4+G4 | C5:0.5\n", "ok.txt",
                           &score, &error))
        << error;
    ASSERT_EQ(score.notes.size(), 4u);
    EXPECT_EQ(score.notes[0].pitch, 60);
    EXPECT_EQ(score.notes[0].length, 4);
    EXPECT_EQ(score.notes[1].start, 6);  // after the two-step note and the rest
    EXPECT_EQ(score.notes[2].start, 6);
    EXPECT_EQ(score.notes[3].start, 8);
    EXPECT_EQ(score.notes[3].length, 1);
    EXPECT_EQ(NoteNumber("F#3"), 54);
    EXPECT_EQ(NoteNumber("Bb2"), 46);
}

TEST(ContentMusic, PianoRollStaysOnTheKeyboard) {
    std::string text;
    ASSERT_TRUE(ReadTextFile(kContentDir + "/music/menu.txt", &text));
    Score score;
    std::string error;
    ASSERT_TRUE(ParseScore(text, "menu.txt", &score, &error)) << error;
    std::vector<PianoRollEvent> events;
    ASSERT_TRUE(MakePianoRoll(score, kPianoRollStartTick, &events, &error)) << error;
    ASSERT_GT(events.size(), 100u);
    ASSERT_LE(events.size(), 2048u);
    int prevTick = 0;
    int down[kPianoKeyCount] = {};
    for (const PianoRollEvent& e : events) {
        EXPECT_GE(e.key, 0);
        EXPECT_LT(e.key, kPianoKeyCount);
        EXPECT_GE(e.tick, prevTick);
        EXPECT_LT(e.tick, kMenuLoopTicks);
        prevTick = e.tick;
        down[e.key] += e.state ? 1 : -1;
    }
    for (int k = 0; k < kPianoKeyCount; k++) {
        EXPECT_EQ(down[k], 0) << "key " << k << " pressed and released unevenly";
    }
    // A note off the keyboard is refused.
    Score wide;
    ASSERT_TRUE(ParseScore("length 50\nvoice a piano roll\n  C2\n", "w.txt", &wide, &error));
    EXPECT_FALSE(MakePianoRoll(wide, 0, &events, &error));
}

// The step from the last frame of one channel back to the first, where the music player
// wraps, and the step that 99 in 100 of the steps inside the loop stay under.
static void SeamAndUsualStep(const std::vector<float>& samples, int channel, float* seam, float* usual) {
    size_t frames = samples.size() / 2;
    std::vector<float> steps;
    for (size_t i = 0; i + 1 < frames; i++) {
        steps.push_back(std::fabs(samples[(i + 1) * 2 + channel] - samples[i * 2 + channel]));
    }
    size_t at = steps.size() * 99 / 100;
    std::nth_element(steps.begin(), steps.begin() + at, steps.end());
    *usual = steps[at];
    *seam = std::fabs(samples[channel] - samples[(frames - 1) * 2 + channel]);
}

// The music loops without a click: a note still ringing at the end of the loop carries on at
// its start, and in every shipped piece the step across the seam is an ordinary one, no
// bigger than 99 in 100 of the steps the piece takes anywhere else.
TEST(ContentMusic, LoopsCarryOnAcrossTheSeam) {
    Score ringing;
    std::string error;
    ASSERT_TRUE(ParseScore("length 100\nstep 2\nvoice a pad\n  r:49 C4:1\n", "ring.txt", &ringing, &error))
        << error;
    std::vector<float> wrapped = RenderScore(ringing, 11025);
    float opening = 0.0f;
    for (int i = 0; i < 200; i++) {
        opening = std::max(opening, std::fabs(wrapped[i * 2]));
    }
    EXPECT_GT(opening, 0.05f) << "the note that rings past the end is missing from the start";

    for (const char* name : {"menu", "level", "win"}) {
        std::string text;
        Score score;
        ASSERT_TRUE(ReadTextFile(kContentDir + "/music/" + name + ".txt", &text)) << name;
        ASSERT_TRUE(ParseScore(text, name, &score, &error)) << error;
        std::vector<float> samples = RenderScore(score, kMusicRate);
        ASSERT_GT(samples.size(), 2u) << name;
        for (int channel = 0; channel < 2; channel++) {
            float seam, usual;
            SeamAndUsualStep(samples, channel, &seam, &usual);
            EXPECT_LE(seam, usual) << name << " channel " << channel;
        }
    }
}

