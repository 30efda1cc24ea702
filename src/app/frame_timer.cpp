#include "app/frame_timer.h"

#include "platform/sys_clock.h"

int FrameTimer::Init(int newMode) {
    mode = static_cast<uint16_t>(newMode);
    if (mode == 0) {
        frequency = Sys_PerformanceFrequency();
        if (frequency == 0) {
            return 0;
        }
        startCount = Sys_PerformanceCounter();
        return 1;
    }
    if (mode == 1) {
        startTick = Sys_TickCount();
    }
    return 1;
}

uint32_t FrameTimer::Now() {
    if (mode == 1) {
        return Sys_TickCount() - startTick;
    }
    if (mode != 0 || frequency == 0) {
        return 0;
    }
    double elapsed = static_cast<double>(Sys_PerformanceCounter() - startCount);
    return static_cast<uint32_t>(static_cast<int64_t>(elapsed / static_cast<double>(frequency) * 1000.0));
}

void FrameTimer::SetPeriod(int channel, uint32_t milliseconds) {
    if (channel < 0 || channel > 9) {
        return;
    }
    carry[channel] = 0.0f;
    lastTime[channel] = Now();
    period[channel] = milliseconds;
}

uint32_t FrameTimer::Elapsed(int channel) {
    if (channel < 0 || channel > 9 || period[channel] == 0) {
        return 0;
    }
    uint32_t passed = Now() - lastTime[channel];
    if (passed < period[channel]) {
        return 0;
    }
    carry[channel] = static_cast<float>(carry[channel] + static_cast<double>(passed) / period[channel]);
    uint32_t whole = static_cast<uint32_t>(carry[channel]);
    lastTime[channel] = Now();
    carry[channel] -= static_cast<float>(whole);
    return whole;
}
