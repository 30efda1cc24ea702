// Fuzz target for the replay text parser: any bytes must parse or fail cleanly,
// and whatever parses must write back to text that parses to the same thing.
#include <cstdlib>
#include <cstring>
#include <string>

#include "fuzz_seeds.h"
#include "game/replay.h"

static Replay s_replay;
static Replay s_again;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (s_replay.Parse(reinterpret_cast<const char*>(data), static_cast<unsigned int>(size)) == 0) {
        return 0;
    }
    std::string text(s_replay.Size(), '\0');
    int n = s_replay.Serialise(&text[0], static_cast<unsigned int>(text.size()));
    if (n <= 0 || s_again.Parse(text.data(), static_cast<unsigned int>(n)) == 0 ||
        s_again.eventCount != s_replay.eventCount || s_again.length != s_replay.length) {
        abort();
    }
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    Replay replay;
    replay.level = 2;
    replay.lives = 2;
    replay.score = 300;
    replay.length = 400;
    replay.AddEvent(0, ReplayKeyDown, 0x26, 0, 0);
    replay.AddEvent(10, ReplayKeyDown, 0x20, 0, 0);
    replay.AddEvent(11, ReplayKeyUp, 0x20, 0, 0);
    replay.AddEvent(50, ReplayJoystick, 0, 1000, 64000);
    replay.AddEvent(60, ReplayJoystickOff, 0, 0, 0);
    replay.AddEvent(399, ReplayKeyUp, 0x26, 0, 0);
    std::string text(replay.Size(), '\0');
    int n = replay.Serialise(&text[0], static_cast<unsigned int>(text.size()));
    AddSeed(seeds, text.data(), static_cast<size_t>(n));
    const char edited[] = "# hand made\r\nvantle2-replay 1\r\nticks 9\r\n1 down P\r\n2 up 0x50\r\n";
    AddSeed(seeds, edited, sizeof(edited) - 1);
}
