// vantle-sim [--trace] REPLAY: plays a replay headless from the directory
// that holds data/ and prints one line per level completed, death and game
// end; the last line is the outcome. --trace adds the player's position,
// heading, state and air after every tick. Exit status 0 when the replay ran,
// 1 when it could not be read, 2 for a wrong command line.
//
// vantle-sim --visibility REPLAY...: plays each replay and prints, per level
// played, the longest run of ticks in which the game camera could not see the
// player, and where it began:
//   level 08: longest hidden 12 ticks (from tick 530 at -120 40 88)
// A level whose run is longer than a shipped solution may leave (25 ticks)
// gets "over the limit" and the exit status 3.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "game/player_sight.h"
#include "game/replay_runner.h"

static void PrintLine(const char* line, void*) {
    printf("%s\n", line);
}

static void KeepLine(const char* line, void* context) {
    *static_cast<std::string*>(context) = line;
}

static int CheckVisibility(int count, char** paths) {
    int status = 0;
    for (int i = 0; i < count; i++) {
        std::vector<HiddenRun> levels;
        std::string last;
        if (CheckReplaySight(paths[i], levels, KeepLine, &last) < 0) {
            fprintf(stderr, "%s\n", last.c_str());
            status = status ? status : 1;
            continue;
        }
        for (const HiddenRun& run : levels) {
            char line[160];
            FormatHiddenRun(run, line, sizeof(line));
            bool over = run.longest > kMostHiddenTicks;
            printf("%s%s\n", line, over ? ", over the limit" : "");
            status = over ? 3 : status;
        }
    }
    return status;
}

int main(int argc, char** argv) {
    if (argc >= 3 && strcmp(argv[1], "--visibility") == 0) {
        return CheckVisibility(argc - 2, argv + 2);
    }
    int trace = argc == 3 && strcmp(argv[1], "--trace") == 0;
    if (argc != 2 && !trace) {
        fprintf(stderr, "usage: vantle-sim [--trace] REPLAY\n       vantle-sim --visibility REPLAY...\n");
        return 2;
    }
    return RunReplayFile(argv[argc - 1], PrintLine, nullptr, trace) < 0 ? 1 : 0;
}
