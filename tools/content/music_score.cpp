#include "music_score.h"

#include <cmath>
#include <cstdlib>
#include <sstream>

static const char* const kInstrumentNames[kInstrumentCount] = {"piano", "bass", "pad",  "pluck",
                                                               "bell",  "lead", "drums"};

int NoteNumber(const std::string& token) {
    static const int kSemitone[7] = {9, 11, 0, 2, 4, 5, 7};  // A B C D E F G
    if (token.size() < 2 || token[0] < 'A' || token[0] > 'G') {
        return -1;
    }
    int n = kSemitone[token[0] - 'A'];
    size_t i = 1;
    if (token[i] == '#') {
        n++;
        i++;
    } else if (token[i] == 'b') {
        n--;
        i++;
    }
    if (i + 1 != token.size() || token[i] < '0' || token[i] > '8') {
        return -1;
    }
    return n + (token[i] - '0' + 1) * 12;
}

static int DrumNumber(const std::string& token) {
    if (token == "K") {
        return kKick;
    }
    if (token == "S") {
        return kSnare;
    }
    if (token == "H") {
        return kHat;
    }
    return -1;
}

struct ParseState {
    Score* score;
    std::string file;
    int line;
    double step;
    std::vector<double> voiceTime;  // position of each voice, in steps
    std::string* error;
};

static bool Fail(ParseState& st, const std::string& message) {
    *st.error = st.file + ":" + std::to_string(st.line) + ": " + message;
    return false;
}

static bool ReadNumber(const std::string& word, double* out) {
    char* end = nullptr;
    *out = strtod(word.c_str(), &end);
    return !word.empty() && end && *end == '\0';
}

static bool ParseVoice(ParseState& st, std::istringstream& words) {
    ScoreVoice v{"", -1, false, 0.7f, 0.0f};
    std::string instrument;
    if (!(words >> v.name >> instrument)) {
        return Fail(st, "voice needs a name and an instrument");
    }
    for (int i = 0; i < kInstrumentCount; i++) {
        if (instrument == kInstrumentNames[i]) {
            v.instrument = i;
        }
    }
    if (v.instrument < 0) {
        return Fail(st, "unknown instrument \"" + instrument + "\"");
    }
    std::string word;
    while (words >> word) {
        double value;
        if (word == "roll") {
            v.roll = true;
        } else if ((word == "volume" || word == "pan") && words >> word && ReadNumber(word, &value)) {
            (word == "volume" ? v.volume : v.pan) = static_cast<float>(value);
        } else {
            return Fail(st, "unexpected \"" + word + "\" on voice line");
        }
    }
    st.score->voices.push_back(v);
    st.voiceTime.push_back(0.0);
    return true;
}

static bool ParseNoteToken(ParseState& st, const std::string& token) {
    if (st.score->voices.empty()) {
        return Fail(st, "notes before the first voice line");
    }
    int voice = static_cast<int>(st.score->voices.size()) - 1;
    std::string pitches = token;
    double steps = 1.0;
    size_t colon = token.find(':');
    if (colon != std::string::npos) {
        pitches = token.substr(0, colon);
        if (!ReadNumber(token.substr(colon + 1), &steps) || steps <= 0.0) {
            return Fail(st, "bad length in \"" + token + "\"");
        }
    }
    double begin = st.voiceTime[voice];
    double end = begin + steps;
    st.voiceTime[voice] = end;
    if (pitches == "r") {
        return true;
    }
    int startTick = static_cast<int>(std::floor(begin * st.step + 0.5));
    int endTick = static_cast<int>(std::floor(end * st.step + 0.5));
    if (endTick > st.score->length) {
        return Fail(st, "note \"" + token + "\" runs past the end of the piece");
    }
    std::istringstream parts(pitches);
    std::string part;
    while (std::getline(parts, part, '+')) {
        bool drums = st.score->voices[voice].instrument == kDrums;
        int pitch = drums ? DrumNumber(part) : NoteNumber(part);
        if (pitch < 0) {
            return Fail(st, "unknown note \"" + part + "\"");
        }
        st.score->notes.push_back(ScoreNote{voice, pitch, startTick, std::max(1, endTick - startTick)});
    }
    return true;
}

// Text before the comment: a '#' that begins a word (a sharp follows its letter).
static std::string StripComment(const std::string& raw) {
    for (size_t i = 0; i < raw.size(); i++) {
        if (raw[i] == '#' && (i == 0 || raw[i - 1] == ' ' || raw[i - 1] == '\t')) {
            return raw.substr(0, i);
        }
    }
    return raw;
}

static bool ParseLine(ParseState& st, const std::string& raw) {
    std::string text = StripComment(raw);
    std::istringstream words(text);
    std::string first;
    if (!(words >> first)) {
        return true;
    }
    double value;
    if (first == "length" || first == "step") {
        std::string word;
        if (!(words >> word) || !ReadNumber(word, &value) || value <= 0.0) {
            return Fail(st, first + " needs a positive number");
        }
        if (first == "length") {
            st.score->length = static_cast<int>(value);
        } else {
            st.step = value;
        }
        return true;
    }
    if (st.score->length <= 0) {
        return Fail(st, "the piece must start with its length");
    }
    if (first == "voice") {
        return ParseVoice(st, words);
    }
    std::istringstream tokens(text);
    std::string token;
    while (tokens >> token) {
        if (token != "|" && !ParseNoteToken(st, token)) {
            return false;
        }
    }
    return true;
}

bool ParseScore(const std::string& text, const std::string& fileName, Score* out, std::string* error) {
    *out = Score{0, {}, {}};
    ParseState st{out, fileName, 0, 1.0, {}, error};
    std::istringstream lines(text);
    std::string raw;
    while (std::getline(lines, raw)) {
        st.line++;
        if (!raw.empty() && raw.back() == '\r') {
            raw.pop_back();
        }
        if (!ParseLine(st, raw)) {
            return false;
        }
    }
    if (out->length <= 0) {
        st.line = 0;
        return Fail(st, "no length given");
    }
    return true;
}
