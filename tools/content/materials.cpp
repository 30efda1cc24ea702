#include "materials.h"

#include <algorithm>
#include <cmath>

#include "noise.h"

static Colour Shade(Colour c, float k) {
    return Colour{c.r * k, c.g * k, c.b * k, c.a};
}

Image MakeBricks(int size, Colour brick, Colour mortar, uint32_t seed) {
    Image img(size, size);
    const int rows = 8;
    const int rowH = size / rows;
    const int brickW = size / 4;
    const int joint = std::max(2, size / 96);
    for (int y = 0; y < size; y++) {
        int row = y / rowH;
        int yIn = y % rowH;
        int shift = (row % 2) * brickW / 2;
        for (int x = 0; x < size; x++) {
            int xs = (x + shift) % size;
            int col = xs / brickW;
            int xIn = xs % brickW;
            float grain = Fbm(x * 16.0f / size, y * 16.0f / size, 16, 4, seed);
            bool inJoint = yIn < joint || xIn < joint;
            Colour c;
            if (inJoint) {
                c = Shade(mortar, 0.8f + 0.4f * grain);
            } else {
                float tint = Hash01(col, row, seed + 3u);
                c = Shade(brick, 0.75f + 0.35f * tint);
                c = Shade(c, 0.8f + 0.4f * grain);
                if (yIn < joint + 2) {
                    c = Shade(c, 1.15f);
                } else if (yIn > rowH - 3) {
                    c = Shade(c, 0.8f);
                }
                float pit = Hash01(x / 3, y / 3, seed + 9u);
                if (pit > 0.97f) {
                    c = Shade(c, 0.7f);
                }
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeStone(int size, Colour base, int cells, uint32_t seed) {
    Image img(size, size);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float u = x * static_cast<float>(cells) / size;
            float v = y * static_cast<float>(cells) / size;
            float f1, f2;
            uint32_t id;
            Cellular(u, v, cells, seed, &f1, &f2, &id);
            float edge = f2 - f1;
            float grain = Fbm(x * 32.0f / size, y * 32.0f / size, 32, 4, seed + 1u);
            float tint = ((id >> 8) & 255) / 255.0f;
            Colour c = Shade(base, 0.7f + 0.3f * tint);
            c = Shade(c, 0.75f + 0.45f * grain);
            // Round the stones: brighter towards the middle, dark joints between them.
            float dome = std::min(1.0f, edge * 4.0f);
            c = Shade(c, 0.6f + 0.5f * dome);
            if (edge < 0.05f) {
                c = Shade(base, 0.25f + 0.2f * grain);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeGrass(int size, uint32_t seed) {
    Image img(size, size);
    Colour dark = Rgb(38, 78, 22);
    Colour light = Rgb(96, 150, 48);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float n = Fbm(x * 8.0f / size, y * 8.0f / size, 8, 5, seed);
            Colour c = Mix(dark, light, n);
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    // Blades: short strokes leaning a little, lighter at the tip.
    int blades = size * size / 12;
    for (int i = 0; i < blades; i++) {
        int bx = static_cast<int>(Hash01(i, 1, seed) * size);
        int by = static_cast<int>(Hash01(i, 2, seed) * size);
        int len = 3 + static_cast<int>(Hash01(i, 3, seed) * size / 40.0f);
        float lean = Hash01(i, 4, seed) - 0.5f;
        float shade = Hash01(i, 5, seed);
        for (int k = 0; k < len; k++) {
            float t = static_cast<float>(k) / len;
            Colour c = Mix(Shade(dark, 0.8f + 0.4f * shade), Shade(light, 0.9f + 0.4f * shade), t);
            c.a = 0.85f;
            int px = ((bx + static_cast<int>(lean * k)) % size + size) % size;
            int py = ((by - k) % size + size) % size;
            img.Blend(px, py, c);
        }
    }
    return img;
}

Image MakeBark(int size, Colour base, uint32_t seed) {
    Image img(size, size);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float u = x * 8.0f / size;
            float v = y * 2.0f / size;
            float warp = Fbm(u, v * 2.0f, 8, 3, seed + 5u);
            float ridge = std::fabs(std::sin((u + warp * 2.5f) * 3.14159f));
            float grain = Fbm(x * 32.0f / size, y * 8.0f / size, 32, 3, seed);
            Colour c = Shade(base, 0.45f + 0.6f * ridge * (0.7f + 0.5f * grain));
            if (ridge < 0.18f) {
                c = Shade(base, 0.2f + 0.3f * grain);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeWood(int size, Colour base, int planks, uint32_t seed) {
    Image img(size, size);
    int plankH = size / planks;
    for (int y = 0; y < size; y++) {
        int plank = y / plankH;
        int yIn = y % plankH;
        for (int x = 0; x < size; x++) {
            float offset = Hash01(plank, 0, seed) * size;
            float u = (x + offset) * 4.0f / size;
            float w = Fbm(u, y * 16.0f / size, 4, 4, seed + plank);
            float ring = 0.5f + 0.5f * std::sin((y * 40.0f / size + w * 6.0f) * 3.14159f);
            float tint = 0.8f + 0.3f * Hash01(plank, 1, seed);
            Colour c = Shade(base, tint * (0.7f + 0.3f * ring));
            // A knot: dark rings round one point per plank.
            float kx = Hash01(plank, 2, seed) * size;
            float ky = plank * plankH + plankH * 0.5f;
            float dx = (x - kx) / (size / 24.0f);
            float dy = (y - ky) / (plankH / 3.0f);
            float kd = std::sqrt(dx * dx + dy * dy);
            if (kd < 1.0f) {
                c = Shade(c, 0.55f + 0.3f * std::sin(kd * 12.0f));
            }
            if (yIn == 0 || yIn == plankH - 1) {
                c = Shade(base, 0.3f);
            } else if (yIn == 1) {
                c = Shade(c, 1.15f);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeMetal(int size, Colour base, uint32_t seed) {
    Image img(size, size);
    int border = size / 32;
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float brush = Fbm(x * 2.0f / size, y * 64.0f / size, 2, 4, seed);
            float spot = Fbm(x * 4.0f / size, y * 4.0f / size, 4, 3, seed + 4u);
            Colour c = Shade(base, 0.7f + 0.35f * brush + 0.15f * spot);
            if (x < border || y < border) {
                c = Shade(base, 1.25f);
            } else if (x >= size - border || y >= size - border) {
                c = Shade(base, 0.5f);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    // Rivets in the four corners and along the edges.
    int r = std::max(2, size / 40);
    for (int i = 0; i < 4; i++) {
        for (int j = 0; j < 4; j++) {
            if (i != 0 && i != 3 && j != 0 && j != 3) {
                continue;
            }
            int cx = border * 2 + r + i * (size - 4 * border - 2 * r) / 3;
            int cy = border * 2 + r + j * (size - 4 * border - 2 * r) / 3;
            for (int y = -r; y <= r; y++) {
                for (int x = -r; x <= r; x++) {
                    float d = std::sqrt(static_cast<float>(x * x + y * y)) / r;
                    if (d <= 1.0f) {
                        float light = 1.3f - 0.6f * (x + y) / (2.0f * r) - 0.3f * d;
                        Colour c = Shade(base, light);
                        c.a = 1.0f;
                        img.Set(cx + x, cy + y, c);
                    }
                }
            }
        }
    }
    return img;
}

Image MakeFoliage(int size, Colour light, Colour dark, int leaves, uint32_t seed) {
    Image img(size, size);
    // The clear texels carry the leaves' middle colour: filtering and smaller mip levels
    // blend them into the edges, and a dark colour there rims every leaf in black.
    Colour middle = Mix(dark, light, 0.5f);
    img.Fill(Colour{middle.r, middle.g, middle.b, 0.0f});
    for (int i = 0; i < leaves; i++) {
        float cx = Hash01(i, 1, seed) * size;
        float cy = Hash01(i, 2, seed) * size;
        float len = size * (0.04f + 0.05f * Hash01(i, 3, seed));
        float wid = len * 0.45f;
        float ang = Hash01(i, 4, seed) * 6.2832f;
        float ca = std::cos(ang);
        float sa = std::sin(ang);
        Colour col = Mix(dark, light, Hash01(i, 5, seed));
        int reach = static_cast<int>(len) + 2;
        for (int y = -reach; y <= reach; y++) {
            for (int x = -reach; x <= reach; x++) {
                float lx = (x * ca + y * sa) / len;
                float ly = (-x * sa + y * ca) / wid;
                float d = lx * lx + ly * ly;
                if (d > 1.0f) {
                    continue;
                }
                // Lit on one side of the midrib, with a pale vein down the middle.
                float k = 0.8f + 0.35f * (ly < 0 ? 1.0f : 0.0f) - 0.2f * d;
                Colour c = Shade(col, k);
                if (std::fabs(ly) < 0.08f) {
                    c = Mix(c, light, 0.5f);
                }
                c.a = 1.0f;
                int px = ((static_cast<int>(cx) + x) % size + size) % size;
                int py = ((static_cast<int>(cy) + y) % size + size) % size;
                img.Set(px, py, c);
            }
        }
    }
    return img;
}

Image MakeDirt(int size, uint32_t seed) {
    Image img(size, size);
    Colour base = Rgb(110, 80, 50);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float n = Fbm(x * 8.0f / size, y * 8.0f / size, 8, 5, seed);
            float f1, f2;
            uint32_t id;
            Cellular(x * 24.0f / size, y * 24.0f / size, 24, seed + 2u, &f1, &f2, &id);
            Colour c = Shade(base, 0.6f + 0.6f * n);
            if (f1 < 0.22f && (id & 3) == 0) {
                c = Shade(Rgb(150, 140, 125), 1.1f - f1 * 2.0f);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeClouds(int size, uint32_t seed) {
    Image img(size, size);
    Colour top = Rgb(60, 110, 200);
    Colour low = Rgb(170, 205, 240);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float t = static_cast<float>(y) / size;
            Colour sky = Mix(top, low, t);
            float n = Fbm(x * 4.0f / size, y * 8.0f / size, 4, 6, seed);
            float cloud = std::clamp((n - 0.45f) * 3.0f, 0.0f, 1.0f);
            float shade = Fbm(x * 4.0f / size + 0.3f, y * 8.0f / size + 0.2f, 4, 4, seed);
            Colour white = Mix(Rgb(255, 255, 255), Rgb(190, 195, 210), shade);
            Colour c = Mix(sky, white, cloud * (1.0f - 0.5f * t));
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeBelt(int size, uint32_t seed) {
    Image img(size, size);
    int ribs = 8;
    int period = size / ribs;
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float n = Fbm(x * 16.0f / size, y * 16.0f / size, 16, 3, seed);
            int p = y % period;
            float k = 0.6f + 0.3f * n;
            if (p < period / 4) {
                k *= 1.6f;  // the rib's lit face
            } else if (p < period / 3) {
                k *= 0.5f;  // its shadow
            }
            Colour c = Shade(Rgb(70, 70, 76), k);
            if (x < size / 16 || x >= size - size / 16) {
                c = Shade(Rgb(180, 150, 40), 0.8f + 0.3f * n);  // hazard trim
                if (((x + y) / (size / 16)) % 2 == 0) {
                    c = Shade(Rgb(30, 30, 30), 1.0f);
                }
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeRock(int size, Colour base, uint32_t seed) {
    Image img(size, size);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float n = Fbm(x * 4.0f / size, y * 4.0f / size, 4, 6, seed);
            float strata = 0.5f + 0.5f * std::sin((y * 12.0f / size + n * 3.0f) * 3.14159f);
            float f1, f2;
            uint32_t id;
            Cellular(x * 6.0f / size, y * 6.0f / size, 6, seed + 5u, &f1, &f2, &id);
            Colour c = Shade(base, 0.55f + 0.35f * n + 0.2f * strata);
            if (f2 - f1 < 0.04f) {
                c = Shade(c, 0.55f);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeCloth(int size, Colour base, uint32_t seed) {
    Image img(size, size);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float n = Fbm(x * 8.0f / size, y * 8.0f / size, 8, 3, seed);
            bool warp = ((x / 2) + (y / 2)) % 2 == 0;
            Colour c = Shade(base, (warp ? 1.0f : 0.85f) * (0.85f + 0.25f * n));
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}
