#include "paint.h"

#include <algorithm>
#include <cmath>

void PaintDisc(Image* img, float cx, float cy, float r, Colour c, float soft) {
    int x0 = static_cast<int>(cx - r - soft - 1);
    int x1 = static_cast<int>(cx + r + soft + 1);
    int y0 = static_cast<int>(cy - r - soft - 1);
    int y1 = static_cast<int>(cy + r + soft + 1);
    for (int y = y0; y <= y1; y++) {
        for (int x = x0; x <= x1; x++) {
            float d = std::hypot(x + 0.5f - cx, y + 0.5f - cy);
            float cover = std::clamp((r - d) / std::max(soft, 0.5f) + 0.5f, 0.0f, 1.0f);
            if (cover > 0.0f) {
                Colour k = c;
                k.a = c.a * cover;
                img->Blend(x, y, k);
            }
        }
    }
}

void PaintGlow(Image* img, float cx, float cy, float r, Colour c, float power) {
    for (int y = static_cast<int>(cy - r); y <= static_cast<int>(cy + r); y++) {
        for (int x = static_cast<int>(cx - r); x <= static_cast<int>(cx + r); x++) {
            float d = std::hypot(x + 0.5f - cx, y + 0.5f - cy) / r;
            if (d < 1.0f) {
                Colour k = c;
                k.a = c.a * std::pow(1.0f - d, power);
                img->Blend(x, y, k);
            }
        }
    }
}

void PaintRoundRect(Image* img, float x0, float y0, float x1, float y1, float r, Colour top, Colour bottom) {
    for (int y = static_cast<int>(y0); y < static_cast<int>(std::ceil(y1)); y++) {
        Colour c = Mix(top, bottom, (y + 0.5f - y0) / std::max(1.0f, y1 - y0));
        for (int x = static_cast<int>(x0); x < static_cast<int>(std::ceil(x1)); x++) {
            float px = std::clamp(x + 0.5f, x0 + r, x1 - r);
            float py = std::clamp(y + 0.5f, y0 + r, y1 - r);
            float d = std::hypot(x + 0.5f - px, y + 0.5f - py);
            float cover = std::clamp(r - d + 0.5f, 0.0f, 1.0f);
            if (r <= 0.0f) {
                cover = 1.0f;
            }
            if (cover > 0.0f) {
                Colour k = c;
                k.a = c.a * cover;
                img->Blend(x, y, k);
            }
        }
    }
}

void PaintLine(Image* img, float x0, float y0, float x1, float y1, float w, Colour c) {
    float dx = x1 - x0;
    float dy = y1 - y0;
    float len2 = std::max(1e-6f, dx * dx + dy * dy);
    int minX = static_cast<int>(std::min(x0, x1) - w - 1);
    int maxX = static_cast<int>(std::max(x0, x1) + w + 1);
    int minY = static_cast<int>(std::min(y0, y1) - w - 1);
    int maxY = static_cast<int>(std::max(y0, y1) + w + 1);
    for (int y = minY; y <= maxY; y++) {
        for (int x = minX; x <= maxX; x++) {
            float px = x + 0.5f - x0;
            float py = y + 0.5f - y0;
            float t = std::clamp((px * dx + py * dy) / len2, 0.0f, 1.0f);
            float d = std::hypot(px - t * dx, py - t * dy);
            float cover = std::clamp(w * 0.5f - d + 0.5f, 0.0f, 1.0f);
            if (cover > 0.0f) {
                Colour k = c;
                k.a = c.a * cover;
                img->Blend(x, y, k);
            }
        }
    }
}

void PaintStar(Image* img, float cx, float cy, float r, float ri, int points, float turn, Colour c) {
    for (int y = static_cast<int>(cy - r - 1); y <= static_cast<int>(cy + r + 1); y++) {
        for (int x = static_cast<int>(cx - r - 1); x <= static_cast<int>(cx + r + 1); x++) {
            float px = x + 0.5f - cx;
            float py = y + 0.5f - cy;
            float d = std::hypot(px, py);
            float a = std::atan2(py, px) - turn;
            float sector = 6.2831853f / points;
            float f = std::fabs(std::fmod(a + 100.0f * sector, sector) / sector - 0.5f) * 2.0f;  // 1 at a point
            float edge = ri + (r - ri) * f * f;
            float cover = std::clamp(edge - d + 0.5f, 0.0f, 1.0f);
            if (cover > 0.0f) {
                Colour k = c;
                k.a = c.a * cover;
                img->Blend(x, y, k);
            }
        }
    }
}
