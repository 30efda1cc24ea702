#include "piano_roll.h"

#include <algorithm>

#include "keyboard_layout.h"

bool MakePianoRoll(const Score& score, int startTick, std::vector<PianoRollEvent>* events,
                   std::string* error) {
    events->clear();
    for (const ScoreNote& note : score.notes) {
        if (!score.voices[note.voice].roll) {
            continue;
        }
        const PianoKey* key = PianoKeyForNote(note.pitch);
        if (!key) {
            *error = "note " + std::to_string(note.pitch) + " at tick " + std::to_string(note.start) +
                     " is not on the keyboard";
            return false;
        }
        // Let the key come up a little before the note ends, so a repeated note shows
        // as two presses (a key takes two ticks to travel).
        int held = note.length > 4 ? note.length - 2 : std::max(1, note.length - 1);
        int press = (note.start + startTick) % score.length;
        int release = (note.start + held + startTick) % score.length;
        events->push_back(PianoRollEvent{key->stateIndex, 1, press});
        events->push_back(PianoRollEvent{key->stateIndex, 0, release});
    }
    if (events->size() > kPianoRollMaxEvents) {
        *error = "the roll has " + std::to_string(events->size()) + " events, more than 2048";
        return false;
    }
    std::stable_sort(events->begin(), events->end(), [](const PianoRollEvent& a, const PianoRollEvent& b) {
        if (a.tick != b.tick) {
            return a.tick < b.tick;
        }
        if (a.state != b.state) {
            return a.state < b.state;
        }
        return a.key < b.key;
    });
    return true;
}

static void Put32(std::vector<uint8_t>* out, uint32_t v) {
    for (int i = 0; i < 4; i++) {
        out->push_back(static_cast<uint8_t>(v >> (8 * i)));
    }
}

static uint32_t Get32(const uint8_t* p) {
    return p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<uint32_t>(p[3]) << 24);
}

std::vector<uint8_t> EncodePianoRoll(const std::vector<PianoRollEvent>& events) {
    std::vector<uint8_t> out;
    Put32(&out, static_cast<uint32_t>(events.size()));
    for (const PianoRollEvent& e : events) {
        out.push_back(static_cast<uint8_t>(e.key));
        out.push_back(static_cast<uint8_t>(e.state));
        out.push_back(0);
        out.push_back(0);
        Put32(&out, static_cast<uint32_t>(e.tick));
    }
    return out;
}

bool DecodePianoRoll(const uint8_t* bytes, size_t length, std::vector<PianoRollEvent>* events) {
    events->clear();
    if (length < 4) {
        return false;
    }
    uint32_t count = Get32(bytes);
    if (count > kPianoRollMaxEvents || length < 4 + static_cast<size_t>(count) * 8) {
        return false;
    }
    for (uint32_t i = 0; i < count; i++) {
        const uint8_t* p = bytes + 4 + i * 8;
        events->push_back(PianoRollEvent{p[0], p[1], static_cast<int>(Get32(p + 4))});
    }
    return true;
}
