#include "net/net_stats.h"

#include <cstdio>

NetStats::NetStats() {
    Reset(0);
}

void NetStats::Reset(uint32_t now) {
    sequenceIn = 0;
    sequenceOut = 0;
    packets = 0;
    kilobytesPerSecond = 0.0f;
    roundTripMs = 0;
    windowStart = now;
    windowBytes = 0;
}

void NetStats::CountSent(uint8_t sequence, uint32_t bytes, uint32_t now) {
    Tick(now);
    sequenceOut = sequence;
    packets++;
    windowBytes += bytes;
}

void NetStats::CountReceived(uint8_t sequence, uint32_t bytes, uint32_t now) {
    Tick(now);
    sequenceIn = sequence;
    packets++;
    windowBytes += bytes;
}

// The window is as long as the gap between calls makes it, so a quiet spell
// brings the rate down at once instead of keeping the last busy second's figure.
void NetStats::Tick(uint32_t now) {
    uint32_t elapsed = now - windowStart;
    if (elapsed < kWindowMs) {
        return;
    }
    kilobytesPerSecond = static_cast<float>(windowBytes) * 1000.0f / static_cast<float>(elapsed) / 1024.0f;
    windowStart = now;
    windowBytes = 0;
}

void NetStats::FormatLines(char lines[5][32]) const {
    snprintf(lines[0], 32, "Seq. in: %i", sequenceIn);
    snprintf(lines[1], 32, "Seq.out: %i", sequenceOut);
    snprintf(lines[2], 32, "Packets: %u", packets);
    snprintf(lines[3], 32, "KB/sec : %.1f", kilobytesPerSecond);
    snprintf(lines[4], 32, "Ping   : %u", roundTripMs);
}
