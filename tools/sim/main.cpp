// vantle-sim [--trace] REPLAY: plays a replay headless from the directory
// that holds data/ and prints one line per level completed, death and game
// end; the last line is the outcome. --trace adds the player's position,
// heading, state and air after every tick. Exit status 0 when the replay ran,
// 1 when it could not be read, 2 for a wrong command line.
#include <cstdio>
#include <cstring>

#include "game/replay_runner.h"

static void PrintLine(const char* line, void*) {
    printf("%s\n", line);
}

int main(int argc, char** argv) {
    int trace = argc == 3 && strcmp(argv[1], "--trace") == 0;
    if (argc != 2 && !trace) {
        fprintf(stderr, "usage: vantle-sim [--trace] REPLAY\n");
        return 2;
    }
    return RunReplayFile(argv[argc - 1], PrintLine, nullptr, trace) < 0 ? 1 : 0;
}
