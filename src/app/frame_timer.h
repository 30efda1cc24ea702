// The frame timer: milliseconds since Init, and ten channels that pay out whole
// fixed periods. A channel never loses time: the fraction of a period left over
// when it pays out is carried to the next reading, and a reading that finds less
// than one period leaves the clock alone so the remainder keeps accumulating.
// The main loop runs the simulation from channel 1 (20 ms) and refreshes the
// debug panel from channel 2 (100 ms); reading a channel and throwing the
// answer away is how long loads skip the time they took.
//
// One global instance, g_timer, with no constructor: all fields start at zero.
#pragma once

#include <cstdint>

enum { TimerUpdate = 1, TimerStats = 2 };

class FrameTimer {
public:
    int64_t frequency;      // performance-counter ticks per second (mode 0)
    int64_t startCount;     // performance-counter value at Init (mode 0)
    uint32_t startTick;     // tick count at Init (mode 1)
    uint16_t mode;          // 0 performance counter, 1 tick count
    float carry[10];        // fractional periods carried per channel
    uint32_t lastTime[10];  // Now() when the channel last paid out or was set
    uint32_t period[10];    // channel period in milliseconds

    // Starts the clock in mode 0 (performance counter) or 1 (tick count); 1 or 0.
    int Init(int mode);
    // Milliseconds since Init (wraps at 2^32).
    uint32_t Now();
    // Sets a channel's period and starts it afresh from now.
    void SetPeriod(int channel, uint32_t milliseconds);
    // Whole periods passed on a channel since it last paid out; the fraction is carried.
    uint32_t Elapsed(int channel);
};

extern FrameTimer g_timer;
