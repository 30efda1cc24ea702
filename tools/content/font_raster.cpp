#include "font_raster.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cmath>
#include <vector>

#include "ui/text_batch.h"

// The glyph order is the text batches' own: glyph g holds the character whose
// GlyphIndex is g.
static unsigned char s_glyphBytes[kFontGlyphs];
static bool s_glyphBytesReady = false;

unsigned char FontGlyphByte(int g) {
    if (!s_glyphBytesReady) {
        for (int b = 1; b < 256; b++) {
            int index = TextBatch::GlyphIndex(static_cast<unsigned char>(b));
            if ((index != 0 || b == 'A') && index < kFontGlyphs && s_glyphBytes[index] == 0) {
                s_glyphBytes[index] = static_cast<unsigned char>(b);
            }
        }
        s_glyphBytesReady = true;
    }
    if (g < 0 || g >= kFontGlyphs) {
        return 0;
    }
    return s_glyphBytes[g];
}

// Unicode code point of a Windows-1252 byte (only the bytes the glyph set uses).
static unsigned int CodePoint(unsigned char b) {
    if (b == 0x95) {
        return 0x2022;  // bullet
    }
    return b;  // ASCII and the Latin-1 signs map to themselves
}

static const int kCell = 32;
static const int kBaseline = 25;

// Coverage of one glyph placed in a cell-sized grid, 0..1.
static bool RenderCoverage(FT_Face face, unsigned int code, std::vector<float>* cov) {
    cov->assign(kCell * kCell, 0.0f);
    if (FT_Load_Char(face, code, FT_LOAD_RENDER | FT_LOAD_TARGET_NORMAL) != 0) {
        return false;
    }
    FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap& bm = slot->bitmap;
    int advance = static_cast<int>(slot->advance.x >> 6);
    int left = (kCell - advance) / 2 + slot->bitmap_left;
    // Keep wide glyphs inside their cell.
    left = std::max(0, std::min(left, kCell - static_cast<int>(bm.width)));
    int top = kBaseline - slot->bitmap_top;
    top = std::max(0, std::min(top, kCell - static_cast<int>(bm.rows)));
    for (unsigned int y = 0; y < bm.rows; y++) {
        for (unsigned int x = 0; x < bm.width; x++) {
            int cx = left + static_cast<int>(x);
            int cy = top + static_cast<int>(y);
            if (cx < 0 || cy < 0 || cx >= kCell || cy >= kCell) {
                continue;
            }
            (*cov)[cy * kCell + cx] = bm.buffer[y * bm.pitch + x] / 255.0f;
        }
    }
    return true;
}

// Grows a coverage mask by a disc of the given radius.
static std::vector<float> Dilate(const std::vector<float>& cov, int radius) {
    std::vector<float> out(cov.size(), 0.0f);
    for (int y = 0; y < kCell; y++) {
        for (int x = 0; x < kCell; x++) {
            float best = 0.0f;
            for (int j = -radius; j <= radius; j++) {
                for (int i = -radius; i <= radius; i++) {
                    int sx = x + i;
                    int sy = y + j;
                    if (sx < 0 || sy < 0 || sx >= kCell || sy >= kCell) {
                        continue;
                    }
                    float d = std::sqrt(static_cast<float>(i * i + j * j));
                    float w = std::clamp(radius + 0.5f - d, 0.0f, 1.0f);
                    best = std::max(best, cov[sy * kCell + sx] * w);
                }
            }
            out[y * kCell + x] = best;
        }
    }
    return out;
}

static void PaintCell(Image* out, int g, const FontStyle& style, const std::vector<float>& cov) {
    int ox = (g % 16) * kCell;
    int oy = (g / 16) * kCell;
    std::vector<float> edge = style.outline > 0 ? Dilate(cov, style.outline) : cov;
    for (int y = 0; y < kCell; y++) {
        Colour fill = Mix(style.fillTop, style.fillBottom, static_cast<float>(y) / (kCell - 1));
        for (int x = 0; x < kCell; x++) {
            float f = cov[y * kCell + x];
            float o = edge[y * kCell + x];
            float s = 0.0f;
            if (style.shadow > 0 && x >= style.shadow && y >= style.shadow) {
                s = edge[(y - style.shadow) * kCell + (x - style.shadow)] * 0.6f;
            }
            float under = std::max(o, s);
            Colour c = Mix(style.outlineColour, fill, under > 0.0f ? f / std::max(under, f) : 1.0f);
            c.a = std::max(under, f);
            if (c.a <= 0.0f) {
                c = Colour{fill.r, fill.g, fill.b, 0.0f};
            }
            out->Set(ox + x, oy + y, c);
        }
    }
}

