// Every level the game ships is played with its solution replay
// (content/solutions/NN.replay) by the headless runner, and must be finished.
// A level without a solution fails: no level ships unless a replay proves it
// can be finished.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/replay_runner.h"
#include "resources/location.h"
#include "resources/resource_manager.h"

namespace {

void Collect(const char* line, void* context) {
    static_cast<std::vector<std::string>*>(context)->push_back(line);
}

TEST(ShippedLevels, EverySolutionFinishesItsLevel) {
    std::string data = std::string(VANTLE_RUN_DIR) + "/data";
    if (!std::filesystem::exists(data)) {
        GTEST_SKIP() << "no built content in " << data;
    }
    strcpy(g_resources.dataDirectory, data.c_str());
    int levels = 0;
    for (int n = 1; n < 100; n++) {
        char name[32];
        snprintf(name, sizeof(name), "levels\\%02i.vlc", n);
        if (!g_resources.Open(name)) {
            break;
        }
        levels++;
        char solution[64];
        snprintf(solution, sizeof(solution), "/content/solutions/%02i.replay", n);
        std::string path = std::string(VANTLE_SOURCE_DIR) + solution;
        ASSERT_TRUE(std::filesystem::exists(path)) << "level " << n << " ships without " << path;
        std::vector<std::string> lines;
        ASSERT_GT(RunReplayFile(path.c_str(), Collect, &lines), 0) << path;
        char finished[32];
        snprintf(finished, sizeof(finished), "level %02i: completed", n);
        bool done = false;
        for (const std::string& line : lines) {
            done = done || line.rfind(finished, 0) == 0;
        }
        std::string all;
        for (const std::string& line : lines) {
            all += line + "\n";
        }
        EXPECT_TRUE(done) << "the solution does not finish level " << n << ":\n" << all;
    }
    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    g_location.Clear();
    closingLocation.Clear();
    strcpy(g_resources.dataDirectory, "data");
    if (levels == 0) {
        GTEST_SKIP() << "the content ships no levels yet";
    }
}

}  // namespace
