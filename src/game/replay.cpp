#include "game/replay.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"

static const char kMagic[] = "vantle2-replay";
static const int kVersion = 1;
static const int kMaxLine = 256;
static const unsigned int kMaxFileSize = 64u * 1024u * 1024u;

// Keys with names; everything else is written as a hexadecimal code.
struct KeyName {
    int code;
    const char* name;
};
static const KeyName kKeyNames[] = {
    {0x08, "BACK"},  {0x09, "TAB"},   {0x0D, "RETURN"},  {0x10, "SHIFT"},  {0x11, "CONTROL"},
    {0x12, "MENU"},  {0x13, "PAUSE"}, {0x14, "CAPITAL"}, {0x1B, "ESCAPE"}, {0x20, "SPACE"},
    {0x21, "PRIOR"}, {0x22, "NEXT"},  {0x23, "END"},     {0x24, "HOME"},   {0x25, "LEFT"},
    {0x26, "UP"},    {0x27, "RIGHT"}, {0x28, "DOWN"},    {0x2D, "INSERT"}, {0x2E, "DELETE"},
};

const char* ReplayKeyName(int key) {
    static char single[26 + 10][2];
    if ((key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9')) {
        int index = key >= 'A' ? key - 'A' : 26 + key - '0';
        single[index][0] = static_cast<char>(key);
        single[index][1] = 0;
        return single[index];
    }
    for (const KeyName& k : kKeyNames) {
        if (k.code == key) {
            return k.name;
        }
    }
    return nullptr;
}

// Parses a whole token as an unsigned decimal (or 0x hexadecimal) number no greater than max.
static int ParseUnsigned(const char* token, unsigned long long max, unsigned long long* out) {
    if (!token || !*token || *token == '-' || *token == '+') {
        return 0;
    }
    int base = 10;
    if (token[0] == '0' && (token[1] == 'x' || token[1] == 'X')) {
        base = 16;
        token += 2;
        if (!*token) {
            return 0;
        }
    }
    for (const char* c = token; *c; c++) {
        int digit = (*c >= '0' && *c <= '9') || (base == 16 && strchr("abcdefABCDEF", *c));
        if (!digit) {
            return 0;
        }
    }
    errno = 0;
    unsigned long long value = strtoull(token, nullptr, base);
    if (errno != 0 || value > max) {
        return 0;
    }
    *out = value;
    return 1;
}

int ReplayKeyCode(const char* name) {
    if (!name || !*name) {
        return -1;
    }
    if (name[1] == 0 && ((name[0] >= 'A' && name[0] <= 'Z'))) {
        return name[0];
    }
    for (const KeyName& k : kKeyNames) {
        if (strcmp(k.name, name) == 0) {
            return k.code;
        }
    }
    // A lone digit is the digit key's name; longer numbers are codes.
    if (name[1] == 0 && name[0] >= '0' && name[0] <= '9') {
        return name[0];
    }
    unsigned long long code = 0;
    if (ParseUnsigned(name, 255, &code)) {
        return static_cast<int>(code);
    }
    return -1;
}

Replay::Replay() {
    events = new ReplayEvent[kMaxEvents];
    Clear();
}

Replay::~Replay() {
    delete[] events;
}

void Replay::Clear() {
    level = 1;
    lives = 3;
    score = 0;
    highScore = 0;
    randState = 1;
    debug = 0;
    length = 0;
    eventCount = 0;
    error[0] = 0;
}

int Replay::AddEvent(unsigned int tick, int kind, int key, int joyX, int joyY) {
    if (eventCount >= kMaxEvents || kind < ReplayKeyDown || kind > ReplayJoystickOff) {
        return 0;
    }
    if (eventCount > 0 && tick < events[eventCount - 1].tick) {
        return 0;
    }
    ReplayEvent& e = events[eventCount++];
    e.tick = tick;
    e.kind = static_cast<unsigned char>(kind);
    e.key = static_cast<unsigned char>(key & 0xFF);
    e.joyX = static_cast<unsigned short>(joyX & 0xFFFF);
    e.joyY = static_cast<unsigned short>(joyY & 0xFFFF);
    return 1;
}

namespace {

// One line cut into blank-separated words, comments removed.
struct ReplayLine {
    char text[kMaxLine + 1];
    const char* words[8];
    int wordCount;
};

enum HeaderField {
    FieldLevel,
    FieldLives,
    FieldScore,
    FieldHighScore,
    FieldRand,
    FieldDebug,
    FieldTicks,
    FieldCount
};
const char* const kFieldNames[FieldCount] = {"level", "lives", "score", "highscore",
                                             "rand",  "debug", "ticks"};
const unsigned long long kFieldMax[FieldCount] = {
    Replay::kMaxLevel, Replay::kMaxLives, 0xFFFFFFFFull, 0xFFFFFFFFull, 0xFFFFFFFFull, 255, 0xFFFFFFFFull};

// Splits text into words; 0 when the line has more than the table holds.
int SplitWords(ReplayLine& line) {
    line.wordCount = 0;
    char* hash = strchr(line.text, '#');
    if (hash) {
        *hash = 0;
    }
    char* cursor = line.text;
    while (*cursor) {
        while (*cursor == ' ' || *cursor == '\t') {
            *cursor++ = 0;
        }
        if (!*cursor) {
            break;
        }
        if (line.wordCount == 8) {
            return 0;
        }
        line.words[line.wordCount++] = cursor;
        while (*cursor && *cursor != ' ' && *cursor != '\t') {
            cursor++;
        }
    }
    return 1;
}

}  // namespace

// Records the first failure with its line number; always returns 0 so callers can return it.
static int Fail(char* error, int lineNumber, const char* message, const char* word) {
    if (word) {
        snprintf(error, 160, "line %d: %s '%.40s'", lineNumber, message, word);
    } else {
        snprintf(error, 160, "line %d: %s", lineNumber, message);
    }
    return 0;
}

static int ParseEvent(Replay& replay, const ReplayLine& line, int lineNumber, unsigned int* lastTick) {
    unsigned long long tick = 0;
    if (!ParseUnsigned(line.words[0], 0xFFFFFFFFull, &tick)) {
        return Fail(replay.error, lineNumber, "bad tick or unknown field", line.words[0]);
    }
    if (tick >= replay.length) {
        return Fail(replay.error, lineNumber, "tick is not below the replay's length", line.words[0]);
    }
    if (tick < *lastTick) {
        return Fail(replay.error, lineNumber, "tick goes backwards", line.words[0]);
    }
    if (line.wordCount < 2) {
        return Fail(replay.error, lineNumber, "event without a kind", nullptr);
    }
    const char* what = line.words[1];
    int kind = -1, key = 0;
    unsigned long long x = 0, y = 0;
    if (strcmp(what, "down") == 0 || strcmp(what, "up") == 0) {
        kind = what[0] == 'd' ? ReplayKeyDown : ReplayKeyUp;
        if (line.wordCount != 3) {
            return Fail(replay.error, lineNumber, "a key event takes one key:", what);
        }
        key = ReplayKeyCode(line.words[2]);
        if (key < 0) {
            return Fail(replay.error, lineNumber, "unknown key", line.words[2]);
        }
    } else if (strcmp(what, "joy") == 0) {
        if (line.wordCount == 3 && strcmp(line.words[2], "off") == 0) {
            kind = ReplayJoystickOff;
        } else if (line.wordCount == 4 && ParseUnsigned(line.words[2], 65535, &x) &&
                   ParseUnsigned(line.words[3], 65535, &y)) {
            kind = ReplayJoystick;
        } else {
            return Fail(replay.error, lineNumber, "joy takes \"off\" or two axes 0..65535", nullptr);
        }
    } else {
        return Fail(replay.error, lineNumber, "unknown event", what);
    }
    if (!replay.AddEvent(static_cast<unsigned int>(tick), kind, key, static_cast<int>(x),
                         static_cast<int>(y))) {
        return Fail(replay.error, lineNumber, "too many events", nullptr);
    }
    *lastTick = static_cast<unsigned int>(tick);
    return 1;
}

static int ParseHeaderField(Replay& replay, const ReplayLine& line, int lineNumber, int* seen) {
    for (int f = 0; f < FieldCount; f++) {
        if (strcmp(line.words[0], kFieldNames[f]) != 0) {
            continue;
        }
        if (seen[f]) {
            return Fail(replay.error, lineNumber, "field given twice:", kFieldNames[f]);
        }
        unsigned long long value = 0;
        if (line.wordCount != 2 || !ParseUnsigned(line.words[1], kFieldMax[f], &value)) {
            return Fail(replay.error, lineNumber, "bad value for", kFieldNames[f]);
        }
        if (f == FieldLevel && value == 0) {
            return Fail(replay.error, lineNumber, "levels are numbered from 1:", line.words[1]);
        }
        seen[f] = 1;
        unsigned int v = static_cast<unsigned int>(value);
        switch (f) {
            case FieldLevel:
                replay.level = static_cast<int>(v);
                break;
            case FieldLives:
                replay.lives = static_cast<int>(v);
                break;
            case FieldScore:
                replay.score = v;
                break;
            case FieldHighScore:
                replay.highScore = v;
                break;
            case FieldRand:
                replay.randState = v;
                break;
            case FieldDebug:
                replay.debug = static_cast<unsigned char>(v);
                break;
            default:
                replay.length = v;
                break;
        }
        return 1;
    }
    return -1;
}

// Copies the next physical line (without CR LF) into line; 0 on a NUL byte or an over-long line.
static int ReadLine(const char* text, unsigned int length, unsigned int* at, ReplayLine& line, char* error,
                    int lineNumber) {
    unsigned int n = 0;
    while (*at < length && text[*at] != '\n') {
        char c = text[*at];
        (*at)++;
        if (c == 0) {
            return Fail(error, lineNumber, "unexpected NUL byte", nullptr);
        }
        if (n == kMaxLine) {
            return Fail(error, lineNumber, "line longer than 256 characters", nullptr);
        }
        line.text[n++] = c;
    }
    if (*at < length) {
        (*at)++;  // the '\n'
    }
    while (n > 0 && line.text[n - 1] == '\r') {
        n--;
    }
    line.text[n] = 0;
    return 1;
}

int Replay::Parse(const char* text, unsigned int textLength) {
    Clear();
    if (!text || textLength > kMaxFileSize) {
        return Fail(error, 0, "no text, or more than 64 MiB of it", nullptr);
    }
    int seen[FieldCount] = {0};
    int lineNumber = 0, haveMagic = 0, inEvents = 0;
    unsigned int at = 0, lastTick = 0;
    ReplayLine line;
    while (at < textLength) {
        lineNumber++;
        if (!ReadLine(text, textLength, &at, line, error, lineNumber)) {
            return 0;
        }
        if (!SplitWords(line)) {
            return Fail(error, lineNumber, "too many words", nullptr);
        }
        if (line.wordCount == 0) {
            continue;
        }
        if (!haveMagic) {
            if (line.wordCount != 2 || strcmp(line.words[0], kMagic) != 0) {
                return Fail(error, lineNumber, "not a replay: expected \"vantle2-replay 1\"", nullptr);
            }
            if (strcmp(line.words[1], "1") != 0) {
                return Fail(error, lineNumber, "unsupported replay version", line.words[1]);
            }
            haveMagic = 1;
            continue;
        }
        if (!inEvents) {
            int header = ParseHeaderField(*this, line, lineNumber, seen);
            if (header == 0) {
                return 0;
            }
            if (header == 1) {
                continue;
            }
            if (!seen[FieldTicks]) {
                return Fail(error, lineNumber, "unknown field or event before \"ticks\":", line.words[0]);
            }
            inEvents = 1;
        }
        if (!ParseEvent(*this, line, lineNumber, &lastTick)) {
            return 0;
        }
    }
    if (!haveMagic) {
        return Fail(error, lineNumber, "empty file, not a replay", nullptr);
    }
    if (!seen[FieldTicks]) {
        return Fail(error, lineNumber, "missing \"ticks\" line", nullptr);
    }
    error[0] = 0;
    return static_cast<int>(textLength > 0 ? textLength : 1);
}

namespace {

// Appends printf-style text while counting what the whole text needs.
struct ReplayWriter {
    char* out;
    unsigned int capacity;
    unsigned int needed;  // without the terminator

    void Add(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

void ReplayWriter::Add(const char* format, ...) {
    char piece[96];
    va_list args;
    va_start(args, format);
    int n = vsnprintf(piece, sizeof(piece), format, args);
    va_end(args);
    if (n <= 0) {
        return;
    }
    if (out && needed + n < capacity) {
        memcpy(out + needed, piece, static_cast<size_t>(n));
        out[needed + n] = 0;
    }
    needed += static_cast<unsigned int>(n);
}

void WriteEvent(ReplayWriter& w, const ReplayEvent& e) {
    if (e.kind == ReplayJoystick) {
        w.Add("%u joy %u %u\n", e.tick, e.joyX, e.joyY);
    } else if (e.kind == ReplayJoystickOff) {
        w.Add("%u joy off\n", e.tick);
    } else {
        const char* verb = e.kind == ReplayKeyDown ? "down" : "up";
        const char* name = ReplayKeyName(e.key);
        if (name) {
            w.Add("%u %s %s\n", e.tick, verb, name);
        } else {
            w.Add("%u %s 0x%02X\n", e.tick, verb, e.key);
        }
    }
}

}  // namespace

static unsigned int WriteReplay(const Replay& replay, char* out, unsigned int capacity) {
    ReplayWriter w = {out, capacity, 0};
    if (out && capacity > 0) {
        out[0] = 0;
    }
    w.Add("%s %d\n", kMagic, kVersion);
    w.Add("level %d\nlives %d\nscore %u\nhighscore %u\n", replay.level, replay.lives, replay.score,
          replay.highScore);
    w.Add("rand %u\ndebug %u\nticks %u\n", replay.randState, replay.debug, replay.length);
    for (int i = 0; i < replay.eventCount; i++) {
        WriteEvent(w, replay.events[i]);
    }
    return w.needed;
}

unsigned int Replay::Size() const {
    return WriteReplay(*this, nullptr, 0) + 1;
}

int Replay::Serialise(char* out, unsigned int capacity) const {
    if (!out || capacity < Size()) {
        return 0;
    }
    return static_cast<int>(WriteReplay(*this, out, capacity));
}

int Replay::Load(const char* path) {
    Clear();
    FILE* file = path ? fopen(path, "rb") : nullptr;
    if (!file) {
        snprintf(error, sizeof(error), "cannot open '%.100s'", path ? path : "");
        return 0;
    }
    long size = -1;
    if (fseek(file, 0, SEEK_END) == 0) {
        size = ftell(file);
        fseek(file, 0, SEEK_SET);
    }
    if (size < 0 || size > static_cast<long>(kMaxFileSize)) {
        fclose(file);
        snprintf(error, sizeof(error), "'%.100s' is unreadable or larger than 64 MiB", path);
        return 0;
    }
    char* text = new char[size > 0 ? size : 1];
    size_t length = fread(text, 1, static_cast<size_t>(size), file);
    fclose(file);
    int ok = Parse(text, static_cast<unsigned int>(length)) > 0;
    delete[] text;
    return ok;
}

int Replay::Save(const char* path) const {
    unsigned int size = Size();
    char* text = new char[size];
    int written = Serialise(text, size);
    int ok = written > 0 && Sys_WriteFileAtomic(path, text, static_cast<unsigned int>(written));
    delete[] text;
    return ok;
}
