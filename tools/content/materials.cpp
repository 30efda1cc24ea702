#include "materials.h"

#include <algorithm>
#include <cmath>
#include <vector>

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

static float Clamp01(float v) {
    return std::clamp(v, 0.0f, 1.0f);
}

Image MakeSnow(int size, uint32_t seed) {
    Image img(size, size);
    const Colour shadow = Rgb(196, 210, 236), lit = Rgb(248, 250, 255);
    // The drifts' height field, sampled once so the shading can look at neighbours.
    std::vector<float> h(static_cast<size_t>(size) * size);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            h[y * size + x] = Fbm(x * 3.0f / size, y * 3.0f / size, 3, 5, seed);
        }
    }
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            // Light from the top left: a slope facing it is bright, the far side blue.
            int x0 = (x + size - 2) % size, y0 = (y + size - 2) % size;
            int x1 = (x + 2) % size, y1 = (y + 2) % size;
            float slope = (h[y0 * size + x0] - h[y1 * size + x1]) * size / 24.0f;
            float k = Clamp01(0.7f + slope + 0.2f * (h[y * size + x] - 0.5f));
            Colour c = Mix(shadow, lit, k);
            float grain = Fbm(x * 32.0f / size, y * 32.0f / size, 32, 2, seed + 7u);
            c = Shade(c, 0.94f + 0.08f * grain);
            float glint = Hash01(x, y, seed + 11u);
            if (glint > 0.994f) {
                c = Mix(c, glint > 0.998f ? Rgb(255, 255, 255) : Rgb(200, 235, 255), 0.9f);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakeIce(int size, uint32_t seed) {
    Image img(size, size);
    const Colour deep = Rgb(70, 130, 185), pale = Rgb(190, 225, 245);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            float cloud = Fbm(x * 4.0f / size, y * 4.0f / size, 4, 5, seed);
            // Streaks lean along the diagonal, stretched by sampling one axis slowly.
            float streak = Fbm((x + y) * 2.0f / size, (x - y + size) * 16.0f / size, 2, 3, seed + 3u);
            Colour c = Mix(deep, pale, Clamp01(0.2f + 0.9f * cloud * cloud + 0.5f * (streak - 0.5f)));
            float f1, f2;
            uint32_t id;
            Cellular(x * 5.0f / size, y * 5.0f / size, 5, seed + 5u, &f1, &f2, &id);
            if (f2 - f1 < 0.035f) {
                c = Mix(c, Rgb(240, 250, 255), 0.75f);  // a crack catching the light
            } else if (f2 - f1 < 0.07f) {
                c = Shade(c, 0.85f);  // its shadow in the ice
            }
            float bubble = Hash01(x / 2, y / 2, seed + 9u);
            if (bubble > 0.996f) {
                c = Mix(c, Rgb(255, 255, 255), 0.6f);
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}

Image MakePine(int size, uint32_t seed) {
    Image img(size, size);
    const Colour dark = Rgb(18, 46, 38), mid = Rgb(40, 84, 64), snow = Rgb(232, 240, 252);
    // Clear texels carry the needles' middle colour so filtering does not rim them in black.
    img.Fill(Colour{mid.r, mid.g, mid.b, 0.0f});
    const int twigs = size * 3 / 4;
    for (int i = 0; i < twigs; i++) {
        float cx = Hash01(i, 1, seed) * size, cy = Hash01(i, 2, seed) * size;
        float len = size * (0.12f + 0.08f * Hash01(i, 3, seed));
        float ang = -0.5f + Hash01(i, 4, seed);  // twigs droop a little either way
        float ca = std::cos(ang), sa = std::sin(ang);
        int reach = static_cast<int>(len) + 3;
        for (int y = -reach; y <= reach; y++) {
            for (int x = -reach; x <= reach; x++) {
                // Along the twig (t) and across it (s); needles fan out down to either side.
                float t = (x * ca + y * sa) / len, s = (-x * sa + y * ca) / len;
                if (t < -1.0f || t > 1.0f) {
                    continue;
                }
                float width = 0.42f * (1.0f - 0.6f * std::fabs(t));
                if (std::fabs(s) > width) {
                    continue;
                }
                // Needles: stripes running slantwise off the twig.
                float needle = std::fabs(std::sin((t * 9.0f + std::fabs(s) * 14.0f) * 3.14159f));
                if (needle < 0.2f && std::fabs(s) > 0.04f) {
                    continue;
                }
                Colour c = Mix(dark, mid, Clamp01(0.3f + 0.7f * needle - std::fabs(s)));
                if (s < -0.22f && Hash01(i, static_cast<int>((t + 1.0f) * 6.0f), seed + 7u) > 0.5f) {
                    c = Mix(c, snow, 0.85f);  // snow resting on the upper needles
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

void AddFrost(Image* img, float amount, uint32_t seed) {
    const int w = img->width, h = img->height;
    const Colour rime = Rgb(226, 236, 250);
    for (int y = 0; y < h; y++) {
        for (int x = 0; x < w; x++) {
            Colour c = img->Get(x, y);
            float patch = Fbm(x * 6.0f / w, y * 6.0f / h, 6, 4, seed);
            float darkness = 1.0f - (c.r + c.g + c.b) / 3.0f;
            float k = Clamp01((patch - 0.55f + amount * 0.5f) * 3.0f + darkness * amount * 0.6f) * amount;
            // Cold light: the picture's own colour is cooled before the rime goes over it.
            Colour cool = Colour{c.r * 0.85f, c.g * 0.92f, std::min(1.0f, c.b * 1.08f), c.a};
            Colour out = Mix(cool, rime, k);
            if (k > 0.3f && Hash01(x, y, seed + 3u) > 0.992f) {
                out = Rgb(255, 255, 255);
            }
            out.a = c.a;
            img->Set(x, y, out);
        }
    }
}

Image MakeSky(int size, const SkyLook& look, uint32_t seed) {
    Image img(size, size);
    // The clouds' density, flatter and thinner toward the horizon as seen from far below.
    std::vector<float> density(static_cast<size_t>(size) * size);
    for (int y = 0; y < size; y++) {
        float t = static_cast<float>(y) / (size - 1);
        float squash = 4.0f + 8.0f * t;
        for (int x = 0; x < size; x++) {
            density[y * size + x] = Fbm(x * 4.0f / size, y * squash / size, 4, 6, seed);
        }
    }
    const int reach = std::max(1, size / 48);
    for (int y = 0; y < size; y++) {
        float t = static_cast<float>(y) / (size - 1);  // 0 at the zenith, 1 at the horizon
        Colour sky = Mix(look.zenith, look.horizon, t * t);
        const float* row = &density[y * size];
        const float* below = &density[std::min(size - 1, y + reach) * size];
        const float* above = &density[std::max(0, y - reach) * size];
        for (int x = 0; x < size; x++) {
            float cloud = Clamp01((row[x] - (0.62f - 0.3f * look.cover)) * 3.5f);
            // Shading: more cloud below than above means a top lit by the sky.
            float litFromAbove = Clamp01(0.5f + (below[x] - above[x]) * 4.0f);
            float lit = look.underglow * (1.0f - litFromAbove) + (1.0f - look.underglow) * litFromAbove;
            lit = Clamp01(lit * (1.0f - 0.4f * look.underglow) + look.underglow * 0.6f * t);
            Colour cc = Mix(look.cloudDark, look.cloudLit, lit);
            Colour c = Mix(sky, cc, cloud * (1.0f - 0.35f * t));
            if (look.stars > 0) {
                // Stars show where the clouds are thin.
                float star = Hash01(x, y, seed + 17u);
                float chance = look.stars / 65536.0f;
                if (star < chance) {
                    float b = 0.45f + 0.55f * Hash01(x, y, seed + 19u);
                    c = Mix(c, Rgb(235, 240, 255), b * (1.0f - cloud) * (1.0f - 0.6f * t));
                }
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    if (look.stars > 0) {
        // The brightest stars: a soft cross of light around a white core, on the clear sky.
        int bright = look.stars / 24 * size / 256 * size / 256;
        for (int i = 0; i < bright; i++) {
            int sx = static_cast<int>(Hash01(i, 1, seed + 23u) * size);
            int sy = static_cast<int>(Hash01(i, 2, seed + 23u) * size * 0.8f);
            for (int d = -3; d <= 3; d++) {
                float a = 0.55f * (1.0f - std::fabs(static_cast<float>(d)) / 4.0f);
                img.Blend((sx + d + size) % size, sy, Colour{0.9f, 0.94f, 1.0f, a});
                img.Blend(sx, std::clamp(sy + d, 0, size - 1), Colour{0.9f, 0.94f, 1.0f, a});
            }
            img.Set(sx, sy, Rgb(255, 255, 255));
        }
    }
    if (look.moonRadius > 0.0f) {
        // A pale moon with grey seas on its face and a halo in the haze around it.
        float mx = look.moonX * size, my = look.moonY * size, r = look.moonRadius * size;
        for (int y = static_cast<int>(my - 4 * r); y <= static_cast<int>(my + 4 * r); y++) {
            for (int x = static_cast<int>(mx - 4 * r); x <= static_cast<int>(mx + 4 * r); x++) {
                if (y < 0 || y >= size) {
                    continue;
                }
                float d = std::hypot(x - mx, y - my) / r;
                int px = (x + size) % size;
                if (d < 1.0f) {
                    float sea =
                        Fbm((x - mx) * 3.0f / r + 8.0f, (y - my) * 3.0f / r + 8.0f, 64, 3, seed + 29u);
                    Colour face = Mix(Rgb(250, 248, 232), Rgb(178, 182, 196), Clamp01((sea - 0.5f) * 3.0f));
                    face = Shade(face, 1.0f - 0.25f * d * d);  // darker toward the limb
                    float edge = Clamp01((1.0f - d) * r);
                    img.Blend(px, y, Colour{face.r, face.g, face.b, edge});
                } else {
                    float fade = Clamp01(1.0f - (d - 1.0f) / 3.0f);
                    float halo = 0.35f * fade * fade;
                    img.Blend(px, y, Colour{0.75f, 0.82f, 0.95f, halo});
                }
            }
        }
    }
    return img;
}

// The row of a hill layer's ridge at column x (layer 0 farthest).
static float HillRidge(int size, int layer, int x, uint32_t seed) {
    static const float kBase[3] = {0.30f, 0.42f, 0.56f}, kAmp[3] = {0.12f, 0.10f, 0.08f};
    int period = 3 + 2 * layer;
    float u = x * static_cast<float>(period) / size;
    return size *
           (kBase[layer] - kAmp[layer] * (Fbm(u, layer * 7.0f, period, 4, seed + layer) - 0.45f) * 2.0f);
}

Image MakeHills(int size, Colour near, Colour haze, bool snow, uint32_t seed) {
    Image img(size, size);
    img.Fill(Colour{haze.r, haze.g, haze.b, 0.0f});
    const int layers = 3;
    for (int layer = 0; layer < layers; layer++) {
        // The farthest layer first, highest and palest; each nearer one paints over it.
        float depth = static_cast<float>(layers - 1 - layer) / (layers - 1);  // 1 far .. 0 near
        Colour body = Mix(near, haze, 0.15f + 0.6f * depth);
        for (int x = 0; x < size; x++) {
            float ridge = HillRidge(size, layer, x, seed);
            for (int y = std::max(0, static_cast<int>(ridge)); y < size; y++) {
                float below = (y - ridge) / size;  // 0 on the ridge, growing downwards
                float grain = Fbm(x * 16.0f / size, y * 16.0f / size, 16, 3, seed + 31u + layer);
                Colour c = Shade(body, 0.92f + 0.16f * grain - 0.3f * std::min(below * 2.0f, 0.5f));
                if (snow) {
                    // Snow over the ridges, bluer in the hollows; thin where the slope is steep.
                    Colour white = Mix(Rgb(230, 238, 252), haze, 0.3f + 0.45f * depth);
                    c = Mix(c, white, Clamp01(1.0f - below * (1.0f + 3.0f * grain)));
                }
                // The edge against the sky is softened over one texel.
                float edge = Clamp01(y + 1.0f - ridge);
                Colour old = img.Get(x, y);
                Colour mixed = Mix(old.a > 0.0f ? old : c, c, edge);
                mixed.a = std::max(old.a, edge);
                img.Set(x, y, mixed);
            }
        }
    }
    if (snow) {
        // Pines on the nearest hills: dark narrow cones standing on the snow.
        int trees = size / 4;
        for (int i = 0; i < trees; i++) {
            int tx = static_cast<int>(Hash01(i, 1, seed + 41u) * size);
            float ty =
                HillRidge(size, layers - 1, tx, seed) + size * (0.02f + 0.10f * Hash01(i, 2, seed + 41u));
            float th = size * (0.04f + 0.05f * Hash01(i, 3, seed + 41u));
            for (int y = static_cast<int>(ty - th); y <= static_cast<int>(ty); y++) {
                float f = (y - (ty - th)) / th;  // 0 at the tip, 1 at the foot
                float half = 0.28f * th * f + 0.5f;
                for (int x = static_cast<int>(tx - half); x <= static_cast<int>(tx + half); x++) {
                    Colour c = Mix(Rgb(16, 34, 36), haze, 0.2f);
                    if (x < tx && ((y + x) % 5 == 0)) {
                        c = Rgb(200, 214, 236);  // snow caught on a bough
                    }
                    img.Set((x + size) % size, std::clamp(y, 0, size - 1), c);
                }
            }
        }
    }
    return img;
}

Image MakeFarWater(int size, Colour deep, Colour horizon, uint32_t seed) {
    Image img(size, size);
    for (int y = 0; y < size; y++) {
        float t = static_cast<float>(y) / (size - 1);  // 0 at the horizon (top), 1 near (bottom)
        Colour base = Mix(horizon, deep, std::sqrt(t));
        float squash = 96.0f - 64.0f * t;  // ripples crowd together toward the horizon
        for (int x = 0; x < size; x++) {
            float n = Fbm(x * 8.0f / size, y * squash / size, 8, 4, seed);
            Colour c = Shade(base, 0.85f + 0.3f * n);
            if (n > 0.68f) {
                c = Mix(c, horizon, (n - 0.68f) * 3.0f);  // a glint on a ripple's crest
            }
            c.a = 1.0f;
            img.Set(x, y, c);
        }
    }
    return img;
}
