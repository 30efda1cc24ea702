// The figures of the network panel, kept by each endpoint as it sends and
// receives:
//   Seq. in  the sequence number of the last datagram accepted;
//   Seq.out  the sequence number of the last datagram sent;
//   Packets  datagrams sent plus datagrams accepted since the endpoint opened;
//   KB/sec   datagram bytes (headers included) sent and accepted, averaged over
//            the last measuring window of at least one second, in KiB per second;
//   Ping     milliseconds from a reliable message's first transmission to the
//            acknowledgement that cleared it, the latest such measurement.
// Dropped datagrams (stale, short, over-long) count nowhere.
#pragma once

#include <cstdint>

class NetStats {
public:
    static const uint32_t kWindowMs = 1000;

    uint8_t sequenceIn;
    uint8_t sequenceOut;
    uint32_t packets;
    float kilobytesPerSecond;
    uint32_t roundTripMs;
    uint32_t windowStart;  // tick count the current measuring window began
    uint32_t windowBytes;  // bytes counted in it so far

    NetStats();

    // Zeroes every figure and starts a measuring window at now.
    void Reset(uint32_t now);
    // Counts one datagram sent with this sequence number and total size.
    void CountSent(uint8_t sequence, uint32_t bytes, uint32_t now);
    // Counts one datagram accepted with this sequence number and total size.
    void CountReceived(uint8_t sequence, uint32_t bytes, uint32_t now);
    // Closes the measuring window when a second or more has passed, updating the rate.
    void Tick(uint32_t now);
    // Writes the five panel lines ("Seq. in: 3" ...), each up to 32 bytes.
    void FormatLines(char lines[5][32]) const;
};
