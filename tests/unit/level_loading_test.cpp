// Level loading: the entity-kind table with its prefixes and narrowed boxes,
// the files a level number names, the restart that keeps the location, and
// the two ways into the closing scenes.
#include "game/level_loading.h"

#include <cstring>

#include "app/gl_window.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game_fixture.h"
#include "resources/location.h"
#include "resources/model_shapes.h"
#include "ui/text_batch.h"

namespace {

class LevelLoadingTest : public test::GameFixture {};

TEST_F(LevelLoadingTest, EntityNamesPickTheirKindModelTextureAndBox) {
    WriteBoxModel("enemy02.vmd", -10, 0, -10, 10, 20, 10);
    AddEntity("player", 1, 2, 3, 45);
    AddEntity("spikes_left", 10, 0, 0);
    AddEntity("spik", 20, 0, 0);
    AddEntity("keyA", 30, 0, 0);
    AddEntity("exit_main", 40, 0, 0);
    AddEntity("platformX", 50, 0, 0);
    AddEntity("collapse_1", 60, 0, 0);
    AddEntity("foot", 70, 50, 0);
    AddEntity("light_blue", 80, 0, 0);
    AddEntity("enemy02", 90, 0, 0);
    AddEntity("enemy02_route00", 95, 5, 0);
    AddEntity("enemy02_route01", 99, 5, 0);
    AddEntity("enemy_without_model", 0, 0, 0);
    StartLevel();
    struct Expect {
        const char* name;
        const char* type;
        float halfWidth;  // x of the box's max corner
    } expected[] = {
        {"player", "player", 7},
        {"spikes_left", "spikes", 7},
        {"keyA", "key", 5},
        {"exit_main", "exit", 20},
        {"platformX", "platform", 30},
        {"collapse_1", "collapse", 21},
        {"foot", "foot", 14},
        {"enemy02", "enemy", 7},
    };
    int count = 0;
    for (GameObject* object : objects) {
        count += object != nullptr;
    }
    EXPECT_EQ(count, 8) << "spik, the light, route points and an enemy without a model make nothing";
    for (const Expect& e : expected) {
        GameObject* object = Find(e.name);
        ASSERT_NE(object, nullptr) << e.name;
        EXPECT_STREQ(object->type, e.type);
        int slot = SlotOf(object);
        ASSERT_NE(g_collision.slots[slot], nullptr);
        const CollisionBox& box = g_collision.slots[slot]->boxes[0];
        EXPECT_FLOAT_EQ(box.max[0], e.halfWidth) << e.name;
        EXPECT_FLOAT_EQ(box.min[0], -e.halfWidth) << e.name;
    }
    EXPECT_FLOAT_EQ(player->rotation[1], 45.0f);
    GameObject* foot = Find("foot");
    EXPECT_FLOAT_EQ(foot->position[1], 450.0f);
    EXPECT_FLOAT_EQ(Find("enemy02")->position[0], 95.0f) << "an enemy starts on its first route point";
    // The foot is the last camera-placed row: 10 ahead of it along yaw 0.
    EXPECT_FLOAT_EQ(g_camera.position.z, 10.0f);
    EXPECT_FLOAT_EQ(g_camera.position.y, 450.0f);
}

TEST_F(LevelLoadingTest, ANewLevelNumberReadsItsFileAndARestartKeepsTheLocation) {
    Location source;
    strcpy(source.name, "Second Cavern");
    LocationEntity* entity = new LocationEntity;
    strcpy(entity->name, "player");
    entity->params = strdup("");
    entity->position[0] = 40;
    source.entities[source.entityCount++] = entity;
    SaveLocation(source, "07.vlc");
    level = 7;
    air = 3;
    StartLevel();
    EXPECT_EQ(loadedLevel, 7);
    EXPECT_EQ(g_scene, SceneGame);
    EXPECT_STREQ(g_location.name, "Second Cavern");
    EXPECT_TRUE(EntryReads(g_levelTitleText, 0, "Second Cavern"));
    EXPECT_TRUE(EntryReads(g_scoreText, 1, "Score:00000"));
    ASSERT_NE(player, nullptr);
    EXPECT_FLOAT_EQ(player->position[0], 40.0f);
    EXPECT_FLOAT_EQ(air, 100.0f);
    EXPECT_EQ(onGround, 1);
    EXPECT_FLOAT_EQ(lastGround[0], 40.0f);
    // A restart does not read the file again: an entity added in memory appears.
    AddEntity("key01", 0, 0, 0);
    std::remove((dataDir + "/levels/07.vlc").c_str());
    lives = 2;
    StartLevel();
    EXPECT_EQ(g_scene, SceneGame);
    EXPECT_NE(Find("key01"), nullptr);
    // From the title menu the file is read even for the same number.
    g_scene = SceneMenu;
    StartLevel();
    EXPECT_EQ(g_scene, SceneEnd);
    EXPECT_STREQ(endScenePath, "levels\\done.vlc");
}

}  // namespace
