// A replay: the input the game reads, tick by tick, from a known start. The
// game itself is deterministic (fixed 20 ms ticks, one never-reseeded random
// sequence), so the start state plus every key down and up and every joystick
// move reproduces a game exactly.
//
// The file is plain text a person can read and edit (docs/replays.md):
//
//   vantle2-replay 1
//   level 1
//   lives 3
//   score 0
//   highscore 0
//   rand 1
//   debug 0
//   ticks 2310
//   0 down UP
//   12 down SPACE
//   13 up SPACE
//   40 joy 32767 65535
//   90 joy off
//
// Event lines are "<tick> <what> ...", ticks never decreasing and below the
// length. Files are untrusted: the parser checks every field and reports the
// first problem with its line number.
#pragma once

enum ReplayEventKind { ReplayKeyDown = 0, ReplayKeyUp = 1, ReplayJoystick = 2, ReplayJoystickOff = 3 };

struct ReplayEvent {
    unsigned int tick;
    unsigned char kind;   // ReplayEventKind
    unsigned char key;    // virtual-key code for key events
    unsigned short joyX;  // raw axes 0..65535 for joystick events
    unsigned short joyY;
};

class Replay {
public:
    static const int kMaxEvents = 200000;
    static const int kMaxLevel = 999;
    static const int kMaxLives = 999;

    int level;               // level to start
    int lives;               // lives at the start
    unsigned int score;      // score at the start
    unsigned int highScore;  // high score at the start
    unsigned int randState;  // state of the random sequence at the start
    unsigned char debug;     // g_debug during the game (the debug keys act only when set)
    unsigned int length;     // ticks recorded
    int eventCount;
    ReplayEvent* events;  // kMaxEvents entries, owned
    char error[160];      // why the last Parse or Load failed: "line N: ..."

    Replay();
    ~Replay();
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;

    // Empties the event list and sets the start to level 1, 3 lives, score 0, random state 1.
    void Clear();
    // Appends an event; 1, or 0 when the list is full or the tick goes backwards.
    int AddEvent(unsigned int tick, int kind, int key, int joyX, int joyY);
    // Reads replay text; the bytes consumed (length), or 0 with error set.
    int Parse(const char* text, unsigned int length);
    // Writes the replay as text into out (capacity bytes, zero-terminated); the length, or 0 when too small.
    int Serialise(char* out, unsigned int capacity) const;
    // Bytes Serialise needs, terminator included.
    unsigned int Size() const;
    // Reads a replay file; 1, or 0 with error set.
    int Load(const char* path);
    // Writes the replay file (temporary file renamed into place); 1 or 0.
    int Save(const char* path) const;
};

// The readable name of a virtual-key code ("SPACE", "UP", "A"), or null when it has none.
const char* ReplayKeyName(int key);
// The virtual-key code of a name or a number ("SPACE", "0x20", "32"); -1 when unknown.
int ReplayKeyCode(const char* name);
