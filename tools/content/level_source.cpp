#include "level_source.h"

#include <cstdlib>
#include <cstring>

namespace {

struct Parser {
    LevelSource* out;
    std::string* error;
    int line;
    enum { kNone, kInPiece, kInEntity } block;

    bool Fail(const std::string& message) {
        *error = out->file + ":" + std::to_string(line) + ": " + message;
        return false;
    }
};

// Splits a line into words, dropping a comment (a word that starts with '#').
std::vector<std::string> Words(const std::string& text) {
    std::vector<std::string> words;
    size_t i = 0;
    while (i < text.size()) {
        while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) {
            i++;
        }
        if (i >= text.size() || text[i] == '#') {
            break;
        }
        size_t start = i;
        while (i < text.size() && text[i] != ' ' && text[i] != '\t') {
            i++;
        }
        words.push_back(text.substr(start, i - start));
    }
    return words;
}

bool Number(const std::string& word, float* out) {
    if (word.empty()) {
        return false;
    }
    char* end = nullptr;
    *out = strtof(word.c_str(), &end);
    return *end == '\0';
}

// Reads count numbers from words[first...]; false (with a message) when one is missing or bad.
bool Numbers(Parser& p, const std::vector<std::string>& words, size_t first, int count, float* out,
             const char* what) {
    for (int i = 0; i < count; i++) {
        if (first + i >= words.size()) {
            return p.Fail(std::string(what) + " needs " + std::to_string(count) + " numbers");
        }
        if (!Number(words[first + i], &out[i])) {
            return p.Fail("'" + words[first + i] + "' is not a number");
        }
    }
    return true;
}

bool ParseShape(Parser& p, const std::vector<std::string>& w) {
    LevelShape s;
    memset(&s, 0, sizeof(s));
    s.line = p.line;
    s.sides = 12;
    const std::string& kind = w[0];
    size_t next = 0;
    if (kind == "box" || kind == "ramp") {
        s.kind = kind == "box" ? kShapeBox : kShapeRamp;
        if (!Numbers(p, w, 1, 6, s.v, kind.c_str())) {
            return false;
        }
        for (int a = 0; a < 3; a++) {
            if (!(s.v[a] < s.v[a + 3])) {
                return p.Fail(kind + ": each second corner coordinate must be greater than the first");
            }
        }
        next = 7;
        if (s.kind == kShapeRamp) {
            static const char* const kRise[4] = {"+x", "-x", "+z", "-z"};
            if (next + 1 >= w.size() || w[next] != "rise") {
                return p.Fail("ramp needs 'rise +x', 'rise -x', 'rise +z' or 'rise -z'");
            }
            s.rise = -1;
            for (int r = 0; r < 4; r++) {
                if (w[next + 1] == kRise[r]) {
                    s.rise = r;
                }
            }
            if (s.rise < 0) {
                return p.Fail("ramp rises along +x, -x, +z or -z, not '" + w[next + 1] + "'");
            }
            next += 2;
        }
    } else if (kind == "cylinder") {
        s.kind = kShapeCylinder;
        if (!Numbers(p, w, 1, 3, s.v, "cylinder")) {
            return false;
        }
        next = 4;
        bool radius = false, height = false, top = false;
        while (next < w.size() && w[next] != "turn") {
            if (w[next] == "inside") {
                s.inside = 1;
                next++;
                continue;
            }
            float value = 0;
            if (next + 1 >= w.size() || !Number(w[next + 1], &value)) {
                return p.Fail("cylinder: '" + w[next] + "' needs a number after it");
            }
            if (w[next] == "radius") {
                s.v[3] = value;
                radius = true;
            } else if (w[next] == "height") {
                s.v[4] = value;
                height = true;
            } else if (w[next] == "top") {
                s.v[5] = value;
                top = true;
            } else if (w[next] == "sides") {
                s.sides = static_cast<int>(value);
            } else {
                return p.Fail("cylinder has radius, height, top, sides and inside, not '" + w[next] + "'");
            }
            next += 2;
        }
        if (!radius || !height || s.v[3] <= 0 || s.v[4] <= 0) {
            return p.Fail("cylinder needs a positive radius and height");
        }
        if (!top) {
            s.v[5] = s.v[3];
        }
        if (s.sides < 3 || s.sides > 64) {
            return p.Fail("cylinder sides must be 3 to 64");
        }
    } else if (kind == "blob") {
        s.kind = kShapeBlob;
        if (!Numbers(p, w, 1, 6, s.v, "blob")) {
            return false;
        }
        if (s.v[3] <= 0 || s.v[4] <= 0 || s.v[5] <= 0) {
            return p.Fail("blob radii must be positive");
        }
        next = 7;
    } else if (kind == "sheet") {
        s.kind = kShapeSheet;
        if (!Numbers(p, w, 1, 5, s.v, "sheet")) {
            return false;
        }
        next = 6;
        s.sides = 1;
        if (next + 1 < w.size() && w[next] == "cells") {
            float cells = 0;
            if (!Number(w[next + 1], &cells) || cells < 1 || cells > 32) {
                return p.Fail("sheet cells must be 1 to 32");
            }
            s.sides = static_cast<int>(cells);
            next += 2;
        }
        if (!(s.v[0] < s.v[3]) || !(s.v[2] < s.v[4])) {
            return p.Fail("sheet: the second corner must be greater than the first");
        }
    } else if (kind == "card") {
        s.kind = kShapeCard;
        if (!Numbers(p, w, 1, 3, s.v, "card")) {
            return false;
        }
        if (w.size() < 8 || w[4] != "width" || w[6] != "height" || !Number(w[5], &s.v[3]) ||
            !Number(w[7], &s.v[4]) || s.v[3] <= 0 || s.v[4] <= 0) {
            return p.Fail("card needs 'width W height H' with positive numbers");
        }
        next = 8;
    } else {
        return p.Fail("unknown shape '" + kind + "' (box, ramp, cylinder, blob, sheet, card)");
    }
    if (next < w.size()) {
        if (w[next] != "turn" || next + 2 != w.size() || !Number(w[next + 1], &s.turn)) {
            return p.Fail("unexpected '" + w[next] + "' after the " + kind);
        }
    }
    p.out->pieces.back().shapes.push_back(s);
    return true;
}

