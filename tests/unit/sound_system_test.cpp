// The sound system on OpenAL's null output: loading into slots, playing on
// sources, the listener and source settings it leaves behind, and silence
// (every call 0) when no device was opened.
#include "audio/sound_system.h"

#include <AL/al.h>
#include <gtest/gtest.h>

#include "audio/sound_startup.h"
#include "audio/wav_file.h"
#include "audio_test_support.h"
#include "resources/resource_manager.h"

namespace {

std::vector<unsigned char> ToneWav(int channels, int bits, unsigned int rate, unsigned int frames) {
    std::vector<short> pcm = test::SineSamples(frames, channels, rate, 440.0);
    std::vector<unsigned char> bytes;
    if (bits == 8) {
        for (short s : pcm) {
            bytes.push_back(static_cast<unsigned char>((s >> 8) + 128));
        }
    } else {
        bytes.assign(reinterpret_cast<unsigned char*>(pcm.data()),
                     reinterpret_cast<unsigned char*>(pcm.data() + pcm.size()));
    }
    std::vector<unsigned char> image;
    WriteWav(channels, bits, rate, bytes.data(), static_cast<unsigned int>(bytes.size()), image);
    return image;
}

int Upload(SoundSystem& sound, const std::vector<unsigned char>& image, int slot) {
    return sound.UploadWav(image.data(), static_cast<unsigned int>(image.size()), slot);
}

ALint BufferInt(ALuint buffer, ALenum what) {
    ALint v = -1;
    alGetBufferi(buffer, what, &v);
    return v;
}

ALint SourceInt(ALuint source, ALenum what) {
    ALint v = -1;
    alGetSourcei(source, what, &v);
    return v;
}

float SourceFloat(ALuint source, ALenum what) {
    ALfloat v = -1;
    alGetSourcef(source, what, &v);
    return v;
}

// The listener's (source 0) or a source's vector of n floats.
std::vector<float> Floats(ALuint source, ALenum what, int n = 3) {
    float v[6] = {};
    if (source) {
        alGetSourcefv(source, what, v);
    } else {
        alGetListenerfv(what, v);
    }
    return std::vector<float>(v, v + n);
}

void ExpectNear(const std::vector<float>& actual, const std::vector<float>& expected) {
    for (size_t i = 0; i < expected.size(); i++) {
        EXPECT_NEAR(actual[i], expected[i], 1e-5f) << "element " << i;
    }
}

class SoundSystemTest : public ::testing::Test {
protected:
    test::KeepCurrentContext keep;  // declared first: restored after sound has closed
    SoundSystem sound;
    void SetUp() override { ASSERT_TRUE(sound.Init()) << "the null OpenAL driver should always open"; }
};

}  // namespace

TEST(SoundSystemClosed, EveryCallAnswersZeroWithoutADevice) {
    SoundSystem sound;
    auto image = ToneWav(1, 16, 8000, 100);
    std::string data = test::ScratchDir("sound_closed");
    test::WriteResource(data, "sound\\a.wav", image);
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", data.c_str());
    float pos[3] = {1, 2, 3}, angles[3] = {0, 90, 0};
    EXPECT_EQ(sound.LoadSound(&resources, "sound\\a.wav", 1), 0);
    EXPECT_EQ(Upload(sound, image, 1), 0);
    EXPECT_EQ(sound.Play(1, -1), 0);
    EXPECT_EQ(sound.PlayAt(1, 0, pos, angles, pos, 1, 1, false), 0);
    sound.PlaceListener(pos, angles);
}

