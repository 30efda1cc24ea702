// The last shipped level played by its solution, pictured along the way against its pictures
// as taken: the rules, the lit scenery, enemies, belts and platforms in motion, the jump flames
// and sparkles, and the HUD all meet in these frames, so a change to any of them that a player
// would see shows here even where no narrower test looks.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/random.h"
#include "game/demo.h"
#include "game/replay_runner.h"
#include "scene_test_util.h"

namespace {

class LevelPicturesTest : public scenetest::SceneTest {};

// The runner's trace reports every tick; at each picture's tick the game view is drawn there
// and then, as the main loop would between two ticks.
void TakePictureAtItsTick(const char* line, void* context) {
    static const unsigned int kTicks[] = {420, 980, 2050};
    std::vector<std::string>& pictures = *static_cast<std::vector<std::string>*>(context);
    unsigned int tick = 0;
    if (pictures.size() == 3 || sscanf(line, "tick %u:", &tick) != 1 || tick != kTicks[pictures.size()]) {
        return;
    }
    g_window.BeginFrame();
    DrawGameView();
    drawtest::Frame frame = drawtest::ReadFrame();
    drawtest::SaveArtefact(("level10_tick" + std::to_string(tick)).c_str(), frame);
    pictures.push_back(drawtest::BlockMeans(frame));
}

// When the level is changed on purpose, run this with VANTLE_WRITE_SIGNATURE=1 to take the
// pictures again, and look at build/test-artefacts/level10_tick*.tga before committing them.
TEST_F(LevelPicturesTest, TheLastLevelAlongItsSolutionLooksAsItsPicturesWereTaken) {
    drawtest::UseShippedData();
    ResetRand();
    std::vector<std::string> pictures;
    std::string solution = std::string(VANTLE_SOURCE_DIR) + "/content/solutions/10.replay";
    ASSERT_GT(RunReplayFile(solution.c_str(), TakePictureAtItsTick, &pictures, 1), 0) << solution;
    ASSERT_EQ(pictures.size(), 3u);
    EXPECT_EQ(drawtest::BlocksUnlike("level_signature.txt", pictures[0] + pictures[1] + pictures[2]), 0)
        << "blocks of level 10 unlike its pictures (see level10_tick*.tga)";
    g_levelTitleText.Reset();
    g_scoreText.Reset();
    g_completedText.Reset();
}

}  // namespace
