#include "noise.h"

#include <cmath>

static int Wrap(int v, int period) {
    return ((v % period) + period) % period;
}

uint32_t Hash2(int x, int y, uint32_t seed) {
    uint32_t h = seed * 0x9E3779B1u;
    h ^= static_cast<uint32_t>(x) * 0x85EBCA77u;
    h = (h << 13) | (h >> 19);
    h ^= static_cast<uint32_t>(y) * 0xC2B2AE3Du;
    h ^= h >> 16;
    h *= 0x7FEB352Du;
    h ^= h >> 15;
    h *= 0x846CA68Bu;
    h ^= h >> 16;
    return h;
}

float Hash01(int x, int y, uint32_t seed) {
    return (Hash2(x, y, seed) >> 8) * (1.0f / 16777216.0f);
}

static float Smooth(float t) {
    return t * t * (3.0f - 2.0f * t);
}

float ValueNoise(float x, float y, int period, uint32_t seed) {
    float fx = std::floor(x);
    float fy = std::floor(y);
    int x0 = Wrap(static_cast<int>(fx), period);
    int y0 = Wrap(static_cast<int>(fy), period);
    int x1 = Wrap(x0 + 1, period);
    int y1 = Wrap(y0 + 1, period);
    float tx = Smooth(x - fx);
    float ty = Smooth(y - fy);
    float a = Hash01(x0, y0, seed);
    float b = Hash01(x1, y0, seed);
    float c = Hash01(x0, y1, seed);
    float d = Hash01(x1, y1, seed);
    float top = a + (b - a) * tx;
    float bottom = c + (d - c) * tx;
    return top + (bottom - top) * ty;
}

float Fbm(float x, float y, int period, int octaves, uint32_t seed) {
    float sum = 0.0f;
    float weight = 0.5f;
    float total = 0.0f;
    for (int i = 0; i < octaves; i++) {
        sum += ValueNoise(x, y, period, seed + 101u * i) * weight;
        total += weight;
        x *= 2.0f;
        y *= 2.0f;
        period *= 2;
        weight *= 0.5f;
    }
    return sum / total;
}

void Cellular(float x, float y, int period, uint32_t seed, float* f1, float* f2, uint32_t* id) {
    int cx = static_cast<int>(std::floor(x));
    int cy = static_cast<int>(std::floor(y));
    float best = 1e9f;
    float second = 1e9f;
    uint32_t bestId = 0;
    for (int j = -1; j <= 1; j++) {
        for (int i = -1; i <= 1; i++) {
            int gx = cx + i;
            int gy = cy + j;
            int wx = Wrap(gx, period);
            int wy = Wrap(gy, period);
            float px = gx + 0.15f + 0.7f * Hash01(wx, wy, seed);
            float py = gy + 0.15f + 0.7f * Hash01(wx, wy, seed + 7u);
            float dx = px - x;
            float dy = py - y;
            float d = std::sqrt(dx * dx + dy * dy);
            if (d < best) {
                second = best;
                best = d;
                bestId = Hash2(wx, wy, seed + 13u);
            } else if (d < second) {
                second = d;
            }
        }
    }
    *f1 = best;
    *f2 = second;
    *id = bestId;
}
