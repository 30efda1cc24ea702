// Bitmap-font text batches. Every piece of text on screen is one entry of a
// TextBatch: up to 64 lines, each a run of glyph indices with a position, a
// glyph size and an alignment in the 800 x 600 virtual screen (y down). Build()
// turns all entries into one flat array of 32-byte vertices (position, normal,
// texture coordinate), two triangles per glyph, which the drawing code hands to
// GlWindow::DrawMesh with "gui_font.tga" bound. The font image is 512 x 256:
// 16 x 8 cells of 32 x 32 pixels, glyph g in column g % 16, row g / 16 from the
// top. Characters are Windows-1252 bytes; the ones the font lacks show as "A".
//
// Glyphs advance by 80 % of their size, so neighbours overlap by a fifth: the
// font's cells carry wide margins and this is what packs the letters.
//
// The vertex array is allocated once, on the first Build, and holds 40,960
// vertices (6,826 glyphs); a batch with more text than that stops at its end.
#pragma once

struct TextEntry {
    float x, y, z;               // top-left corner of the first glyph; z stays 0
    float width;                 // the box alignment refers to
    float size;                  // glyph width and height
    float factor;                // passed by every caller as 1.0, read by nobody
    int length;                  // glyphs in use
    unsigned char glyphs[1024];  // glyph indices, not characters
    unsigned int align;          // 0 left, 1 centred in width, 2 right-aligned in width
};

class TextBatch {
public:
    static const int kMaxEntries = 64;
    static const int kMaxGlyphs = 1024;
    static const int kVertexFloats = 8;
    static const int kMaxVertices = 40960;
    static const int kGlyphCount = 108;

    int count;                   // entries added
    TextEntry* entries;          // kMaxEntries entries, owned
    unsigned int triangleCount;  // triangles in vertices after the last Build
    float* vertices;             // kMaxVertices * 8 floats, owned; null until the first Build

    // Allocates zeroed entries; no vertices yet.
    TextBatch();
    // Frees entries and vertices.
    ~TextBatch();
    TextBatch(const TextBatch&) = delete;
    TextBatch& operator=(const TextBatch&) = delete;

    // Frees everything and starts again with fresh zeroed entries and no vertex array.
    void Reset();
    // Adds an entry; its index, or -1 when the batch is full, text is null or 1024+ characters long.
    int AddEntry(const char* text, float x, float y, float width, float size, float factor,
                 unsigned int align);
    // Replaces an entry's glyphs with those of text.
    void SetText(int index, const char* text);
    // Formats printf-style (result below 256 characters) and replaces the entry's glyphs.
    void SetTextF(int index, const char* format, ...) __attribute__((format(printf, 3, 4)));
    // Appends the glyphs of text to an entry.
    void AppendText(int index, const char* text);
    // Empties one entry (keeping its geometry), or with -1 the whole batch.
    void ClearEntry(int index);
    // Rebuilds the vertex array from every entry; returns the triangle count.
    unsigned int Build();

    // The glyph index of a Windows-1252 byte: its first place in the font, 0 ("A") when absent.
    static int GlyphIndex(unsigned char character);
    // Texture coordinate (u, v in 0..1) of corner 0..3 of glyph g: 0 top-left, 1 top-right,
    // 2 bottom-left, 3 bottom-right.
    static void GlyphCorner(int glyph, int corner, float* u, float* v);
    // Offset of an entry's first glyph from its x, by its alignment.
    static double StartOffset(const TextEntry& entry);
};

// Text batches of the engine's own screens (the game's and menu's are declared with them).
extern TextBatch g_debugValues;   // the nine value lines of the debug panel
extern TextBatch g_netDebugText;  // the network statistics panel
extern TextBatch g_debugTitles;   // debug panel title, start-up caption, engine mark, build line
extern TextBatch g_loadingText;   // the loading screen's caption
