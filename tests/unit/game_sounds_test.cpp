// The sounds the rules play, heard through OpenAL's null output: each game
// slot gets a buffer of its own, and after every tick the sources tell which
// slot they were last started with, where and at what pitch.
#include <AL/al.h>
#include <AL/alc.h>

#include <cstring>
#include <new>

#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "audio/sound_startup.h"
#include "audio/sound_system.h"
#include "audio_test_support.h"
#include "game/closing_scene.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game_fixture.h"
#include "platform/sys_keys.h"
#include "resources/location.h"

namespace {

class GameSoundsTest : public test::GameFixture {
protected:
    void SetUp() override {
        GameFixture::SetUp();
        openedSound = !g_sound.device;
        savedContext = alcGetCurrentContext();
        ASSERT_TRUE(g_sound.Init());
        alcMakeContextCurrent(static_cast<ALCcontext*>(g_sound.context));
        std::vector<short> pcm = test::SineSamples(11025, 1, 22050, 440);
        std::vector<unsigned char> data(reinterpret_cast<unsigned char*>(pcm.data()),
                                        reinterpret_cast<unsigned char*>(pcm.data() + pcm.size()));
        std::vector<unsigned char> wav =
            test::Riff("RIFF", "WAVE", {test::Chunk("fmt ", test::FmtBody(1, 22050, 2, 16)), test::Chunk("data", data)});
        // The slots' own buffers (loaded by other tests or not) are put back afterwards.
        memcpy(saved, g_sound.buffers, sizeof(saved));
        for (int slot = SoundRun1; slot <= SoundBlip; slot++) {
            g_sound.buffers[slot] = 0;
            ASSERT_EQ(g_sound.UploadWav(wav.data(), static_cast<unsigned>(wav.size()), slot), 1);
        }
        Heard(0);
        Heard(1);
        Floor();
    }
    void TearDown() override {
        for (int source = 0; source < 2; source++) {
            alSourceStop(g_sound.sources[source]);
            alSourcei(g_sound.sources[source], AL_BUFFER, 0);
        }
        for (int slot = SoundRun1; slot <= SoundBlip; slot++) {
            alDeleteBuffers(1, &g_sound.buffers[slot]);
        }
        memcpy(g_sound.buffers, saved, sizeof(saved));
        GameFixture::TearDown();
        // The sound system as it was found: closed, or open with the context that was current.
        if (openedSound) {
            g_sound.~SoundSystem();
            new (&g_sound) SoundSystem();
        } else {
            alcMakeContextCurrent(savedContext);
        }
    }
    // The slot a source was started with since the last call (0 for none), and where.
    int Heard(int source, float* at = nullptr, float* pitch = nullptr) {
        ALuint name = g_sound.sources[source];
        ALint buffer = 0;
        alGetSourcei(name, AL_BUFFER, &buffer);
        if (at) {
            alGetSource3f(name, AL_POSITION, &at[0], &at[1], &at[2]);
            for (int k = 0; k < 3; k++) {
                at[k] /= SoundSystem::kWorldScale;
            }
        }
        if (pitch) {
            alGetSourcef(name, AL_PITCH, pitch);
        }
        alSourceStop(name);
        alSourcei(name, AL_BUFFER, 0);
        for (int slot = SoundRun1; slot <= SoundBlip; slot++) {
            if (buffer != 0 && static_cast<ALuint>(buffer) == g_sound.buffers[slot]) {
                return slot;
            }
        }
        return 0;
    }
    static void ExpectAt(const float* heard, const float* where) {
        for (int k = 0; k < 3; k++) {
            EXPECT_NEAR(heard[k], where[k], 0.5f) << "axis " << k;
        }
    }
    unsigned int saved[SoundSystem::kSlotCount];
    bool openedSound = false;
    ALCcontext* savedContext = nullptr;
};

TEST_F(GameSoundsTest, JumpKeyAndDeathSoundWhereThePlayerIs) {
    AddEntity("player", 30, 0, -20);
    AddEntity("key01", 30, 0, -20);
    AddEntity("spikes", 150, 0, 60);
    StartLevel();
    float at[3];
    Tick();
    EXPECT_EQ(Heard(0, at), SoundCollect);
    const float start[3] = {30, 0, -20};
    ExpectAt(at, start);
    Key(VK_SPACE, 1);
    Tick();
    EXPECT_EQ(Heard(0, at), SoundJump);
    ExpectAt(at, start);
    Tick(60);
    Heard(0);
    player->position[0] = 150;
    player->position[2] = 60;
    const float spikes[3] = {150, player->position[1], 60};
    Tick();
    ASSERT_EQ(lives, 2);
    EXPECT_EQ(Heard(0, at), SoundDie);
    ExpectAt(at, spikes);  // where it died, not where the restart put it
}

TEST_F(GameSoundsTest, FootstepsSoundOnlyInTheirStretchesOfTheRunningAnimation) {
    AddEntity("player", -200, 0, 0, 90);
    StartLevel();
    Tick();
    Key(VK_UP, 1);
    int steps = 0, slotsHeard = 0;
    for (int t = 0; t < 150; t++) {
        float anim = player->animTime;
        float where[3] = {player->position[0], player->position[1], player->position[2]};
        Tick();
        float at[3];
        int slot = Heard(0, at);
        bool inStep = (anim >= 16.0f && anim <= 16.5f) || (anim >= 22.0f && anim <= 22.5f);
        EXPECT_EQ(slot != 0, inStep) << "tick " << t << " at animation time " << anim;
        if (slot != 0) {
            EXPECT_GE(slot, SoundRun1);
            EXPECT_LE(slot, SoundRun4);
            ExpectAt(at, where);
            steps++;
            slotsHeard |= 1 << slot;
        }
    }
    EXPECT_GE(steps, 10);
    EXPECT_EQ(slotsHeard, 0x1E) << "all four footstep sounds";
}

TEST_F(GameSoundsTest, TheTallyBlipsEveryFourthTickAtTheCameraPitchedByTheAirLeft) {
    g_location.Clear();
    Floor("finish");
    AddEntity("player", 100, 0, 100);
    StartLevel();
    Tick();
    ASSERT_EQ(levelComplete, 1);
    air = 40.0f;
    for (int t = 0; t < 12; t++) {
        Tick();
        float at[3], pitch = 0;
        int slot = Heard(0, at, &pitch);
        if (t % 4 != 0) {
            EXPECT_EQ(slot, 0) << "tick " << t;
            continue;
        }
        EXPECT_EQ(slot, SoundBlip) << "tick " << t;
        EXPECT_NEAR(pitch, air * 0.02f + 0.2f, 1e-4) << "tick " << t;
        const float camera[3] = {g_camera.position.x, g_camera.position.y, g_camera.position.z};
        ExpectAt(at, camera);
    }
}

TEST_F(GameSoundsTest, TheClosingFootStampsOnSourceZeroAndSplatsOnSourceOne) {
    SaveEndScene({"player_prop", "foot"});
    EnterGameOver();
    EXPECT_EQ(Heard(0), SoundFoot);
    int splats = 0;
    for (int t = 1; t <= 66; t++) {
        UpdateClosingScene();
        int slot = Heard(1);
        EXPECT_TRUE(slot == 0 || (slot == SoundSplat && t > 56)) << "tick " << t << " slot " << slot;
        splats += slot == SoundSplat;
    }
    EXPECT_GT(splats, 3);
}

}  // namespace
