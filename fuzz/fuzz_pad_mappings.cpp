// Fuzz target: a gamecontrollerdb.txt of any bytes. Every line is taken, skipped
// or counted broken, so the two counts together never pass the number of lines.
#include <cstdlib>
#include <cstring>

#include "fuzz_seeds.h"
#include "platform/sys_joystick.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    int lines = 1;
    for (size_t i = 0; i < size; i++) {
        lines += data[i] == '\n' || data[i] == '\r';
    }
    int rejected = -1;
    int taken =
        Sys_JoystickAddMappings(reinterpret_cast<const char*>(data), static_cast<int>(size), &rejected);
    if (taken < 0 || rejected < 0 || taken + rejected > lines) {
        abort();
    }
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    const char* text =
        "# a comment\r\n"
        "03000000de280000ff11000001000000,Steam Virtual Gamepad,a:b0,b:b1,back:b6,dpdown:h0.4,"
        "dpleft:h0.8,dpright:h0.2,dpup:h0.1,leftx:a0,lefty:a1,start:b7,x:b2,y:b3,platform:Linux,\n"
        "03000000de280000ff11000001000000,Other Pad,a:b0,platform:Windows,\n"
        "050000005e040000e002000030110000,Pad Without Platform,a:b0,b:b1,leftx:a0,lefty:a1,\n"
        "not a mapping\n"
        ",,,\n";
    AddSeed(seeds, text, strlen(text));
}
