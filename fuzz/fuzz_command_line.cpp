// The command line: any words (the input split at zero bytes) give one of the
// four answers; a run keeps at most 32 terminated lines, each a '+' word's name
// followed by the words after it.
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "app/command_line.h"
#include "fuzz_seeds.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<std::string> words = {"vantle2"};
    std::string word;
    for (size_t i = 0; i < size; i++) {
        if (data[i]) {
            word += static_cast<char>(data[i]);
        } else {
            words.push_back(word);
            word.clear();
        }
    }
    words.push_back(word);
    std::vector<const char*> argv;
    for (const std::string& w : words) {
        argv.push_back(w.c_str());
    }
    StartCommands commands;
    int action = ParseCommandLine(static_cast<int>(argv.size()), argv.data(), &commands);
    if (action < CommandLineRun || action > CommandLineBad) {
        abort();
    }
    if (action == CommandLineRun) {
        if (commands.count < 0 || commands.count > StartCommands::kMaxLines) {
            abort();
        }
        for (int i = 0; i < commands.count; i++) {
            if (memchr(commands.lines[i], 0, sizeof(commands.lines[i])) == nullptr) {
                abort();
            }
        }
    }
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    static const char kLines[] =
        "+VID_SIZE\0"
        "1024,768\0"
        "+DEMO_PLAY\0"
        "/home/p/run.replay";
    AddSeed(seeds, kLines, sizeof(kLines) - 1);
    AddSeed(seeds, "--help", 6);
    AddSeed(seeds, "+QUIT", 5);
}
