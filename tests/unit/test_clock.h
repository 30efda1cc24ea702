// A hand-driven clock for tests: one counter unit is one microsecond.
#pragma once

#include <cstdint>

#include "platform/sys_clock.h"

namespace test {

inline int64_t& ClockMicroseconds() {
    static int64_t now;
    return now;
}

inline int64_t ReadClock() {
    return ClockMicroseconds();
}

// Installs the clock at the given time (in microseconds) for as long as the object lives.
struct ManualClock {
    explicit ManualClock(int64_t start = 0) {
        ClockMicroseconds() = start;
        SysTestClock clock = {1000000, ReadClock};
        Sys_SetTestClock(&clock);
    }
    ~ManualClock() { Sys_SetTestClock(nullptr); }
    void AdvanceMs(int64_t ms) { ClockMicroseconds() += ms * 1000; }
    void AdvanceUs(int64_t us) { ClockMicroseconds() += us; }
};

}  // namespace test