bool ParsePiece(Parser& p, const std::vector<std::string>& w) {
    if (w.size() < 3) {
        return p.Fail("piece needs a name and a texture");
    }
    if (p.out->pieces.size() >= 512) {
        return p.Fail("more than 512 pieces");
    }
    LevelPiece piece;
    piece.name = w[1];
    piece.texture = w[2];
    piece.scale = 64.0f;
    piece.flags = 0;
    piece.line = p.line;
    if (piece.name.size() > 49 || piece.texture.size() > 259) {
        return p.Fail("piece names are at most 49 characters, texture names at most 259");
    }
    static const struct {
        const char* word;
        unsigned char bit;
    } kFlags[] = {{"solid", kPieceSolid},
                  {"castsnoshadow", kPieceCastsNoShadow},
                  {"receivesnoshadow", kPieceReceivesNoShadow},
                  {"gllit", kPieceGlLit},
                  {"nocull", kPieceNoCull},
                  {"hidden", kPieceHidden}};
    for (size_t i = 3; i < w.size(); i++) {
        if (w[i] == "scale") {
            if (i + 1 >= w.size() || !Number(w[i + 1], &piece.scale) || piece.scale <= 0) {
                return p.Fail("scale needs a positive number (world units per texture repeat)");
            }
            i++;
            continue;
        }
        bool known = false;
        for (const auto& f : kFlags) {
            if (w[i] == f.word) {
                piece.flags |= f.bit;
                known = true;
            }
        }
        if (!known) {
            return p.Fail("unknown piece flag '" + w[i] + "'");
        }
    }
    p.out->pieces.push_back(piece);
    return true;
}

