#include "keyboard_layout.h"

// State index -> key number, rest and pressed heights come from the engine's own table
// (kPianoKeys), so the model is built with the keys where the menu moves them.

static bool IsBlack(int semitone) {
    int s = semitone % 12;
    return s == 1 || s == 3 || s == 6 || s == 8 || s == 10;
}

static PianoKey s_keys[kPianoKeyCount];  // by semitone above the lowest note
static bool s_ready = false;

static void BuildKeys() {
    int white = 0;
    int black = 0;
    for (int s = 0; s < kPianoKeyCount; s++) {
        PianoKey& k = s_keys[s];
        k.black = IsBlack(s);
        k.stateIndex = k.black ? kPianoWhiteKeys + black++ : white++;
        k.whitePosition = k.black ? white - 1 : k.stateIndex;
        const PianoKeyTravel& row = kPianoKeys[k.stateIndex];
        k.keyNumber = row.keyNumber;
        k.restZ = row.restZ;
        k.pressedZ = row.pressedZ;
    }
    s_ready = true;
}

const PianoKey* PianoKeyForNote(int midi) {
    if (!s_ready) {
        BuildKeys();
    }
    int s = midi - kPianoLowestNote;
    return s >= 0 && s < kPianoKeyCount ? &s_keys[s] : nullptr;
}

const PianoKey* PianoKeyForState(int stateIndex) {
    for (int s = 0; s < kPianoKeyCount; s++) {
        const PianoKey* k = PianoKeyForNote(kPianoLowestNote + s);
        if (k->stateIndex == stateIndex) {
            return k;
        }
    }
    return nullptr;
}

const PianoKey* PianoKeyForNumber(int keyNumber) {
    for (int s = 0; s < kPianoKeyCount; s++) {
        const PianoKey* k = PianoKeyForNote(kPianoLowestNote + s);
        if (k->keyNumber == keyNumber) {
            return k;
        }
    }
    return nullptr;
}
