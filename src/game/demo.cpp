#include "game/demo.h"

#include <cstring>

#include "app/console.h"
#include "app/gl_window.h"
#include "app/random.h"
#include "app/scene_camera.h"
#include "app/scene_hooks.h"
#include "game/game_state.h"
#include "game/game_update.h"
#include "game/level_loading.h"
#include "game/player.h"
#include "platform/sys_joystick.h"
#include "platform/sys_keys.h"

const unsigned char DemoDriver::kRuleKeys[kRuleKeyCount] = {VK_UP, VK_DOWN, VK_LEFT, VK_RIGHT, VK_SPACE,
                                                            'P',   'G',     'O',     'L'};

// The joystick reader the game had before a demo swapped it.
static int (*s_realJoystick)(SysJoystickState* out);

static int RecordingJoystick(SysJoystickState* out) {
    DemoDriver& d = g_demo;
    int valid = s_realJoystick ? s_realJoystick(out) : 0;
    unsigned short x = valid ? static_cast<unsigned short>(out->x > 65535 ? 65535 : out->x) : 0;
    unsigned short y = valid ? static_cast<unsigned short>(out->y > 65535 ? 65535 : out->y) : 0;
    if (valid != d.joystickValid || (valid && (x != d.joystickX || y != d.joystickY))) {
        d.replay.AddEvent(d.tick, valid ? ReplayJoystick : ReplayJoystickOff, 0, x, y);
        d.joystickValid = valid;
        d.joystickX = x;
        d.joystickY = y;
    }
    if (valid) {
        // What the rules see is exactly what the file keeps.
        out->x = x;
        out->y = y;
    }
    return valid;
}

static int PlaybackJoystick(SysJoystickState* out) {
    const DemoDriver& d = g_demo;
    if (!d.joystickValid) {
        return 0;
    }
    memset(out, 0, sizeof(*out));
    out->x = d.joystickX;
    out->y = d.joystickY;
    return 1;
}

DemoDriver::DemoDriver()
    : mode(DemoIdle), tick(0), nextEvent(0), joystickValid(0), joystickX(0), joystickY(0), shownLevel(0) {
    memset(lastKeys, 0, sizeof(lastKeys));
    memset(path, 0, sizeof(path));
}

void DemoDriver::StartGame() {
    level = replay.level;
    lives = replay.lives;
    score = replay.score;
    SetRandState(replay.randState);
    g_debug = replay.debug;
    paused = 0;
    pauseAngle = 0;
    g_camera.pitch = 0;
    g_camera.yaw = 0;
    g_camera.roll = 0;
    for (unsigned char key : kRuleKeys) {
        g_window.keys[key] = 0;
    }
    g_window.joystickFlags[JoyLatchUp] = 0;
    memset(lastKeys, 0, sizeof(lastKeys));
    tick = 0;
    nextEvent = 0;
    joystickValid = 0;
    joystickX = 0;
    joystickY = 0;
    g_scene = SceneMenu;
    LoadLevel();
    shownLevel = level;
}

int DemoDriver::StartRecording(const char* file, int startLevel) {
    if (mode != DemoIdle) {
        Stop();
    }
    if (!file || !file[0] || startLevel < 1 || startLevel > Replay::kMaxLevel) {
        return 0;
    }
    replay.Clear();
    replay.level = startLevel;
    replay.lives = 3;
    replay.score = score;
    replay.highScore = highScore;
    replay.randState = RandState();
    replay.debug = g_debug;
    strncpy(path, file, sizeof(path) - 1);
    s_realJoystick = g_readJoystick;
    g_readJoystick = RecordingJoystick;
    mode = DemoRecording;
    StartGame();
    return 1;
}

int DemoDriver::StartPlayback(const char* file) {
    if (mode != DemoIdle) {
        Stop();
    }
    if (!file || !replay.Load(file)) {
        return 0;
    }
    StartLoadedPlayback();
    return 1;
}

void DemoDriver::StartLoadedPlayback() {
    s_realJoystick = g_readJoystick;
    g_readJoystick = PlaybackJoystick;
    mode = DemoPlaying;
    StartGame();
}

void DemoDriver::Finish() {
    g_readJoystick = s_realJoystick;
    if (mode == DemoPlaying) {
        for (unsigned char key : kRuleKeys) {
            g_window.keys[key] = 0;
        }
    }
    mode = DemoIdle;
}

int DemoDriver::Stop() {
    int saved = 0;
    if (mode == DemoRecording) {
        replay.length = tick;
        saved = replay.Save(path);
    }
    if (mode != DemoIdle) {
        Finish();
    }
    return saved;
}

void DemoDriver::BeforeTick() {
    if (mode == DemoRecording) {
        for (unsigned char key : kRuleKeys) {
            uint8_t now = g_window.keys[key] ? 1 : 0;
            if (now != lastKeys[key]) {
                replay.AddEvent(tick, now ? ReplayKeyDown : ReplayKeyUp, key, 0, 0);
            }
        }
    } else if (mode == DemoPlaying) {
        while (nextEvent < replay.eventCount && replay.events[nextEvent].tick <= tick) {
            const ReplayEvent& e = replay.events[nextEvent++];
            if (e.kind == ReplayKeyDown || e.kind == ReplayKeyUp) {
                g_window.keys[e.key] = e.kind == ReplayKeyDown;
            } else {
                joystickValid = e.kind == ReplayJoystick;
                joystickX = e.joyX;
                joystickY = e.joyY;
            }
        }
    }
}

void DemoDriver::AfterTick() {
    if (mode == DemoIdle) {
        return;
    }
    tick++;
    if (g_scene != SceneGame) {
        // The game is over: a demo covers the levels and ends with them.
        int playing = mode == DemoPlaying;
        Stop();
        if (playing) {
            g_console.Print("Demo finished after %u ticks", tick);
        }
        return;
    }
    if (level != shownLevel) {
        // Counted from 0 like the ticks of the file, so the line matches vantle-sim's.
        g_console.Print("Demo: level %02i loaded at tick %u", static_cast<int>(level), tick - 1);
        shownLevel = level;
    }
    if (mode == DemoRecording) {
        for (unsigned char key : kRuleKeys) {
            lastKeys[key] = g_window.keys[key] ? 1 : 0;
        }
    } else if (tick >= replay.length) {
        Finish();
        g_console.Print("Demo finished after %u ticks", tick);
    }
}

void GameSceneTick() {
    g_demo.BeforeTick();
    UpdateGame();
    g_demo.AfterTick();
}
