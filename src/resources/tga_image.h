// TGA images as textures use them: true-colour, uncompressed (type 2) or
// run-length encoded (type 10), 24 or 32 bits per pixel, 18-byte header with
// no image ID, no colour map and origin (0, 0). The first 12 header bytes are
// matched whole against one of two templates, so anything else (an ID field,
// a colour map, an offset origin) is refused.
//
// Decoding is pure (bytes in, RGB or RGBA pixels out, no GL) so it can be
// tested and fuzzed on its own; the texture manager uploads the result. Rows
// come out in file order (bottom row first in a default TGA); the descriptor
// byte is not consulted. The writer beside it makes the same files for tools,
// tests and fuzz seeds.
#pragma once

static const unsigned int kTgaHeaderSize = 18;

// The 12 header bytes the two accepted image types must start with.
extern const unsigned char kTgaRunLengthTemplate[12];
extern const unsigned char kTgaUncompressedTemplate[12];

struct TgaImage {
    unsigned int width;
    unsigned int height;
    unsigned int bits;      // 24 or 32
    unsigned char* pixels;  // width x height x bits/8 bytes, RGB or RGBA, malloc'd; null when empty
};

// Decodes a TGA file into image (pixels freshly allocated); 1, or 0 with nothing allocated.
int TgaDecode(const unsigned char* bytes, unsigned int length, TgaImage* image);
// Frees the pixels and zeroes the image.
void TgaFree(TgaImage* image);
// Encodes RGB or RGBA pixels (bits 24 or 32) as a type 2 file, or type 10 when runLength is set;
// returns a malloc'd file and its length, or null.
unsigned char* TgaEncode(const unsigned char* pixels, unsigned int width, unsigned int height,
                         unsigned int bits, int runLength, unsigned int* length);
