// The headless replay runner behind vantle-sim: plays a replay from its
// recorded start with no window and no sound, as fast as the machine goes,
// until its inputs end or the game leaves the level scenes, and reports one
// line per event: a level's tally ending, a death, the closing scene. The
// last line is the outcome.
#pragma once

// Receives each report line (no newline).
typedef void (*ReplayReport)(const char* line, void* context);
// Called after every tick with the tick's number, to look at the game as the tick left it.
typedef void (*ReplayTick)(unsigned int tick, void* context);

// Runs the replay loaded into g_demo; returns the number of ticks run. With trace set, every tick
// also reports "tick T: x y z yaw Y state S ground G air A" for the player (designers write
// solutions by hand with it). onTick, when given, is called after every tick with tickContext.
unsigned int RunLoadedReplay(ReplayReport report, void* context, int trace = 0, ReplayTick onTick = nullptr,
                             void* tickContext = nullptr);
// Loads a replay file and runs it; the ticks run, or -1 with the load error reported.
int RunReplayFile(const char* path, ReplayReport report, void* context, int trace = 0,
                  ReplayTick onTick = nullptr, void* tickContext = nullptr);
