// The data directory the build made: every name the game asks for resolves
// through the resource lookup, and the music loops for exactly as long as the
// title's piano clock. (The build's content step fills VANTLE_RUN_DIR/data.)
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "audio/ogg_decoder.h"
#include "audio/wav_file.h"
#include "image.h"
#include "music_assets.h"
#include "piano_roll.h"
#include "resources/resource_manager.h"

static std::vector<unsigned char> OpenData(const char* name) {
    static ResourceManager* manager = nullptr;
    if (!manager) {
        manager = new ResourceManager();
        snprintf(manager->dataDirectory, sizeof(manager->dataDirectory), "%s/data", VANTLE_RUN_DIR);
    }
    unsigned char* bytes = manager->Open(name);
    if (!bytes) {
        return {};
    }
    return std::vector<unsigned char>(bytes, bytes + manager->bufferSize);
}

// Every picture the interface, effects and title bind.
static const char* const kPictures[] = {"gui_font.tga",
                                        "gui_font2.tga",
                                        "gui_font3.tga",
                                        "gui_loading.tga",
                                        "gui_lighting.tga",
                                        "gui\\level_bar.tga",
                                        "gui\\air_bar_full.tga",
                                        "gui\\air_bar_empty.tga",
                                        "gui\\air.tga",
                                        "gui\\lives.tga",
                                        "gui_logo.tga",
                                        "gui_controls.tga",
                                        "delver_light.tga",
                                        "particle_fire.tga",
                                        "particle_sparkle.tga",
                                        "particle_gibs.tga",
                                        "particle_star.tga",
                                        "particle_blood.tga",
                                        "particle_smoke.tga",
                                        "particle_leaf.tga",
                                        "logo\\logotext_main.tga",
                                        "logo\\logotext_starring.tga",
                                        "logo\\logotext_start.tga",
                                        "logo\\logotext_3d.tga"};

static const char* const kSounds[] = {
    "sound\\run01.wav", "sound\\run02.wav",     "sound\\run03.wav", "sound\\run04.wav", "sound\\jump01.wav",
    "sound\\die01.wav", "sound\\collect01.wav", "sound\\foot.wav",  "sound\\splat.wav", "sound\\blip.wav"};

TEST(ContentData, EveryPictureAndSoundResolvesAndParses) {
    for (const char* name : kPictures) {
        std::vector<unsigned char> bytes = OpenData(name);
        ASSERT_FALSE(bytes.empty()) << name << " is not in " << VANTLE_RUN_DIR << "/data";
        Image img;
        EXPECT_TRUE(DecodeTga(bytes.data(), bytes.size(), &img)) << name;
    }
    for (const char* name : kSounds) {
        std::vector<unsigned char> bytes = OpenData(name);
        ASSERT_FALSE(bytes.empty()) << name;
        WavSound wav;
        EXPECT_EQ(ParseWav(bytes.data(), static_cast<unsigned int>(bytes.size()), &wav), 1) << name;
    }
    // Names are found whatever their case, as the game may spell them.
    EXPECT_FALSE(OpenData("GUI\\LIVES.TGA").empty());
    EXPECT_TRUE(OpenData("gui\\no_such_picture.tga").empty());
}

TEST(ContentData, MusicDecodesAndTheTitlePieceLastsOnePianoLoop) {
    const char* names[] = {"sound\\music_menu.ogg", "sound\\music_level.ogg", "sound\\music_win.ogg"};
    for (const char* name : names) {
        std::vector<unsigned char> bytes = OpenData(name);
        ASSERT_FALSE(bytes.empty()) << name;
        OggDecoder decoder;
        ASSERT_EQ(decoder.Open(bytes.data(), static_cast<unsigned int>(bytes.size())), 1) << name;
        EXPECT_EQ(decoder.Channels(), 2);
        EXPECT_EQ(decoder.Rate(), 44100);
        ogg_int64_t frames = ov_pcm_total(&decoder.vorbisFile, -1);
        EXPECT_GT(frames, 44100 * 10) << name;
        if (strcmp(name, "sound\\music_menu.ogg") == 0) {
            // 1984 ticks of 20 ms.
            EXPECT_EQ(frames, 1984LL * 44100 / 50);
        }
        // The first second is not silence.
        std::vector<unsigned char> pcm(44100 * 4);
        ASSERT_EQ(decoder.Decode(pcm.data(), static_cast<unsigned int>(pcm.size())), 1);
        int peak = 0;
        for (size_t i = 0; i + 1 < pcm.size(); i += 2) {
            peak =
                std::max(peak, std::abs(static_cast<int>(static_cast<int16_t>(pcm[i] | (pcm[i + 1] << 8)))));
        }
        EXPECT_GT(peak, 1000) << name;
    }
    std::vector<unsigned char> roll = OpenData("piano.vpr");
    std::vector<PianoRollEvent> events;
    ASSERT_TRUE(DecodePianoRoll(roll.data(), roll.size(), &events));
    EXPECT_EQ(roll.size(), 4 + 8 * events.size());
    EXPECT_GT(events.size(), 0u);
}
