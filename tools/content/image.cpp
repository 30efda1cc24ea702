#include "image.h"

#include <algorithm>
#include <cstring>

static uint8_t ToByte(float v) {
    if (v <= 0.0f) {
        return 0;
    }
    if (v >= 1.0f) {
        return 255;
    }
    return static_cast<uint8_t>(v * 255.0f + 0.5f);
}

Image::Image() : width(0), height(0) {}

Image::Image(int w, int h) : width(w), height(h), rgba(static_cast<size_t>(w) * h * 4, 0) {}

void Image::Fill(Colour c) {
    for (int y = 0; y < height; y++) {
        for (int x = 0; x < width; x++) {
            Set(x, y, c);
        }
    }
}

Colour Image::Get(int x, int y) const {
    x = ((x % width) + width) % width;
    y = ((y % height) + height) % height;
    const uint8_t* p = &rgba[(static_cast<size_t>(y) * width + x) * 4];
    return Colour{p[0] / 255.0f, p[1] / 255.0f, p[2] / 255.0f, p[3] / 255.0f};
}

void Image::Set(int x, int y, Colour c) {
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return;
    }
    uint8_t* p = &rgba[(static_cast<size_t>(y) * width + x) * 4];
    p[0] = ToByte(c.r);
    p[1] = ToByte(c.g);
    p[2] = ToByte(c.b);
    p[3] = ToByte(c.a);
}

void Image::Blend(int x, int y, Colour c) {
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return;
    }
    // Porter-Duff "over" with straight alpha, so edges over transparency keep their colour.
    Colour d = Get(x, y);
    float t = std::clamp(c.a, 0.0f, 1.0f);
    float a = t + d.a * (1.0f - t);
    if (a <= 0.0f) {
        return;
    }
    float kd = d.a * (1.0f - t) / a;
    float kc = t / a;
    Set(x, y, Colour{c.r * kc + d.r * kd, c.g * kc + d.g * kd, c.b * kc + d.b * kd, a});
}

void Image::Paste(const Image& src, int x, int y) {
    for (int j = 0; j < src.height; j++) {
        for (int i = 0; i < src.width; i++) {
            Set(x + i, y + j, src.Get(i, j));
        }
    }
}

void Image::FillRect(int x0, int y0, int x1, int y1, Colour c) {
    for (int y = y0; y < y1; y++) {
        for (int x = x0; x < x1; x++) {
            Blend(x, y, c);
        }
    }
}

bool Image::HasAlpha() const {
    for (size_t i = 3; i < rgba.size(); i += 4) {
        if (rgba[i] != 255) {
            return true;
        }
    }
    return false;
}

std::vector<uint8_t> EncodeTga(const Image& image, bool force32) {
    const bool alpha = force32 || image.HasAlpha();
    const int depth = alpha ? 4 : 3;
    std::vector<uint8_t> out(18 + static_cast<size_t>(image.width) * image.height * depth, 0);
    out[2] = 2;
    out[12] = static_cast<uint8_t>(image.width & 0xFF);
    out[13] = static_cast<uint8_t>(image.width >> 8);
    out[14] = static_cast<uint8_t>(image.height & 0xFF);
    out[15] = static_cast<uint8_t>(image.height >> 8);
    out[16] = static_cast<uint8_t>(depth * 8);
    out[17] = alpha ? 8 : 0;  // alpha bits; origin bottom-left
    size_t o = 18;
    for (int y = image.height - 1; y >= 0; y--) {
        for (int x = 0; x < image.width; x++) {
            const uint8_t* p = &image.rgba[(static_cast<size_t>(y) * image.width + x) * 4];
            out[o++] = p[2];
            out[o++] = p[1];
            out[o++] = p[0];
            if (alpha) {
                out[o++] = p[3];
            }
        }
    }
    return out;
}

static uint32_t Crc32(const uint8_t* bytes, size_t length) {
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < length; i++) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; bit++) {
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
        }
    }
    return ~crc;
}

