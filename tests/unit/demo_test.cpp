// Demos: a game recorded through the key table and the joystick plays back
// tick for tick to the same state, and the headless runner reports deaths,
// completed levels and the end of the game, or a broken file's line.
#include "game/demo.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_hooks.h"
#include "game/game_hooks.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/player.h"
#include "game/replay_runner.h"
#include "game_fixture.h"
#include "platform/sys_joystick.h"
#include "platform/sys_keys.h"
#include "resources/location.h"
#include "test_support.h"

namespace {

struct Sample {
    float x, y, z, yaw, air;
    uint32_t score;
    int lives;
    unsigned int rand;  // where the random sequence stands (dust, footsteps)
};

class DemoTest : public test::GameFixture {
protected:
    // Level 01 on disk: a floor, a key on the way, the finish at x 300 and spikes to the side.
    void SaveLevelOne() {
        AddPiece("floor", "textures\\01\\rock.tga", -400, -100, -400, 300, 0, 400);
        AddPiece("finish", "textures\\01\\rock.tga", 300, -100, -400, 400, 0, 400);
        AddEntity("player", 0, 0, 0, 90);
        AddEntity("key01", 60, 0, 0);
        AddEntity("spikes", 0, 0, -150);
        AddEntity("particle_dirt", 0, 200, 0);
        SaveLocation(g_location, "01.vlc");
        g_location.Clear();
    }

    static Sample Take() {
        Sample s = {};
        if (player) {
            s.x = player->position[0];
            s.y = player->position[1];
            s.z = player->position[2];
            s.yaw = player->rotation[1];
        }
        s.air = air;
        s.score = score;
        s.lives = lives;
        s.rand = RandState();
        return s;
    }

    static void ExpectSame(const std::vector<Sample>& a, const std::vector<Sample>& b) {
        ASSERT_EQ(a.size(), b.size());
        for (size_t t = 0; t < a.size(); t++) {
            ASSERT_EQ(memcmp(&a[t], &b[t], sizeof(Sample)), 0) << "tick " << t;
        }
    }

    static void Collect(const char* line, void* context) {
        static_cast<std::vector<std::string>*>(context)->push_back(line);
    }
};

// Stick held to the right for a while, then let go.
SysJoystickState g_stick;
int g_stickPresent;
int FakeStick(SysJoystickState* out) {
    *out = g_stick;
    return g_stickPresent;
}

TEST_F(DemoTest, ARecordedGamePlaysBackTickForTickThroughTheKeyTable) {
    SaveLevelOne();
    std::string file = dataDir + "/../run.replay";
    g_readJoystick = FakeStick;
    g_stickPresent = 0;
    Rand();  // the sequence stands somewhere else than at its start
    ASSERT_EQ(g_demo.StartRecording(file.c_str(), 1), 1);
    ASSERT_EQ(g_scene, SceneGame);
    std::vector<Sample> recorded;
    for (int t = 0; t < 1500 && g_scene == SceneGame; t++) {
        // What the window procedure would do between ticks.
        if (t == 3) {
            Key(VK_UP, 1);
        }
        if (t == 20 || t == 21 || t == 90) {
            Key(VK_SPACE, 1);  // pressed while airborne too: taken only on the ground
        }
        if (t == 25) {
            Key(VK_SPACE, 0);
        }
        if (t == 40) {
            Key(VK_LEFT, 1);
        }
        if (t == 44) {
            Key(VK_LEFT, 0);
            Key(VK_RIGHT, 1);
        }
        if (t == 48) {
            Key(VK_RIGHT, 0);
        }
        if (t == 60) {
            g_stickPresent = 1;
            g_stick.x = 65535;
            g_stick.y = 40000;
        }
        if (t == 66) {
            g_stick.x = 32767;
            g_stick.y = 32767;
        }
        if (t == 70) {
            g_stickPresent = 0;
        }
        if (t == 75) {
            Key(VK_UP, 1);  // the stick let go of the up key; the keyboard repeats it
        }
        GameSceneTick();
        recorded.push_back(Take());
    }
    EXPECT_EQ(g_scene, SceneEnd) << "the walk reaches the finish and the tally ends the game";
    EXPECT_EQ(g_demo.mode, DemoIdle) << "the end of the game ends the recording";
    EXPECT_EQ(score, 1210u) << "the key and 111 ticks of tally";
    std::vector<unsigned char> text = test::ReadFile(file);
    ASSERT_FALSE(text.empty());
    std::string s(text.begin(), text.end());
    EXPECT_NE(s.find(" down UP\n"), std::string::npos) << s;
    EXPECT_NE(s.find("60 joy 65535 40000\n"), std::string::npos) << s;
    EXPECT_NE(s.find(" joy off\n"), std::string::npos) << s;

    // Play it back: a different key table and joystick must not matter.
    g_readJoystick = nullptr;
    memset(g_window.keys, 0, sizeof(g_window.keys));
    score = 999;
    ResetRand();
    ASSERT_EQ(g_demo.StartPlayback(file.c_str()), 1);
    std::vector<Sample> played;
    while (g_scene == SceneGame && played.size() < recorded.size()) {
        GameSceneTick();
        played.push_back(Take());
    }
    ExpectSame(recorded, played);
    EXPECT_EQ(g_readJoystick, nullptr) << "the reader is handed back";
}

TEST_F(DemoTest, TheRunnerReportsDeathsCompletionAndTheOutcome) {
    SaveLevelOne();
    Replay& r = g_demo.replay;
    r.Clear();
    r.length = 2000;
    // Walk +x to the finish at once; in the first life, turn toward the spikes first.
    ASSERT_EQ(r.AddEvent(0, ReplayKeyDown, VK_RIGHT, 0, 0), 1);
    ASSERT_EQ(r.AddEvent(20, ReplayKeyUp, VK_RIGHT, 0, 0), 1);  // 20 x 4.5 = yaw 0... then -x
    ASSERT_EQ(r.AddEvent(20, ReplayKeyDown, VK_DOWN, 0, 0), 1);
    ASSERT_EQ(r.AddEvent(200, ReplayKeyUp, VK_DOWN, 0, 0), 1);
    ASSERT_EQ(r.AddEvent(200, ReplayKeyDown, VK_UP, 0, 0), 1);
    std::vector<std::string> lines;
    unsigned int ticks = RunLoadedReplay(Collect, &lines);
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[0].rfind("level 01: died at tick ", 0), 0u) << lines[0];
    EXPECT_NE(lines[0].find("(spikes), lives 2"), std::string::npos) << lines[0];
    EXPECT_EQ(lines[1].rfind("level 01: completed at tick ", 0), 0u) << lines[1];
    EXPECT_NE(lines[1].find(", lives 2"), std::string::npos) << lines[1];
    EXPECT_EQ(lines.back(), "game: won, score " + std::to_string(score) + ", lives 2");
    EXPECT_LT(ticks, 2000u);
    EXPECT_GT(score, 1000u) << "a key and the tally of most of the air";
}

