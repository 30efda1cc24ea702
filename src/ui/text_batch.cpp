#include "ui/text_batch.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

// The font's character set in glyph order, 16 per row. Row 4 holds blanks:
// the space is glyph 72 (its first place), the cursor bullet 0x95 is 73. The
// last two cells are never matched by a text byte.
static const unsigned char kCharacterSet[TextBatch::kGlyphCount] = {
    'A',  'B',  'C', 'D', 'E', 'F', 'G',  'H', 'I',  'J',  'K', 'L', 'M', 'N', 'O', 'P', 'Q',  'R',
    'S',  'T',  'U', 'V', 'W', 'X', 'Y',  'Z', '-',  '=',  '_', '+', ';', ':', '1', '2', '3',  '4',
    '5',  '6',  '7', '8', '9', '0', '!',  '"', 0xA3, '$',  '%', '^', '&', '*', '(', ')', '#',  '@',
    '\'', '~',  '[', ']', '{', '}', '\\', '|', 0xAE, 0xA9, ',', '.', '/', '<', '>', '?', 0xB0, 0xB7,
    ' ',  0x95, ' ', ' ', ' ', ' ', ' ',  ' ', 'a',  'b',  'c', 'd', 'e', 'f', 'g', 'h', 'i',  'j',
    'k',  'l',  'm', 'n', 'o', 'p', 'q',  'r', 's',  't',  'u', 'v', 'w', 'x', 'y', 'z', 0,    0,
};

// Kept as the float it always was, widened for the arithmetic.
static const double kAdvance = static_cast<double>(0.8f);

static const int kGlyphVertices = 6;

static TextEntry* NewEntries() {
    TextEntry* entries = new TextEntry[TextBatch::kMaxEntries];
    memset(entries, 0, sizeof(TextEntry) * TextBatch::kMaxEntries);
    return entries;
}

TextBatch::TextBatch() {
    count = 0;
    entries = NewEntries();
    triangleCount = 0;
    vertices = nullptr;
}

TextBatch::~TextBatch() {
    delete[] entries;
    delete[] vertices;
}

void TextBatch::Reset() {
    delete[] entries;
    delete[] vertices;
    entries = NewEntries();
    vertices = nullptr;
    count = 0;
    triangleCount = 0;
}

int TextBatch::GlyphIndex(unsigned char character) {
    for (int i = 0; i < kGlyphCount; i++) {
        if (kCharacterSet[i] == character) {
            return i;
        }
    }
    return 0;
}

int TextBatch::AddEntry(const char* text, float x, float y, float width, float size, float factor,
                        unsigned int align) {
    if (count >= kMaxEntries || !text || strlen(text) >= static_cast<size_t>(kMaxGlyphs)) {
        return -1;
    }
    int index = count;
    TextEntry& entry = entries[index];
    entry.x = x;
    entry.y = y;
    entry.z = 0.0f;
    entry.width = width;
    entry.size = size;
    entry.factor = factor;
    entry.align = align;
    entry.length = 0;
    count++;
    AppendText(index, text);
    return index;
}

void TextBatch::SetText(int index, const char* text) {
    if (index < 0 || index >= kMaxEntries || !text) {
        return;
    }
    ClearEntry(index);
    AppendText(index, text);
}

void TextBatch::SetTextF(int index, const char* format, ...) {
    if (index < 0 || index >= kMaxEntries || !format) {
        return;
    }
    char buffer[256];
    va_list args;
    va_start(args, format);
    vsnprintf(buffer, sizeof(buffer), format, args);
    va_end(args);
    SetText(index, buffer);
}

// Callers keep an entry within 1024 glyphs; the cut here only keeps a careless
// one from writing past the entry.
void TextBatch::AppendText(int index, const char* text) {
    if (index < 0 || index >= kMaxEntries || !text) {
        return;
    }
    TextEntry& entry = entries[index];
    for (const unsigned char* c = reinterpret_cast<const unsigned char*>(text); *c; c++) {
        if (entry.length >= kMaxGlyphs) {
            break;
        }
        entry.glyphs[entry.length++] = static_cast<unsigned char>(GlyphIndex(*c));
    }
}

void TextBatch::ClearEntry(int index) {
    if (index == -1) {
        memset(entries, 0, sizeof(TextEntry) * kMaxEntries);
        count = 0;
        return;
    }
    if (index < 0 || index >= kMaxEntries) {
        return;
    }
    memset(entries[index].glyphs, 0, sizeof(entries[index].glyphs));
    entries[index].length = 0;
}

void TextBatch::GlyphCorner(int glyph, int corner, float* u, float* v) {
    int column = glyph % 16;
    int row = 8 - glyph / 16;
    float pu = 32.0f * column;
    float pv = 32.0f * row;
    if (corner == 1 || corner == 3) {
        pu += 32.0f;
    }
    if (corner == 2 || corner == 3) {
        pv -= 32.0f;
    }
    *u = pu / 512.0f;
    *v = pv / 256.0f;
}

double TextBatch::StartOffset(const TextEntry& entry) {
    double run = entry.length * entry.size * kAdvance;
    if (entry.align == 1) {
        return entry.width / 2.0 - run / 2.0;
    }
    if (entry.align == 2) {
        return entry.width - run;
    }
    return 0.0;
}

static float* PutVertex(float* out, float x, float y, float z, int glyph, int corner) {
    out[0] = x;
    out[1] = y;
    out[2] = z;
    out[3] = 0.0f;
    out[4] = 0.0f;
    out[5] = 1.0f;
    TextBatch::GlyphCorner(glyph, corner, &out[6], &out[7]);
    return out + TextBatch::kVertexFloats;
}

// Two triangles, top-left / bottom-left / bottom-right and bottom-right /
// top-right / top-left: counter-clockwise once the 2D canvas flips y.
static float* PutGlyph(float* out, const TextEntry& entry, float x0, int glyph) {
    float x1 = x0 + entry.size;
    float y0 = entry.y;
    float y1 = entry.y + entry.size;
    out = PutVertex(out, x0, y0, entry.z, glyph, 0);
    out = PutVertex(out, x0, y1, entry.z, glyph, 2);
    out = PutVertex(out, x1, y1, entry.z, glyph, 3);
    out = PutVertex(out, x1, y1, entry.z, glyph, 3);
    out = PutVertex(out, x1, y0, entry.z, glyph, 1);
    return PutVertex(out, x0, y0, entry.z, glyph, 0);
}

unsigned int TextBatch::Build() {
    if (!vertices) {
        vertices = new float[kMaxVertices * kVertexFloats];
    }
    int n = 0;
    float* out = vertices;
    for (int i = 0; i < kMaxEntries; i++) {
        const TextEntry& entry = entries[i];
        double s = StartOffset(entry);
        for (int g = 0; g < entry.length; g++) {
            if (n + kGlyphVertices > kMaxVertices) {
                triangleCount = n / 3;
                return triangleCount;
            }
            out = PutGlyph(out, entry, static_cast<float>(entry.x + s), entry.glyphs[g]);
            n += kGlyphVertices;
            s += entry.size * kAdvance;
        }
    }
    triangleCount = n / 3;
    return triangleCount;
}
