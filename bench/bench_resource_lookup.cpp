// Package lookup with and without the directory cache, side by side: the same
// names opened from the same packages, the ratio of the times printed.
//
//   build/bench/bench_resource_lookup [packages] [entries per package] [lookups]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "resources/package.h"
#include "resources/resource_manager.h"

static double TimeLookups(ResourceManager* manager, int packages, int entries, int lookups) {
    auto start = std::chrono::steady_clock::now();
    unsigned int state = 1;
    for (int i = 0; i < lookups; i++) {
        state = state * 1103515245u + 12345u;
        char name[64];
        // Mostly late packages and late entries: the walk's worst cases a game meets.
        snprintf(name, sizeof(name), "dir\\p%d\\entry%d.bin", packages - 1 - (state >> 8) % 2,
                 entries - 1 - (state >> 16) % (entries / 2 + 1));
        if (!manager->Open(name)) {
            fprintf(stderr, "bench: %s not found\n", name);
            exit(1);
        }
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

int main(int argc, char** argv) {
    int packages = argc > 1 ? atoi(argv[1]) : 8;
    int entries = argc > 2 ? atoi(argv[2]) : 1000;
    int lookups = argc > 3 ? atoi(argv[3]) : 2000;
    std::filesystem::path dir = std::filesystem::temp_directory_path() / "vantle_bench_lookup";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    std::unique_ptr<Package> package(new Package);
    for (int p = 0; p < packages; p++) {
        package->Clear();
        for (int e = 0; e < entries; e++) {
            char name[64];
            snprintf(name, sizeof(name), "dir\\p%d\\entry%d.bin", p, e);
            package->AddData(name, name, 64);
        }
        std::filesystem::path path = dir / ("p" + std::to_string(p) + ".vpk");
        package->Save(path.c_str());
        // Settled files, as a shipped game's packages are.
        std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) - std::chrono::hours(1));
    }
    ResourceManager cached, plain;
    snprintf(cached.dataDirectory, sizeof(cached.dataDirectory), "%s", dir.c_str());
    snprintf(plain.dataDirectory, sizeof(plain.dataDirectory), "%s", dir.c_str());
    plain.cachePackages = 0;
    TimeLookups(&cached, packages, entries, 10);  // fill the cache
    double uncachedTime = TimeLookups(&plain, packages, entries, lookups);
    double cachedTime = TimeLookups(&cached, packages, entries, lookups);
    printf("%d packages x %d entries, %d lookups: uncached %.3f ms/open, cached %.3f ms/open, ratio %.1fx\n",
           packages, entries, lookups, uncachedTime * 1000 / lookups, cachedTime * 1000 / lookups,
           uncachedTime / cachedTime);
    std::filesystem::remove_all(dir);
    return 0;
}
