// Little-endian readers and writers over byte buffers, shared by the model,
// location and lightmap formats. The reader never steps past the end of its
// buffer: a read that would do so sets `failed`, returns zeros and leaves the
// position where it was, so a parser can read a whole record and check once.
#pragma once

#include <cstring>

class ByteReader {
public:
    const unsigned char* bytes;
    unsigned int length;
    unsigned int position;
    int failed;

    ByteReader(const unsigned char* data, unsigned int size)
        : bytes(data), length(size), position(0), failed(0) {}

    // Bytes left after the current position.
    unsigned int Remaining() const { return position <= length ? length - position : 0; }
    // 1 when count more bytes are there to read; sets `failed` otherwise.
    int Need(unsigned int count) {
        if (failed || count > Remaining()) {
            failed = 1;
            return 0;
        }
        return 1;
    }
    // Moves past count bytes, or fails.
    void Skip(unsigned int count) {
        if (Need(count)) {
            position += count;
        }
    }
    // Reads one unsigned 16-bit value.
    unsigned short U16() {
        if (!Need(2)) {
            return 0;
        }
        const unsigned char* p = bytes + position;
        position += 2;
        return static_cast<unsigned short>(p[0] | (p[1] << 8));
    }
    // Reads one unsigned 32-bit value.
    unsigned int U32() {
        if (!Need(4)) {
            return 0;
        }
        const unsigned char* p = bytes + position;
        position += 4;
        return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<unsigned int>(p[3]) << 24);
    }
    // Reads one 32-bit IEEE float.
    float F32() {
        unsigned int bits = U32();
        float value;
        memcpy(&value, &bits, 4);
        return value;
    }
    // Copies count raw bytes into out.
    void Bytes(void* out, unsigned int count) {
        if (Need(count)) {
            memcpy(out, bytes + position, count);
            position += count;
        }
    }
    // 1 when the next four bytes are the given tag (does not move).
    int PeekTag(const char* tag) const {
        return position + 4 <= length && position <= length && memcmp(bytes + position, tag, 4) == 0;
    }
};

class ByteWriter {
public:
    unsigned char* out;
    unsigned int position;

    explicit ByteWriter(unsigned char* buffer) : out(buffer), position(0) {}

    void U16(unsigned int value) {
        out[position] = static_cast<unsigned char>(value);
        out[position + 1] = static_cast<unsigned char>(value >> 8);
        position += 2;
    }
    void U32(unsigned int value) {
        for (int i = 0; i < 4; i++) {
            out[position + i] = static_cast<unsigned char>(value >> (8 * i));
        }
        position += 4;
    }
    void F32(float value) {
        unsigned int bits;
        memcpy(&bits, &value, 4);
        U32(bits);
    }
    void Bytes(const void* data, unsigned int count) {
        if (count) {
            memcpy(out + position, data, count);
        }
        position += count;
    }
    void Tag(const char* tag) { Bytes(tag, 4); }
    // Writes a length-prefixed string (16-bit length, no terminating zero).
    void String(const char* text) {
        unsigned int n = static_cast<unsigned int>(strlen(text));
        U16(n);
        Bytes(text, n);
    }
};
