// Real sound through OpenAL Soft's wave writer: music streamed through the
// normal player, and start-up with no output at all. OpenAL reads its driver settings once per process, so every
// test here must run in a process of its own (CTest runs each one that way).
#include <AL/al.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "app/console.h"
#include "audio/music_player.h"
#include "audio/ogg_encoder.h"
#include "audio/sound_startup.h"
#include "audio/sound_system.h"
#include "audio_test_support.h"
#include "platform/sys_clock.h"
#include "resources/resource_manager.h"

namespace {

const int kOutputRate = 44100;

// Points OpenAL at the given driver, with a config naming the wave file. Fails the test when OpenAL
// was already set up in this process with other settings.
void UseDriver(const char* drivers, const std::string& dir, std::string* wavePath) {
    static bool used = false;
    ASSERT_FALSE(used) << "each test of this binary needs its own process (run it through ctest)";
    used = true;
    *wavePath = dir + "/out.wav";
    std::string conf = dir + "/alsoft.conf";
    ASSERT_TRUE(test::WriteText(conf,
                                "[general]\nfrequency = 44100\nchannels = stereo\nsample-type = int16\n"
                                "[wave]\nfile = " +
                                    *wavePath + "\n"));
    setenv("ALSOFT_CONF", conf.c_str(), 1);
    setenv("ALSOFT_DRIVERS", drivers, 1);
}

// The 16-bit stereo samples of a wave-writer file (its "fmt " is the extensible kind, so we find "data"
// ourselves).
std::vector<short> ReadOutput(const std::string& path, int* channels, int* rate) {
    std::vector<unsigned char> bytes = test::ReadFile(path);
    std::vector<short> samples;
    if (bytes.size() < 12 || memcmp(bytes.data(), "RIFF", 4) != 0) {
        return samples;
    }
    size_t pos = 12;
    while (pos + 8 <= bytes.size()) {
        unsigned int size =
            bytes[pos + 4] | bytes[pos + 5] << 8 | bytes[pos + 6] << 16 | bytes[pos + 7] << 24;
        const unsigned char* body = bytes.data() + pos + 8;
        if (!memcmp(bytes.data() + pos, "fmt ", 4)) {
            *channels = body[2] | body[3] << 8;
            *rate = body[4] | body[5] << 8 | body[6] << 16 | body[7] << 24;
            EXPECT_EQ(body[14], 16) << "bits per sample";
        } else if (!memcmp(bytes.data() + pos, "data", 4)) {
            size_t n = std::min<size_t>(size, bytes.size() - pos - 8) / 2;
            for (size_t i = 0; i < n; i++) {
                samples.push_back(static_cast<short>(body[2 * i] | body[2 * i + 1] << 8));
            }
        }
        pos += 8 + size;
    }
    return samples;
}

// Sign changes per second of the left channel over [from, to) seconds.
double CrossingsPerSecond(const std::vector<short>& s, double from, double to) {
    size_t a = static_cast<size_t>(from * kOutputRate), b = static_cast<size_t>(to * kOutputRate);
    int crossings = 0;
    for (size_t i = a + 1; i < b && 2 * i < s.size(); i++) {
        crossings += (s[2 * (i - 1)] < 0) != (s[2 * i] < 0);
    }
    return crossings / (to - from);
}

// Root mean square of the left channel over [from, to) seconds.
double Rms(const std::vector<short>& s, double from, double to) {
    size_t a = static_cast<size_t>(from * kOutputRate), b = static_cast<size_t>(to * kOutputRate);
    double sum = 0;
    size_t n = 0;
    for (size_t i = a; i < b && 2 * i < s.size(); i++, n++) {
        sum += static_cast<double>(s[2 * i]) * s[2 * i];
    }
    return n ? sqrt(sum / n) : 0;
}

}  // namespace

TEST(WaveOutput, StreamedStereoMusicComesOutWholeAndInTune) {
    std::string dir = test::ScratchDir("wave_music_stereo"), wave;
    UseDriver("wave", dir, &wave);
    // Two seconds of 440 Hz, so three seconds of play loop through the end once.
    std::vector<short> pcm = test::SineSamples(88200, 2, 44100, 440.0);
    std::vector<unsigned char> ogg;
    ASSERT_TRUE(EncodeOggVorbis(pcm.data(), 88200, 2, 44100, 0.5f, ogg));
    ASSERT_TRUE(test::WriteResource(dir, "sound\\music_level.ogg", ogg));
    SoundSystem* sound = new SoundSystem();
    ASSERT_TRUE(sound->Init());
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", dir.c_str());
    MusicPlayer* music = new MusicPlayer();
    music->resources = &resources;
    music->transition = MusicPlayer::kCut;
    EXPECT_EQ(music->PlayMusic("sound\\music_level.ogg"), 1);
    for (int i = 0; i < 200; i++) {  // four seconds of 20 ms ticks
        music->Update();
        Sys_Sleep(20);
    }
    delete music;
    delete sound;  // closing the device finishes the wave file

    int channels = 0, rate = 0;
    std::vector<short> out = ReadOutput(wave, &channels, &rate);
    ASSERT_EQ(channels, 2);
    ASSERT_EQ(rate, kOutputRate);
    ASSERT_GT(out.size() / 2.0 / kOutputRate, 3.5);  // the writer runs while the device is open
    // Music throughout, including across the loop point at two seconds, at its own pitch.
    for (double t = 0.5; t + 0.5 <= 3.5; t += 0.5) {
        EXPECT_GT(Rms(out, t, t + 0.5), 3000) << "silent at " << t << " s";
        EXPECT_NEAR(CrossingsPerSecond(out, t, t + 0.5), 880, 20) << "at " << t << " s";
    }
}

// The calls that follow a failed start-up are each silent without a device of their own.
TEST(WaveOutput, NoDriverMeansNoDeviceLinesAndEverythingIsSilent) {
    std::string dir = test::ScratchDir("wave_none"), wave;
    UseDriver("no-such-driver", dir, &wave);
    g_console.Clear();
    EXPECT_EQ(InitSoundAtStartup(), 0);
    // Nothing of its own: start-up reports the failure.
    EXPECT_STREQ(g_console.lines[0], "");
    ResourceManager resources;
    EXPECT_EQ(LoadGameSounds(&resources), 0);
    g_music.resources = &resources;
    EXPECT_EQ(g_music.PlayMusic("sound\\music_menu.ogg"), 0);
}
