#include "platform/sys_clock.h"

#include <time.h>

static SysTestClock s_testClock = {0, nullptr};

static int64_t MonotonicNanoseconds() {
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<int64_t>(now.tv_sec) * 1000000000 + now.tv_nsec;
}

void Sys_SetTestClock(const SysTestClock* clock) {
    if (clock && clock->counter) {
        s_testClock = *clock;
    } else {
        s_testClock.frequency = 0;
        s_testClock.counter = nullptr;
    }
}

int64_t Sys_PerformanceFrequency() {
    return s_testClock.counter ? s_testClock.frequency : 1000000000;
}

int64_t Sys_PerformanceCounter() {
    return s_testClock.counter ? s_testClock.counter() : MonotonicNanoseconds();
}

uint32_t Sys_TickCount() {
    int64_t milliseconds = s_testClock.counter && s_testClock.frequency
                               ? s_testClock.counter() * 1000 / s_testClock.frequency
                               : MonotonicNanoseconds() / 1000000;
    return static_cast<uint32_t>(milliseconds);
}

void Sys_Sleep(uint32_t milliseconds) {
    if (s_testClock.counter) {
        return;
    }
    struct timespec wait = {static_cast<time_t>(milliseconds / 1000),
                            static_cast<long>(milliseconds % 1000) * 1000000};
    nanosleep(&wait, nullptr);
}
