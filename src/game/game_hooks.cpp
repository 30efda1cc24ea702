#include "game/game_hooks.h"

#include <strings.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/console.h"
#include "app/scene_hooks.h"
#include "game/closing_scene.h"
#include "game/demo.h"
#include "game/game_object.h"
#include "game/game_state.h"
#include "game/game_update.h"
#include "game/particles.h"
#include "ui/text_batch.h"

static void ShowHighScore() {
    g_scoreText.SetTextF(0, "High-score:%05i", static_cast<int>(highScore));
    g_scoreText.Build();
}

// A demo asked for before start-up has finished (from autoexec.vbt) waits for its end: the
// steps after the script set up the game and load the title scene, and would undo its start.
static int s_startupDone;
static char s_pendingCommand[16];
static char s_pendingArguments[300];

// The last step of start-up: the closing scene's reset, then a demo that was waiting.
static void FinishGameStartup() {
    InitClosingScene();
    s_startupDone = 1;
    if (s_pendingCommand[0]) {
        GameCommand(s_pendingCommand, s_pendingArguments);
        s_pendingCommand[0] = 0;
    }
}

// Shutdown: a recording still running is saved before the objects go.
static void ShutdownGame() {
    g_demo.Stop();
    DeleteAllObjects();
}

void InstallGameHooks() {
    g_hooks.updateGame = GameSceneTick;
    g_hooks.updateClosingScene = UpdateClosingScene;
    g_hooks.resetParticles = ResetParticles;
    g_hooks.loadGameSounds = InitGame;
    g_hooks.resetClosingScene = FinishGameStartup;
    g_hooks.releaseGameObjects = ShutdownGame;
    g_hooks.highScoreChanged = ShowHighScore;
    g_hooks.gameCommand = GameCommand;
}

// Splits "file [level]"; the file name ends at the first blank.
static void FileAndLevel(const char* arguments, char* file, int size, int* startLevel) {
    while (*arguments == ' ') {
        arguments++;
    }
    int n = 0;
    while (arguments[n] && arguments[n] != ' ' && n < size - 1) {
        file[n] = arguments[n];
        n++;
    }
    file[n] = 0;
    const char* rest = arguments + n;
    *startLevel = *rest ? atoi(rest) : 1;
}

int GameCommand(const char* word, const char* arguments) {
    char file[260];
    int startLevel = 1;
    FileAndLevel(arguments, file, sizeof(file), &startLevel);
    int starts = !strcasecmp(word, "DEMO_RECORD") || !strcasecmp(word, "DEMO_PLAY");
    if (starts && !s_startupDone && g_hooks.resetClosingScene == FinishGameStartup) {
        CopyName(s_pendingCommand, word, sizeof(s_pendingCommand));
        CopyName(s_pendingArguments, arguments, sizeof(s_pendingArguments));
        return 1;
    }
    if (!strcasecmp(word, "DEMO_RECORD")) {
        if (!file[0] || !g_demo.StartRecording(file, startLevel)) {
            g_console.Print("DEMO_RECORD <file> [level]");
        } else {
            g_console.Print("Recording demo %s from level %i", file, startLevel);
        }
    } else if (!strcasecmp(word, "DEMO_PLAY")) {
        if (!file[0]) {
            g_console.Print("DEMO_PLAY <file>");
        } else if (!g_demo.StartPlayback(file)) {
            g_console.Print("%s: %s", file, g_demo.replay.error);
        } else {
            g_console.Print("Playing demo %s", file);
        }
    } else if (!strcasecmp(word, "DEMO_STOP")) {
        int recording = g_demo.mode == DemoRecording;
        int saved = g_demo.Stop();
        if (recording) {
            g_console.Print(saved ? "Demo saved to %s" : "Could not write %s", g_demo.path);
        }
    } else {
        return 0;
    }
    return 1;
}
