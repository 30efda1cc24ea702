// Sound and music as the program wires them: the start-up hooks open the
// device and set the music player up from the global resource manager, and
// the main loop's ticks drive the music (with the cut transition a stopped
// piece is gone after one tick, not before). OpenAL's null output.
#include "app/audio_hooks.h"

#include <AL/al.h>
#include <AL/alc.h>
#include <gtest/gtest.h>

#include <cstring>
#include <new>

#include "app/console.h"
#include "app/frame_timer.h"
#include "app/gl_window.h"
#include "app/main_loop.h"
#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "audio/music_stream.h"
#include "audio/ogg_encoder.h"
#include "audio/sound_system.h"
#include "audio_test_support.h"
#include "platform/sys_events.h"
#include "resources/resource_manager.h"
#include "test_clock.h"

namespace {

std::vector<unsigned char> Music(double frequency) {
    std::vector<short> pcm = test::SineSamples(22050, 2, 22050, frequency);
    std::vector<unsigned char> ogg;
    EncodeOggVorbis(pcm.data(), 22050, 2, 22050, 0.3f, ogg);
    return ogg;
}

class AudioHooks : public ::testing::Test {
protected:
    test::ManualClock clock{7000000};
    char savedDirectory[sizeof(g_resources.dataDirectory)];
    bool openedSound = false;
    ALCcontext* savedContext = nullptr;

    void SetUp() override {
        // Streams made while no context was current have no source to play through.
        DeleteStreams();
        openedSound = !g_sound.device;
        savedContext = alcGetCurrentContext();
        ASSERT_TRUE(g_sound.Init());
        alcMakeContextCurrent(static_cast<ALCcontext*>(g_sound.context));
        memcpy(savedDirectory, g_resources.dataDirectory, sizeof(savedDirectory));
        std::string data = test::ScratchDir(::testing::UnitTest::GetInstance()->current_test_info()->name());
        snprintf(g_resources.dataDirectory, sizeof(g_resources.dataDirectory), "%s", data.c_str());
        test::WriteResource(data, "sound\\music_menu.ogg", Music(440.0));
        test::WriteResource(data, "sound\\music_level.ogg", Music(330.0));

        Sys_FlushMessages();
        g_hooks = EngineHooks();
        InstallAudioHooks();
        g_window.active = 1;
        g_window.sceneDraw = nullptr;
        g_scene = SceneMenu;
        g_quit = 0;
        memset(&g_timer, 0, sizeof(g_timer));
        g_timer.Init(0);
        g_timer.SetPeriod(TimerUpdate, 20);
        g_timer.SetPeriod(TimerStats, 100);
    }
    void TearDown() override {
        g_hooks = EngineHooks();
        DeleteStreams();
        g_music.resources = nullptr;
        g_music.transition = MusicPlayer::kFade;
        memcpy(g_resources.dataDirectory, savedDirectory, sizeof(savedDirectory));
        Sys_FlushMessages();
        // The sound system as it was found: closed, or open with the context that was current.
        if (openedSound) {
            g_sound.~SoundSystem();
            new (&g_sound) SoundSystem();
        } else {
            alcMakeContextCurrent(savedContext);
        }
    }
    static void DeleteStreams() {
        for (MusicStream*& stream : g_music.streams) {
            delete stream;
            stream = nullptr;
        }
    }
    void Tick() {
        clock.AdvanceMs(20);
        MainLoopPass();
    }
};

}  // namespace

TEST_F(AudioHooks, TheMainLoopCutsToTheNextPieceAndStopsAtTheNextTick) {
    g_hooks.prepareMusic();
    ASSERT_EQ(g_music.PlayMusic("sound\\music_menu.ogg"), 1);
    MusicStream* menu = g_music.streams[g_music.current];
    Tick();
    ASSERT_EQ(g_music.streams[g_music.current], menu);
    EXPECT_TRUE(menu->SourcePlaying());

    // The cut: the level piece plays at full gain and the menu piece is closed at once.
    ASSERT_EQ(g_music.PlayMusic("sound\\music_level.ogg"), 1);
    MusicStream* level = g_music.streams[g_music.current];
    ASSERT_NE(level, menu);
    EXPECT_EQ(menu->decoder.data, nullptr);
    EXPECT_FALSE(menu->SourcePlaying());
    ALfloat gain = 0;
    alGetSourcef(level->alSource, AL_GAIN, &gain);
    EXPECT_FLOAT_EQ(gain, 1.0f);
    Tick();
    EXPECT_TRUE(level->SourcePlaying());

    // Stopping: the level piece plays until the loop's next tick removes it.
    g_music.StopMusic();
    int levelSlot = 1 - static_cast<int>(g_music.current);
    ASSERT_EQ(g_music.streams[levelSlot], level);
    EXPECT_TRUE(level->SourcePlaying());
    clock.AdvanceMs(19);
    MainLoopPass();
    EXPECT_EQ(g_music.streams[levelSlot], level) << "removed before a tick ran";
    clock.AdvanceMs(1);
    MainLoopPass();
    EXPECT_EQ(g_music.streams[levelSlot], nullptr);
    ASSERT_NE(g_music.streams[g_music.current], nullptr);
    EXPECT_EQ(g_music.streams[g_music.current]->IsPlaying(), 0u);
}
