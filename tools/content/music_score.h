// Music as text. A score file describes one looping piece in ticks of 20 ms
// (50 per second), the same clock the title menu's piano roll runs on:
//
//   # comment                        a word starting with '#' begins a comment
//   length 1984                      loop length in ticks
//   step 15.5                        ticks per step; note lengths count steps
//   voice lead piano roll pan -0.2 volume 0.8
//       E4:2 G4 C5+E5:4 r:2 | ...    notes follow their voice line
//
// A note token is PITCH[:STEPS]: a name A-G, optional '#' or 'b', an octave
// (C4 is middle C), or several joined with '+' for a chord, or 'r' for a rest;
// STEPS defaults to 1 and may be a decimal. Voices play side by side from tick 0;
// each token starts where the previous one ended, rounded to a whole tick. '|'
// marks bars for the reader and is ignored. Instruments: piano, bass, pad,
// pluck, bell, lead and drums (whose notes are K kick, S snare, H hat). The
// word "roll" marks the voices whose notes the on-screen keyboard plays.
#pragma once

#include <string>
#include <vector>

enum Instrument { kPiano, kBass, kPad, kPluck, kBell, kLead, kDrums, kInstrumentCount };
enum Drum { kKick = 200, kSnare = 201, kHat = 202 };

struct ScoreVoice {
    std::string name;
    int instrument;
    bool roll;     // drives the on-screen keyboard
    float volume;  // 0..1
    float pan;     // -1 left .. 1 right
};

struct ScoreNote {
    int voice;   // index into voices
    int pitch;   // MIDI note number (60 = C4), or a Drum value
    int start;   // tick
    int length;  // ticks, at least 1
};

struct Score {
    int length;  // loop length in ticks
    std::vector<ScoreVoice> voices;
    std::vector<ScoreNote> notes;
};

// Parses a score; on failure returns false with "file:line: message" in error.
bool ParseScore(const std::string& text, const std::string& fileName, Score* out, std::string* error);
// MIDI number of a note name such as "C4", "F#3", "Bb2"; -1 when it is not one.
int NoteNumber(const std::string& token);
