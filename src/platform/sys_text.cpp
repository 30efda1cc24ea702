#include "platform/sys_text.h"

#include <cstdint>

// Code points of 0x80..0x9F in Windows-1252 (0 where the code page has a hole);
// every other byte is its own Latin-1 code point.
static const uint16_t k1252High[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

static int EncodeUtf8(uint32_t code, char* out) {
    if (code < 0x80) {
        out[0] = static_cast<char>(code);
        return 1;
    }
    if (code < 0x800) {
        out[0] = static_cast<char>(0xC0 | (code >> 6));
        out[1] = static_cast<char>(0x80 | (code & 0x3F));
        return 2;
    }
    out[0] = static_cast<char>(0xE0 | (code >> 12));
    out[1] = static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out[2] = static_cast<char>(0x80 | (code & 0x3F));
    return 3;
}

void Sys_Utf8From1252(const char* text, char* out, int outSize) {
    int length = 0;
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p; p++) {
        uint32_t code = *p;
        if (code >= 0x80 && code < 0xA0) {
            code = k1252High[code - 0x80] ? k1252High[code - 0x80] : '?';
        }
        char bytes[3];
        int count = EncodeUtf8(code, bytes);
        if (length + count >= outSize) {
            break;
        }
        for (int i = 0; i < count; i++) {
            out[length++] = bytes[i];
        }
    }
    if (outSize > 0) {
        out[length] = 0;
    }
}

static unsigned char ByteFor(uint32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code < 0x100)) {
        return static_cast<unsigned char>(code);
    }
    for (int i = 0; i < 32; i++) {
        if (k1252High[i] == code) {
            return static_cast<unsigned char>(0x80 + i);
        }
    }
    return '?';
}

// A stray continuation byte, a bad lead byte, a cut-off sequence and an overlong form
// all decode to one '?', so a broken clipboard cannot smuggle in control bytes.
void Sys_1252FromUtf8(const char* text, char* out, int outSize) {
    static const uint32_t kSmallest[4] = {0, 0x80, 0x800, 0x10000};
    const unsigned char* p = reinterpret_cast<const unsigned char*>(text);
    int length = 0;
    while (*p && length + 1 < outSize) {
        uint32_t code = *p++;
        int extra = code >= 0xF8   ? -1
                    : code >= 0xF0 ? 3
                    : code >= 0xE0 ? 2
                    : code >= 0xC0 ? 1
                    : code >= 0x80 ? -1
                                   : 0;
        if (extra < 0) {
            out[length++] = '?';
            continue;
        }
        if (extra > 0) {
            code &= 0x3Fu >> extra;
        }
        int got = 0;
        while (got < extra && (*p & 0xC0) == 0x80) {
            code = (code << 6) | (*p++ & 0x3F);
            got++;
        }
        if (got < extra || code < kSmallest[extra] || code > 0x10FFFF) {
            code = '?';
        }
        out[length++] = static_cast<char>(ByteFor(code));
    }
    if (outSize > 0) {
        out[length] = 0;
    }
}
