// vantle-sim REPLAY: plays a replay headless from the directory that holds
// data/ and prints one line per level completed, death and game end; the last
// line is the outcome. Exit status 0 when the replay ran, 1 when it could not
// be read.
#include <cstdio>

#include "game/replay_runner.h"

static void PrintLine(const char* line, void*) {
    printf("%s\n", line);
}

int main(int argc, char** argv) {
    if (argc != 2) {
        fprintf(stderr, "usage: vantle-sim REPLAY\n");
        return 2;
    }
    return RunReplayFile(argv[1], PrintLine, nullptr) < 0 ? 1 : 0;
}
