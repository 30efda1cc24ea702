#include "keyboard_layout.h"

// State index -> key number, rest and pressed heights. The key numbers are the
// order in which the keyboard model was first laid out, which the menu's key
// table follows; two white keys stand a thousandth higher than the rest.
struct KeyTableRow {
    int keyNumber;
    float restZ;
    float pressedZ;
};

static const KeyTableRow kKeyTable[kPianoKeys] = {
    {0, 0.497f, 0.297f},  {2, 0.497f, 0.297f},  {3, 0.497f, 0.297f},  {4, 0.497f, 0.297f},
    {5, 0.497f, 0.297f},  {6, 0.497f, 0.297f},  {7, 0.497f, 0.297f},  {8, 0.497f, 0.297f},
    {9, 0.497f, 0.297f},  {10, 0.497f, 0.297f}, {11, 0.497f, 0.297f}, {12, 0.497f, 0.297f},
    {13, 0.497f, 0.297f}, {14, 0.497f, 0.297f}, {15, 0.497f, 0.297f}, {16, 0.497f, 0.297f},
    {17, 0.498f, 0.297f}, {18, 0.497f, 0.297f}, {19, 0.498f, 0.297f}, {24, 0.798f, 0.598f},
    {25, 0.798f, 0.598f}, {26, 0.798f, 0.598f}, {1, 0.798f, 0.598f},  {20, 0.798f, 0.598f},
    {21, 0.798f, 0.598f}, {22, 0.798f, 0.598f}, {23, 0.798f, 0.598f}, {27, 0.798f, 0.598f},
    {28, 0.798f, 0.598f}, {29, 0.798f, 0.598f}, {30, 0.798f, 0.598f}, {31, 0.798f, 0.598f}};

static bool IsBlack(int semitone) {
    int s = semitone % 12;
    return s == 1 || s == 3 || s == 6 || s == 8 || s == 10;
}

static PianoKey s_keys[kPianoKeys];  // by semitone above the lowest note
static bool s_ready = false;

static void BuildKeys() {
    int white = 0;
    int black = 0;
    for (int s = 0; s < kPianoKeys; s++) {
        PianoKey& k = s_keys[s];
        k.black = IsBlack(s);
        k.stateIndex = k.black ? kPianoWhiteKeys + black++ : white++;
        k.whitePosition = k.black ? white - 1 : k.stateIndex;
        const KeyTableRow& row = kKeyTable[k.stateIndex];
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
    return s >= 0 && s < kPianoKeys ? &s_keys[s] : nullptr;
}

const PianoKey* PianoKeyForState(int stateIndex) {
    for (int s = 0; s < kPianoKeys; s++) {
        const PianoKey* k = PianoKeyForNote(kPianoLowestNote + s);
        if (k->stateIndex == stateIndex) {
            return k;
        }
    }
    return nullptr;
}

const PianoKey* PianoKeyForNumber(int keyNumber) {
    for (int s = 0; s < kPianoKeys; s++) {
        const PianoKey* k = PianoKeyForNote(kPianoLowestNote + s);
        if (k->keyNumber == keyNumber) {
            return k;
        }
    }
    return nullptr;
}
