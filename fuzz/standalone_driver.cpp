// Runs a fuzz target without libFuzzer: every seed from VantleFuzzSeeds() and
// from files named on the command line, then deterministic mutations of each
// (every truncation length up to 64 plus a spread of longer ones, and byte
// flips drawn from a fixed generator). A crash or sanitizer report fails the
// test; nothing is random between runs.
//
//   fuzz_x [--mutate N] [FILE...]     replay seeds and N mutations per seed
//   fuzz_x --write-seeds DIR          write the seeds as files (for libFuzzer)
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fuzz_seeds.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

static void RunOne(const std::vector<uint8_t>& input) {
    // Copy into an exactly sized heap block so the sanitizer sees any overrun.
    uint8_t* copy = static_cast<uint8_t*>(malloc(input.size() ? input.size() : 1));
    if (!input.empty()) {
        memcpy(copy, input.data(), input.size());
    }
    LLVMFuzzerTestOneInput(copy, input.size());
    free(copy);
}

static void Mutate(const std::vector<uint8_t>& seed, int count, unsigned& state) {
    for (size_t cut = 0; cut < seed.size() && cut <= 64; cut++) {
        RunOne(std::vector<uint8_t>(seed.begin(), seed.begin() + cut));
    }
    for (int i = 1; i <= 16 && seed.size() > 64; i++) {
        RunOne(std::vector<uint8_t>(seed.begin(), seed.begin() + seed.size() * i / 17));
    }
    for (int i = 0; i < count && !seed.empty(); i++) {
        std::vector<uint8_t> mutated = seed;
        int flips = 1 + i % 4;
        for (int f = 0; f < flips; f++) {
            state = state * 1103515245u + 12345u;
            size_t at = (state >> 8) % mutated.size();
            state = state * 1103515245u + 12345u;
            uint8_t values[] = {0x00, 0xFF, 0x7F, 0x80, 0x01, static_cast<uint8_t>(state >> 16)};
            mutated[at] = (i & 1) ? mutated[at] ^ static_cast<uint8_t>(1u << (state >> 24) % 8)
                                  : values[(state >> 12) % 6];
        }
        RunOne(mutated);
    }
}

static bool ReadWhole(const char* path, std::vector<uint8_t>& out) {
    FILE* file = fopen(path, "rb");
    if (!file) {
        return false;
    }
    uint8_t chunk[65536];
    size_t got;
    while ((got = fread(chunk, 1, sizeof(chunk), file)) > 0) {
        out.insert(out.end(), chunk, chunk + got);
    }
    fclose(file);
    return true;
}

int main(int argc, char** argv) {
    FuzzSeedList seeds;
    VantleFuzzSeeds(seeds);
    int mutations = 0;
    for (int i = 1; i < argc; i++) {
        if (!strcmp(argv[i], "--mutate") && i + 1 < argc) {
            mutations = atoi(argv[++i]);
        } else if (!strcmp(argv[i], "--write-seeds") && i + 1 < argc) {
            const char* dir = argv[++i];
            for (size_t s = 0; s < seeds.size(); s++) {
                std::string path = std::string(dir) + "/seed" + std::to_string(s);
                FILE* file = fopen(path.c_str(), "wb");
                if (!file) {
                    fprintf(stderr, "cannot write %s\n", path.c_str());
                    return 1;
                }
                fwrite(seeds[s].data(), 1, seeds[s].size(), file);
                fclose(file);
            }
            return 0;
        } else {
            std::vector<uint8_t> bytes;
            if (!ReadWhole(argv[i], bytes)) {
                fprintf(stderr, "cannot read %s\n", argv[i]);
                return 1;
            }
            seeds.push_back(bytes);
        }
    }
    unsigned state = 1;
    RunOne(std::vector<uint8_t>());
    for (const std::vector<uint8_t>& seed : seeds) {
        RunOne(seed);
        Mutate(seed, mutations, state);
    }
    printf("%zu seeds, %d mutations each: no failure\n", seeds.size(), mutations);
    return 0;
}
