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
        const float* p = player ? player->position : kNowhere;
        return Sample{p[0], p[1], p[2], player ? player->rotation[1] : 0, air, score, lives, RandState()};
    }
    static constexpr float kNowhere[3] = {0, 0, 0};

    static void Collect(const char* line, void* context) {
        static_cast<std::vector<std::string>*>(context)->push_back(line);
    }
};

struct Press {
    int tick, key, down;
};
const Press kPresses[] = {{3, VK_UP, 1},     {20, VK_SPACE, 1}, {21, VK_SPACE, 1}, {25, VK_SPACE, 0},
                          {40, VK_LEFT, 1},  {44, VK_LEFT, 0},  {44, VK_RIGHT, 1}, {48, VK_RIGHT, 0},
                          {75, VK_UP, 1},    {90, VK_SPACE, 1}};
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
    Rand();  // the sequence stands somewhere else than at its start
    ASSERT_EQ(g_demo.StartRecording(file.c_str(), 1), 1);
    ASSERT_EQ(g_scene, SceneGame);
    std::vector<Sample> recorded;
    for (int t = 0; t < 1500 && g_scene == SceneGame; t++) {
        // What the window procedure would do between ticks; space is pressed while airborne too
        // (taken only on the ground), and the keyboard repeats up after the stick let go of it.
        for (const Press& p : kPresses) {
            if (p.tick == t) {
                Key(p.key, p.down);
            }
        }
        g_stickPresent = t >= 60 && t < 70;
        g_stick.x = t < 66 ? 65535 : 32767;
        g_stick.y = t < 66 ? 40000 : 32767;
        GameSceneTick();
        recorded.push_back(Take());
    }
    EXPECT_EQ(g_scene, SceneEnd) << "the walk reaches the finish and the tally ends the game";
    EXPECT_EQ(g_demo.mode, DemoIdle) << "the end of the game ends the recording";
    EXPECT_EQ(score, 1210u) << "the key and 111 ticks of tally";

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
    ASSERT_EQ(recorded.size(), played.size());
    for (size_t t = 0; t < played.size(); t++) {
        ASSERT_EQ(memcmp(&recorded[t], &played[t], sizeof(Sample)), 0) << "tick " << t;
    }
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
    EXPECT_EQ(lines[3], "level 01: inputs ended at tick 3, score 0, air 99.9, lives 3");
}

class DemoCommandTest : public DemoTest {};

TEST_F(DemoCommandTest, ConsoleCommandsRecordAndStopThroughTheGameTick) {
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
    ExecuteCommand("DEMO_STOP");
    EXPECT_EQ(g_demo.mode, DemoIdle);
    EXPECT_EQ(std::string(g_console.lines[0]).find("Unknown Command"), std::string::npos);  // taken
    // The recorded file plays back as the recording went: the record and playback test's part.
    std::vector<unsigned char> bytes = test::ReadFile(file);
    std::string text(bytes.begin(), bytes.end());
    EXPECT_NE(text.find("\nticks 30\n0 down UP\n"), std::string::npos) << text;
    // A recording still running when the program shuts down is saved.
    std::string late = dataDir + "/../late.replay";
    ExecuteCommand(("DEMO_RECORD " + late).c_str());
    g_hooks.updateGame();
    g_hooks.releaseGameObjects();
    EXPECT_EQ(g_demo.mode, DemoIdle);
    EXPECT_FALSE(test::ReadFile(late).empty());
    player = nullptr;
    memset(&g_hooks, 0, sizeof(g_hooks));
}

}  // namespace
