// The title menu's piano: the piano-roll file that plays it and the keys of
// the keyboard model that move with it.
//
// "piano.vpr", little-endian: a 32-bit event count n (at most 2048), then n
// events of 8 bytes: key state index (0 to 31), state (1 held, 0 released),
// two unused bytes, tick (32-bit). The roll loops every 1984 ticks.
//
// The keyboard model's built vertices hold the body (117 vertices) and then
// 24 vertices per key in key-number order. A key moves by setting the z of
// all its 24 vertices to one value, 0.1 per tick towards its rest or pressed
// depth, so it travels its 0.2 in two ticks. The state indices count the 19
// white keys from the left, then the 13 black keys; the table maps them onto
// key numbers and depths.
#pragma once

#include <cstdint>

struct PianoEvent {
    uint8_t key;    // state index 0..31
    uint8_t state;  // 1 held, 0 released
    uint8_t unused[2];
    uint32_t tick;
};
static_assert(sizeof(PianoEvent) == 8, "piano events are 8 bytes on disk");

struct PianoKeyTravel {
    int keyNumber;  // order of the key's vertices in the keyboard model
    float restZ;
    float pressedZ;
};

const int kPianoKeyCount = 32;
const int kPianoWhiteKeys = 19;
const unsigned int kPianoMaxEvents = 2048;
const unsigned int kPianoLoopTicks = 1984;
const int kKeyboardBodyVertices = 117;
const int kKeyboardKeyVertices = 24;

// By state index.
extern const PianoKeyTravel kPianoKeys[kPianoKeyCount];

// Reads a roll into events (room for 2048); the bytes consumed (4 + 8n), 0 when truncated,
// over 2048 events or naming a key beyond 31 (count is then 0).
unsigned int ParsePianoRoll(const unsigned char* bytes, unsigned int length, PianoEvent* events,
                            unsigned int* count);
// Bytes SerialisePianoRoll writes for count events.
unsigned int PianoRollSize(unsigned int count);
// Writes the file image of the events into out (PianoRollSize bytes); the bytes written.
unsigned int SerialisePianoRoll(const PianoEvent* events, unsigned int count, unsigned char* out);
// Moves key keyNumber of g_keyboardModel one step down towards pressedZ.
void PressKey(int keyNumber, float pressedZ);
// Moves key keyNumber of g_keyboardModel one step up towards restZ.
void RaiseKey(int keyNumber, float restZ);
