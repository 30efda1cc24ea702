// Every level the game ships is played with its solution replay
// (content/solutions/NN.replay) by the headless runner, and must be finished,
// with the player never out of the game camera's sight for longer than a
// moment. A level without a solution fails: no level ships unless a replay
// proves it can be finished.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "game/collision_world.h"
#include "game/demo.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/player_sight.h"
#include "game/replay_runner.h"
#include "resources/location.h"
#include "resources/resource_manager.h"

namespace {

void Collect(const char* line, void* context) {
    static_cast<std::vector<std::string>*>(context)->push_back(line);
}

// Runs a replay file headless; the runner's lines, or none when it cannot be read. The sight
// check's figures of each level played go to sight when given.
std::vector<std::string> Play(const std::string& path, std::vector<HiddenRun>* sight = nullptr) {
    std::vector<std::string> lines;
    int ticks = sight ? CheckReplaySight(path.c_str(), *sight, Collect, &lines)
                      : RunReplayFile(path.c_str(), Collect, &lines);
    if (ticks < 0) {
        lines.clear();
    }
    return lines;
}

// The solution's "ticks T, air A, score S" from each level's row of the table in docs/levels.md
// ("| 01 | name | teaches | pieces | entities | triangles | ticks | air | score | bake |").
std::map<int, std::string> DocumentedOutcomes() {
    static const std::regex kRow(R"(^\| (\d+) \|.*\| (\d+) \| ([\d.]+) \| (\d+) \| [^|]* \|$)");
    std::map<int, std::string> rows;
    std::ifstream doc(std::string(VANTLE_SOURCE_DIR) + "/docs/levels.md");
    std::smatch row;
    for (std::string line; std::getline(doc, line);) {
        if (std::regex_match(line, row, kRow)) {
            rows[std::stoi(row[1])] = "ticks " + row[2].str() + ", air " + row[3].str() + ", score " + row[4].str();
        }
    }
    return rows;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines) {
        all += line + "\n";
    }
    return all;
}

// The whole game in one replay: from level 1 with three lives through every
// shipped level in order to the winning scene, with no life lost, and with
// exactly the points that each level's own solution scores from nothing, which
// also proves the chained replay plays each level as its solution does. Each
// solution also ends at the very tick, air and score that docs/levels.md gives
// for it: a change to the rules that moves any of them is seen here, and the
// table is written again (scripts/level_table.sh) when the change is meant.
TEST(ShippedLevels, TheWholeGameIsWonWithEveryLevelsPoints) {
    std::string data = std::string(VANTLE_RUN_DIR) + "/data";
    if (!std::filesystem::exists(data)) {
        GTEST_SKIP() << "no built content in " << data;
    }
    strcpy(g_resources.dataDirectory, data.c_str());
    std::string solutions = std::string(VANTLE_SOURCE_DIR) + "/content/solutions/";
    std::map<int, std::string> documented = DocumentedOutcomes();
    unsigned int points = 0;
    int levels = 0;
    for (int n = 1; n < 100; n++) {
        char name[32];
        snprintf(name, sizeof(name), "levels\\%02i.vlc", n);
        if (!g_resources.Open(name)) {
            break;
        }
        levels++;
        snprintf(name, sizeof(name), "%02i.replay", n);
        std::vector<HiddenRun> sight;
        std::vector<std::string> lines = Play(solutions + name, &sight);
        ASSERT_EQ(g_demo.replay.score, 0u) << name << " should start from no points";
        ASSERT_EQ(sight.size(), 1u) << name;
        char hidden[160];
        FormatHiddenRun(sight[0], hidden, sizeof(hidden));
        EXPECT_LE(sight[0].longest, kMostHiddenTicks) << hidden << " (vantle-sim --visibility)";
        char format[64];
        snprintf(format, sizeof(format), "level %02i: completed at tick %%u, score %%u, air %%f", n);
        unsigned int scored = 0, ticks = 0;
        float airLeft = 0.0f;
        for (const std::string& line : lines) {
            if (sscanf(line.c_str(), format, &ticks, &scored, &airLeft) == 3) {
                break;
            }
        }
        ASSERT_GT(scored, 0u) << name << ":\n" << Joined(lines);
        char outcome[64];
        snprintf(outcome, sizeof(outcome), "ticks %u, air %.1f, score %u", ticks, airLeft, scored);
        EXPECT_EQ(outcome, documented[n]) << name << " against docs/levels.md";
        points += scored;
    }
    ASSERT_GT(levels, 0) << "the content ships no levels";

    std::vector<std::string> lines = Play(solutions + "game.replay");
    ASSERT_FALSE(lines.empty()) << "cannot play " << solutions << "game.replay";
    EXPECT_EQ(g_demo.replay.level, 1);
    EXPECT_EQ(g_demo.replay.lives, 3);
    EXPECT_EQ(g_demo.replay.score, 0u);
    ASSERT_EQ(lines.size(), static_cast<size_t>(levels + 1)) << Joined(lines);
    for (int n = 1; n <= levels; n++) {
        char finished[32];
        snprintf(finished, sizeof(finished), "level %02i: completed", n);
        EXPECT_EQ(lines[n - 1].rfind(finished, 0), 0u) << Joined(lines);
    }
    char won[64];
    snprintf(won, sizeof(won), "game: won, score %u, lives 3", points);
    EXPECT_EQ(lines.back(), won) << Joined(lines);

    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    g_location.Clear();
    g_location.lightmaps.Clear();
    closingLocation.Clear();
    strcpy(g_resources.dataDirectory, "data");
}

}  // namespace