bool RasteriseFont(const std::string& fontDirectory, const FontStyle& style, Image* out, std::string* error) {
    FT_Library library;
    if (FT_Init_FreeType(&library) != 0) {
        *error = "cannot start FreeType";
        return false;
    }
    std::string path = fontDirectory + "/" + style.file;
    FT_Face face;
    if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
        FT_Done_FreeType(library);
        *error = "cannot open font " + path;
        return false;
    }
    FT_Set_Pixel_Sizes(face, 0, style.pixelSize);
    *out = Image(16 * kCell, 8 * kCell);
    out->Fill(Colour{style.fillTop.r, style.fillTop.g, style.fillTop.b, 0.0f});
    std::vector<float> cov;
    for (int g = 0; g < kFontGlyphs; g++) {
        unsigned char b = FontGlyphByte(g);
        if (b == 0) {
            continue;
        }
        if (RenderCoverage(face, CodePoint(b), &cov)) {
            PaintCell(out, g, style, cov);
        }
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return true;
}

bool PaintText(const std::string& fontDirectory, const TextStyle& style, const char* text, int centreX,
               int baseline, Image* canvas, std::string* error) {
    FT_Library library;
    if (FT_Init_FreeType(&library) != 0) {
        *error = "cannot start FreeType";
        return false;
    }
    std::string path = fontDirectory + "/" + style.file;
    FT_Face face;
    if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
        FT_Done_FreeType(library);
        *error = "cannot open font " + path;
        return false;
    }
    FT_Set_Pixel_Sizes(face, 0, style.pixelSize);
    // Measure, then paint the coverage of every glyph into one mask.
    int width = 0;
    for (const char* c = text; *c; c++) {
        if (FT_Load_Char(face, static_cast<unsigned char>(*c), FT_LOAD_DEFAULT) == 0) {
            width += static_cast<int>(face->glyph->advance.x >> 6);
        }
    }
    std::vector<float> mask(static_cast<size_t>(canvas->width) * canvas->height, 0.0f);
    int pen = centreX - width / 2;
    for (const char* c = text; *c; c++) {
        if (FT_Load_Char(face, static_cast<unsigned char>(*c), FT_LOAD_RENDER) != 0) {
            continue;
        }
        FT_GlyphSlot slot = face->glyph;
        for (unsigned int y = 0; y < slot->bitmap.rows; y++) {
            for (unsigned int x = 0; x < slot->bitmap.width; x++) {
                int px = pen + slot->bitmap_left + static_cast<int>(x);
                int py = baseline - slot->bitmap_top + static_cast<int>(y);
                if (px < 0 || py < 0 || px >= canvas->width || py >= canvas->height) {
                    continue;
                }
                float v = slot->bitmap.buffer[y * slot->bitmap.pitch + x] / 255.0f;
                float& m = mask[static_cast<size_t>(py) * canvas->width + px];
                m = std::max(m, v);
            }
        }
        pen += static_cast<int>(slot->advance.x >> 6);
    }
    int top = baseline - style.pixelSize * 3 / 4;
    int r = style.outline;
    for (int y = 0; y < canvas->height; y++) {
        float t = std::clamp(static_cast<float>(y - top) / (style.pixelSize * 0.8f), 0.0f, 1.0f);
        Colour fill = Mix(style.top, style.bottom, t);
        for (int x = 0; x < canvas->width; x++) {
            float f = mask[static_cast<size_t>(y) * canvas->width + x];
            float o = f;
            for (int j = -r; j <= r && r > 0; j++) {
                for (int i = -r; i <= r; i++) {
                    int sx = x + i;
                    int sy = y + j;
                    if (sx < 0 || sy < 0 || sx >= canvas->width || sy >= canvas->height ||
                        i * i + j * j > r * r) {
                        continue;
                    }
                    o = std::max(o, mask[static_cast<size_t>(sy) * canvas->width + sx]);
                }
            }
            if (o > 0.0f) {
                Colour edge = style.outlineColour;
                edge.a = o;
                canvas->Blend(x, y, edge);
            }
            if (f > 0.0f) {
                fill.a = f;
                canvas->Blend(x, y, fill);
            }
        }
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return true;
}
