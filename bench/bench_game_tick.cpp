// The game tick, the work the main loop does 50 times a second and that
// vantle-sim does as fast as it can. Two levels built in memory are played
// side by side with the same walking, turning and jumping input: a bare one
// (a floor and the player) and a busy one (200 solid pieces, 60 enemies on
// routes, spikes, keys, platforms and the dust and sparkle emitters).
// Printed: the average and slowest tick of each against the 20 ms the tick
// has, how many times faster than real time each plays, and their ratio.
//
//   build/bench/bench_game_tick [ticks]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "app/gl_window.h"
#include "app/scene_hooks.h"
#include "game/collision_world.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/game_update.h"
#include "game/level_loading.h"
#include "game/particles.h"
#include "platform/sys_keys.h"
#include "resources/location.h"
#include "resources/model.h"
#include "resources/model_shapes.h"
#include "resources/resource_manager.h"

namespace {

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void SaveBox(const std::string& path, float half, float height) {
    Model model;
    const float min[3] = {-half, 0, -half};
    const float max[3] = {half, height, half};
    MakeBoxModel(model, min, max, 1.0f);
    model.Save(path.c_str());
}

void AddPiece(const char* name, float x0, float y0, float z0, float x1, float y1, float z1) {
    LocationPiece* piece = new LocationPiece;
    memset(piece->name, 0, sizeof(piece->name));
    memset(piece->textureName, 0, sizeof(piece->textureName));
    strcpy(piece->name, name);
    strcpy(piece->textureName, "textures\\01\\rock.tga");
    const float min[3] = {x0, y0, z0};
    const float max[3] = {x1, y1, z1};
    MakeBoxModel(piece->model, min, max, 1.0f);
    piece->model.modelFlag = 0x40;
    g_location.pieces[g_location.pieceCount++] = piece;
}

void AddEntity(const char* name, float x, float y, float z) {
    LocationEntity* entity = new LocationEntity;
    strcpy(entity->name, name);
    entity->params = strdup("");
    entity->position[0] = x;
    entity->position[1] = y;
    entity->position[2] = z;
    g_location.entities[g_location.entityCount++] = entity;
}

void BuildLevel(int busy) {
    g_location.Clear();
    AddPiece("floor", -2000, -100, -2000, 2000, 0, 2000);
    AddEntity("player", 0, 0, 0);
    if (!busy) {
        return;
    }
    char name[48];
    for (int i = 0; i < 199; i++) {
        float x = static_cast<float>(-1800 + (i % 20) * 180), z = static_cast<float>(600 + (i / 20) * 120);
        snprintf(name, sizeof(name), "block%03i", i);
        AddPiece(name, x, 0, z, x + 40, 30, z + 40);
    }
    for (int i = 0; i < 60; i++) {
        float x = static_cast<float>(-1500 + (i % 10) * 300), z = static_cast<float>(-1500 + (i / 10) * 150);
        snprintf(name, sizeof(name), "enemy%02i", i);
        AddEntity(name, x, 0, z);
        for (int p = 0; p < 4; p++) {
            char point[64];
            snprintf(point, sizeof(point), "%s_route%02i", name, p);
            AddEntity(point, x + (p == 1 || p == 2 ? 100 : 0), 0, z + (p >= 2 ? 100 : 0));
        }
    }
    const char* kinds[3] = {"spikes", "key", "platform"};
    for (int i = 0; i < 30; i++) {
        snprintf(name, sizeof(name), "%s%02i", kinds[i % 3], i);
        AddEntity(name, static_cast<float>(1200 + (i % 6) * 100), 0,
                  static_cast<float>(-600 + (i / 6) * 100));
    }
    AddEntity("particle_dirt", 0, 300, 0);
    AddEntity("particle_sparkles", 0, 200, 0);
}

// Plays ticks of the level with a fixed input pattern; returns the total and the slowest tick.
double Play(int ticks, double* slowest) {
    g_scene = SceneGame;
    level = loadedLevel = 1;
    lives = 3;
    ResetParticles();
    LoadLevel();
    *slowest = 0;
    double start = Now();
    for (int t = 0; t < ticks; t++) {
        g_window.keys[VK_UP] = (t / 100) % 2 == 0;
        g_window.keys[VK_LEFT] = (t % 100) < 20;
        if (t % 60 == 0) {
            g_window.keys[VK_SPACE] = 1;
        }
        if (t % 1000 == 999) {
            air = 100.0f;  // keep the player alive for the whole run
        }
        double before = Now();
        UpdateGame();
        double took = Now() - before;
        *slowest = took > *slowest ? took : *slowest;
    }
    if (lives != 3 || g_scene != SceneGame) {
        printf("  (the player died %d times: restarts are in the figures)\n", 3 - lives);
    }
    return Now() - start;
}

}  // namespace

int main(int argc, char** argv) {
    int ticks = argc > 1 ? atoi(argv[1]) : 20000;
    std::string dir = (std::filesystem::temp_directory_path() / "vantle_bench_game_tick").string();
    std::filesystem::create_directories(dir);
    SaveBox(dir + "/delver.vmd", 10, 40);
    SaveBox(dir + "/light.vmd", 1, 1);
    SaveBox(dir + "/spikes.vmd", 10, 10);
    SaveBox(dir + "/keys.vmd", 5, 10);
    SaveBox(dir + "/platform.vmd", 30, 5);
    char name[64];
    for (int i = 0; i < 60; i++) {
        snprintf(name, sizeof(name), "/enemy%02i.vmd", i);
        SaveBox(dir + name, 10, 20);
    }
    strcpy(g_resources.dataDirectory, dir.c_str());
    InitGame();

    double slowBare = 0, slowBusy = 0;
    BuildLevel(0);
    double bare = Play(ticks, &slowBare);
    BuildLevel(1);
    double busy = Play(ticks, &slowBusy);
    int objectCount = 0;
    for (GameObject* object : objects) {
        objectCount += object != nullptr;
    }
    const double tick = 0.020;
    printf("game tick, %d ticks per level (%d objects in the busy level, %d pieces)\n", ticks, objectCount,
           static_cast<int>(g_location.pieceCount));
    printf("  bare level: %8.2f us per tick, slowest %8.2f us (%.4f of the 20 ms tick), %8.0fx real time\n",
           bare / ticks * 1e6, slowBare * 1e6, slowBare / tick, ticks * tick / bare);
    printf("  busy level: %8.2f us per tick, slowest %8.2f us (%.4f of the 20 ms tick), %8.0fx real time\n",
           busy / ticks * 1e6, slowBusy * 1e6, slowBusy / tick, ticks * tick / busy);
    printf("  busy / bare: %.2f\n", busy / bare);
    g_collision.Clear();
    DeleteAllObjects();
    g_location.Clear();
    std::filesystem::remove_all(dir);
    return 0;
}
