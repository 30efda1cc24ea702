#include "resources/tga_image.h"

#include <cstdlib>
#include <cstring>

const unsigned char kTgaRunLengthTemplate[12] = {0, 0, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0};
const unsigned char kTgaUncompressedTemplate[12] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};

// Width, height and depth from bytes 12..16; 0 unless the sides are positive and
// the depth is one the upload understands (8-bit files are refused here).
static int ReadDimensions(const unsigned char* bytes, TgaImage* image) {
    image->width = bytes[12] | (bytes[13] << 8);
    image->height = bytes[14] | (bytes[15] << 8);
    image->bits = bytes[16];
    return image->width > 0 && image->height > 0 && (image->bits == 24 || image->bits == 32);
}

// Copies one stored pixel (BGR or BGRA) to RGB or RGBA.
static void SwapPixel(const unsigned char* in, unsigned char* out, unsigned int pixelBytes) {
    out[0] = in[2];
    out[1] = in[1];
    out[2] = in[0];
    if (pixelBytes == 4) {
        out[3] = in[3];
    }
}

static int DecodeUncompressed(const unsigned char* bytes, unsigned int length, TgaImage* image) {
    unsigned int pixelBytes = image->bits / 8;
    unsigned long long pixelCount = static_cast<unsigned long long>(image->width) * image->height;
    if (kTgaHeaderSize + pixelCount * pixelBytes > length) {
        return 0;
    }
    image->pixels = static_cast<unsigned char*>(malloc(pixelCount * pixelBytes));
    if (!image->pixels) {
        return 0;
    }
    const unsigned char* in = bytes + kTgaHeaderSize;
    for (unsigned long long i = 0; i < pixelCount; i++, in += pixelBytes) {
        SwapPixel(in, image->pixels + i * pixelBytes, pixelBytes);
    }
    return 1;
}

// Packets: a count byte c, then for c >= 128 one pixel repeated c - 127 times,
// else c + 1 raw pixels; until the image is full. Every read and every write is
// checked against its end.
static int DecodeRunLength(const unsigned char* bytes, unsigned int length, TgaImage* image) {
    unsigned int pixelBytes = image->bits / 8;
    unsigned long long pixelCount = static_cast<unsigned long long>(image->width) * image->height;
    // The densest packet makes 128 pixels from 1 + pixelBytes bytes: refuse an image the
    // data cannot possibly fill before allocating it.
    unsigned long long packets = (length - kTgaHeaderSize + pixelBytes) / (1 + pixelBytes);
    if (pixelCount > packets * 128) {
        return 0;
    }
    image->pixels = static_cast<unsigned char*>(malloc(pixelCount * pixelBytes));
    if (!image->pixels) {
        return 0;
    }
    unsigned int at = kTgaHeaderSize;
    unsigned long long produced = 0;
    while (produced < pixelCount) {
        if (at >= length) {
            return 0;
        }
        unsigned int header = bytes[at++];
        unsigned int run = header >= 128 ? header - 127 : header + 1;
        if (produced + run > pixelCount) {
            return 0;
        }
        for (unsigned int i = 0; i < run; i++) {
            if (i == 0 || header < 128) {
                if (at + pixelBytes > length) {
                    return 0;
                }
                at += pixelBytes;
            }
            SwapPixel(bytes + at - pixelBytes, image->pixels + produced * pixelBytes, pixelBytes);
            produced++;
        }
    }
    return 1;
}

int TgaDecode(const unsigned char* bytes, unsigned int length, TgaImage* image) {
    memset(image, 0, sizeof(*image));
    if (!bytes || length < 12) {
        return 0;
    }
    int ok = 0;
    if (memcmp(bytes, kTgaRunLengthTemplate, 12) == 0) {
        ok =
            length >= kTgaHeaderSize && ReadDimensions(bytes, image) && DecodeRunLength(bytes, length, image);
    } else if (memcmp(bytes, kTgaUncompressedTemplate, 12) == 0) {
        ok = length >= kTgaHeaderSize && ReadDimensions(bytes, image) &&
             DecodeUncompressed(bytes, length, image);
    }
    if (!ok) {
        TgaFree(image);
    }
    return ok;
}

void TgaFree(TgaImage* image) {
    free(image->pixels);
    memset(image, 0, sizeof(*image));
}

// Length of the run of equal pixels starting at pixel i (at most 128).
static unsigned int RunAt(const unsigned char* pixels, unsigned long long i, unsigned long long count,
                          unsigned int pixelBytes) {
    unsigned int run = 1;
    while (run < 128 && i + run < count &&
           memcmp(pixels + i * pixelBytes, pixels + (i + run) * pixelBytes, pixelBytes) == 0) {
        run++;
    }
    return run;
}

static unsigned int EncodeRunLength(const unsigned char* pixels, unsigned long long count,
                                    unsigned int pixelBytes, unsigned char* out) {
    unsigned int at = 0;
    unsigned long long i = 0;
    while (i < count) {
        unsigned int run = RunAt(pixels, i, count, pixelBytes);
        if (run >= 2) {
            out[at++] = static_cast<unsigned char>(127 + run);
            SwapPixel(pixels + i * pixelBytes, out + at, pixelBytes);
            at += pixelBytes;
            i += run;
            continue;
        }
        // Raw packet: gather pixels until a run of two starts or 128 are taken.
        unsigned int raw = 1;
        while (raw < 128 && i + raw < count && RunAt(pixels, i + raw, count, pixelBytes) < 2) {
            raw++;
        }
        out[at++] = static_cast<unsigned char>(raw - 1);
        for (unsigned int k = 0; k < raw; k++, at += pixelBytes) {
            SwapPixel(pixels + (i + k) * pixelBytes, out + at, pixelBytes);
        }
        i += raw;
    }
    return at;
}

unsigned char* TgaEncode(const unsigned char* pixels, unsigned int width, unsigned int height,
                         unsigned int bits, int runLength, unsigned int* length) {
    if (!pixels || width == 0 || height == 0 || width > 65535 || height > 65535 ||
        (bits != 24 && bits != 32)) {
        return nullptr;
    }
    unsigned int pixelBytes = bits / 8;
    unsigned long long count = static_cast<unsigned long long>(width) * height;
    // Worst case for run-length data is one header byte per pixel.
    unsigned long long capacity = kTgaHeaderSize + count * (pixelBytes + 1);
    if (capacity > 0xFFFFFFFFull) {
        return nullptr;
    }
    unsigned char* out = static_cast<unsigned char*>(calloc(capacity, 1));
    if (!out) {
        return nullptr;
    }
    memcpy(out, runLength ? kTgaRunLengthTemplate : kTgaUncompressedTemplate, 12);
    out[12] = width & 0xFF;
    out[13] = width >> 8;
    out[14] = height & 0xFF;
    out[15] = height >> 8;
    out[16] = static_cast<unsigned char>(bits);
    out[17] = bits == 32 ? 8 : 0;  // alpha bits; bottom-left origin
    unsigned int size = kTgaHeaderSize;
    if (runLength) {
        size += EncodeRunLength(pixels, count, pixelBytes, out + kTgaHeaderSize);
    } else {
        for (unsigned long long i = 0; i < count; i++, size += pixelBytes) {
            SwapPixel(pixels + i * pixelBytes, out + size, pixelBytes);
        }
    }
    *length = size;
    return out;
}