TEST_F(DemoTest, InputsThatEndInTheLevelSayWhereTheyStopped) {
    SaveLevelOne();
    Replay& r = g_demo.replay;
    r.Clear();
    r.length = 10;
    std::vector<std::string> lines;
    EXPECT_EQ(RunLoadedReplay(Collect, &lines), 10u);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0], "level 01: inputs ended at tick 10, score 0, air 99.7, lives 3");
}

TEST_F(DemoTest, TheTraceFollowsThePlayerTickByTick) {
    SaveLevelOne();
    Replay& r = g_demo.replay;
    r.Clear();
    r.length = 3;
    ASSERT_EQ(r.AddEvent(1, ReplayKeyDown, VK_UP, 0, 0), 1);
    std::vector<std::string> lines;
    EXPECT_EQ(RunLoadedReplay(Collect, &lines, 1), 3u);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], "tick 0: 0.00 0.00 0.00 yaw 90.0 state 0 ground 1 air 100.0");
    EXPECT_EQ(lines[1], "tick 1: 2.25 0.00 0.00 yaw 90.0 state 1 ground 1 air 99.9");
    EXPECT_EQ(lines[2], "tick 2: 4.50 0.00 0.00 yaw 90.0 state 1 ground 1 air 99.9");
    EXPECT_EQ(lines[3].rfind("level 01: inputs ended at tick 3", 0), 0u) << lines[3];
}

TEST_F(DemoTest, ABrokenReplayFileIsReportedWithItsLine) {
    std::string file = dataDir + "/../broken.replay";
    ASSERT_TRUE(test::WriteText(file, "vantle2-replay 1\nlevel 1\nticks 10\n5 down UP\n3 up UP\n"));
    std::vector<std::string> lines;
    EXPECT_EQ(RunReplayFile(file.c_str(), Collect, &lines), -1);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_NE(lines[0].find("line 5"), std::string::npos) << lines[0];
    EXPECT_EQ(g_demo.mode, DemoIdle);
}

}  // namespace

namespace {

class DemoCommandTest : public DemoTest {};

TEST_F(DemoCommandTest, ConsoleCommandsRecordStopAndPlayThroughTheGameTick) {
    SaveLevelOne();
    InstallGameHooks();
    std::string file = dataDir + "/../console.replay";
    // Start-up over (a demo asked for before that waits for it: the real program's runs show it).
    g_hooks.resetClosingScene();
    ExecuteCommand(("DEMO_RECORD " + file + " 1").c_str());
    ASSERT_EQ(g_demo.mode, DemoRecording);
    Key(VK_UP, 1);
    for (int t = 0; t < 30; t++) {
        g_hooks.updateGame();
    }
    Key(VK_UP, 0);
    g_hooks.updateGame();
    float x = player->position[0];
    ExecuteCommand("DEMO_STOP");
    EXPECT_EQ(g_demo.mode, DemoIdle);
    EXPECT_EQ(std::string(g_console.lines[1]).rfind("Demo saved to /", 0), 0u) << "a long path wraps";
    EXPECT_FALSE(test::ReadFile(file).empty());
    ExecuteCommand(("DEMO_PLAY " + file).c_str());
    ASSERT_EQ(g_demo.mode, DemoPlaying);
    for (int t = 0; t < 31; t++) {
        g_hooks.updateGame();
    }
    EXPECT_FLOAT_EQ(player->position[0], x);
    EXPECT_EQ(g_demo.mode, DemoIdle) << "the playback ends with its ticks";
    // A recording still running when the program shuts down is saved.
    std::string late = dataDir + "/../late.replay";
    ExecuteCommand(("DEMO_RECORD " + late).c_str());
    g_hooks.updateGame();
    g_hooks.releaseGameObjects();
    EXPECT_EQ(g_demo.mode, DemoIdle);
    EXPECT_FALSE(test::ReadFile(late).empty());
    for (GameObject* object : objects) {
        EXPECT_EQ(object, nullptr);
    }
    player = nullptr;
    ExecuteCommand("DEMO_RECORD");
    EXPECT_STREQ(g_console.lines[0], "DEMO_RECORD <file> [level]");
    EXPECT_EQ(g_demo.mode, DemoIdle);
    ExecuteCommand("DEMO_PLAY nowhere.replay");
    EXPECT_EQ(g_demo.mode, DemoIdle);
    EXPECT_NE(std::string(g_console.lines[0]).find("nowhere.replay"), std::string::npos);
    memset(&g_hooks, 0, sizeof(g_hooks));
}

}  // namespace
