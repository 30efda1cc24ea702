// Lightmap blocks alone in a file: parse or fail cleanly, and re-serialise what parses.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "fuzz_seeds.h"
#include "resources/lightmap_set.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static LightmapSet* set = new LightmapSet;  // 512 KiB of cells: made once
    if (set->Parse(data, static_cast<unsigned int>(size))) {
        std::vector<unsigned char> out(set->Size());
        set->Serialise(out.data());
        int page, column, row;
        set->AllocateArea(2, 2, &page, &column, &row);
    }
    set->Clear();
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    std::unique_ptr<LightmapSet> set(new LightmapSet);
    std::vector<unsigned char> empty(set->Size());
    set->Serialise(empty.data());
    AddSeed(seeds, empty.data(), empty.size());
    for (int piece : {0, 7, 511}) {
        unsigned count = 6;
        set->coords[piece] = static_cast<LightmapVertex*>(malloc(count * sizeof(LightmapVertex)));
        set->coordCounts[piece] = count;
        for (unsigned i = 0; i < count; i++) {
            set->coords[piece][i] = {i, 0.25f * i, 0.5f};
        }
    }
    std::vector<unsigned char> records(set->Size());
    set->Serialise(records.data());
    AddSeed(seeds, records.data(), records.size());
    set->EnsurePage(0)[77] = 9;
    set->areaCount = 2;
    std::vector<unsigned char> paged(set->Size());
    set->Serialise(paged.data());
    AddSeed(seeds, paged.data(), paged.size());
}
