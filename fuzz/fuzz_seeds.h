// The seed interface every fuzz target shares with the drivers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

typedef std::vector<std::vector<uint8_t>> FuzzSeedList;

// Defined by each target: well-formed inputs made with the engine's writers.
void VantleFuzzSeeds(FuzzSeedList& seeds);

// Helper for targets: appends a byte string as one seed.
inline void AddSeed(FuzzSeedList& seeds, const void* data, size_t length) {
    const uint8_t* bytes = static_cast<const uint8_t*>(data);
    seeds.emplace_back(bytes, bytes + length);
}
