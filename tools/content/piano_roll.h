// The piano roll the title menu replays on its keyboard: a 32-bit little-endian
// event count, then 8-byte events (key state index, 1 pressed / 0 released, two
// zero bytes, 32-bit tick). It is made from the "roll" voices of the menu
// score, so every key moves with the note that is heard. The menu starts its
// roll clock at a given tick when the music starts, so a note heard at music
// tick t is pressed at roll tick (t + start) modulo the loop length.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "music_score.h"

enum { kPianoRollMaxEvents = 2048 };

struct PianoRollEvent {
    int key;    // state index 0..31
    int state;  // 1 pressed, 0 released
    int tick;
};

// Events of the score's roll voices, sorted by tick (releases before presses at one
// tick). False with a message when a note is off the keyboard or there are too many.
bool MakePianoRoll(const Score& score, int startTick, std::vector<PianoRollEvent>* events,
                   std::string* error);
// The file image of a list of events.
std::vector<uint8_t> EncodePianoRoll(const std::vector<PianoRollEvent>& events);
// Reads a file image back; false when it is truncated or holds more than 2048 events.
bool DecodePianoRoll(const uint8_t* bytes, size_t length, std::vector<PianoRollEvent>* events);
