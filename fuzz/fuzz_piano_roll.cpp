// Piano rolls: any bytes parse cleanly or fail; what parses writes back the
// same bytes it was read from.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "fuzz_seeds.h"
#include "render/piano_roll.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static PianoEvent events[kPianoMaxEvents];
    unsigned int count = 0;
    unsigned int used = ParsePianoRoll(data, static_cast<unsigned int>(size), events, &count);
    if (!used) {
        if (count != 0) {
            abort();
        }
        return 0;
    }
    std::vector<unsigned char> out(PianoRollSize(count));
    if (SerialisePianoRoll(events, count, out.data()) != used || used > size ||
        memcmp(out.data(), data, used) != 0) {
        abort();
    }
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    std::vector<PianoEvent> events;
    std::vector<unsigned char> bytes(PianoRollSize(0));
    SerialisePianoRoll(events.data(), 0, bytes.data());
    AddSeed(seeds, bytes.data(), bytes.size());
    for (int i = 0; i < 64; i++) {
        PianoEvent e = {};
        e.key = static_cast<uint8_t>(i % kPianoKeyCount);
        e.state = static_cast<uint8_t>(i & 1);
        e.tick = static_cast<uint32_t>(9 + i * 31);
        events.push_back(e);
    }
    bytes.resize(PianoRollSize(events.size()));
    SerialisePianoRoll(events.data(), events.size(), bytes.data());
    AddSeed(seeds, bytes.data(), bytes.size());
}