bool ParseEntity(Parser& p, const std::vector<std::string>& w) {
    if (w.size() < 5) {
        return p.Fail("entity needs a name and a position x y z");
    }
    if (p.out->entities.size() >= 512) {
        return p.Fail("more than 512 entities");
    }
    LevelEntity e;
    e.name = w[1];
    e.line = p.line;
    e.rotation[0] = e.rotation[1] = e.rotation[2] = 0.0f;
    // The game copies entity names into 20-byte fields.
    if (e.name.size() > 19) {
        return p.Fail("entity name '" + e.name + "' is longer than 19 characters");
    }
    if (!Numbers(p, w, 2, 3, e.position, "entity position")) {
        return false;
    }
    size_t i = 5;
    if (i < w.size()) {
        if (w[i] == "turn" && i + 2 == w.size()) {
            if (!Number(w[i + 1], &e.rotation[1])) {
                return p.Fail("'" + w[i + 1] + "' is not a number");
            }
        } else if (w[i] == "rot" && i + 4 == w.size()) {
            if (!Numbers(p, w, i + 1, 3, e.rotation, "rot")) {
                return false;
            }
        } else {
            return p.Fail("after the position an entity takes 'turn YAW' or 'rot X Y Z'");
        }
    }
    p.out->entities.push_back(e);
    return true;
}

// Ends the piece or entity being read; a piece must have had at least one shape.
bool CloseBlock(Parser& p) {
    if (p.block == Parser::kInPiece && p.out->pieces.back().shapes.empty()) {
        p.line = p.out->pieces.back().line;
        return p.Fail("piece '" + p.out->pieces.back().name + "' has no shapes");
    }
    p.block = Parser::kNone;
    return true;
}

bool ParseLine(Parser& p, const std::string& text) {
    std::vector<std::string> w = Words(text);
    if (w.empty()) {
        return true;
    }
    bool indented = text[0] == ' ' || text[0] == '\t';
    if (indented) {
        if (p.block == Parser::kInPiece) {
            return ParseShape(p, w);
        }
        if (p.block == Parser::kInEntity) {
            // Parameter text keeps the line as written (without indentation and comment).
            std::string joined = w[0];
            for (size_t i = 1; i < w.size(); i++) {
                joined += " " + w[i];
            }
            if (joined.find('=') == std::string::npos) {
                return p.Fail("an entity parameter line has the form key = value");
            }
            std::string& params = p.out->entities.back().params;
            params += (params.empty() ? "" : "\r\n") + joined;
            return true;
        }
        return p.Fail("an indented line belongs under a piece or an entity");
    }
    if (!CloseBlock(p)) {
        return false;
    }
    if (w[0] == "location") {
        size_t at = text.find("location") + 8;
        size_t start = text.find_first_not_of(" \t", at);
        size_t hash = text.find(" #", at);
        std::string name =
            start == std::string::npos
                ? ""
                : text.substr(start, hash == std::string::npos ? std::string::npos : hash - start);
        while (!name.empty() && (name.back() == ' ' || name.back() == '\t' || name.back() == '\r')) {
            name.pop_back();
        }
        if (name.empty() || name.size() > 49) {
            return p.Fail("the location name must be 1 to 49 characters");
        }
        p.out->name = name;
        return true;
    }
    if (w[0] == "piece") {
        p.block = Parser::kInPiece;
        return ParsePiece(p, w);
    }
    if (w[0] == "entity") {
        p.block = Parser::kInEntity;
        return ParseEntity(p, w);
    }
    return p.Fail("unknown keyword '" + w[0] + "' (location, piece, entity)");
}

}  // namespace

bool ParseLevelSource(const std::string& text, const std::string& fileName, LevelSource* out,
                      std::string* error) {
    *out = LevelSource();
    out->file = fileName;
    Parser p{out, error, 0, Parser::kNone};
    size_t pos = 0;
    while (pos <= text.size()) {
        size_t end = text.find('\n', pos);
        if (end == std::string::npos) {
            end = text.size();
        }
        std::string line = text.substr(pos, end - pos);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        p.line++;
        if (!ParseLine(p, line)) {
            return false;
        }
        pos = end + 1;
    }
    if (!CloseBlock(p)) {
        return false;
    }
    if (out->name.empty()) {
        p.line = 1;
        return p.Fail("the file has no 'location' line");
    }
    return true;
}