TEST_F(SoundSystemTest, LoadSoundFillsTheSlotFromTheResourceLayer) {
    std::string data = test::ScratchDir("sound_load");
    test::WriteResource(data, "sound\\jump01.wav", ToneWav(2, 16, 22050, 300));
    test::WriteResource(data, "sound\\bad.wav", std::vector<unsigned char>(50, 'x'));
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", data.c_str());
    ASSERT_EQ(sound.LoadSound(&resources, "sound\\jump01.wav", 5), 1);
    ALuint buffer = sound.buffers[5];
    EXPECT_EQ(BufferInt(buffer, AL_FREQUENCY), 22050);
    EXPECT_EQ(BufferInt(buffer, AL_CHANNELS), 2);
    EXPECT_EQ(BufferInt(buffer, AL_BITS), 16);
    EXPECT_EQ(BufferInt(buffer, AL_SIZE), 300 * 4);
    EXPECT_EQ(resources.buffer, nullptr);  // the file's bytes are let go after the upload
    EXPECT_EQ(sound.LoadSound(&resources, "sound\\missing.wav", 6), 0);
    EXPECT_EQ(sound.buffers[6], 0u);
    EXPECT_EQ(sound.LoadSound(&resources, "sound\\bad.wav", 7), 0);
    EXPECT_EQ(sound.LoadSound(nullptr, "sound\\jump01.wav", 8), 0);
    EXPECT_EQ(Upload(sound, ToneWav(1, 8, 8000, 10), 200), 0);  // past the table
}

// Play is heard where the listener is, undoing what PlayAt set on the source.
TEST_F(SoundSystemTest, PlayStartsTheSlotAtTheListener) {
    ASSERT_EQ(Upload(sound, ToneWav(1, 16, 8000, 8000), 1), 1);
    float pos[3] = {500, 0, 0}, angles[3] = {0, 90, 0};
    ASSERT_EQ(sound.PlayAt(1, 4, pos, angles, pos, 0.5f, 2, true), 1);
    ASSERT_EQ(sound.Play(1, 4), 1);
    ALuint s = sound.sources[4];
    EXPECT_EQ(SourceInt(s, AL_SOURCE_STATE), AL_PLAYING);
    EXPECT_EQ(static_cast<ALuint>(SourceInt(s, AL_BUFFER)), sound.buffers[1]);
    EXPECT_EQ(SourceInt(s, AL_LOOPING), AL_FALSE);
    EXPECT_FLOAT_EQ(SourceFloat(s, AL_PITCH), 1.0f);
    EXPECT_FLOAT_EQ(SourceFloat(s, AL_GAIN), 1.0f);
    ExpectNear(Floats(s, AL_POSITION), {0, 0, 0});
    ExpectNear(Floats(0, AL_POSITION), {0, 0, 0});
    ExpectNear(Floats(0, AL_ORIENTATION, 6), {0, 0, 1, 0, 1, 0});
    EXPECT_EQ(sound.Play(1, 14), 0);
    EXPECT_EQ(sound.Play(1, -2), 0);
    // Another sound on the same source cuts the first off and plays in its place.
    ASSERT_EQ(Upload(sound, ToneWav(1, 16, 8000, 8000), 2), 1);
    ASSERT_EQ(sound.Play(2, 4), 1);
    EXPECT_EQ(static_cast<ALuint>(SourceInt(s, AL_BUFFER)), sound.buffers[2]);
    EXPECT_EQ(SourceInt(s, AL_SOURCE_STATE), AL_PLAYING);
}

// Source -1 takes the sources in turn: fourteen sounds in a row all play at once.
TEST_F(SoundSystemTest, SourceMinusOneTakesTheSourcesInTurn) {
    ASSERT_EQ(Upload(sound, ToneWav(1, 16, 8000, 8000), 2), 1);
    for (int i = 0; i < SoundSystem::kSourceCount; i++) {
        ASSERT_EQ(sound.Play(2, -1), 1);
    }
    for (int i = 0; i < SoundSystem::kSourceCount; i++) {
        EXPECT_EQ(SourceInt(sound.sources[i], AL_SOURCE_STATE), AL_PLAYING) << i;
    }
}

