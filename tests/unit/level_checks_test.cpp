// The checks that keep playable levels honest: a level without a player, without
// a solid finish, or with anything put where the game camera cannot see it is
// refused with its file and line, by the checks alone and by the content build;
// the title and closing scenes are not held to them (the content build, which refuses what
// fails them, is what holds every shipped level to them).
#include "level_checks.h"

#include <gtest/gtest.h>
#include <sys/stat.h>


#include "asset_list.h"
#include "level_compiler.h"
#include "test_support.h"

namespace {

const char kGood[] =
    "location Good\n"
    "piece ground textures\\01\\grass.tga scale 64 solid\n"
    "    box -200 -20 -200  200 0 200\n"
    "piece seabed textures\\01\\rock.tga scale 64 solid\n"
    "    box -700 -230 -700  700 -200 700\n"
    "piece Finish textures\\01\\stone.tga scale 64 solid\n"
    "    box -20 0 -20  20 3 20\n"
    "entity player 0 1 150\n"
    "entity key01 480 0 0\n";

std::string Check(const std::string& text) {
    LevelSource source;
    std::string error;
    EXPECT_TRUE(ParseLevelSource(text, "07.lvl", &source, &error)) << error;
    return CheckPlayableLevel(source, &error) ? std::string("ok") : error;
}

std::string Replace(std::string text, const std::string& from, const std::string& to) {
    size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

TEST(LevelChecks, APlayableLevelPasses) {
    // A sea bed reaching past the camera is fine: part of it is in sight.
    EXPECT_EQ(Check(kGood), "ok");
}

TEST(LevelChecks, LevelsWithoutPlayerOrFinishAreRefused) {
    EXPECT_EQ(Check(Replace(kGood, "entity player 0 1 150\n", "")),
              "07.lvl:1: the level has no entity named player");
    // Only the entity named exactly "player" is steered.
    EXPECT_EQ(Check(Replace(kGood, "entity player ", "entity player_prop ")),
              "07.lvl:1: the level has no entity named player");
    EXPECT_EQ(Check(Replace(kGood, "piece Finish", "piece goal")),
              "07.lvl:1: the level has no solid piece named finish");
    // A finish the player cannot touch is no finish.
    EXPECT_EQ(Check(Replace(kGood, "scale 64 solid\n    box -20 0 -20", "scale 64\n    box -20 0 -20")),
              "07.lvl:1: the level has no solid piece named finish");
}

TEST(LevelChecks, ThingsOutOfTheCamerasSightAreRefused) {
    // An entity 506 units out along a diagonal, on its own line.
    EXPECT_EQ(Check(Replace(kGood, "entity key01 480 0 0", "entity key01 357.8 0 -357.8")),
              "07.lvl:9: entity 'key01' stands 506 units from the axis, beyond the camera at 505");
    EXPECT_EQ(Check(Replace(kGood, "entity key01 480 0 0", "entity key01 0 900 505")), "ok");
    // A shape lying wholly beyond the camera's circle, named by its own line.
    std::string far = Replace(kGood, "    box -20 0 -20  20 3 20\n",
                              "    box -20 0 -20  20 3 20\n    box 400 0 400  420 20 420\n");
    EXPECT_EQ(Check(far),
              "07.lvl:8: piece 'Finish' is built 566 units from the axis, beyond the camera at 505");
    // Turned shapes are judged where they end up: this one reaches in to 500
    // units, but turned about its centre it only comes to 510.
    std::string lying = Replace(kGood, "    box -20 0 -20  20 3 20\n",
                                "    box -20 0 -20  20 3 20\n    box 500 0 -10  540 5 10\n");
    EXPECT_EQ(Check(lying), "ok");
    EXPECT_EQ(Check(Replace(lying, "540 5 10\n", "540 5 10 turn 90\n")),
              "07.lvl:8: piece 'Finish' is built 510 units from the axis, beyond the camera at 505");
}

TEST(LevelChecks, TheContentBuildRefusesAnUnplayableLevel) {
    std::string dir = test::ScratchDir("level_checks");
    mkdir((dir + "/levels").c_str(), 0755);
    mkdir((dir + "/logo").c_str(), 0755);
    AssetList known;
    for (const char* name :
         {"textures\\01\\grass.tga", "textures\\01\\rock.tga", "textures\\01\\stone.tga"}) {
        known.Add(name, CONTENT_BASE_PACKAGE, std::vector<uint8_t>(4, 0));
    }
    // A closing scene has no player and no finish, and that is right for it.
    ASSERT_TRUE(test::WriteText(
        dir + "/levels/done.lvl",
        Replace(Replace(kGood, "entity player 0 1 150\n", ""), "piece Finish", "piece stage")));
    ASSERT_TRUE(test::WriteText(dir + "/levels/01.lvl", kGood));
    AssetList list = known;
    std::string error;
    EXPECT_TRUE(GenerateLevels(&list, dir, false, &error)) << error;
    EXPECT_NE(list.Find("levels\\01.vlc"), nullptr);
    EXPECT_NE(list.Find("levels\\done.vlc"), nullptr);

    ASSERT_TRUE(test::WriteText(dir + "/levels/02.lvl", Replace(kGood, "entity player 0 1 150\n", "")));
    list = known;
    EXPECT_FALSE(GenerateLevels(&list, dir, false, &error));
    EXPECT_NE(error.find("02.lvl:1: the level has no entity named player"), std::string::npos) << error;
}

}  // namespace
