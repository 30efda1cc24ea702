// Bitmap fonts for the text batches: a 512 x 256 picture of 16 x 8 cells of
// 32 x 32 pixels, glyph g in column g % 16 and row g / 16 (row 0 at the top).
// Glyphs are rasterised with FreeType from a TrueType face, centred in their
// cell with a common baseline, and stored as white-ish colour with the glyph's
// coverage in alpha, so the text colour the game sets tints them.
#pragma once

#include <string>

#include "image.h"

// How one font looks.
struct FontStyle {
    const char* file;        // TrueType file name inside the font directory
    int pixelSize;           // FreeType pixel size of the em
    int outline;             // outline radius in pixels, 0 for none
    Colour fillTop;          // glyph colour at the top of the cell
    Colour fillBottom;       // glyph colour at the bottom of the cell
    Colour outlineColour;    // colour of the outline (and of the drop shadow)
    int shadow;              // drop-shadow offset in pixels, 0 for none
};

// Number of glyph cells and of glyphs in use.
enum { kFontCells = 128, kFontGlyphs = 108 };

// The Windows-1252 byte of glyph g (0 for the blank cells).
unsigned char FontGlyphByte(int g);

// Rasterises the glyph set in the given style from fontDirectory/style.file.
// Returns false (with a message in error) when the face cannot be opened.
bool RasteriseFont(const std::string& fontDirectory, const FontStyle& style, Image* out,
                   std::string* error);

// How a line of text is painted into a picture.
struct TextStyle {
    const char* file;  // TrueType file name inside the font directory
    int pixelSize;
    Colour top;      // fill colour at the top of the line
    Colour bottom;   // fill colour at the bottom of the line
    int outline;     // outline radius in pixels, 0 for none
    Colour outlineColour;
};

// Paints text (ASCII) into a picture, centred horizontally on centreX with its
// baseline at row baseline. False with a message when the face cannot be opened.
bool PaintText(const std::string& fontDirectory, const TextStyle& style, const char* text, int centreX,
               int baseline, Image* canvas, std::string* error);
