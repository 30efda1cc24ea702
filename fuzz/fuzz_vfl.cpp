// Flare files: any bytes parse cleanly or fail; what parses serialises back
// to the same header fields and elements.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "fuzz_seeds.h"
#include "resources/flare_list.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FlareList list;
    if (!list.Parse(data, static_cast<unsigned int>(size))) {
        if (list.count != 0) {
            abort();
        }
        return 0;
    }
    std::vector<unsigned char> out(list.Size());
    list.Serialise(out.data());
    // Everything but the stored file size must come back as it was read.
    if (out.size() > size || memcmp(out.data() + 8, data + 8, out.size() - 8) != 0) {
        abort();
    }
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    FlareList list;
    list.origin[0] = -80;
    list.origin[1] = 50;
    list.origin[2] = -288;
    std::vector<unsigned char> bytes(list.Size());
    list.Serialise(bytes.data());
    AddSeed(seeds, bytes.data(), bytes.size());
    const char* names[] = {"flare\\sun.tga", "flare\\ring.tga", "flare\\dot.tga"};
    for (int i = 0; i < 3; i++) {
        FlareElement element = {};
        strcpy(element.name, names[i]);
        element.axisPosition = 1.0f - i * 0.6f;
        element.halfSize = 40.0f / (i + 1);
        element.alpha = 0.5f;
        element.grey = 0.8f;
        element.spins = i == 1;
        element.centreFade = i == 0;
        element.distanceFade = 1;
        list.Add(element);
    }
    bytes.resize(list.Size());
    list.Serialise(bytes.data());
    AddSeed(seeds, bytes.data(), bytes.size());
}
