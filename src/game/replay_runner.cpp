#include "game/replay_runner.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "app/scene_hooks.h"
#include "game/closing_scene.h"
#include "game/demo.h"
#include "game/game_state.h"
#include "game/game_update.h"
#include "game/hazards.h"

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

unsigned int RunLoadedReplay(ReplayReport report, void* context) {
    InitGame();
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
        ReportTick(before, watch, t, report, context);
    }
    g_demo.Stop();
    if (g_scene == SceneGame) {
        Report(report, context, "level %02i: inputs ended at tick %u, score %u, air %.1f, lives %i", level, t,
               score, air, lives);
    }
    return t;
}

int RunReplayFile(const char* path, ReplayReport report, void* context) {
    if (!g_demo.replay.Load(path)) {
        Report(report, context, "%s: %s", path, g_demo.replay.error);
        return -1;
    }
    return static_cast<int>(RunLoadedReplay(report, context));
}
