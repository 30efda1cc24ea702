// The music player on OpenAL's null output, with the cut the game runs with
// (the fade and the slide are never chosen; the cut and the stop at the next
// tick are the main loop's audio test): failures that must leave the old
// piece alone, a source restarted after it ran dry, and no music until a
// device opens.
#include "audio/music_player.h"

#include <AL/al.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "audio/music_stream.h"
#include "audio/ogg_encoder.h"
#include "audio/sound_system.h"
#include "audio_test_support.h"
#include "platform/sys_clock.h"
#include "resources/resource_manager.h"

namespace {

std::vector<unsigned char> EncodeTone(unsigned int frames, int channels, long rate, double frequency) {
    std::vector<short> pcm = test::SineSamples(frames, channels, rate, frequency);
    std::vector<unsigned char> ogg;
    EncodeOggVorbis(pcm.data(), frames, channels, rate, 0.3f, ogg);
    return ogg;
}

float SourceFloat(ALuint source, ALenum what) {
    ALfloat v = -1;
    alGetSourcef(source, what, &v);
    return v;
}

ALint SourceInt(ALuint source, ALenum what) {
    ALint v = -1;
    alGetSourcei(source, what, &v);
    return v;
}

class MusicPlayerTest : public ::testing::Test {
protected:
    test::KeepCurrentContext keep;  // declared first: restored after sound has closed
    SoundSystem sound;
    ResourceManager resources;
    MusicPlayer* music = nullptr;  // destroyed before the sound system closes the device

    void SetUp() override {
        ASSERT_TRUE(sound.Init());
        std::string data = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        test::WriteResource(data, "sound\\a.ogg", EncodeTone(48000, 2, 48000, 440.0));
        test::WriteResource(data, "sound\\b.ogg", EncodeTone(11025, 1, 22050, 660.0));
        test::WriteResource(data, "sound\\broken.ogg", std::vector<unsigned char>(300, 'O'));
        snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", data.c_str());
        music = new MusicPlayer();
        music->resources = &resources;
    }
    void TearDown() override { delete music; }

    MusicStream* Current() { return music->streams[music->current]; }
};

}  // namespace

TEST_F(MusicPlayerTest, PlayingQueuesTwoFullFillsAtTheFilesOwnFormat) {
    music->transition = MusicPlayer::kCut;
    ASSERT_EQ(music->PlayMusic("sound\\b.ogg"), 1);
    MusicStream* s = Current();
    ASSERT_NE(s, nullptr);
    EXPECT_EQ(s->format, static_cast<unsigned int>(AL_FORMAT_MONO16));
    EXPECT_EQ(s->IsPlaying(), 1u);
    EXPECT_TRUE(s->SourcePlaying());
    EXPECT_EQ(SourceInt(s->alSource, AL_BUFFERS_QUEUED), 2);
    ALint rate = 0;
    alGetBufferi(s->alBuffers[1], AL_FREQUENCY, &rate);
    EXPECT_EQ(rate, 22050);
    // Music is not positional.
    EXPECT_EQ(SourceInt(s->alSource, AL_SOURCE_RELATIVE), AL_TRUE);
    EXPECT_FLOAT_EQ(SourceFloat(s->alSource, AL_ROLLOFF_FACTOR), 0.0f);
}

TEST_F(MusicPlayerTest, AMissingOrBrokenFileLeavesTheOldMusicPlaying) {
    music->transition = MusicPlayer::kCut;
    ASSERT_EQ(music->PlayMusic("sound\\a.ogg"), 1);
    MusicStream* playing = Current();
    EXPECT_EQ(music->PlayMusic("sound\\missing.ogg"), 0);
    EXPECT_EQ(music->PlayMusic("sound\\broken.ogg"), 0);
    for (int i = 0; i < 10; i++) {
        music->Update();
    }
    ASSERT_EQ(Current(), playing);
    EXPECT_EQ(playing->IsPlaying(), 1u);
    EXPECT_TRUE(playing->SourcePlaying());
}

