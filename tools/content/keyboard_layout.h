// The title menu's piano: 32 keys, from C3 (MIDI 48) to G5 (MIDI 79),
// one key per semitone. A key has three numbers: its state index
// (what the piano roll and the menu's key-state table count in: the 19 white
// keys 0 to 18 from the left, then the 13 black keys 19 to 31 from the left),
// its key number (the order of the keys' vertices in the keyboard model) and its
// heights when up (rest) and down (pressed). The model, the roll and the music
// all take their numbers from here, so the keyboard plays what is heard.
#pragma once

#include "render/piano_roll.h"

enum { kPianoLowestNote = 48 };

struct PianoKey {
    int stateIndex;
    int keyNumber;  // position of the key's vertices in the model
    bool black;
    int whitePosition;  // white keys: 0..18 from the left; black keys: the white key to their left
    float restZ;
    float pressedZ;
};

// The key for a MIDI note, or null when the note is outside the keyboard.
const PianoKey* PianoKeyForNote(int midi);
// The key with a given state index (0..31), or null.
const PianoKey* PianoKeyForState(int stateIndex);
// The key whose vertices come k-th in the model (0..31), or null.
const PianoKey* PianoKeyForNumber(int keyNumber);
