#include "game/replay_runner.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "app/scene_hooks.h"
#include "game/closing_scene.h"
#include "game/collision_world.h"
#include "game/demo.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/game_update.h"
#include "game/hazards.h"
#include "ui/text_batch.h"

// What the runner compares before and after each tick.
struct TickWatch {
    int level;
    int lives;
    int complete;
    float finishAir;  // the air left when the finish was touched
};

static void Report(ReplayReport report, void* context, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

static void Report(ReplayReport report, void* context, const char* format, ...) {
    char line[256];
    va_list args;
    va_start(args, format);
    vsnprintf(line, sizeof(line), format, args);
    va_end(args);
    report(line, context);
}

static void ReportTick(const TickWatch& before, TickWatch& watch, unsigned int t, ReplayReport report,
                       void* context) {
    if (levelComplete && !before.complete) {
        watch.finishAir = air;
    }
    if (level != before.level) {
        Report(report, context, "level %02i: completed at tick %u, score %u, air %.1f, lives %i",
               before.level, t, score, watch.finishAir, lives);
    } else if (lives < before.lives) {
        Report(report, context, "level %02i: died at tick %u (%s), lives %i", before.level, t, g_deathCause,
               lives);
    }
    if (g_scene == SceneEnd) {
        if (strcmp(endScenePath, "levels\\done.vlc") == 0) {
            Report(report, context, "game: won, score %u, lives %i", score, lives);
        } else {
            Report(report, context, "game: over, score %u", score);
        }
    }
    watch.level = level;
    watch.lives = lives;
    watch.complete = levelComplete;
}

// Two decimals without "-0.00" for values that only miss zero by rounding.
static float Tidy(float v) {
    return v > -0.005f && v < 0.005f ? 0.0f : v;
}

static void TracePlayer(unsigned int t, ReplayReport report, void* context) {
    if (!player) {
        Report(report, context, "tick %u: no player", t);
        return;
    }
    const float* p = player->position;
    Report(report, context, "tick %u: %.2f %.2f %.2f yaw %.1f state %i ground %i air %.1f", t, Tidy(p[0]),
           Tidy(p[1]), Tidy(p[2]), player->rotation[1], player->state, onGround, air);
}

// Each run is a whole program's game: what an earlier run left (objects, the HUD lines that the
// set-up adds) goes first, since the set-up itself only empties the object table.
static void FreshGame() {
    g_collision.Clear();
    DeleteAllObjects();
    player = nullptr;
    g_levelTitleText.Reset();
    g_scoreText.Reset();
    g_completedText.Reset();
    InitGame();
}

unsigned int RunLoadedReplay(ReplayReport report, void* context, int trace, ReplayTick onTick,
                             void* tickContext) {
    FreshGame();
    InitClosingScene();
    g_deathCause = "";
    g_demo.StartLoadedPlayback();
    TickWatch watch = {level, lives, levelComplete, 0.0f};
    unsigned int length = g_demo.replay.length;
    unsigned int t = 0;
    if (g_scene != SceneGame) {
        ReportTick(watch, watch, 0, report, context);
    }
    for (; t < length && g_scene == SceneGame; t++) {
        TickWatch before = watch;
        GameSceneTick();
        if (trace && g_scene == SceneGame) {
            TracePlayer(t, report, context);
        }
        if (onTick) {
            onTick(t, tickContext);
        }
        ReportTick(before, watch, t, report, context);
    }
    g_demo.Stop();
    if (g_scene == SceneGame) {
        Report(report, context, "level %02i: inputs ended at tick %u, score %u, air %.1f, lives %i", level, t,
               score, air, lives);
    }
    return t;
}

int RunReplayFile(const char* path, ReplayReport report, void* context, int trace, ReplayTick onTick,
                  void* tickContext) {
    if (!g_demo.replay.Load(path)) {
        Report(report, context, "%s: %s", path, g_demo.replay.error);
        return -1;
    }
    return static_cast<int>(RunLoadedReplay(report, context, trace, onTick, tickContext));
}
