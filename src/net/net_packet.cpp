#include "net/net_packet.h"

#include <cstdlib>
#include <cstring>

NetPacket::NetPacket()
    : data(nullptr), size(0), capacity(0), sequence(0), flags(0), tries(0), sentTime(0), readOffset(0) {
    memset(&address, 0, sizeof(address));
}

NetPacket::~NetPacket() {
    free(data);
}

uint8_t* NetPacket::WriteBytes(const void* bytes, uint32_t n) {
    if (!data) {
        data = static_cast<uint8_t*>(calloc(kCapacity, 1));
        if (!data) {
            return nullptr;
        }
        capacity = kCapacity;
        size = 0;
    }
    // Strictly below capacity: the last byte of the buffer is never used.
    if (static_cast<uint64_t>(size) + n >= capacity || (n && !bytes)) {
        return nullptr;
    }
    uint8_t* at = data + size;
    if (n) {
        memcpy(at, bytes, n);
    }
    size += n;
    return at;
}

uint8_t* NetPacket::WriteInt32(int32_t value) {
    return WriteBytes(&value, 4);
}

uint8_t* NetPacket::WriteUInt32(uint32_t value) {
    return WriteBytes(&value, 4);
}

uint8_t* NetPacket::WriteFloat(float value) {
    return WriteBytes(&value, 4);
}

uint8_t* NetPacket::WriteUInt16(uint16_t value) {
    return WriteBytes(&value, 2);
}

uint8_t* NetPacket::WriteUInt8(uint8_t value) {
    return WriteBytes(&value, 1);
}

int NetPacket::SetData(const void* bytes, uint32_t n) {
    free(data);
    data = nullptr;
    size = 0;
    capacity = 0;
    readOffset = 0;
    return WriteBytes(bytes, n) ? 1 : 0;
}

void NetPacket::Clear() {
    free(data);
    data = nullptr;
    size = 0;
    capacity = 0;
    sequence = 0;
    flags = 0;
    tries = 0;
    sentTime = 0;
    readOffset = 0;
}

void NetPacket::CopyFrom(const NetPacket& other) {
    if (&other == this) {
        return;
    }
    Clear();
    if (other.data) {
        SetData(other.data, other.size);
    }
    address = other.address;
    sequence = other.sequence;
    flags = other.flags;
}

int NetPacket::ReadBytes(void* out, uint32_t n) {
    if (!out || !data || readOffset > size || n > size - readOffset) {
        return 0;
    }
    memcpy(out, data + readOffset, n);
    readOffset += n;
    return 1;
}

int NetPacket::ReadInt32(int32_t* value) {
    return ReadBytes(value, 4);
}

int NetPacket::ReadUInt32(uint32_t* value) {
    return ReadBytes(value, 4);
}

int NetPacket::ReadFloat(float* value) {
    return ReadBytes(value, 4);
}

int NetPacket::ReadUInt16(uint16_t* value) {
    return ReadBytes(value, 2);
}

int NetPacket::ReadUInt8(uint8_t* value) {
    return ReadBytes(value, 1);
}