TEST_F(SoundSystemTest, PlayAtScalesPositionsAndFacesTheCameraYaw) {
    ASSERT_EQ(Upload(sound, ToneWav(1, 16, 8000, 8000), 10), 1);
    float listener[3] = {1000, -500, 250}, angles[3] = {30, 90, 45}, at[3] = {0, 500, -2500};
    ASSERT_EQ(sound.PlayAt(10, 0, listener, angles, at, 0.5f, 0.01f, true), 1);
    ALuint s = sound.sources[0];
    ExpectNear(Floats(0, AL_POSITION), {2.0f, -1.0f, 0.5f});
    ExpectNear(Floats(0, AL_ORIENTATION, 6), {1, 0, 0, 0, 1, 0});  // yaw 90 faces +x; pitch and roll play no part
    ExpectNear(Floats(s, AL_POSITION), {0, 1.0f, -5.0f});
    EXPECT_FLOAT_EQ(SourceFloat(s, AL_PITCH), 0.05f);
    EXPECT_FLOAT_EQ(SourceFloat(s, AL_GAIN), 0.5f);
    EXPECT_EQ(SourceInt(s, AL_LOOPING), AL_TRUE);
    EXPECT_EQ(SourceInt(s, AL_SOURCE_STATE), AL_PLAYING);

    float back[3] = {0, 180, 0}, origin[3] = {0, 0, 0};
    ASSERT_EQ(sound.PlayAt(10, 0, origin, back, origin, 1, 1.5f, false), 1);
    ExpectNear(Floats(0, AL_ORIENTATION), {0, 0, -1});
    EXPECT_FLOAT_EQ(SourceFloat(s, AL_PITCH), 1.5f);
    EXPECT_EQ(SourceInt(s, AL_LOOPING), AL_FALSE);
}

// The start-up lines themselves are the startup_sound script's to check, in a real run's log.
TEST(SoundStartup, LoadsTheGameSoundsThatExist) {
    test::FreshGlobalSound fresh;
    ASSERT_EQ(InitSoundAtStartup(), 1);
    std::string data = test::ScratchDir("game_sounds");
    test::WriteResource(data, "sound\\jump01.wav", ToneWav(1, 16, 11025, 100));
    test::WriteResource(data, "sound\\blip.wav", ToneWav(1, 8, 8000, 100));
    test::WriteResource(data, "sound\\run02.wav", ToneWav(2, 16, 22050, 100));
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", data.c_str());
    EXPECT_EQ(LoadGameSounds(&resources), 3);
    EXPECT_EQ(BufferInt(g_sound.buffers[SoundJump], AL_FREQUENCY), 11025);
    EXPECT_EQ(BufferInt(g_sound.buffers[SoundBlip], AL_BITS), 8);
    EXPECT_EQ(BufferInt(g_sound.buffers[SoundRun2], AL_CHANNELS), 2);
    EXPECT_EQ(g_sound.buffers[0], 0u);
    EXPECT_EQ(g_sound.buffers[SoundRun1], 0u);  // missing files leave their slots empty
    EXPECT_EQ(g_sound.buffers[SoundDie], 0u);
    EXPECT_EQ(g_sound.Play(SoundJump, 0), 1);
}

// The content build's ten effects: every one is a WAV the loader takes, so no game sound is silent.
TEST(ShippedSounds, AllTenGameSoundsLoadIntoTheirSlots) {
    std::string data = std::string(VANTLE_RUN_DIR) + "/data";
    ResourceManager resources;
    snprintf(resources.dataDirectory, sizeof(resources.dataDirectory), "%s", data.c_str());
    if (!resources.Open("sound\\jump01.wav")) {
        GTEST_SKIP() << "no sound\\jump01.wav in " << data << " (content not built)";
    }
    test::FreshGlobalSound fresh;
    ASSERT_EQ(g_sound.Init(), 1);
    EXPECT_EQ(LoadGameSounds(&resources), 10);
    for (int slot = SoundRun1; slot <= SoundBlip; slot++) {
        EXPECT_GT(BufferInt(g_sound.buffers[slot], AL_SIZE), 0) << "slot " << slot;
    }
}
