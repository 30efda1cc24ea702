// Fuzz target: the content build's text readers, the level source and the
// music score. Whatever a reader accepts must compile: a level into a location
// that the engine reads back with the same counts, a score into notes that lie
// inside its loop.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "fuzz_seeds.h"
#include "level_compiler.h"
#include "level_source.h"
#include "music_score.h"
#include "resources/location.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) {
        return 0;
    }
    std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::string error;
    if (data[0] & 1) {
        Score score;
        if (ParseScore(text, "fuzz.txt", &score, &error)) {
            for (const ScoreNote& n : score.notes) {
                if (n.voice < 0 || n.voice >= static_cast<int>(score.voices.size()) || n.length < 1) {
                    abort();
                }
            }
        } else if (error.rfind("fuzz.txt:", 0) != 0) {
            abort();
        }
        return 0;
    }
    LevelSource source;
    if (!ParseLevelSource(text, "fuzz.lvl", &source, &error)) {
        if (error.rfind("fuzz.lvl:", 0) != 0) {
            abort();
        }
        return 0;
    }
    std::vector<uint8_t> bytes;
    if (!CompileLevel(source, nullptr, false, &bytes, &error)) {
        return 0;
    }
    std::unique_ptr<Location> location(new Location());
    if (location->Parse(bytes.data(), static_cast<unsigned int>(bytes.size())) == 0 ||
        location->pieceCount != source.pieces.size() || location->entityCount != source.entities.size()) {
        abort();
    }
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    const char* level =
        "\x00location Seed\n"
        "piece floor grass.tga scale 32 solid\n"
        "    box -10 -5 -10 10 0 10\n"
        "    ramp 0 0 0 4 2 8 rise +z turn 10\n"
        "piece deco leaves.tga nocull\n"
        "    cylinder 0 0 0 radius 3 height 4 sides 6 inside\n"
        "    blob 0 5 0 2 2 2\n"
        "    sheet -1 1 -1 1 1 cells 2\n"
        "    card 0 0 0 width 2 height 3\n"
        "entity player 0 1 0 turn 90\n"
        "entity light01 0 9 0\n"
        "    color = 1, 1, 1\n";
    AddSeed(seeds, level, 1 + strlen(level + 1));
    const char* score =
        "\x01length 100\nstep 2.5\nvoice lead piano roll pan -0.2 volume 0.8\n  C4:2 r E4+G4 | D#5:0.5\n"
        "voice beat drums\n  K S H:2\n";
    AddSeed(seeds, score, strlen(score));
}
