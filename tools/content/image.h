// An RGBA picture in memory and its TGA writer. Pictures are held top row
// first, the way they are drawn; the writer stores them bottom row first, the
// order the texture loader uploads them in (first stored row = GL row 0), so a
// picture comes out on screen the way round it was painted. Pictures without
// any transparency are written as 24-bit files (which the loader mipmaps),
// those with alpha as 32-bit files.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Colour {
    float r, g, b, a;
};

class Image {
public:
    int width;
    int height;
    std::vector<uint8_t> rgba;  // width * height * 4 bytes, top row first

    Image();
    Image(int w, int h);

    // Fills every pixel with one colour.
    void Fill(Colour c);
    // Reads pixel (x, y); coordinates wrap around the edges.
    Colour Get(int x, int y) const;
    // Writes pixel (x, y) (ignored outside the picture); channels are clamped to 0..1.
    void Set(int x, int y, Colour c);
    // Composites c over pixel (x, y) with c.a as coverage (straight-alpha "over").
    void Blend(int x, int y, Colour c);
    // Copies src into this picture with its top-left corner at (x, y).
    void Paste(const Image& src, int x, int y);
    // Fills the rectangle [x0, x1) x [y0, y1) with c, blended by c.a.
    void FillRect(int x0, int y0, int x1, int y1, Colour c);
    // True when some pixel has alpha below 255.
    bool HasAlpha() const;
};

// Encodes a picture as an uncompressed TGA (type 2), bottom row first; 32 bits when
// the picture has transparency or force32 is set, else 24 bits.
std::vector<uint8_t> EncodeTga(const Image& image, bool force32 = false);

// Encodes a picture as an 8-bit RGBA PNG (the desktop's icons). The pixels go into stored
// deflate blocks: every reader takes them, and no compression library is needed.
std::vector<uint8_t> EncodePng(const Image& image);

// Decodes an uncompressed 24- or 32-bit TGA made by EncodeTga back into a picture
// (tests use it to look at generated files); false on anything else.
bool DecodeTga(const uint8_t* bytes, size_t length, Image* out);

// Linear blend a + (b - a) * t of two colours.
Colour Mix(Colour a, Colour b, float t);
// Colour from 0..255 components.
Colour Rgb(int r, int g, int b, int a = 255);