TEST_F(MusicPlayerTest, ASourceThatRanDryIsRestartedByTheNextRefill) {
    music->transition = MusicPlayer::kCut;
    ASSERT_EQ(music->PlayMusic("sound\\a.ogg"), 1);
    MusicStream* s = Current();
    // Play both fills out quickly, as a long stall would, without any update.
    s->SetPitch(8.0f);
    int waited = 0;
    while (SourceInt(s->alSource, AL_SOURCE_STATE) == AL_PLAYING && waited < 30000) {
        Sys_Sleep(10);
        waited += 10;
    }
    ASSERT_EQ(SourceInt(s->alSource, AL_SOURCE_STATE), AL_STOPPED)
        << "the null device never played the buffers out";
    EXPECT_EQ(SourceInt(s->alSource, AL_BUFFERS_PROCESSED), 2);
    music->Update();
    EXPECT_EQ(SourceInt(s->alSource, AL_SOURCE_STATE), AL_PLAYING);
    EXPECT_EQ(SourceInt(s->alSource, AL_BUFFERS_QUEUED), 2);
    EXPECT_EQ(SourceInt(s->alSource, AL_BUFFERS_PROCESSED), 0);
}

TEST(MusicPlayerClosed, NoDeviceNoMusicUntilOneOpens) {
    test::KeepCurrentContext keep;
    alcMakeContextCurrent(nullptr);  // as before any device opened
    ResourceManager resources;
    std::string data = test::ScratchDir("music_closed");
    test::WriteResource(data, "sound\\a.ogg", EncodeTone(8000, 1, 8000, 440.0));
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", data.c_str());
    SoundSystem sound;  // opened later; closes after the player has let go of its streams
    MusicPlayer music;
    music.resources = &resources;
    EXPECT_EQ(music.PlayMusic("sound\\a.ogg"), 0);
    music.StopMusic();
    music.StopMusic();
    music.Update();
    // A device opened later plays, whatever was stopped before it.
    ASSERT_TRUE(sound.Init());
    for (int i = 0; i < 2; i++) {
        ASSERT_EQ(music.PlayMusic("sound\\a.ogg"), 1);
        EXPECT_TRUE(music.streams[music.current]->SourcePlaying()) << i;
    }
    music.StopMusic();
    music.Update();
}

// The three pieces the game plays, as the content build packs them, decode from their first sample
// to their last (looping is the decoder's own test); the title's piece lasts exactly the piano
// roll's loop.
TEST(ShippedMusic, EveryPieceDecodesFromStartToEnd) {
    std::string data = std::string(VANTLE_RUN_DIR) + "/data";
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", data.c_str());
    for (const char* name : {"sound\\music_menu.ogg", "sound\\music_level.ogg", "sound\\music_win.ogg"}) {
        unsigned char* bytes = resources.Open(name);
        if (!bytes) {
            GTEST_SKIP() << "no " << name << " in " << data << " (content not built)";
        }
        OggDecoder decoder;
        ASSERT_EQ(decoder.Open(bytes, resources.bufferSize), 1) << name;
        ogg_int64_t frames = ov_pcm_total(&decoder.vorbisFile, -1);
        ASSERT_GT(frames, decoder.Rate()) << name << " is shorter than a second";
        if (strcmp(name, "sound\\music_menu.ogg") == 0) {
            EXPECT_EQ(frames, 1984LL * decoder.Rate() / 50) << "the title's piano clock loops every 1984 ticks";
        }
        std::vector<unsigned char> pcm(static_cast<size_t>(frames) * 2 * decoder.Channels());
        ASSERT_EQ(decoder.Decode(pcm.data(), static_cast<unsigned int>(pcm.size())), 1) << name;
        int loud = 0;
        for (size_t i = 0; i + 1 < pcm.size(); i += 2) {
            loud += std::abs(static_cast<short>(pcm[i] | pcm[i + 1] << 8)) > 1000;
        }
        EXPECT_GT(loud, frames / 10) << name << " is mostly silent";
    }
}
