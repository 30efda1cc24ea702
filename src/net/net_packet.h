// One datagram's worth of payload, and also the record a reliable message is
// kept in while it waits for its acknowledgement. The payload buffer is
// allocated at the first write with a fixed 8192 bytes and never grows: a
// write that would fill it completely is refused, so at most 8191 bytes fit.
// Values are written and read in the machine's own (little-endian) order; the
// transport never converts them. Reads walk a cursor from the start of the
// payload and fail cleanly at its end.
#pragma once

#include <cstdint>

#include "platform/sys_socket.h"

class NetPacket {
public:
    static const uint32_t kCapacity = 8192;

    uint8_t* data;          // owned payload buffer, null until the first write
    uint32_t size;          // payload bytes written
    uint32_t capacity;      // bytes allocated (8192 once allocated)
    SysNetAddress address;  // destination on send, source on receive
    uint8_t sequence;       // header byte 0
    uint8_t flags;          // header byte 1: 1 reliable, 2 acknowledgement, 0 plain
    uint8_t tries;          // resend slot: timeouts so far
    uint32_t sentTime;      // resend slot: tick count of the last (re)send
    uint32_t readOffset;    // next payload byte the Read functions take

    NetPacket();
    ~NetPacket();
    NetPacket(const NetPacket&) = delete;
    NetPacket& operator=(const NetPacket&) = delete;

    // Appends a 32-bit signed value; a pointer to it in the buffer, or null when it does not fit.
    uint8_t* WriteInt32(int32_t value);
    // Appends a 32-bit unsigned value; a pointer or null.
    uint8_t* WriteUInt32(uint32_t value);
    // Appends a 32-bit float; a pointer or null.
    uint8_t* WriteFloat(float value);
    // Appends a 16-bit unsigned value; a pointer or null.
    uint8_t* WriteUInt16(uint16_t value);
    // Appends one byte; a pointer or null.
    uint8_t* WriteUInt8(uint8_t value);
    // Appends n bytes; a pointer to the first, or null (nothing written) when they do not fit.
    uint8_t* WriteBytes(const void* bytes, uint32_t n);
    // Replaces the payload with n bytes in a fresh buffer; 0 (payload emptied) when n does not fit.
    int SetData(const void* bytes, uint32_t n);
    // Frees the buffer and zeroes every field but the address.
    void Clear();
    // Makes this packet a copy of another (payload, address, header bytes); tries and time zeroed.
    void CopyFrom(const NetPacket& other);

    // Reads a 32-bit signed value at the cursor; 1, or 0 (nothing moved) past the payload's end.
    int ReadInt32(int32_t* value);
    // Reads a 32-bit unsigned value; 1 or 0.
    int ReadUInt32(uint32_t* value);
    // Reads a 32-bit float; 1 or 0.
    int ReadFloat(float* value);
    // Reads a 16-bit unsigned value; 1 or 0.
    int ReadUInt16(uint16_t* value);
    // Reads one byte; 1 or 0.
    int ReadUInt8(uint8_t* value);
    // Copies n bytes out; 1 or 0.
    int ReadBytes(void* out, uint32_t n);
};
