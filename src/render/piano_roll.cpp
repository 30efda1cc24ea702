#include "render/piano_roll.h"

#include <cstring>

#include "resources/model.h"

const PianoKeyTravel kPianoKeys[kPianoKeyCount] = {
    {0, 0.497f, 0.297f},  {2, 0.497f, 0.297f},  {3, 0.497f, 0.297f},  {4, 0.497f, 0.297f},
    {5, 0.497f, 0.297f},  {6, 0.497f, 0.297f},  {7, 0.497f, 0.297f},  {8, 0.497f, 0.297f},
    {9, 0.497f, 0.297f},  {10, 0.497f, 0.297f}, {11, 0.497f, 0.297f}, {12, 0.497f, 0.297f},
    {13, 0.497f, 0.297f}, {14, 0.497f, 0.297f}, {15, 0.497f, 0.297f}, {16, 0.497f, 0.297f},
    {17, 0.498f, 0.297f}, {18, 0.497f, 0.297f}, {19, 0.498f, 0.297f}, {24, 0.798f, 0.598f},
    {25, 0.798f, 0.598f}, {26, 0.798f, 0.598f}, {1, 0.798f, 0.598f},  {20, 0.798f, 0.598f},
    {21, 0.798f, 0.598f}, {22, 0.798f, 0.598f}, {23, 0.798f, 0.598f}, {27, 0.798f, 0.598f},
    {28, 0.798f, 0.598f}, {29, 0.798f, 0.598f}, {30, 0.798f, 0.598f}, {31, 0.798f, 0.598f},
};

static uint32_t ReadU32(const unsigned char* p) {
    return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<uint32_t>(p[3]) << 24);
}

static void WriteU32(unsigned char* p, uint32_t value) {
    p[0] = value & 0xff;
    p[1] = (value >> 8) & 0xff;
    p[2] = (value >> 16) & 0xff;
    p[3] = (value >> 24) & 0xff;
}

unsigned int ParsePianoRoll(const unsigned char* bytes, unsigned int length, PianoEvent* events,
                            unsigned int* count) {
    *count = 0;
    if (!bytes || length < 4) {
        return 0;
    }
    uint32_t n = ReadU32(bytes);
    if (n > kPianoMaxEvents || length - 4 < n * 8) {
        return 0;
    }
    for (uint32_t i = 0; i < n; i++) {
        const unsigned char* p = bytes + 4 + i * 8;
        if (p[0] >= kPianoKeyCount) {
            return 0;
        }
        events[i].key = p[0];
        events[i].state = p[1];
        events[i].unused[0] = p[2];
        events[i].unused[1] = p[3];
        events[i].tick = ReadU32(p + 4);
    }
    *count = n;
    return 4 + n * 8;
}

unsigned int PianoRollSize(unsigned int count) {
    return 4 + count * 8;
}

unsigned int SerialisePianoRoll(const PianoEvent* events, unsigned int count, unsigned char* out) {
    WriteU32(out, count);
    for (unsigned int i = 0; i < count; i++) {
        unsigned char* p = out + 4 + i * 8;
        p[0] = events[i].key;
        p[1] = events[i].state;
        p[2] = events[i].unused[0];
        p[3] = events[i].unused[1];
        WriteU32(p + 4, events[i].tick);
    }
    return PianoRollSize(count);
}

// The 24 vertices of a key, or null when the model has no such key.
static FrameVertex* KeyVertices(int keyNumber) {
    unsigned int first = kKeyboardBodyVertices + kKeyboardKeyVertices * keyNumber;
    if (keyNumber < 0 || keyNumber >= kPianoKeyCount || !g_keyboardModel.frameVertices ||
        first + kKeyboardKeyVertices > g_keyboardModel.frameTriangles * 3) {
        return nullptr;
    }
    return g_keyboardModel.frameVertices + first;
}

static void SetKeyDepth(FrameVertex* key, float z) {
    for (int i = 0; i < kKeyboardKeyVertices; i++) {
        key[i].position[2] = z;
    }
}

void PressKey(int keyNumber, float pressedZ) {
    FrameVertex* key = KeyVertices(keyNumber);
    if (!key) {
        return;
    }
    float z = key[0].position[2] - 0.1f;
    SetKeyDepth(key, z < pressedZ ? pressedZ : z);
}

void RaiseKey(int keyNumber, float restZ) {
    FrameVertex* key = KeyVertices(keyNumber);
    if (!key) {
        return;
    }
    float z = key[0].position[2] + 0.1f;
    SetKeyDepth(key, z > restZ ? restZ : z);
}
