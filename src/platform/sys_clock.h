// Time services of the platform layer, with the Windows meanings the engine
// was built around: a high-resolution performance counter, a 32-bit
// millisecond tick count that wraps after 49.7 days, and a sleep. Tests may
// replace the clock with their own.
#pragma once

#include <cstdint>

// Performance-counter ticks per second; 0 when the counter is unavailable.
int64_t Sys_PerformanceFrequency();
// Current performance-counter value.
int64_t Sys_PerformanceCounter();
// Milliseconds since an arbitrary start, wrapping at 2^32.
uint32_t Sys_TickCount();
// Sleeps for at least the given milliseconds (unless a test clock is installed).
void Sys_Sleep(uint32_t milliseconds);

// A replacement clock: counter() in units of frequency per second; a null counter restores the
// real clock. With a test clock installed Sys_Sleep advances nothing and returns at once.
struct SysTestClock {
    int64_t frequency;
    int64_t (*counter)();
};
void Sys_SetTestClock(const SysTestClock* clock);
