// The platform's clocks: the real counter never runs backwards and a sleep lasts at
// least what was asked (lower bounds only: nothing here depends on how fast the
// machine is); a test clock replaces the counter, drives the 32-bit tick count through
// its wrap, and makes sleeping free.
#include <gtest/gtest.h>

#include "platform/sys_clock.h"

namespace {

int64_t g_fakeCounter;

int64_t FakeCounter() {
    return g_fakeCounter;
}

TEST(PlatformClock, TheRealCounterIsMonotonicAndSleepsLastAtLeastTheirTime) {
    Sys_SetTestClock(nullptr);
    const int64_t frequency = Sys_PerformanceFrequency();
    ASSERT_GT(frequency, 0);
    int64_t last = Sys_PerformanceCounter();
    for (int i = 0; i < 10000; i++) {
        int64_t now = Sys_PerformanceCounter();
        ASSERT_GE(now, last);
        last = now;
    }
    const int64_t before = Sys_PerformanceCounter();
    const uint32_t tickBefore = Sys_TickCount();
    Sys_Sleep(30);
    EXPECT_GE(Sys_PerformanceCounter() - before, frequency * 30 / 1000);
    // The tick count is whole milliseconds, so it may trail the counter by one.
    EXPECT_GE(static_cast<uint32_t>(Sys_TickCount() - tickBefore), 29u);
}

TEST(PlatformClock, ATestClockDrivesTheCounterAndTheWrappingTickCount) {
    SysTestClock clock = {1000000, FakeCounter};  // microseconds
    Sys_SetTestClock(&clock);
    EXPECT_EQ(Sys_PerformanceFrequency(), 1000000);
    g_fakeCounter = 1234567;
    EXPECT_EQ(Sys_PerformanceCounter(), 1234567);
    EXPECT_EQ(Sys_TickCount(), 1234u);
    // 2^32 ms and 5 ms more: the tick count has wrapped to 5.
    g_fakeCounter = (INT64_C(4294967296) + 5) * 1000;
    EXPECT_EQ(Sys_TickCount(), 5u);
    g_fakeCounter = (INT64_C(4294967296) - 1) * 1000;
    EXPECT_EQ(Sys_TickCount(), 4294967295u);
    // Sleeping under a test clock neither waits nor moves the clock.
    g_fakeCounter = 777;
    Sys_Sleep(100000);
    EXPECT_EQ(Sys_PerformanceCounter(), 777);
    Sys_SetTestClock(nullptr);
    EXPECT_EQ(Sys_PerformanceFrequency(), 1000000000);
    EXPECT_NE(Sys_PerformanceCounter(), 777);
}

}  // namespace
