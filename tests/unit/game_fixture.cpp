#include "game_fixture.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_hooks.h"
#include "audio/music_player.h"
#include "audio/music_stream.h"
#include "game/closing_scene.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/game_update.h"
#include "game/level_loading.h"
#include "game/particles.h"
#include "game/player.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"
#include "test_support.h"
#include "ui/text_batch.h"

namespace test {

void GameFixture::SetUp() {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string root =
        ScratchDir((std::string("game-") + info->test_suite_name() + "-" + info->name()).c_str());
    dataDir = root + "/data";
    std::filesystem::create_directories(dataDir + "/levels");
    strcpy(g_resources.dataDirectory, dataDir.c_str());
    // The player is 20 wide before narrowing (14 after) and 40 tall, standing on its origin.
    WriteBoxModel("delver.vmd", -10, 0, -10, 10, 40, 10);
    WriteBoxModel("light.vmd", -1, 0, -1, 1, 1, 1);
    WriteBoxModel("foot.vmd", -20, 0, -20, 20, 30, 20);
    WriteBoxModel("spikes.vmd", -10, 0, -10, 10, 10, 10);
    WriteBoxModel("keys.vmd", -5, 0, -5, 5, 10, 5);
    WriteBoxModel("door.vmd", -20, 0, -5, 20, 80, 5);
    WriteBoxModel("platform.vmd", -30, -5, -30, 30, 0, 30);
    WriteBoxModel("platform_collapse.vmd", -30, -5, -30, 30, 0, 30);
    WriteBoxModel("enemy01.vmd", -10, 0, -10, 10, 20, 10);

    g_location.Clear();
    // Lightmaps outlive a location's Clear; a shipped level's would be checked against these pieces.
    g_location.lightmaps.Clear();
    closingLocation.Clear();
    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    playerIndex = 0;
    memset(g_window.keys, 0, sizeof(g_window.keys));
    memset(g_window.joystickFlags, 0, sizeof(g_window.joystickFlags));
    g_window.flashIntensity = 0;
    g_window.fov = 45;
    savedJoystick = g_readJoystick;
    g_readJoystick = nullptr;
    // A level's start leaves these to the first tick; a test that ended on a belt must not leak.
    onConveyor = 0;
    g_debug = 0;
    paused = 0;
    pauseAngle = 0;
    animClock = 0;
    score = 0;
    highScore = 0;
    lives = 3;
    level = 1;
    loadedLevel = 1;
    g_scene = SceneGame;
    ResetRand();
    ResetParticles();
    g_levelTitleText.Reset();
    g_scoreText.Reset();
    g_completedText.Reset();
    InitGame();
    InitClosingScene();
    strcpy(g_location.name, "Test Level");
}

void GameFixture::TearDown() {
    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    g_location.Clear();
    closingLocation.Clear();
    lampModel.Clear();
    strcpy(g_resources.dataDirectory, "data");
    g_readJoystick = savedJoystick;
    // The rules stop the music (a death, the closing scene): without a sound device that leaves
    // streams with no source behind, which a later test's music would be started in.
    for (MusicStream*& stream : g_music.streams) {
        delete stream;
        stream = nullptr;
    }
}

LocationPiece* GameFixture::AddPiece(const char* name, const char* texture, float x0, float y0, float z0,
                                     float x1, float y1, float z1) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    strcpy(piece->name, name);
    strcpy(piece->textureName, texture);
    const float min[3] = {x0, y0, z0};
    const float max[3] = {x1, y1, z1};
    MakeBoxModel(piece->model, min, max, 1.0f);
    piece->model.modelFlag = 0x40;
    g_location.pieces[g_location.pieceCount++] = piece;
    return piece;
}

void GameFixture::Floor(const char* name) {
    AddPiece(name, "textures\\01\\rock.tga", -400, -100, -400, 400, 0, 400);
}

LocationEntity* GameFixture::AddEntity(const char* name, float x, float y, float z, float yaw) {
    LocationEntity* entity = new LocationEntity;
    strncpy(entity->name, name, sizeof(entity->name) - 1);
    entity->params = strdup("");
    entity->position[0] = x;
    entity->position[1] = y;
    entity->position[2] = z;
    entity->rotation[1] = yaw;
    g_location.entities[g_location.entityCount++] = entity;
    return entity;
}

void GameFixture::WriteBoxModel(const char* name, float x0, float y0, float z0, float x1, float y1,
                                float z1) {
    Model model;
    const float min[3] = {x0, y0, z0};
    const float max[3] = {x1, y1, z1};
    ASSERT_EQ(MakeBoxModel(model, min, max, 1.0f), 1);
    std::string path = dataDir + "/" + name;
    std::replace(path.begin(), path.end(), '\\', '/');
    std::filesystem::create_directories(path.substr(0, path.rfind('/')));
    ASSERT_EQ(model.Save(path.c_str()), 1) << path;
}

void GameFixture::SaveLocation(const Location& location, const char* name) {
    std::string path = dataDir + "/levels/" + name;
    ASSERT_EQ(location.Save(path.c_str()), 1) << path;
}

void GameFixture::SaveEndScene(std::initializer_list<const char*> names) {
    Location scene;
    strcpy(scene.name, "The End");
    for (const char* name : names) {
        LocationEntity* entity = new LocationEntity;
        strcpy(entity->name, name);
        entity->params = strdup("");
        scene.entities[scene.entityCount++] = entity;
    }
    SaveLocation(scene, "end.vlc");
}

void GameFixture::EnterGameOver() {
    AddEntity("player", 0, 0, 0);
    StartLevel();
    lives = 0;
    StartLevel();
    ASSERT_EQ(g_scene, SceneEnd);
}

void GameFixture::StartLevel() {
    LoadLevel();
}

void GameFixture::Tick(int n) {
    for (int i = 0; i < n; i++) {
        UpdateGame();
    }
}

GameObject* GameFixture::Find(const char* name) {
    for (int i = 0; i < kMaxObjects; i++) {
        if (objects[i] && strcmp(objects[i]->name, name) == 0) {
            return objects[i];
        }
    }
    return nullptr;
}

int GameFixture::SlotOf(const GameObject* object) {
    for (int i = 0; i < kMaxObjects; i++) {
        if (objects[i] && objects[i] == object) {
            return i;
        }
    }
    return -1;
}

void GameFixture::Key(int key, int down) {
    g_window.keys[key] = static_cast<uint8_t>(down);
}

bool GameFixture::EntryReads(const TextBatch& batch, int entry, const char* text) {
    const TextEntry& e = batch.entries[entry];
    if (entry >= batch.count || e.length != static_cast<int>(strlen(text))) {
        return false;
    }
    for (int i = 0; text[i]; i++) {
        if (e.glyphs[i] != TextBatch::GlyphIndex(static_cast<unsigned char>(text[i]))) {
            return false;
        }
    }
    return true;
}

}  // namespace test
