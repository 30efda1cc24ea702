// The real program plays a level from a replay named in autoexec.vbt: the
// demo drives the key table through the game's own ticks, collects the key,
// reaches the finish, the tally runs, the missing next level ends the game
// won, and the high score the demo earned is in config.vbt at exit.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "game/replay.h"
#include "platform/sys_keys.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/model_shapes.h"
#include "test_support.h"

namespace {

void SaveBox(const std::string& path, float x0, float y0, float z0, float x1, float y1, float z1) {
    Model model;
    const float min[3] = {x0, y0, z0};
    const float max[3] = {x1, y1, z1};
    ASSERT_EQ(MakeBoxModel(model, min, max, 1.0f), 1);
    ASSERT_EQ(model.Save(path.c_str()), 1);
}

void AddPiece(Location& level, const char* name, float x0, float x1) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    strcpy(piece->name, name);
    strcpy(piece->textureName, "textures\\01\\rock.tga");
    const float min[3] = {x0, -100, -400};
    const float max[3] = {x1, 0, 400};
    MakeBoxModel(piece->model, min, max, 1.0f);
    piece->model.modelFlag = 0x40;
    level.pieces[level.pieceCount++] = piece;
}

void AddEntity(Location& level, const char* name, float x, float yaw) {
    LocationEntity* entity = new LocationEntity;
    strcpy(entity->name, name);
    entity->params = strdup("");
    entity->position[0] = x;
    entity->rotation[1] = yaw;
    level.entities[level.entityCount++] = entity;
}

TEST(DemoPlay, AutoexecPlaysALevelThroughToTheNextLevelLoad) {
    std::string run = test::ScratchDir("e2e_demo_play");
    std::filesystem::create_directories(run + "/data/levels");
    SaveBox(run + "/data/delver.vmd", -10, 0, -10, 10, 40, 10);
    SaveBox(run + "/data/keys.vmd", -5, 0, -5, 5, 10, 5);
    Location level;
    strcpy(level.name, "Demo Hall");
    AddPiece(level, "floor", -400, 300);
    AddPiece(level, "finish", 300, 400);
    AddEntity(level, "player", 0, 90);
    AddEntity(level, "key01", 60, 0);
    ASSERT_EQ(level.Save((run + "/data/levels/01.vlc").c_str()), 1);

    Replay replay;
    replay.length = 400;
    ASSERT_EQ(replay.AddEvent(5, ReplayKeyDown, VK_UP, 0, 0), 1);
    ASSERT_EQ(replay.Save((run + "/walk.replay").c_str()), 1);
    ASSERT_TRUE(test::WriteText(run + "/autoexec.vbt", "DEMO_PLAY walk.replay\n"));

    // Start the game, wait for the demo's last line, then close the window like a user.
    std::string script = "cd '" + run + "' && export ALSOFT_DRIVERS=null LIBGL_ALWAYS_SOFTWARE=1 " +
                         "VANTLE_NO_MESSAGE_BOX=1; '" + VANTLE_BINARY_DIR +
                         "/vantle2' >out.txt 2>err.txt & pid=$!; "
                         "for i in $(seq 1 900); do grep -q 'Demo finished' out.txt && break; "
                         "kill -0 $pid 2>/dev/null || break; sleep 0.1; done; "
                         "win=$(xdotool search --all --onlyvisible --pid $pid --name Vantle2 | head -1); "
                         "[ -n \"$win\" ] && python3 '" VANTLE_SOURCE_DIR
                         "/tests/e2e/tools/x_close_window.py' $win; "
                         "for i in $(seq 1 300); do kill -0 $pid 2>/dev/null || break; sleep 0.1; done; "
                         "kill $pid 2>/dev/null; wait $pid";
    std::string file = run + "/run.sh";
    ASSERT_TRUE(test::WriteText(file, script + "\n"));
    ASSERT_EQ(system(("bash '" + file + "'").c_str()), 0);

    std::vector<unsigned char> out = test::ReadFile(run + "/out.txt");
    std::string log(out.begin(), out.end());
    EXPECT_NE(log.find("Playing demo walk.replay\n"), std::string::npos) << log;

    // The headless runner plays the same replay; the program must end the same way.
    std::string sim = "cd '" + run + "' && '" + VANTLE_BINARY_DIR + "/vantle-sim' walk.replay > sim.txt";
    ASSERT_EQ(system(sim.c_str()), 0);
    std::vector<unsigned char> simOut = test::ReadFile(run + "/sim.txt");
    std::string lines(simOut.begin(), simOut.end());
    unsigned int tick = 0, score = 0, finalScore = 0, lives = 0;
    float air = 0;
    ASSERT_EQ(sscanf(lines.c_str(), "level 01: completed at tick %u, score %u, air %f, lives %u", &tick,
                     &score, &air, &lives),
              4)
        << lines;
    size_t won = lines.find("game: won, score ");
    ASSERT_NE(won, std::string::npos) << lines;
    ASSERT_EQ(sscanf(lines.c_str() + won, "game: won, score %u", &finalScore), 1);
    EXPECT_EQ(finalScore, score);
    EXPECT_EQ(lives, 3u);
    EXPECT_GT(score, 100u + 10u * 100u) << "the key and a tally of most of the air";
    EXPECT_NE(log.find("Demo finished after " + std::to_string(tick + 1) + " ticks\n"), std::string::npos)
        << log << lines;
    std::vector<unsigned char> config = test::ReadFile(run + "/config.vbt");
    std::string written(config.begin(), config.end());
    EXPECT_NE(written.find("HIGHSCORE " + std::to_string(score) + "\r\n"), std::string::npos) << written;
}

}  // namespace