static void PutBigEndian(std::vector<uint8_t>* out, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out->push_back(static_cast<uint8_t>(value >> shift));
    }
}

// One chunk: length, type, data and the CRC of type and data.
static void PutChunk(std::vector<uint8_t>* out, const char* type, const std::vector<uint8_t>& data) {
    PutBigEndian(out, static_cast<uint32_t>(data.size()));
    size_t start = out->size();
    out->insert(out->end(), type, type + 4);
    out->insert(out->end(), data.begin(), data.end());
    PutBigEndian(out, Crc32(out->data() + start, out->size() - start));
}

// A zlib stream of stored blocks (at most 65535 bytes each) holding raw.
static std::vector<uint8_t> StoredZlib(const std::vector<uint8_t>& raw) {
    std::vector<uint8_t> out = {0x78, 0x01};
    size_t at = 0;
    do {
        size_t length = std::min<size_t>(raw.size() - at, 65535);
        out.push_back(at + length == raw.size() ? 1 : 0);  // final-block bit, type 0 (stored)
        uint16_t n = static_cast<uint16_t>(length);
        uint16_t inverse = static_cast<uint16_t>(~n);
        out.insert(out.end(), {static_cast<uint8_t>(n), static_cast<uint8_t>(n >> 8),
                               static_cast<uint8_t>(inverse), static_cast<uint8_t>(inverse >> 8)});
        out.insert(out.end(), raw.begin() + at, raw.begin() + at + length);
        at += length;
    } while (at < raw.size());
    uint32_t a = 1, b = 0;
    for (uint8_t byte : raw) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    PutBigEndian(&out, (b << 16) | a);
    return out;
}

std::vector<uint8_t> EncodePng(const Image& image) {
    std::vector<uint8_t> raw;
    size_t row = static_cast<size_t>(image.width) * 4;
    for (int y = 0; y < image.height; y++) {
        raw.push_back(0);  // filter: none
        raw.insert(raw.end(), image.rgba.begin() + y * row, image.rgba.begin() + (y + 1) * row);
    }
    std::vector<uint8_t> header;
    PutBigEndian(&header, static_cast<uint32_t>(image.width));
    PutBigEndian(&header, static_cast<uint32_t>(image.height));
    header.insert(header.end(), {8, 6, 0, 0, 0});  // 8 bits, RGBA, deflate, no filter set, no interlace
    std::vector<uint8_t> out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    PutChunk(&out, "IHDR", header);
    PutChunk(&out, "IDAT", StoredZlib(raw));
    PutChunk(&out, "IEND", {});
    return out;
}

bool DecodeTga(const uint8_t* bytes, size_t length, Image* out) {
    static const uint8_t kHeader[12] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    if (length < 18 || memcmp(bytes, kHeader, 12) != 0) {
        return false;
    }
    int w = bytes[12] | (bytes[13] << 8);
    int h = bytes[14] | (bytes[15] << 8);
    int depth = bytes[16] / 8;
    if (w <= 0 || h <= 0 || (depth != 3 && depth != 4)) {
        return false;
    }
    if (18 + static_cast<size_t>(w) * h * depth > length) {
        return false;
    }
    *out = Image(w, h);
    const uint8_t* s = bytes + 18;
    for (int y = h - 1; y >= 0; y--) {
        for (int x = 0; x < w; x++) {
            uint8_t* p = &out->rgba[(static_cast<size_t>(y) * w + x) * 4];
            p[2] = *s++;
            p[1] = *s++;
            p[0] = *s++;
            p[3] = depth == 4 ? *s++ : 255;
        }
    }
    return true;
}

Colour Mix(Colour a, Colour b, float t) {
    return Colour{a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t, a.a + (b.a - a.a) * t};
}

Colour Rgb(int r, int g, int b, int a) {
    return Colour{r / 255.0f, g / 255.0f, b / 255.0f, a / 255.0f};
}
