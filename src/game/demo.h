// Demos: recording the game's input into a replay and playing a replay back
// through the same input path the keyboard uses. The rules read only the key
// table and the joystick, so a demo needs nothing else: before each game tick
// a recording compares the rule keys with the table as the previous tick left
// it (the rules clear some flags themselves, so that is the state a key press
// must be measured against) and notes every change; playback writes the same
// changes into the table at the same ticks. The joystick reader is swapped
// for one that notes (or replays) what the rules read.
//
// Recording and playback both start a new game from the replay's start: its
// level, lives, score and random state, the pause off and the camera level,
// and the level read afresh as when a game starts from the title menu.
#pragma once

#include <cstdint>

#include "game/replay.h"

enum DemoMode { DemoIdle = 0, DemoRecording = 1, DemoPlaying = 2 };

class DemoDriver {
public:
    static const int kRuleKeyCount = 9;
    static const unsigned char kRuleKeys[kRuleKeyCount];  // the keys the game tick reads

    Replay replay;
    int mode;               // DemoMode
    unsigned int tick;      // game ticks since the demo started
    int nextEvent;          // playback: the first event not yet applied
    uint8_t lastKeys[256];  // recording: the key table as the last tick left it
    int joystickValid;      // the joystick as the rules last read it (recording) or will (playback)
    unsigned short joystickX;
    unsigned short joystickY;
    int shownLevel;  // the level the last progress line named
    char path[260];  // where a recording is saved when it stops

    DemoDriver();

    // Starts a new game at level (3 lives) and records it for saving to path; 1 or 0.
    int StartRecording(const char* file, int startLevel);
    // Loads a replay file and plays it from its start; 1, or 0 with replay.error set.
    int StartPlayback(const char* file);
    // Plays the replay already in `replay` from its start.
    void StartLoadedPlayback();
    // Ends a recording (saving it; 1 when saved) or a playback.
    int Stop();
    // Before a game tick: playback applies this tick's events; recording notes key changes.
    void BeforeTick();
    // After a game tick: counts it; a playback whose inputs are used up ends.
    void AfterTick();

private:
    // A new game from the replay's start, as the title menu starts one.
    void StartGame();
    // Puts the joystick reader back and takes the demo's keys out of the table.
    void Finish();
};

extern DemoDriver g_demo;

// The game scene's tick: the demo's input, then UpdateGame.
void GameSceneTick();
